#pragma once

// A folder of a test's own, gone with all that is in it when the test is over.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <string_view>

namespace ostrel {

inline std::string ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void WriteWholeFile(const std::filesystem::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
}

class TempFolder {
 public:
  TempFolder() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / ("ostrel-" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TempFolder() {
    std::error_code gone;
    std::filesystem::remove_all(path_, gone);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  /// Without a separator behind it.
  std::string Path() const { return path_.string(); }
  /// Of a file or folder in it.
  std::string Path(std::string_view name) const { return (path_ / name).string(); }

  /// Writes a file and returns its path.
  std::string Write(std::string_view name, std::string_view content) const {
    WriteWholeFile(path_ / name, content);
    return Path(name);
  }
  std::string Read(std::string_view name) const { return ReadWholeFile(path_ / name); }

  /// All that is in it, sorted by name: "a.txt=its content|sub/|sub/b.txt=|".
  std::string Contents() const {
    std::map<std::string, std::string> entries;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path_)) {
      const std::string name = entry.path().lexically_relative(path_).string();
      entries[name] = entry.is_directory() ? "/" : "=" + ReadWholeFile(entry.path());
    }
    std::string all;
    for (const auto& [name, content] : entries) all.append(name).append(content).append("|");
    return all;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace ostrel
