#pragma once

// What can stand under a file's name and is no plain file.

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace ostrel {

inline constexpr const char* kOddFiles[] = {"folder", "pipe", "socket", "/dev/zero", "unmounted/x"};

/// Puts one of kOddFiles under a name; those with a "/" are what a link leads to.
inline void PutOddFile(const std::string& kind, const std::string& path) {
  std::filesystem::remove_all(path);
  if (kind == "folder") std::filesystem::create_directory(path);
  if (kind == "pipe") mkfifo(path.c_str(), 0600);
  if (kind.find('/') != std::string::npos) std::filesystem::create_symlink(kind, path);
  if (kind != "socket") return;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const int handle = socket(AF_UNIX, SOCK_STREAM, 0);
  bind(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  close(handle);
}

}  // namespace ostrel
