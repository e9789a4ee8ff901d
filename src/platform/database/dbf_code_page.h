#pragma once

// The code pages of the office's tables. A dBase file is bytes; one byte in its header says whose
// letters those above 127 are.

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrel {

class CodePage {
 public:
  /// `upperHalf`: the 128 characters of the bytes from 0x80 on, outliving the object.
  explicit constexpr CodePage(const char16_t* upperHalf) : upperHalf_(upperHalf) {}
  /// A code page that another room knows how to read.
  explicit constexpr CodePage(std::string (*reader)(std::string_view)) : reader_(reader) {}

  /// A byte that the code page leaves undefined becomes the control character of its number.
  std::string ToUtf8(std::string_view bytes) const;

 private:
  const char16_t* upperHalf_ = nullptr;
  std::string (*reader_)(std::string_view) = nullptr;
};

/// The code page of a dBase header's language byte: 437, 850, 852, 866, 1250, 1251, 1252 or
/// UTF-8. A byte of 0, which most writers leave, and one not known here mean 1252, the office's own.
CodePage CodePageOf(std::uint8_t languageByte);

}  // namespace ostrel
