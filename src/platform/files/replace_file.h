#pragma once

// Replacing a file as a whole: the new content is written beside it, flushed to the disk, and takes
// the name in one step. Whatever goes wrong, and at a power cut, the name stands for the old content
// or for the new. For the rooms of the platform alone.

#include <string>
#include <string_view>

#include "platform/files/os_file.h"

namespace ostrel {

/// Permissions and owner of the old file are kept, but for those that would leave it to more than its
/// readers; a link is followed, not replaced.
///   throws  Failure 71 when the folder is missing or its disk is gone, 75 when file or folder may
///           not be written or the path is no plain file's, 52 when it ends in no name, 61 when the
///           disk is full, 57 on any other fault of the disk; the old file is as it was and nothing is left beside it
void ReplaceFile(const std::string& path, std::string_view content,
                 Readers readers = Readers::Everybody);

/// The first half of ReplaceFile, to know its failures before there is content: makes a file beside
/// the one to be replaced and takes it away again.
void TryReplacing(const std::string& path);

/// Removes from a folder the new files of runs that were killed before these could take their places.
/// What cannot be removed now goes at the next time.
void SweepLeftOvers(const std::string& folder) noexcept;

}  // namespace ostrel
