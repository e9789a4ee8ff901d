#include "platform/files/removable_disk.h"

#include <filesystem>

#include "platform/files/os_file.h"

#ifdef _WIN32
#include <windows.h>

#include "platform/files/text_encoding.h"
#elif defined(__linux__)
#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>
#else
#error "Say here where this system mounts removable disks."
#endif

namespace ostrel {

#ifdef _WIN32

std::string RemovableDisk() {
  for (std::wstring root = L"a:\\"; root[0] <= L'z'; ++root[0]) {
    const bool removable = GetDriveTypeW(root.c_str()) == DRIVE_REMOVABLE;
    // An empty drive is there too, but has no volume.
    if (removable &&
        GetVolumeInformationW(root.c_str(), nullptr, 0, nullptr, nullptr, nullptr, nullptr, 0)) {
      return FromWide(root);
    }
  }
  return {};
}

std::string DiskHolding(const std::string& folder) {
  return Utf8FromPath(PathFromUtf8(folder).root_path());
}

#else

namespace {

bool IsOctal(std::string_view digits) {
  return digits.size() == 3 && digits.find_first_not_of("01234567") == std::string_view::npos;
}

// The list writes blanks and the like as a backslash and three octal digits.
std::string Unescaped(std::string_view field) {
  std::string text;
  for (std::size_t at = 0; at < field.size(); ++at) {
    const std::string_view digits = field.substr(at + 1, 3);
    if (field[at] == '\\' && IsOctal(digits)) {
      text += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + digits[2] - '0');
      at += 3;
    } else {
      text += field[at];
    }
  }
  return text;
}

/// Takes the first line off a list of mounts.
///   returns  its folder as it stands there
std::string_view TakeMount(std::string_view& mounts) {
  const std::string_view line = mounts.substr(0, mounts.find('\n'));
  mounts.remove_prefix(std::min(mounts.size(), line.size() + 1));
  const std::size_t device = std::min(line.size(), line.find(' '));
  const std::string_view rest = line.substr(std::min(line.size(), device + 1));
  return rest.substr(0, rest.find(' '));
}

std::string MountsNow() {
  std::ifstream mounts("/proc/self/mounts", std::ios::binary);
  return {std::istreambuf_iterator<char>(mounts), {}};
}

}  // namespace

std::string RemovableMount(std::string_view mounts) {
  while (!mounts.empty()) {
    const std::string_view folder = TakeMount(mounts);
    if (folder.starts_with("/media/") || folder.starts_with("/run/media/")) {
      return Unescaped(folder);
    }
  }
  return {};
}

std::string MountHolding(std::string_view mounts, std::string_view folder) {
  std::string holding = "/";
  while (!mounts.empty()) {
    std::string mount = Unescaped(TakeMount(mounts));
    const bool holds = folder == mount || folder.starts_with(mount + "/");
    if (holds && mount.size() > holding.size()) holding = std::move(mount);
  }
  return holding;
}

std::string RemovableDisk() { return RemovableMount(MountsNow()); }

std::string DiskHolding(const std::string& folder) {
  // With a dot behind it the folder is named without a separator at its end.
  std::error_code unreachable;
  const auto path = std::filesystem::weakly_canonical(PathFromUtf8(folder + "/."), unreachable);
  return MountHolding(MountsNow(), Utf8FromPath(unreachable ? PathFromUtf8(folder) : path));
}

#endif

}  // namespace ostrel
