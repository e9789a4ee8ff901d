#pragma once

// Bringing the office's tables in: the zip on the office's disk is found, by the settings or by the
// operator's pick, and its tables take the place of the old ones in the application folder. Run by
// start-up on a laptop that has no tables yet, and by the menu whenever the office has a new disk.
// Afterwards the files are in place and carry no year-to-date pay; tables that are open stay as they
// were read until the next start, queries on the folder read the new files at once.

#include <string>

namespace ostrel {

/// Finds Clnt<client>.zip, unpacks it and clears the year-to-date pay. Sets ClientNumb, and
/// RemoteDrive together with the ini file when the operator picks the disk.
///   throws  ProgramEnded when the operator cancels, picks nothing or no client's zip, or the zip
///           cannot be unpacked, the old files being as they were
void LoadDescFiles();

void mnuUpdateDescs_Click();

/// Cuts a path at its last separator of either kind, which goes to neither part.
///   example  "a:\Clnt1234.zip" -> "a:", "Clnt1234.zip"; "Clnt1234.zip" -> "", "Clnt1234.zip"
void ParsePath(const std::string& PathIn, std::string& DirOut, std::string& NameOut);

}  // namespace ostrel
