#pragma once

// The program's settings: one section of the office's ini file. Read once when the form loads, put
// on the menus and the form, written back when the form closes.

namespace ostrel {

/// Reads the settings and lays the form out by them.
void GetIniParms();

/// Writes them back, each by itself: one that cannot be written keeps no other from the disk.
void PutIniParms();

/// Each asks for one of the two default times and shows it in its menu's caption. An answer that is no
/// time of day changes nothing; one without am or pm is asked for that.
void mnuDefaultClockIn_Click();
void mnuDefaultClockOut_Click();

/// Whether the time of a line comes from the clock, which shows for as long as it does.
void mnuAutosetTime_Click();

}  // namespace ostrel
