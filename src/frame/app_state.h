#pragma once

// The module-level values: set once at start-up and read by many rooms. They live to the end of the
// run; nothing is closed on the way out. What holds the store or the tables is never destroyed: the
// order in which static objects of different sources go is nobody's, and a recordset that goes needs
// its store, which needs what its own sources keep. What was written is on the disk by then, and the
// system gives the files back.

#include <cstdint>
#include <string>

#include "platform/database/database.h"

namespace ostrel {

// Patterns and names that never change.
inline constexpr const char* TimeFormat = "hh:mm am/pm";
inline constexpr const char* DateFormat = "mm/dd/yy";
inline constexpr const char* DbaseConnect = "FoxPro 2.5;";  ///< how the folder of tables is opened
inline constexpr const char* DbaseExt = ".dbf";

// Who and where.
extern std::string
    DataPath;  ///< the application folder: store, tables and log; no separator behind
extern std::string
    RemoteDrive;  ///< exchange folder on the office's disk, ending in a separator; "" unknown
extern std::string ClientNumb;  ///< four characters, from the names of the client's files
extern std::int32_t UserCount;  ///< how many users share the data

// Time texts offered for clock-in, and the latest end of an open clock-in.
extern std::string DefaultClockIn;
extern std::string DefaultClockOut;

// The store and its updatable recordset; every new line goes through LinesRs. The hours and the
// re-clock-in rebind it to a selection, which changes nothing for new lines.
extern Database& PrinDb;
extern bool PrinDbOpen;
extern Recordset& LinesRs;

// The office's tables.
extern Database& DescDb;
extern bool DescDbOpen;
extern Recordset &ClientRs, &PrmsRs, &GlenRs, &GlodRs, &GleqRs;

/// The hours of the day could not be worked out: the date box holds no day, or nobody clocked in.
extern bool JobStepAborted;

/// Path of the client's store.
std::string StorePath();

/// Path of the log, which lies in the application folder from the first statement on.
std::string LogPath();

/// Folder of what is filed instead of printed.
std::string PrintedFolder();

/// Everything back to the state before start-up.
void ResetAppState();

}  // namespace ostrel
