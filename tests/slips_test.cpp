// Slips to sign: what stands on them, how they lie on the sheet, and that they add up to what the
// office gets.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>

#include "day/read_day.h"
#include "platform/values/dates.h"
#include "platform/values/numbers.h"
#include "scan_main/scan_main.h"
#include "slips/print_slips.h"
#include "support/agreeing_desktop.h"
#include "support/ask_sqlite.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

DayView PresentDay() {
  return MakeDayView(ReadDay("11/18/04"), PresentClock(),
                     std::make_shared<const Office>(ReadOffice()));
}

RecordedDocument Printed(Payroll& payroll, const std::vector<Slip>& slips, SlipLanguage language) {
  auto job = PrintSlips(slips, language, {.Name = "2004-11-18 Slips", .Folder = "Printed"});
  EXPECT_EQ(job->EndDoc(), "");
  return payroll.Desktop.Paper().Documents.back();
}

SlipWishes English() { return {.Client = "1234, Sample Ranch"}; }

/// Of each employee: hours, pieces, and both by unit and rate.
using Sums = std::map<std::string, double>;

void AddTo(Sums& sums, const std::string& what, const std::string& number) {
  double& sum = sums[what];
  sum = HundredthsOrZero(sum + NumericPrefix(number));
}

Sums SumsOfFile(const std::string& file) {
  Sums sums;
  std::istringstream lines(file);
  for (std::string line; std::getline(lines, line);) {
    if (line[0] == '*') continue;
    std::vector<std::string> fields;
    std::istringstream parts(line);
    for (std::string field; std::getline(parts, field, ',');) {
      std::erase(field, '"');
      fields.push_back(field == "#NULL#" ? "" : field);
    }
    const bool pieces = fields[9] == "P";
    const std::string rate = fields[2].empty() || fields[2] == "-9" ? "Std Rate" : fields[2];
    const std::string sort = pieces ? fields[3] : "Hours";
    const std::string hours = pieces ? fields[8] : fields[1];
    AddTo(sums, fields[0] + " total", hours);
    AddTo(sums, fields[0] + " " + sort + " x " + rate + " hours", hours);
    if (pieces) AddTo(sums, fields[0] + " " + sort + " x " + rate, fields[1]);
    if (rate == "Std Rate") continue;
    const double gross = NumericPrefix(fields[1]) * NumericPrefix(rate);
    AddTo(sums, fields[0] + " gross", MoneyText(gross));
  }
  return sums;
}

/// By the texts on the slips: the totals, what was done by rate, and the lines must all agree.
Sums SumsOfSlips(const std::vector<Slip>& slips) {
  Sums sums, lines;
  for (const Slip& slip : slips) {
    const bool carried = std::any_of(slip.Lines.begin(), slip.Lines.end(),
                                     [](const SlipRow& row) { return !row.Rate.empty(); });
    if (carried) AddTo(sums, slip.Employee + " total", slip.Totals[0].Hours);
    const bool known = std::any_of(slip.Lines.begin(), slip.Lines.end(),
                                   [](const SlipRow& row) { return !row.Gross.empty(); });
    if (known) AddTo(sums, slip.Employee + " gross", slip.Totals[0].Gross);
    for (const SlipRow& row : slip.Lines) AddTo(lines, slip.Employee, row.Hours);
    EXPECT_EQ(lines[slip.Employee], NumericPrefix(slip.Totals[0].Hours));
    for (const SlipRow& row : slip.Summary) {
      if (row.What.find(" x ") == row.What.npos) continue;
      const bool hours = row.What.starts_with("Hours");
      const std::string sort = hours ? row.What : row.What.substr(row.What.find(' ') + 1);
      AddTo(sums, slip.Employee + " " + sort + " hours", row.Hours);
      if (!hours) AddTo(sums, slip.Employee + " " + sort, row.What);
    }
  }
  return sums;
}

TEST(Slips, AddUpToWhatTheImportFileCarries) {
  std::mt19937 random(18);
  const auto below = [&](int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
  };
  const char* const rates[] = {"0", "0.27", "12.5", "-9", "1.115", "0.85"};
  const char* const units[] = {"BOX", "LBS", "BAGS"};
  RunningPayroll payroll;
  payroll.SetClock("11/18/04 9:00 pm");
  for (int run = 0; run < 8; ++run) {
    SCOPED_TRACE(run);
    AskSqlite(payroll.App("Prin1234.mdb"), "DELETE FROM OstrelPr");
    std::string day;
    for (int i = 0; i < 80; ++i) {
      day += std::to_string(101 + below(8)) + " " + "IOPPPX"[below(6)] + " " +
             TimeText(6 * 60 + below(13 * 60)) + " " + std::to_string(below(60) - 4) + " " +
             rates[below(6)] + "|";
    }
    payroll.AddLine(day);
    for (int i = 0; i < 3; ++i) {
      AskSqlite(payroll.App("Prin1234.mdb"), std::string("UPDATE OstrelPr SET QUAN_DESC = '") +
                                                 units[i] +
                                                 "' WHERE rowid % 3 = " + std::to_string(i));
    }
    mnuUseTimeClock.Checked = run % 4 != 3;  // the plain layout carries the lines as they are
    const std::vector<Slip> before = SlipsOf(PresentDay(), English());
    {
      AgreeingDesktop goesOn(payroll.Desktop, BoxAnswer::Ignore);
      goesOn.SetTime(MomentFrom("11/18/04 9:00 pm"));
      payroll.Choose(mnuWriteImportFile);
    }
    SetDesktop(&payroll.Desktop);
    payroll.SetClock("11/18/04 9:00 pm");
    const Sums carried = SumsOfFile(payroll.Folder.Read("disk/Pck-1234.asc"));
    EXPECT_GT(carried.size(), 20U);
    EXPECT_EQ(SumsOfSlips(before), carried);
  }
}

TEST(Slips, AreReadAndSigned) {
  RunningPayroll payroll;
  payroll.AddLine(
      "101 P 8:00 am 100 .5|101 P 10:00 am 50 .5|101 O 11:30 am|101 I 7:00 am|101 I 12:30 pm 0 -9|"
      "9999 O 9:00 am");
  payroll.SetClock("11/18/04 3:15 pm");
  const std::vector<Slip> slips = SlipsOf(PresentDay(), English());
  const RecordedDocument document = Printed(payroll, slips, SlipLanguage::English);
  ASSERT_EQ(document.Pages.size(), 1U);
  EXPECT_EQ(document.Pages[0].Lines(),
            "1234, Sample Ranch\n11/18/04 Thursday|Crew 2\n101|ALVAREZ MARIA\n"
            "Time|What|Quantity|Rate|Hours|Gross\n07:00 am|In\n"
            "08:00 am|pieces|100|0.5|3.00|50.00\n10:00 am|pieces|50|0.5|1.50|25.00\n"
            "11:30 am|Out\n12:30 pm|In|Std Rate|2.75\n"
            "07:00 am - 11:30 am|4.50\n12:30 pm - 03:15 pm (no clock-out)|2.75\n"
            "Hours x Std Rate|2.75\n150 pieces x 0.5|4.50|75.00\n"
            "Total|7.25|75.00\nof these at the standard rate, paid by the office|2.75\n"
            "Gross an hour|16.67\nMinimum wage|6.75\nMissing to the minimum wage|0.00\n"
            "These are my hours and my pieces.\nSignature|Date\n"
            "1234, Sample Ranch\n11/18/04 Thursday\n9999\nTime|What|Quantity|Rate|Hours|Gross\n"
            "09:00 am|Out\nTotal|0.00|0.00\nMinimum wage|6.75\nMissing to the minimum wage|0.00\n"
            "These are my hours and my pieces.\nSignature|Date");
  SlipWishes spanish = English();
  spanish.Language = SlipLanguage::Spanish;
  spanish.OnlyEmployee = 9999;
  const auto page =
      Printed(payroll, SlipsOf(PresentDay(), spanish), SlipLanguage::Spanish).Pages[0];
  EXPECT_THAT(page.Lines(), testing::StartsWith("1234, Sample Ranch\n11/18/04 jueves\n9999\n"));
  EXPECT_THAT(page.Lines(), testing::EndsWith("Firma|Fecha"));
  payroll.Desktop.Paper().Sheet = {8391, 11906};  // A5 has no room for four
  EXPECT_EQ(Printed(payroll, slips, SlipLanguage::English).Pages.size(), 2U);
}

/// Whether all of a text lies in one quarter of its sheet, off the edges.
bool InAQuarter(const Place& where, SheetSize sheet) {
  const auto part = [](int from, int size, int half) {
    return from / half == (from + size) / half && from % half >= 360 &&
           (from + size) % half <= half - 360;
  };
  return part(where.Left, where.Width, sheet.Width / 2) &&
         part(where.Top, where.Height, sheet.Height / 2);
}

TEST(Slips, LieFourToASheetAndLongOnesGoOn) {
  std::string name;  // sixty letters from right to left
  for (int i = 0; i < 60; ++i) name += "\xD7\x90";
  for (const SheetSize sheet : {SheetSize{12240, 15840}, SheetSize{11906, 16838}}) {
    RunningPayroll payroll;
    payroll.Desktop.Paper().Sheet = sheet;
    std::string day = "101 I 6:00 am|125 I 6:00 am|130 I 6:00 am|140 I 6:00 am";
    for (int i = 1; i <= 50; ++i) day += "|125 P 8:00 am " + std::to_string(1000 + i) + " .5";
    payroll.AddLine(day);
    std::vector<Slip> slips = SlipsOf(PresentDay(), English());
    ASSERT_EQ(slips.size(), 4U);
    slips[1].Name = name;
    const RecordedDocument document = Printed(payroll, slips, SlipLanguage::English);
    ASSERT_EQ(document.Pages.size(), 2U);
    std::string all;
    for (const RecordedPage& page : document.Pages) {
      all += page.Lines() + "\n";
      for (const RecordedText& text : page.Texts) {
        EXPECT_TRUE(text.Whole && InAQuarter(text.Where, sheet)) << text.Text;
      }
      ASSERT_GE(page.Rules.size(), 2U);  // to cut along
      EXPECT_EQ(page.Rules[0].Left, sheet.Width / 2);
      EXPECT_EQ(page.Rules[1].Top, sheet.Height / 2);
    }
    std::size_t at = 0;  // every line, once, in order, and one place to sign for each
    for (int i = 1; i <= 50; ++i) {
      at = all.find("|" + std::to_string(1000 + i) + "|", at);
      ASSERT_NE(at, all.npos) << i;
    }
    const auto count = [&](const std::string& part) {
      std::size_t times = 0;
      for (std::size_t from = 0; (from = all.find(part, from)) != all.npos; ++from) ++times;
      return times;
    };
    EXPECT_EQ(count("Signature"), 4U);
    EXPECT_EQ(count("|" + name), 3U);
    EXPECT_EQ(count("|continued ("), 2U);
    EXPECT_EQ(count("continued on the next slip"), 2U);
    EXPECT_LT(all.find("continued (3)"), all.find("Total", all.find("1050|")));
  }
}

}  // namespace
}  // namespace ostrel
