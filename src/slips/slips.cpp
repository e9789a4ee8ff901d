#include "slips/slips.h"

#include <map>
#include <utility>

#include "frame/app_state.h"
#include "frame/standard_rate.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"

namespace ostrel {

namespace {

/// What was done of one kind at one rate.
struct Done {
  Carried As = Carried::Nothing;
  std::string Unit;
  double Rate = 0;
  double Quantity = 0, Hours = 0, Gross = 0;
};

class SlipWriter {
 public:
  SlipWriter(const DayView& view, const EmployeeDay& employee, const SlipWishes& wishes)
      : view_(view), employee_(employee), wishes_(wishes) {}
  Slip Write();

 private:
  std::string Word(SlipWord word) const { return WordFor(word, wishes_.Language); }
  std::string RateText(double rate) const {
    return rate == kStdRate ? Word(SlipWord::StandardRate) : GeneralText(rate);
  }
  std::string UnitText(const std::string& unit) const {
    return unit.empty() ? Word(SlipWord::Pieces) : unit;
  }

  void WriteHeader();
  void WriteLine(std::size_t place);
  std::string WhatIs(const DayLine& line) const;
  void AddToDone(const DayLine& line, const LinePay& pay);
  void WritePeriods();
  void WriteDone();
  void WriteTotals();

  const DayView& view_;
  const EmployeeDay& employee_;
  const SlipWishes& wishes_;
  std::map<std::pair<std::string, double>, Done> done_;  // by unit ("" for hours) and rate
  Slip slip_;
};

Slip SlipWriter::Write() {
  WriteHeader();
  for (const std::size_t place : employee_.Lines) WriteLine(place);
  WritePeriods();
  WriteDone();
  WriteTotals();
  return std::move(slip_);
}

void SlipWriter::WriteHeader() {
  slip_.Client = wishes_.Client;
  slip_.Day = Format(Moment{static_cast<double>(view_.Facts.Day)}, DateFormat) + " " +
              WeekdayFor(view_.Facts.Day, wishes_.Language);
  const OfficeEmployee* listed = view_.TheOffice->Find(employee_.Number);
  if (listed != nullptr && listed->Crew > 0)
    slip_.Crew = Word(SlipWord::Crew) + " " + GeneralText(listed->Crew);
  slip_.Employee = NumberText(employee_.Number);
  slip_.Name = view_.NameOf(employee_);
}

std::string SlipWriter::WhatIs(const DayLine& line) const {
  if (line.Kind == kInKind) return Word(SlipWord::In);
  if (line.Kind == kOutKind) return Word(SlipWord::Out);
  return line.Quantity == 0 ? Word(SlipWord::Hours) : UnitText(line.Unit);
}

void SlipWriter::WriteLine(std::size_t place) {
  const DayLine& line = view_.Facts.Lines[place];
  const LinePay pay = PayOf(line, view_.Worked.Lines[place], view_.Clock.TimeClock);
  SlipRow row;
  row.Time = TimeText(line.Minute);
  row.What = WhatIs(line);
  if (line.Quantity != 0) row.Quantity = GeneralText(line.Quantity);
  if (pay.As != Carried::Nothing) {
    row.Rate = RateText(line.Rate);
    if (pay.Hours != 0) row.Hours = MoneyText(pay.Hours);
    if (pay.Gross) row.Gross = MoneyText(*pay.Gross);
    AddToDone(line, pay);
  }
  slip_.Lines.push_back(std::move(row));
}

void SlipWriter::AddToDone(const DayLine& line, const LinePay& pay) {
  const bool hours = pay.As == Carried::Hours;
  const std::string unit = hours ? "" : "x" + UnitKey(line.Unit);
  Done& done = done_[{unit, line.Rate}];
  if (done.As == Carried::Nothing) {
    done.As = pay.As;
    done.Unit = line.Unit;
    done.Rate = line.Rate;
  }
  if (!hours) done.Quantity += line.Quantity;
  done.Hours += pay.Hours;
  done.Gross += pay.Gross.value_or(0);
}

void SlipWriter::WritePeriods() {
  for (const WorkPeriod& period : employee_.Periods) {
    SlipRow row;
    row.What = TimeText(period.From / 60) + " - ";
    if (period.To >= 0) row.What += TimeText(period.To / 60);
    if (period.Open) row.What += " (" + Word(SlipWord::NoClockOut) + ")";
    row.Hours = MoneyText(period.Hours);
    slip_.Summary.push_back(std::move(row));
  }
}

/// "150 BOX x 0.5"
void SlipWriter::WriteDone() {
  for (const auto& [sort, done] : done_) {
    SlipRow row;
    row.What = done.As == Carried::Hours
                   ? Word(SlipWord::Hours)
                   : GeneralText(HundredthsOrZero(done.Quantity)) + " " + UnitText(done.Unit);
    row.What += " x " + RateText(done.Rate);
    row.Hours = MoneyText(done.Hours);
    if (done.Rate != kStdRate) row.Gross = MoneyText(done.Gross);
    slip_.Summary.push_back(std::move(row));
  }
}

void SlipWriter::WriteTotals() {
  const EmployeePay pay = view_.PayOf(employee_);
  const auto add = [this](SlipWord word, std::string hours, std::string gross) {
    slip_.Totals.push_back({"", Word(word), "", "", std::move(hours), std::move(gross)});
  };
  add(SlipWord::Total, MoneyText(pay.Hours), MoneyText(pay.Gross));
  if (pay.AtStandard) add(SlipWord::AtStandardRate, MoneyText(pay.StandardHours), "");
  if (pay.GrossAnHour) add(SlipWord::GrossAnHour, "", MoneyText(*pay.GrossAnHour));
  if (view_.TheOffice->MinWage <= 0) return;
  add(SlipWord::MinimumWage, "", MoneyText(view_.TheOffice->MinWage));
  add(SlipWord::Missing, "", MoneyText(pay.Missing));
}

}  // namespace

std::vector<Slip> SlipsOf(const DayView& view, const SlipWishes& wishes) {
  std::vector<Slip> slips;
  for (const EmployeeDay& employee : view.Worked.Employees) {
    const bool wanted = !wishes.OnlyEmployee || *wishes.OnlyEmployee == employee.Number;
    if (wanted) slips.push_back(SlipWriter(view, employee, wishes).Write());
  }
  return slips;
}

}  // namespace ostrel
