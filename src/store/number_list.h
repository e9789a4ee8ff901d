#pragma once

// A list of numbers as it stands in a query, "in (12,15,20)": who is clocked in, who is on a crew.
// DomainList makes one; the commands that go through a crew take it apart again.

#include <cstdint>
#include <string>
#include <vector>

namespace ostrel {

/// "in (12,15,20)"; the empty text for no numbers.
///   numbers  as texts; an empty one at the beginning leaves no mark in the list
std::string NumberList(const std::vector<std::string>& numbers);

/// What stands between the brackets of a list; a text without brackets as it is.
///   example  "in (12,15,20)" -> "12,15,20"
std::string WithoutBrackets(const std::string& list);

/// Takes one employee number off a list.
///   EmplList  shortened by one number; empty when it was the last
///   EmplN     out: the number, 0 where there is none
/// Positions in the list are 16-bit numbers: one of more than 32767 characters is a failure.
void ParseNextEmpl(std::string& EmplList, std::int32_t& EmplN);

}  // namespace ostrel
