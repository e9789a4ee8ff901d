#include "platform/qt/pdf_file.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace ostrel {

PdfFile::PdfFile(NewFile file) : file_(std::move(file)) { open(WriteOnly | Unbuffered); }

PdfFile::~PdfFile() {
  // The printing has broken off, or the queue has a copy of its own by now.
  if (kept_) return;
  std::error_code gone;
  std::filesystem::remove(PathFromUtf8(file_.Path), gone);
}

void PdfFile::Check() const {
  if (failure_) throw Failure(*failure_);
}

void PdfFile::Flush() {
  WriteGathered();
  Check();
  file_.File.FlushToDisk();
}

qint64 PdfFile::readData(char*, qint64) { return -1; }

qint64 PdfFile::writeData(const char* data, qint64 size) {
  // The toolkit writes a page in many small pieces; each would be a call to the system.
  constexpr std::size_t kBlock = 1 << 16;
  gathered_.append(data, static_cast<std::size_t>(size));
  if (gathered_.size() < kBlock) return size;
  return WriteGathered() ? size : -1;
}

/// No exception may cross the toolkit, which calls this while it draws.
bool PdfFile::WriteGathered() {
  try {
    if (!failure_) file_.File.Write(gathered_);
  } catch (const Failure& failure) {
    failure_ = failure;
  }
  gathered_.clear();
  return !failure_;
}

}  // namespace ostrel
