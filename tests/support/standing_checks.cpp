#include "support/standing_checks.h"

#include "scan_main/scan_main.h"

namespace ostrel {

namespace {

bool Same(const Value& shown, const RawCell& raw) {
  if (const auto* text = std::get_if<std::string>(&raw)) return shown.Characters() == *text;
  const auto* number = std::get_if<double>(&raw);
  return number == nullptr ? shown.IsNull() : !shown.IsNull() && shown.NumberOrZero() == *number;
}

std::string OthersReadIt(const RawLines& raw) {
  const Recordset& rows = Data1.Recordset;
  for (std::size_t row = 0; rows && row < rows.RowCount(); ++row) {
    const std::vector<Value> shown = rows.RowAt(row);
    const auto line = raw.find(rows.BookmarkAt(row));
    const std::string place = "row " + std::to_string(row);
    if (line == raw.end()) {
      if (!shown.empty()) return "not on the disk: " + place + " shows a line that nobody reads";
      continue;
    }
    if (shown.size() != kLineFieldCount) return "shown: " + place + " shows nothing";
    for (std::size_t field = 0; field < shown.size(); ++field) {
      if (Same(shown[field], line->second.Cells[field])) continue;
      return "not on the disk: " + place + " shows another field " + std::to_string(field) +
             " than " + TextOf(line->second);
    }
  }
  return {};
}

std::string QuantityBoxFits() {
  const bool open = !mnuUseTimeClock.Checked || Option1[kPiecework].Value;
  const TextBox& box = txtInput[kQuantityBox];
  if ((box.Enabled == open && (open || box.Text.Get() == "0"))) return {};
  return std::string("quantity box: ") + (box.Enabled ? "open" : "shut") + " with " +
         box.Text.Get();
}

}  // namespace

std::string StandingFault(const Payroll& laptop, const OutsideStore& store, const RawLines& lines) {
  if (!store.IsFree()) return "gathered: nobody else can write to the store";
  if (ReadKilled(laptop.App("Prin1234.mdb"), laptop.Folder.Path("killed")) != lines)
    return "killed: a start would not find the lines that everybody reads now";
  const std::string shown = OthersReadIt(lines);
  return shown.empty() ? QuantityBoxFits() : shown;
}

}  // namespace ostrel
