// What comes in by hand: any text in any box and cell, and settings that others have been at.

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "battery/battery.h"
#include "battery/working_day.h"
#include "platform/database/recordset.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"
#include "support/ask_sqlite.h"

namespace ostrel {
namespace {

constexpr const char* kTexts =
    "x'; DROP TABLE OstrelPr; --|1; DELETE FROM OstrelPr|1 OR 1=1|1) or (1=1|]; DROP TABLE "
    "[OstrelPr|"
    "#11/18/04#|#|#2 or 1=1|%s%n%x|\"|'|a,b|\xE2\x80\xAE 130|\xF0\x9F\x98\x80|Łódź "
    "中文|-1e309|1e308|"
    "99999999999999999999|0x10|nan|#NULL#|\r\n[Ostrel Remote]\r\n|12:99|13/45/0";

class HostileText : public testing::Test {
 protected:
  HostileText() {
    payroll_.Start();
    payroll_.AddLine("130 I 7:00 am|101 I 7:00 am|130 P 8:00 am 10 .5");
  }

  std::string Ask(const std::string& sql) const {
    return AskSqlite(payroll_.App("Prin1234.mdb"), sql);
  }

  /// Carries an action out and looks for harm to what was there before, the row `but` excepted.
  void Expect(const std::string& what, const std::function<void()>& action, Bookmark but = 0) {
    SCOPED_TRACE(what);
    const std::string old =
        "SELECT type, name, sql, 1 FROM sqlite_schema; SELECT * FROM OstrelPr "
        "WHERE rowid <> " +
        std::to_string(but) + " AND rowid <= " + Ask("SELECT max(rowid) FROM OstrelPr");
    const std::string before = Ask(old);
    ScanMain.Raise(action);
    payroll_.Desktop.RunPosted();
    EXPECT_TRUE(Ask(old) == before);
    EXPECT_EQ(
        Ask("SELECT count(*) FROM OstrelPr WHERE typeof(EMPL_NUMB + ETIME + QUANTITY + RATE + "
            "GROSS) NOT IN ('real', 'null') OR length(MEMO) > 20 OR length(QUAN_DESC) > 5"),
        "0");
    row_["reports"] += std::ssize(operator_.Reports);
    operator_.Reports.clear();
    ++row_["boxes, cells and commands"];
  }

  void Boxes(const std::string& text) {
    std::vector<TextBox*> boxes = {&txtToday, &txtComments};
    for (TextBox& box : txtInput) boxes.push_back(&box);
    for (std::size_t index = 0; index < boxes.size(); ++index) {
      TextBox& box = *boxes[index];
      const std::string was = box.Text;
      Expect("box " + std::to_string(index), [&] {
        payroll_.Fill(box, text);
        payroll_.Save(&box == &txtInput[kEmplBox] ? text : "130");
      });
      if (&box == &txtInput[kMemoBox]) {
        const std::string memo = Ask("SELECT MEMO FROM OstrelPr ORDER BY rowid DESC LIMIT 1");
        EXPECT_EQ(memo, LeftOf(text, 20).c_str());
      }
      payroll_.Fill(box, was);
    }
  }

  void Cells(const std::string& text) {
    for (int column = 0; column < TDBGrid1.ColumnCount(); ++column) {
      TDBGrid1.GoTo(0, column);
      if (!TDBGrid1.CanEdit()) continue;
      const auto edit = [&] {
        TDBGrid1.BeginEdit(text);
        TDBGrid1.CommitEdit();
      };
      Expect("column " + std::to_string(column), edit, Data1.Recordset.GetBookmark());
    }
  }

  void Commands(const std::string& text) {
    operator_.Typed = text;
    operator_.SayNo = true;
    txtInput[kEmplBox].Text = text;
    for (MenuItem* command : {&mnuClockInACrew, &mnuClockoutAllEmpls, &mnuDefaultClockIn,
                              &mnuDisplayCurrentEmpl, &mnuDisplayCurrentEmpl}) {
      Expect(command->Name, [&] { command->Click(); });
    }
    operator_.Typed.clear();
    operator_.SayNo = false;
  }

  Payroll payroll_;
  AgreeingDesktop operator_{payroll_.Desktop, BoxAnswer::Ignore};
  Row row_{"Hostile text", "texts destroy the table where quotes are not seen to"};
};

TEST_F(HostileText, NeverAltersTheTable) {
  std::vector<std::string> texts = Split(kTexts);
  for (const char c : {'x', '9'}) texts.emplace_back(1 << 20, c);
  texts.push_back({'1', '\0', '2'});
  Harm harm;
  while (texts.size() < static_cast<std::size_t>(Runs(400, 32))) {
    texts.push_back(harm.Letters(1 + harm.Below(60)));
  }
  mnuAutosetTime.Checked = false;
  for (const std::string& text : texts) {
    SCOPED_TRACE(text.substr(0, 60));
    Boxes(text);
    Cells(text);
    Commands(text);
    Ask("DELETE FROM OstrelPr WHERE rowid > 3");
    Data1.Refresh();
    ++row_["texts"];
  }
  const std::string lines = Ask("SELECT count(*) FROM OstrelPr");
  payroll_.Save("130");
  EXPECT_EQ(Ask("SELECT count(*) - 1 FROM OstrelPr"), lines);
  // Control: a program that puts the text between quotes itself.
  const std::string store = payroll_.Folder.Read("app/Prin1234.mdb");
  for (const std::string& text : Split(kTexts)) {
    const std::string copy = payroll_.Folder.Write("copy", store);
    AskSqlite(copy, "UPDATE OstrelPr SET MEMO = '" + text + "' WHERE rowid = 1");
    if (AskSqlite(copy, "SELECT count(*) FROM OstrelPr WHERE rowid > 1") == "error") ++row_.Control;
  }
}

// ---- Settings

class HostileSettings : public testing::Test {
 protected:
  HostileSettings() {
    operator_.Picked = payroll_.Folder.Write("disk/Clnt1234.zip", NextWeeksZip(payroll_).Bytes());
    operator_.SayNo = true;  // to the manual
  }

  /// Starts and ends the program on such a file; `others`, which is not ours, must be there as before.
  ///   returns  the settings "comments|time clock|autoset"
  std::string StartOn(const std::string& file, const std::string& others) {
    payroll_.Folder.Write("config/Halvane.ini", file);
    payroll_.Start();
    const std::string settings = txtComments.Text.Get() + (mnuUseTimeClock.Checked ? "|1" : "|0") +
                                 (mnuAutosetTime.Checked ? "|1" : "|0");
    payroll_.Stop();
    EXPECT_NE(payroll_.Ini().find(others), std::string::npos);
    operator_.Reports.clear();
    return settings;
  }

  Payroll payroll_;
  AgreeingDesktop operator_{payroll_.Desktop, BoxAnswer::Ignore};
};

TEST_F(HostileSettings, GiveDefaultsOrTheFirstValue) {
  const std::string ours = "[Ostrel Remote]\r\nRemote Files Floppy=" + payroll_.Disk() +
                           "\r\nUseTimeClock=True\r\nAutosetTime=False\r\nComments=Crew#7";
  std::string wide;
  for (const char c : "[Office]\r\nA=1\r\n" + ours) wide += std::string{c, '\0'};
  const std::string huge = std::string(1 << 20, 'k') + "=" + std::string(1 << 20, 'v') + "\r\n";
  const std::string again = "\r\n[OSTREL REMOTE]\r\nComments=Crew#9\r\nAutosetTime=True\r\n";
  const std::string twice = "\r\nComments=Crew#9\r\nUseTimeClock=False\r\nAutosetTime=True\r\n";
  const std::string nothing(5000, '\0');
  const char* const defaults = "Crew#2|0|1";
  const char* const read = "Crew#7|1|0";
  const struct {
    std::string File, Others, Settings;
  } cases[] = {{"", "", defaults},
               {nothing, nothing, defaults},
               {ours, "", read},
               {"\xFF\xFE" + wide, "\xFF\xFE" + wide.substr(0, 2 * 15), read},
               {huge + ours + "\r\n" + huge, "\r\n" + huge, read},
               {huge + ours, huge, read},
               {ours + again, again, read},
               {ours + twice, twice, read}};
  Row row("Settings", "files of which a writer of its own section alone loses lines");
  for (const auto& [file, others, settings] : cases) {
    ++row["odd files"];
    SCOPED_TRACE(file.substr(0, 60));
    EXPECT_EQ(StartOn(file, others), settings);
    if (ours.find(others) == ours.npos) ++row.Control;
  }
}

}  // namespace
}  // namespace ostrel
