#pragma once

// The data control: names a store and a query, and holds the recordset that a grid shows.

#include "platform/database/database.h"
#include "platform/forms/control.h"

namespace ostrel {

class DataControl : public Control {
 public:
  void Design(std::string name, std::string text, Place place) override;

  Property<std::string> DatabaseName{*this};  ///< full path of the store
  Property<std::string> RecordSource{*this};  ///< the query

  /// How the store that DatabaseName names is opened, by its full path.
  std::function<Database(const std::string& path)> OpenStore;

  /// Opens the query afresh. When that fails the rows of this query stay, if it is the one that is open;
  /// those of another are let go, so that nobody takes them for this one's.
  ///   throws  what OpenStore and OpenRecordset throw; Failure 91 with no OpenStore
  void Refresh();

  /// Whether Recordset has the rows of RecordSource, and not still those of the query before.
  bool ShowsItsQuery() const { return Recordset && query_ == RecordSource.Get(); }

  /// Lets go of store and rows.
  void Close();

  /// Saves the edit under way, if there is one.
  void UpdateRecord();

  EditMode Mode() const;

  ostrel::Recordset Recordset;  ///< what the grid shows; its current row is the grid's

  /// Raised after Refresh; the grid bound to this control ties it.
  std::function<void()> Reloaded;

 private:
  void Open();

  Database database_;
  std::string opened_;  // name of the store that is open
  std::string query_;   // that Recordset has the rows of
};

}  // namespace ostrel
