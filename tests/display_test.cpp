// Which lines show, their totals, the layouts, cells and line commands.

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "display/displayed_lines.h"
#include "display/view_filter.h"
#include "scan_main/scan_main.h"
#include "support/failing_statement.h"
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
      {"Date", "13/45", as, "Bad Date: 13/45 07:00 am\\rignoring"},
      {"Time", "", as, "Bad Date: 11/18 \\rignoring"},
      {"Date", " ", as, "Bad Date:   07:00 am\\rignoring"},
      {"Empl#", "101X", as, "Bad number: 101X, ignoring"},
      {"Empl#", "1e39", as, "Bad number: 1e39, ignoring"},
      {"Empl#", "", as, "Bad number: , ignoring"},
      {"Empl#", "1,010", "1010, ,11/18/2004 7:00:00 AM,10,2"},
      {"Rate", "", as, "Bad number: , ignoring"},
      {"Rate", "abc", as, "Bad number: abc, ignoring"},
      {"Pce Quan", "1e999", as, "Bad number: 1e999, ignoring"},
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
    payroll.Desktop.Expect(bad.empty() ? "" : "[!] Ostrel Payroll | " + bad + " | Ok -> Ok",
                           [&, cell = column, typed = text] { edit(cell, typed); });
    EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME ETIME QUANTITY RATE"), fields);
  }
}

void EditCell(const char* column, const std::string& typed) {
  TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber(column));
  TDBGrid1.BeginEdit({});
  TDBGrid1.Typed(typed, 0, 0);
}

TEST(GridEditing, ChangesNumberAndNameTogetherOrNotAtAll) {
  for (const std::int32_t line : {5867, 5868, 5872, 5878, 5882, 5884}) {
    SCOPED_TRACE(line);
    RunningPayroll payroll;
    payroll.Save("130");
    const FailingStatement failing(line);
    EditCell("Empl#", "101");
    payroll.Desktop.Expect("[!]*(Err#3022)*-> Ignore", [] { TDBGrid1.CommitEdit(); });
    EXPECT_EQ(payroll.Fields("EMPL_NUMB SORT_NAME"), "130,DURAND ANNE");
    EXPECT_EQ(Data1.Mode(), EditMode::None);
  }
}

TEST(GridEditing, IsForTheCellThatIsMeant) {
  RunningPayroll payroll;
  payroll.AddLine("130 P 7:00 am 10 2");
  const auto press = [](int character) { TDBGrid1.KeyPress(character); };
  TDBGrid1.SetFocus();
  press('S');  // no cell is current
  TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber("Rate"));
  TDBGrid1.ToggleSelected(0);
  press('S');
  EXPECT_FALSE(TDBGrid1.CanEdit());
  EXPECT_EQ(payroll.Fields("RATE"), "2");
  TDBGrid1.ToggleSelected(0);
  EXPECT_TRUE(TDBGrid1.CanEdit());
  press(key::kEscape);
  EXPECT_EQ(ScanMain.ActiveControl(), &txtInput[kEmplBox]);
  Data1.Recordset.Delete();
  press('S');
}

TEST(GridEditing, ShowsWhatNoColumnCanAsText) {
  const RunningPayroll payroll;
  const std::tuple<const char*, Value, const char*> cases[] = {
      {"Time", Moment{3e6}, "3000000"}, {"Rate", HUGE_VAL, "Inf"}, {"Gross", -HUGE_VAL, "-Inf"}};
  for (const auto& [column, value, text] : cases) {
    bool odd = false;
    EXPECT_EQ(TDBGrid1.Columns(column).Display(value, &odd), text);
    EXPECT_TRUE(odd);
  }
}

/// The current cell, what is selected and the topmost row.
std::string ViewNow() {
  std::string view = TDBGrid1.CellText(0) + "/" + TDBGrid1.Columns(TDBGrid1.Col).Caption +
                     " from " + std::to_string(TDBGrid1.TopRow);
  for (const Bookmark row : TDBGrid1.SelBookmarks) view += " *" + std::to_string(row);
  return view;
}

TEST(Commands, LeaveTheViewWhereItWas) {
  RunningPayroll payroll;
  payroll.AddLine("101 I 7:00 am|125 I 8:00 am|130 P 9:00 am 10 2|140 I 10:00 am");
  TDBGrid1.GoTo(2, TDBGrid1.ColumnNumber("Rate"));
  TDBGrid1.ToggleSelected(0);
  TDBGrid1.ToggleSelected(3);
  TDBGrid1.TopRow = 1;
  const std::string before = "125/Rate from 1 *4 *1";
  EXPECT_EQ(ViewNow(), before);
  const std::pair<MenuItem*, const char*> same[] = {
      {&mnuWriteImportFile, "[i]*written.*-> Ok"},
      {&mnuMinWageWatch, "[i]*-> Ok"},
      {&mnuPrintLines, "[i]*-> Ok"},
      {&mnuEmplDailyRpt, "[i]*-> Ok"},
      {&mnuDeleteLine, "[?]*-> Cancel"},
      {&mnuClockoutAllEmpls, "[?]*-> Yes\n[i]*-> Ok"}};
  for (const auto& [command, shown] : same) {
    payroll.Choose(*command, shown);
    EXPECT_EQ(ViewNow(), before) << command->Name;
  }
  payroll.Choose(mnuDeleteLine, "[?]*-> Ok");
  EXPECT_EQ(ViewNow(), "125/Rate from 1") << "the selected rows are gone";
  payroll.Choose(mnuEmplOrder);
  EXPECT_EQ(Data1.Recordset.Position(), 0) << "another order is another view";
}

TEST(Commands, FindWhatIsHalfTypedSettled) {
  const std::tuple<const char*, void (*)(Payroll&), const char*> cases[] = {
      {"order", [](Payroll& p) { p.Choose(mnuEmplOrder); }, "999"},
      {"save", [](Payroll&) { cmdSave.Press(); }, "999|0"},
      {"close", [](Payroll&) { ScanMain.Unload(); }, "999"},
      {"copy", [](Payroll& p) { p.Choose(mnuCopy); }, "10"},
      {"hidden", [](Payroll&) { ScanMain.Choose(mnuSep0); }, "999"}};
  for (const auto& [name, command, quantity] : cases) {
    SCOPED_TRACE(name);
    RunningPayroll payroll;
    payroll.AddLine("130 P 7:00 am 10 2");
    txtInput[kEmplBox].Text = "130";
    TDBGrid1.SetFocus();
    EditCell("Pce Quan", "999");
    command(payroll);
    EXPECT_EQ(payroll.Fields("QUANTITY"), quantity);
  }
  RunningPayroll payroll;
  payroll.AddLine("130 I 6:00 am|130 P 7:00 am 10 2");
  txtToday.Text = "11/17/04";
  payroll.AddLine("101 P 7:00 am 5 2");
  payroll.Fill(txtToday, "11/18");
  payroll.Choose(mnuWriteImportFile, "[i]*1 lines*-> Ok");
  const std::string file = payroll.Folder.Read("disk/Pck-1234.asc");
  EXPECT_TRUE(file.find("*11/18/04, Thursday") != file.npos && file.find("\n130,") != file.npos)
      << file;
  EXPECT_EQ(ScanMain.ActiveControl(), &txtToday);
  EXPECT_EQ(txtToday.BackColor.Get(), kYellow);
  TDBGrid1.ToggleSelected(0);
  payroll.Choose(mnuDeleteLine, "[?]*Delete this line*-> Cancel");  // nothing new to settle
}

/// The day was changed, and the rows of the new one could not be read.
TEST(Commands, NeverGiveOutRowsOfAnotherDay) {
  RunningPayroll payroll;
  payroll.AddLine("130 I 6:00 am|130 P 7:00 am 10 2");
  payroll.Fill(txtToday, "11/17/04");
  const auto other = Data1.DatabaseName.Get();
  Data1.DatabaseName = payroll.App("gone.mdb");
  const std::string gone = "[!]*gone.mdb*-> Ignore";
  payroll.Desktop.Expect(gone, [] { txtInput[kEmplBox].SetFocus(); });
  lblLineCt.Caption = "1 line";
  for (MenuItem* command : {&mnuWriteImportFile, &mnuPrintLines}) payroll.Choose(*command, gone);
  EXPECT_EQ(payroll.Folder.Read("disk/Pck-1234.asc"), "");
  Data1.DatabaseName = other;
  payroll.AddLine("101 I 6:00 am|101 P 7:00 am 10 2");
  Data1.RecordSource = "Select * from [OstrelPr] where INT(ETIME) = #11/17/04#";
  payroll.Choose(mnuWriteImportFile, "[i]*1 lines*-> Ok");
}

TEST(LineCommands, CutCopyAndPasteActOnTheCurrentCell) {
  RunningPayroll payroll;
  payroll.AddLine("130 P 7:00 am 10 2");
  TDBGrid1.SetFocus();
  const auto at = [&](const char* column, MenuItem& command) {
    TDBGrid1.GoTo(0, TDBGrid1.ColumnNumber(column));
    payroll.Choose(command);
    return payroll.Desktop.ClipboardText() + "|" +
           (TDBGrid1.Editing ? TDBGrid1.EditText : "not edited");
  };
  EXPECT_EQ(at("Pce Quan", mnuCopy), "10|not edited");
  EXPECT_EQ(at("Rate", mnuPaste), "10|10");
  EXPECT_EQ(at("Rate", mnuCut), "10|");
  TDBGrid1.CancelEdit();
  EXPECT_EQ(at("Name", mnuCut), "|not edited") << "locked";
  EXPECT_EQ(at("Time", mnuCopy), "07:00 am|not edited");
  EXPECT_EQ(at("Name", mnuPaste), "07:00 am|not edited");
  payroll.Desktop.SetClipboardText("PIECES DONE");
  EXPECT_EQ(at("I/O/Pce", mnuPaste), "PIECES DONE|P") << "as much as the field takes";
  TDBGrid1.CancelEdit();
  TDBGrid1.ToggleSelected(0);
  EXPECT_EQ(at("Rate", mnuPaste), "PIECES DONE|not edited") << "a selected row";
}

TEST(LineCommands, PasteNoMoreThanABoxHolds) {
  RunningPayroll payroll;
  std::string book;
  book.resize(10'000'000, 'x');
  payroll.Desktop.SetClipboardText(book);
  for (TextBox* box : {&txtComments, &txtInput[kMemoBox]}) {
    int said = 0;
    box->Full = [&] { ++said; };
    payroll.Fill(*box, "ab");
    payroll.Choose(mnuPaste);
    EXPECT_EQ(box->Text.Get().size(), box == &txtComments ? 254U : 1000U);
    EXPECT_TRUE(box->Text.Get().ends_with("xab"));
    EXPECT_EQ(said, 1);
    box->Full = nullptr;
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
