#include "slips/slip_words.h"

#include <array>
#include <cassert>
#include <cstddef>

namespace ostrel {

namespace {

struct Words {
  SlipWord Word;
  const char* English;
  const char* Spanish;
};

constexpr std::array kWords = {
    Words{SlipWord::Crew, "Crew", "Cuadrilla"},
    Words{SlipWord::Continued, "continued", "continuación"},
    Words{SlipWord::ContinuedBelow, "continued on the next slip", "continúa en la hoja siguiente"},
    Words{SlipWord::Time, "Time", "Hora"},
    Words{SlipWord::What, "What", "Concepto"},
    Words{SlipWord::Quantity, "Quantity", "Cantidad"},
    Words{SlipWord::Rate, "Rate", "Tarifa"},
    Words{SlipWord::Hours, "Hours", "Horas"},
    Words{SlipWord::Gross, "Gross", "Bruto"},
    Words{SlipWord::In, "In", "Entrada"},
    Words{SlipWord::Out, "Out", "Salida"},
    Words{SlipWord::Pieces, "pieces", "piezas"},
    Words{SlipWord::StandardRate, "Std Rate", "Est."},
    Words{SlipWord::NoClockOut, "no clock-out", "sin salida"},
    Words{SlipWord::Total, "Total", "Total"},
    Words{SlipWord::AtStandardRate, "of these at the standard rate, paid by the office",
          "de ellas a tarifa estándar, las paga la oficina"},
    Words{SlipWord::GrossAnHour, "Gross an hour", "Bruto por hora"},
    Words{SlipWord::MinimumWage, "Minimum wage", "Salario mínimo"},
    Words{SlipWord::Missing, "Missing to the minimum wage", "Falta para el salario mínimo"},
    Words{SlipWord::Agreement, "These are my hours and my pieces.",
          "Estas son mis horas y mis piezas."},
    Words{SlipWord::Signature, "Signature", "Firma"},
    Words{SlipWord::Date, "Date", "Fecha"},
};

constexpr bool InOrder() {
  for (std::size_t i = 0; i < kWords.size(); ++i) {
    if (kWords[i].Word != static_cast<SlipWord>(i)) return false;
  }
  return kWords.size() == static_cast<std::size_t>(SlipWord::Count);
}
static_assert(InOrder());

// 30 December 1899 was a Saturday.
constexpr std::array<std::array<const char*, 2>, 7> kWeekdays = {{{"Saturday", "sábado"},
                                                                  {"Sunday", "domingo"},
                                                                  {"Monday", "lunes"},
                                                                  {"Tuesday", "martes"},
                                                                  {"Wednesday", "miércoles"},
                                                                  {"Thursday", "jueves"},
                                                                  {"Friday", "viernes"}}};

}  // namespace

const char* WordFor(SlipWord word, SlipLanguage language) {
  const Words& words = kWords.at(static_cast<std::size_t>(word));
  return language == SlipLanguage::Spanish ? words.Spanish : words.English;
}

const char* WeekdayFor(int day, SlipLanguage language) {
  const auto weekdays = static_cast<int>(kWeekdays.size());
  const int weekday = (day % weekdays + weekdays) % weekdays;
  return kWeekdays.at(static_cast<std::size_t>(weekday)).at(static_cast<std::size_t>(language));
}

}  // namespace ostrel
