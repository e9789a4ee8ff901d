#pragma once

// Text files that the program writes for others: the office's import file, made whole before it
// takes its name, and the log, which only grows. Both are in code page 1252 with CR LF line ends.

#include <memory>
#include <string>
#include <string_view>

namespace ostrel {

/// A file that replaces another as a whole. Lines are gathered in memory; Close writes them beside
/// the final name, flushes them to the disk and puts them in the old file's place. Dropped without
/// Close, it leaves the old file as it was. Some 5,000 lines of 100 bytes are usual.
class ReplacementFile {
 public:
  ReplacementFile();
  ~ReplacementFile();
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  /// Tries whether a file can be made there, so that the operator hears of a missing disk before
  /// the lines are made.
  ///   throws  Failure 71 when the folder of `path` is missing or its disk is gone; 75 when it may
  ///           not be written; 61 when it is full; 55 when this object has a file open already
  void Open(const std::string& path);

  /// One line in code page 1252, ended by CR LF; `text` is UTF-8.
  ///   throws  Failure 52 when no file is open
  void WriteLine(std::string_view text);

  /// throws  Failure 61 when the disk is full, 71 when it is gone, 75 when it may not be written, 57
  ///         on any other I/O error, 52 when no file is open. The old file is then as it was and
  ///         the lines are kept: Close can be called again, on another disk too.
  void Close();

  /// Throws away what has been written and leaves the old file as it was; nothing is open then.
  void Abandon() noexcept;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

/// A text file opened to append to, created when missing.
class AppendFile {
 public:
  AppendFile();
  ~AppendFile();
  AppendFile(const AppendFile&) = delete;
  AppendFile& operator=(const AppendFile&) = delete;

  /// throws  Failure 75, 76, 70 or 61 by the operating system's reason; 55 when this object has a
  ///         file open already
  void Open(const std::string& path);

  /// Text as it stands, in code page 1252, no line end added.
  ///   throws  Failure 61 when the disk is full, 57 on any other I/O error, 52 when no file is open;
  ///           no part of the text stays
  void Write(std::string_view text);
  void Close() noexcept;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace ostrel
