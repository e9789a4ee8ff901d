// From the keyboard to a line in the store.

#include <gtest/gtest.h>

#include <sstream>

#include "entry/write_line.h"
#include "hours/typed_time.h"
#include "platform/values/failure.h"
#include "scan_main/scan_main.h"
#include "support/ask_sqlite.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

TEST(AppendAmPm, MakesATimeOfWhateverWasTyped) {
  const char* const cases[][2] = {
      {"7.3", "07:30 am"},    {"8.5", "08:50 am"}, {"6", "06:00 pm"},    {"6.3", "06:30 am"},
      {"12", "12:00 pm"},     {"23", "11:00 pm"},  {"24", "12:00 pm"},   {"0", "12:00 pm"},
      {"8:30 a", "08:30 am"}, {"", "12:00 pm"},    {"8:30", "08:00 am"}, {"9 PM", "09:00 pm"},
      {"after", "12:00 pm"}};
  for (const auto& [typed, time] : cases) EXPECT_EQ(AppendAmPm(typed), time) << typed;
  EXPECT_THROW(AppendAmPm("8.75"), Failure);  // there is no minute 75
}

/// I, O or P, as the store has the event.
void Choose(char event) { Option1[std::string("IOP").find(event)].Value = true; }

TEST(WriteLine, TurnsTheFormIntoOneLine) {
  const std::string cases[][4] = {
      {"clock auto P", "11/15/04", "130|127.25|9|LBS|.27|12|70|101|CLEAN UP",
       "130,DURAND ANNE,11/15/2004 10:42:00 AM,P,127.25,LBS,0.27,34.36,12,70,101,CLEAN UP,-"},
      // An employee without a name; a clock-out carries no costing; without a day, to the second.
      {"clock auto O", "All", "150|0|9||s9|12|70|101|",
       "150, ,11/18/2004 10:42:07 AM,O,0, ,-9,-,0,0,0, ,-"},
      {"clock typed I", "11/15/04", "12.7|0|7.3|HRS|Std Rate|1|2|3|A MEMO OF MORE THAN 20",
       "13, ,11/15/2004 7:30:00 AM,I,0,HRS,-9,-,1,2,3,A MEMO OF MORE THAN ,-"},
      {"clock typed I", "All", "130||9||x",
       "130,DURAND ANNE,11/18/2004 9:00:00 AM,I,0, ,0,-,0,0,0, ,-"},
      {"plain auto P", "11/18/04", "140|0|7.5|HRS|10.111|1|2|3",
       "140,EVANS RHYS,11/18/2004 10:42:00 AM,X,0,HRS,10.111,75.83,1,2,3, ,7.5"},
      {"plain auto P", "11/18/04", "140|0|7.5|HRS|Std Rate|1|2|3",
       "140,EVANS RHYS,11/18/2004 10:42:00 AM,X,0,HRS,-9,-,1,2,3, ,7.5"},
      {"plain auto P", "All", "140|-2.5|0|BOX|1.07",  // a correction
       "140,EVANS RHYS,11/18/2004 10:42:07 AM,X,-2.5,BOX,1.07,-2.68,0,0,0, ,0"},
  };
  for (const auto& [mode, day, boxes, line] : cases) {
    SCOPED_TRACE(boxes);
    RunningPayroll payroll(mode.starts_with("clock"));
    payroll.SetClock("11/18/04 10:42:07 am");
    payroll.Desktop.PassSeconds(0.7);  // the clock goes on between two seconds
    mnuAutosetTime.Checked = mode.find("auto") != std::string::npos;
    Choose(mode.back());
    txtToday.Text = day;
    Payroll::FillBoxes(boxes);
    WriteValues();
    EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME ETIME EVENT_TYPE QUANTITY QUAN_DESC RATE GROSS "
                             "ENTERPRISE OPERATION EQUIP_NUMB MEMO HOURS"),
              line);
  }
}

TEST(SaveCommand, AsksWhatIsMissingAndWritesInOrder) {
  const std::string rate = "[input] Piecework Rate not set | \\rPiecework Rate? | 1.00 -> ";
  const std::string what =
      "[input] Quantity Description not set | \\rPiecework Quantity Description? | PCE -> ";
  const auto clockIn = [](const char* empl) {
    return std::string("[?] Employee not clocked in | Clock in Empl# ") + empl +
           " at 8:00 am? | YesNoCancel -> ";
  };
  const std::string bad = "[!] Ostrel Payroll | Bad employee number! | Ok -> Ok";
  const std::string cases[][4] = {
      {"I", "0", bad, ""},
      {"I", "100000", bad, ""},
      {"I", "1", "", "1 I 10:42 am"},
      {"I", "99999|0||LBS|0", "", "99999 I 10:42 am"},
      {"O", " 130|0|||0", clockIn("130") + "Yes", "130 O 10:42 am|130 I 08:00 am"},
      {"O", "|0|||0", clockIn("") + "Cancel", ""},
      {"I", "130|10||hrs|Std Rate", rate + "1.5\n" + what + "lbs\n" + clockIn("130") + "Yes",
       "130 P 10:42 am 10x1.5=15|130 I 08:00 am"},
      {"P", "130|10||LBS|0", rate, ""},
      {"P", "130|10|| |2", what, ""},
      {"P", "130|10||LBS|0", rate + "abc\n" + clockIn("130") + "Yes",
       "130 P 10:42 am 10x0=0|130 I 08:00 am"},
  };
  for (const auto& [event, boxes, shown, lines] : cases) {
    SCOPED_TRACE(boxes);
    RunningPayroll payroll;
    Choose(event[0]);
    Payroll::FillBoxes(boxes);
    payroll.Desktop.Expect(shown, [] { cmdSave.Press(); });
    EXPECT_EQ(payroll.Lines(), lines);
    EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  }
}

TEST(SaveCommand, OffersTheLastPiecesWithARate) {
  const std::string cases[][2] = {
      // boxes saved before, in the plain layout; what is offered for a rate and for a description
      {"140|10|8|BOX|.375", "0.38 BOX"},
      {"140|10|8|BOX|.375\n140|0|8|HRS|9.5\n140|10|8|LBS|-9\n140|-5|8|BAG|2", "0.38 BOX"},
      {"140|0|8|BOX|9.5", "1.00 PCE"},
  };
  for (const bool timeClock : {true, false}) {
    for (const auto& [before, offered] : cases) {
      SCOPED_TRACE(before);
      RunningPayroll payroll(false);
      std::istringstream lines(before);
      for (std::string boxes; std::getline(lines, boxes);) {
        Payroll::FillBoxes(boxes);
        payroll.Desktop.Expect("", [] { cmdSave.Press(); });
      }
      if (timeClock) payroll.Choose(mnuUseTimeClock);
      Payroll::FillBoxes("140|10|||0");
      payroll.Desktop.Expect("[input] Piecework Rate not set | \\rPiecework Rate? | " +
                                 offered.substr(0, 4) +
                                 " -> 2\n[input] Quantity Description not set | \\rPiecework "
                                 "Quantity Description? | " +
                                 offered.substr(5) + " -> ",
                             [] { cmdSave.Press(); });
    }
  }
}

TEST(EntryRow, OpensTheQuantityBoxForPieceworkAlone) {
  RunningPayroll payroll;
  TextBox& quantity = txtInput[kQuantityBox];
  const auto box = [&] { return quantity.Text.Get() + (quantity.Enabled ? " open" : " shut"); };
  EXPECT_EQ(box(), "0 shut");
  // The focus stands in the employee box throughout.
  for (int layout = 0; layout < 2; ++layout) {
    Option1[kPiecework].Value = true;
    EXPECT_EQ(box(), "0 open");
    quantity.Text = "12";
    Option1[kClockOut].Value = true;
    EXPECT_EQ(box(), "0 shut");
    payroll.Choose(mnuUseTimeClock);
    EXPECT_EQ(box(), "0 open");
    quantity.Text = "12";
    payroll.Choose(mnuUseTimeClock);
    EXPECT_EQ(box(), "0 shut");
  }
  // The command that shuts it takes the focus out of it.
  payroll.Choose(mnuUseTimeClock);
  quantity.SetFocus();
  payroll.Choose(mnuUseTimeClock);
  EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  EXPECT_EQ(box(), "0 shut");
}

TEST(EntryRow, ReportsALatestDayThatIsNone) {
  RunningPayroll payroll;
  payroll.Save("130");
  payroll.Stop();
  AskSqlite(payroll.App("Prin1234.mdb"), "update OstrelPr set ETIME = 4e6");
  const std::string report = "[!]*in Line# 1604 in routine 'InitializeInputBoxes'*-> Ignore";
  payroll.Desktop.Expect(report + "\n" + report, [&] { payroll.Start(); });
  EXPECT_EQ(txtInput[kEmplBox].Text.Get(), "0");
  chkStdRate.Value = 1;
  payroll.Desktop.Expect("[!]*in Line# 100 in routine 'chkStdRate_Click'*-> Ignore",
                         [] { chkStdRate.Value = 0; });
  EXPECT_EQ(txtInput[kRateBox].Text.Get(), "0");
}

TEST(StandardRate, SwitchesBothBoxesAndBack) {
  RunningPayroll payroll;
  const auto boxes = [] {
    return txtInput[kRateBox].Text.Get() + "," + txtInput[kQuanDescBox].Text.Get();
  };
  chkStdRate.Value = 1;
  EXPECT_EQ(boxes(), "Std Rate,HRS");
  chkStdRate.Value = 0;
  EXPECT_EQ(boxes(), "0,0");
  payroll.AddLine("130 P 9:00 am 10 0.27|130 I 9:00 am 0 -9");
  for (const EventKind kind : {kPiecework, kClockIn, kClockOut}) {
    Option1[kind].Value = true;
    chkStdRate.Value = 1;
    chkStdRate.Value = 0;
    EXPECT_EQ(txtInput[kRateBox].Text.Get(), kind == kPiecework ? "0.27" : "Std Rate") << kind;
  }
}

TEST(EntryRow, StartsFromTheLastLineOfTheLatestDay) {
  RunningPayroll payroll;
  const auto row = [] {
    std::string texts;
    for (const TextBox& box : txtInput) texts += box.Text.Get() + "|";
    return texts;
  };
  EXPECT_EQ(row(), "0|0|10:42 am|0|0|0|0|0|0|");
  Payroll::FillBoxes("130|127.25||LBS|Std Rate|12|70|101|NOTE");
  Option1[kPiecework].Value = true;
  txtToday.Text = "11/17/04";
  WriteValues();
  payroll.Stop();
  payroll.Start();
  EXPECT_EQ(row(), "130|0|10:42 am|LBS|Std Rate|12|70|101|NOTE|");
  EXPECT_EQ(chkStdRate.Value.Get(), 1);
}

TEST(DateBox, TakesADayOrShowsAll) {
  RunningPayroll payroll;
  const char* const cases[][2] = {
      {"6/14/04", "06/14/04 Monday"}, {"abc", "All "}, {"", "All "}, {"8:30", "12/30/99 Saturday"}};
  for (const auto& [typed, day] : cases) {
    payroll.Fill(txtToday, typed);
    txtInput[kEmplBox].SetFocus();
    EXPECT_EQ(txtToday.Text.Get() + " " + lblToday.Caption.Get(), day) << typed;
  }
  for (const char* day : {"All", "11/18/04"}) {
    payroll.Choose(mnuDisplayAllDates);
    EXPECT_EQ(txtToday.Text.Get(), day);
  }
}

}  // namespace
}  // namespace ostrel
