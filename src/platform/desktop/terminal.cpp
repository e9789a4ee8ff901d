#include "platform/desktop/terminal.h"

#ifdef _WIN32
#include <windows.h>

#include <shellapi.h>

#include <filesystem>

#include "platform/files/os_file.h"
#else
#include <iostream>
#endif

namespace ostrel {

#ifdef _WIN32

// main's own words are in the system's code page, which may not hold a folder's name.
std::vector<std::string> StartWords(int /*argc*/, const char* const* /*argv*/) {
  int count = 0;
  wchar_t** const all = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> words;
  for (int at = 1; at < count; ++at) words.push_back(Utf8FromPath(std::filesystem::path(all[at])));
  LocalFree(all);
  return words;
}

// A stream that was redirected is there; else the console's, which is opened by name.
void SayOnTerminal(Stream stream, const std::string& text) {
  HANDLE out = GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
  const bool redirected = out != nullptr && out != INVALID_HANDLE_VALUE;
  if (!redirected) {
    if (!AttachConsole(ATTACH_PARENT_PROCESS)) return;
    out = CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                      OPEN_EXISTING, 0, nullptr);
    if (out == INVALID_HANDLE_VALUE) return;
  }
  DWORD written = 0;
  WriteFile(out, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  if (!redirected) CloseHandle(out);
}

#else

std::vector<std::string> StartWords(int argc, const char* const* argv) {
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

void SayOnTerminal(Stream stream, const std::string& text) {
  (stream == Stream::Output ? std::cout : std::cerr) << text << std::flush;
}

#endif

}  // namespace ostrel
