#pragma once

// A machine without a display: the toolkit would end the program with a core dump. While one of these
// lives, it ends with a plain word on the standard error stream and exit code 1 instead.

namespace ostrel {

class NoDisplayReport {
 public:
  NoDisplayReport();
  ~NoDisplayReport();
  NoDisplayReport(const NoDisplayReport&) = delete;
  NoDisplayReport& operator=(const NoDisplayReport&) = delete;
};

}  // namespace ostrel
