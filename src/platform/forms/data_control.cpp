#include "platform/forms/data_control.h"

namespace ostrel {

void DataControl::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), std::move(text), place);
  DatabaseName.Put({});
  RecordSource.Put({});
  Recordset = {};
  Reloaded = nullptr;
  database_ = {};
  opened_.clear();
  shown_.clear();
}

void DataControl::Refresh() {
  if (!database_ || opened_ != DatabaseName.Get()) {
    database_ = OpenDatabase(DatabaseName);
    opened_ = DatabaseName;
  }
  Recordset = database_.OpenRecordset(RecordSource, RecordsetType::Dynaset);
  shown_ = RecordSource;
  if (Reloaded) Reloaded();
}

void DataControl::UpdateRecord() {
  if (Mode() != EditMode::None) Recordset.Update();
}

EditMode DataControl::Mode() const { return Recordset ? Recordset.Mode() : EditMode::None; }

}  // namespace ostrel
