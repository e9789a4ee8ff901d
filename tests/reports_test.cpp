// Print Displayed Lines and the daily report, from the menu command to the texts on the sheets.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/files/numbered_file.h"
#include "scan_main/scan_main.h"
#include "support/payroll.h"

namespace ostrel {

namespace {

using testing::EndsWith;
using testing::StartsWith;

const std::string kHeader = "1234, Sample Ranch    ** 11/18/04, Thursday **        Crew#2\n";
const std::string kClockHeadings =
    "Empl#|Pce Quan|Name|Time|Date|I/O/Pce|QDesc|Rate|Gross|Gross/Hr|Ent#|Oper|Eqp#|Memo";
const std::string kPlainHeadings =
    "Empl#|Pce Quan|Hours|Name|Date|QDesc|Rate|Gross|Gross/Hr|Ent#|Oper|Eqp#|Memo";
const std::string kDailyPrinted = "[i] Ostrel Payroll | Report printed. | Ok -> Ok";

class ReportsTest : public testing::Test {
 protected:
  RecordedDocument Print(const std::string& what = "11/18/04") {
    Office.Choose(mnuPrintLines, "[i] Ostrel Payroll | " + what + " report printed. | Ok -> Ok");
    EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
    return Documents().back();
  }
  std::vector<RecordedDocument>& Documents() { return Office.Desktop.Paper().Documents; }

  RunningPayroll Office;
};

/// Where the upright lines stand: the edges of the columns.
std::vector<int> ColumnEdges(const RecordedPage& page) {
  std::vector<int> edges;
  for (const Place& rule : page.Rules) {
    if (rule.Width == 0) edges.push_back(rule.Left);
  }
  return edges;
}

TEST_F(ReportsTest, ThePageHoldsHeaderHeadingsAndTheRowsInTheColumnsOfTheView) {
  using Edges = std::vector<int>;
  Office.AddLine("130 P 10:00 am 100 0.5|101 P 8:00 am 200 -9");
  const auto page = [&] {
    const RecordedDocument document = Print();
    EXPECT_EQ(document.Name, "2004-11-18 Displayed lines");
    EXPECT_EQ(document.Pages.size(), 1U);
    return document.Pages[0];
  };
  const std::string durand = "\n130|100|10:00 am|11/18|P|0.5";
  const std::string alvarez = "\n101|200|08:00 am|11/18|P|Std Rate";
  const RecordedPage clock = page();
  EXPECT_EQ(clock.Lines(), kHeader + kClockHeadings + durand + alvarez);
  EXPECT_EQ(ColumnEdges(clock), (Edges{360, 975, 1770, 3420, 4260, 4905, 5685, 6270, 6975, 7860,
                                       8715, 9270, 9825, 10425, 10920}));
  EXPECT_EQ(TDBGrid1.Columns("Memo").Width, 990);
  EXPECT_EQ(clock.Texts[0].Where.Top, 720);
  const auto quantity = std::find_if(clock.Texts.begin(), clock.Texts.end(),
                                     [](const RecordedText& text) { return text.Text == "100"; });
  ASSERT_NE(quantity, clock.Texts.end());
  EXPECT_EQ(quantity->Align, Alignment::Right);
  EXPECT_TRUE(quantity->Whole);
  EXPECT_GT(quantity->Where.Left, 975);
  EXPECT_LT(quantity->Where.Left + quantity->Where.Width, 1770);
  Office.Choose(mnuEmplOrder);
  EXPECT_EQ(page().Lines(), kHeader + kClockHeadings + alvarez + durand);
  Office.Choose(mnuUseTimeClock);
  const RecordedPage plain = page();
  EXPECT_EQ(plain.Lines(),
            kHeader + kPlainHeadings + "\n101|200|11/18|Std Rate\n130|100|11/18|0.5");
  EXPECT_EQ(ColumnEdges(plain), (Edges{360, 975, 1770, 2640, 4290, 4935, 5520, 6225, 7110, 7965,
                                       8520, 9075, 9675, 10665}));
}

TEST_F(ReportsTest, EveryPageOfALongDayRepeatsHeaderAndHeadings) {
  std::string lines, expected, printed;
  for (int i = 1; i <= 2000; ++i) {
    lines += std::to_string(i) + " P 8:00 am 10 0.5|";
    expected += "\n" + std::to_string(i) + "|10|08:00 am|11/18|P|0.5";
  }
  Office.AddLine(lines);
  Office.Choose(mnuEmplOrder);
  const RecordedDocument document = Print();
  EXPECT_GE(document.Pages.size(), 40U);
  for (const RecordedPage& page : document.Pages) {
    const std::string head = kHeader + kClockHeadings, text = page.Lines();
    EXPECT_EQ(text.substr(0, head.size()), head);
    printed += text.substr(head.size());
    const Place& last = page.Texts.back().Where;
    EXPECT_LE(last.Top + last.Height, 15840 - 720);
  }
  EXPECT_TRUE(printed == expected);
}

TEST_F(ReportsTest, WithNothingOnShowAPageComesOutAllTheSame) {
  Office.Choose(mnuEmplDailyRpt, kDailyPrinted);
  EXPECT_THAT(Documents().back().Pages[0].Lines(),
              AllOf(StartsWith("1234, Sample Ranch Employee# 0    **"), EndsWith("Memo")));
  Office.Choose(mnuDisplayAllDates);
  Office.Desktop.Paper().Sheet = {8391, 11906};  // A5
  const RecordedDocument all = Print("All");
  EXPECT_EQ(all.Name, "All Displayed lines");
  EXPECT_EQ(all.Pages[0].Lines(),
            "1234, Sample Ranch    ** All **        Crew#2\n" + kClockHeadings);
  const std::vector<int> edges = ColumnEdges(all.Pages[0]);  // all give up the same share
  EXPECT_EQ(edges.size(), 15U);
  EXPECT_EQ(edges.front(), 360);
  EXPECT_EQ(edges.back(), 8391 - 360);
  EXPECT_NEAR(edges[1] - edges[0], 615.0 * 7671 / 10560, 1);
}

TEST_F(ReportsTest, APrinterThatFailsIsTriedAgainOrPassedOver) {
  Office.AddLine("130 I 7:00 am|101 I 6:30 am");
  const auto fails = [&](MenuItem& command, const std::string& site, const char* answer) {
    Documents().clear();
    Office.Desktop.Paper().FailsOnce = "Printer error: 'Office' is out of paper.";
    Office.Choose(command, "[!]*'Office' is out of paper. (Err#482) in " + site +
                               " in module 'Scanner'*-> " + answer + "\n[i]*printed. | Ok -> Ok");
    EXPECT_EQ(TDBGrid1.Columns("Memo").Width, 990);
    EXPECT_FALSE(mnuDisplayCurrentEmpl.Checked);
    EXPECT_EQ(Data1.Recordset.RowCount(), 2U);
    return Documents().size();
  };
  const std::string lines = "Line# 3180 in routine 'mnuPrintLines_Click'";
  EXPECT_EQ(fails(mnuPrintLines, lines, "Retry"), 1U);
  EXPECT_EQ(fails(mnuPrintLines, lines, "Ignore"), 0U);
  const std::string daily = "Line# 3050 in routine 'mnuEmplDailyRpt_Click'";
  EXPECT_EQ(fails(mnuEmplDailyRpt, daily, "Retry"), 2U);
  EXPECT_EQ(fails(mnuEmplDailyRpt, daily, "Ignore"), 1U);
}

TEST_F(ReportsTest, EachEmployeeOfTheDayGetsAReportOfHisOwn) {
  Office.AddLine("130 I 7:00 am|101 I 6:30 am|101 P 9:00 am 40 0.5|125 I 7:00 am");
  Office.Choose(mnuEmplOrder);
  Office.Choose(mnuEmplDailyRpt, kDailyPrinted);
  ASSERT_EQ(Documents().size(), 3U);
  const auto report = [](const char* employee, const char* rows) {
    return std::string("1234, Sample Ranch Employee# ") + employee +
           "    ** 11/18/04 **   Thursday    Crew#2\n" + kClockHeadings + "\n" + rows;
  };
  EXPECT_EQ(Documents()[0].Name, "2004-11-18 Employee 101");
  EXPECT_EQ(Documents()[0].Pages[0].Lines(),
            report("101", "101|40|09:00 am|11/18|P|0.5\n101|0|06:30 am|11/18|I|0"));
  EXPECT_EQ(Documents()[2].Pages[0].Lines(), report("130", "130|0|07:00 am|11/18|I|0"));
  EXPECT_EQ(ColumnEdges(Documents()[0].Pages[0]).back(), 11415);  // memo at its full width
  EXPECT_EQ(txtInput[kEmplBox].Text, " 130");
  EXPECT_TRUE(mnuEmplOrder.Checked);
  EXPECT_FALSE(mnuDisplayCurrentEmpl.Checked);
  EXPECT_EQ(Data1.Recordset.RowCount(), 4U);
}

TEST_F(ReportsTest, WithNoPrinterTheClosingMessageTellsWhereThePagesAre) {
  const std::string printed = Office.App("Printed");
  const auto message = [&](const std::string& detail) {
    return "[i]*printed. (No printer is installed. The " + detail + ") | Ok -> Ok";
  };
  Office.Desktop.Paper().PrinterInstalled = false;
  Office.Choose(mnuPrintLines,
                message("report is in " + printed + "/2004-11-18 Displayed lines.pdf"));
  Office.AddLine("101 I 6:30 am");
  Office.Choose(mnuEmplDailyRpt,
                message("report is in " + printed + "/2004-11-18 Employee 101.pdf"));
  Office.AddLine("130 I 6:30 am|125 I 6:30 am");
  Office.Choose(mnuEmplDailyRpt, message("3 reports are in " + printed));
}

TEST(NumberedFile, NeverTakesTheNameOfAnOldOne) {
  const TempFolder folder;
  const std::string printed = folder.Path("Printed");
  for (const char* name : {"All.pdf", "All (2).pdf", "All (3).pdf"}) {
    const NewFile file = CreateNumberedFile(printed, "All", ".pdf");
    EXPECT_EQ(file.Path, printed + "/" + name);
    file.File.Write(name);
  }
  EXPECT_EQ(folder.Read("Printed/All.pdf"), "All.pdf");
  EXPECT_EQ(static_cast<int>(std::filesystem::status(printed).permissions()), 0700);
  EXPECT_EQ(static_cast<int>(std::filesystem::status(printed + "/All.pdf").permissions()), 0600);
  EXPECT_THROW(CreateNumberedFile(folder.Path("Printed/All.pdf"), "in a file", ".pdf"), Failure);
}

}  // namespace

}  // namespace ostrel
