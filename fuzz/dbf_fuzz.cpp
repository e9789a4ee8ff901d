// Any bytes as a dBase table: read whole or refused; its key found again by a search.

#include <numeric>

#include "fuzz.h"
#include "platform/database/dbf_file.h"
#include "platform/database/dbf_values.h"
#include "platform/database/table_recordset.h"
#include "platform/files/text_encoding.h"

namespace ostrel {
namespace {

void ReadEveryField(const DbfTable& table) {
  for (std::size_t row = 0; row < table.RowCount(); ++row) {
    for (std::size_t field = 0; field < table.Fields().size(); ++field) {
      const Value value = table.At(row, field);
      const auto number = table.NumberAt(row, field);
      Require(IsUtf8(value.Characters()));
      Require(!number || value == Value(*number));
    }
  }
}

// EMPL_NUMB, else the first numeric field.
int KeyOf(const DbfTable& table) {
  const auto& fields = table.Fields();
  const auto numeric = std::find_if(fields.begin(), fields.end(),
                                    [](const auto& field) { return IsDbfNumericType(field.Type); });
  const int employee = table.FieldIndex("EMPL_NUMB");
  return employee >= 0 ? employee : static_cast<int>(numeric - fields.begin());
}

void SeekEveryKey(DbfTable table) {
  const int key = KeyOf(table);
  std::vector<std::uint32_t> rows(table.RowCount());
  std::iota(rows.begin(), rows.end(), 0U);
  TableRecordset recordset(std::move(table), std::move(rows), "EMPL_NUMB");
  recordset.SetIndex("PrimaryIndex");
  for (; !recordset.Eof(); recordset.MoveNext()) {
    const auto position = recordset.Position();
    const Value wanted = recordset.GetField(key);
    if (wanted.KindOf() != Value::Kind::Double) continue;
    recordset.Seek("=", wanted);
    Require(!recordset.NoMatch() && recordset.Position() <= position);
    Require(recordset.GetField(key) == wanted);
    recordset.SetPosition(static_cast<std::size_t>(position));
  }
}

}  // namespace

void Try(std::string_view bytes) {
  Attempt({failure_number::kExternalTableFormat, failure_number::kItemNotFound}, [&] {
    const DbfTable table = ParseDbf(std::string(bytes), "fuzz.dbf");
    ReadEveryField(table);
    SeekEveryKey(table);
    return table.RowCount();
  });
}

}  // namespace ostrel
