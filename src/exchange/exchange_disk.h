#pragma once

// The office's disk: whether it is in. A disk that has been taken out may leave its folder behind, and
// a file written there would lie on the laptop while everybody takes it for the office's. So the disk
// that holds the exchange folder is remembered while it is seen: at start-up, when the tables are
// loaded, and whenever the import file asks.

namespace ostrel {

/// Remembers the disk that RemoteDrive is on now.
void NoteExchangeDisk();

/// throws  Failure 71 when RemoteDrive names no folder, or is no longer on the disk that it was seen
///         on in this run. A folder that is not there at all shows when a file is opened in it.
void RequireExchangeDisk();

}  // namespace ostrel
