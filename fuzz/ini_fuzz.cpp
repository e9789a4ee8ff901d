// Any bytes as an ini file: one key written leaves the rest alone and reads back.

#include "fuzz.h"
#include "platform/files/ini_text.h"
#include "platform/files/text_encoding.h"

namespace ostrel {
namespace {

// A file of UTF-16 as one of UTF-8, with a mark as well.
std::string InUtf8(std::string_view file) {
  const ByteOrder order = file.front() == '\xFE' ? ByteOrder::BigEnd : ByteOrder::LittleEnd;
  return "\xEF\xBB\xBF" + FromUtf16(file.substr(2), order);
}

// What stands in the first text between the beginning and the end that both have in common.
std::string_view Gone(std::string_view before, std::string_view after) {
  const auto begin = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  before.remove_prefix(static_cast<std::size_t>(begin.first - before.begin()));
  after.remove_prefix(static_cast<std::size_t>(begin.second - after.begin()));
  const auto end = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
  before.remove_suffix(static_cast<std::size_t>(end.first - before.rbegin()));
  return before;
}

}  // namespace

void Try(std::string_view input) {
  const std::size_t cut =
      input.empty() ? 0 : 1 + static_cast<unsigned char>(input[0]) % input.size();
  const std::string_view value = input.substr(input.empty() ? 0 : 1, cut - (cut > 0 ? 1 : 0));
  const std::string_view file = input.substr(cut);

  const std::string other = IniValueIn(file, "S", "L");
  const std::string after = WithIniValue(file, "S", "K", value);
  Require(IsUtf8(other));
  Require(IniValueIn(after, "S", "K") == AsUtf8(value.substr(0, value.find_first_of("\r\n"))));
  Require(IniValueIn(after, "S", "L") == other);
  Require(WithIniValue(after, "S", "K", value) == after);

  if (file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF")) {
    // The same text in UTF-8 comes out the same.
    Require(InUtf8(after) == WithIniValue(InUtf8(file), "S", "K", value));
  } else {
    // What went lies within one line.
    Require(Gone(file, after).find_first_of("\r\n") == file.npos);
  }
}

}  // namespace ostrel
