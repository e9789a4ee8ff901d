#pragma once

// The words on a slip, in the languages of the crews.

#include <string>

namespace ostrel {

enum class SlipLanguage { English, Spanish };

enum class SlipWord {
  Crew,
  Continued,
  ContinuedBelow,
  Time,
  What,
  Quantity,
  Rate,
  Hours,
  Gross,
  In,
  Out,
  Pieces,
  StandardRate,
  NoClockOut,
  Total,
  AtStandardRate,
  GrossAnHour,
  MinimumWage,
  Missing,
  Agreement,
  Signature,
  Date,
  Count
};

/// UTF-8.
const char* WordFor(SlipWord word, SlipLanguage language);

/// The weekday of a day number (days since 30 December 1899).
const char* WeekdayFor(int day, SlipLanguage language);

}  // namespace ostrel
