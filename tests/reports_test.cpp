// Print Displayed Lines and the daily report, from the menu command to the texts on the sheets.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "frame/app_state.h"
#include "platform/files/numbered_file.h"
#include "support/payroll.h"

namespace ostrel {

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kPrinted = "[i] Ostrel Payroll | 11/18/04 report printed. | Ok -> Ok";
constexpr const char* kReportsPrinted = "[i] Ostrel Payroll | Report printed. | Ok -> Ok";
const std::string kHeader = "1234, Sample Ranch    ** 11/18/04, Thursday **        Crew#2";
const std::string kClockHeadings =
    "Empl#|Pce Quan|Name|Time|Date|I/O/Pce|QDesc|Rate|Gross|Gross/Hr|Ent#|Oper|Eqp#|Memo";
const std::string kPlainHeadings =
    "Empl#|Pce Quan|Hours|Name|Date|QDesc|Rate|Gross|Gross/Hr|Ent#|Oper|Eqp#|Memo";

class ReportsTest : public testing::Test {
 protected:
  void Start(bool timeClock = true) {
    Office.Start(timeClock);
    txtComments.Text = "Crew#2";
  }
  void AddLines(const std::vector<std::string>& lines) {
    PrinDb.ShareCommits();
    for (const std::string& line : lines) Office.AddLine(line);
    PrinDb.CommitShared();
    Data1.Refresh();
  }
  RecordedDocument Print() {
    Office.Desktop.WillAnswer(BoxAnswer::Ok);
    Office.Choose(mnuPrintLines);
    return Paper().Documents.back();
  }
  RecordedPaper& Paper() { return Office.Desktop.Paper(); }

  Payroll Office;
};

/// Where the upright lines stand: the edges of the columns.
std::vector<int> ColumnEdges(const RecordedPage& page) {
  std::vector<int> edges;
  for (const Place& rule : page.Rules) {
    if (rule.Width == 0) edges.push_back(rule.Left);
  }
  return edges;
}

TEST_F(ReportsTest, ThePageHoldsHeaderHeadingsAndTheRowsOfTheView) {
  const struct {
    const char* Name;
    bool TimeClock, EmployeeOrder;
    std::string Rows;
  } cases[] = {
      {"newest first", true, false,
       "130|100|10:00 am|11/18|P|0.5\n101|200|08:00 am|11/18|P|Std Rate"},
      {"by employee", true, true,
       "101|200|08:00 am|11/18|P|Std Rate\n130|100|10:00 am|11/18|P|0.5"},
      {"plain", false, false, "130|100|11/18|0.5\n101|200|11/18|Std Rate"},
  };
  for (const auto& [name, timeClock, employeeOrder, rows] : cases) {
    SCOPED_TRACE(name);
    Start(timeClock);
    if (Office.Lines().empty()) AddLines({"130 P 10:00 am 100 0.5", "101 P 8:00 am 200 -9"});
    if (employeeOrder) Office.Choose(mnuEmplOrder);
    const RecordedDocument document = Print();
    ASSERT_EQ(document.Pages.size(), 1U);
    const std::string headings = timeClock ? kClockHeadings : kPlainHeadings;
    EXPECT_EQ(document.Pages[0].Lines(), kHeader + "\n" + headings + "\n" + rows);
    EXPECT_EQ(document.Name, "2004-11-18 Displayed lines");
    EXPECT_EQ(Office.Desktop.TakeShown(), kPrinted);
    EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
    Office.Stop();
  }
}

TEST_F(ReportsTest, ColumnsStandAtTheRunningSumOfTheirWidths) {
  Start();
  AddLines({"130 P 10:00 am 100 0.5"});
  const RecordedPage clock = Print().Pages[0];
  EXPECT_THAT(ColumnEdges(clock), ElementsAre(360, 975, 1770, 3420, 4260, 4905, 5685, 6270, 6975,
                                              7860, 8715, 9270, 9825, 10425, 10920));
  EXPECT_EQ(TDBGrid1.Columns("Memo").Width, 990);
  EXPECT_EQ(clock.Texts[0].Where.Top, 720);
  const auto quantity = std::find_if(clock.Texts.begin(), clock.Texts.end(),
                                     [](const RecordedText& text) { return text.Text == "100"; });
  ASSERT_NE(quantity, clock.Texts.end());
  EXPECT_EQ(quantity->Align, Alignment::Right);
  EXPECT_TRUE(quantity->Whole);
  EXPECT_GT(quantity->Where.Left, 975);
  EXPECT_LT(quantity->Where.Left + quantity->Where.Width, 1770);
  Office.Choose(mnuUseTimeClock);
  EXPECT_THAT(ColumnEdges(Print().Pages[0]),
              ElementsAre(360, 975, 1770, 2640, 4290, 4935, 5520, 6225, 7110, 7965, 8520, 9075,
                          9675, 10665));
}

TEST_F(ReportsTest, OnANarrowSheetAllColumnsGiveUpTheSameShare) {
  Start();
  Paper().Sheet = {8391, 11906};  // A5
  const RecordedPage page = Print().Pages[0];
  const std::vector<int> edges = ColumnEdges(page);
  ASSERT_EQ(edges.size(), 15U);
  EXPECT_EQ(edges.front(), 360);
  EXPECT_EQ(edges.back(), 8391 - 360);
  EXPECT_NEAR(edges[1] - edges[0], 615.0 * 7671 / 10560, 1);
  EXPECT_EQ(page.Lines(), kHeader + "\n" + kClockHeadings);
}

TEST_F(ReportsTest, EveryPageOfALongDayRepeatsHeaderAndHeadings) {
  constexpr int kLines = 2000;
  Start();
  std::vector<std::string> lines;
  for (int i = 1; i <= kLines; ++i) lines.push_back(std::to_string(i) + " P 8:00 am 10 0.5");
  AddLines(lines);
  Office.Choose(mnuEmplOrder);
  const RecordedDocument document = Print();
  EXPECT_GE(document.Pages.size(), 40U);
  int employee = 0;
  for (const RecordedPage& page : document.Pages) {
    EXPECT_THAT(page.Lines(), StartsWith(kHeader + "\n" + kClockHeadings + "\n"));
    for (const RecordedText& text : page.Texts) {
      EXPECT_GE(text.Where.Top, 720);
      EXPECT_LE(text.Where.Top + text.Where.Height, 15840 - 720);
      if (text.Where.Left < 975 && text.Where.Top > page.Texts[1].Where.Top) {
        EXPECT_EQ(text.Text, std::to_string(++employee));
      }
    }
  }
  EXPECT_EQ(employee, kLines);

  TDBGrid1.PrintInfo.RepeatColumnHeaders = false;
  EXPECT_THAT(Print().Pages[1].Lines(), StartsWith(kHeader + "\n51|"));
}

TEST_F(ReportsTest, WithNothingOnShowAPageComesOutAllTheSame) {
  Start();
  EXPECT_EQ(Print().Pages[0].Lines(), kHeader + "\n" + kClockHeadings);
  Office.Desktop.WillAnswer(BoxAnswer::Ok);
  Office.Choose(mnuEmplDailyRpt);
  EXPECT_THAT(Paper().Documents.back().Pages[0].Lines(),
              AllOf(StartsWith("1234, Sample Ranch Employee# 0    **"), EndsWith("Memo")));
  Office.Choose(mnuDisplayAllDates);
  const RecordedDocument all = Print();
  EXPECT_EQ(all.Name, "All Displayed lines");
  EXPECT_THAT(all.Pages[0].Lines(), StartsWith("1234, Sample Ranch    ** All **        Crew#2\n"));
  EXPECT_THAT(Office.Desktop.TakeShown(), HasSubstr("| All report printed. |"));
}

TEST_F(ReportsTest, APrinterThatFailsIsTriedAgainOrPassedOver) {
  const struct {
    MenuItem& Command;
    BoxAnswer Answer;
    std::size_t Documents;
    const char* Site;
  } cases[] = {
      {mnuPrintLines, BoxAnswer::Retry, 1,
       "Line# 3180 in routine 'mnuPrintLines_Click' in module 'Scanner'"},
      {mnuPrintLines, BoxAnswer::Ignore, 0, "Line# 3180"},
      {mnuEmplDailyRpt, BoxAnswer::Retry, 2,
       "Line# 3050 in routine 'mnuEmplDailyRpt_Click' in module 'Scanner'"},
      {mnuEmplDailyRpt, BoxAnswer::Ignore, 1, "Line# 3050"},
  };
  Start();
  AddLines({"130 I 7:00 am", "101 I 6:30 am"});
  for (const auto& [command, answer, documents, site] : cases) {
    SCOPED_TRACE(documents);
    Paper().Documents.clear();
    Paper().FailsOnce = "Printer error: 'Office' is out of paper.";
    Office.Desktop.WillAnswer(answer);
    Office.Desktop.WillAnswer(BoxAnswer::Ok);
    Office.Choose(command);
    EXPECT_THAT(Office.Desktop.TakeShown(),
                HasSubstr(std::string("'Office' is out of paper. (Err#482) in ") + site));
    EXPECT_EQ(Paper().Documents.size(), documents);
    EXPECT_EQ(TDBGrid1.Columns("Memo").Width, 990);
    EXPECT_FALSE(mnuDisplayCurrentEmpl.Checked);
    EXPECT_EQ(Data1.Recordset.RowCount(), 2U);
  }
}

TEST_F(ReportsTest, EachEmployeeOfTheDayGetsAReportOfHisOwn) {
  Start();
  AddLines({"130 I 7:00 am", "101 I 6:30 am", "101 P 9:00 am 40 0.5", "125 I 7:00 am"});
  Office.Choose(mnuEmplOrder);
  Office.Desktop.WillAnswer(BoxAnswer::Ok);
  Office.Choose(mnuEmplDailyRpt);
  EXPECT_EQ(Office.Desktop.TakeShown(), kReportsPrinted);
  ASSERT_EQ(Paper().Documents.size(), 3U);
  const auto report = [](const char* employee, const char* rows) {
    return std::string("1234, Sample Ranch Employee# ") + employee +
           "    ** 11/18/04 **   Thursday    Crew#2\n" + kClockHeadings + "\n" + rows;
  };
  EXPECT_EQ(Paper().Documents[0].Name, "2004-11-18 Employee 101");
  EXPECT_EQ(Paper().Documents[0].Pages[0].Lines(),
            report("101", "101|40|09:00 am|11/18|P|0.5\n101|0|06:30 am|11/18|I|0"));
  EXPECT_EQ(Paper().Documents[2].Pages[0].Lines(), report("130", "130|0|07:00 am|11/18|I|0"));
  EXPECT_EQ(ColumnEdges(Paper().Documents[0].Pages[0]).back(), 11415);  // memo at its full width
  EXPECT_EQ(txtInput[kEmplBox].Text, " 130");
  EXPECT_TRUE(mnuEmplOrder.Checked);
  EXPECT_FALSE(mnuDisplayCurrentEmpl.Checked);
  EXPECT_EQ(Data1.Recordset.RowCount(), 4U);
}

TEST_F(ReportsTest, WithNoPrinterTheClosingMessageTellsWhereThePagesAre) {
  const std::string printed = Office.App("Printed");
  const struct {
    MenuItem& Command;
    std::vector<std::string> Lines;
    std::string Detail;
  } cases[] = {
      {mnuPrintLines, {}, "The report is in " + printed + "/2004-11-18 Displayed lines.pdf"},
      {mnuEmplDailyRpt,
       {"101 I 6:30 am"},
       "The report is in " + printed + "/2004-11-18 Employee 101.pdf"},
      {mnuEmplDailyRpt, {"130 I 6:30 am", "125 I 6:30 am"}, "The 3 reports are in " + printed},
  };
  Start();
  Paper().PrinterInstalled = false;
  for (const auto& [command, lines, detail] : cases) {
    AddLines(lines);
    Office.Desktop.WillAnswer(BoxAnswer::Ok);
    Office.Choose(command);
    EXPECT_THAT(Office.Desktop.TakeShown(),
                HasSubstr("printed. (No printer is installed. " + detail + ") | Ok"));
  }
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
  try {
    CreateNumberedFile(folder.Path("Printed/All.pdf"), "in a file", ".pdf");
    ADD_FAILURE();
  } catch (const Failure& failure) {
    EXPECT_THAT(failure.Text, HasSubstr("All.pdf"));
  }
}

}  // namespace

}  // namespace ostrel
