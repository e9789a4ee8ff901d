// Whole days' hours and pay by the program, against whole numbers.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "battery/battery.h"
#include "frame/app_state.h"
#include "hours/employee_hours.h"
#include "platform/values/format.h"
#include "scan_main/scan_main.h"
#include "support/ask_sqlite.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

constexpr int kEmployees = 200;

/// Rounded to the nearest whole, a half up.
std::int64_t Nearest(std::int64_t number, std::int64_t divisor) {
  return (2 * number + divisor) / (2 * divisor);
}

struct PieceOfWork {
  std::int64_t Quantity = 0;  // hundredths
  std::int64_t Rate = 0;      // ten-thousandths
  int Minute = 0;             // of the day

  std::int64_t Gross() const { return Quantity * Rate; }  // millionths
  std::int64_t Cents() const { return Nearest(Gross(), 10'000); }
};

struct WorkedPeriod {
  int In = 0, Out = 0;  // minutes of the day
  std::vector<PieceOfWork> Pieces;

  std::int64_t HoursOf(const PieceOfWork& piece) const {  // hundredths
    std::int64_t gross = 0;
    for (const PieceOfWork& each : Pieces) gross += each.Gross();
    return Nearest(Nearest(100 * std::int64_t{Out - In}, 60) * piece.Gross(), gross);
  }
};

/// As SQLite prints a number of hundredths.
std::string Decimal(std::int64_t hundredths) {
  std::string text = std::to_string(hundredths % 100 + 100).substr(1);
  if (text.back() == '0') text.pop_back();
  return std::to_string(hundredths / 100) + "." + text;
}

WorkedPeriod RandomPeriod(Harm& random, int from) {
  const auto below = [&](int bound) {
    return static_cast<int>(random.Below(static_cast<std::size_t>(bound)));
  };
  for (;;) {
    WorkedPeriod period{from + below(60), from + 120 + below(240), {}};
    for (int piece = 1 + below(4); piece > 0; --piece) {
      // Quantities and rates as crews have them, on whose products many a half cent falls.
      const std::int64_t quantity = random.Coin() ? 25 * (1 + below(400)) : 1 + below(20'000);
      const std::int64_t rate = random.Coin() ? 50 * (1 + below(200)) : 1 + below(40'000);
      period.Pieces.push_back({quantity, rate, period.In + 1 + below(period.Out - period.In - 1)});
    }
    bool everyPieceHasHours = true;  // else there is no rate an hour
    for (const auto& piece : period.Pieces) everyPieceHasHours &= period.HoursOf(piece) > 0;
    if (everyPieceHasHours) return period;
  }
}

class Money : public testing::Test {
 protected:
  void AddEvent(int employee, const char* type, int minute, double quantity = 0, double rate = 0) {
    LinesRs.AddNew();
    LinesRs["EMPL_NUMB"] = employee;
    LinesRs["EVENT_TYPE"] = type;
    LinesRs["ETIME"] = "11/18/04 " + Format(minute / 1440.0, "hh:mm am/pm");
    LinesRs["QUANTITY"] = quantity;
    LinesRs["RATE"] = rate;
    LinesRs.Update();
  }

  void Add(int employee, const WorkedPeriod& period) {
    AddEvent(employee, "I", period.In);
    for (const PieceOfWork& piece : period.Pieces) {
      const double quantity = static_cast<double>(piece.Quantity) / 100;
      const double rate = static_cast<double>(piece.Rate) / 10'000;
      AddEvent(employee, "P", piece.Minute, quantity, rate);
      const std::int64_t hours = period.HoursOf(piece);
      expected += (expected.empty() ? "" : "|") + Decimal(piece.Cents()) + "," + Decimal(hours) +
                  "," + Decimal(Nearest(100 * piece.Cents(), hours));
      cents += piece.Cents();
      ++row["pieces of work"];
      // Control: the same cent by the machine's own numbers and rounding.
      if (std::llround(quantity * rate * 100) != piece.Cents()) ++row.Control;
    }
    AddEvent(employee, "O", period.Out);
  }

  std::string Ask(const char* sql) const { return AskSqlite(payroll.App("Prin1234.mdb"), sql); }

  Payroll payroll;
  std::string expected;  // of the day: gross, hours, gross an hour of each piece of work
  std::int64_t cents = 0;
  Row row{"Money", "cents off without the fifteen digits"};
};

TEST_F(Money, OfWholeDaysIsExact) {
  payroll.Start();
  payroll.SetClock("11/18/04 11:00 pm");
  Harm random;
  for (const int wanted = Runs(1'000'000, 20'000); row["pieces of work"] < wanted;) {
    SCOPED_TRACE(++row["days"]);
    Ask("DELETE FROM OstrelPr");
    expected.clear();
    cents = 0;
    LinesRs = PrinDb.OpenRecordset("OstrelPr");
    PrinDb.ShareCommits();
    for (int employee = 101; employee < 101 + kEmployees; ++employee) {
      for (const int from : {6 * 60, 14 * 60}) Add(employee, RandomPeriod(random, from));
    }
    PrinDb.CommitShared();
    CalcEmplHours();
    ASSERT_EQ(payroll.Desktop.TakeShown(), "");
    // One text is compared first: it tells apart nothing but equal or not, quickly.
    const std::string paid =
        Ask("SELECT GROSS, HOURS, HOUR_GROSS FROM OstrelPr WHERE EVENT_TYPE = 'P'");
    ASSERT_TRUE(paid == expected) << paid << "\nexpected\n" << expected;
    std::string footer = TDBGrid1.Columns("GROSS").FooterText;
    std::erase(footer, ',');
    ASSERT_EQ(std::llround(std::stod(footer) * 100), cents);
  }
}

}  // namespace
}  // namespace ostrel
