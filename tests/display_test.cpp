// Which lines show, their totals, the layouts, cells and line commands.

#include <gtest/gtest.h>

#include "display/displayed_lines.h"
#include "display/view_filter.h"
#include "scan_main/scan_main.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

std::string OnShow() {
  std::string shown;
  for (std::size_t row = 0; row < Data1.Recordset.RowCount(); ++row) {
    Data1.Recordset.SetPosition(row);
    shown += TDBGrid1.CellText(TDBGrid1.ColumnNumber("Empl#")) + " " +
             TDBGrid1.CellText(TDBGrid1.ColumnNumber("Time")) + "|";
  }
  return shown;
}

TEST(DisplayedLines, FollowTheBoxesAndTheMenus) {
  RunningPayroll payroll;
  payroll.AddLine("130 I 7:00 am|101 I 8:00 am|130 O 9:00 am");
  txtToday.Text = "11/17/04";
  payroll.AddLine("130 I 6:00 am");
  const std::string cases[][5] = {
      {"11/18/04", "130", "", " where INT(ETIME) = #11/18/04#",
       "130 09:00 am|101 08:00 am|130 07:00 am|"},
      {"11/18/04", "130", "order", " where INT(ETIME) = #11/18/04#",
       "101 08:00 am|130 07:00 am|130 09:00 am|"},
      {"11/18/04", "130", "current order", " where INT(ETIME) = #11/18/04# and EMPL_NUMB = 130",
       "130 07:00 am|130 09:00 am|"},
      {"All", "130", "current", " where EMPL_NUMB = 130",
       "130 09:00 am|130 07:00 am|130 06:00 am|"},
      {"All", "", "current", "", "130 09:00 am|101 08:00 am|130 07:00 am|130 06:00 am|"},
      {"11/17/04", "0", "current", " where INT(ETIME) = #11/17/04#", "130 06:00 am|"},
  };
  for (const auto& [day, empl, checked, where, shown] : cases) {
    txtToday.Text = day;
    txtInput[kEmplBox].Text = empl;
    mnuDisplayCurrentEmpl.Checked = checked.starts_with("current");
    mnuEmplOrder.Checked = checked.ends_with("order");
    EXPECT_EQ(WhereSelect(), where);
    SetRecordSource();
    EXPECT_EQ(OnShow(), shown) << where;
  }
}

TEST(DisplayedLines, SwitchingTheEmployeeOnSwitchesTheOrder) {
  RunningPayroll payroll;
  txtInput[kEmplBox].Text = "130";
  const auto states = [] {
    return std::to_string(mnuDisplayCurrentEmpl.Checked) + std::to_string(mnuEmplOrder.Checked);
  };
  for (const char* expected : {"11", "01", "10", "00"}) {
    payroll.Choose(mnuDisplayCurrentEmpl);
    EXPECT_EQ(states(), expected);
  }
  txtInput[kEmplBox].Text = "";
  payroll.Choose(mnuDisplayCurrentEmpl,
                 "[i] Ostrel Payroll | No employee number specified!\\rEnter an employee number "
                 "then try again. | Ok -> Ok");
  EXPECT_EQ(states(), "00");
}

TEST(Totals, SayWhatTheStoreHolds) {
  RunningPayroll payroll;
  mnuUseTimeClock.Checked = false;
  const char* const cases[][3] = {{"11/18/04", "", "0|0.00|0.00|11/18|0 lines"},
                                  {"All", "130|1250|7.5||1", "1250|7.50|1,250.00|All|1 line"},
                                  {"All", "130|37.5|.25||1", "1287.5|7.75|1,287.50|All|2 lines"}};
  for (const auto& [day, saved, totals] : cases) {
    txtToday.Text = day;
    Payroll::FillBoxes(saved);
    if (*saved != '\0') cmdSave.Press();
    std::string footers;
    for (const char* column : {"QUANTITY", "HOURS", "GROSS", "Date"})
      footers += TDBGrid1.Columns(column).FooterText.Get() + "|";
    EXPECT_EQ(footers + lblLineCt.Caption.Get(), totals);
  }
}

TEST(Layouts, ShowWhatEachNeeds) {
  RunningPayroll payroll;
  const Control* const clocks[] = {&Frame1,
                                   &mnuMinWageWatch,
                                   &mnuClockoutAllEmpls,
                                   &mnuAutosetTime,
                                   &mnuReClockInAllEmpls,
                                   &mnuDefaultClockIn,
                                   &mnuDefaultClockOut};
  const auto state = [&] {
    std::string text = TDBGrid1.Columns("HOURS").Visible ? "hours " : "times ";
    for (const Control* control : clocks) text += control->Visible ? "c" : "-";
    return text;
  };
  const int place = cmdSave.Left;
  EXPECT_EQ(state(), "times ccccccc");
  payroll.Choose(mnuUseTimeClock);
  EXPECT_EQ(state(), "hours -------");
  EXPECT_NE(cmdSave.Left, place);
  payroll.Choose(mnuUseTimeClock);
  EXPECT_EQ(state(), "times ccccccc");
  EXPECT_EQ(cmdSave.Left, place);
}

TEST(GridEditing, KeepsNameAndMomentRight) {
  const std::string as = "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,2";
  const std::string cases[][4] = {
      {"Empl#", "101", "101,ALVAREZ MARIA,11/18/2004 7:00:00 AM,10,2"},
      {"Empl#", "999", "999, ,11/18/2004 7:00:00 AM,10,2"},
      {"Empl#", "0", "0,DURAND ANNE,11/18/2004 7:00:00 AM,10,2"},
      {"Time", "8:15", "130,DURAND ANNE,11/18/2004 8:15:00 AM,10,2"},
      {"Date", "11/17", "130,DURAND ANNE,11/17/2004 7:00:00 AM,10,2"},
      {"Date", "13/45", as, "Bad Date: 13/45 07:00 am"},
      {"Time", "", as, "Bad Date: 11/18 "},
      {"Date", " ", as, "Bad Date:   07:00 am"},
      {"Pce Quan", "3.5", "130,DURAND ANNE,11/18/2004 7:00:00 AM,3.5,2"},
      {"Rate", "Std Rate", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,-9"},
  };
  for (const auto& [column, text, fields, bad] : cases) {
    SCOPED_TRACE(column + " " + text);
    RunningPayroll payroll;
    payroll.AddLine("130 P 7:00 am 10 2");
    const auto edit = [](const std::string& cell, const std::string& typed) {
      TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber(cell));
      TDBGrid1.BeginEdit(typed);
      TDBGrid1.CommitEdit();
    };
    edit("Empl#", "130 ");  // brings the name
    payroll.Desktop.Expect(
        bad.empty() ? "" : "[!] Ostrel Payroll | " + bad + "\\rignoring | Ok -> Ok",
        [&, cell = column, typed = text] { edit(cell, typed); });
    EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME ETIME QUANTITY RATE"), fields);
  }
}

TEST(LineCommands, DeleteWhatIsSelected) {
  RunningPayroll payroll;
  payroll.AddLine("101 I 7:00 am|125 I 8:00 am|130 I 9:00 am|140 I 10:00 am");
  payroll.Choose(mnuDeleteLine,
                 "[i] Ostrel Payroll | To select a line to delete, click in the box on its left "
                 "edge then redo this command. | Ok -> Ok");
  TDBGrid1.ToggleSelected(3);
  TDBGrid1.ToggleSelected(1);
  const std::string both = "[?] Delete Selected Line | Delete these 2 lines? | OkCancel -> ";
  payroll.Choose(mnuDeleteLine, both + "Cancel");
  payroll.Choose(mnuDeleteLine, both + "Ok");
  EXPECT_EQ(payroll.Lines(), "125 I 08:00 am|140 I 10:00 am");
  EXPECT_EQ(lblLineCt.Caption.Get(), "2 lines");
  TDBGrid1.ToggleSelected(0);
  payroll.Choose(mnuDeleteLine, "[?] Delete Selected Line | Delete this line? | OkCancel -> Ok");
  EXPECT_EQ(payroll.Lines(), "125 I 08:00 am");
}

}  // namespace
}  // namespace ostrel
