#pragma once

// The import file: what the whole program exists to produce. The lines on show, one record each, in
// a comma-separated text file on the office's disk, from which the office's accounting reads hours
// and piecework per employee. The lines stay in the store, unmarked; the same day can be written
// again as often as the foreman likes.

namespace ostrel {

/// Writes Pck-<client>.asc for the day of the date box. In the time clock layout the hours are worked
/// out first. The old file stays whole until the new one is complete on the disk.
void mnuWriteImportFile_Click();

}  // namespace ostrel
