#pragma once

// Unpacking the office's zip: those of its members that are wanted, and nothing else, take the place
// of the files of their names, all of them or none. The office's tables come in this way; whoever
// calls says what makes one of them fit for use.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

struct ZipExtraction {
  std::string Zip;                     ///< path of the zip, its name in any case
  std::vector<std::string> BaseNames;  ///< wanted: the files of these names, with any extension
  std::string Folder;                  ///< where they go

  /// Makes a content fit for use before it takes its place; throws a Failure when it is not what such
  /// a file should have.
  std::function<void(const std::string& name, std::string& content)> Prepare;
};

/// Unpacks the wanted members; base names match in any case, a file gets its name as the zip has it.
///   returns  the empty text when all went well, else one that names the zip and the fault; then
///            every old file is as it was
/// Refused are a zip with none of the members, with one twice, with one that its directory does not
/// name or that is no plain file (a link, a device), or with more than payroll tables can be (limits
/// in the source). Folders with what lies in them and names that no system can keep are passed over.
std::string ExtractZip(const ZipExtraction& order);

/// Whether a zip's name for a member is that of a plain file wanted: one of the base names, a point
/// and an extension that is a file name's on every system.
bool IsWantedName(std::string_view name, const std::vector<std::string>& baseNames);

}  // namespace ostrel
