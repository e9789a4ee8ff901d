#pragma once

// The selected part of a text, counted in characters; what text boxes and the grid's cell editor
// share.

#include <string>
#include <string_view>

namespace ostrel {

/// A caret with the characters selected behind it.
struct Selection {
  int Start = 0, Length = 0;
};

std::string SelectedPart(const std::string& text, Selection selection);

/// The text with the selection replaced; `selection` becomes the bare caret behind the new part.
std::string ReplaceSelected(const std::string& text, Selection& selection, std::string_view part);

/// As much of the front of `part` as fits into a text of `holds` characters in the selection's place.
std::string FittingPart(const std::string& text, Selection selection, std::string_view part,
                        std::size_t holds);

/// Fit for a box of one line: each line break or control character becomes a blank.
std::string SingleLine(std::string text);

}  // namespace ostrel
