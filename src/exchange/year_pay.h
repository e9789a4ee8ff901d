#pragma once

// The pay of the year that the office's tables carry, which is nobody's business in the field and never
// stays on the laptop. Whatever of the office's files holds a table loses it before it is in place
// (load_descriptions.h), and at start-up whatever has been copied in by hand (program/found_files.h).

#include <string>

namespace ostrel {

/// The statement that sets it to 0 in the client's employee table.
std::string StatementThatClearsPay();

/// Takes it out of a file's content, whatever the types of its fields and the file's extension; a
/// content that is no table, or has none of it, stays as it is.
///   name    for the failure
///   throws  Failure 3274 for a table that has it but cannot be read, so that it would stay
void TakeOutYearPay(const std::string& name, std::string& content);

/// The same in a file on the laptop, which is replaced as a whole, and only when something in it is
/// not 0.
///   throws  also Failure 3275 when it cannot be read; 61, 71, 75 or 57 when it cannot be written
void ClearYearPay(const std::string& path);

}  // namespace ostrel
