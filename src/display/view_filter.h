#pragma once

// The view's filter: which lines the grid shows, as the date box, the employee box and one menu check
// say at this moment. The view, its totals and the reports ask here, so that they speak of the same
// lines.

#include <string>

namespace ostrel {

/// The filter of the view as where text, empty when every line shows. The boxes' texts go in as they
/// stand.
std::string WhereSelect();

}  // namespace ostrel
