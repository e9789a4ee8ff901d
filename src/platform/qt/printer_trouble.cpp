#include "platform/qt/printer_trouble.h"

namespace ostrel {

namespace {

struct Reason {
  std::string_view Keyword;
  const char* Words;
};

constexpr Reason kReasons[] = {
    {"media-empty", "is out of paper"},
    {"media-needed", "is out of paper"},
    {"media-jam", "has a paper jam"},
    {"input-tray-missing", "has no paper tray"},
    {"output-area-full", "has no room for more sheets"},
    {"cover-open", "has its cover open"},
    {"door-open", "has its door open"},
    {"toner-empty", "is out of toner"},
    {"marker-supply-empty", "is out of ink or toner"},
    {"offline", "is switched off or not connected"},
    {"shutdown", "is switched off or not connected"},
};

/// The words for one keyword, which may say how grave it is: "-error", or nothing for the same.
const char* WordsFor(std::string_view keyword) {
  constexpr std::string_view kGrave = "-error";
  if (keyword.ends_with(kGrave)) keyword.remove_suffix(kGrave.size());
  for (const Reason& reason : kReasons) {
    if (keyword == reason.Keyword) return reason.Words;
  }
  return nullptr;
}

std::string_view WordsForFirst(std::string_view reasons) {
  while (!reasons.empty()) {
    const std::size_t comma = reasons.find(',');
    if (const char* words = WordsFor(reasons.substr(0, comma))) return words;
    reasons.remove_prefix(comma == std::string_view::npos ? reasons.size() : comma + 1);
  }
  return {};
}

}  // namespace

std::string TroubleOf(const PrinterState& printer) {
  constexpr std::string_view kIdle = "3", kStopped = "5";
  if (printer.Accepting == "false") return "takes no jobs";
  if (printer.State == kIdle) return {};
  const std::string_view words = WordsForFirst(printer.Reasons);
  if (words.empty() && printer.State == kStopped) return "has been stopped";
  return std::string(words);
}

}  // namespace ostrel
