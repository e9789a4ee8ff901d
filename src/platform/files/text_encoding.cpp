#include "platform/files/text_encoding.h"

#include <algorithm>
#include <iterator>

namespace ostrel {

namespace {

constexpr char32_t kNoCharacter = 0xFFFFFFFF;
constexpr char32_t kReplacement = 0xFFFD;

// The letters of the bytes 80 to 9F; all other bytes stand for the character of their own number.
constexpr char32_t kUpperControls[] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

unsigned char ByteAt(std::string_view text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

// Bytes of the character that starts so, 0 for a byte that starts none.
std::size_t SizeByFirst(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 0;
}

// Takes one character and moves `at` behind it; kNoCharacter moves it by a single byte.
char32_t TakeCharacter(std::string_view text, std::size_t& at) {
  const unsigned char first = ByteAt(text, at);
  const std::size_t size = SizeByFirst(first);
  const std::size_t begin = at++;
  if (size == 1) return first;
  if (size == 0 || size > text.size() - begin) return kNoCharacter;
  char32_t character = first & (0xFFu >> (size + 1));
  for (std::size_t i = 1; i < size; ++i) {
    const unsigned char next = ByteAt(text, begin + i);
    if ((next & 0xC0) != 0x80) return kNoCharacter;
    character = character << 6 | (next & 0x3Fu);
  }
  const bool overlong = (size == 3 && character < 0x800) || (size == 4 && character < 0x10000);
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (overlong || surrogate || character > 0x10FFFF) return kNoCharacter;
  at = begin + size;
  return character;
}

char ByteFor(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  const auto* found = std::find(std::begin(kUpperControls), std::end(kUpperControls), character);
  if (found == std::end(kUpperControls)) return '?';
  return static_cast<char>(0x80 + (found - std::begin(kUpperControls)));
}

// A byte above 7F of a character's UTF-8, from the six bits that stand `shift` bits up.
char Continuation(char32_t character, int shift) {
  return static_cast<char>(0x80 | (character >> shift & 0x3F));
}

void AppendUtf8(std::string& text, char32_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  if (character < 0x800) {
    text += static_cast<char>(0xC0 | character >> 6);
  } else {
    if (character < 0x10000) {
      text += static_cast<char>(0xE0 | character >> 12);
    } else {
      text += static_cast<char>(0xF0 | character >> 18);
      text += Continuation(character, 12);
    }
    text += Continuation(character, 6);
  }
  text += Continuation(character, 0);
}

bool IsFirstHalf(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsSecondHalf(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

char32_t UnitAt(std::string_view bytes, std::size_t at, ByteOrder order) {
  const char32_t first = ByteAt(bytes, at);
  const char32_t second = ByteAt(bytes, at + 1);
  return order == ByteOrder::BigEnd ? first << 8 | second : second << 8 | first;
}

void AppendUnit(std::string& bytes, char32_t unit, ByteOrder order) {
  const char high = static_cast<char>(unit >> 8);
  const char low = static_cast<char>(unit & 0xFF);
  const bool highFirst = order == ByteOrder::BigEnd;
  bytes += highFirst ? high : low;
  bytes += highFirst ? low : high;
}

}  // namespace

std::string ToCodePage1252(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) bytes += ByteFor(TakeCharacter(text, at));
  return bytes;
}

std::string FromCodePage1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const unsigned char byte = ByteAt(bytes, at);
    AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80] : byte);
  }
  return text;
}

std::string FromUtf16(std::string_view bytes, ByteOrder order) {
  std::string text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t character = UnitAt(bytes, at, order);
    const char32_t next = at + 3 < bytes.size() ? UnitAt(bytes, at + 2, order) : 0;
    if (IsFirstHalf(character) && IsSecondHalf(next)) {
      character = 0x10000 + ((character - 0xD800) << 10) + (next - 0xDC00);
      at += 2;
    } else if (IsFirstHalf(character) || IsSecondHalf(character)) {
      character = kReplacement;
    }
    AppendUtf8(text, character);
  }
  return text;
}

std::string ToUtf16(std::string_view text, ByteOrder order) {
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) {
    char32_t character = TakeCharacter(text, at);
    if (character == kNoCharacter) character = '?';
    if (character >= 0x10000) {
      AppendUnit(bytes, 0xD800 + ((character - 0x10000) >> 10), order);
      character = 0xDC00 + (character & 0x3FF);
    }
    AppendUnit(bytes, character, order);
  }
  return bytes;
}

bool IsUtf8(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    if (TakeCharacter(bytes, at) == kNoCharacter) return false;
  }
  return true;
}

#ifdef _WIN32

std::wstring ToWide(std::string_view text) {
  const std::string bytes = ToUtf16(text, ByteOrder::LittleEnd);
  std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
  bytes.copy(reinterpret_cast<char*>(wide.data()), bytes.size());
  return wide;
}

std::string FromWide(std::wstring_view text) {
  return FromUtf16({reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)},
                   ByteOrder::LittleEnd);
}

#endif

std::string AsUtf8(std::string_view bytes) {
  return IsUtf8(bytes) ? std::string(bytes) : FromCodePage1252(bytes);
}

}  // namespace ostrel
