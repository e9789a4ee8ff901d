#include "platform/desktop/child_process.h"

#include "platform/values/failure.h"

#ifdef _WIN32
#include <windows.h>

#include "platform/files/text_encoding.h"
#elif defined(__unix__)
#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>

extern char** environ;
#else
#error "Say here how this system runs a program and waits for it."
#endif

namespace ostrel {

namespace {

[[noreturn]] void RefuseToStart(const std::string& commandLine) {
  throw Failure(failure_number::kFileNotFound, "File not found: " + commandLine);
}

}  // namespace

#ifdef _WIN32

std::int32_t RunCommandLine(const std::string& commandLine) {
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  std::wstring writable = ToWide(commandLine);
  if (!CreateProcessW(nullptr, writable.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS,
                      nullptr, nullptr, &start, &process)) {
    RefuseToStart(commandLine);
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD code = 0;
  GetExitCodeProcess(process.hProcess, &code);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<std::int32_t>(code);
}

std::string ShortFormOf(const std::string& path) {
  const std::wstring asked = ToWide(path);
  std::wstring shortPath(32768, L'\0');  // the longest that the system knows
  const DWORD length =
      GetShortPathNameW(asked.c_str(), shortPath.data(), static_cast<DWORD>(shortPath.size()));
  if (length == 0 || length > shortPath.size()) return path;
  shortPath.resize(length);
  return FromWide(shortPath);
}

#else

std::int32_t RunCommandLine(const std::string& commandLine) {
  constexpr int kNoSuchCommand = 127;  // what the shell answers for a program that is not there
  std::string shell = "/bin/sh", option = "-c", command = commandLine;
  char* const arguments[] = {shell.data(), option.data(), command.data(), nullptr};
  pid_t process = 0;
  if (posix_spawn(&process, shell.c_str(), nullptr, nullptr, arguments, environ) != 0) {
    RefuseToStart(commandLine);
  }
  int status = 0;
  // A signal to this program, such as a resized terminal's, is no end of the other one.
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  if (code == kNoSuchCommand) RefuseToStart(commandLine);
  return code;
}

std::string ShortFormOf(const std::string& path) { return path; }

#endif

}  // namespace ostrel
