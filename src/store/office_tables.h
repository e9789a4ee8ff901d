#pragma once

// The office's tables: five dBase files that the office sends in one zip. A file is named after a
// word of four letters and the client's number, as in "Prms1234.dbf" and "Clnt1234.zip".

#include <array>
#include <string>
#include <vector>

namespace ostrel {

/// The client, the employees, and the costing codes: enterprises, operations, equipment.
inline constexpr std::array<const char*, 5> kOfficeTables = {"Hvcl", "Prms", "Glen", "Glod",
                                                             "Gleq"};

/// Full path of one of the client's tables in the application folder.
std::string OfficeTablePath(const char* word);

/// Patterns, as ListFiles has them, of all files that come with the tables of any client: "Hvcl????.*".
std::vector<std::string> OfficeFilePatterns();

/// Whether there are letters and digits alone in a client's number: queries name the tables by it.
bool IsClientNumber(const std::string& client);

/// Whether the name is long enough to name a client: "Prms1234.dbf", not "Prms.dbf".
bool NamesAClient(const std::string& fileName);

/// The client's number in the name of one of its files.
///   fileName  one that NamesAClient
std::string ClientOf(const std::string& fileName);

}  // namespace ostrel
