#include "platform/files/text_output.h"

#include <optional>
#include <utility>

#include "platform/files/os_file.h"
#include "platform/files/replace_file.h"
#include "platform/files/text_encoding.h"
#include "platform/values/failure.h"

namespace ostrel {

struct ReplacementFile::State {
  std::string Path;
  std::string Content;
};

ReplacementFile::ReplacementFile() = default;
ReplacementFile::~ReplacementFile() = default;

void ReplacementFile::Open(const std::string& path) {
  if (state_) throw FileFailure(failure_number::kFileAlreadyOpen, path);
  TryReplacing(path);
  state_ = std::make_unique<State>(State{path, ""});
}

void ReplacementFile::WriteLine(std::string_view text) {
  if (!state_) throw FileFailure(failure_number::kBadFileName, "");
  state_->Content += ToCodePage1252(text) + "\r\n";
}

void ReplacementFile::Close() {
  if (!state_) throw FileFailure(failure_number::kBadFileName, "");
  ReplaceFile(state_->Path, state_->Content);
  state_.reset();
}

void ReplacementFile::Abandon() noexcept { state_.reset(); }

struct AppendFile::State {
  OsFile File;
};

AppendFile::AppendFile() = default;
AppendFile::~AppendFile() = default;

void AppendFile::Open(const std::string& path) {
  if (state_) throw FileFailure(failure_number::kFileAlreadyOpen, path);
  state_ = std::make_unique<State>(State{OsFile::OpenToAppend(path)});
}

void AppendFile::Write(std::string_view text) {
  if (!state_) throw FileFailure(failure_number::kBadFileName, "");
  state_->File.Write(ToCodePage1252(text));
}

void AppendFile::Close() noexcept { state_.reset(); }

}  // namespace ostrel
