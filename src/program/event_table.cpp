#include "program/event_table.h"

#include "crew/clock_in_crew.h"
#include "crew/clock_out_all.h"
#include "crew/reclock_in_all.h"
#include "display/displayed_lines.h"
#include "display/grid_editing.h"
#include "display/line_commands.h"
#include "entry/date_comment_boxes.h"
#include "entry/input_boxes.h"
#include "entry/layouts.h"
#include "entry/save_command.h"
#include "entry/standard_rate_switch.h"
#include "exchange/import_file.h"
#include "exchange/load_descriptions.h"
#include "frame/failure_reporting.h"
#include "program/settings.h"
#include "program/start_up.h"
#include "reports/daily_report.h"
#include "reports/min_wage_watch.h"
#include "reports/print_lines.h"
#include "scan_main/scan_main.h"

namespace ostrel {

namespace {

struct MenuCommand {
  MenuItem* Entry;
  void (*Click)();
  bool ActsOnTyping = false;
};

const MenuCommand kMenuCommands[] = {
    {&mnuUpdateDescs, mnuUpdateDescs_Click},
    {&mnuMinWageWatch, mnuMinWageWatch_Click},
    {&mnuPrintLines, mnuPrintLines_Click},
    {&mnuEmplDailyRpt, mnuEmplDailyRpt_Click},
    {&mnuWriteImportFile, mnuWriteImportFile_Click},
    {&mnuExit, mnuExit_Click},
    {&mnuCut, mnuCut_Click, true},
    {&mnuCopy, mnuCopy_Click, true},
    {&mnuPaste, mnuPaste_Click, true},
    {&mnuDeleteLine, mnuDeleteLine_Click},
    {&mnuClockInACrew, mnuClockInACrew_Click},
    {&mnuClockoutAllEmpls, mnuClockoutAllEmpls_Click},
    {&mnuReClockInAllEmpls, mnuReClockInAllEmpls_Click},
    {&mnuJumpQDesc, mnuJumpQDesc_Click},
    {&mnuDisplayCurrentEmpl, mnuDisplayCurrentEmpl_Click},
    {&mnuEmplOrder, mnuEmplOrder_Click},
    {&mnuDisplayAllDates, mnuDisplayAllDates_Click},
    {&mnuUseTimeClock, mnuUseTimeClock_Click},
    {&mnuDefaultClockIn, mnuDefaultClockIn_Click},
    {&mnuDefaultClockOut, mnuDefaultClockOut_Click},
    {&mnuAutosetTime, mnuAutosetTime_Click},
};

void TieMenus() {
  for (const MenuCommand& command : kMenuCommands) {
    command.Entry->Click = command.Click;
    command.Entry->ActsOnTyping = command.ActsOnTyping;
  }
}

void TieControls() {
  for (int Index = 0; Index < kInputBoxCount; ++Index) {
    TextBox& box = txtInput[static_cast<std::size_t>(Index)];
    box.GotFocus = [Index] { txtInput_GotFocus(Index); };
    box.LostFocus = [Index] { txtInput_LostFocus(Index); };
    box.KeyDown = [Index](int KeyCode, int Shift) { txtInput_KeyDown(Index, KeyCode, Shift); };
    box.KeyPress = [Index](int& KeyAscii) { txtInput_KeyPress(Index, KeyAscii); };
  }
  for (int Index = 0; Index < kEventKindCount; ++Index) {
    Option1[static_cast<std::size_t>(Index)].Click = [Index] { Option1_Click(Index); };
  }
  cmdSave.Click = cmdSave_Click;
  cmdSave.GotFocus = cmdSave_GotFocus;
  cmdSave.LostFocus = cmdSave_LostFocus;
  cmdSave.KeyPress = cmdSave_KeyPress;
  chkStdRate.Click = chkStdRate_Click;

  txtToday.GotFocus = txtToday_GotFocus;
  txtToday.LostFocus = txtToday_LostFocus;
  txtToday.TakeUp = txtToday_LostFocus;  // the commands read the day
  txtToday.KeyDown = txtToday_KeyDown;
  txtToday.KeyPress = txtToday_KeyPress;
  txtComments.GotFocus = txtComments_GotFocus;
  txtComments.LostFocus = txtComments_LostFocus;
  txtComments.KeyDown = txtComments_KeyDown;
  txtComments.KeyPress = txtComments_KeyPress;

  TDBGrid1.BeforeColUpdate = TDBGrid1_BeforeColUpdate;
  TDBGrid1.KeyPress = TDBGrid1_KeyPress;
  ScanMain.Load = Form_Load;
  ScanMain.QueryUnload = Form_QueryUnload;
  ScanMain.OnFailure = [](const std::exception& fault, Form::Repeat repeat) {
    return ReportAtEdge(fault, repeat == Form::Repeat::Possible);
  };
  ScanMain.StatementsDone = StatementsDone;
}

}  // namespace

void LoadScanMain() {
  DesignScanMain();
  TieMenus();
  TieControls();
}

}  // namespace ostrel
