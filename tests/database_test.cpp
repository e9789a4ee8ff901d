#include "platform/database/database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>

#include "platform/database/sqlite_connection.h"
#include "platform/database/store_fields.h"
#include "platform/failure.h"
#include "platform/values/numbers.h"
#include "support/failure_number.h"
#include "support/fault_vfs.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

/// Another program at the same file.
class RawStore {
 public:
  explicit RawStore(const std::string& path) { sqlite3_open(path.c_str(), &handle_); }
  ~RawStore() { sqlite3_close(handle_); }
  RawStore(const RawStore&) = delete;
  RawStore& operator=(const RawStore&) = delete;
  void Run(const std::string& sql) const {
    EXPECT_EQ(sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sql;
  }
  int Number(const char* sql) const {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_ROW) << sql;
    const int number = sqlite3_column_int(statement, 0);
    sqlite3_finalize(statement);
    return number;
  }

 private:
  sqlite3* handle_ = nullptr;
};

using Fields = std::vector<std::pair<const char*, Value>>;

void Assign(Recordset& lines, const Fields& fields) {
  for (const auto& [name, value] : fields) lines[name] = value;
}

void Add(Recordset lines, const Fields& fields) {
  lines.AddNew();
  Assign(lines, fields);
  lines.Update();
}

/// The first field of each row, "130,12"; a "-" for a Null, "day 38152" for a moment.
std::string Walk(Recordset rows) {
  std::string text;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const Value value = rows[0].Get();
    const bool date = value.KindOf() == Value::Kind::Date;
    text += text.empty() ? "" : ",";
    text += value.IsNull() ? "-" : date ? "day " + GeneralText(value.ToDouble()) : value.ToText();
  }
  return text;
}

/// Current employee, where the walk stands, and what edit is open: "12", "Bof", "Eof", "none", "+".
std::string Place(const Recordset& rows) {
  std::string text = rows.Bof() ? "Bof" : "";
  text += rows.Eof() ? "Eof" : "";
  if (rows.Position() >= 0)
    text += rows.RowAt(static_cast<std::size_t>(rows.Position()))[0].ToText();
  if (text.empty()) text = "none";
  return text + (rows.Mode() == EditMode::Add          ? "+"
                 : rows.Mode() == EditMode::InProgress ? "*"
                                                       : "");
}

class StoreTest : public ::testing::Test {
 protected:
  StoreTest() { Create(); }

  void Create() {
    db = CreateDatabase(path, ";LANGID=0x0809;CP=1252;COUNTRY=0");
    db.AppendTable(LineTable());
    db.Execute("Create Index dTime on [OstrelPr] (ETIME DESC)");
  }
  void Reopen() {
    db.Close();
    db = OpenDatabase(path);
  }
  Recordset Open(std::string_view sql = "OstrelPr") const {
    return db.OpenRecordset(sql, RecordsetType::Dynaset);
  }
  int FailureOfOpening() const {
    return NumberOf([&] { OpenDatabase(path); });
  }

  /// Numbers 1 to `count`, all entered for one moment, hours 0.
  void AddNumbered(int count) const {
    for (int i = 1; i <= count; ++i) {
      Add(Open(), {{"EMPL_NUMB", i}, {"ETIME", "06/14/04 8:00 am"}, {"HOURS", 0}});
    }
  }

  FaultVfs disk;
  TempFolder folder;
  std::string path = folder.Path("Prin1234.mdb");
  Database db;
};

class DialectTest : public StoreTest {
 protected:
  DialectTest() {
    const auto lines = Open("[OstrelPr]");
    Add(lines, {{"EMPL_NUMB", 130}, {"ETIME", "06/14/04 7:00 am"}, {"EVENT_TYPE", "I"}});
    Add(lines, {{"EMPL_NUMB", 12}, {"ETIME", "06/14/04 7:00 am"}, {"EVENT_TYPE", "I"}});
    Add(lines, {{"EMPL_NUMB", 131},
                {"ETIME", "06/14/04 8:00 am"},
                {"EVENT_TYPE", "P"},
                {"RATE", -9},
                {"QUANTITY", 0.5},
                {"QUAN_DESC", "BOX"}});
    Add(lines, {{"EMPL_NUMB", 12.1}, {"ETIME", "06/14/04 11:59:59 pm"}, {"EVENT_TYPE", "O"}});
    Add(lines, {{"EMPL_NUMB", 13}, {"ETIME", "06/15/04"}, {"EVENT_TYPE", "X"}});
    Add(lines, {{"EMPL_NUMB", 14}, {"MEMO", "or 1=1 -- ;#6/14#'"}, {"QUANTITY", 2}});
    Add(lines, {{"ETIME", "06/13/04 7:00 am"}, {"EVENT_TYPE", "I"}, {"QUAN_DESC", "TON"}});
  }
};

TEST_F(DialectTest, LetsTheProgramsQuestionsThrough) {
  const struct {
    const char* Sql;
    const char* Answer;
  } cases[] = {
      {"OstrelPr", "130,12,131,12.1,13,14,-"},
      {" [ostrelpr] ; ", "130,12,131,12.1,13,14,-"},
      {"Select * from [OstrelPr]", "130,12,131,12.1,13,14,-"},
      {"Select * from [OstrelPr] Order by ETIME Desc", "13,12.1,131,12,130,-,14"},
      {"select * from ostrelpr ORDER BY [etime] asc", "14,-,130,12,131,12.1,13"},
      {"Select * from [OstrelPr] Order by EMPL_NUMB, ETIME", "-,12,12.1,13,14,130,131"},
      {"Select * from [OstrelPr] where INT(ETIME) = #06/14/04#", "130,12,131,12.1"},
      {"Select * from [OstrelPr] where INT(ETIME) = #6-14-2004# order by ETIME", "130,12,131,12.1"},
      {"Select * from [OstrelPr] where INT(ETIME) = #06/14/04# Order by ETIME Desc",
       "12.1,131,12,130"},
      {"Select * from [OstrelPr] where INT(ETIME) = #06/14/04# and EVENT_TYPE = 'I' "
       "order by EMPL_NUMB, ETIME Desc",
       "12,130"},
      {"Select * from [OstrelPr] where INT(ETIME) = #8:30 am#", ""},
      {"Select * from [OstrelPr] where INT(ETIME) = #06/14/04 7:00 am#", ""},
      {"Select * from [OstrelPr] where ETIME = #06/14/04 7:00 am#", "130,12"},
      {"Select * from [OstrelPr] where ETIME > #06/14/04 8:00 am#", "12.1,13"},
      {"Select * from [OstrelPr] where EMPL_NUMB =  130 ;", "130"},
      {"Select * from [OstrelPr] where EMPL_NUMB = +130.0", "130"},
      {"Select * from [OstrelPr] where EMPL_NUMB = 12.1", "12.1"},
      {"Select * from [OstrelPr] where RATE = - 9 and QUANTITY>.4 and QUANTITY<5e-1", ""},
      {"Select * from [OstrelPr] where RATE = -9 and QUANTITY>.4 and QUANTITY<5.1e-1", "131"},
      {"Select * from [OstrelPr] where EMPL_NUMB in (12,13 , 130)", "130,12,13"},
      {"Select * from [OstrelPr] where EMPL_NUMB Not in (12,13,130)", "131,12.1,14"},
      {"Select * from [OstrelPr] where MEMO = 'or 1=1 -- ;#6/14#''' and EMPL_NUMB>0", "14"},
      {"Select * from [OstrelPr] where EVENT_TYPE='i'", ""},
      {"SELECT Distinct EMPL_NUMB FROM [OstrelPr]  where INT(ETIME) = #06/14/04# Order by "
       "EMPL_NUMB",
       "12,12.1,130,131"},
      {"SELECT Distinct EVENT_TYPE FROM [OstrelPr] Order by EVENT_TYPE Desc", "X,P,O,I,-"},
      {"SELECT Sum(QUANTITY) as X from [OstrelPr]", "2.5"},
      {"SELECT Sum(HOURS) as X from [OstrelPr]", "-"},
      {"SELECT Max(ETIME) as X from [OstrelPr] where EMPL_NUMB>12.1", "day 38153"},
      {"SELECT Count(EVENT_TYPE) as X from [OstrelPr]", "6"},
      {"SELECT Count(EVENT_TYPE) as X from [OstrelPr] where INT(ETIME) = #06/14/04# and EMPL_NUMB "
       "= 12 and EVENT_TYPE='I';",
       "1"},
      {"SELECT LAST(EMPL_NUMB) as X from [OstrelPr] where INT(ETIME) = #06/14/04#", "12.1"},
      {"SELECT Last(QUAN_DESC) as X from [OstrelPr]", "TON"},
      {"SELECT Last(RATE) as X from [OstrelPr] where EVENT_TYPE='W' and QUANTITY>0", "-"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Sql);
    EXPECT_EQ(Walk(Open(each.Sql)), each.Answer);
  }
}

TEST_F(DialectTest, RefusesEverythingElse) {
  const std::string before = Walk(Open());
  const struct {
    const char* Sql;
    int Number;
  } cases[] = {
      {"", 3075},
      {"Select", 3075},
      {"Select * from [OstrelPr", 3075},
      {"Select * from [OstrelPr] where", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 12a", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 1.2.3", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 1e", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 1e999", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 8:30", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 1,5", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = ", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB =  and EVENT_TYPE='I'", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 1 or EMPL_NUMB = 2", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB >= 1", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB <> 1", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = 1 + 1", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB in ()", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB in (Select EMPL_NUMB from OstrelPr)", 3075},
      {"Select * from [OstrelPr] where EMPL_NUMB = EMPL_NUMB", 3075},
      {"Select * from [OstrelPr] where EVENT_TYPE = 'I", 3075},
      {"Select * from [OstrelPr] where EVENT_TYPE = \"I\"", 3075},
      {"Select * from [OstrelPr] where INT(ETIME) = #All#", 3075},
      {"Select * from [OstrelPr] where INT(ETIME) = #13/14/04#", 3075},
      {"Select * from [OstrelPr] where INT(ETIME) = #06/14/04", 3075},
      {"Select * from [OstrelPr] where INT(ETIME) > #06/14/04#", 3075},
      {"Select * from [OstrelPr] where abs(EMPL_NUMB) = 1", 3075},
      {"Select * from [OstrelPr] -- all", 3075},
      {"Select * from [OstrelPr] /* all */", 3075},
      {"Select * from [OstrelPr]; Delete from OstrelPr", 3075},
      {"Select * from [OstrelPr];;", 3075},
      {"Select * from [OstrelPr], [OstrelPr]", 3075},
      {"Select EMPL_NUMB from [OstrelPr]", 3075},
      {"Select Distinct EMPL_NUMB from [OstrelPr] Order by ETIME", 3075},
      {"Select Sum(EMPL_NUMB) from [OstrelPr]", 3075},
      {"Select Count(*) as X from [OstrelPr]", 3075},
      {"Select load_extension(EMPL_NUMB) as X from [OstrelPr]", 3075},
      {"Delete from [OstrelPr]", 3075},
      {"Drop table OstrelPr", 3075},
      {"Select * from sqlite_master", 3078},
      {"Prms1234", 3078},
      {"Select * from [OstrelPr] where CREW = 1", 3061},
      {"Select * from [OstrelPr] Order by rowid", 3061},
      {"Select Distinct CREW from [OstrelPr]", 3061},
      {"Select * from [OstrelPr] where EMPL_NUMB = '12'", 3421},
      {"Select * from [OstrelPr] where EVENT_TYPE = 1", 3421},
      {"Select * from [OstrelPr] where INT(EMPL_NUMB) = #06/14/04#", 3421},
      {"Select Sum(MEMO) as X from [OstrelPr]", 3421},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Sql);
    EXPECT_EQ(NumberOf([&] { Open(each.Sql); }), each.Number);
  }
  for (const char* sql : {"Delete from [OstrelPr]", "Drop index dTime", "Select * from [OstrelPr]",
                          "Create Index dTime on [OstrelPr] (ETIME DESC); Drop table OstrelPr",
                          "Create Table X (ETIME)", "Attach 'x' as y", "Pragma user_version=2"}) {
    SCOPED_TRACE(sql);
    EXPECT_EQ(NumberOf([&] { db.Execute(sql); }), 3075);
  }
  EXPECT_EQ(Walk(Open()), before);
}

TEST_F(StoreTest, QuestionsCannotWriteEvenPastTheReader) {
  SqliteConnection connection(path);
  for (const char* sql :
       {"DELETE FROM OstrelPr", "UPDATE OstrelPr SET RATE = 1", "DROP TABLE OstrelPr",
        "ATTACH 'x' AS y", "PRAGMA user_version = 2", "SELECT * FROM sqlite_schema",
        "CREATE TABLE x(y)", "SELECT randomblob(RATE) FROM OstrelPr"}) {
    SCOPED_TRACE(sql);
    EXPECT_EQ(NumberOf([&] { connection.Question(sql); }), 3075);
  }
}

TEST_F(StoreTest, AfterEveryCallTheCurrentRowIsKnown) {
  Recordset rows = Open();
  EXPECT_EQ(Place(rows), "BofEof");
  AddNumbered(2);
  EXPECT_EQ(Place(rows), "BofEof") << "rows added later do not join";
  rows = Open("Select * from [OstrelPr] Order by ETIME Desc");
  const struct {
    const char* Call;
    std::function<void()> Do;
    const char* Place;
    int Failure;
  } steps[] = {
      {"open", [] {}, "2", 0},
      {"AddNew", [&] { rows.AddNew(); }, "2+", 0},
      {"assign", [&] { rows["EMPL_NUMB"] = 3; }, "2+", 0},
      {"Update", [&] { rows.Update(); }, "2", 0},
      {"MovePrevious", [&] { rows.MovePrevious(); }, "Bof", 0},
      {"MovePrevious again", [&] { rows.MovePrevious(); }, "Bof", 3021},
      {"MoveNext", [&] { rows.MoveNext(); }, "2", 0},
      {"MoveLast", [&] { rows.MoveLast(); }, "3", 0},
      {"MoveNext", [&] { rows.MoveNext(); }, "Eof", 0},
      {"MoveNext again", [&] { rows.MoveNext(); }, "Eof", 3021},
      {"field", [&] { rows["EMPL_NUMB"].Get(); }, "Eof", 3021},
      {"Edit", [&] { rows.Edit(); }, "Eof", 3021},
      {"Delete", [&] { rows.Delete(); }, "Eof", 3021},
      {"bookmark", [&] { rows.GetBookmark(); }, "Eof", 3021},
      {"MovePrevious", [&] { rows.MovePrevious(); }, "3", 0},
      {"MovePrevious", [&] { rows.MovePrevious(); }, "1", 0},
      {"assign", [&] { rows["HOURS"] = 1; }, "1", 3020},
      {"Update", [&] { rows.Update(); }, "1", 3020},
      {"Edit", [&] { rows.Edit(); }, "1*", 0},
      {"assign wrongly", [&] { rows["ETIME"] = "All"; }, "1*", 3421},
      {"assign", [&] { rows["ETIME"] = "06/01/04"; }, "1*", 0},
      {"Update", [&] { rows.Update(); }, "1", 0},
      {"Edit", [&] { rows.Edit(); }, "1*", 0},
      {"MoveFirst", [&] { rows.MoveFirst(); }, "2", 0},
      {"Delete", [&] { rows.Delete(); }, "none", 0},
      {"field", [&] { rows["EMPL_NUMB"].Get(); }, "none", 3021},
      {"MoveNext", [&] { rows.MoveNext(); }, "1", 0},
      {"Delete", [&] { rows.Delete(); }, "none", 0},
      {"MoveNext", [&] { rows.MoveNext(); }, "3", 0},
      {"no field", [&] { rows["CREW"].Get(); }, "3", 3265},
      {"no ordinal", [&] { rows[15].Get(); }, "3", 3265},
      {"SetIndex", [&] { rows.SetIndex("dTime"); }, "3", 3251},
      {"Delete", [&] { rows.Delete(); }, "none", 0},
      {"MoveNext", [&] { rows.MoveNext(); }, "BofEof", 0},
      {"Close", [&] { rows.Close(), rows.Eof(); }, "", 91},
  };
  int number = 0;
  for (const auto& step : steps) {
    SCOPED_TRACE(std::to_string(++number) + " " + step.Call);
    EXPECT_EQ(NumberOf(step.Do), step.Failure);
    if (step.Failure == 91) break;
    EXPECT_EQ(Place(rows), step.Place);
  }
}

TEST_F(StoreTest, DeletedRowsAreNeverMistakenForOthers) {
  AddNumbered(3);
  Recordset mine = Open("Select * from [OstrelPr]");
  Recordset view = Open("Select * from [OstrelPr]");
  view.MoveLast();
  const Bookmark third = view.GetBookmark();
  view.Edit();
  view["HOURS"] = 1;
  mine.SetBookmark(third);
  mine.Delete();
  Add(mine, {{"EMPL_NUMB", 4}});
  EXPECT_EQ(NumberOf([&] { view.Update(); }), 3167);
  EXPECT_EQ(view.Mode(), EditMode::InProgress);
  view.CancelUpdate();
  EXPECT_EQ(NumberOf([&] { view["EMPL_NUMB"].Get(); }), 3167);
  EXPECT_TRUE(view.RowAt(2).empty());
  view.MoveFirst();
  EXPECT_EQ(NumberOf([&] { view.SetBookmark(third); }), 3167);
  EXPECT_EQ(NumberOf([&] { mine.SetBookmark(third); }), 3167);
  EXPECT_EQ(Place(view), "1");
  EXPECT_EQ(Walk(mine), "1,2,4");
}

TEST_F(StoreTest, FieldsTakeWhatTheirTypeTakes) {
  const double eight = 38152 + 8.0 / 24;
  const struct {
    const char* Field;
    Value Given;
    Value Kept;
    int Failure;
  } cases[] = {
      {"EMPL_NUMB", " 130 ", 130.0F, 0},
      {"empl_numb", 0.1, 0.1F, 0},
      {"EMPL_NUMB", 1e39, {}, 6},
      {"EMPL_NUMB", "12a", {}, 3421},
      {"EMPL_NUMB", "", {}, 3421},
      {"EMPL_NUMB", Value(), Value(), 0},
      {"Rate", "-9", -9.0, 0},
      {"RATE", "1e999", {}, 6},
      {"RATE", 3, 3.0, 0},
      {"ETIME", "06/14/04 8:00 am", Moment{eight}, 0},
      {"ETIME", "06/14/04", Moment{38152}, 0},
      {"ETIME", 38152, Moment{38152}, 0},
      {"ETIME", Moment{eight}, Moment{eight}, 0},
      {"ETIME", "06/14/04 25:00", {}, 3421},
      {"EVENT_TYPE", "IO", {}, 3163},
      {"QUAN_DESC", "\xC3\x84\xC3\x96\xC3\x9C\xC3\x84\xC3\x96",
       "\xC3\x84\xC3\x96\xC3\x9C\xC3\x84\xC3\x96", 0},
      {"QUAN_DESC", "BOXES?", {}, 3163},
      {"MEMO", 12.5, "12.5", 0},
      {"MEMO", std::string("a\0b'\n", 5), std::string("a\0b'\n", 5), 0},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(std::string(each.Field) + " " +
                 (each.Given.IsNull() ? "Null" : each.Given.ToText()));
    Recordset lines = Open();
    lines.AddNew();
    ASSERT_EQ(NumberOf([&] { lines[each.Field] = each.Given; }), each.Failure);
    if (each.Failure != 0) continue;
    EXPECT_EQ(lines[each.Field].Get(), each.Kept);
    lines.Update();
    Reopen();
    lines = Open();
    lines.MoveLast();
    EXPECT_EQ(lines[each.Field].Get(), each.Kept);
    EXPECT_TRUE(lines["ETIME_STOP"].Get().IsNull());
  }
  EXPECT_EQ(Open()["MEMO"].Size(), 20);
  EXPECT_EQ(Open()[2].Name(), "ETIME");
}

TEST_F(StoreTest, PathsToOneFileSeeEachOther) {
  const Database lookup = OpenDatabase(folder.Path("PRIN1234.MDB"));
  const RawStore outside(path);
  db.ShareCommits();
  AddNumbered(2);
  EXPECT_EQ(Walk(lookup.OpenRecordset("SELECT Count(EMPL_NUMB) as X from [OstrelPr]")), "2");
  EXPECT_EQ(outside.Number("SELECT count(*) FROM OstrelPr"), 0) << "still gathered";
  SettleAllShared();
  EXPECT_EQ(outside.Number("SELECT count(*) FROM OstrelPr"), 2);

  const Recordset view = lookup.OpenRecordset("Select * from [OstrelPr]");
  EXPECT_EQ(view["HOURS"].Get(), Value(0.0));
  Recordset lines = Open();
  lines.Edit();
  lines["HOURS"] = 4.5;
  EXPECT_EQ(view["HOURS"].Get(), Value(0.0));
  lines.Update();
  EXPECT_EQ(view["HOURS"].Get(), Value(4.5));
  db.CommitShared();
  EXPECT_EQ(lines["HOURS"].Get(), Value(4.5));
  outside.Run("UPDATE OstrelPr SET HOURS = 5");
  lines.Edit();
  EXPECT_EQ(lines["HOURS"].Get(), Value(5.0));
}

TEST_F(StoreTest, DayAndTotalsOfAnEmployeeStayTrueThroughEveryChange) {
  const std::string where = " where INT(ETIME) = #06/14/04# and EMPL_NUMB = 2";
  double hours = 0;  // of the lines that the last walk saw
  const auto rows = [&] {
    std::string text;
    Recordset day = Open("Select * from [OstrelPr]" + where + " order by ETIME");
    for (hours = 0; !day.Eof(); day.MoveNext()) {
      text += std::to_string(day.GetBookmark()) + " ";
      hours += day["HOURS"].Get().NumberOrZero();
    }
    return text;
  };
  const auto total = [&](const std::string& expression) {
    return Open("Select " + expression + " as X from [OstrelPr]" + where)[0].Get().NumberOrZero();
  };
  const RawStore outside(path);
  AddNumbered(3);
  Recordset lines = Open();
  const struct {
    const char* Change;
    std::function<void()> Do;
    const char* Rows;
  } steps[] = {
      {"none", [] {}, "2 "},
      {"add a tie",
       [&] {
         Add(lines, {{"EMPL_NUMB", 2}, {"ETIME", "6/14/04 8:00 am"}});
       },
       "2 4 "},
      {"add another day",
       [&] {
         Add(lines, {{"EMPL_NUMB", 2}, {"ETIME", "6/15/04"}});
       },
       "2 4 "},
      {"add earlier",
       [&] {
         Add(lines, {{"EMPL_NUMB", 2}, {"ETIME", "6/14/04"}});
       },
       "6 2 4 "},
      {"renumber", [&] { lines.Edit(), lines[0] = 2, lines.Update(); }, "6 1 2 4 "},
      {"set hours", [&] { lines.Edit(), lines["HOURS"] = 9, lines.Update(); }, "6 1 2 4 "},
      {"delete", [&] { lines.Delete(); }, "6 2 4 "},
      {"outside",
       [&] { outside.Run("UPDATE OstrelPr SET EMPL_NUMB = 2, HOURS = 5 WHERE rowid = 3"); },
       "6 2 3 4 "},
      {"share",
       [&] {
         db.ShareCommits(), Add(lines, {{"EMPL_NUMB", 2}, {"ETIME", 38152.9}});
       },
       "6 2 3 4 7 "},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(step.Change);
    EXPECT_EQ(rows(), rows());
    step.Do();
    for (int time = 0; time < 3; ++time) {
      EXPECT_EQ(rows(), step.Rows);
      EXPECT_EQ(total("Sum(HOURS)"), hours);
      EXPECT_EQ(total("Count(EMPL_NUMB)"), std::ranges::count(std::string_view(step.Rows), ' '));
    }
  }
}

TEST_F(StoreTest, ClosedAndReopenedHoldsTheSame) {
  AddNumbered(3);
  db.DeleteIndex("ostrelpr", "DTIME");
  EXPECT_EQ(NumberOf([&] { db.DeleteIndex("OstrelPr", "dTime"); }), 3265);
  EXPECT_EQ(NumberOf([&] { db.DeleteIndex("OstrelPr", "Empl_Numb"); }), 3265);
  EXPECT_EQ(Walk(Open("Select * from [OstrelPr] Order by ETIME Desc")), "3,2,1") << "no index";
  db.Execute("Create Index dTime on [OstrelPr] (ETIME DESC)");
  EXPECT_EQ(NumberOf([&] { db.Execute("Create Index X on [OstrelPr] (CREW)"); }), 3265);
  db.ShareCommits();
  Add(Open(), {{"EMPL_NUMB", 4}, {"ETIME", "06/14/04 8:00 am"}});
  Reopen();
  EXPECT_EQ(Walk(Open("Select * from [OstrelPr] Order by ETIME Desc")), "4,3,2,1");
  const RawStore outside(path);
  EXPECT_EQ(outside.Number("SELECT count(*) FROM sqlite_schema WHERE type = 'index'"), 1);
  EXPECT_EQ(outside.Number("SELECT count(*) FROM OstrelPr WHERE typeof(ETIME) = 'real'"), 4);
}

TEST_F(StoreTest, CallsOnNothingFail) {
  EXPECT_EQ(NumberOf([] { Database().OpenRecordset("OstrelPr"); }), 91);
  EXPECT_EQ(NumberOf([] { Database().DeleteIndex("OstrelPr", "dTime"); }), 91);
  EXPECT_EQ(NumberOf([] { Recordset().AddNew(); }), 91);
  const Recordset answer = Open("SELECT Max(RATE) as X from [OstrelPr]");
  EXPECT_EQ(NumberOf([&] { Recordset(answer).Edit(); }), 3251);
}

TEST_F(StoreTest, CreatesNoStoreOverAnything) {
  const std::string store = folder.Read("Prin1234.mdb");
  folder.Write("Prin2.mdb", "");
  const struct {
    const char* Name;
    int Failure;
  } cases[] = {{"Prin1234.mdb", 58}, {"PRIN1234.mdb", 58}, {"Prin2.mdb", 58}, {"no/Prin3.mdb", 76}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Name);
    EXPECT_EQ(NumberOf([&] { CreateDatabase(folder.Path(each.Name), ""); }), each.Failure);
  }
  EXPECT_EQ(folder.Read("Prin1234.mdb"), store);
  EXPECT_EQ(folder.Read("Prin2.mdb"), "");

  const int files = folder.Count();
  for (int n = 0;; ++n) {
    SCOPED_TRACE("change " + std::to_string(n));
    disk.FailAfter(n, SQLITE_FULL, 1000);
    const int number = NumberOf([&] { CreateDatabase(folder.Path("Prin4.mdb"), ""); });
    if (number == 0) break;
    EXPECT_EQ(number, 61);
    EXPECT_EQ(folder.Count(), files) << "a half store stays behind";
  }
}

TEST_F(StoreTest, RefusesWhatIsNoStoreAndLeavesItAsItWas) {
  db.ShareCommits();
  AddNumbered(2000);
  db.Close();
  std::filesystem::remove(path + "-journal");
  const std::string good = folder.Read("Prin1234.mdb");
  const auto with = [&](std::size_t place, std::string_view bytes) {
    return std::string(good).replace(place, bytes.size(), bytes);
  };
  const auto edited = [&](const char* sql) {
    folder.Write("Prin1234.mdb", good);
    RawStore(path).Run(sql);
    return folder.Read("Prin1234.mdb");
  };
  const struct {
    const char* What;
    std::string Bytes;
    int Failure;
  } cases[] = {
      {"good", good, 0},
      {"empty", "", 3343},
      {"text", "A text under the store's name.", 3343},
      {"header alone", good.substr(0, 100), 3049},
      {"first half", good.substr(0, good.size() / 2), 3049},
      {"no application", with(68, std::string(4, '\0')), 3343},
      {"another application", edited("PRAGMA application_id = 7"), 3343},
      {"a later layout", edited("PRAGMA user_version = 2"), 3343},
      {"no table", edited("DROP TABLE OstrelPr"), 3343},
      {"a view for the table",
       edited("ALTER TABLE OstrelPr RENAME TO x; CREATE VIEW OstrelPr AS SELECT * FROM x"), 3343},
      {"a field more", edited("ALTER TABLE OstrelPr ADD COLUMN CREW FLOAT"), 3343},
      {"a field less", edited("ALTER TABLE OstrelPr DROP COLUMN HOURS"), 3343},
      {"a field renamed", edited("ALTER TABLE OstrelPr RENAME COLUMN HOURS TO HRS"), 3343},
      {"zeros in a page", with(std::size_t{4096} * 9, std::string(4096, '\0')), 3049},
      {"a wild page link", with(std::size_t{4096} * 2 + 8, "\xFF\xFF\xFF\xFF"), 3049},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.What);
    folder.Write("Prin1234.mdb", each.Bytes);
    EXPECT_EQ(FailureOfOpening(), each.Failure);
    EXPECT_TRUE(folder.Read("Prin1234.mdb") == each.Bytes);
    EXPECT_EQ(folder.Count(), 1) << "something stays beside it";
  }
  std::filesystem::remove(path);
  EXPECT_EQ(FailureOfOpening(), 3024);
  std::filesystem::create_directory(path);
  EXPECT_EQ(FailureOfOpening(), 3024);
}

TEST_F(StoreTest, AnIndexThatHasLostLinesIsRefusedAndMadeAnew) {
  AddNumbered(3);
  db.Close();
  {
    const RawStore raw(path);
    raw.Run(
        "CREATE TABLE kept AS SELECT * FROM sqlite_schema WHERE name = 'dTime'; "
        "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name = 'dTime'");
  }
  RawStore(path).Run(
      "INSERT INTO OstrelPr(EMPL_NUMB, ETIME) VALUES(4, 38152); PRAGMA writable_schema = ON; "
      "INSERT INTO sqlite_schema SELECT * FROM kept");
  RawStore(path).Run("DROP TABLE kept");
  EXPECT_EQ(FailureOfOpening(), 3049);
  db = OpenDatabase(path, StoreCheck::AllButIndex);
  db.DeleteIndex("OstrelPr", "dTime");
  db.Execute("Create Index dTime on [OstrelPr] (ETIME DESC)");
  Reopen();
  EXPECT_EQ(Walk(Open("Select * from [OstrelPr] where INT(ETIME) = #06/14/04# order by ETIME")),
            "4,1,2,3");
}

TEST_F(StoreTest, DeletedFileIsNotServedFromMemory) {
  AddNumbered(1);
  std::filesystem::remove(path);
  EXPECT_EQ(FailureOfOpening(), 3024);
  const Database old = db;
  Create();
  EXPECT_EQ(Walk(OpenDatabase(path).OpenRecordset("OstrelPr")), "");
}

TEST_F(StoreTest, LockedByAnotherProgram) {
  AddNumbered(2);
  Recordset lines = Open();
  lines.Edit();
  lines["HOURS"] = 1;
  {
    const RawStore outside(path);
    outside.Run("BEGIN IMMEDIATE");
    EXPECT_EQ(Walk(Open()), "1,2") << "others may still read";
    EXPECT_EQ(NumberOf([&] { lines.Update(); }), 3260);
    EXPECT_EQ(Place(lines), "1*");
    db.ShareCommits();
    EXPECT_EQ(NumberOf([&] { lines.Update(); }), 3260);
    db.CommitShared();
    EXPECT_EQ(NumberOf([&] { Open("Select * from [OstrelPr]").Delete(); }), 3218);
    EXPECT_EQ(NumberOf([&] { db.DeleteIndex("OstrelPr", "dTime"); }), 3218);
    outside.Run("COMMIT; BEGIN EXCLUSIVE");
    EXPECT_EQ(NumberOf([&] { Open("Select * from [OstrelPr]"); }), 3260);
    lines.CancelUpdate();
    db.Close();
    EXPECT_EQ(NumberOf([&] { lines.SetBookmark(1); }), 3260);
    lines.Close();
    EXPECT_EQ(FailureOfOpening(), 3260);
  }
  EXPECT_EQ(FailureOfOpening(), 0);
}

TEST_F(StoreTest, WriteProtectedStoreIsReadAndTakesNoLine) {
  AddNumbered(2);
  db.Close();
  disk.ReadOnly = true;
  db = OpenDatabase(path);
  Recordset lines = Open();
  EXPECT_EQ(Walk(lines), "1,2");
  lines.AddNew();
  lines[0] = 3;
  EXPECT_EQ(NumberOf([&] { lines.Update(); }), 3027);
  lines.MoveFirst();
  lines.Edit();
  EXPECT_EQ(NumberOf([&] { lines.Update(); }), 3027);
  EXPECT_EQ(NumberOf([&] { lines.Delete(); }), 3027);
  EXPECT_EQ(NumberOf([&] { db.DeleteIndex("OstrelPr", "dTime"); }), 3027);
  EXPECT_EQ(NumberOf([&] { CreateDatabase(folder.Path("Prin2.mdb"), ""); }), 75);
}

/// A command that rewrites lines in one shared commit on a failing disk. It keeps a model of what
/// each call said it had written.
class FaultTest : public StoreTest {
 protected:
  FaultTest() {
    AddNumbered(6);
    db.Close();
    start = folder.Read("Prin1234.mdb");
  }

  using Model = std::map<int, double>;  // hours by employee

  void Begin() {
    db.Close();
    std::filesystem::remove(path + "-journal");
    folder.Write("Prin1234.mdb", start);
    db = OpenDatabase(path);
    model = {{1, 0}, {2, 0}, {3, 0}, {4, 0}, {5, 0}, {6, 0}};
    failures = 0;
  }

  /// Retries a failed call, or goes on behind it.
  void Statement(
      bool retry, const std::function<void()>& call, const std::function<void()>& written = [] {}) {
    for (int attempt = 0; attempt < 2; ++attempt) {
      const int number = NumberOf(call);
      if (number == 0) return written();
      EXPECT_TRUE(number == 3026 || number == 3043 || (number == 3020 && !retry)) << number;
      ++failures;
      if (!retry) return;
    }
    ADD_FAILURE() << "the retry failed too";
  }

  void RunCommand(bool retry, bool share) {
    Recordset lines = Open("Select * from [OstrelPr]");
    const auto edit = [&] { Statement(retry, [&] { lines.Edit(); }); };
    const auto update = [&](const Fields& fields, int number, double hours) {
      Statement(
          retry, [&] { Assign(lines, fields), lines.Update(); }, [&] { model[number] = hours; });
    };
    const auto settle = [&](const std::function<void()>& call) {
      const bool failed = NumberOf(call) != 0;
      EXPECT_FALSE(failed && retry) << "all was written again, so there is nothing to report";
      failures += failed ? 1 : 0;
    };
    if (share) db.ShareCommits();
    for (int number = 1; number <= 6; ++number, lines.MoveNext()) {
      edit();
      update({{"HOURS", number}}, number, number);
      if (number == 3) settle([] { SettleAllShared(); });
    }
    for (int number = 7; number <= 9; ++number) {
      lines.AddNew();
      update({{"EMPL_NUMB", number}, {"HOURS", 0}}, number, 0);
    }
    lines.SetPosition(4);
    edit();
    update({{"MEMO", "x"}, {"HOURS", 8}}, 5, 8);
    lines.MoveFirst();
    Statement(
        retry, [&] { lines.Delete(); }, [&] { model.erase(1); });
    settle([&] { db.CommitShared(); });
  }

  static Model Stored(const Database& store) {
    Model stored;
    for (Recordset rows = store.OpenRecordset("OstrelPr"); !rows.Eof(); rows.MoveNext()) {
      EXPECT_TRUE(stored.emplace(rows[0].Get().ToLong(), rows["HOURS"].Get().ToDouble()).second);
    }
    return stored;
  }

  /// What is on the disk now, as the next run finds it if this one is killed here.
  Model AfterKill() const {
    const std::string left = folder.Path("Left.mdb");
    folder.Write("Left.mdb", folder.Read("Prin1234.mdb"));
    folder.Write("Left.mdb-journal", folder.Read("Prin1234.mdb-journal"));
    return Stored(OpenDatabase(left));
  }

  /// The command with its n-th change of a file failing, for every n that it gets to.
  void Sweep(int code, int failuresInARow, bool retry, bool share = true) {
    for (int n = 0;; ++n) {
      SCOPED_TRACE("change " + std::to_string(n));
      Begin();
      disk.FailAfter(n, code, failuresInARow);
      RunCommand(retry, share);
      const bool reached = failures > 0 || !disk.Armed();
      disk.Heal();
      db.CommitShared();
      EXPECT_EQ(Stored(db), model);
      Reopen();
      EXPECT_EQ(Stored(db), model);
      db.Close();
      if (HasFailure() || !reached) break;
    }
  }

  std::string start;
  Model model;
  int failures = 0;
};

TEST_F(FaultTest, OneFailureAndARetryEndAsIfNothingHadHappened) {
  for (const int code : {SQLITE_FULL, SQLITE_IOERR_WRITE}) Sweep(code, 1, true);
}

TEST_F(FaultTest, RetriedLineIsNotStoredTwice) { Sweep(SQLITE_IOERR_FSYNC, 1, true, false); }

TEST_F(FaultTest, SavedLinesSurviveTheEndOfTheProgram) {
  for (int n = 0;; ++n) {
    SCOPED_TRACE("change " + std::to_string(n));
    Begin();
    Recordset lines = Open();
    disk.FailAfter(n, SQLITE_IOERR_WRITE, 1 << 30);
    for (int number = 7; number <= 9; ++number) {
      lines.AddNew();
      Assign(lines, {{"EMPL_NUMB", number}, {"HOURS", 0}});
      Statement(
          false, [&] { lines.Update(); }, [&] { model[number] = 0; });
    }
    disk.Heal();
    const Model left = AfterKill();
    EXPECT_TRUE(std::includes(left.begin(), left.end(), model.begin(), model.end()));
    if (HasFailure() || failures == 0) break;
  }
}

TEST_F(FaultTest, WhatWasWrittenStaysWrittenOnADiskThatStaysFull) {
  for (const int code : {SQLITE_FULL, SQLITE_IOERR_WRITE}) Sweep(code, 1 << 30, false);
}

}  // namespace
}  // namespace ostrel
