#pragma once

// Settings in an ini file that belongs to the office's accounting product. Reading and writing one
// key leaves every other byte of the file as it was: other sections, comments, order, line ends,
// and whatever in it is no ini text at all.
//
// A section is a line "[name]"; a key's line is "key = value" with blanks around both ignored; a
// comment begins with ";". Names, ASCII all, match without regard to case; the first section of that
// name and the first such key in it count. A value in matching quotes is read without them.
//
// The file is UTF-16 where a byte order mark says so. Else a value is UTF-8 where it is valid UTF-8,
// and code page 1252 where not. A value is written back in the kind that the file is; only one that
// would not read back the same from code page 1252 is written in UTF-8 there.

#include <cstddef>
#include <string>
#include <string_view>

namespace ostrel {

/// Characters of a value that come back at most: the system's profile functions take a buffer of 255,
/// one of them their end mark.
inline constexpr std::size_t kIniValueCharacters = 254;

/// The value, or the empty text when there is no file, section or key.
///   throws  Failure 57 or 75, naming the file, when it is there and cannot be read, is no plain file,
///           or is larger than settings can be
std::string ReadIniValue(const std::string& path, std::string_view section, std::string_view key);

/// Creates folder, file, section or key where needed. The file is replaced atomically, old or new,
/// never half; one that cannot be read or written stays as it was. A value ends at its first line
/// end, since a key has one line.
///   returns  whether it was written; the program has no use for the reason
bool WriteIniValue(const std::string& path, std::string_view section, std::string_view key,
                   std::string_view value) noexcept;

}  // namespace ostrel
