#include "day/read_day.h"

#include <algorithm>
#include <utility>

#include "frame/app_state.h"
#include "platform/values/clock.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "work_day/work_day.h"

namespace ostrel {

namespace {

/// Ordinal of a field that a table may lack, or -1.
int OrdinalIn(const Recordset& rows, std::string_view field) {
  for (int ordinal = 0; ordinal < rows.FieldCount(); ++ordinal) {
    if (SameText(rows[ordinal].Name(), field)) return ordinal;
  }
  return -1;
}

/// Where a line's fields stand, looked up once for all lines.
struct LineFields {
  explicit LineFields(const Recordset& rows)
      : EmplNumb(OrdinalIn(rows, "EMPL_NUMB")),
        Name(OrdinalIn(rows, "SORT_NAME")),
        Time(OrdinalIn(rows, "ETIME")),
        Kind(OrdinalIn(rows, "EVENT_TYPE")),
        Quantity(OrdinalIn(rows, "QUANTITY")),
        Unit(OrdinalIn(rows, "QUAN_DESC")),
        Enterprise(OrdinalIn(rows, "ENTERPRISE")),
        Operation(OrdinalIn(rows, "OPERATION")),
        Equipment(OrdinalIn(rows, "EQUIP_NUMB")),
        Memo(OrdinalIn(rows, "MEMO")),
        Rate(OrdinalIn(rows, "RATE")),
        Gross(OrdinalIn(rows, "GROSS")),
        HourGross(OrdinalIn(rows, "HOUR_GROSS")),
        Hours(OrdinalIn(rows, "HOURS")) {}
  int EmplNumb, Name, Time, Kind, Quantity, Unit, Enterprise, Operation, Equipment, Memo, Rate,
      Gross, HourGross, Hours;
};

std::string TextIn(const Recordset& rows, int ordinal) {
  return ordinal < 0 ? std::string() : Trim(rows[ordinal].Get().Characters());
}

double NumberIn(const Recordset& rows, int ordinal) {
  return ordinal < 0 ? 0 : rows[ordinal].Get().NumberOrZero();
}

std::optional<double> NumberIfSet(const Recordset& rows, int ordinal) {
  const Value value = rows[ordinal];
  if (value.IsNull()) return {};
  return value.NumberOrZero();
}

/// Codes are compared as they stand: "i" is no clock-in.
char KindIn(const Recordset& rows, int ordinal) {
  const std::string code = rows[ordinal].Get().Characters();
  const bool known = code.size() == 1 && std::string_view("IOPX").find(code) != code.npos;
  return known ? code[0] : kOtherKind;
}

DayLine LineIn(const Recordset& rows, const LineFields& at) {
  DayLine line;
  line.Row = rows.GetBookmark();
  line.EmplNumb = NumberIn(rows, at.EmplNumb);
  line.Name = TextIn(rows, at.Name);
  line.Minute = MinuteOf(Moment{NumberIn(rows, at.Time)});
  line.Kind = KindIn(rows, at.Kind);
  line.Quantity = NumberIn(rows, at.Quantity);
  line.Unit = TextIn(rows, at.Unit);
  line.Rate = NumberIn(rows, at.Rate);
  line.Enterprise = NumberIn(rows, at.Enterprise);
  line.Operation = NumberIn(rows, at.Operation);
  line.Equipment = NumberIn(rows, at.Equipment);
  line.Memo = TextIn(rows, at.Memo);
  line.Gross = NumberIfSet(rows, at.Gross);
  line.HourGross = NumberIfSet(rows, at.HourGross);
  line.Hours = NumberIfSet(rows, at.Hours);
  return line;
}

std::vector<OfficeEmployee> EmployeesOfOffice() {
  // A recordset of its own: PrmsRs stays on the employee of the last line.
  Recordset rows = DescDb.OpenRecordset("Prms" + ClientNumb, RecordsetType::Table);
  const int number = OrdinalIn(rows, "EMPL_NUMB"), name = OrdinalIn(rows, "SORT_NAME"),
            crew = OrdinalIn(rows, "CREW");
  std::vector<OfficeEmployee> employees;
  if (number < 0) return employees;
  for (; !rows.Eof(); rows.MoveNext()) {
    if (rows[number].Get().IsNull()) continue;
    employees.push_back({NumberIn(rows, number), TextIn(rows, name), NumberIn(rows, crew)});
  }
  std::stable_sort(
      employees.begin(), employees.end(),
      [](const OfficeEmployee& a, const OfficeEmployee& b) { return a.Number < b.Number; });
  return employees;
}

}  // namespace

DayFacts ReadDay(const std::string& day) {
  DayFacts facts{static_cast<int>(DateValue(day)), {}};
  Recordset rows = PrinDb.OpenRecordset(
      "Select * from [OstrelPr]" + WhereDay(day) + " order by ETIME", RecordsetType::Dynaset);
  if (rows.Eof()) return facts;
  const LineFields at(rows);
  facts.Lines.reserve(rows.RowCount());
  for (; !rows.Eof(); rows.MoveNext()) facts.Lines.push_back(LineIn(rows, at));
  return facts;
}

Office ReadOffice() {
  // In cents, as the form shows it and the minimum wage watch compares it.
  return {NumericPrefix(Format(NumOrZero(ClientRs, "MIN_WAGE"), "#.00")), EmployeesOfOffice()};
}

DayClock PresentClock() { return {mnuUseTimeClock.Checked, Now(), DefaultClockOut}; }

}  // namespace ostrel
