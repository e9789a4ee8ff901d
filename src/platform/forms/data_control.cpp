#include "platform/forms/data_control.h"

#include "platform/values/failure.h"

namespace ostrel {

void DataControl::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), std::move(text), place);
  DatabaseName.Put({});
  RecordSource.Put({});
  Reloaded = nullptr;
  OpenStore = nullptr;
  Close();
}

void DataControl::Close() {
  Recordset = {};
  database_ = {};
  opened_.clear();
  query_.clear();
}

void DataControl::Refresh() {
  try {
    Open();
  } catch (const Failure&) {
    if (query_ != RecordSource.Get()) {
      Recordset = {};
      if (Reloaded) Reloaded();
    }
    throw;
  }
  query_ = RecordSource;
  if (Reloaded) Reloaded();
}

void DataControl::Open() {
  if (!database_ || opened_ != DatabaseName.Get()) {
    if (!OpenStore) throw Failure(failure_number::kObjectNotSet, "No store has been named.");
    database_ = OpenStore(DatabaseName);
    opened_ = DatabaseName;
  }
  Recordset = database_.OpenRecordset(RecordSource, RecordsetType::Dynaset);
}

void DataControl::UpdateRecord() {
  if (Mode() != EditMode::None) Recordset.Update();
}

EditMode DataControl::Mode() const { return Recordset ? Recordset.Mode() : EditMode::None; }

}  // namespace ostrel
