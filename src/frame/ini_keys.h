#pragma once

// The program's section of the office's ini file, one key at a time. Settings, start-up and the
// loading of descriptions read and write here; which key means what is theirs.

#include <string>

namespace ostrel {

inline constexpr const char* kIniSection = "Ostrel Remote";
inline constexpr const char* kExchangeFolderKey = "Remote Files Floppy";

/// One value of the ini file, empty when it is missing; at most 254 characters.
///   throws  Failure 57 or 75 when the file is there and cannot be read
std::string IniRead(const std::string& Section, const std::string& Key);

/// The exchange folder, ending in a separator; empty when there is none. A text of 254 characters
/// may have been cut, and nobody knows whose folder it then names: it stays without a separator,
/// which no exchange folder does.
///   throws  as IniRead
std::string ReadExchangeFolder();

/// Writes one key; a file that cannot be written is passed over, settings being no payroll.
void IniWrite(const std::string& Section, const std::string& Key, const std::string& Text);

}  // namespace ostrel
