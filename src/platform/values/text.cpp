#include "platform/values/text.h"

#include <algorithm>

namespace ostrel {
namespace {

// The standard library's own ask the locale, which the trade's texts must not depend on.
char ToUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char ToLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool SameLetter(char a, char b) { return ToLower(a) == ToLower(b); }

/// Whether the byte starts a character; those that follow within one are 10xxxxxx.
bool StartsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

}  // namespace

std::string Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string UpperCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), ToUpper);
  return result;
}

std::string LowerCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), ToLower);
  return result;
}

bool SameText(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), SameLetter);
}

std::size_t FindText(std::string_view text, std::string_view part) {
  const auto place = std::search(text.begin(), text.end(), part.begin(), part.end(), SameLetter);
  if (place == text.end() && !part.empty()) return std::string_view::npos;
  return static_cast<std::size_t>(place - text.begin());
}

bool ContainsText(std::string_view text, std::string_view part) {
  return FindText(text, part) != std::string_view::npos;
}

std::size_t LengthOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

std::string LeftOf(std::string_view text, std::size_t characters) {
  const auto beyond = std::find_if(text.begin(), text.end(), [left = characters](char c) mutable {
    return StartsCharacter(c) && left-- == 0;
  });
  return std::string(text.begin(), beyond);
}

}  // namespace ostrel
