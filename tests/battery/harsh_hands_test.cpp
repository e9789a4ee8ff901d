// What comes in by hand: any text in any box and cell, and settings that others have been at.

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <sstream>
#include <vector>

#include "battery/battery.h"
#include "battery/harm.h"
#include "entry/scan_main.h"
#include "frame/app_state.h"
#include "frame/settings.h"
#include "platform/values/text.h"
#include "support/agreeing_desktop.h"
#include "support/payroll.h"
#include "support/zip_builder.h"

namespace ostrel {
namespace {

const std::vector<std::string> kTexts = {"x'; DROP TABLE OstrelPr; --",
                                         "1; DELETE FROM OstrelPr",
                                         "1 OR 1=1",
                                         "1) or (1=1",
                                         "[OstrelPr]",
                                         "]; DROP TABLE [OstrelPr",
                                         "#11/18/04#",
                                         "#",
                                         "#2 or 1=1",
                                         "%",
                                         "%s%n%x",
                                         "\"",
                                         "'",
                                         "a,b",
                                         std::string{'1', '\0', '2'},
                                         std::string("\xE2\x80\xAE") + "130",
                                         "\xF0\x9F\x98\x80",
                                         "Łódź 中文",
                                         "-1e309",
                                         "1e308",
                                         "99999999999999999999",
                                         "0x10",
                                         "nan",
                                         "#NULL#",
                                         "\r\n[Ostrel Remote]\r\n",
                                         "12:99",
                                         "13/45/0",
                                         std::string(1 << 20, 'x'),
                                         std::string(1 << 20, '9')};

class HostileText : public testing::Test {
 protected:
  HostileText() {
    payroll_.Start();
    for (const char* line : {"130 I 7:00 am", "101 I 7:00 am", "130 P 8:00 am 10 .5"}) {
      payroll_.AddLine(line);
    }
    Data1.Refresh();
    schema_ = Ask("SELECT type, name, sql FROM sqlite_schema");
  }

  std::string Ask(const std::string& sql) const {
    return AskSqlite(payroll_.App("Prin1234.mdb"), sql);
  }

  /// Carries an action out and looks for harm to what was there before, the row `but` excepted.
  void Expect(const std::string& what, const std::function<void()>& action, Bookmark but = 0) {
    SCOPED_TRACE(what);
    const std::string old =
        " FROM OstrelPr WHERE rowid <= " + Ask("SELECT max(rowid) FROM OstrelPr") +
        " AND rowid <> " + std::to_string(but);
    const std::string before = Ask("SELECT *" + old);
    const std::string count = Ask("SELECT count(*)" + old);
    ScanMain.Raise(action);
    payroll_.Desktop.RunPosted();
    EXPECT_EQ(Ask("SELECT count(*)" + old), count);
    EXPECT_TRUE(Ask("SELECT *" + old) == before);
    EXPECT_EQ(Ask("SELECT type, name, sql FROM sqlite_schema"), schema_);
    EXPECT_EQ(
        Ask("SELECT count(*) FROM OstrelPr WHERE typeof(EMPL_NUMB + ETIME + QUANTITY + RATE + "
            "GROSS) NOT IN ('real', 'null') OR length(MEMO) > 20 OR length(QUAN_DESC) > 5"),
        "0");
    reports_ += static_cast<int>(operator_.Reports.size());
    operator_.Reports.clear();
    ++actions_;
  }

  void Boxes(const std::string& text) {
    for (int box = 0; box < kInputBoxCount; ++box) {
      const auto index = static_cast<std::size_t>(box);
      const std::string was = txtInput[index].Text;
      Expect("box " + std::to_string(box), [&] {
        payroll_.Fill(txtInput[index], text);
        payroll_.Save(box == kEmplBox ? text : "130");
      });
      if (box == kMemoBox) {
        const std::string memo = Ask("SELECT hex(MEMO) FROM OstrelPr ORDER BY rowid DESC LIMIT 1");
        EXPECT_TRUE(AsStored(memo, text)) << memo;
      }
      txtInput[index].Text = was;
    }
    for (TextBox* box : {&txtToday, &txtComments}) {
      const std::string was = box->Text;
      Expect(box->Name, [&] {
        payroll_.Fill(*box, text);
        payroll_.Save("130");
      });
      payroll_.Fill(*box, was);
    }
  }

  /// Whether the bytes are the beginning of the text, up to where a letter is cut.
  static bool AsStored(const std::string& hex, const std::string& text) {
    std::string stored;
    for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
      stored += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    }
    return stored == LeftOf(text, 20);
  }

  void Cells(const std::string& text) {
    for (int column = 0; column < TDBGrid1.ColumnCount(); ++column) {
      TDBGrid1.GoTo(0, column);
      if (!TDBGrid1.CanEdit()) continue;
      Expect(
          "column " + std::to_string(column),
          [&] {
            TDBGrid1.BeginEdit(text);
            TDBGrid1.CommitEdit();
          },
          Data1.Recordset.GetBookmark());
    }
  }

  void Commands(const std::string& text) {
    operator_.Typed = text;
    operator_.SayNo = true;
    for (MenuItem* command : {&mnuClockInACrew, &mnuClockoutAllEmpls, &mnuDefaultClockIn}) {
      Expect(command->Name, [&] { command->Click(); });
    }
    operator_.Typed.clear();
    operator_.SayNo = false;
    txtInput[kEmplBox].Text = text;
    for (int time = 0; time < 2; ++time) {
      Expect("view", [] { mnuDisplayCurrentEmpl.Click(); });
    }
  }

  Payroll payroll_;
  AgreeingDesktop operator_{payroll_.Desktop, BoxAnswer::Ignore};
  std::string schema_;
  int actions_ = 0, reports_ = 0;
};

TEST_F(HostileText, NeverAltersTheTable) {
  std::vector<std::string> texts = kTexts;
  Harm harm(kSeed);
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
  }
  const std::string lines = Ask("SELECT count(*) FROM OstrelPr");
  payroll_.Save("130");
  EXPECT_EQ(Ask("SELECT count(*) - 1 FROM OstrelPr"), lines);
  // Control: a program that puts the text between quotes itself.
  int harmed = 0;
  for (const std::string& text : kTexts) {
    const std::string copy =
        payroll_.Folder.Write("copy", payroll_.Folder.Read("app/Prin1234.mdb"));
    AskSqlite(copy, "UPDATE OstrelPr SET MEMO = '" + text + "' WHERE rowid = 1");
    if (AskSqlite(copy, "SELECT count(*) FROM OstrelPr WHERE rowid > 1") == "error") ++harmed;
  }
  EXPECT_GT(harmed, 0);
  Figure("Hostile text", std::to_string(texts.size()) + " texts, " + std::to_string(actions_) +
                             " boxes, cells and commands, " + std::to_string(reports_) +
                             " reports, no line or table altered; seed " + std::to_string(kSeed) +
                             "; control: " + std::to_string(harmed) +
                             " destroy the table where quotes are not seen to");
}

// ---- Settings

const char* const kOurSection = "Ostrel Remote";
const char* const kOurKeys[] = {"Default Clock In", "Default Clock Out", "UseTimeClock",
                                "AutosetTime",      "Comments",          "Remote Files Floppy"};

/// Whether the line is the heading of our section; only the first such section is.
bool BeginsOurs(const std::string& line) {
  return SameText(line, std::string("[") + kOurSection + "]");
}

/// Lines of the file that are not the heading of our section nor the first of a key in it.
std::string OthersLines(std::string file) {
  std::erase(file, '\0');  // UTF-16 of ASCII
  for (char& c : file) c = c == '\r' ? '\n' : c;
  std::istringstream lines(file);
  std::string others, line;
  int sections = 0;
  bool inOurs = false;
  std::set<std::string> taken;
  while (std::getline(lines, line)) {
    const std::string trimmed = Trim(line);
    const bool heading = trimmed.starts_with('[');
    if (heading) inOurs = BeginsOurs(trimmed) && ++sections == 1;
    bool ours = trimmed.empty() || (heading && inOurs);
    for (const char* key : kOurKeys) {
      const bool names = SameText(Trim(trimmed.substr(0, trimmed.find('='))), key);
      if (inOurs && names && taken.insert(key).second) ours = true;
    }
    if (!ours) others += line + "\n";
  }
  return others;
}

/// The first value of a key in the first section of ours, read line by line.
std::string FirstValue(const std::string& file, const char* key) {
  std::istringstream lines(file);
  std::string line;
  int inOurs = 0;
  while (std::getline(lines, line)) {
    line = Trim(line.substr(0, line.find('\r')));
    const std::size_t equals = line.find('=');
    if (line.starts_with('[')) {
      if (inOurs == 1) return {};
      inOurs = BeginsOurs(line) ? 1 : 0;
    } else if (inOurs == 1 && equals != std::string::npos &&
               SameText(Trim(line.substr(0, equals)), key)) {
      return Trim(line.substr(equals + 1));
    }
  }
  return {};
}

std::string RandomIni(Harm& harm, const std::string& disk) {
  const std::string endings[] = {"\r\n", "\n"};
  const std::string ending = endings[harm.Below(2)];
  const auto value = [&]() -> std::string {
    const std::string values[] = {"True", "False", "7:30 am", "rubbish", "Crew#3", "", "1", disk};
    return values[harm.Below(8)];
  };
  std::string file;
  for (std::size_t lines = harm.Below(30); lines > 0; --lines) {
    const std::string key = kOurKeys[harm.Below(5)];
    const std::string other[] = {
        "; " + key + "=no",        "[Office]",
        "[ostrel remote]",         "[Ostrel Remote]",
        "Path = c:\\a,b",          "no key",
        "Office" + key + "=1",     std::string(harm.Below(400), 'y') + "=z",
        key + "=" + value(),       key + " = " + value(),
        "  " + key + "=" + value()};
    file += other[harm.Below(std::size(other))] + ending;
  }
  if (harm.Coin()) file += "[Ostrel Remote]" + ending;
  if (harm.Coin()) file += "UserCount=1";  // and no end of the line
  return file;
}

class HostileSettings : public testing::Test {
 protected:
  HostileSettings() {
    ZipBuilder zip;
    for (const char* word : {"Hvcl", "Prms", "Glen", "Glod", "Gleq"}) {
      const std::string name = std::string(word) + "1234.dbf";
      zip.Add({name, ReadWholeFile(payroll_.App(name))});
    }
    operator_.Picked = payroll_.Folder.Write("disk/Clnt1234.zip", zip.Bytes());
    operator_.SayNo = true;  // to the manual
  }

  /// Starts and ends the program on such a file; what was not ours must be there as before.
  void StartOn(const std::string& file) {
    payroll_.Folder.Write("config/Halvane.ini", file);
    payroll_.Start();
    autoset_ = mnuAutosetTime.Checked;
    timeClock_ = mnuUseTimeClock.Checked;
    comments_ = txtComments.Text;
    payroll_.Stop();
    EXPECT_TRUE(OthersLines(payroll_.Ini()) == OthersLines(file))
        << OthersLines(payroll_.Ini()) << "instead of\n"
        << OthersLines(file);
    operator_.Reports.clear();
  }

  Payroll payroll_;
  AgreeingDesktop operator_{payroll_.Desktop, BoxAnswer::Ignore};
  bool autoset_ = false, timeClock_ = false;
  std::string comments_;
};

TEST_F(HostileSettings, GiveDefaultsOrTheFirstValue) {
  Harm harm(kSeed);
  const std::string ours = "[Ostrel Remote]\r\nRemote Files Floppy=" + payroll_.Disk() +
                           "\r\nUseTimeClock=True\r\nAutosetTime=False\r\nComments=Crew#7";
  std::string wide = "\xFF\xFE";
  for (const char c : "[Office]\r\nA=1\r\n" + ours) wide += std::string{c, '\0'};
  const std::string huge = std::string(1 << 20, 'k') + "=" + std::string(1 << 20, 'v') + "\r\n";
  const struct {
    std::string File;
    bool Read;  // else the defaults
  } cases[] = {{"", false},
               {std::string(5000, '\0'), false},
               {ours, true},
               {wide, true},
               {huge + ours + "\r\n" + huge, true},
               {ours + "\r\n[OSTREL REMOTE]\r\nComments=Crew#9\r\nAutosetTime=True\r\n", true},
               {ours + "\r\nComments=Crew#9\r\nUseTimeClock=False\r\nAutosetTime=True\r\n", true}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.File.substr(0, 60));
    StartOn(test.File);
    EXPECT_EQ(comments_ == "Crew#7" && timeClock_ && !autoset_, test.Read) << comments_;
    EXPECT_TRUE(test.Read || (comments_ == "Crew#2" && !timeClock_ && autoset_)) << comments_;
  }
  const int runs = Runs(3000, 150);
  int lost = 0;
  for (int run = 0; run < runs; ++run) {
    SCOPED_TRACE(run);
    const bool rubbish = run % 3 == 0;
    const std::string file =
        rubbish ? harm.Bytes(harm.Below(2000)) : RandomIni(harm, payroll_.Disk());
    StartOn(file);
    const std::string comments = FirstValue(file, "Comments");
    EXPECT_TRUE(rubbish || comments.empty() || comments_ == comments) << comments_ << "\n" << file;
    // Control: a writer that knows its own section alone.
    if (OthersLines(ours) != OthersLines(file)) ++lost;
  }
  EXPECT_GT(lost, 0);
  Figure("Settings", std::to_string(runs) + " random files and " +
                         std::to_string(std::size(cases)) +
                         " odd ones, every line that is not ours as before; seed " +
                         std::to_string(kSeed) + "; control: a writer of its own section alone " +
                         "loses lines of " + std::to_string(lost));
}

}  // namespace
}  // namespace ostrel
