#include "platform/qt/shown_rows.h"

#include "platform/values/failure.h"

namespace ostrel {

namespace {
constexpr std::size_t kMostKept = 1000;
}

void ShownRows::Begin() {
  if (!missed_ && shown_.size() > kMostKept) {
    std::erase_if(shown_, [&](const auto& row) { return row.second.Painting != painting_; });
  }
  ++painting_;
  missed_ = false;
}

const std::vector<Value>& ShownRows::Row(const Recordset& rows, std::size_t position) {
  Shown& shown = shown_[rows.BookmarkAt(position)];
  shown.Painting = painting_;
  if (missed_) return shown.Fields;
  try {
    shown.Fields = rows.RowAt(position);
  } catch (const Failure&) {
    missed_ = true;
  }
  return shown.Fields;
}

}  // namespace ostrel
