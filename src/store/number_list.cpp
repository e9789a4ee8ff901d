#include "store/number_list.h"

#include <limits>

#include "frame/failure_reporting.h"
#include "platform/values/failure.h"
#include "platform/values/numbers.h"

namespace ostrel {

namespace {

/// Place of a character in an employee list, or npos.
///   throws  Failure 6 for a list whose positions do not fit 16 bits
std::size_t PlaceIn(const std::string& list, char character) {
  if (list.size() > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
    throw Failure(failure_number::kOverflow, "Overflow: the list of employees is too long.");
  }
  return list.find(character);
}

}  // namespace

std::string NumberList(const std::vector<std::string>& numbers) {
  if (numbers.empty()) return {};
  std::string list;
  for (const std::string& number : numbers) list += (list.empty() ? "" : ",") + number;
  return "in (" + list + ")";
}

std::string WithoutBrackets(const std::string& list) {
  const std::size_t open = list.find('(');
  const std::size_t start = open == std::string::npos ? 0 : open + 1;
  return list.substr(start, list.find(')') - start);
}

void ParseNextEmpl(std::string& EmplList, std::int32_t& EmplN) {
  constexpr FailureTail statement{ScannerModule, "ParseNextEmpl"};
  std::size_t open = std::string::npos, close = std::string::npos, comma = std::string::npos;
  statement(5650, [&] { open = PlaceIn(EmplList, '('); });
  if (open != std::string::npos) EmplList.erase(0, open + 1);
  statement(5660, [&] { close = PlaceIn(EmplList, ')'); });
  if (close != std::string::npos) EmplList.resize(close);
  statement(5670, [&] { comma = PlaceIn(EmplList, ','); });
  statement(5680, [&] { EmplN = ToLong(NumericPrefix(EmplList)); });
  EmplList.erase(0, comma == std::string::npos ? comma : comma + 1);
}

}  // namespace ostrel
