#include "program/start_up.h"

#include <array>
#include <string>
#include <vector>

#include "display/displayed_lines.h"
#include "entry/input_boxes.h"
#include "exchange/exchange_disk.h"
#include "exchange/load_descriptions.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/ini_keys.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/files/staged_files.h"
#include "platform/files/user_folders.h"
#include "platform/values/clock.h"
#include "platform/values/format.h"
#include "platform/values/numbers.h"
#include "program/first_run.h"
#include "program/found_files.h"
#include "program/settings.h"
#include "scan_main/scan_main.h"
#include "store/line_table.h"
#include "store/lookups.h"
#include "store/office_tables.h"
#include "store/timecard_store.h"

namespace ostrel {

namespace {

constexpr int kGridColumnsStart = 420;  // twips; column 0 stands under box 0
constexpr int kSideMargin = 1440 / 4;   // twips
constexpr int kTopMargin = 1440 / 2;    // twips

/// The first name of a client's file in the listing, or the empty text.
std::string FirstClientFile(const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (NamesAClient(name)) return name;
  }
  return {};
}

/// Of all that would follow from such a number, one box: no query could name a table.
[[noreturn]] void EndWithoutClient(const FailureTail& statement, std::int32_t line) {
  statement(line, [] {
    MsgBox({.Text = "No company information found.",
            .Icon = BoxIcon::Stop,
            .Detail =
                "'" + ClientNumb + "' is no client number; there are letters and digits in one."});
  });
  throw ProgramEnded{};
}

void OpenStore(const FailureTail& statement) {
  bool there = false;
  statement(13040, [&] { there = IsTaken(StorePath()); });
  if (!there) {
    statement(13050, [] { CreatePrinMdb(); });
    statement(13060, [] { DoEvents(); });
  }
  if (!PrinDbOpen) {
    // Ctrl has the index made anew below, so a damaged one is no reason to stop.
    KeepStoreInReach(TheDesktop().CtrlKey() ? StoreCheck::AllButIndex : StoreCheck::Whole);
    statement(13070, [] { OpenPrinDb(); });
  }
  bool reindex = false;
  statement(13080, [&] { reindex = TheDesktop().CtrlKey(); });
  if (reindex) statement(13084, [] { ReindexPrinMdb(); });
  // A store that is not open has been reported; LinesRs opens itself together with it.
  if (!PrinDbOpen) return;
  statement(13090, [] { LinesRs = PrinDb.OpenRecordset("OstrelPr", RecordsetType::Dynaset); });
}

/// An office table in the order of its key, on its first row with a key of 1 or more.
void OpenOrdered(const FailureTail& statement, std::int32_t line, const char* word,
                 Recordset& table) {
  statement(line, [&] { table = DescDb.OpenRecordset(word + ClientNumb, RecordsetType::Table); });
  statement(line + 1, [&] { table.SetIndex("PrimaryIndex"); });
  statement(line + 2, [&] { table.Seek(">=", 1); });
}

void FitGrid() {
  // The record box in front of column 0 has its own width, so the columns meet the boxes only by
  // counting back from it.
  TDBGrid1.Left = kGridColumnsStart - TDBGrid1.ColumnLeft(0);
  Data1.DatabaseName = StorePath();
  Data1.OpenStore = [](const std::string& path) { return OpenTimecards(path); };
}

void ShowDay() {
  const Moment today = Now();
  txtToday.Text = Format(today, DateFormat);
  lblToday.Caption = Format(today, "dddd");
}

void SetUpPrinting() {
  PrintSettings& print = TDBGrid1.PrintInfo;
  print.RepeatColumnHeaders = true;
  print.LeftMargin = print.RightMargin = kSideMargin;
  print.TopMargin = print.BottomMargin = kTopMargin;
}

void PlaceForm() {
  // Twips below the upper edge of the screen.
  ScanMain.Top = 200;
  ScanMain.Height = TDBGrid1.Top + TDBGrid1.Height + 1100;
  ScanMain.Changed();
}

}  // namespace

void Form_Load() {
  constexpr FailureTail statement{ScannerModule, "Form_Load"};
  statement(1004, [] { RequireIni(); });
  statement(1010, [] { RemoteDrive = ReadExchangeFolder(); });
  std::string users;
  statement(1014, [&] { users = IniRead(kIniSection, "UserCount"); });
  if (!users.empty()) statement(1016, [&] { UserCount = ToLong(NumericPrefix(users)); });
  statement(1020, [] { DataPath = ApplicationFolder(); });
  // No exchange folder in the settings: this laptop has never seen the office's disk. One whose
  // settings cannot be read has been set up long since.
  if (RemoteDrive.empty() && IniIsReadable()) {
    statement(1030, [] { ExitWShowManual(); });
    statement(1040, [] { LoadDescFiles(); });
  }
  statement(1050, [] { OpenAll(); });
  NoteExchangeDisk();

  std::string NotList;
  std::int32_t ListCount = 0;
  DomainList("Prms", "CREW", " where CREW > 0", NotList, ListCount);
  // A client without crew numbers has no crews to clock in.
  mnuClockInACrew.Enabled = ListCount != 0;
  statement(1060, [] { GetIniParms(); });
  FitGrid();
  // A run begins with the whole day, newest line first, however the last one ended.
  mnuDisplayCurrentEmpl.Checked = false;
  mnuEmplOrder.Checked = false;
  if (PrinDbOpen) statement(1070, [] { SetRecordSource(); });

  statement(1080, [] { ClientRs.MoveFirst(); });
  statement(1090,
            [] { lblClient.Caption = ClientNumb + ", " + Format(ClientRs["NAME"].Get(), ""); });
  ShowDay();
  statement(1100, [] { lblMinWage.Caption = Format(NumOrZero(ClientRs, "MIN_WAGE"), "#.00"); });
  TDBGrid1.Columns("TIME").NumberFormat = TimeFormat;
  TDBGrid1.Columns("DATE").NumberFormat = "mm/dd";
  statement(1110, [] { SetRecordSource(); });
  // A store that cannot be opened has been reported; a dozen lookups would each wait for it again.
  if (PrinDbOpen) statement(1120, [] { InitializeInputBoxes(); });
  SetUpPrinting();
  PlaceForm();
}

void OpenAll() {
  constexpr FailureTail statement{PrinModule, "nOpenAll"};
  if (!DescDbOpen) {
    statement(13010, [] {
      DescDb = OpenOfficeTables();
      DescDbOpen = true;
    });
  }
  // A power cut may have left a new set of tables half in place; they are all of one disk again
  // before the first is opened.
  statement(13011, [] { ResumeInstall(DataPath, OfficeFilePatterns()); });
  std::string clientFile;
  statement(13012, [&] {
    clientFile = FirstClientFile(ListFiles(DataPath + kPathSeparator + "Hvcl*.dbf"));
  });
  if (!clientFile.empty()) {
    ClientNumb = ClientOf(clientFile);
  } else {
    // Without a table the folder that the settings name has not served: the operator picks the
    // disk.
    RemoteDrive.clear();
    statement(13016, [] { LoadDescFiles(); });
  }

  TidyFoundFiles();
  for (const char* word : kOfficeTables) {
    bool there = true;
    statement(13020, [&] { there = Exist(OfficeTablePath(word)); });
    if (there) continue;
    statement(13024, [&] {
      MsgBox(OfficeTablePath(word) + " not found.", BoxButtons::Ok, BoxIcon::Stop);
    });
    throw ProgramEnded{};
  }
  if (!IsClientNumber(ClientNumb)) EndWithoutClient(statement, 13026);
  statement(13030,
            [] { ClientRs = DescDb.OpenRecordset("Hvcl" + ClientNumb, RecordsetType::Table); });
  OpenStore(statement);
  OpenOrdered(statement, 13092, "Prms", PrmsRs);
  OpenOrdered(statement, 13095, "Glen", GlenRs);
  OpenOrdered(statement, 13098, "Glod", GlodRs);
  OpenOrdered(statement, 13101, "Gleq", GleqRs);
}

void Form_QueryUnload() {
  constexpr FailureTail statement{ScannerModule, "Form_QueryUnload"};
  statement(1130, [] { PutIniParms(); });
  statement(1134, [] { WriteLinesStillLost(); });
}

void CloseAll() {
  Data1.Close();
  for (Recordset* table : {&ClientRs, &PrmsRs, &GlenRs, &GlodRs, &GleqRs}) table->Close();
  DescDb.Close();
  DescDbOpen = false;
  CloseStore();
}

void mnuExit_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuExit_Click"};
  statement(3110, [] { ScanMain.Unload(); });
}

}  // namespace ostrel
