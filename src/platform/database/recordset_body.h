#pragma once

// What every kind of recordset answers to; see recordset.h for the meaning of each call. Only the
// database rooms derive from it. The calls that not every kind has a use for refuse, unless a kind
// brings its own, with Failure 3251.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database/row_types.h"
#include "platform/values/value.h"

namespace ostrel {

class RecordsetBody {
 public:
  virtual ~RecordsetBody() = default;

  virtual bool Bof() const = 0;
  virtual bool Eof() const = 0;
  virtual void MoveFirst() = 0;
  virtual void MoveLast() = 0;
  virtual void MoveNext() = 0;
  virtual void MovePrevious() = 0;

  virtual void AddNew();
  virtual void Edit();
  virtual void Update();
  virtual void CancelUpdate() {}
  virtual void Delete();
  virtual EditMode Mode() const { return EditMode::None; }

  virtual Bookmark GetBookmark() const = 0;
  virtual void SetBookmark(Bookmark bookmark) = 0;

  virtual int FieldCount() const = 0;
  virtual int OrdinalOf(std::string_view name) const = 0;  ///< throws Failure 3265
  virtual Value GetField(int ordinal) const = 0;
  virtual void SetField(int ordinal, const Value& value);
  virtual int FieldSize(int ordinal) const = 0;
  virtual std::string FieldName(int ordinal) const = 0;

  virtual void SetIndex(std::string_view name);
  virtual void Seek(std::string_view comparison, const Value& key);
  virtual bool NoMatch() const { return false; }

  virtual std::size_t RowCount() const = 0;
  virtual Bookmark BookmarkAt(std::size_t position) const = 0;
  virtual std::vector<Value> StoredRowAt(std::size_t position) const = 0;
  /// Rows in memory are always as stored.
  virtual std::vector<Value> RowToShow(std::size_t position, bool& asStored) const;
  virtual std::ptrdiff_t Position() const = 0;
  virtual void SetPosition(std::size_t position) = 0;
};

}  // namespace ostrel
