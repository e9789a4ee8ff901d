#pragma once

// ScanMain, the one form of the program: its controls by name, as all routines know them. What the
// form looks like and which routine answers which event stands in scan_main.cpp.

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
extern DataControl Data1;

extern MenuItem mnuFile, mnuUpdateDescs, mnuMinWageWatch, mnuSep0, mnuPrintLines, mnuEmplDailyRpt,
    mnuSep01, mnuWriteImportFile, mnuSep1, mnuExit;
extern MenuItem mnuEdit, mnuCut, mnuCopy, mnuPaste, mnuSep2, mnuDeleteLine, mnuClockInACrew,
    mnuClockoutAllEmpls, mnuReClockInAllEmpls, mnuEdSep2, mnuJumpQDesc;
extern MenuItem mnuView, mnuDisplayCurrentEmpl, mnuEmplOrder, mnuDisplayAllDates;
extern MenuItem mnuOptions, mnuUseTimeClock, mnuDefaultClockIn, mnuDefaultClockOut, mnuAutosetTime;

/// The word that stands for the standard hourly rate, in the rate box and in the grid.
inline constexpr const char* kStdRateWord = "Std Rate";
/// The rate that marks it in the store; it is no amount.
inline constexpr double kStdRate = -9;

/// Puts the form into its design state and ties every event to its routine. Nothing is loaded yet:
/// that is the form's Load event.
void LoadScanMain();

}  // namespace ostrel
