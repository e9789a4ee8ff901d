#include "store/timecard_store.h"

#include <string>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "store/line_table.h"

namespace ostrel {

namespace {

/// A store without the index, or not open at all, is what a rebuild is there for.
void DeleteIndexIfThere(const char* index) {
  try {
    PrinDb.DeleteIndex(TimecardFormat().Table.Name, index);
  } catch (const Failure& failure) {
    if (failure.Number != failure_number::kItemNotFound &&
        failure.Number != failure_number::kObjectNotSet)
      throw;
  }
}

/// A try whose last step failed has put the store in its place already.
Database MadeStore() {
  return IsTaken(StorePath()) ? OpenTimecards(StorePath())
                              : CreateDatabase(StorePath(), TimecardFormat());
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
  TableDefinition lines{TimecardFormat().Table.Name, {}};
  for (const FieldDefinition& field : TimecardFormat().Table.Fields) {
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
    KeepStoreInReach();
    statement(13640, [] { OpenPrinDb(); });
  }
  statement(13660, [] { DeleteIndexIfThere("dTime"); });
  statement(13670, [] { DeleteIndexIfThere("Empl_Numb"); });
  statement(13680, [] { PrinDb.Execute("Create Index dTime on [OstrelPr] (ETIME DESC)"); });
}

void KeepStoreInReach(StoreCheck check) {
  PrinDb = Database([check] {
    Database store = OpenTimecards(StorePath(), check);
    PrinDbOpen = true;
    return store;
  });
  UnbindLines();
}

void OpenPrinDb() { PrinDb.Open(); }

void UnbindLines() {
  LinesRs = Recordset(
      [] { return PrinDb.OpenRecordset(TimecardFormat().Table.Name, RecordsetType::Dynaset); });
}

void CloseStore() {
  LinesRs.Close();
  PrinDb.Close();
  PrinDbOpen = false;
}

void WriteLinesStillLost() {
  const std::size_t lines = RowsStillLost();
  if (lines == 0) return;
  try {
    PrinDb.Settle();
  } catch (const Failure& failure) {
    throw Failure(failure.Number, GeneralText(static_cast<double>(RowsStillLost())) +
                                      " lines are not on the disk yet. " + failure.Text);
  }
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
