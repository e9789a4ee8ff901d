#pragma once

// The forms that text takes in the files of others. Ours is UTF-8 throughout; the office's programs
// and their tables write code page 1252, one byte a letter, and some editors UTF-16.

#include <string>
#include <string_view>

namespace ostrel {

/// UTF-8 to code page 1252. A letter that the code page lacks becomes "?", and so does each byte
/// that is no UTF-8.
std::string ToCodePage1252(std::string_view text);

/// Code page 1252 to UTF-8. The five bytes that stand for no letter become the control characters
/// of the same number and so find their way back.
std::string FromCodePage1252(std::string_view bytes);

bool IsUtf8(std::string_view bytes);

enum class ByteOrder { LittleEnd, BigEnd };  ///< which end of a 16-bit unit stands first

/// UTF-16 without a byte order mark; a lone half of a pair becomes U+FFFD, a last odd byte is
/// dropped.
std::string FromUtf16(std::string_view bytes, ByteOrder order);

/// Each byte of `text` that is no UTF-8 becomes "?".
std::string ToUtf16(std::string_view text, ByteOrder order);

#ifdef _WIN32
/// Text as the calls of Windows take and give it, which for any other text than ASCII are the wide ones
/// alone. Each byte of `text` that is no UTF-8 becomes "?", a lone half of a pair U+FFFD.
std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);
#endif

/// Bytes of unknown origin as UTF-8: as they are when they are UTF-8, else from code page 1252.
std::string AsUtf8(std::string_view bytes);

}  // namespace ostrel
