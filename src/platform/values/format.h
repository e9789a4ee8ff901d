#pragma once

// The format patterns of the program, and no others.
//
//   "hh:mm am/pm"   07:05 am, 12:00 pm (noon), 12:00 am (midnight), 01:30 pm
//   "hh:mm"         24 hours: 07:05, 13:30
//   "mm/dd/yy", "mm/dd", "dddd"   06/14/04, 06/14, Monday
//   "#0.00", "Fixed", "#.00", "#,##0.00", " #,###.##", " #,###.00"
//   "ddddd", "General Date"       11/30/2004, 11/30/2004 3:04:05 PM
//   ""              the general form
//
// Money: a number is taken to 15 significant decimal digits and then rounded to the decimals of the
// pattern, a tie going away from zero. 2.675 gives 2.68 and 4.725 gives 4.73 although the nearest
// doubles lie just below, because people who check the sheet work with the decimals that they see.
// A number that comes out as zero has no minus sign.
//
// Times: a moment is rounded to the nearest second before it is cut to minutes. Only the size of
// the fraction of the day shows, so -0.25 shows as 06:00 like 0.25 and 1.25. A date moves on to the
// next day with the second that rounds up to midnight.

#include <string>
#include <string_view>

#include "platform/values/value.h"

namespace ostrel {

/// A Moment in the general form is its "General Date".
///   throws  Failure 5 for a pattern that is not in the list above; Failure 6 for a number that is
///           infinite or none, and for a moment outside the years 100 to 9999
std::string Format(double number, std::string_view pattern);
std::string Format(Moment moment, std::string_view pattern);

/// Null gives the empty text; a Text is read as a number or a date as the pattern needs and comes
/// back unchanged when it is neither.
std::string Format(const Value& value, std::string_view pattern);

}  // namespace ostrel
