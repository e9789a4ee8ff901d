// Files that are not what they should be: the store, the office's tables, the office's zip.

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>
#include <sstream>

#include "battery/battery.h"
#include "battery/harm.h"
#include "frame/app_state.h"
#include "platform/database/dbf_file.h"
#include "platform/database/dbf_values.h"
#include "platform/failure.h"
#include "platform/files/files.h"
#include "support/agreeing_desktop.h"
#include "support/dbf_builder.h"
#include "support/failure_number.h"
#include "support/payroll.h"
#include "support/zip_builder.h"

namespace ostrel {
namespace {

namespace fs = std::filesystem;

/// Files below the folder that OSTREL_CORPUS names, with this extension.
std::vector<std::string> Corpus(const std::string& extension) {
  std::vector<std::string> files;
  const char* folder = std::getenv("OSTREL_CORPUS");
  if (folder == nullptr) return files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    std::string ending = entry.path().extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char c) { return c | ' '; });
    if (ending == extension) files.push_back(entry.path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// ---- The store

constexpr int kStoreLines = 600;
constexpr std::size_t kPage = 4096;

/// The lines of the table, and what the day of the grid comes to, each by the row alone.
struct StoreAnswers {
  std::set<std::string> Lines;
  std::string Days;  // of each line in order of time, as the index has them
  bool operator==(const StoreAnswers&) const = default;
};

std::string TextOf(const Value& value) {
  if (value.IsNull()) return "~";
  return value.IsText() ? value.Characters() : std::to_string(value.NumberOrZero());
}

StoreAnswers AnswersOf(const std::string& path) {
  StoreAnswers answers;
  const Database store = OpenDatabase(path);
  for (Recordset rows = store.OpenRecordset("OstrelPr"); !rows.Eof(); rows.MoveNext()) {
    std::string line = std::to_string(rows.GetBookmark());
    for (int field = 0; field < 15; ++field) line += "," + TextOf(rows[field].Get());
    answers.Lines.insert(line);
  }
  for (const char* day : {"11/17/04", "11/18/04"}) {
    const std::string where = std::string(" where INT(ETIME) = #") + day + "#";
    Recordset rows = store.OpenRecordset("Select * from [OstrelPr]" + where + " Order by ETIME");
    for (; !rows.Eof(); rows.MoveNext()) answers.Days += std::to_string(rows.GetBookmark()) + " ";
    rows = store.OpenRecordset("Select Sum(QUANTITY) as X from [OstrelPr]" + where);
    answers.Days += TextOf(rows[0].Get()) + "|";
  }
  return answers;
}

class ForeignStore : public testing::Test {
 protected:
  ForeignStore() {
    payroll_.Start();
    PrinDb.ShareCommits();
    for (int line = 0; line < kStoreLines; ++line) {
      txtToday.Text = line % 3 == 0 ? "11/17/04" : "11/18/04";
      payroll_.AddLine(std::to_string(101 + line % 60) + " P " + std::to_string(1 + line % 12) +
                       ":00 am " + std::to_string(line % 50) + " .27");
    }
    PrinDb.CommitShared();
    payroll_.Stop();
    good_ = ReadWholeFile(path_);
    truth_ = AnswersOf(path_);
  }

  /// Whether the store is refused, and left as it was; else the answers that it gives.
  bool Refused(const std::string& bytes, StoreAnswers& answers) {
    WriteWholeFile(path_, bytes);
    const int number = NumberOf([&] { answers = AnswersOf(path_); });
    if (number == 0) return false;
    EXPECT_TRUE(number == 3343 || number == 3049) << number;
    EXPECT_TRUE(ReadWholeFile(path_) == bytes);
    EXPECT_EQ(fs::exists(path_ + "-journal") && fs::file_size(path_ + "-journal") > 0, false);
    return true;
  }

  Payroll payroll_;
  std::string path_ = payroll_.App("Prin1234.mdb");
  std::string good_;
  StoreAnswers truth_;
};

TEST_F(ForeignStore, IsRefusedOrHarmless) {
  StoreAnswers answers;
  int cut = 0, refused = 0, harmless = 0, changedLine = 0, fooledReader = 0;
  for (std::size_t size = 0; size < good_.size(); size += kPage, ++cut) {
    EXPECT_TRUE(Refused(good_.substr(0, size), answers)) << size;
  }
  const std::string dayRows = "SELECT rowid FROM OstrelPr WHERE ETIME >= 38309 ORDER BY ETIME";
  WriteWholeFile(path_, good_);
  const std::string day = AskSqlite(path_, dayRows);
  Harm harm(kSeed);
  const int flips = Runs(3000, 300);
  for (int run = 0; run < flips; ++run) {
    SCOPED_TRACE(run);
    std::string bytes = good_;
    harm.FlipBit(bytes);
    const bool wasRefused = Refused(bytes, answers);
    if (wasRefused) {
      ++refused;
      // Control: whoever asks SQLite without a check may be told of another day, and never know.
      const std::string rows = AskSqlite(path_, dayRows);
      if (rows != "error" && rows != day) ++fooledReader;
      continue;
    }
    // One bit of one value may have changed, as nobody can tell; no line has gone or come, and the
    // day still finds each.
    std::set<std::string> others;
    std::set_difference(answers.Lines.begin(), answers.Lines.end(), truth_.Lines.begin(),
                        truth_.Lines.end(), std::inserter(others, others.end()));
    EXPECT_EQ(answers.Lines.size(), truth_.Lines.size());
    EXPECT_LE(others.size(), 1U);
    EXPECT_TRUE(!others.empty() || answers.Days == truth_.Days) << answers.Days;
    ++(others.empty() ? harmless : changedLine);
  }
  EXPECT_GT(fooledReader, 0);
  Figure("Damaged store",
         std::to_string(cut) + " cuts refused; " + std::to_string(flips) + " bits: " +
             std::to_string(refused) + " refused, " + std::to_string(harmless) + " harmless, " +
             std::to_string(changedLine) + " changed one value; seed " + std::to_string(kSeed) +
             "; control: unchecked, " + std::to_string(fooledReader) + " told of a wrong day");
}

TEST_F(ForeignStore, UnderOurNameIsReportedAtTheStart) {
  const auto database = [&](const char* sql) {
    const std::string other = payroll_.Folder.Path("other");
    AskSqlite(other, sql);
    std::string bytes = ReadWholeFile(other);
    fs::remove(other);
    return bytes;
  };
  const std::string files[] = {
      "",
      "130,I,7:00\r\n",
      std::string(100'000, '\0'),
      std::string("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) + Harm(kSeed).Bytes(65'536),
      database("CREATE TABLE Track(Title TEXT)"),
      database("PRAGMA user_version = 1; CREATE TABLE OstrelPr(EMPL_NUMB FLOAT, ETIME REAL)"),
      good_.substr(0, good_.size() / 2)};
  for (const std::string& file : files) {
    SCOPED_TRACE(file.substr(0, 20));
    WriteWholeFile(path_, file);
    AgreeingDesktop desktop(payroll_.Desktop, BoxAnswer::Abort);
    EXPECT_THROW(payroll_.Start(), ProgramEnded);
    EXPECT_EQ(desktop.Reports.size(), 1U);
    EXPECT_TRUE(ReadWholeFile(path_) == file);
    payroll_.Stop();
  }
  // Control: SQLite alone takes the empty file and fills it.
  WriteWholeFile(path_, "");
  EXPECT_EQ(AskSqlite(path_, "CREATE TABLE OstrelPr(EMPL_NUMB FLOAT)"), "");
  EXPECT_GT(fs::file_size(path_), 0U);
  Figure("Foreign store", std::to_string(std::size(files)) + " kinds refused at the start");
}

// ---- The tables

constexpr int kTableRows = 40;
constexpr std::size_t kNameWidth = 15, kNumberWidth = 6, kPayWidth = 10, kCrewWidth = 3;
constexpr std::size_t kRecord = 1 + kNumberWidth + kNameWidth + kCrewWidth + kPayWidth;

std::string GoodTable() {
  DbfBuilder table;
  table.Field("EMPL_NUMB", 'N', kNumberWidth).Field("CREW", 'N', kCrewWidth);
  table.Field("YTD_GROSS", 'N', kPayWidth, 2).Field("SORT_NAME", 'C', kNameWidth);
  for (int row = 0; row < kTableRows; ++row) {
    table.Row({std::to_string(101 + row * 37), std::to_string(1 + row % 12),
               std::to_string(row * 1234) + ".50", "NAME OF " + std::to_string(row)});
  }
  return table.Bytes();
}

/// The cells as they stand in the records of `file`, which begin at `header`: read by hand.
std::vector<std::string> CellsOf(const std::string& file, std::size_t header) {
  constexpr std::string_view blanks("\0\t ", 3);
  std::vector<std::string> cells;
  for (std::size_t at = header; at + kRecord <= file.size(); at += kRecord) {
    if (file[at] == '*') continue;
    std::size_t from = at + 1;
    for (const std::size_t width : {kNumberWidth, kCrewWidth, kPayWidth, kNameWidth}) {
      std::string cell = file.substr(from, width);
      if (width != kNameWidth) cell.erase(0, cell.find_first_not_of(blanks));
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
    if (table.RowCount() * 4 != truth.size()) return Reading::Wrong;
    for (std::size_t cell = 0; cell < truth.size(); ++cell) {
      if (cell % 4 >= table.Fields().size()) return Reading::Wrong;
      const Value value = table.At(cell / 4, cell % 4);
      if (value.IsNull() || value.IsText()) continue;  // letters may be another code page's
      double number = 0;
      std::string text = truth[cell];
      if (text.starts_with('+')) text.erase(0, 1);
      const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
      const bool whole = read.ec == std::errc() && read.ptr == text.data() + text.size();
      if (!whole || value.NumberOrZero() != number) return Reading::Wrong;
    }
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, 3274);
    EXPECT_NE(failure.Text.find("t.dbf"), std::string::npos);
    return Reading::Refused;
  }
  return Reading::Right;
}

/// A reader that believes the header, as a careless one would: where are its numbers?
bool BelieverIsFooled(const std::string& file, const std::vector<std::string>& truth) {
  if (file.size() < 12) return false;
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(file[at]); };
  return CellsOf(file, byte(8) | std::size_t{byte(9)} << 8) != truth;
}

TEST(DamagedTables, AreRightOrRefused) {
  const std::string good = GoodTable();
  const std::size_t header = 33 + 4 * 32;
  const std::vector<std::string> truth = CellsOf(good, header);
  ASSERT_EQ(Read(good, truth), Reading::Right);
  int right = 0, refused = 0, fooled = 0;
  const auto harmed = [&](const std::string& file, const std::vector<std::string>& expected) {
    const Reading reading = Read(file, expected);
    EXPECT_TRUE(reading != Reading::Wrong);
    ++(reading == Reading::Refused ? refused : right);
    if (reading == Reading::Refused && BelieverIsFooled(file, truth)) ++fooled;
  };
  for (std::size_t bit = 0; bit < header * 8; ++bit) {  // every bit of the header
    SCOPED_TRACE("bit " + std::to_string(bit));
    std::string file = good;
    file[bit / 8] = static_cast<char>(file[bit / 8] ^ 1 << bit % 8);
    harmed(file, truth);
  }
  for (std::size_t size = 0; size < good.size(); ++size) {
    SCOPED_TRACE("cut to " + std::to_string(size));
    std::string whole = good.substr(0, size);  // what is cut off the last record is blank
    if (good.size() - 1 - size < kRecord) whole.resize(good.size() - 1, ' ');
    harmed(good.substr(0, size), CellsOf(whole, header));
  }
  Harm harm(kSeed);
  const int flips = Runs(1'000'000, 20'000);
  for (int run = 0; run < flips; ++run) {
    SCOPED_TRACE("flip " + std::to_string(run));
    std::string file = good;
    std::string records = good.substr(header);
    for (std::size_t bits = 1 + harm.Below(3); bits > 0; --bits) harm.FlipBit(records);
    file.replace(header, records.size(), records);
    harmed(file, CellsOf(file, header));
  }
  EXPECT_GT(fooled, 0);
  Figure("Damaged tables",
         std::to_string(header * 8) + " header bits, " + std::to_string(good.size()) + " cuts, " +
             std::to_string(flips) + " flips: " + std::to_string(right) + " right, " +
             std::to_string(refused) + " refused; seed " + std::to_string(kSeed) + "; control: " +
             std::to_string(fooled) + " of the refused fool a reader that believes the header");
}

TEST(DamagedTables, OfOthersAreReadOrRefused) {
  int read = 0;
  std::string refused;
  for (const std::string& path : Corpus(".dbf")) {
    const int number = NumberOf([&] { (void)ReadDbf(path); });
    EXPECT_TRUE(number == 0 || number == 3274) << path;
    if (number != 0) refused += " " + fs::path(path).filename().string();
    if (number == 0) ++read;
  }
  Figure("Foreign tables", std::to_string(read) + " read, refused:" + refused);
}

// ---- The zip

const char* const kWords[] = {"Hvcl", "Prms", "Glen", "Glod", "Gleq"};

class HostileZip : public testing::Test {
 protected:
  HostileZip() {
    for (const char* word : kWords) {
      const std::string name = std::string(word) + "1234.dbf";
      std::string table = ReadWholeFile(payroll_.App(name));
      old_.push_back(table);
      // The office's new table has one more row: the last one again.
      table[4] = static_cast<char>(table[4] + 1);
      const std::size_t record = static_cast<unsigned char>(table[10]);
      table.insert(table.size() - 1, table.substr(table.size() - 1 - record, record));
      good_.Add({name, table});
      packed_.push_back(table);
    }
    for (int settings = 0; settings < 2; ++settings) {  // in the form in which they stay
      payroll_.Start();
      payroll_.Stop();
    }
    EXPECT_TRUE(Update(good_.Bytes()));
    new_ = Tables();
    EXPECT_TRUE(new_ != old_);
    outside_ = Outside();
  }

  std::vector<std::string> Tables() const {
    std::vector<std::string> tables;
    for (const char* word : kWords) {
      tables.push_back(ReadWholeFile(ExistingPath(payroll_.App(std::string(word) + "1234.dbf"))));
    }
    return tables;
  }
  std::string Outside() const {
    std::string contents;
    for (const auto& entry : fs::recursive_directory_iterator(payroll_.Folder.Path())) {
      const std::string path = entry.path().string();
      if (path.ends_with(".log") || path.ends_with(".Log") || path.ends_with(".dbf")) continue;
      contents +=
          path + (entry.is_directory() || path.ends_with(".zip") ? "" : ReadWholeFile(path));
    }
    return contents;
  }
  /// The update command on such a zip, the old tables being in place.
  ///   returns  whether the program says that the tables are new
  bool Update(const std::string& zip) {
    for (std::size_t table = 0; table < old_.size(); ++table) {
      const std::string path = payroll_.App(std::string(kWords[table]) + "1234.dbf");
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
    return !desktop_.Messages.empty() &&
           desktop_.Messages.back().find("success") != std::string::npos;
  }

  Payroll payroll_;
  AgreeingDesktop desktop_{payroll_.Desktop, BoxAnswer::Ignore};
  ZipBuilder good_;
  std::vector<std::string> old_, new_, packed_;
  std::string outside_;
};

/// Whether an unpacker that checks nothing would put another table there: what lies behind the
/// member's name, as far as the office's table is long.
bool UncheckedIsFooled(const std::string& zip, const std::string& table) {
  const std::size_t name = zip.find("Prms1234.dbf");
  return name != std::string::npos && zip.substr(name + 12, table.size()) != table;
}

TEST_F(HostileZip, BringsAllOfTheTablesOrNone) {
  Harm harm(kSeed);
  int updated = 0, refused = 0, fooled = 0;
  const int runs = Runs(20'000, 400);
  for (int run = 0; run < runs; ++run) {
    SCOPED_TRACE(run);
    const std::string zip = harm.Spoil(good_.Bytes());
    const bool isNew = Update(zip);
    EXPECT_TRUE(Tables() == (isNew ? new_ : old_));
    ++(isNew ? updated : refused);
    if (!isNew && UncheckedIsFooled(zip, packed_[1])) ++fooled;
  }
  EXPECT_TRUE(Outside() == outside_);
  EXPECT_GT(fooled, 0);
  int foreign = 0;
  for (const std::string& path : Corpus(".zip")) {
    SCOPED_TRACE(path);
    EXPECT_FALSE(Update(ReadWholeFile(path)));
    EXPECT_TRUE(Tables() == old_);
    ++foreign;
  }
  EXPECT_TRUE(Outside() == outside_);
  Figure("Hostile zips", std::to_string(runs) + " spoilt: " + std::to_string(updated) +
                             " unpacked whole, " + std::to_string(refused) + " refused; " +
                             std::to_string(foreign) + " foreign ones refused; seed " +
                             std::to_string(kSeed) + "; control: " + std::to_string(fooled) +
                             " give an unpacker without a check another table");
}

}  // namespace
}  // namespace ostrel
