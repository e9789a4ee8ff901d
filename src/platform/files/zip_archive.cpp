#include "platform/files/zip_archive.h"

#include <zip.h>

#include <array>

#include "platform/values/failure.h"

namespace ostrel {

namespace {

// Types of files in the mode bits that packers of the Unix family put in the upper half of a
// member's attributes.
constexpr std::uint32_t kTypeBits = 0170000;
constexpr std::uint32_t kPlainType = 0100000;
// In the lower half: what packers of the DOS family know, and the mark of one of them that puts mode
// bits in the upper half although it calls itself a DOS packer.
constexpr std::uint32_t kDosFolderOrLabel = 0x18;
constexpr std::uint32_t kUpperHalfIsMode = 0x8000;

Failure ZipFailure(const std::string& reason) { return {failure_number::kDeviceIo, reason}; }

/// The library's record of what went wrong, freed when it goes.
class ZipError {
 public:
  ZipError() { zip_error_init(&error_); }
  ~ZipError() { zip_error_fini(&error_); }
  ZipError(const ZipError&) = delete;
  ZipError& operator=(const ZipError&) = delete;

  zip_error_t* Record() { return &error_; }
  Failure AsFailure() { return ZipFailure(zip_error_strerror(&error_)); }

 private:
  zip_error_t error_{};
};

zip_source* SourceOrThrow(zip_source* source, ZipError& error) {
  if (source == nullptr) throw error.AsFailure();
  return source;
}

bool IsPlainFile(zip* archive, std::uint64_t index) {
  zip_uint8_t system = 0;
  zip_uint32_t attributes = 0;
  if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0) return true;
  if ((attributes & kDosFolderOrLabel) != 0) return false;
  const bool hasMode =
      system == ZIP_OPSYS_UNIX || system == ZIP_OPSYS_OS_X || (attributes & kUpperHalfIsMode) != 0;
  const std::uint32_t type = attributes >> 16 & kTypeBits;
  return !hasMode || type == 0 || type == kPlainType;
}

struct MemberCloser {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using OpenMember = std::unique_ptr<zip_file_t, MemberCloser>;

}  // namespace

void ZipArchive::Closer::operator()(zip* archive) const { zip_discard(archive); }

ZipArchive::ZipArchive(zip_source* source) {
  ZipError error;
  archive_.reset(zip_open_from_source(source, ZIP_RDONLY, error.Record()));
  if (archive_ != nullptr) return;
  zip_source_free(source);
  throw error.AsFailure();
}

ZipArchive ZipArchive::OfBytes(std::string_view bytes) {
  if (bytes.empty())
    throw ZipFailure("Not a zip archive");  // the library takes it for an empty one
  ZipError error;
  return ZipArchive(SourceOrThrow(
      zip_source_buffer_create(bytes.data(), bytes.size(), 0, error.Record()), error));
}

std::vector<ZipMember> ZipArchive::Members() const {
  std::vector<ZipMember> members;
  const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
  for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(count); ++index) {
    zip_stat_t stat;
    if (zip_stat_index(archive_.get(), index, ZIP_FL_ENC_GUESS, &stat) != 0) continue;
    const char* const bytes = zip_get_name(archive_.get(), index, ZIP_FL_ENC_RAW);
    members.push_back({index, stat.name, bytes == nullptr ? "" : bytes, stat.size, stat.comp_size,
                       IsPlainFile(archive_.get(), index)});
  }
  return members;
}

std::string ZipArchive::Read(const ZipMember& member) const {
  const OpenMember file(zip_fopen_index(archive_.get(), member.Index, 0));
  if (file == nullptr) throw ZipFailure(zip_strerror(archive_.get()));
  std::string content;
  std::array<char, 65536> block;
  // Read on to the end even when all bytes are there: the checksum is compared at the end.
  for (;;) {
    const zip_int64_t count = zip_fread(file.get(), block.data(), block.size());
    if (count < 0) throw ZipFailure(zip_file_strerror(file.get()));
    if (count == 0) break;
    content.append(block.data(), static_cast<std::size_t>(count));
    if (content.size() > member.Size) throw ZipFailure("Longer than the zip says");
  }
  if (content.size() != member.Size) throw ZipFailure("Shorter than the zip says");
  return content;
}

}  // namespace ostrel
