// Any bytes as a dBase table: read whole or refused; its key found again by a search.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <string>

#include "platform/database/dbf_file.h"
#include "platform/database/dbf_values.h"
#include "platform/database/table_recordset.h"
#include "platform/failure.h"
#include "platform/files/text_encoding.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

void ReadEveryField(const ostrel::DbfTable& table) {
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    for (std::size_t field = 0; field < table.Fields().size(); ++field) {
      const ostrel::Value value = table.At(row, field);
      const auto number = table.NumberAt(row, field);
      Require(ostrel::IsUtf8(value.Characters()));
      Require(!number || value == ostrel::Value(*number));
    }
  }
}

// EMPL_NUMB, else the first numeric field.
int KeyOf(const ostrel::DbfTable& table) {
  const auto& fields = table.Fields();
  const auto numeric = std::find_if(fields.begin(), fields.end(), [](const auto& field) {
    return ostrel::IsDbfNumericType(field.Type);
  });
  const int employee = table.FieldIndex("EMPL_NUMB");
  return employee >= 0 ? employee : static_cast<int>(numeric - fields.begin());
}

void SeekEveryKey(ostrel::DbfTable table) {
  const int key = KeyOf(table);
  std::vector<std::uint32_t> rows(table.RowCount());
  std::iota(rows.begin(), rows.end(), 0U);
  ostrel::TableRecordset recordset(std::move(table), std::move(rows));
  recordset.SetIndex("PrimaryIndex");
  for (; !recordset.Eof(); recordset.MoveNext()) {
    const auto position = recordset.Position();
    const ostrel::Value wanted = recordset.GetField(key);
    if (wanted.KindOf() != ostrel::Value::Kind::Double) continue;
    recordset.Seek("=", wanted);
    Require(!recordset.NoMatch() && recordset.Position() <= position);
    Require(recordset.GetField(key) == wanted);
    recordset.SetPosition(static_cast<std::size_t>(position));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const ostrel::DbfTable table =
        ostrel::ParseDbf(std::string(reinterpret_cast<const char*>(data), size), "fuzz.dbf");
    ReadEveryField(table);
    SeekEveryKey(table);
  } catch (const ostrel::Failure& refused) {
    using namespace ostrel::failure_number;
    Require(refused.Number == kExternalTableFormat || refused.Number == kItemNotFound);
  }
  return 0;
}
