// Which lines show, their totals, the layouts, cells and line commands.

#include <gtest/gtest.h>

#include "display/displayed_lines.h"
#include "frame/app_state.h"
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
  const struct {
    const char* day;
    const char* empl;
    bool current, order;
    const char* where;
    const char* shown;
  } cases[] = {
      {"11/18/04", "130", false, false, " where INT(ETIME) = #11/18/04#",
       "130 09:00 am|101 08:00 am|130 07:00 am|"},
      {"11/18/04", "130", false, true, " where INT(ETIME) = #11/18/04#",
       "101 08:00 am|130 07:00 am|130 09:00 am|"},
      {"11/18/04", "130", true, true, " where INT(ETIME) = #11/18/04# and EMPL_NUMB = 130",
       "130 07:00 am|130 09:00 am|"},
      {"All", "130", true, false, " where EMPL_NUMB = 130",
       "130 09:00 am|130 07:00 am|130 06:00 am|"},
      {"All", "", true, false, "", "130 09:00 am|101 08:00 am|130 07:00 am|130 06:00 am|"},
      {"11/17/04", "0", true, false, " where INT(ETIME) = #11/17/04#", "130 06:00 am|"},
  };
  for (const auto& test : cases) {
    txtToday.Text = test.day;
    txtInput[kEmplBox].Text = test.empl;
    mnuDisplayCurrentEmpl.Checked = test.current;
    mnuEmplOrder.Checked = test.order;
    EXPECT_EQ(WhereSelect(), test.where);
    SetRecordSource();
    EXPECT_EQ(OnShow(), test.shown) << test.where;
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
  const auto footers = [] {
    std::string text;
    for (const char* column : {"QUANTITY", "HOURS", "GROSS", "Date"})
      text += TDBGrid1.Columns(column).FooterText.Get() + "|";
    return text + lblLineCt.Caption.Get();
  };
  EXPECT_EQ(footers(), "0|0.00|0.00|11/18|0 lines");
  Option1[kPiecework].Value = true;
  txtToday.Text = "All";
  const char* const cases[][2] = {{"1250", "1250|0.00|1,250.00|All|1 line"},
                                  {"37.5", "1287.5|0.00|1,287.50|All|2 lines"}};
  for (const auto& [quantity, totals] : cases) {
    txtInput[kQuantityBox].Text = quantity;
    txtInput[kRateBox].Text = "1";
    txtInput[kQuanDescBox].Text = "BOX";
    payroll.Save("130");
    EXPECT_EQ(footers(), totals);
  }
}

TEST(Layouts, PlaceTheBoxesAboveTheirColumns) {
  RunningPayroll payroll;
  const auto state = [] {
    std::string places;
    for (const Control* control :
         {static_cast<Control*>(&txtInput[kTimeBox]),
          static_cast<Control*>(&txtInput[kQuanDescBox]),
          static_cast<Control*>(&txtInput[kRateBox]), static_cast<Control*>(&chkStdRate),
          static_cast<Control*>(&Shape1), static_cast<Control*>(&cmdSave),
          static_cast<Control*>(&CurTimeCtl1), static_cast<Control*>(&frmCosting)}) {
      places += std::to_string(control->Left) + " ";
    }
    places += TDBGrid1.Columns("HOURS").Visible ? "hours " : "times ";
    for (const MenuItem* item : {&mnuMinWageWatch, &mnuClockoutAllEmpls, &mnuReClockInAllEmpls,
                                 &mnuAutosetTime, &mnuDefaultClockIn, &mnuDefaultClockOut}) {
      places += std::to_string(item->Visible);
    }
    return places + (Frame1.Visible ? " clock" : " plain");
  };
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(state(), "3510 5745 6330 6330 2085 2265 3525 8775 times 111111 clock");
    const std::pair<const char*, int> columns[] = {{"Empl#", 420},    {"Time", 3480},
                                                   {"I/O/Pce", 4965}, {"QDesc", 5745},
                                                   {"Rate", 6330},    {"Ent#", 8775}};
    for (const auto& [column, left] : columns) {
      EXPECT_EQ(TDBGrid1.Left + TDBGrid1.ColumnLeft(TDBGrid1.ColumnNumber(column)), left);
    }
    payroll.Choose(mnuUseTimeClock);
    EXPECT_EQ(state(), "1860 5013 5598 5598 2925 3105 4395 8010 hours 000000 plain");
    payroll.Choose(mnuUseTimeClock);
  }
}

TEST(GridEditing, KeepsNameAndMomentRight) {
  const struct {
    const char* column;
    const char* text;
    const char* fields;
    const char* bad = nullptr;  // date that is refused
  } cases[] = {
      {"Empl#", "101", "101,ALVAREZ MARIA,11/18/2004 7:00:00 AM,10,2"},
      {"Empl#", "999", "999, ,11/18/2004 7:00:00 AM,10,2"},
      {"Empl#", "0", "0,DURAND ANNE,11/18/2004 7:00:00 AM,10,2"},
      {"Time", "8:15", "130,DURAND ANNE,11/18/2004 8:15:00 AM,10,2"},
      {"Date", "11/17", "130,DURAND ANNE,11/17/2004 7:00:00 AM,10,2"},
      {"Date", "13/45", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,2", "13/45 07:00 am"},
      {"Time", "", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,2", "11/18 "},
      {"Date", " ", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,2", "  07:00 am"},
      {"Pce Quan", "3.5", "130,DURAND ANNE,11/18/2004 7:00:00 AM,3.5,2"},
      {"Rate", "Std Rate", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,-9"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.column) + " " + test.text);
    RunningPayroll payroll;
    payroll.AddLine("130 P 7:00 am 10 2");
    SetRecordSource();
    const auto edit = [](const char* column, const char* text) {
      TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber(column));
      TDBGrid1.BeginEdit(text);
      TDBGrid1.CommitEdit();
    };
    edit("Empl#", "130 ");  // brings the name
    const auto shown = [&](const std::string& date) {
      return "[!] Ostrel Payroll | Bad Date: " + date + "\\rignoring | Ok -> Ok";
    };
    payroll.Desktop.Expect(test.bad == nullptr ? "" : shown(test.bad),
                           [&] { edit(test.column, test.text); });
    EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME ETIME QUANTITY RATE"), test.fields);
  }
}

TEST(LineCommands, DeleteWhatIsSelected) {
  RunningPayroll payroll;
  payroll.AddLine("101 I 7:00 am|125 I 8:00 am|130 I 9:00 am|140 I 10:00 am");
  SetRecordSource();
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
