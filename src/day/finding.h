#pragma once

// One thing in a day that is worth a second look, in a foreman's words.

#include <cstddef>
#include <string>

namespace ostrel {

enum class Oddity {
  InWithoutOut,
  OutWithoutIn,
  InWhileIn,
  SecondOut,
  PiecesWithoutHours,
  SameLineTwice,
  LongDay,
  NegativeQuantity,
  FarAboveUsual,
  PiecesWithoutRate,
  OddUnit,
  LowHourlyRate,
  UnknownNumber,
  GrossNotQuantityTimesRate,
  OtherLayout,
};

struct Finding {
  Oddity Kind = Oddity::InWithoutOut;
  std::size_t Line = 0;  ///< a place in DayFacts::Lines
  std::string What;      ///< "out without in at 12:30 pm"
};

}  // namespace ostrel
