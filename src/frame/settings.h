#pragma once

// The program's settings: one section of the office's ini file. Read once when the form loads, put
// on the menus and the form, written back when the form closes.

#include <string>

namespace ostrel {

inline constexpr const char* kIniSection = "Ostrel Remote";
inline constexpr const char* kExchangeFolderKey = "Remote Files Floppy";

/// One value of the ini file, empty when it is missing; at most 254 characters.
///   throws  Failure 57 or 75 when the file is there and cannot be read
std::string IniRead(const std::string& Section, const std::string& Key);

/// Writes one key; a file that cannot be written is passed over, settings being no payroll.
void IniWrite(const std::string& Section, const std::string& Key, const std::string& Text);

/// Reads the settings and lays the form out by them.
void GetIniParms();
void PutIniParms();

void mnuDefaultClockIn_Click();
void mnuDefaultClockOut_Click();
void mnuAutosetTime_Click();

}  // namespace ostrel
