// From the keyboard to a line in the store.

#include <gtest/gtest.h>

#include "entry/input_boxes.h"
#include "entry/write_line.h"
#include "frame/app_state.h"
#include "platform/failure.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

TEST(AppendAmPm, MakesATimeOfWhateverWasTyped) {
  const struct {
    const char* typed;
    const char* time;
  } cases[] = {
      {"8", "08:00 am"},     {"7.3", "07:30 am"},     {"8.5", "08:50 am"},    {"6", "06:00 pm"},
      {"6.3", "06:30 am"},   {"5.45", "05:45 pm"},    {"11.59", "11:59 am"},  {"12", "12:00 pm"},
      {"13", "01:00 pm"},    {"23", "11:00 pm"},      {"0", "12:00 pm"},      {"24", "12:00 pm"},
      {"23.5", "12:00 pm"},  {"xyz", "12:00 pm"},     {"", "12:00 pm"},       {"8:30", "08:00 am"},
      {"1:15", "01:00 pm"},  {"8:30 am", "08:30 am"}, {"8:30 a", "08:30 am"}, {"9 PM", "09:00 pm"},
      {"after", "12:00 pm"}, {"-8", "12:00 pm"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.typed);
    EXPECT_EQ(AppendAmPm(test.typed), test.time);
  }
  EXPECT_THROW(AppendAmPm("8.75"), Failure);  // there is no minute 75
}

constexpr const char* kAllFields =
    "EMPL_NUMB SORT_NAME ETIME EVENT_TYPE QUANTITY QUAN_DESC RATE GROSS ENTERPRISE OPERATION "
    "EQUIP_NUMB MEMO "
    "HOURS HOUR_GROSS ETIME_STOP";

struct Boxes {
  const char* text[kInputBoxCount];
};

void FillBoxes(const Boxes& boxes) {
  for (std::size_t i = 0; i < kInputBoxCount; ++i) txtInput[i].Text = boxes.text[i];
}

TEST(WriteLine, TurnsTheFormIntoOneLine) {
  const struct {
    const char* what;
    bool timeClock;
    bool autoset;
    EventKind kind;
    Boxes boxes;
    const char* line;
  } cases[] = {
      {"piecework",
       true,
       true,
       kPiecework,
       {"130", "127.25", "9", "LBS", ".27", "12", "70", "101", "CLEAN UP"},
       "130,DURAND ANNE,11/18/2004 10:42:00 AM,P,127.25,LBS,0.27,34.36,12,70,101,CLEAN UP,-,-,-"},
      {"a clock-out carries no costing",
       true,
       true,
       kClockOut,
       {"12ABC", "0", "9", "", "x", "12", "70", "101", ""},
       "12, ,11/18/2004 10:42:00 AM,O,0, ,0,-,0,0,0, ,-,-,-"},
      {"typed time",
       true,
       false,
       kClockIn,
       {"12.7", "0", "7.3", "HRS", "Std Rate", "1", "2", "3", "A MEMO OF MORE THAN TWENTY"},
       "13, ,11/18/2004 7:30:00 AM,I,0,HRS,-9,-,1,2,3,A MEMO OF MORE THAN ,-,-,-"},
      {"an employee without a name",
       true,
       true,
       kClockIn,
       {"150", "", "", "LBS", "s9", "", "", "", ""},
       "150, ,11/18/2004 10:42:00 AM,I,0,LBS,-9,-,0,0,0, ,-,-,-"},
      {"hours of the plain layout",
       false,
       true,
       kPiecework,
       {"140", "0", "7.5", "HRS", "10.111", "1", "2", "3", ""},
       "140,EVANS RHYS,11/18/2004 10:42:00 AM,X,0,HRS,10.111,75.83,1,2,3, ,7.5,-,-"},
      {"hours at the standard rate",
       false,
       true,
       kPiecework,
       {"140", "0", "7.5", "HRS", "Std Rate", "1", "2", "3", ""},
       "140,EVANS RHYS,11/18/2004 10:42:00 AM,X,0,HRS,-9,-,1,2,3, ,7.5,-,-"},
      {"a correction",
       false,
       true,
       kPiecework,
       {"140", "-2.5", "0", "BOX", "1.07", "", "", "", ""},
       "140,EVANS RHYS,11/18/2004 10:42:00 AM,X,-2.5,BOX,1.07,-2.68,0,0,0, ,0,-,-"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    Payroll payroll;
    payroll.Start(test.timeClock);
    if (!test.autoset) payroll.Choose(mnuAutosetTime);
    Option1[test.kind].Value = true;
    FillBoxes(test.boxes);
    WriteValues();
    EXPECT_EQ(payroll.Fields(kAllFields), test.line);
  }
}

TEST(WriteLine, RefusesABadEmployeeNumberAlone) {
  Payroll payroll;
  payroll.Start();
  for (const char* number : {"0", "100000", "ABC", "", "-5"}) {
    SCOPED_TRACE(number);
    txtInput[kEmplBox].Text = number;
    payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    WriteValues();
    EXPECT_EQ(payroll.Desktop.TakeShown(), "[!] Ostrel Payroll | Bad employee number! | Ok -> Ok");
  }
  EXPECT_EQ(payroll.Lines(), "");
  for (const char* number : {"1", "99999"}) {
    txtInput[kEmplBox].Text = number;
    WriteValues();
  }
  EXPECT_EQ(payroll.Fields("EMPL_NUMB"), "1|99999");
}

TEST(WriteLine, LeavesOneFieldUnsetWhenItsValueIsRefused) {
  Payroll payroll;
  payroll.Start();
  FillBoxes({{"130", "5", "8", "TOOLONG", "2", "", "", "", ""}});
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
  WriteValues();
  EXPECT_EQ(payroll.Fields("EMPL_NUMB QUAN_DESC GROSS"), "130,-,10");
  EXPECT_NE(payroll.Desktop.TakeShown().find(
                "in Line# 6670 in routine 'WriteValues' in module 'Scanner'"),
            std::string::npos);
}

TEST(WriteLine, PutsTheLineOnTheDayOfTheDateBox) {
  Payroll payroll;
  payroll.Start();
  const struct {
    const char* day;
    bool autoset;
    const char* moment;
  } cases[] = {{"11/15/04", true, "11/15/2004 10:42:07 AM"},
               {"All", true, "11/18/2004 10:42:07 AM"},
               {"11/15/04", false, "11/15/2004 9:00:00 AM"},
               {"All", false, "11/18/2004 9:00:00 AM"}};
  payroll.SetClock("11/18/04 10:42:07 am");
  std::string expected;
  for (const auto& test : cases) {
    txtToday.Text = test.day;
    mnuAutosetTime.Checked = test.autoset;
    FillBoxes({{"130", "", "9", "", "", "", "", "", ""}});
    WriteValues();
    // On a day of its own the line gets the clock's time to the minute, without one to the second.
    std::string moment = test.moment;
    if (test.autoset && std::string(test.day) != "All")
      moment.replace(moment.find(":07"), 3, ":00");
    expected += (expected.empty() ? "" : "|") + moment;
  }
  EXPECT_EQ(payroll.Fields("ETIME"), expected);
}

TEST(SaveCommand, AsksWhatIsMissingAndWritesInOrder) {
  struct Script {
    const char* what;
    EventKind kind;
    Boxes boxes;
    std::function<void(ScriptedDesktop&)> answers;
    const char* lines;
    const char* shown;
  };
  const Script cases[] = {
      {"nothing to ask of a clock-in",
       kClockIn,
       {{"130", "0", "", "LBS", "0", "", "", "", ""}},
       [](auto&) {},
       "130 I 10:42 am",
       ""},
      {"a clock-out without a clock-in, confirmed",
       kClockOut,
       {{"130", "0", "", "", "0", "", "", "", ""}},
       [](ScriptedDesktop& d) { d.WillAnswer(BoxAnswer::Yes); },
       "130 O 10:42 am|130 I 08:00 am",
       "[?] Employee not clocked in | Clock in Empl# 130 at 8:00 am? | YesNoCancel -> Yes"},
      {"cancelled",
       kClockOut,
       {{" 130", "0", "", "", "0", "", "", "", ""}},
       [](ScriptedDesktop& d) { d.WillAnswer(BoxAnswer::Cancel); },
       "",
       "[?] Employee not clocked in | Clock in Empl# 130 at 8:00 am? | YesNoCancel -> Cancel"},
      {"a quantity makes it piecework; rate and description are asked for",
       kClockIn,
       {{"130", "10", "", "hrs", "Std Rate", "", "", "", ""}},
       [](ScriptedDesktop& d) {
         d.WillType("1.5");
         d.WillType("lbs");
         d.WillAnswer(BoxAnswer::Yes);
       },
       "130 P 10:42 am 10x1.5=15|130 I 08:00 am",
       "[input] Piecework Rate not set | \\rPiecework Rate? | 1.00 -> 1.5\n"
       "[input] Quantity Description not set | \\rPiecework Quantity Description? | PCE -> lbs\n"
       "[?] Employee not clocked in | Clock in Empl# 130 at 8:00 am? | YesNoCancel -> Yes"},
      {"no rate",
       kPiecework,
       {{"130", "10", "", "LBS", "0", "", "", "", ""}},
       [](ScriptedDesktop& d) { d.WillType(""); },
       "",
       "[input] Piecework Rate not set | \\rPiecework Rate? | 1.00 -> "},
      {"no description",
       kPiecework,
       {{"130", "10", "", " ", "2", "", "", "", ""}},
       [](ScriptedDesktop& d) { d.WillType(""); },
       "",
       "[input] Quantity Description not set | \\rPiecework Quantity Description? | PCE -> "},
      {"an answer that is no number is taken as typed",
       kPiecework,
       {{"130", "10", "", "LBS", "0", "", "", "", ""}},
       [](ScriptedDesktop& d) {
         d.WillType("abc");
         d.WillAnswer(BoxAnswer::Yes);
       },
       "130 P 10:42 am 10x0=0|130 I 08:00 am",
       "[input] Piecework Rate not set | \\rPiecework Rate? | 1.00 -> abc\n"
       "[?] Employee not clocked in | Clock in Empl# 130 at 8:00 am? | YesNoCancel -> Yes"},
      {"an empty employee box",
       kClockOut,
       {{"", "0", "", "", "0", "", "", "", ""}},
       [](ScriptedDesktop& d) { d.WillAnswer(BoxAnswer::Cancel); },
       "",
       "[?] Employee not clocked in | Clock in Empl#  at 8:00 am? | YesNoCancel -> Cancel"},
  };
  for (const Script& test : cases) {
    SCOPED_TRACE(test.what);
    Payroll payroll;
    payroll.Start();
    Option1[test.kind].Value = true;
    FillBoxes(test.boxes);
    test.answers(payroll.Desktop);
    cmdSave.Press();
    EXPECT_EQ(payroll.Lines(), test.lines);
    EXPECT_EQ(payroll.Desktop.TakeShown(), test.shown);
    EXPECT_TRUE(payroll.Desktop.AllAsked());
    EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  }
}

TEST(SaveCommand, OffersTheLastPieceworkWithARate) {
  Payroll payroll;
  payroll.Start();
  payroll.AddLine("130 I 7:00 am");
  payroll.AddLine("130 P 8:00 am 10 .375");
  payroll.AddLine("130 P 9:00 am 10 -9");
  FillBoxes({{"130", "10", "", "", "0", "", "", "", ""}});
  payroll.Desktop.WillType("");
  cmdSave.Press();
  EXPECT_EQ(payroll.Desktop.TakeShown(),
            "[input] Piecework Rate not set | \\rPiecework Rate? | 0.38 -> ");
}

TEST(StandardRate, SwitchesBothBoxesAndBack) {
  Payroll payroll;
  payroll.Start();
  chkStdRate.Value = 1;
  EXPECT_EQ(txtInput[kRateBox].Text.Get() + "," + txtInput[kQuanDescBox].Text.Get(),
            "Std Rate,HRS");
  chkStdRate.Value = 0;
  EXPECT_EQ(txtInput[kRateBox].Text.Get() + "," + txtInput[kQuanDescBox].Text.Get(), "0,0");
  payroll.AddLine("130 P 9:00 am 10 0.27");
  payroll.AddLine("130 I 9:00 am 0 -9");
  const struct {
    EventKind kind;
    const char* rate;
  } cases[] = {{kPiecework, "0.27"}, {kClockIn, "Std Rate"}, {kClockOut, "Std Rate"}};
  for (const auto& test : cases) {
    Option1[test.kind].Value = true;
    chkStdRate.Value = 1;
    txtInput[kRateBox].Text = "";
    chkStdRate.Value = 0;
    EXPECT_EQ(txtInput[kRateBox].Text.Get(), test.rate);
    EXPECT_EQ(chkStdRate.Value.Get(), 0);
  }
}

TEST(EntryRow, StartsFromTheLastLineOfTheLatestDay) {
  Payroll payroll;
  payroll.Start();
  for (const int box : {0, 1, 3, 4, 5, 6, 7, 8})
    EXPECT_EQ(txtInput[static_cast<std::size_t>(box)].Text.Get(), "0");
  FillBoxes({{"130", "127.25", "", "LBS", "Std Rate", "12", "70", "101", "NOTE"}});
  Option1[kPiecework].Value = true;
  txtToday.Text = "11/17/04";
  WriteValues();
  payroll.Stop();
  payroll.Start();
  std::string row;
  for (const TextBox& box : txtInput) row += box.Text.Get() + "|";
  EXPECT_EQ(row, "130|0|10:42 am|LBS|Std Rate|12|70|101|NOTE|");
  EXPECT_EQ(chkStdRate.Value.Get(), 1);
}

TEST(EntryRow, WalksAsTheFocusTableSays) {
  const struct {
    bool timeClock;
    EventKind kind;
    int start;  // box, or -1 for the button
    const char* keys;
    int end;
  } cases[] = {
      {true, kPiecework, 0, "\r", 1},    {true, kClockIn, 0, "\r", -1},
      {true, kPiecework, 1, "\r", -1},   {true, kPiecework, 1, "\t", -1},
      {true, kPiecework, -1, "\x1b", 3}, {true, kPiecework, -1, "\t", 2},
      {true, kPiecework, 2, "\r", 3},    {true, kPiecework, 3, "\r", 4},
      {true, kPiecework, 4, "\r", 5},    {true, kPiecework, 5, "\r", 6},
      {true, kPiecework, 6, "\r", 7},    {true, kPiecework, 7, "\r", 8},
      {true, kPiecework, 8, "\r", 0},    {true, kPiecework, 8, "\t", 0},
      {true, kPiecework, 3, "<", 2},     {true, kPiecework, 2, "<", -1},
      {true, kPiecework, 3, "A>", 4},    {true, kPiecework, 3, "\b>", 4},
      {true, kPiecework, 1, "<", 0},     {false, kPiecework, 0, "\r", 1},
      {false, kPiecework, 1, "\r", 2},   {false, kPiecework, 2, "\r", -1},
      {false, kPiecework, -1, "\t", 3},  {false, kPiecework, 3, "<", -1},
      {false, kPiecework, 8, "\r", 0},
  };
  Payroll payroll;
  for (const bool timeClock : {true, false}) {
    payroll.Start(timeClock);
    for (const auto& test : cases) {
      if (test.timeClock != timeClock) continue;
      SCOPED_TRACE(std::to_string(test.start) + (timeClock ? " clock " : " plain ") + test.keys);
      Option1[test.kind].Press();
      Control& start = test.start < 0 ? static_cast<Control&>(cmdSave)
                                      : txtInput[static_cast<std::size_t>(test.start)];
      start.SetFocus();
      payroll.Keys(test.keys);
      Control& end = test.end < 0 ? static_cast<Control&>(cmdSave)
                                  : txtInput[static_cast<std::size_t>(test.end)];
      EXPECT_EQ(ScanMain.ActiveControl(), &end) << ScanMain.ActiveControl()->Name;
    }
    payroll.Stop();
  }
}

TEST(EntryRow, TheFirstKeyReplacesTheBox) {
  Payroll payroll;
  payroll.Start();
  Option1[kPiecework].Value = true;
  const struct {
    InputBoxIndex box;
    const char* before;
    const char* keys;
    const char* after;
  } cases[] = {{kQuanDescBox, "OLD", "lbs", "LBS"}, {kQuanDescBox, "OLD", "\b", ""},
               {kQuanDescBox, "OLD", "\x1b", ""},   {kQuanDescBox, "OLD", ">x", "OXLD"},
               {kQuanDescBox, "OLD", ">\b", "LD"},  {kRateBox, "0.2", ">>>s", "Std Rate"},
               {kMemoBox, "OLD", "a b", "A B"}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.keys);
    chkStdRate.Value = 1;  // the S key then only moves on
    txtInput[kEmplBox].SetFocus();
    payroll.Fill(txtInput[test.box], test.before);
    EXPECT_EQ(txtInput[test.box].BackColor.Get(), kYellow);
    payroll.Keys(test.keys);
    EXPECT_EQ(txtInput[test.box].Text.Get(), test.after);
  }
}

TEST(EntryRow, ADayByHand) {
  Payroll payroll;
  payroll.Start();
  payroll.Keys("130\r\r");  // clock-in: number, Enter, Enter
  payroll.SetClock("11/18/04 11:00 am");
  Option1[kPiecework].Press();
  txtInput[kRateBox].Text = ".5";
  txtInput[kQuanDescBox].Text = "BOX";
  payroll.Keys("130\r100\r\r");  // piecework: number, Enter, quantity, Enter, Enter
  payroll.SetClock("11/18/04 12:30 pm");
  Option1[kClockOut].Press();
  payroll.Keys("\r\r");  // the same employee again
  EXPECT_EQ(payroll.Lines(), "130 I 10:42 am|130 P 11:00 am 100x0.5=50|130 O 12:30 pm");
  EXPECT_EQ(payroll.Desktop.TakeShown(), "");
  EXPECT_EQ(lblLineCt.Caption.Get(), "3 lines");
}

TEST(DateBox, TakesADayOrShowsAll) {
  Payroll payroll;
  payroll.Start();
  const struct {
    const char* keys;
    const char* box;
    const char* weekday;
  } cases[] = {{"6/14/04\r", "06/14/04", "Monday"},
               {"abc\r", "All", ""},
               {"\r", "All", ""},
               {"8:30\r", "12/30/99", "Saturday"},
               {"6/14/04\t", "06/14/04", "Monday"}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.keys);
    txtToday.SetFocus();
    payroll.Keys(test.keys);
    EXPECT_EQ(txtToday.Text.Get(), test.box);
    EXPECT_EQ(lblToday.Caption.Get(), test.weekday);
  }
  txtInput[kEmplBox].SetFocus();
  txtToday.SetFocus();
  payroll.Keys("<");
  EXPECT_EQ(txtToday.Text.Get(), "06/14/04");
  EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  payroll.Choose(mnuDisplayAllDates);
  EXPECT_EQ(txtToday.Text.Get(), "All");
  payroll.Choose(mnuDisplayAllDates);
  EXPECT_EQ(txtToday.Text.Get(), "11/18/04");
}

}  // namespace
}  // namespace ostrel
