// One planted failure in every statement that a scenario reaches, in turn. Retry must end in the
// state of the clean run; Ignore must go on behind the statement.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "scan_main/scan_main.h"
#include "support/agreeing_desktop.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

/// Notes the sites that are reached, as reports name them; fails once, before or behind the statement
/// of one of them.
class Planter : public StatementProbe {
 public:
  Planter(const std::string& target, bool behind) : target_(target), behind_(behind) {
    SetStatementProbe(this);
  }
  ~Planter() override { SetStatementProbe(nullptr); }
  void Before(const StatementSite& site) override {
    Reached.insert(NameOf(site));
    if (!behind_) FailAt(site);
  }
  void After(const StatementSite& site) override {
    if (behind_) FailAt(site);
  }
  std::set<std::string> Reached;

 private:
  static std::string NameOf(const StatementSite& site) {
    return "Line# " + std::to_string(site.Line) + " in routine '" + site.Routine + "' in module '" +
           site.Module + "'";
  }
  void FailAt(const StatementSite& site) {
    if (target_.empty() || NameOf(site) != target_) return;
    target_.clear();
    throw Failure(3022, "Planted.");
  }
  std::string target_;
  bool behind_;
};

void ChooseAll(Payroll& payroll, const std::vector<MenuItem*>& items) {
  for (MenuItem* item : items) payroll.Choose(*item);
}

void MakeADay(Payroll& payroll) {
  payroll.AddLine("130 I 7:00 am|101 I 7:00 am|130 P 8:00 am 10 .5|101 O 9:00 am");
}

void EntryRow(Payroll& p, AgreeingDesktop& d) {
  p.Save("130");
  Option1[kPiecework].Press();
  for (const auto box : {kQuanDescBox, kMemoBox}) txtInput[box].Text = "";
  txtInput[kQuantityBox].Text = "100";
  d.Typed = "2";
  p.Save("130");
  p.Choose(mnuJumpQDesc);
  txtToday.Text = "11/17/04";
  const std::pair<KeyControl*, int> keys[] = {{&txtInput[kEmplBox], key::kEnter},
                                              {&txtInput[kEmplBox], key::kLeft},
                                              {&txtInput[kMemoBox], key::kRight},
                                              {&txtInput[kRateBox], 's'},
                                              {&txtToday, key::kEnter},
                                              {&txtToday, key::kLeft},
                                              {&txtComments, key::kEnter},
                                              {&txtComments, key::kLeft},
                                              {&cmdSave, key::kEscape}};
  for (const auto& each : keys) {
    KeyControl& control = *each.first;
    int pressed = each.second;
    control.SetFocus();
    const bool arrow = pressed == key::kLeft || pressed == key::kRight;
    ScanMain.Raise([&] { arrow ? control.KeyDown(pressed, 0) : control.KeyPress(pressed); });
    p.Desktop.RunPosted();
  }
  chkStdRate.Value = 0;
  p.Save("0");
  p.Choose(mnuAutosetTime);
  p.Fill(txtInput[kTimeBox], "7.3");
  p.Save("140");
  p.Choose(mnuDisplayAllDates);
}

void ClockOutWithoutClockIn(Payroll& p, AgreeingDesktop& d) {
  Option1[kClockOut].Value = true;
  d.SayNo = true;
  for (const char* typed : {"+15", "8:30 am", "rubbish"}) {
    d.Typed = typed;
    p.Save(*typed == '+' ? "130" : "140");
  }
}

void PlainLayout(Payroll& p, AgreeingDesktop&) {
  p.Choose(mnuUseTimeClock);
  txtInput[kQuantityBox].Text = "0";
  txtInput[kTimeBox].Text = "7.5";
  for (const char* rate : {"10", "Std"}) {
    txtInput[kRateBox].Text = rate;
    p.Save("130");
  }
  p.Choose(mnuWriteImportFile);
}

void RefusedCommands(Payroll& p, AgreeingDesktop& d) {
  MakeADay(p);
  p.Choose(mnuDisplayCurrentEmpl);
  txtInput[kEmplBox].Text = "130";
  d.Typed = "7:00";
  ChooseAll(p, {&mnuDisplayCurrentEmpl, &mnuDisplayCurrentEmpl, &mnuDefaultClockIn,
                &mnuDefaultClockOut, &mnuDeleteLine});
  TDBGrid1.ToggleSelected(0);
  p.Choose(mnuDeleteLine);
  p.Fill(txtInput[kEmplBox], "77");
  txtInput[kEmplBox].SelLength = 1;
  ChooseAll(p, {&mnuCopy, &mnuCut, &mnuPaste});
  txtToday.Text = "All";
  ChooseAll(p, {&mnuWriteImportFile, &mnuMinWageWatch});
  txtToday.Text = "11/16/04";
  ChooseAll(p, {&mnuMinWageWatch, &mnuExit});
}

void Crew(Payroll& p, AgreeingDesktop& d) {
  p.Choose(mnuClockInACrew);
  d.Typed = "9";
  ChooseAll(p, {&mnuClockInACrew, &mnuClockoutAllEmpls});
  p.SetClock("11/18/04 1 pm");
  p.Choose(mnuReClockInAllEmpls);
}

void Cells(Payroll& p, AgreeingDesktop&) {
  MakeADay(p);
  p.Choose(mnuEmplOrder);
  const std::pair<const char*, const char*> cells[] = {
      {"Empl#", "125"}, {"Empl#", "999"}, {"Time", "8:15"}, {"Date", "13/45"}};
  for (const auto& [column, text] : cells) {
    TDBGrid1.GoTo(1, TDBGrid1.ColumnNumber(column));
    if (!TDBGrid1.CanEdit()) continue;  // the view stayed empty
    TDBGrid1.BeginEdit(text);
    TDBGrid1.CommitEdit();
  }
  TDBGrid1.GoTo(1, TDBGrid1.ColumnNumber("Rate"));
  int key = 's';
  TDBGrid1.KeyPress(key);
}

struct Scenario {
  const char* Name;
  void (*Run)(Payroll&, AgreeingDesktop&);
};

const Scenario kScenarios[] = {
    {"StartAndStop", [](Payroll& p, AgreeingDesktop&) { p.Stop(); }},
    {"EntryRow", EntryRow},
    {"ClockOutWithoutClockIn", ClockOutWithoutClockIn},
    {"PlainLayout", PlainLayout},
    {"RefusedCommands", RefusedCommands},
    {"Crew", Crew},
    {"Cells", Cells},
    {"FilesAndReports",
     [](Payroll& p, AgreeingDesktop&) {
       MakeADay(p);
       ChooseAll(p, {&mnuEmplOrder, &mnuWriteImportFile, &mnuMinWageWatch, &mnuPrintLines,
                     &mnuEmplDailyRpt});
     }},
};

struct Outcome {
  std::string State;
  std::set<std::string> Reached;
  std::vector<std::string> Reports;
};

std::string StateOf(Payroll& payroll) {
  std::string state = payroll.Ini() + "\n" + ReadWholeFile(payroll.Disk("Pck-1234.asc")) + "\n";
  for (const TextBox& box : txtInput) state += box.Text.Get() + "|";
  state += txtToday.Text.Get() + "|" + lblLineCt.Caption.Get() + "|" + lblClient.Caption.Get() +
           "|" + (ScanMain.ActiveControl() != nullptr ? ScanMain.ActiveControl()->Name : "") + "\n";
  if (PrinDb) {
    state += payroll.Fields(
        "EMPL_NUMB SORT_NAME ETIME EVENT_TYPE QUANTITY QUAN_DESC RATE GROSS ENTERPRISE MEMO HOURS "
        "HOUR_GROSS");
  }
  // Every run has a folder of its own.
  const std::string folder = payroll.Folder.Path();
  for (auto at = state.find(folder); at != state.npos; at = state.find(folder)) {
    state.erase(at, folder.size());
  }
  return state;
}

Outcome Play(const Scenario& scenario, const std::string& target, bool behind, BoxAnswer answer) {
  Payroll payroll;
  AgreeingDesktop desktop(payroll.Desktop, answer);
  const Planter planter(target, behind);
  try {
    payroll.Start();
    scenario.Run(payroll, desktop);
  } catch (const ProgramEnded&) {
    // As when no client is found because the folder's listing was skipped.
  }
  return {StateOf(payroll), planter.Reached, desktop.Reports};
}

class Sweep : public testing::TestWithParam<Scenario> {};

TEST_P(Sweep, RetryAndIgnore) {
  // Hundreds of starts, each with its store: memory serves, since no disk is put to the test here.
  if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
  const Outcome clean = Play(GetParam(), "", false, BoxAnswer::Abort);
  ASSERT_TRUE(clean.Reports.empty()) << clean.Reports.front();
  // Every scenario starts up; the first alone sweeps that.
  std::set<std::string> swept;
  if (GetParam().Name != kScenarios[0].Name) {
    swept = Play(kScenarios[0], "", false, BoxAnswer::Abort).Reached;
  }
  for (const std::string& site : clean.Reached) {
    const bool silent =
        site.find("'DomainFunc'") != site.npos || site.find("'DomainList'") != site.npos;
    if (silent || swept.contains(site)) continue;
    SCOPED_TRACE(site);
    const Outcome retried = Play(GetParam(), site, false, BoxAnswer::Retry);
    EXPECT_EQ(retried.State, clean.State);
    EXPECT_EQ(retried.Reports.size(), 1U);

    // Ignored behind a statement that has done its work, the run is the clean one with one report.
    const Outcome ignored = Play(GetParam(), site, true, BoxAnswer::Ignore);
    EXPECT_EQ(ignored.State, clean.State);
    ASSERT_EQ(ignored.Reports.size(), 1U);
    EXPECT_TRUE(ignored.Reports[0].starts_with("Planted. (Err#3022) in " + site));

    // Ignored in its place, whatever follows is reported and comes to an end.
    const Outcome skipped = Play(GetParam(), site, false, BoxAnswer::Ignore);
    ASSERT_FALSE(skipped.Reports.empty());
    EXPECT_TRUE(skipped.Reports[0].starts_with("Planted."));
    for (const std::string& report : skipped.Reports) {
      EXPECT_EQ(report.find("Internal error"), report.npos) << report;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, Sweep, testing::ValuesIn(kScenarios),
                         [](const auto& scenario) { return scenario.param.Name; });

}  // namespace
}  // namespace ostrel
