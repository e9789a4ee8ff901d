#pragma once

// The program's section of the office's ini file, one key at a time. Settings, start-up and the
// loading of descriptions read and write here; which key means what is theirs.

#include <string>

namespace ostrel {

inline constexpr const char* kIniSection = "Ostrel Remote";
inline constexpr const char* kExchangeFolderKey = "Remote Files Floppy";

/// Whether the ini file can be read, asked once at the start of a run, so that its failure is told once
/// and not at every key. Until the answer is yes, each setting counts as not made, and none is written:
/// what the file holds may be as good as before when it can be read again.
///   throws  Failure 57 or 75, naming the file, when it is there and cannot be read
void RequireIni();

/// Whether RequireIni has found it readable, or missing, or has not been asked.
bool IniIsReadable();

/// One value of the ini file, empty when it is missing; at most 254 characters.
///   throws  as RequireIni, should it have become unreadable since
std::string IniRead(const std::string& Section, const std::string& Key);

/// The exchange folder, ending in a separator; empty when there is none. A text of 254 characters
/// may have been cut, and nobody knows whose folder it then names: it stays without a separator,
/// which no exchange folder does.
///   throws  as IniRead
std::string ReadExchangeFolder();

/// Writes one key unless the settings could not be read; a file that cannot be written is passed over,
/// settings being no payroll.
void IniWrite(const std::string& Section, const std::string& Key, const std::string& Text);

}  // namespace ostrel
