// One planted failure in every statement that a scenario reaches, in turn. Retry must end in the
// state of the clean run; Ignore must go on behind the statement.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "hours/employee_hours.h"
#include "support/agreeing_desktop.h"
#include "support/payroll.h"

namespace ostrel {
namespace {

constexpr std::int32_t kPlanted = 3022;

struct Site {
  std::string Module, Routine;
  std::int32_t Line = 0;
  auto operator<=>(const Site&) const = default;
};

/// Notes the sites that are reached; fails once, before or behind the statement of one of them.
class Planter : public StatementProbe {
 public:
  explicit Planter(std::optional<Site> target = {}, bool behind = false)
      : target_(std::move(target)), behind_(behind) {
    SetStatementProbe(this);
  }
  ~Planter() override { SetStatementProbe(nullptr); }
  void Before(const StatementSite& site) override {
    Reached.insert({site.Module, site.Routine, site.Line});
    if (!behind_) FailAt(site);
  }
  void After(const StatementSite& site) override {
    if (behind_) FailAt(site);
  }
  std::set<Site> Reached;
  bool Done = false;

 private:
  void FailAt(const StatementSite& site) {
    if (Done || !target_ || Site{site.Module, site.Routine, site.Line} != *target_) return;
    Done = true;
    throw Failure(kPlanted, "Planted.");
  }
  std::optional<Site> target_;
  bool behind_;
};

struct Scenario {
  const char* Name;
  std::function<void(Payroll&, AgreeingDesktop&)> Run;
};

void MakeADay(Payroll& payroll) {
  for (const char* line :
       {"130 I 7:00 am", "101 I 7:00 am", "130 P 8:00 am 10 .5", "101 O 9:00 am"})
    payroll.AddLine(line);
}

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.Name; }

const Scenario kScenarios[] = {
    {"start and stop", [](Payroll& p, AgreeingDesktop&) { p.Stop(); }},
    {"entry row",
     [](Payroll& p, AgreeingDesktop& d) {
       p.Keys("130\r<>\r");
       Option1[kPiecework].Press();
       txtInput[kQuanDescBox].Text = "";
       d.Typed = "2";
       p.Keys("130\r100\r\r");
       p.Choose(mnuJumpQDesc);
       p.Keys("\b>s\x1b");
       chkStdRate.Value = 0;
       p.Fill(txtInput[kMemoBox], "X");
       p.Keys("\t");
       p.Fill(txtInput[kEmplBox], "0");
       cmdSave.SetFocus();
       p.Keys("\x1b");
       cmdSave.Press();
       p.Choose(mnuAutosetTime);
       p.Fill(txtInput[kTimeBox], "7.3");
       p.Save("140");
       txtToday.SetFocus();
       p.Keys("11/17/04\r");
       txtToday.SetFocus();
       p.Keys("<");
       txtComments.SetFocus();
       p.Keys("#1\r");
       txtComments.SetFocus();
       p.Keys("<");
       p.Choose(mnuDisplayAllDates);
     }},
    {"clock-out without clock-in",
     [](Payroll& p, AgreeingDesktop& d) {
       Option1[kClockOut].Value = true;
       d.SayNo = true;
       for (const char* typed : {"+15", "8:30 am", "rubbish"}) {
         d.Typed = typed;
         p.Save(std::string(typed) == "+15" ? "130" : "140");
       }
     }},
    {"plain layout",
     [](Payroll& p, AgreeingDesktop&) {
       p.Choose(mnuUseTimeClock);
       txtInput[kQuantityBox].Text = "0";
       txtInput[kTimeBox].Text = "7.5";
       txtInput[kRateBox].Text = "10";
       p.Save("130");
       txtInput[kRateBox].Text = "Std";
       p.Save("130");
       p.Choose(mnuWriteImportFile);
     }},
    {"hours and import file",
     [](Payroll& p, AgreeingDesktop&) {
       MakeADay(p);
       p.Choose(mnuEmplOrder);
       p.Choose(mnuWriteImportFile);
       p.Choose(mnuMinWageWatch);
     }},
    {"views and commands that refuse",
     [](Payroll& p, AgreeingDesktop& d) {
       MakeADay(p);
       p.Choose(mnuDisplayCurrentEmpl);
       txtInput[kEmplBox].Text = "130";
       p.Choose(mnuDisplayCurrentEmpl);
       p.Choose(mnuDisplayCurrentEmpl);
       d.Typed = "7:00";
       p.Choose(mnuDefaultClockIn);
       p.Choose(mnuDefaultClockOut);
       p.Choose(mnuDeleteLine);
       TDBGrid1.ToggleSelected(0);
       p.Choose(mnuDeleteLine);
       p.Fill(txtInput[kEmplBox], "77");
       txtInput[kEmplBox].SelLength = 1;
       p.Choose(mnuCopy);
       p.Choose(mnuCut);
       p.Choose(mnuPaste);
       txtToday.Text = "All";
       p.Choose(mnuWriteImportFile);
       p.Choose(mnuMinWageWatch);
       txtToday.Text = "11/16/04";
       p.Choose(mnuMinWageWatch);
       p.Choose(mnuExit);
     }},
    {"crew",
     [](Payroll& p, AgreeingDesktop& d) {
       p.Choose(mnuClockInACrew);
       d.Typed = "9";
       p.Choose(mnuClockInACrew);
       p.Choose(mnuClockoutAllEmpls);
       p.SetClock("11/18/04 1 pm");
       p.Choose(mnuReClockInAllEmpls);
     }},
    {"cells",
     [](Payroll& p, AgreeingDesktop&) {
       MakeADay(p);
       p.Choose(mnuEmplOrder);
       const struct {
         const char* column;
         const char* text;
       } cells[] = {{"Empl#", "125"}, {"Empl#", "999"}, {"Time", "8:15"}, {"Date", "13/45"}};
       for (const auto& cell : cells) {
         TDBGrid1.GoTo(1, TDBGrid1.ColumnNumber(cell.column));
         if (!TDBGrid1.CanEdit()) continue;  // the view stayed empty
         TDBGrid1.BeginEdit(cell.text);
         TDBGrid1.CommitEdit();
       }
       TDBGrid1.GoTo(1, TDBGrid1.ColumnNumber("Rate"));
       int key = 's';
       TDBGrid1.KeyPress(key);
     }},
    {"reports",
     [](Payroll& p, AgreeingDesktop&) {
       MakeADay(p);
       p.Choose(mnuPrintLines);
       p.Choose(mnuEmplDailyRpt);
     }},
};

struct Outcome {
  std::string State;
  std::set<Site> Reached;
  std::vector<std::string> Reports;
  bool Planted = false;
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
  for (std::size_t at = state.find(payroll.Folder.Path()); at != std::string::npos;
       at = state.find(payroll.Folder.Path())) {
    state.erase(at, payroll.Folder.Path().size());
  }
  return state;
}

Outcome Play(const Scenario& scenario, const std::optional<Site>& target, bool behind,
             BoxAnswer answer) {
  Payroll payroll;
  AgreeingDesktop desktop(payroll.Desktop, answer);
  Planter planter(target, behind);
  try {
    payroll.Start();
    scenario.Run(payroll, desktop);
  } catch (const ProgramEnded&) {
    // As when no client is found because the folder's listing was skipped.
  }
  return {StateOf(payroll), planter.Reached, desktop.Reports, planter.Done};
}

bool IsSilent(const Site& site) {
  return site.Routine == "DomainFunc" || site.Routine == "DomainList";
}

class Sweep : public testing::TestWithParam<Scenario> {};

TEST_P(Sweep, RetryAndIgnore) {
  // Hundreds of starts, each with its store: memory serves, since no disk is put to the test here.
  if (std::filesystem::is_directory("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
  const Outcome clean = Play(GetParam(), {}, false, BoxAnswer::Abort);
  ASSERT_TRUE(clean.Reports.empty()) << clean.Reports.front();
  // Every scenario starts up; the first alone sweeps that.
  std::set<Site> swept;
  if (GetParam().Name != kScenarios[0].Name) {
    swept = Play(kScenarios[0], {}, false, BoxAnswer::Abort).Reached;
  }
  for (const Site& site : clean.Reached) {
    if (IsSilent(site) || swept.contains(site)) continue;
    SCOPED_TRACE(site.Routine + " " + std::to_string(site.Line));
    const Outcome retried = Play(GetParam(), site, false, BoxAnswer::Retry);
    EXPECT_EQ(retried.State, clean.State);
    EXPECT_EQ(retried.Reports.size(), 1U);

    // Ignored behind a statement that has done its work, the run is the clean one with one report.
    const Outcome ignored = Play(GetParam(), site, true, BoxAnswer::Ignore);
    EXPECT_EQ(ignored.State, clean.State);
    ASSERT_EQ(ignored.Reports.size(), 1U);
    EXPECT_TRUE(ignored.Reports[0].starts_with("Planted. (Err#3022) in Line# " +
                                               std::to_string(site.Line) + " in routine '" +
                                               site.Routine + "' in module '" + site.Module + "'"));

    // Ignored in its place, whatever follows is reported and comes to an end.
    const Outcome skipped = Play(GetParam(), site, false, BoxAnswer::Ignore);
    ASSERT_FALSE(skipped.Reports.empty());
    EXPECT_TRUE(skipped.Reports[0].starts_with("Planted."));
    for (const std::string& report : skipped.Reports) {
      EXPECT_EQ(report.find("Internal error"), std::string::npos) << report;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, Sweep, testing::ValuesIn(kScenarios), [](const auto& scenario) {
  std::string name = scenario.param.Name;
  std::erase_if(name, [](char c) { return c == ' ' || c == '-'; });
  return name;
});

}  // namespace
}  // namespace ostrel
