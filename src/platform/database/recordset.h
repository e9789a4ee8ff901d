#pragma once

// A recordset: a walk over the rows of the store, of a reference table or of a query's answer.
//
// Three kinds stand behind the one class.
//  - Lines of the store: a keyset. The row ids of the selection are fetched, in order, when it is
//    opened; a row's fields are read when they are asked for, so a walk sees values stored a moment
//    ago, rows added later do not join it, and a bookmark is a row id.
//  - A reference table (dBase): all rows in memory, in file order or in the order of its index.
//  - An answer of one column (Distinct or an aggregate): read-only.
//
// After every call, what is the current row?
//   opening, MoveFirst      the first row; with no rows both Bof() and Eof() are true
//   MoveLast                the last row
//   MoveNext                the next row, or none with Eof() true; again: Failure 3021
//   MovePrevious            the row before, or none with Bof() true; again: Failure 3021
//   AddNew                  an empty edit buffer; assignments go there until Update
//   Update after AddNew     the row that was current before AddNew; the new row stands last in the
//                           keyset, whatever the order of the selection
//   Edit, Update after Edit unchanged: the row keeps its place even if its order value changed.
//                           Failure 3167 if the row has been deleted, 3197 if another program has
//                           changed it since this recordset showed it (RowAt) or began the edit;
//                           nothing is written then
//   Update that fails       unchanged, and the edit is still open, so that Update can be tried again;
//                           a new line is never stored twice by that
//   Delete                  none; MoveNext goes to the row behind the deleted one. To delete a row
//                           that is gone already is no failure
//   SetBookmark             the row of the bookmark; Failure 3167 if it has been deleted
//   Seek                    the row found; with NoMatch() none
// Reading a field with no current row: Failure 3021. Assigning with no edit under way: Failure 3020.
// Any call on a recordset that was never opened, or is closed: Failure 91. One that has been told how
// to open itself is opened by the first call that needs it; where that fails, the next call tries
// again.

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/database/row_types.h"
#include "platform/values/value.h"

namespace ostrel {

class RecordsetBody;

/// One field of the current row or of the edit buffer. Cheap; made for the moment.
class Field {
 public:
  Field(RecordsetBody& body, int ordinal) : body_(body), ordinal_(ordinal) {}

  /// The value in the edit buffer while an edit is open, else in the store.
  Value Get() const;
  operator Value() const { return Get(); }

  /// Puts a value into the edit buffer, turned into the field's type: a text into a number or a
  /// moment, a number to single precision.
  ///   throws  Failure 3020 with no edit open; 3163 for a text longer than the field; 3421 for a
  ///           value that the type cannot take; 6 for a number beyond single precision
  const Field& operator=(const Value& value) const;
  const Field& operator=(const Field& other) const { return *this = other.Get(); }

  /// Characters that a text field takes; bytes of any other field.
  int Size() const;
  std::string Name() const;

 private:
  RecordsetBody& body_;
  int ordinal_;
};

class Recordset {
 public:
  Recordset() = default;  ///< never opened
  explicit Recordset(std::shared_ptr<RecordsetBody> body) : body_(std::move(body)) {}
  /// Opens itself when it is first needed.
  explicit Recordset(std::function<Recordset()> open) : open_(std::move(open)) {}
  /// Whether it is open now.
  explicit operator bool() const { return body_ != nullptr; }

  bool Bof() const;
  bool Eof() const;
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();

  void AddNew();
  void Edit();
  void Update();
  void CancelUpdate();
  void Delete();
  EditMode Mode() const;

  Bookmark GetBookmark() const;  ///< throws Failure 3021 with no current row
  void SetBookmark(Bookmark bookmark);

  /// Fields by name (any case) or by ordinal from 0.
  ///   throws  Failure 3265 when there is no such field
  Field operator[](std::string_view name) const;
  Field operator[](const char* name) const { return (*this)[std::string_view(name)]; }
  Field operator[](int ordinal) const;
  int FieldCount() const;

  /// Reference tables only. The index is the ascending order of the table's key field; "=" finds
  /// the first row of that key, ">=" the first row with that key or a greater one.
  ///   throws  Failure 3265 for an index that the table does not have
  void SetIndex(std::string_view name);
  void Seek(std::string_view comparison, const Value& key);
  bool NoMatch() const;

  void Close();

  // For a view that shows many rows at once; none of these moves the current row.

  std::size_t RowCount() const;
  Bookmark BookmarkAt(std::size_t position) const;
  /// All fields of a row for the screen, which must neither wait nor go blank: as stored now, or, while
  /// another program keeps the store from being read, as they were when last asked for here. Empty
  /// when the row has been deleted or has never been read.
  ///   asStored  out, where wanted: whether they are as stored now; if not, ask again later
  std::vector<Value> RowAt(std::size_t position, bool* asStored = nullptr) const;
  /// The same for paper: as stored now, waiting for it where need be.
  ///   throws  the failure of the store when it cannot be read
  std::vector<Value> StoredRowAt(std::size_t position) const;
  /// Position of the current row, or -1.
  std::ptrdiff_t Position() const;
  void SetPosition(std::size_t position);

 private:
  RecordsetBody& Body() const;  ///< throws Failure 91, or why it cannot open itself
  mutable std::shared_ptr<RecordsetBody> body_;
  std::function<Recordset()> open_;
};

}  // namespace ostrel
