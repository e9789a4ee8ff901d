#pragma once

// The program's settings: one section of the office's ini file. Read once when the form loads, put
// on the menus and the form, written back when the form closes.

namespace ostrel {

/// Reads the settings and lays the form out by them.
void GetIniParms();
void PutIniParms();

void mnuDefaultClockIn_Click();
void mnuDefaultClockOut_Click();
void mnuAutosetTime_Click();

}  // namespace ostrel
