#include "platform/forms/selection.h"

#include "platform/values/text.h"

namespace ostrel {

namespace {

struct Cut {
  std::string Before, Inside, Behind;
};

Cut CutAround(const std::string& text, Selection selection) {
  const std::string before = LeftOf(text, static_cast<std::size_t>(selection.Start));
  const std::string rest = text.substr(before.size());
  const std::string inside = LeftOf(rest, static_cast<std::size_t>(selection.Length));
  return {before, inside, rest.substr(inside.size())};
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }

void Blank(std::string& text, std::string_view sign) {
  for (std::size_t at = text.find(sign); at != std::string::npos; at = text.find(sign, at)) {
    text.replace(at, sign.size(), " ");
  }
}

}  // namespace

std::string SelectedPart(const std::string& text, Selection selection) {
  return CutAround(text, selection).Inside;
}

std::string ReplaceSelected(const std::string& text, Selection& selection, std::string_view part) {
  const Cut cut = CutAround(text, selection);
  selection = {static_cast<int>(LengthOf(cut.Before) + LengthOf(part)), 0};
  return cut.Before + std::string(part) + cut.Behind;
}

std::string FittingPart(const std::string& text, Selection selection, std::string_view part,
                        std::size_t holds) {
  const std::size_t kept = LengthOf(text) - LengthOf(SelectedPart(text, selection));
  return LeftOf(part, holds > kept ? holds - kept : 0);
}

std::string SingleLine(std::string text) {
  for (char& c : text) {
    if (IsControl(c)) c = ' ';
  }
  Blank(text, "\xE2\x80\xA8");  // U+2028, line separator
  Blank(text, "\xE2\x80\xA9");  // U+2029, paragraph separator
  return text;
}

}  // namespace ostrel
