// Any bytes as a zip: refused, or each member read to its claimed length; no wanted name leads out of
// a folder.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/failure.h"
#include "platform/files/zip_archive.h"
#include "platform/files/zip_extraction.h"

namespace {

constexpr std::uint64_t kMostBytes = 1 << 24;  // what one input may unpack, to be done in time

void Require(bool holds) {
  if (!holds) std::abort();
}

void TryName(const std::string& name) {
  // As if the part before the point were wanted, so that any name may pass.
  if (!ostrel::IsWantedName(name, {name.substr(0, name.find('.'))})) return;
  const std::filesystem::path path(name);
  Require(!path.is_absolute() && path.filename() == path && name != "." && name != "..");
}

void TryMember(const ostrel::ZipArchive& archive, const ostrel::ZipMember& member) {
  if (member.Size > kMostBytes) return;
  try {
    Require(archive.Read(member).size() == member.Size);
  } catch (const ostrel::Failure& failure) {
    Require(failure.Number == ostrel::failure_number::kDeviceIo && !failure.Text.empty());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  TryName(std::string(bytes.substr(0, 64)));
  try {
    const auto archive = ostrel::ZipArchive::OfBytes(bytes);
    std::uint64_t unpacked = 0;
    for (const ostrel::ZipMember& member : archive.Members()) {
      TryName(member.Name);
      unpacked += member.Size;
      if (unpacked <= kMostBytes) TryMember(archive, member);
    }
  } catch (const ostrel::Failure& failure) {
    Require(failure.Number == ostrel::failure_number::kDeviceIo && !failure.Text.empty());
  }
  return 0;
}
