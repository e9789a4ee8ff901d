#pragma once

// Several files that take their places in a folder together: all of them, or none. They are made in
// a hidden folder beside their places, on the same disk; only when every one is whole and flushed
// does the first old file give way.
//
// What a power cut leaves, by the hidden folders in the folder:
//   .ostrel-new             before Install; the old files stand, the next use throws the rest away
//   .ostrel-ready           during Install; some new files stand, all others are whole in here, and
//                           ResumeInstall gives them their places
//   .ostrel-old             beside one of the others or alone: old files that gave way, thrown away
//                           when all new ones stand
// Whoever finds such a folder cannot know who filled it, so only files of names that are looked for get
// a place. All are for their user alone.

#include <string>
#include <string_view>
#include <vector>

namespace ostrel {

class StagedFiles {
 public:
  /// Resumes an install that was cut off, and clears what an abandoned use left.
  ///   patterns  of the names that are installed, as ListFiles has them: "Prms1234.*"
  ///   throws    Failure 75, 61 or 57 when the folder may not be written
  StagedFiles(std::string folder, std::vector<std::string> patterns);
  ~StagedFiles();  ///< throws away what is not installed
  StagedFiles(const StagedFiles&) = delete;
  StagedFiles& operator=(const StagedFiles&) = delete;

  /// Writes a file to the disk, beside its place. `name` has no folder and no
  /// wildcard in it.
  ///   throws  Failure 61, 75 or 57, naming the file
  void Add(const std::string& name, std::string_view content) const;

  /// Gives every file its place. An old file of the name in any case gives way, so that no two files
  /// remain that differ by case alone.
  ///   throws  Failure 57, 70, 75 or 61 when one of them does not get its place; then all old files
  ///           are back
  void Install() const;

 private:
  std::string folder_;
  std::vector<std::string> patterns_;
};

/// Ends an install that a power cut stopped, if there is one, and sweeps what an abandoned use left.
///   throws   as Install; the new files are kept, so that it can be tried again
void ResumeInstall(const std::string& folder, const std::vector<std::string>& patterns);

}  // namespace ostrel
