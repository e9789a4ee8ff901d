#pragma once

// Ini text in memory: finding a key's value, and the whole text with another value in its place.
// For ini_file alone, apart from it so that it can be tested and fuzzed without a disk. The rules
// are told in ini_file.h. Names of sections and keys are ASCII.

#include <string>
#include <string_view>

namespace ostrel {

/// The value in UTF-8 and in its full length; empty when there is no such section or key.
std::string IniValueIn(std::string_view file, std::string_view section, std::string_view key);

/// The file's bytes with that value, in the kind that the file is: UTF-16 where a byte order mark
/// says so; code page 1252 where the file is not UTF-8, unless the value would not read back from
/// there; else UTF-8. A new line of the file ends as its first line does, CR LF in an empty one, and
/// stands behind the section's last key.
///   value  UTF-8; what follows a CR or LF in it is cut off
std::string WithIniValue(std::string_view file, std::string_view section, std::string_view key,
                         std::string_view value);

/// The value as it must stand in a file to read back the same: in double quotes when it has blanks
/// at its ends or is in quotes already.
std::string QuotedIniValue(std::string_view value);

}  // namespace ostrel
