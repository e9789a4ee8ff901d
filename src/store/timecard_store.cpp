#include "store/timecard_store.h"

#include <string>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/database/database.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/values/text.h"

namespace ostrel {

namespace {

constexpr const char* kSortOrder = ";LANGID=0x0809;CP=1252;COUNTRY=0";

const std::vector<FieldDefinition> kLineFields = {
    {"EMPL_NUMB", FieldType::Single},   {"SORT_NAME", FieldType::Text, 15},
    {"ETIME", FieldType::Date},         {"ETIME_STOP", FieldType::Date},
    {"EVENT_TYPE", FieldType::Text, 1}, {"QUANTITY", FieldType::Double},
    {"QUAN_DESC", FieldType::Text, 5},  {"ENTERPRISE", FieldType::Single},
    {"OPERATION", FieldType::Single},   {"EQUIP_NUMB", FieldType::Single},
    {"MEMO", FieldType::Text, 20},      {"RATE", FieldType::Double},
    {"GROSS", FieldType::Double},       {"HOUR_GROSS", FieldType::Double},
    {"HOURS", FieldType::Double},
};

/// A store without the index, or not open at all, is what a rebuild is there for.
void DeleteIndexIfThere(const char* index) {
  try {
    PrinDb.DeleteIndex("OstrelPr", index);
  } catch (const Failure& failure) {
    if (failure.Number != failure_number::kItemNotFound &&
        failure.Number != failure_number::kObjectNotSet)
      throw;
  }
}

/// A try whose last step failed has put the store in its place already.
Database MadeStore() {
  return IsTaken(StorePath()) ? OpenDatabase(StorePath()) : CreateDatabase(StorePath(), kSortOrder);
}

}  // namespace

void CreatePrinMdb() {
  constexpr FailureTail statement{PrinModule, "CreatePrinMdb"};
  Database NewDb;
  statement(13110, [&] { NewDb = MadeStore(); });
  if (!NewDb) {
    statement(13120, [] { MsgBox("Couldn't create Prin.mdb database"); });
    return;
  }
  TableDefinition lines{"OstrelPr", {}};
  for (const FieldDefinition& field : kLineFields) {
    statement(13140, [&] { lines.Fields.push_back(field); });
  }
  statement(13150, [&] { NewDb.AppendTable(lines); });
  statement(13160, [&] { NewDb.Close(); });
  statement(13170, [] { ReindexPrinMdb(); });
}

void ReindexPrinMdb() {
  constexpr FailureTail statement{PrinModule, "ReindexPrinMdb"};
  if (!PrinDbOpen) {
    bool there = false;
    statement(13610, [&] { there = IsTaken(StorePath()); });
    if (!there) {
      statement(13620, [] { CreatePrinMdb(); });
      statement(13630, [] { DoEvents(); });
    }
    statement(13640, [] {
      PrinDb = OpenDatabase(StorePath());
      PrinDbOpen = true;
    });
  }
  statement(13660, [] { DeleteIndexIfThere("dTime"); });
  statement(13670, [] { DeleteIndexIfThere("Empl_Numb"); });
  statement(13680, [] { PrinDb.Execute("Create Index dTime on [OstrelPr] (ETIME DESC)"); });
}

void BlankIfEmpty(const Field& field) {
  const Value value = field.Get();
  if (value.IsText() && value.Characters().empty()) field = " ";
}

void SetMemo(const Recordset& timecard, const std::string& memo) {
  const Field field = timecard["MEMO"];
  field = LeftOf(memo, static_cast<std::size_t>(field.Size()));
  BlankIfEmpty(field);
}

}  // namespace ostrel
