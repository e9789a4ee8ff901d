#pragma once

// What a laptop that has never seen the office's tables says of itself, and the manual that it
// offers.

#include <cstdint>
#include <string>

namespace ostrel {

/// Explains the program and asks whether to show the manual.
///   throws  ProgramEnded on Yes, after the manual or the reason why it cannot be shown, and on
///           Cancel; No returns
void ExitWShowManual();

/// Runs a command line and waits until that program closes.
///   returns  its exit code
///   throws   Failure 53 when it cannot be started
std::int32_t RunAndWait(const std::string& CmdLine);

/// The path in the system's short form, for programs that split a command line at its blanks; the
/// path itself where the system has no such form.
std::string ShortPathOf(const std::string& LongPath);

}  // namespace ostrel
