#include "platform/database/table_folder.h"

#include <filesystem>
#include <utility>

#include "platform/database/answer_recordset.h"
#include "platform/database/dbf_file.h"
#include "platform/database/dbf_write.h"
#include "platform/database/refusals.h"
#include "platform/database/table_query.h"
#include "platform/database/table_recordset.h"
#include "platform/files/files.h"
#include "platform/files/os_file.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

TableFolder::TableFolder(std::string folder, TableFolderUse use)
    : folder_(std::move(folder)), use_(std::move(use)) {
  std::error_code unreadable;
  if (!std::filesystem::is_directory(PathFromUtf8(folder_), unreadable)) {
    throw Failure(failure_number::kPathNotFound, "Path not found: " + folder_ + ".");
  }
}

std::string TableFolder::PathOf(const std::string& table) const {
  if (table.find_first_of("/\\") != std::string::npos) {
    throw Failure(failure_number::kNoSuchTable, "\"" + table + "\" is no table's name.");
  }
  return folder_ + kPathSeparator + table + ".dbf";
}

std::shared_ptr<RecordsetBody> TableFolder::OpenRecordset(std::string_view text, RecordsetType) {
  const Query query = ReadQuery(text);
  DbfTable table = ReadDbf(PathOf(query.Table));
  if (query.Form == QueryForm::Table || query.Form == QueryForm::Rows) {
    auto rows = SelectRows(table, query);
    return std::make_shared<TableRecordset>(std::move(table), std::move(rows), use_.KeyField);
  }
  return std::make_shared<AnswerRecordset>(ColumnNames(query), Answer(table, query));
}

void TableFolder::Execute(std::string_view sql) {
  const Action action = ReadAction(sql);
  const auto* const update = std::get_if<TableUpdate>(&action);
  if (update == nullptr) RefuseOperation("creating an index");
  if (use_.Updates == TableUpdates::Refused) {
    throw Failure(failure_number::kNotUpdatable,
                  "Cannot update: the tables in " + folder_ + " were opened read-only.");
  }
  WriteNumbers(PathOf(update->Table), update->Assignments);
}

Database OpenTableFolder(const std::string& folder, const TableFolderUse& use) {
  if (FindText(use.Connect, "FoxPro") != 0 && FindText(use.Connect, "dBase") != 0) {
    throw Failure(failure_number::kExternalDriver,
                  "Tables of the kind \"" + use.Connect + "\" are not read.");
  }
  return Database(std::make_shared<TableFolder>(folder, use));
}

}  // namespace ostrel
