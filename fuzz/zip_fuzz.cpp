// Any bytes as a zip: refused, or each member read to its claimed length; no wanted name leads out of
// a folder.

#include <filesystem>

#include "fuzz.h"
#include "platform/files/zip_archive.h"
#include "platform/files/zip_extraction.h"

namespace ostrel {
namespace {

constexpr std::uint64_t kMostBytes = 1 << 24;  // what one input may unpack, to be done in time

void TryName(const std::string& name) {
  // As if the part before the point were wanted, so that any name may pass.
  if (!IsWantedName(name, {name.substr(0, name.find('.'))})) return;
  const std::filesystem::path path(name);
  Require(!path.is_absolute() && path.filename() == path && name != "." && name != "..");
}

}  // namespace

void Try(std::string_view bytes) {
  using failure_number::kDeviceIo;
  TryName(std::string(bytes.substr(0, 64)));
  Attempt({kDeviceIo}, [&] {
    const auto archive = ZipArchive::OfBytes(bytes);
    std::uint64_t unpacked = 0;
    for (const ZipMember& member : archive.Members()) {
      TryName(member.Name);
      unpacked += member.Size;
      if (unpacked > kMostBytes || member.Size > kMostBytes) continue;
      const auto content = Attempt({kDeviceIo}, [&] { return archive.Read(member); });
      Require(!content || content->size() == member.Size);
    }
    return unpacked;
  });
}

}  // namespace ostrel
