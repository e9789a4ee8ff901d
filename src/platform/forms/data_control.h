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

  /// Opens the query afresh. When that fails the old recordset stays.
  ///   throws  what OpenDatabase and OpenRecordset throw
  void Refresh();

  /// Whether the rows are those of the query: not while a refresh for another query has failed.
  bool UpToDate() const { return Recordset && shown_ == RecordSource.Get(); }

  /// Saves the edit under way, if there is one.
  void UpdateRecord();

  EditMode Mode() const;

  ostrel::Recordset Recordset;  ///< what the grid shows; its current row is the grid's

  /// Raised after Refresh; the grid bound to this control ties it.
  std::function<void()> Reloaded;

 private:
  Database database_;
  std::string opened_;
  std::string shown_;  // the query of the rows
};

}  // namespace ostrel
