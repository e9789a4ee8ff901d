#pragma once

// ScanMain, the one form of the program: its controls by name, as all routines know them. What the
// form looks like stands in scan_main.cpp, a control a line; nothing here reacts. Which routine
// answers which event stands in program/event_table.cpp.

#include <array>

#include "platform/forms/control.h"
#include "platform/forms/data_control.h"
#include "platform/forms/form.h"
#include "platform/forms/grid.h"

namespace ostrel {

extern Form ScanMain;

/// The boxes of the line in the making, by index.
enum InputBoxIndex {
  kEmplBox,
  kQuantityBox,
  kTimeBox,
  kQuanDescBox,
  kRateBox,
  kEnterpriseBox,
  kOperationBox,
  kEquipBox,
  kMemoBox,
  kInputBoxCount
};
extern std::array<TextBox, kInputBoxCount> txtInput;

/// The event buttons, by index.
enum EventKind { kClockIn, kClockOut, kPiecework, kEventKindCount };
extern std::array<OptionButton, kEventKindCount> Option1;

extern Button cmdSave;
extern Frame Frame1, Frame2, frmCosting;
extern Grid TDBGrid1;
extern Label lblClient, lblMinWage, lblLineCt, lblDate, lblToday, lblClockOff;
extern ClockControl CurTimeCtl1;
extern TextBox txtToday, txtComments;
extern CheckBox chkStdRate;
extern Shape Shape1;
extern DataControl& Data1;  ///< never destroyed, since it holds the store (app_state.h)

extern MenuItem mnuFile, mnuUpdateDescs, mnuMinWageWatch, mnuSep0, mnuPrintLines, mnuEmplDailyRpt,
    mnuSep01, mnuWriteImportFile, mnuSep1, mnuExit;
extern MenuItem mnuEdit, mnuCut, mnuCopy, mnuPaste, mnuSep2, mnuDeleteLine, mnuClockInACrew,
    mnuClockoutAllEmpls, mnuReClockInAllEmpls, mnuEdSep2, mnuJumpQDesc;
extern MenuItem mnuView, mnuDisplayCurrentEmpl, mnuEmplOrder, mnuDisplayAllDates;
extern MenuItem mnuOptions, mnuUseTimeClock, mnuDefaultClockIn, mnuDefaultClockOut, mnuAutosetTime;

/// Puts the form into its design state: every control at its place, no events tied.
void DesignScanMain();

}  // namespace ostrel
