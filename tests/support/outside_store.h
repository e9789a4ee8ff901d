#pragma once

// The store as any other program at the file sees it: read through a connection of its own, with
// nothing of the program's, into lines in memory.

#include <sqlite3.h>

#include <compare>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace ostrel {

/// Null, a number (dates too, as days), or a text.
using RawCell = std::variant<std::monostate, double, std::string>;

/// Fields of a line by their place in the table.
enum LineField {
  kEmplField,
  kNameField,
  kTimeField,
  kStopField,
  kTypeField,
  kQuantityField,
  kQuanDescField,
  kEnterpriseField,
  kOperationField,
  kEquipField,
  kMemoField,
  kRateField,
  kGrossField,
  kHourGrossField,
  kHoursField,
  kLineFieldCount
};

struct RawLine {
  std::vector<RawCell> Cells;

  const RawCell& operator[](int field) const { return Cells[static_cast<std::size_t>(field)]; }
  bool IsNull(int field) const { return (*this)[field].index() == 0; }
  double Number(int field) const;  ///< 0 for Null and texts
  std::string Text(int field) const;
  int Employee() const { return static_cast<int>(Number(kEmplField)); }
  int Day() const { return static_cast<int>(Number(kTimeField)); }
  auto operator<=>(const RawLine&) const = default;
};

using RawLines = std::map<std::int64_t, RawLine>;  ///< by row id

class OutsideStore {
 public:
  explicit OutsideStore(const std::string& path);

  /// All lines as they are on the disk; nothing while another connection shuts everybody out.
  std::optional<RawLines> Read() const;
  /// Whether nobody holds a change back: this connection could write at once.
  bool IsFree() const { return Do("BEGIN IMMEDIATE; ROLLBACK"); }
  bool Do(const std::string& sql) const;

 private:
  std::shared_ptr<sqlite3> handle_;
};

/// What a start after a kill at this moment would find.
std::optional<RawLines> ReadKilled(const std::string& store, const std::string& copy);

std::string TextOf(const RawLine& line);

}  // namespace ostrel
