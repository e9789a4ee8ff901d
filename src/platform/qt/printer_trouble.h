#pragma once

// What keeps a printer from printing, in the words of a person who stands before it.

#include <string>
#include <string_view>

namespace ostrel {

/// The queue's answers to three questions, as it spells them.
struct PrinterState {
  std::string_view Reasons;    ///< keywords parted by commas, such as "media-empty-error"
  std::string_view Accepting;  ///< "true" or "false"
  std::string_view State;      ///< "3" idle, "4" printing, "5" stopped
};

/// Such as "is out of paper", or the empty text where a job can go to it. Reasons count only while the
/// printer is stopped or at work: those of an idle one are left over from its last job, and no job
/// would ever clear them if they kept the next one back. Warnings and reports never count.
std::string TroubleOf(const PrinterState& printer);

}  // namespace ostrel
