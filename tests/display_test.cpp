// Which lines show, their totals, the layouts, cells and line commands.

#include <gtest/gtest.h>

#include "display/displayed_lines.h"
#include "display/totals.h"
#include "frame/app_state.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

std::string OnShow() {
  std::string shown;
  for (std::size_t row = 0; row < Data1.Recordset.RowCount(); ++row) {
    Data1.Recordset.SetPosition(row);
    for (const char* column : {"Empl#", "Time"}) {
      shown += TDBGrid1.CellText(TDBGrid1.ColumnNumber(column)) + (column[0] == 'E' ? " " : "|");
    }
  }
  return shown;
}

TEST(DisplayedLines, FollowTheBoxesAndTheMenus) {
  Payroll payroll;
  payroll.Start();
  for (const char* line : {"130 I 7:00 am", "101 I 8:00 am", "130 O 9:00 am"})
    payroll.AddLine(line);
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
  Payroll payroll;
  payroll.Start();
  txtInput[kEmplBox].Text = "130";
  std::string states;
  for (int i = 0; i < 4; ++i) {
    payroll.Choose(mnuDisplayCurrentEmpl);
    states +=
        std::to_string(mnuDisplayCurrentEmpl.Checked) + std::to_string(mnuEmplOrder.Checked) + " ";
  }
  EXPECT_EQ(states, "11 01 10 00 ");
  txtInput[kEmplBox].Text = "";
  payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  payroll.Choose(mnuDisplayCurrentEmpl);
  EXPECT_FALSE(mnuDisplayCurrentEmpl.Checked || mnuEmplOrder.Checked);
  EXPECT_EQ(payroll.Desktop.TakeShown(),
            "[i] Ostrel Payroll | No employee number specified!\\rEnter an employee number then "
            "try again. | Ok -> Ok");
}

TEST(DisplayedLines, SqlInTheEmployeeBoxIsReportedAndChangesNothing) {
  Payroll payroll;
  payroll.Start();
  payroll.AddLine("130 I 7:00 am");
  mnuDisplayCurrentEmpl.Checked = true;
  for (const char* text :
       {"130; delete from OstrelPr", "130 or 1=1", "12a", "130 union select 1"}) {
    SCOPED_TRACE(text);
    txtInput[kEmplBox].Text = text;
    payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
    SetRecordSource();
    EXPECT_NE(payroll.Desktop.TakeShown().find("in routine 'SetRecordSource'"), std::string::npos);
    EXPECT_EQ(payroll.Lines(), "130 I 07:00 am");
  }
}

TEST(Totals, SayWhatTheStoreHolds) {
  Payroll payroll;
  payroll.Start();
  const auto footers = [] {
    std::string text;
    for (const char* column : {"QUANTITY", "HOURS", "GROSS", "Date"})
      text += TDBGrid1.Columns(column).FooterText.Get() + "|";
    return text + lblLineCt.Caption.Get();
  };
  EXPECT_EQ(footers(), "0|0.00|0.00|11/18|0 lines");
  Option1[kPiecework].Value = true;
  for (const char* quantity : {"1250", "37.5"}) {
    txtInput[kQuantityBox].Text = quantity;
    txtInput[kRateBox].Text = "1";
    txtInput[kQuanDescBox].Text = "BOX";
    txtToday.Text = "All";
    payroll.Save("130");
    EXPECT_EQ(footers(), quantity[0] == '1' ? "1250|0.00|1,250.00|All|1 line"
                                            : "1287.5|0.00|1,287.50|All|2 lines");
  }
}

TEST(Layouts, PlaceTheBoxesAboveTheirColumns) {
  Payroll payroll;
  payroll.Start();
  const auto state = [] {
    const auto place = [](const Control& control) {
      return std::to_string(control.Left.Get()) + " ";
    };
    return place(txtInput[kTimeBox]) + place(txtInput[kQuanDescBox]) + place(txtInput[kRateBox]) +
           place(chkStdRate) + place(Shape1) + place(cmdSave) + place(CurTimeCtl1) +
           place(frmCosting) + std::to_string(txtInput[kTimeBox].TabIndex) +
           std::to_string(cmdSave.TabIndex) + (Frame1.Visible ? " clock" : " plain");
  };
  const std::string timeClock = "3510 5745 6330 6330 2085 2265 3525 8775 32 clock";
  EXPECT_EQ(state(), timeClock);
  payroll.Choose(mnuUseTimeClock);
  EXPECT_EQ(state(), "1860 5013 5598 5598 2925 3105 4395 8010 23 plain");
  for (const MenuItem* gone :
       {&mnuMinWageWatch, &mnuClockoutAllEmpls, &mnuReClockInAllEmpls, &mnuAutosetTime}) {
    EXPECT_FALSE(gone->Visible) << gone->Name;
  }
  payroll.Choose(mnuUseTimeClock);
  EXPECT_EQ(state(), timeClock);
  // Columns under their boxes, with column 0 at 420.
  const struct {
    const char* column;
    int left;
  } columns[] = {{"Empl#", 420},  {"Time", 3480}, {"I/O/Pce", 4965},
                 {"QDesc", 5745}, {"Rate", 6330}, {"Ent#", 8775}};
  for (const auto& column : columns) {
    EXPECT_EQ(TDBGrid1.Left + TDBGrid1.ColumnLeft(TDBGrid1.ColumnNumber(column.column)),
              column.left)
        << column.column;
  }
}

TEST(GridEditing, KeepsNameAndMomentRight) {
  const struct {
    const char* column;
    const char* text;
    const char* fields;
    const char* shown;
  } cases[] = {
      {"Empl#", "101", "101,ALVAREZ MARIA,11/18/2004 7:00:00 AM,10,2", ""},
      {"Empl#", "999", "999, ,11/18/2004 7:00:00 AM,10,2", ""},
      {"Empl#", "0", "0,DURAND ANNE,11/18/2004 7:00:00 AM,10,2", ""},
      {"Time", "8:15", "130,DURAND ANNE,11/18/2004 8:15:00 AM,10,2", ""},
      {"Date", "11/17", "130,DURAND ANNE,11/17/2004 7:00:00 AM,10,2", ""},
      {"Date", "13/45", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,2",
       "[!] Ostrel Payroll | Bad Date: 13/45 07:00 am\\rignoring | Ok -> Ok"},
      {"Time", "", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,2",
       "[!] Ostrel Payroll | Bad Date: 11/18 \\rignoring | Ok -> Ok"},
      {"Date", " ", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,2",
       "[!] Ostrel Payroll | Bad Date:   07:00 am\\rignoring | Ok -> Ok"},
      {"Pce Quan", "3.5", "130,DURAND ANNE,11/18/2004 7:00:00 AM,3.5,2", ""},
      {"Rate", "Std Rate", "130,DURAND ANNE,11/18/2004 7:00:00 AM,10,-9", ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(std::string(test.column) + " " + test.text);
    Payroll payroll;
    payroll.Start();
    txtInput[kEmplBox].Text = "130";
    payroll.AddLine("130 P 7:00 am 10 2");
    LinesRs.MoveFirst();
    SetRecordSource();
    TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber("Empl#"));
    TDBGrid1.BeginEdit("130 ");  // the name of the row as it was
    TDBGrid1.CommitEdit();
    TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber(test.column));
    TDBGrid1.BeginEdit(test.text);
    if (*test.shown != '\0') payroll.Desktop.WillAnswer(BoxAnswer::Ok);
    TDBGrid1.CommitEdit();
    EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME ETIME QUANTITY RATE"), test.fields);
    EXPECT_EQ(payroll.Desktop.TakeShown(), test.shown);
  }
}

TEST(GridEditing, ALetterInTheRateCellIsTheStandardRate) {
  Payroll payroll;
  payroll.Start();
  payroll.AddLine("130 P 7:00 am 10 2");
  SetRecordSource();
  for (const char typed : std::string("5.-k")) {
    TDBGrid1.SetFocus();
    TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber("Rate"));
    int keyAscii = static_cast<unsigned char>(typed);
    TDBGrid1.KeyPress(keyAscii);
    EXPECT_EQ(payroll.Fields("RATE"), typed == 'k' ? "-9" : "2");
    EXPECT_EQ(ScanMain.ActiveControl() == &txtInput[kEmplBox], typed == 'k');
  }
  EXPECT_EQ(TDBGrid1.CellText(TDBGrid1.ColumnNumber("Rate")), "Std Rate");
}

TEST(LineCommands, DeleteWhatIsSelected) {
  Payroll payroll;
  payroll.Start();
  for (const char* line : {"101 I 7:00 am", "125 I 8:00 am", "130 I 9:00 am", "140 I 10:00 am"})
    payroll.AddLine(line);
  SetRecordSource();
  const auto run = [&](BoxAnswer answer) {
    payroll.Desktop.WillAnswer(answer);
    payroll.Choose(mnuDeleteLine);
    return payroll.Desktop.TakeShown();
  };
  EXPECT_EQ(run(BoxAnswer::Ok),
            "[i] Ostrel Payroll | To select a line to delete, click in the box on its left edge "
            "then redo this command. | Ok -> Ok");
  TDBGrid1.ToggleSelected(3);
  TDBGrid1.ToggleSelected(1);
  EXPECT_EQ(run(BoxAnswer::Cancel),
            "[?] Delete Selected Line | Delete these 2 lines? | OkCancel -> Cancel");
  EXPECT_EQ(run(BoxAnswer::Ok),
            "[?] Delete Selected Line | Delete these 2 lines? | OkCancel -> Ok");
  EXPECT_EQ(payroll.Lines(), "125 I 08:00 am|140 I 10:00 am");
  EXPECT_EQ(lblLineCt.Caption.Get(), "2 lines");
  TDBGrid1.ToggleSelected(0);
  EXPECT_EQ(run(BoxAnswer::Ok), "[?] Delete Selected Line | Delete this line? | OkCancel -> Ok");
  EXPECT_EQ(payroll.Lines(), "125 I 08:00 am");
}

TEST(LineCommands, CutCopyAndPasteWhereverTheFocusIs) {
  Payroll payroll;
  payroll.Start();
  payroll.Fill(txtInput[kMemoBox], "CLEAN UP");
  txtInput[kMemoBox].SelLength = 5;
  payroll.Choose(mnuCut);
  EXPECT_EQ(txtInput[kMemoBox].Text.Get() + "|" + payroll.Desktop.ClipboardText(), " UP|CLEAN");
  payroll.Choose(mnuPaste);
  payroll.Choose(mnuPaste);
  EXPECT_EQ(txtInput[kMemoBox].Text.Get(), "CLEANCLEAN UP");
  payroll.Choose(mnuCut);  // nothing selected: the clipboard is empty, the box as it was
  EXPECT_EQ(txtInput[kMemoBox].Text.Get() + "|" + payroll.Desktop.ClipboardText(),
            "CLEANCLEAN UP|");
  payroll.Choose(mnuJumpQDesc);  // the memo box is the end of the row, whatever takes its focus
  EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  payroll.Choose(mnuJumpQDesc);
  EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kQuanDescBox]);
  cmdSave.SetFocus();
  payroll.Desktop.WillAnswer(BoxAnswer::Ignore);
  payroll.Choose(mnuCopy);
  EXPECT_NE(payroll.Desktop.TakeShown().find("(Err#438)"), std::string::npos);
}

}  // namespace
}  // namespace ostrel
