// Any bytes as an ini file: one key written leaves the rest alone and reads back.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/files/ini_text.h"
#include "platform/files/text_encoding.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

// A file of UTF-16 as one of UTF-8, with a mark as well.
std::string InUtf8(std::string_view file) {
  return "\xEF\xBB\xBF" + ostrel::FromUtf16(file.substr(2), file.front() == '\xFE');
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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::size_t cut = size == 0 ? 0 : 1 + data[0] % size;
  const std::string_view value = input.substr(0, cut).substr(size == 0 ? 0 : 1);
  const std::string_view file = input.substr(cut);

  const std::string other = ostrel::IniValueIn(file, "S", "L");
  const std::string after = ostrel::WithIniValue(file, "S", "K", value);
  Require(ostrel::IsUtf8(other));
  Require(ostrel::IniValueIn(after, "S", "K") ==
          ostrel::AsUtf8(value.substr(0, value.find_first_of("\r\n"))));
  Require(ostrel::IniValueIn(after, "S", "L") == other);
  Require(ostrel::WithIniValue(after, "S", "K", value) == after);

  if (file.starts_with("\xFF\xFE") || file.starts_with("\xFE\xFF")) {
    // The same text in UTF-8 comes out the same.
    Require(InUtf8(after) == ostrel::WithIniValue(InUtf8(file), "S", "K", value));
  } else {
    // What went lies within one line.
    Require(Gone(file, after).find_first_of("\r\n") == std::string_view::npos);
  }
  return 0;
}
