#include "scan_main/scan_main.h"

#include <vector>

#include "frame/standard_rate.h"

namespace ostrel {

Form ScanMain;
std::array<TextBox, kInputBoxCount> txtInput;
std::array<OptionButton, kEventKindCount> Option1;
Button cmdSave;
Frame Frame1, Frame2, frmCosting;
Grid TDBGrid1;
Label lblClient, lblMinWage, lblLineCt, lblDate, lblToday, lblClockOff;
ClockControl CurTimeCtl1;
TextBox txtToday, txtComments;
CheckBox chkStdRate;
Shape Shape1;
DataControl& Data1 = *new DataControl;
MenuItem mnuFile, mnuUpdateDescs, mnuMinWageWatch, mnuSep0, mnuPrintLines, mnuEmplDailyRpt,
    mnuSep01, mnuWriteImportFile, mnuSep1, mnuExit;
MenuItem mnuEdit, mnuCut, mnuCopy, mnuPaste, mnuSep2, mnuDeleteLine, mnuClockInACrew,
    mnuClockoutAllEmpls, mnuReClockInAllEmpls, mnuEdSep2, mnuJumpQDesc;
MenuItem mnuView, mnuDisplayCurrentEmpl, mnuEmplOrder, mnuDisplayAllDates;
MenuItem mnuOptions, mnuUseTimeClock, mnuDefaultClockIn, mnuDefaultClockOut, mnuAutosetTime;

namespace {

constexpr int kInnerWidth = 11910, kInnerHeight = 7725;  // twips

struct ControlRow {
  Control* What;
  const char* Name;
  const char* Text;  // caption or text
  int TabIndex;      // -1: none
  Place Where;       // twips, in the frame if there is one
  Control* Container;
  const char* Spoken;  // accessible name
  const char* Tip;
};

// The form from the back to the front: what stands later lies on top. One control a line; an empty
// tip is none.
// clang-format off
const ControlRow kControls[] = {
    // control                   name          caption or text     tab   left   top  width height  frame        spoken, tip
    {&Shape1,                   "Shape1",      "",                   -1, { 2025,  375,  1440,  585}, nullptr,     "Save mark", ""},
    {&Frame1,                   "Frame1",      "Event",               4, { 4950,   60,   855,  885}, nullptr,     "Event", ""},
    {&Frame2,                   "Frame2",      "Min Wage",           17, { 7590,   15,   930,  480}, nullptr,     "Minimum wage", ""},
    {&frmCosting,               "frmCosting",  "",                   20, { 8745,  495,  3825,  480}, nullptr,     "Costing", ""},
    {&txtInput[kEmplBox],       "txtInput(0)", "125",                 0, {  435,  660,   630,  285}, nullptr,     "Employee number", "Employee number, 1 to 99999"},
    {&txtInput[kQuantityBox],   "txtInput(1)", "127.25",              1, { 1050,  660,   810,  285}, nullptr,     "Piecework quantity", "Pieces done; 0 on a line that is not piecework"},
    {&cmdSave,                  "cmdSave",     "&Save",               2, { 2205,  465,  1095,  405}, nullptr,     "Save the line", "Saves the line; Esc goes on to the description"},
    {&txtInput[kTimeBox],       "txtInput(2)", "10:15",               3, { 3510,  660,   840,  285}, nullptr,     "Time or hours", "Time of the event, or hours worked where no time clock is used"},
    {&txtInput[kQuanDescBox],   "txtInput(3)", "LBS",                 5, { 5775,  660,   555,  285}, nullptr,     "Quantity description", "What is counted, up to 5 letters"},
    {&txtInput[kRateBox],       "txtInput(4)", "0.27",                6, { 6330,  660,   720,  285}, nullptr,     "Rate", "Pay per piece or hour; S for the standard hourly rate"},
    {&txtInput[kEnterpriseBox], "txtInput(5)", "12",                  7, {   30,  165,   555,  285}, &frmCosting, "Enterprise", "Costing code: enterprise"},
    {&txtInput[kOperationBox],  "txtInput(6)", "70",                  8, {  585,  165,   540,  285}, &frmCosting, "Operation", "Costing code: operation"},
    {&txtInput[kEquipBox],      "txtInput(7)", "101",                 9, { 1140,  165,   600,  285}, &frmCosting, "Equipment", "Costing code: equipment"},
    {&txtInput[kMemoBox],       "txtInput(8)", "Clean Up",           10, { 1755,  165,  1230,  285}, &frmCosting, "Memo", "A note of up to 20 letters"},
    {&TDBGrid1,                 "TDBGrid1",    "",                   11, {   30,  975, 11745, 6405}, nullptr,     "Lines", ""},
    {&lblClient,                "lblClient",   "1002, Client Name",  12, { 8580,   60,  3690,  240}, nullptr,     "Client", ""},
    {&CurTimeCtl1,              "CurTimeCtl1", "",                   13, { 3525,  360,   825,  270}, nullptr,     "Clock", "Ctrl/S makes clock disappear & uses manually entered time."},
    {&Option1[kClockIn],        "Option1(0)",  "&In",                14, {   30,  195,   660,  240}, &Frame1,     "Clock in", "The line is a clock-in"},
    {&Option1[kClockOut],       "Option1(1)",  "&Out",               15, {   30,  405,   660,  240}, &Frame1,     "Clock out", "The line is a clock-out"},
    {&Option1[kPiecework],      "Option1(2)",  "&Pcewk",             16, {   30,  615,   825,  240}, &Frame1,     "Piecework", "The line is piecework"},
    {&lblMinWage,               "lblMinWage",  "6.75",               18, {  300,  225,   435,  225}, &Frame2,     "Minimum wage", ""},
    {&lblLineCt,                "lblLineCt",   "12 Lines",           19, {  420, 7395,   795,  180}, nullptr,     "Number of lines", ""},
    {&txtToday,                 "txtToday",    "2/15/04",            21, { 9135,  285,   885,  240}, nullptr,     "Date", "The day of the lines, month first; All shows every day"},
    {&lblDate,                  "lblDate",     "Date",               22, { 8610,  300,   480,  225}, nullptr,     "Date", ""},
    {&lblToday,                 "lblToday",    "Wednesday",          23, {10185,  300,   885,  225}, nullptr,     "Weekday", ""},
    {&txtComments,              "txtComments", "Crew#2",             24, {  420,   60,  3495,  240}, nullptr,     "Comment", "A remark for the reports; the number behind # is the crew that is offered"},
    {&chkStdRate,               "chkStdRate",  "Std &Hrly Rate",     25, { 6360,  435,  1260,  150}, nullptr,     "Standard hourly rate", "The line is paid at the employee's standard hourly rate"},
    {&lblClockOff,              "lblClockOff", "Clock OFF",          26, {10800,  -60,   840,  270}, nullptr,     "Clock off", ""},
    {&Data1,                    "Data1",       "Data1",              -1, { 8400, 7380,  1155,  345}, nullptr,     "Lines, first to last", "First, previous, next and last line"},
};
// clang-format on

struct MenuRow {
  MenuItem* What;
  const char* Name;
  const char* Caption;
  const char* Shortcut;
  MenuItem* Menu;
};

// The menus with their entries below them; "-" is a separator.
// clang-format off
const MenuRow kMenus[] = {
    {&mnuFile,               "mnuFile",               "&File",                                     "",       nullptr},
    {&mnuUpdateDescs,        "mnuUpdateDescs",        "&Update Descriptions from Halvane' Backup", "",       &mnuFile},
    {&mnuMinWageWatch,       "mnuMinWageWatch",       "Minimum Wage Watch",                        "Ctrl+M", &mnuFile},
    {&mnuSep0,               "mnuSep0",               "-",                                         "",       &mnuFile},
    {&mnuPrintLines,         "mnuPrintLines",         "Print Displayed Lines",                     "Ctrl+P", &mnuFile},
    {&mnuEmplDailyRpt,       "mnuEmplDailyRpt",       "Print Employee's Daily Report",             "Ctrl+R", &mnuFile},
    {&mnuSep01,              "mnuSep01",              "-",                                         "",       &mnuFile},
    {&mnuWriteImportFile,    "mnuWriteImportFile",    "&Write Halvane Import File",                "Ctrl+W", &mnuFile},
    {&mnuSep1,               "mnuSep1",               "-",                                         "",       &mnuFile},
    {&mnuExit,               "mnuExit",               "E&xit",                                     "",       &mnuFile},
    {&mnuEdit,               "mnuEdit",               "&Edit",                                     "",       nullptr},
    {&mnuCut,                "mnuCut",                "Cut",                                       "Ctrl+X", &mnuEdit},
    {&mnuCopy,               "mnuCopy",               "Copy",                                      "Ctrl+C", &mnuEdit},
    {&mnuPaste,              "mnuPaste",              "Paste",                                     "Ctrl+V", &mnuEdit},
    {&mnuSep2,               "mnuSep2",               "-",                                         "",       &mnuEdit},
    {&mnuDeleteLine,         "mnuDeleteLine",         "Delete Selected Line",                      "Ctrl+D", &mnuEdit},
    {&mnuClockInACrew,       "mnuClockInACrew",       "Clock In a Crew",                           "",       &mnuEdit},
    {&mnuClockoutAllEmpls,   "mnuClockoutAllEmpls",   "Clockout All Employees",                    "",       &mnuEdit},
    {&mnuReClockInAllEmpls,  "mnuReClockInAllEmpls",  "ReClockIn All Employees",                   "",       &mnuEdit},
    {&mnuEdSep2,             "mnuEdSep2",             "-",                                         "",       &mnuEdit},
    {&mnuJumpQDesc,          "mnuJumpQDesc",          "Jump to QDesc",                             "Ctrl+J", &mnuEdit},
    {&mnuView,               "mnuView",               "View",                                      "",       nullptr},
    {&mnuDisplayCurrentEmpl, "mnuDisplayCurrentEmpl", "Display Current employee only",             "Ctrl+I", &mnuView},
    {&mnuEmplOrder,          "mnuEmplOrder",          "Display in Employee# Order",                "Ctrl+E", &mnuView},
    {&mnuDisplayAllDates,    "mnuDisplayAllDates",    "Display All Dates in the year",             "Ctrl+A", &mnuView},
    {&mnuOptions,            "mnuOptions",            "&Options",                                  "",       nullptr},
    {&mnuUseTimeClock,       "mnuUseTimeClock",       "Use as TimeClock",                          "",       &mnuOptions},
    {&mnuDefaultClockIn,     "mnuDefaultClockIn",     "Default Clock In=8:00 am",                  "",       &mnuOptions},
    {&mnuDefaultClockOut,    "mnuDefaultClockOut",    "Default Clock Out=5:00 pm",                 "",       &mnuOptions},
    {&mnuAutosetTime,        "mnuAutosetTime",        "Autoset Time from Clock",                   "Ctrl+S", &mnuOptions},
};
// clang-format on

using enum FooterFill;
using enum Typing;
constexpr Alignment L = Alignment::Left, R = Alignment::Right, G = Alignment::General;

// Number formats of the two time columns come with Form_Load.
// clang-format off
const std::vector<ColumnDesign> kColumns = {
    // caption   field         format   width, cell, heading, footer and its colour
    {"Empl#",    "EMPL_NUMB",  "",       615, L, L, G, LightGrey,  Typed},
    {"Pce Quan", "QUANTITY",   "",       795, R, R, R, ButtonFace, Typed},
    {"Hours",    "HOURS",      "Fixed",  870, R, G, R, ButtonFace, Typed},
    {"Name",     "SORT_NAME",  "",      1650, G, G, G, LightGrey,  Locked},
    {"Time",     "ETIME",      "",       840, L, L, G, LightGrey,  Typed},
    {"Date",     "ETIME",      "",       645, L, G, G, ButtonFace, Typed},
    {"I/O/Pce",  "EVENT_TYPE", "",       780, L, G, G, LightGrey,  Typed},
    {"QDesc",    "QUAN_DESC",  "",       585, L, G, G, LightGrey,  Typed},
    {"Rate",     "RATE",       "",       705, R, G, G, LightGrey,  Typed},
    {"Gross",    "GROSS",      "Fixed",  885, R, G, R, ButtonFace, Typed},
    {"Gross/Hr", "HOUR_GROSS", "",       855, R, G, G, ButtonFace, Typed},
    {"Ent#",     "ENTERPRISE", "",       555, L, G, G, LightGrey,  Typed},
    {"Oper",     "OPERATION",  "",       555, L, G, G, LightGrey,  Typed},
    {"Eqp#",     "EQUIP_NUMB", "",       600, L, G, G, LightGrey,  Typed},
    {"Memo",     "MEMO",       "",       990, G, G, G, LightGrey,  Typed},
};
// clang-format on

void DesignControls() {
  for (const ControlRow& row : kControls) {
    row.What->Design(row.Name, row.Text, row.Where);
    row.What->TabIndex.Put(row.TabIndex);
    row.What->AccessibleName = row.Spoken;
    row.What->ToolTip = row.Tip;
    ScanMain.Add(*row.What, row.Container);
  }
  // What the table of controls has no column for, since so few controls have it.
  for (const int centred :
       {kEmplBox, kTimeBox, kQuanDescBox, kEnterpriseBox, kOperationBox, kEquipBox}) {
    txtInput[static_cast<std::size_t>(centred)].Align.Put(Alignment::Center);
  }
  txtInput[kQuantityBox].Align.Put(Alignment::Right);
  txtInput[kRateBox].Align.Put(Alignment::Right);
  frmCosting.Border = false;
  txtToday.Border = false;
  txtComments.Border = false;
  txtComments.Bold = true;
  lblClient.Bold = true;
  lblMinWage.Align.Put(Alignment::Center);
  lblLineCt.Align.Put(Alignment::Right);
  Shape1.Visible.Put(false);

  TDBGrid1.DesignColumns(kColumns);
  // The store holds -9; the foreman reads and types words.
  TDBGrid1.Columns("RATE").TranslatedNumber = kStdRate;
  TDBGrid1.Columns("RATE").TranslatedWord = kStdRateWord;
  TDBGrid1.Bind(Data1);
}

void DesignMenus() {
  for (const MenuRow& row : kMenus) {
    row.What->Design(row.Name, row.Caption, {});
    row.What->Shortcut = row.Shortcut;
    ScanMain.AddMenu(*row.What, row.Menu);
  }
  // As a laptop without settings starts.
  mnuUseTimeClock.Checked.Put(true);
  mnuAutosetTime.Checked.Put(true);
}

}  // namespace

void DesignScanMain() {
  ScanMain.Design("Ostrel Payroll Data Input", kInnerWidth, kInnerHeight);
  DesignControls();
  DesignMenus();
}

}  // namespace ostrel
