#pragma once

// Other programs that this one runs.

#include <cstdint>
#include <string>

namespace ostrel {

/// Runs a command line and waits without limit until that program ends.
///   returns  its exit code
///   throws   Failure 53 when it cannot be started
std::int32_t RunCommandLine(const std::string& commandLine);

/// The path in the system's short form, without blanks; the path itself where there is no such form.
std::string ShortFormOf(const std::string& path);

}  // namespace ostrel
