#pragma once

// Small text operations that many rooms share. Letters beyond ASCII are left as they are: all texts
// are UTF-8, lengths of fields are counted in characters.

#include <string>
#include <string_view>

namespace ostrel {

std::string Trim(std::string_view text);       ///< without blanks at both ends
std::string UpperCase(std::string_view text);  ///< a-z to A-Z
std::string LowerCase(std::string_view text);

bool SameText(std::string_view a, std::string_view b);  ///< equal but for the case of a-z

/// Place of the first `part` in `text`, ignoring the case of a-z; npos when it is not there.
std::size_t FindText(std::string_view text, std::string_view part);
bool ContainsText(std::string_view text, std::string_view part);

std::size_t LengthOf(std::string_view text);                        ///< characters, not bytes
std::string LeftOf(std::string_view text, std::size_t characters);  ///< never cuts a character

}  // namespace ostrel
