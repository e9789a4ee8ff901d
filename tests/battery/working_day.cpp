#include "battery/working_day.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>

#include "battery/disk_shim.h"
#include "frame/app_state.h"
#include "program/event_table.h"
#include "scan_main/scan_main.h"

namespace ostrel {

namespace fs = std::filesystem;

Contents ReadContents(const std::string& folder) {
  Contents contents;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().lexically_relative(folder).string();
    const bool isFolder = entry.is_directory();
    contents[isFolder ? name + "/" : name] = isFolder ? "" : ReadWholeFile(entry.path());
  }
  return contents;
}

std::string OneRowMore(std::string table) {
  table[4] = static_cast<char>(table[4] + 1);
  const std::size_t row = static_cast<unsigned char>(table[10]);
  return table.insert(table.size() - 1, table.substr(table.size() - 1 - row, row));
}

std::string WithYearPay(std::string table) {
  constexpr std::string_view none = "      0.00";
  for (std::size_t at = 0; (at = table.find(none, at)) != table.npos;) {
    table.replace(at, none.size(), "   1234.50");
  }
  return table;
}

ZipBuilder NextWeeksZip(const Payroll& laptop) {
  ZipBuilder zip;
  for (const char* name : kTableFiles) {
    zip.Add({name, WithYearPay(OneRowMore(ReadWholeFile(laptop.App(name))))});
  }
  return zip;
}

namespace {

void Save(WorkingDay& day, const char* employee, const char* quantity) {
  txtInput[kQuantityBox].Text = quantity;
  txtInput[kRateBox].Text = "0.5";
  txtInput[kQuanDescBox].Text = "BOX";
  if (*quantity == '0') Option1[kClockIn].Value = true;
  day.Laptop.Save(employee);
  day.Acknowledge();
}

void SaveLines(WorkingDay& day) {
  day.Laptop.SetClock("11/18/04 7:00 am");
  Save(day, "140", "0");
  Save(day, "150", "0");
  day.Laptop.SetClock("11/18/04 9:00 am");
  Save(day, "140", "12");
  Save(day, "150", "8");
  txtInput[kQuantityBox].Text = "0";
}

void ClockInACrew(WorkingDay& day) {
  day.Hands.Typed = "2";
  day.Laptop.Choose(mnuClockInACrew);
  day.Hands.Typed.clear();
}

void ClockOut(WorkingDay& day) {
  day.Laptop.SetClock("11/18/04 3:30 pm");
  day.Laptop.Choose(mnuClockoutAllEmpls);
}

}  // namespace

const std::vector<DayCommand> kDay = {
    {"start", [](WorkingDay& day) { day.Laptop.Start(); }},
    {"save", SaveLines},
    {"crew", ClockInACrew},
    {"clock out", ClockOut},
    {"import", [](WorkingDay& day) { day.Laptop.Choose(mnuWriteImportFile); }},
    {"update", [](WorkingDay& day) { day.Laptop.Choose(mnuUpdateDescs); }},
    {"stop", [](WorkingDay& day) { day.Laptop.Stop(); }},
};

WorkingDay::WorkingDay() : Hands(Laptop.Desktop, BoxAnswer::Abort) {
  Laptop.Folder.Write("disk/Clnt1234.zip", NextWeeksZip(Laptop).Bytes());
  Laptop.Folder.Write("disk/Pck-1234.asc", "last week's lines\r\n");
  Laptop.WriteIni("UseTimeClock=True\r\nAutosetTime=True\r\nComments=Crew #2\r\n");
  morning_ = ReadContents(Laptop.Folder.Path());
  Hands.OnMessage = [this](const std::string&) { Acknowledge(); };
  Reset();
}

void WorkingDay::Kill() {
  LoadScanMain();
  ResetAppState();
}

void WorkingDay::Reset(const Contents& contents) {
  Kill();
  for (const auto& entry : fs::directory_iterator(Laptop.Folder.Path())) fs::remove_all(entry);
  for (const auto& [name, content] : contents) {
    if (name.ends_with('/')) {
      fs::create_directories(Laptop.Folder.Path(name));
    } else {
      Laptop.Folder.Write(name, content);
    }
  }
  Hands.OnReport = [](const std::string& text) {
    ADD_FAILURE() << text;
    return BoxAnswer::Abort;
  };
  Hands.OnOkCancel = [] { return BoxAnswer::Cancel; };
  Hands.Reports.clear();
  Hands.Messages.clear();
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
  Acknowledge();
}

void WorkingDay::Acknowledge() const {
  if (acknowledged_) acknowledged_();
}

Contents WorkingDay::Found() const {
  Contents found = ReadContents(Laptop.Folder.Path());
  std::erase_if(found, [](const auto& file) {
    const std::string& name = file.first;
    // What a replacement cut off leaves beside the file; no listing of the program's finds it.
    const bool hidden = name.find("/.ostrel-") != name.npos || name.find("/~") != name.npos;
    return hidden || name.ends_with('/') || name.ends_with("Errors.Log") ||
           name.starts_with("app/Prin1234.mdb");
  });
  found[kLines] = Ask("SELECT * FROM OstrelPr ORDER BY rowid");
  return found;
}

DayRecord::DayRecord(WorkingDay& day) {
  const auto note = [&] {
    for (const auto& [name, content] : day.Found()) {
      auto& versions = versions_[name];
      const bool none = name == kLines && content == "error";  // before the first start
      if (!none && (versions.empty() || versions.back() != content)) versions.push_back(content);
    }
  };
  day.Reset();
  note();
  // A start may find files as they are behind each renaming and before the journal of each commit.
  DiskWatcher watcher(day.Laptop.Folder.Path());
  watcher.After = [&](const DiskCall& call) {
    if (call.What == DiskOp::Rename) note();
  };
  watcher.Before = [&](const DiskCall& call) {
    const bool begins = call.What == DiskOp::Write && call.At == 0;
    if (begins && call.Path.ends_with("-journal")) note();
    return 0;
  };
  day.Run([&] {
    note();
    auto& now = at_.emplace_back();
    for (const auto& [name, versions] : versions_) now[name] = versions.size();
    // What the program shows is on the disk, and what it says to be written is written.
    if (PrinDbOpen) {
      EXPECT_EQ(day.Ask("SELECT count(*) FROM OstrelPr"),
                std::to_string(PrinDb.OpenRecordset("OstrelPr").RowCount()));
    }
    for (const std::string& text : day.Hands.Messages) {
      EXPECT_TRUE(text.find("been written") == text.npos || now["disk/Pck-1234.asc"] == 2) << text;
    }
  });
}

std::string DayRecord::DamageAfter(WorkingDay& day, std::size_t acknowledged, bool linesToo) const {
  day.Hands.Reports.clear();
  day.Hands.OnReport = [](const std::string&) { return BoxAnswer::Abort; };
  try {
    day.RunCommand(0);
  } catch (const ProgramEnded&) {
    return "no start: " + (day.Hands.Reports.empty() ? "" : day.Hands.Reports[0]);
  }
  if (const std::string finding = day.Ask("PRAGMA integrity_check"); finding != "ok") {
    return finding;
  }
  const Contents found = day.Found();
  std::set<bool> weeks;
  for (const auto& [name, versions] : versions_) {
    if (name == kLines && !linesToo) continue;
    const auto file = found.find(name);
    if (file == found.end()) return "missing " + name;
    const auto version = std::find(versions.begin(), versions.end(), file->second);
    if (version == versions.end()) return "mixture " + name + ": " + file->second;
    const auto at = static_cast<std::size_t>(version - versions.begin());
    if (acknowledged > 0 && at + 1 < at_[acknowledged - 1].at(name)) return "older " + name;
    if (name.ends_with(".dbf")) weeks.insert(at > 0);
  }
  return weeks.size() > 1 ? "tables of two weeks" : "";
}

}  // namespace ostrel
