#include "support/payroll.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "display/displayed_lines.h"
#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/files/files.h"
#include "platform/values/dates.h"
#include "platform/values/format.h"
#include "program/event_table.h"
#include "scan_main/scan_main.h"
#include "support/dbf_builder.h"

namespace ostrel {

namespace {

std::string EmployeeTable() {
  DbfBuilder table;
  table.Field("EMPL_NUMB", 'N', 6).Field("SORT_NAME", 'C', 15).Field("CREW", 'N', 3);
  for (const char* field :
       {"YTD_GROSS", "YTD_FIT", "YTD_SIT", "YTD_FICA", "YTD_MEDICR", "YTD_SDI", "YTD_NET"}) {
    table.Field(field, 'N', 10, 2);
  }
  const char* const employees[][3] = {{"140", "EVANS RHYS", "1"},
                                      {"101", "ALVAREZ MARIA", "2"},
                                      {"125", "CHEN LI", "2"},
                                      {"130", "DURAND ANNE", "2"},
                                      {"150", "", "0"}};
  for (const auto& [number, name, crew] : employees) {
    table.Row({number, name, crew, "0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00"});
  }
  return table.Bytes();
}

void Forget() {
  LoadScanMain();
  ResetAppState();
  ResetFailureReporting();
}

}  // namespace

Payroll::Payroll() {
  for (const char* folder : {"app", "disk", "config"})
    std::filesystem::create_directory(Folder.Path(folder));
  setenv("XDG_CONFIG_HOME", Folder.Path("config").c_str(), 1);
  Folder.Write("app/Hvcl1234.dbf", DbfBuilder()
                                       .Field("NAME", 'C', 30)
                                       .Field("MIN_WAGE", 'N', 6, 2)
                                       .Row({"Sample Ranch", "6.75"})
                                       .Bytes());
  Folder.Write("app/Prms1234.dbf", EmployeeTable());
  for (const char* word : {"Glen", "Glod", "Gleq"}) {
    Folder.Write("app/" + std::string(word) + "1234.dbf",
                 DbfBuilder().Field("NUMB", 'N', 6).Row({"1"}).Bytes());
  }
  SetExecutable(Folder.Path("app"), "OstrelPayroll");
  SetClock("11/18/04 10:42 am");
  WriteIni("UseTimeClock=True\r\n");
}

Payroll::~Payroll() {
  Forget();
  SetExecutable({}, {});
}

void Payroll::WriteIni(std::string_view keys) {
  Folder.Write("config/Halvane.ini",
               "[Ostrel Remote]\r\nRemote Files Floppy=" + Disk() + "\r\n" + std::string(keys));
}

void Payroll::Start(bool timeClock) {
  if (!timeClock) WriteIni("UseTimeClock=False\r\n");
  Forget();
  ScanMain.Raise(ScanMain.Load);
  ScanMain.Show();
}

void Payroll::Stop() {
  ScanMain.Unload();
  Forget();
}

void Payroll::SetClock(const char* dateAndTime) { Desktop.SetTime(MomentFrom(dateAndTime)); }

void Payroll::Fill(TextBox& box, std::string_view text) {
  if (box.CanTakeFocus()) box.SetFocus();
  box.Text = std::string(text);
}

void Payroll::FillBoxes(const std::string& texts) {
  std::istringstream all(texts);
  for (TextBox& box : txtInput) {
    std::string text;
    std::getline(all, text, '|');
    box.Text = text;
  }
}

void Payroll::Choose(MenuItem& item) {
  ASSERT_TRUE(item.Visible && item.Enabled) << item.Name;
  ScanMain.Raise(item.Click);
  Desktop.RunPosted();
}

void Payroll::Save(std::string_view employee) {
  Fill(txtInput[kEmplBox], employee);
  cmdSave.Press();
  Desktop.RunPosted();
}

void Payroll::AddLine(const std::string& lines) {
  std::istringstream all(lines);
  PrinDb.ShareCommits();
  for (std::string line; std::getline(all, line, '|');) {
    std::istringstream words(line);
    std::string empl, kind, time, half;
    words >> empl >> kind >> time >> half;
    LinesRs.AddNew();
    LinesRs["EMPL_NUMB"] = empl;
    LinesRs["EVENT_TYPE"] = kind;
    LinesRs["ETIME"] = txtToday.Text.Get() + " " + time + " " + half;
    double quantity = 0, rate = 0;
    words >> quantity >> rate;
    LinesRs["QUANTITY"] = quantity;
    LinesRs["RATE"] = rate;
    LinesRs.Update();
  }
  PrinDb.CommitShared();
  SetRecordSource();
}

namespace {

std::string LineText(const Recordset& line) {
  const auto text = [&](const char* field) { return line[field].Get().ToText(); };
  std::string all = text("EMPL_NUMB") + " " + text("EVENT_TYPE") + " " +
                    Format(line["ETIME"].Get(), "hh:mm am/pm");
  if (line["QUANTITY"].Get().NumberOrZero() == 0) return all;
  return all + " " + text("QUANTITY") + "x" + text("RATE") + "=" + text("GROSS");
}

template <class Render>
std::string AllLines(Render render) {
  std::string all;
  for (Recordset lines = PrinDb.OpenRecordset("OstrelPr"); !lines.Eof(); lines.MoveNext()) {
    if (!all.empty()) all += '|';
    all += render(lines);
  }
  return all;
}

}  // namespace

std::string Payroll::Lines() const { return AllLines(LineText); }

std::string Payroll::Fields(std::string_view names) const {
  return AllLines([&](const Recordset& line) {
    std::istringstream words{std::string(names)};
    std::string text, name;
    while (words >> name) {
      const Value value = line[name];
      if (!text.empty()) text += ',';
      text += value.IsNull() ? "-" : value.ToText();
    }
    return text;
  });
}

}  // namespace ostrel
