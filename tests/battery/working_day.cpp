#include "battery/working_day.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "battery/disk_shim.h"
#include "frame/app_state.h"
#include "support/dbf_builder.h"
#include "support/zip_builder.h"

namespace ostrel {

namespace fs = std::filesystem;

BoxAnswer Operator::ShowMessageBox(const MessageBoxRequest& request) {
  switch (request.Buttons) {
    case BoxButtons::AbortRetryIgnore:
      Reports.push_back(request.Text);
      EXPECT_TRUE(OnReport) << request.Text;
      EXPECT_LT(Reports.size(), 100U) << "the reports do not end: " << request.Text;
      if (!OnReport || Reports.size() >= 100) return BoxAnswer::Abort;
      return OnReport(request.Text);
    case BoxButtons::YesNo:
    case BoxButtons::YesNoCancel:
      return BoxAnswer::Yes;
    case BoxButtons::OkCancel:
      return OnDiskNotReady ? OnDiskNotReady() : BoxAnswer::Cancel;
    default:
      Said += request.Text + "\n";
      if (OnSaid) OnSaid(request.Text);
      return BoxAnswer::Ok;
  }
}

std::string Operator::ShowInputBox(const std::string&, const std::string& title,
                                   const std::string& offered) {
  return title.find("Crew") == std::string::npos ? offered : "2";
}

Contents ReadContents(const std::string& folder) {
  Contents contents;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().lexically_relative(folder).string();
    if (entry.is_directory()) {
      contents[name + "/"] = "";
    } else {
      contents[name] = ReadWholeFile(entry.path());
    }
  }
  return contents;
}

void WriteContents(const std::string& folder, const Contents& contents) {
  for (const auto& entry : fs::directory_iterator(folder)) fs::remove_all(entry.path());
  for (const auto& [name, content] : contents) {
    const fs::path path = fs::path(folder) / name;
    if (name.ends_with('/')) {
      fs::create_directories(path);
    } else {
      WriteWholeFile(path, content);
    }
  }
}

namespace {

/// The office's tables of the next week: another client's name, one employee more, other codes.
std::string NextWeeksZip() {
  DbfBuilder client, people, codes;
  client.Field("NAME", 'C', 30).Field("MIN_WAGE", 'N', 6, 2).Row({"Three Rivers", "7.10"});
  people.Field("EMPL_NUMB", 'N', 6).Field("SORT_NAME", 'C', 15).Field("CREW", 'N', 3);
  for (const char* field :
       {"YTD_GROSS", "YTD_FIT", "YTD_SIT", "YTD_FICA", "YTD_MEDICR", "YTD_SDI", "YTD_NET"}) {
    people.Field(field, 'N', 10, 2);
  }
  for (const char* number : {"101", "125", "130", "140", "160"}) {
    people.Row({number, "NEXT WEEK", "2", "9.00", "1.00", "1.00", "1.00", "1.00", "1.00", "8.00"});
  }
  codes.Field("NUMB", 'N', 6).Row({"1"}).Row({"2"});
  ZipBuilder zip;
  zip.Add({"Hvcl1234.dbf", client.Bytes()}).Add({"Prms1234.dbf", people.Bytes()});
  for (const char* word : {"Glen", "Glod", "Gleq"}) {
    zip.Add({std::string(word) + "1234.dbf", codes.Bytes()});
  }
  return zip.Bytes();
}

/// What a replacement cut off leaves beside the file; no listing of the program's finds it.
bool IsHidden(const std::string& name) {
  return name.find("/.ostrel-") != std::string::npos || name.find("/~") != std::string::npos;
}

bool IsStore(const std::string& name) { return name.find("/Prin1234.mdb") != std::string::npos; }

}  // namespace

/// The commands of the day.
struct Steps {
  static void Save(WorkingDay& day, const char* employee, const char* quantity) {
    txtInput[kQuantityBox].Text = quantity;
    txtInput[kRateBox].Text = "0.5";
    txtInput[kQuanDescBox].Text = "BOX";
    if (*quantity == '0') Option1[kClockIn].Value = true;
    day.Laptop.Save(employee);
    day.Acknowledge();
  }
  static void SaveLines(WorkingDay& day) {
    day.Laptop.SetClock("11/18/04 7:00 am");
    Save(day, "140", "0");
    Save(day, "150", "0");
    day.Laptop.SetClock("11/18/04 9:00 am");
    Save(day, "140", "12");
    Save(day, "150", "8");
    txtInput[kQuantityBox].Text = "0";
  }
  static void ClockOut(WorkingDay& day) {
    day.Laptop.SetClock("11/18/04 3:30 pm");
    day.Laptop.Choose(mnuClockoutAllEmpls);
    day.Acknowledge();
  }
  static void Stop(WorkingDay& day) {
    day.Laptop.Stop();
    day.Acknowledge();
  }
};

const std::vector<DayStep> kDay = {
    {"start", [](WorkingDay& day) { day.Laptop.Start(); }, ""},
    {"save", Steps::SaveLines, ""},
    {"crew", [](WorkingDay& day) { day.Laptop.Choose(mnuClockInACrew); }, "have been clocked in"},
    {"clock out", Steps::ClockOut, ""},
    {"import", [](WorkingDay& day) { day.Laptop.Choose(mnuWriteImportFile); },
     "lines have successfully been written"},
    {"update", [](WorkingDay& day) { day.Laptop.Choose(mnuUpdateDescs); },
     "have been successfully updated"},
    {"stop", Steps::Stop, ""},
};

WorkingDay::WorkingDay() : Hands(Laptop.Desktop) {
  Laptop.Folder.Write("disk/Clnt1234.zip", NextWeeksZip());
  Laptop.Folder.Write("disk/Pck-1234.asc", "last week's lines\r\n");
  Laptop.WriteIni("UseTimeClock=True\r\nAutosetTime=True\r\nComments=Crew #2\r\n");
  morning_ = ReadContents(Laptop.Folder.Path());
  Hands.OnSaid = [this](const std::string& text) {
    for (const DayStep& step : kDay) {
      if (*step.Done != '\0' && text.find(step.Done) != std::string::npos) Acknowledge();
    }
  };
}

void WorkingDay::Kill() {
  LoadScanMain();
  ResetAppState();
}

void WorkingDay::Reset(const Contents& contents) {
  Kill();
  WriteContents(Laptop.Folder.Path(), contents);
  Hands.Reports.clear();
  Hands.Said.clear();
  acknowledged_ = {};
}

void WorkingDay::Run(const std::function<void()>& acknowledged) {
  acknowledged_ = acknowledged;
  for (std::size_t command = 0; command < kDay.size(); ++command) RunCommand(command);
  acknowledged_ = {};
}

void WorkingDay::RunCommand(std::size_t command) {
  Laptop.SetClock("11/18/04 10:42 am");
  kDay[command].Run(*this);
}

std::vector<std::string> WorkingDay::Ask(const char* question) const {
  sqlite3* store = nullptr;
  sqlite3_open_v2(Laptop.App("Prin1234.mdb").c_str(), &store, SQLITE_OPEN_READWRITE, nullptr);
  std::vector<std::string> rows;
  const auto take = [](void* to, int count, char** fields, char**) {
    std::string row;
    for (int i = 0; i < count; ++i) row.append(fields[i] ? fields[i] : "-").append(",");
    static_cast<std::vector<std::string>*>(to)->push_back(row);
    return 0;
  };
  if (sqlite3_exec(store, question, take, &rows, nullptr) != SQLITE_OK) {
    rows.emplace_back(sqlite3_errmsg(store));
  }
  sqlite3_close(store);
  return rows;
}

std::vector<std::string> WorkingDay::Lines() const {
  return Ask("SELECT * FROM OstrelPr ORDER BY rowid");
}

Contents WorkingDay::Files() const {
  Contents files = ReadContents(Laptop.Folder.Path());
  std::erase_if(files, [](const auto& file) {
    return IsStore(file.first) || file.first.ends_with("Errors.Log") || IsHidden(file.first);
  });
  return files;
}

namespace {

/// Calls back after every renaming.
class VersionWatcher : public DiskWatcher {
 public:
  VersionWatcher(const std::string& folder, std::function<void()> note)
      : DiskWatcher(folder), note_(std::move(note)) {}
  void After(const DiskCall& call) override {
    if (call.What == DiskCallKind::Rename) note_();
  }

 private:
  std::function<void()> note_;
};

}  // namespace

DayRecord::DayRecord(WorkingDay& day) {
  const auto note = [&] {
    for (const auto& [name, content] : day.Files()) {
      auto& versions = versions_[name];
      if (versions.empty() || versions.back() != content) versions.push_back(content);
    }
  };
  const auto acknowledge = [&] {
    lines_.push_back(day.Lines());
    note();
    auto& now = at_.emplace_back();
    for (const auto& [name, versions] : versions_) now[name] = versions.size() - 1;
  };
  day.Reset();
  note();
  {
    const VersionWatcher watcher(day.Laptop.Folder.Path(), note);
    day.Run(acknowledge);
  }
}

namespace {

std::vector<std::string> FieldsOf(const std::string& line) {
  std::vector<std::string> fields(1);
  for (const char c : line) {
    if (c == ',') {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

}  // namespace

// Each line acknowledged is there; each field of each line has a value that it had by then or took
// later, so that no line is half of one and half of another.
std::string DayRecord::LostLines(const WorkingDay& day, std::size_t acknowledged) const {
  const std::vector<std::string> found = day.Lines();
  const std::size_t from = acknowledged == 0 ? 0 : acknowledged - 1;
  const std::size_t least = acknowledged == 0 ? 0 : lines_[from].size();
  if (found.size() < least || found.size() > lines_.back().size()) {
    return std::to_string(found.size()) + " lines of " + std::to_string(least);
  }
  for (std::size_t row = 0; row < found.size(); ++row) {
    const std::vector<std::string> fields = FieldsOf(found[row]);
    std::vector<std::set<std::string>> allowed(fields.size());
    for (std::size_t at = from; at < lines_.size(); ++at) {
      if (row >= lines_[at].size()) continue;
      const std::vector<std::string> then = FieldsOf(lines_[at][row]);
      for (std::size_t i = 0; i < fields.size(); ++i) allowed[i].insert(then[i]);
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (!allowed[i].contains(fields[i])) return "line " + found[row];
    }
  }
  return {};
}

std::string DayRecord::WrongFiles(const WorkingDay& day, std::size_t acknowledged) const {
  const Contents files = day.Files();
  std::set<bool> generations;
  for (const auto& [name, versions] : versions_) {
    if (name.ends_with('/')) continue;
    const auto found = files.find(name);
    if (found == files.end()) return "missing " + name;
    const auto version = std::find(versions.begin(), versions.end(), found->second);
    if (version == versions.end()) return "mixture " + name + ": " + found->second;
    const auto at = static_cast<std::size_t>(version - versions.begin());
    if (acknowledged > 0) {
      const auto then = at_[acknowledged - 1].find(name);
      if (then != at_[acknowledged - 1].end() && at < then->second) return "older " + name;
    }
    if (name.ends_with(".dbf")) generations.insert(at > 0);
  }
  return generations.size() > 1 ? "tables of two weeks" : "";
}

std::string DayRecord::FaultOfStart(WorkingDay& day) {
  day.Hands.Reports.clear();
  day.Hands.OnReport = [](const std::string&) { return BoxAnswer::Abort; };
  try {
    day.RunCommand(0);
  } catch (const ProgramEnded&) {
    return "no start: " + (day.Hands.Reports.empty() ? day.Hands.Said : day.Hands.Reports[0]);
  }
  const std::string finding = day.Ask("PRAGMA integrity_check").front();
  return finding == "ok," ? "" : finding;
}

std::string DayRecord::DamageAfter(WorkingDay& day, std::size_t acknowledged) const {
  if (std::string fault = FaultOfStart(day); !fault.empty()) return fault;
  std::string lost = LostLines(day, acknowledged);
  return lost.empty() ? WrongFiles(day, acknowledged) : lost;
}

std::string DayRecord::FilesAfterRestart(WorkingDay& day) const {
  day.Kill();
  std::string fault = FaultOfStart(day);
  return fault.empty() ? WrongFiles(day, 0) : fault;
}

}  // namespace ostrel
