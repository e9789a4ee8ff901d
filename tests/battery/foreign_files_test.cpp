// Files that are not what they should be: the store, the office's tables, the office's zip.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "battery/battery.h"
#include "battery/working_day.h"
#include "frame/app_state.h"
#include "platform/database/dbf_file.h"
#include "platform/files/files.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"
#include "scan_main/scan_main.h"
#include "support/ask_sqlite.h"
#include "support/dbf_builder.h"
#include "support/failure_number.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPage = 4096;

/// Files of others with this extension: those below the folder that OSTREL_CORPUS names, else the
/// zips of several packers and the tables in them.
std::vector<fs::path> Corpus(const char* extension) {
  const char* asked = std::getenv("OSTREL_CORPUS");
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(
           asked != nullptr ? asked : fs::path(__FILE__).parent_path() / "../zips")) {
    if (SameText(entry.path().extension().string(), extension)) files.push_back(entry);
  }
  std::sort(files.begin(), files.end());
  return files;
}

// ---- The store

class ForeignStore : public testing::Test {
 protected:
  ForeignStore() {
    payroll_.Start();
    for (int line = 0; line < 600;) {
      txtToday.Text = line % 3 == 0 ? "11/17/04" : "11/18/04";
      std::string lines;
      do {
        lines += std::to_string(101 + line % 60) + " P " + std::to_string(1 + line % 12) +
                 ":00 am " + std::to_string(line % 50) + " .27|";
      } while (++line % 200 != 0);
      payroll_.AddLine(lines);
    }
    payroll_.Stop();
    good_ = ReadWholeFile(path_);
    truth_ = Answers();
  }

  static std::string RowText(const Recordset& row, int fields) {
    std::string text = std::to_string(row.GetBookmark());
    for (int field = 0; field < fields; ++field) {
      const Value value = row[field].Get();
      text += "," + (value.IsText() ? value.Characters() : std::to_string(value.NumberOrZero()));
    }
    return text;
  }

  /// The lines, and behind them what the program says of each day in order of time.
  std::vector<std::string> Answers() const {
    std::vector<std::string> answers;
    const Database store = OpenDatabase(path_);
    for (Recordset rows = store.OpenRecordset("OstrelPr"); !rows.Eof(); rows.MoveNext()) {
      answers.push_back(RowText(rows, 15));
    }
    std::string days;
    for (const char* day : {"11/17/04", "11/18/04"}) {
      const std::string where = std::string(" [OstrelPr] where INT(ETIME) = #") + day + "#";
      Recordset rows = store.OpenRecordset("Select * from" + where + " Order by ETIME");
      for (; !rows.Eof(); rows.MoveNext()) days += RowText(rows, 0) + " ";
      days += std::to_string(
          store.OpenRecordset("Select Sum(QUANTITY) as X from" + where)[0].Get().NumberOrZero());
    }
    answers.push_back(days);
    return answers;
  }

  /// Whether the store is refused, and left as it was; else the answers that it gives.
  bool Refused(const std::string& bytes, std::vector<std::string>& answers) {
    WriteWholeFile(path_, bytes);
    const int number = NumberOf([&] { answers = Answers(); });
    if (number == 0) return false;
    EXPECT_TRUE(number == 3343 || number == 3049) << number;
    EXPECT_TRUE(ReadWholeFile(path_) == bytes);
    EXPECT_EQ(ReadWholeFile(path_ + "-journal"), "");
    return true;
  }

  Payroll payroll_;
  std::string path_ = payroll_.App("Prin1234.mdb");
  std::string good_;
  std::vector<std::string> truth_;
};

TEST_F(ForeignStore, IsRefusedOrHarmless) {
  Row row("Damaged store", "told of a wrong day by SQLite without a check");
  std::vector<std::string> answers;
  for (std::size_t size = 0; size < good_.size(); size += kPage) {
    EXPECT_TRUE(Refused(good_.substr(0, size), answers)) << size;
    ++row["cuts refused"];
  }
  const std::string dayRows = "SELECT rowid FROM OstrelPr WHERE ETIME >= 38309 ORDER BY ETIME";
  WriteWholeFile(path_, good_);
  const std::string day = AskSqlite(path_, dayRows);
  Harm harm;
  for (int run = 0; run < Runs(3000, 300); ++run) {
    SCOPED_TRACE(run);
    std::string bytes = good_;
    harm.FlipBit(bytes);
    if (Refused(bytes, answers)) {
      ++row["bits refused"];
      const std::string rows = AskSqlite(path_, dayRows);
      if (rows != "error" && rows != day) ++row.Control;
      continue;
    }
    // One bit of one value may have changed, as nobody can tell; no line has gone or come, and the
    // day still finds each.
    ASSERT_EQ(answers.size(), truth_.size());
    int changed = 0;
    for (std::size_t line = 0; line + 1 < truth_.size(); ++line) {
      if (answers[line] != truth_[line]) ++changed;
    }
    EXPECT_LE(changed, 1);
    EXPECT_TRUE(changed == 1 || answers.back() == truth_.back()) << answers.back();
    ++row[changed == 0 ? "bits harmless" : "bits of one value"];
  }
}

TEST_F(ForeignStore, UnderOurNameIsReportedAtTheStart) {
  const auto database = [&](const char* sql) {
    EXPECT_EQ(AskSqlite(payroll_.Folder.Write("other", ""), sql), "");
    return payroll_.Folder.Read("other");
  };
  const std::string files[] = {
      "",
      "130,I,7:00\r\n",
      std::string(100'000, '\0'),
      std::string("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) + Harm().Bytes(65'536),
      database("CREATE TABLE Track(Title TEXT)"),
      database("PRAGMA user_version = 1; CREATE TABLE OstrelPr(EMPL_NUMB FLOAT, ETIME REAL)"),
      good_.substr(0, good_.size() / 2)};
  Row row("Foreign store", "taken and altered by SQLite alone");
  for (const std::string& file : files) {
    SCOPED_TRACE(file.substr(0, 20));
    WriteWholeFile(path_, file);
    AgreeingDesktop desktop(payroll_.Desktop, BoxAnswer::Abort);
    EXPECT_THROW(payroll_.Start(), ProgramEnded);
    EXPECT_EQ(desktop.Reports.size(), 1U);
    EXPECT_TRUE(ReadWholeFile(path_) == file);
    payroll_.Stop();
    ++row["kinds refused at the start"];
    if (AskSqlite(path_, "CREATE TABLE Lines(Number)") != "error") ++row.Control;
  }
}

// ---- The tables

constexpr int kTableRows = 40;
constexpr std::size_t kWidths[] = {6, 3, 10, 15};
constexpr std::size_t kFields = std::size(kWidths), kRecord = 1 + 6 + 3 + 10 + 15;
constexpr std::size_t kHeader = 33 + kFields * 32;

std::string GoodTable() {
  DbfBuilder table;
  table.Field("EMPL_NUMB", 'N', 6).Field("CREW", 'N', 3).Field("YTD_GROSS", 'N', 10, 2);
  table.Field("SORT_NAME", 'C', 15);
  for (int row = 0; row < kTableRows; ++row) {
    table.Row({std::to_string(101 + row * 37), std::to_string(1 + row % 12),
               std::to_string(row * 1234) + ".50", "NAME OF " + std::to_string(row)});
  }
  return table.Bytes();
}

using Records = std::vector<std::string>;

Records RecordsOf(const std::string& file, std::size_t header, std::size_t size,
                  std::size_t count) {
  Records records;
  for (std::size_t at = header; size > 0 && count > 0 && at + size <= file.size(); at += size) {
    records.push_back(file.substr(at, size));
    --count;
  }
  return records;
}

/// By a reader that believes whatever the header says.
Records Believed(const std::string& file) {
  const auto number = [&](std::size_t at, std::size_t bytes) {
    std::size_t sum = 0;
    while (bytes-- > 0) sum = sum << 8 | static_cast<unsigned char>(file[at + bytes]);
    return sum;
  };
  if (file.size() < 12) return {};
  return RecordsOf(file, number(8, 2), number(10, 2), number(4, 4));
}

/// The cells of the live records of a good header, read by hand.
std::vector<std::string> CellsOf(const std::string& file) {
  constexpr std::string_view blanks("\0\t ", 3);
  std::vector<std::string> cells;
  for (const std::string& record : RecordsOf(file, kHeader, kRecord, file.size())) {
    if (record[0] == '*') continue;
    std::size_t from = 1;
    for (const std::size_t width : kWidths) {
      std::string cell = record.substr(from, width);
      if (width != kWidths[kFields - 1]) cell.erase(0, cell.find_first_not_of(blanks));
      cell.erase(cell.find_last_not_of(blanks) + 1);
      cells.push_back(cell);
      from += width;
    }
  }
  return cells;
}

enum class Reading { Right, Refused, Wrong };

/// A cell of the table is what stands there, or the empty one where that is no number.
Reading Read(const std::string& file, const std::vector<std::string>& truth) {
  try {
    const DbfTable table = ParseDbf(file, "t.dbf");
    const bool everyField = truth.empty() || table.Fields().size() >= kFields;
    if (table.RowCount() * kFields != truth.size() || !everyField) return Reading::Wrong;
    for (std::size_t cell = 0; cell < truth.size(); ++cell) {
      const Value value = table.At(cell / kFields, cell % kFields);
      if (value.IsNull() || value.IsText()) continue;  // letters may be another code page's
      char* end = nullptr;
      const double number = std::strtod(truth[cell].c_str(), &end);
      const bool whole = !truth[cell].empty() && end == truth[cell].c_str() + truth[cell].size();
      if (!whole || value.NumberOrZero() != number) return Reading::Wrong;
    }
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, 3274);
    EXPECT_NE(failure.Text.find("t.dbf"), std::string::npos);
    return Reading::Refused;
  }
  return Reading::Right;
}

TEST(DamagedTables, AreRightOrRefused) {
  Row row("Damaged tables", "refused of which a reader that believes the header gives rows");
  const std::string good = GoodTable();
  const std::vector<std::string> truth = CellsOf(good);
  const Records records = Believed(good);
  ASSERT_EQ(Read(good, truth), Reading::Right);
  ASSERT_EQ(records.size(), std::size_t{kTableRows});
  const auto harmed = [&](const std::string& what, const std::string& file,
                          const std::vector<std::string>& expected) {
    const Reading reading = Read(file, expected);
    EXPECT_TRUE(reading != Reading::Wrong) << what;
    ++row[reading == Reading::Refused ? "refused" : "right"];
    if (reading != Reading::Refused) return;
    const Records believed = Believed(file);
    const bool invents = !std::all_of(believed.begin(), believed.end(), [&](const auto& record) {
      return std::find(records.begin(), records.end(), record) != records.end();
    });
    if (invents) ++row["refused of which it invents rows"];
    if (!invents && believed.size() < records.size()) ++row["refused of which it loses rows"];
    if (invents || believed.size() < records.size()) ++row.Control;
  };
  for (std::size_t bit = 0; bit < kHeader * 8; ++bit) {
    std::string file = good;
    file[bit / 8] = static_cast<char>(file[bit / 8] ^ 1 << bit % 8);
    harmed("bit " + std::to_string(bit), file, truth);
  }
  for (std::size_t size = 0; size < good.size(); ++size) {
    std::string whole = good.substr(0, size);  // what is cut off the last record is blank
    if (good.size() - 1 - size < kRecord) whole.resize(good.size() - 1, ' ');
    harmed("cut to " + std::to_string(size), good.substr(0, size), CellsOf(whole));
  }
  Harm harm;
  for (int run = 0; run < Runs(1'000'000, 20'000); ++run) {
    std::string flipped = good.substr(kHeader);
    for (std::size_t bits = 1 + harm.Below(3); bits > 0; --bits) harm.FlipBit(flipped);
    flipped.insert(0, good, 0, kHeader);
    harmed("flip " + std::to_string(run), flipped, CellsOf(flipped));
  }
  EXPECT_GT(row["refused of which it invents rows"], 0);
  EXPECT_GT(row["refused of which it loses rows"], 0);
}

TEST(DamagedTables, OfOthersAreReadOrRefused) {
  Row row("Foreign tables", "halves of which a reader that believes the header loses rows");
  for (const fs::path& path : Corpus(".dbf")) {
    SCOPED_TRACE(path);
    const int number = NumberOf([&] { (void)ReadDbf(path); });
    EXPECT_TRUE(number == 0 || number == 3274) << number;
    ++row[number == 0 ? "read" : "refused"];
    if (number != 0) continue;
    const std::string whole = ReadWholeFile(path), half = whole.substr(0, whole.size() / 2);
    EXPECT_EQ(NumberOf([&] { (void)ParseDbf(half, "t.dbf"); }), 3274);
    if (Believed(half).size() < Believed(whole).size()) ++row.Control;
  }
}

// ---- The zip

class HostileZip : public testing::Test {
 protected:
  HostileZip() {
    old_ = Tables();
    for (int settings = 0; settings < 2; ++settings) {  // in the form in which they stay
      payroll_.Start();
      payroll_.Stop();
    }
    EXPECT_TRUE(Update(good_));
    new_ = Tables();
    EXPECT_TRUE(new_ != old_);
    outside_ = Outside();
  }

  std::vector<std::string> Tables() const {
    std::vector<std::string> tables;
    for (const char* name : kTableFiles) {
      tables.push_back(ReadWholeFile(ExistingPath(payroll_.App(name))));
    }
    return tables;
  }
  Contents Outside() const {
    Contents contents = ReadContents(payroll_.Folder.Path());
    std::erase_if(contents, [](const auto& file) {
      const std::string ending = fs::path(file.first).extension();
      return SameText(ending, ".log") || SameText(ending, ".dbf") || ending == ".zip";
    });
    return contents;
  }
  /// The update command on such a zip, the old tables being in place.
  ///   returns  whether the program says that the tables are new
  bool Update(const std::string& zip) {
    for (std::size_t table = 0; table < old_.size(); ++table) {
      const std::string path = payroll_.App(kTableFiles[table]);
      fs::remove(ExistingPath(path));  // a zip may bring the name in other letters
      WriteWholeFile(path, old_[table]);
    }
    payroll_.Folder.Write("disk/Clnt1234.zip", zip);
    desktop_.Messages.clear();
    try {
      if (!PrinDbOpen) payroll_.Start();
      payroll_.Choose(mnuUpdateDescs);
    } catch (const ProgramEnded&) {
      payroll_.Stop();
    }
    EXPECT_TRUE(desktop_.Reports.empty());
    return !desktop_.Messages.empty() && desktop_.Messages.back().find("success") != zip.npos;
  }

  Payroll payroll_;
  AgreeingDesktop desktop_{payroll_.Desktop, BoxAnswer::Ignore};
  const std::string good_ = NextWeeksZip(payroll_).Bytes();
  std::vector<std::string> old_, new_;
  Contents outside_;
};

TEST_F(HostileZip, BringsAllOfTheTablesOrNone) {
  Row row("Hostile zips", "refused of which an unpacker without a check gives another table");
  const std::string packed = WithYearPay(OneRowMore(old_[1]));
  Harm harm;
  for (int run = 0; run < Runs(20'000, 400); ++run) {
    SCOPED_TRACE(run);
    const std::string zip = harm.Spoil(good_);
    const bool isNew = Update(zip);
    EXPECT_TRUE(Tables() == (isNew ? new_ : old_));
    ++row[isNew ? "spoilt unpacked whole" : "spoilt refused"];
    const std::size_t name = zip.find(kTableFiles[1]);  // behind it lies the table
    if (!isNew && name != zip.npos && zip.substr(name + 12, packed.size()) != packed) ++row.Control;
  }
  EXPECT_TRUE(Outside() == outside_);
  for (const fs::path& path : Corpus(".zip")) {
    SCOPED_TRACE(path);
    const bool isNew = Update(ReadWholeFile(path));
    const std::vector<std::string> tables = Tables();
    for (std::size_t i = 0; i < tables.size(); ++i) EXPECT_EQ(tables[i] != old_[i], isNew);
    ++row[isNew ? "foreign unpacked whole" : "foreign refused"];
  }
}

}  // namespace
}  // namespace ostrel
