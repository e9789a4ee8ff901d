// Not a target but the control of them all: a reader that believes the length that its input begins
// with, as a careless one would. The fuzzer must find that out, or a target that stands proves nothing.

#include "fuzz.h"

void ostrel::Try(std::string_view bytes) {
  constexpr std::string_view kMark = "LINE";
  if (!bytes.starts_with(kMark) || bytes.size() == kMark.size()) return;
  const std::string copy(bytes.substr(kMark.size() + 1));
  const auto length = static_cast<unsigned char>(bytes[kMark.size()]);
  Require(std::count(copy.data(), copy.data() + length, '\n') < 256);
}
