#pragma once

// New files that never take the place of an old one: what was filed once stays as it was signed.

#include <string>

#include "platform/files/os_file.h"

namespace ostrel {

struct NewFile {
  OsFile File;
  std::string Path;
};

/// Creates "<folder>/<name><extension>", or "<name> (2)<extension>" and so on with the first number
/// that is free. The folder is made when it is missing. Both are for their user alone, since what is
/// filed has the pay of people in it.
///   throws  the system's failure when folder or file cannot be made
NewFile CreateNumberedFile(const std::string& folder, const std::string& name,
                           const std::string& extension);

}  // namespace ostrel
