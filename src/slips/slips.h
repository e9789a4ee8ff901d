#pragma once

// Slips to sign: what each employee of a day reads and signs. Lines in order of time, the periods
// with their hours, what was done by rate, the totals against the minimum wage. What the slips add
// up is what the import file carries: a line that it leaves out has neither hours nor gross here.

#include <optional>
#include <string>
#include <vector>

#include "day/day_view.h"
#include "slips/slip_words.h"

namespace ostrel {

struct SlipRow {
  std::string Time, What, Quantity, Rate, Hours, Gross;  ///< empty ones give their room to What
};

struct Slip {
  std::string Client, Day, Crew;  ///< "1234, Sample Ranch", "11/18/04 Thursday", "Crew 2"
  std::string Employee, Name;
  std::vector<SlipRow> Lines;    ///< may go over several slips
  std::vector<SlipRow> Summary;  ///< periods, and what was done by rate; the same
  std::vector<SlipRow> Totals;   ///< stay together on the slip that is signed
};

struct SlipWishes {
  std::string Client;  ///< as the form shows it
  SlipLanguage Language = SlipLanguage::English;
  std::optional<double> OnlyEmployee = {};  ///< set where the view shows one employee alone
};

/// In order of employee numbers.
std::vector<Slip> SlipsOf(const DayView& view, const SlipWishes& wishes);

}  // namespace ostrel
