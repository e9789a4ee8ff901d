#include "exchange/load_descriptions.h"

#include <vector>

#include "exchange/exchange_disk.h"
#include "exchange/year_pay.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/ini_keys.h"
#include "platform/database/dbf_header.h"
#include "platform/desktop/desktop.h"
#include "platform/files/files.h"
#include "platform/files/removable_disk.h"
#include "platform/files/staged_files.h"
#include "platform/files/zip_extraction.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "store/office_tables.h"

namespace ostrel {

void mnuUpdateDescs_Click() {
  constexpr FailureTail statement{ScannerModule, "mnuUpdateDescs_Click"};
  statement(3210, [] { LoadDescFiles(); });
}

void ParsePath(const std::string& PathIn, std::string& DirOut, std::string& NameOut) {
  constexpr FailureTail statement{OrlibModule, "ParsePath"};
  statement(10, [&] {
    const std::size_t separator = PathIn.find_last_of("\\/");
    const bool hasFolder = separator != std::string::npos;
    DirOut = hasFolder ? PathIn.substr(0, separator) : "";
    NameOut = hasFolder ? PathIn.substr(separator + 1) : PathIn;
  });
}

namespace {

constexpr FailureTail statement{PrinModule, "LoadDescFiles"};

constexpr double kLowestClient = 1000, kHighestClient = 9999;

std::string NotFoundText() {
  return "No Description update file (Clnt*.zip) found in '" + RemoteDrive + "'\r";
}

/// The last words before the program ends.
[[noreturn]] void EndSaying(std::int32_t line, const std::string& text, BoxIcon icon) {
  statement(line, [&] { MsgBox(text, BoxButtons::Ok, icon); });
  throw ProgramEnded{};
}

std::string PickedPath() {
  std::string path;
  statement(12720, [&] {
    path = TheDesktop().ShowOpenFile(
        {"Open Halvane descriptions - click on 'Clnt'+your client#+'.zip'", RemovableDisk(),
         "Halvane Backup of Descriptions", "Clnt*.zip"});
  });
  return path;
}

/// The folder of the zip that the operator picks becomes the exchange folder.
void LearnExchangeFolder() {
  BoxAnswer answer = BoxAnswer::Ok;
  statement(12710, [&] {
    answer = MsgBox(
        "Insert Halvane backup disk to load employee names & other descriptions.\r"
        "Tech note: the disk drive with the descriptions will be the destination for "
        "import files.",
        BoxButtons::OkCancel, BoxIcon::None, "First time operation");
  });
  if (answer == BoxAnswer::Cancel) throw ProgramEnded{};
  const std::string path = PickedPath();
  if (path.empty()) EndSaying(12724, "No file opened. Ending", BoxIcon::Information);

  ClientNumb.clear();
  std::string folder, name;
  statement(12730, [&] { ParsePath(path, folder, name); });
  if (!NamesAClient(name)) EndSaying(12734, "No company information found.", BoxIcon::Stop);
  ClientNumb = ClientOf(name);
  RemoteDrive = folder + kPathSeparator;
  statement(12738, [] { IniWrite(kIniSection, kExchangeFolderKey, RemoteDrive); });
}

/// Names of the zips on the disk; none when there is no disk.
std::vector<std::string> ZipsOnTheDisk() {
  try {
    return ListFiles(RemoteDrive + "Clnt*.zip");
  } catch (const Failure& failure) {
    if (failure.Number == failure_number::kBadFileName) return {};
    throw;
  }
}

/// Looks for the client's zip, on other disks too as the operator wishes.
///   returns  whether there is one; ClientNumb is then that of the first
bool FindZip() {
  for (;;) {
    if (RemoteDrive.empty()) LearnExchangeFolder();
    std::vector<std::string> names;
    statement(12740, [&] { names = ZipsOnTheDisk(); });
    if (!names.empty() && NamesAClient(names.front())) {
      ClientNumb = ClientOf(names.front());
      NoteExchangeDisk();
      return true;
    }
    BoxAnswer answer = BoxAnswer::Cancel;
    statement(12750, [&] {
      answer =
          MsgBox(NotFoundText() + "Try again?\rYou will be able to look in a different disk drive.",
                 BoxButtons::OkCancel, BoxIcon::Question, "Load Descriptions");
    });
    if (answer == BoxAnswer::Cancel) return false;
    RemoteDrive.clear();
  }
}

/// The zip may be as broken as a disk makes it, so that a table is looked at before the old one goes. The
/// pay of the year goes before the table is on the laptop, so that it is not there either if the power
/// goes before the update is through.
void PrepareTable(const std::string& name, std::string& content) {
  if (SameText(name.substr(name.find('.')), DbaseExt)) CheckDbfHeader(content, name);
  TakeOutYearPay(name, content);
}

ZipExtraction WantedTables() {
  ZipExtraction wanted{RemoteDrive + "Clnt" + ClientNumb + ".zip", {}, DataPath, PrepareTable};
  for (const char* word : kOfficeTables) {
    wanted.BaseNames.push_back(word + ClientNumb);
  }
  return wanted;
}

}  // namespace

void LoadDescFiles() {
  if (!FindZip()) return;
  const double client = NumericPrefix(ClientNumb);
  if (client < kLowestClient || client > kHighestClient || !IsClientNumber(ClientNumb)) {
    statement(12760, [] {
      MsgBox(NotFoundText() + "Aborting job step.", BoxButtons::Ok, BoxIcon::Information);
    });
    return;
  }

  statement(12850, [] { ResumeInstall(DataPath, OfficeFilePatterns()); });
  std::string fault = "The tables have not been unpacked.";
  statement(12860, [&] { fault = ExtractZip(WantedTables()); });
  if (!fault.empty()) EndSaying(12870, fault, BoxIcon::Stop);
  statement(12880, [] {
    MsgBox("Descriptions have been successfully updated.", BoxButtons::Ok, BoxIcon::Information);
  });
  if (!DescDbOpen) {
    statement(12890, [] {
      DescDb = OpenTableFolder(DataPath, false, false, DbaseConnect);
      DescDbOpen = true;
    });
  }
  statement(12900, [] { DescDb.Execute(StatementThatClearsPay()); });
}

}  // namespace ostrel
