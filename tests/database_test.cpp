#include "platform/database/database.h"

#include <gtest/gtest.h>
#include <functional>

#include "platform/database/row_change.h"
#include "platform/database/sqlite_connection.h"
#include "platform/database/store_fields.h"
#include "platform/desktop/desktop.h"
#include "support/ask_sqlite.h"
#include "support/failure_number.h"
#include "support/no_waiting.h"
#include "support/scripted_desktop.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

using Fields = std::vector<std::pair<const char*, Value>>;

void Add(Recordset lines, const Fields& fields) {
  lines.AddNew();
  for (const auto& [name, value] : fields) lines[name] = value;
  lines.Update();
}

/// The first field of each row, "130,12"; a "-" for a Null.
std::string Walk(Recordset rows) {
  std::string text;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const Value value = rows[0].Get();
    text += text.empty() ? "" : ",";
    text += value.IsNull() ? "-" : value.ToText();
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
  const EditMode mode = rows.Mode();
  return text + (mode == EditMode::Add ? "+" : mode == EditMode::InProgress ? "*" : "");
}

class StoreTest : public ::testing::Test {
 protected:
  StoreTest() { Create(); }

  void Create() {
    db = CreateDatabase(path, ";LANGID=0x0809;CP=1252;COUNTRY=0");
    db.AppendTable(LineTable());
    MakeIndex();
  }
  void MakeIndex() const { db.Execute("Create Index dTime on [OstrelPr] (ETIME DESC)"); }
  Recordset Open(std::string_view sql = "OstrelPr") const {
    return db.OpenRecordset(sql, RecordsetType::Dynaset);
  }

  /// Numbers 1 to `count`, all entered for one moment, hours 0.
  void AddNumbered(int count) const {
    for (int i = 1; i <= count; ++i) {
      Add(Open(), {{"EMPL_NUMB", i}, {"ETIME", "06/14/04 8:00 am"}, {"HOURS", 0}});
    }
  }

  TempFolder folder;
  std::string path = folder.Path("Prin1234.mdb");
  Database db;
};

TEST_F(StoreTest, AnswersTheProgramsQuestionsAndNoOthers) {
  const auto lines = Open("[OstrelPr]");
  Add(lines, {{"EMPL_NUMB", 130}, {"ETIME", "06/14/04 7:00 am"}, {"EVENT_TYPE", "I"}});
  Add(lines, {{"EMPL_NUMB", 12}, {"ETIME", "06/14/04 7:00 am"}, {"EVENT_TYPE", "I"}});
  Add(lines, {{"EMPL_NUMB", 131}, {"ETIME", "06/14/04 8:00 am"}, {"RATE", -9}, {"QUANTITY", 0.5}});
  Add(lines, {{"EMPL_NUMB", 12.1}, {"ETIME", "06/14/04 11:59:59 pm"}, {"EVENT_TYPE", "O"}});
  Add(lines, {{"EMPL_NUMB", 13}, {"ETIME", "06/15/04"}, {"EVENT_TYPE", "X"}});
  Add(lines, {{"EMPL_NUMB", 14}, {"MEMO", "or 1=1 -- ;#6/14#'"}, {"QUANTITY", 2}});
  Add(lines, {{"ETIME", "06/13/04 7:00 am"}, {"EVENT_TYPE", "I"}, {"QUAN_DESC", "TON"}});
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"130,12,131,12.1,13,14,-", {" [ostrelpr] ; ", "Select * from [OstrelPr]"}},
      {"13,12.1,131,12,130,-,14", {"Order by ETIME Desc"}},
      {"14,-,130,12,131,12.1,13", {"select * from ostrelpr ORDER BY [etime] asc"}},
      {"12,130",
       {"where INT(ETIME) = #06/14/04# and EVENT_TYPE = 'I' order by EMPL_NUMB, ETIME Desc"}},
      {"130,12,131,12.1", {"where INT(ETIME) = #6-14-2004#"}},
      {"12.1,13", {"where ETIME > #06/14/04 8:00 am#"}},
      {"130", {"where EMPL_NUMB =  130 ;", "where EMPL_NUMB = +130.0"}},
      {"12.1", {"where EMPL_NUMB = 12.1"}},
      {"131", {"where RATE = - 9 and QUANTITY>.4 and QUANTITY<5.1e-1"}},
      {"130,12,13", {"where EMPL_NUMB in (12,13 , 130)"}},
      {"131,12.1,14", {"where EMPL_NUMB Not in (12,13,130)"}},
      {"14", {"where MEMO = 'or 1=1 -- ;#6/14#''' and EMPL_NUMB>0"}},
      {"", {"where EVENT_TYPE='i'", "where INT(ETIME) = #8:30 am#"}},
      {"X,O,I,-", {"SELECT Distinct EVENT_TYPE FROM [OstrelPr] Order by EVENT_TYPE Desc"}},
      {"2.5", {"SELECT Sum(QUANTITY) as X from [OstrelPr]"}},
      {"-", {"SELECT Sum(HOURS) as X from OstrelPr", "SELECT Last(RATE) as X from OstrelPr"}},
      {"5", {"SELECT Count(EVENT_TYPE) as X from [OstrelPr]"}},
      {"12.1", {"SELECT LAST(EMPL_NUMB) as X from [OstrelPr] where INT(ETIME) = #06/14/04#"}},
      {"!3075",
       {"Select", "where", "where RATE = 12a", "where RATE = 1,5", "where RATE = 1 or RATE = 2",
        "where RATE >= 1", "where RATE in ()", "where RATE in (Select RATE from OstrelPr)",
        "where EVENT_TYPE = 'I", "where INT(ETIME) = #13/14/04#", "where INT(ETIME) > #06/14/04#",
        "where abs(RATE) = 1", "Order by RATE; Delete from OstrelPr", "Delete from OstrelPr",
        "Select Distinct EMPL_NUMB from OstrelPr Order by ETIME",
        "Select load_extension(RATE) as X from OstrelPr"}},
      {"!3078", {"Select * from sqlite_master", "Prms1234"}},
      {"!3061", {"where CREW = 1", "Order by rowid", "Select Distinct CREW from [OstrelPr]"}},
      {"!3421",
       {"where EMPL_NUMB = '12'", "where EVENT_TYPE = 1", "where INT(RATE) = #06/14/04#",
        "Select Sum(MEMO) as X from [OstrelPr]"}}};
  for (const auto& [answer, questions] : cases) {
    for (std::string sql : questions) {
      SCOPED_TRACE(sql);
      if (sql[0] == 'w' || sql[0] == 'O') sql.insert(0, "Select * from [OstrelPr] ");
      EXPECT_EQ(OutcomeOf([&] { return Walk(Open(sql)); }), answer);
    }
  }
  EXPECT_EQ(NumberOf([&] { db.Execute("Delete from [OstrelPr]"); }), 3075);
  // The wall behind the dialect's reader.
  SqliteConnection connection(path);
  for (const char* sql :
       {"DELETE FROM OstrelPr", "UPDATE OstrelPr SET RATE = 1", "DROP TABLE OstrelPr",
        "SELECT * FROM sqlite_schema", "SELECT randomblob(RATE) FROM OstrelPr"}) {
    EXPECT_EQ(NumberOf([&] { connection.Question(sql); }), 3075) << sql;
  }
  EXPECT_EQ(Walk(Open()), cases[0].first);
}

TEST_F(StoreTest, AfterEveryCallTheCurrentRowIsKnown) {
  EXPECT_EQ(Place(Open()), "BofEof");
  AddNumbered(2);
  Recordset rows = Open("Select * from [OstrelPr] Order by ETIME Desc");
  EXPECT_EQ(Place(rows), "2");
  const struct {
    const char* Call;
    std::function<void()> Do;
    const char* Place;
    int Failure = 0;
  } steps[] = {
      {"AddNew", [&] { rows.AddNew(); }, "2+"},
      {"assign", [&] { rows["EMPL_NUMB"] = 3; }, "2+"},
      {"Update", [&] { rows.Update(); }, "2"},
      {"MovePrevious", [&] { rows.MovePrevious(); }, "Bof"},
      {"MoveLast", [&] { rows.MoveLast(); }, "3"},
      {"MoveNext", [&] { rows.MoveNext(); }, "Eof"},
      {"MoveNext again", [&] { rows.MoveNext(); }, "Eof", 3021},
      {"MovePrevious", [&] { rows.MovePrevious(); }, "3"},
      {"MovePrevious", [&] { rows.MovePrevious(); }, "1"},
      {"assign", [&] { rows["HOURS"] = 1; }, "1", 3020},
      {"Edit", [&] { rows.Edit(); }, "1*"},
      {"Delete", [&] { rows.Delete(); }, "none"},
      {"MoveNext", [&] { rows.MoveNext(); }, "3"},
      {"no field", [&] { rows["CREW"].Get(); }, "3", 3265},
  };
  for (const auto& step : steps) {
    SCOPED_TRACE(std::to_string(&step - steps) + " " + step.Call);
    EXPECT_EQ(NumberOf(step.Do), step.Failure);
    EXPECT_EQ(Place(rows), step.Place);
  }
  rows.Close();
  EXPECT_EQ(NumberOf([&] { rows.Eof(); }), 91);
  EXPECT_EQ(NumberOf([] { Database().OpenRecordset("OstrelPr"); }), 91);
  EXPECT_EQ(NumberOf([&] { Open("SELECT Max(RATE) as X from [OstrelPr]").Edit(); }), 3251);
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
  view.CancelUpdate();
  EXPECT_EQ(NumberOf([&] { view["EMPL_NUMB"].Get(); }), 3167);
  view.MoveFirst();
  EXPECT_EQ(NumberOf([&] { view.SetBookmark(third); }), 3167);
  EXPECT_EQ(NumberOf([&] { mine.SetBookmark(third); }), 3167);
  EXPECT_EQ(Place(view), "1");
  EXPECT_EQ(Walk(mine), "1,2,4");
}

TEST_F(StoreTest, FieldsTakeWhatTheirTypeTakes) {
  const struct {
    const char* Field;
    Value Given, Kept;
    int Failure = 0;
  } cases[] = {
      {"EMPL_NUMB", " 130 ", 130.0F},
      {"EMPL_NUMB", 1e39, {}, 6},
      {"EMPL_NUMB", "12a", {}, 3421},
      {"EMPL_NUMB", Value(), Value()},
      {"ETIME", "06/14/04 8:00 am", Moment{38152 + 8.0 / 24}},
      {"EVENT_TYPE", "IO", {}, 3163},
      {"QUAN_DESC", "\u00C4\u00D6\u00DC\u00C4\u00D6", "\u00C4\u00D6\u00DC\u00C4\u00D6"},
      {"QUAN_DESC", "BOXES?", {}, 3163},
      {"MEMO", std::string("a\0b'\n", 5), std::string("a\0b'\n", 5)},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(std::string(each.Field) + " " + testing::PrintToString(&each - cases));
    Recordset lines = Open();
    lines.AddNew();
    ASSERT_EQ(NumberOf([&] { lines[each.Field] = each.Given; }), each.Failure);
    if (each.Failure != 0) continue;
    lines.Update();
    lines = Open();
    lines.MoveLast();
    EXPECT_EQ(lines[each.Field].Get(), each.Kept);
  }
}

TEST_F(StoreTest, PathsToOneFileSeeEachOtherAndOthersWhatABoxWaitsOn) {
  const Database lookup = OpenDatabase(folder.Path("PRIN1234.MDB"));
  const auto count = [&] { return AskSqlite(path, "SELECT count(*) FROM OstrelPr"); };
  db.ShareCommits();
  AddNumbered(2);
  std::filesystem::create_hard_link(path, folder.Path("other name"));
  for (const Database& each : {lookup, OpenDatabase(folder.Path("other name"))}) {
    EXPECT_EQ(Walk(each.OpenRecordset("SELECT Count(EMPL_NUMB) as X from [OstrelPr]")), "2");
  }
  EXPECT_EQ(count(), "0") << "still gathered";
  ScriptedDesktop desktop;
  desktop.WillAnswer(BoxAnswer::Ok, [&] { EXPECT_EQ(count(), "2"); });
  MsgBox("Go on?");
  AddNumbered(1);
  desktop.WillType("", [&] { EXPECT_EQ(count(), "3"); });
  InputBox("?", "", "");

  const Recordset view = lookup.OpenRecordset("Select * from [OstrelPr]");
  EXPECT_EQ(view["HOURS"].Get(), Value(0.0));
  Recordset lines = Open();
  lines.Edit();
  lines["HOURS"] = 4.5;
  lines.Update();
  EXPECT_EQ(view["HOURS"].Get(), Value(4.5));
  db.CommitShared();
  AskSqlite(path, "UPDATE OstrelPr SET HOURS = 5");
  lines.Edit();
  EXPECT_EQ(lines["HOURS"].Get(), Value(5.0));
}

TEST_F(StoreTest, DayAndTotalsOfAnEmployeeStayTrueThroughEveryChange) {
  const std::string where = " where INT(ETIME) = #06/14/04# and EMPL_NUMB = 2";
  const auto rows = [&] {
    std::string text;
    Recordset day = Open("Select * from [OstrelPr]" + where + " order by ETIME");
    for (; !day.Eof(); day.MoveNext()) text += std::to_string(day.GetBookmark()) + " ";
    return text + "= " + Walk(Open("Select Sum(HOURS) as X from [OstrelPr]" + where)) + " in " +
           Walk(Open("Select Count(EMPL_NUMB) as X from [OstrelPr]" + where));
  };
  AddNumbered(3);
  Recordset lines = Open();
  const auto add = [&](const Value& time) { Add(lines, {{"EMPL_NUMB", 2}, {"ETIME", time}}); };
  const auto edit = [&](const char* field, int number) {
    lines.Edit();
    lines[field] = number;
    lines.Update();
  };
  const struct {
    std::function<void()> Change;
    const char* Rows;
  } steps[] = {
      {[] {}, "2 = 0 in 1"},
      {[&] { add("6/14/04 8:00 am"); }, "2 4 = 0 in 2"},
      {[&] { add("6/14/04"); }, "5 2 4 = 0 in 3"},
      {[&] { edit("EMPL_NUMB", 2); }, "5 1 2 4 = 0 in 4"},
      {[&] { edit("HOURS", 9); }, "5 1 2 4 = 9 in 4"},
      {[&] { lines.Delete(); }, "5 2 4 = 0 in 3"},
      {[&] { AskSqlite(path, "UPDATE OstrelPr SET EMPL_NUMB = 2, HOURS = 5 WHERE rowid = 3"); },
       "5 2 3 4 = 5 in 4"},
      {[&] { db.ShareCommits(); }, "5 2 3 4 = 5 in 4"},
      {[&] { add(38152.9); }, "5 2 3 4 6 = 5 in 5"},
  };
  for (const auto& step : steps) {
    EXPECT_EQ(rows(), rows());
    step.Change();
    for (int time = 0; time < 3; ++time) EXPECT_EQ(rows(), step.Rows);
  }
}

TEST_F(StoreTest, CreatesNoStoreOverAnything) {
  folder.Write("Prin2.mdb", "");
  std::filesystem::create_symlink("unmounted/x", folder.Path("Prin4.mdb"));
  const std::pair<const char*, int> cases[] = {
      {"PRIN1234.mdb", 58}, {"PRIN4.mdb", 58}, {"Prin2.mdb", 58}, {"no/Prin3.mdb", 76}};
  for (const auto& [name, failure] : cases) {
    EXPECT_EQ(NumberOf([&, n = name] { CreateDatabase(folder.Path(n), ""); }), failure) << name;
  }
  EXPECT_EQ(folder.Read("Prin2.mdb"), "");
}

TEST_F(StoreTest, RefusesWhatIsNoStoreAndLeavesItAsItWas) {
  db.Close();
  std::filesystem::remove(path + "-journal");
  const std::string good = folder.Read("Prin1234.mdb");
  for (const char* sql :
       {"PRAGMA application_id = 7", "PRAGMA user_version = 2",
        "ALTER TABLE OstrelPr RENAME TO x; CREATE VIEW OstrelPr AS SELECT * FROM x",
        "ALTER TABLE OstrelPr ADD COLUMN CREW FLOAT", "ALTER TABLE OstrelPr DROP COLUMN MEMO",
        "ALTER TABLE OstrelPr RENAME COLUMN HOURS TO HRS"}) {
    SCOPED_TRACE(sql);
    folder.Write("Prin1234.mdb", good);
    ASSERT_EQ(AskSqlite(path, sql), "");
    const std::string before = folder.Contents();
    EXPECT_EQ(NumberOf([&] { OpenDatabase(path); }), 3343);
    EXPECT_TRUE(folder.Contents() == before) << "not as it was";
  }
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  EXPECT_EQ(NumberOf([&] { OpenDatabase(path); }), 3024);
}

TEST_F(StoreTest, AnIndexThatHasLostLinesIsRefusedAndMadeAnew) {
  AddNumbered(3);
  db.Close();
  AskSqlite(path,
            "CREATE TABLE kept AS SELECT * FROM sqlite_schema WHERE name = 'dTime'; "
            "PRAGMA writable_schema = ON; DELETE FROM sqlite_schema WHERE name = 'dTime'");
  AskSqlite(path,
            "INSERT INTO OstrelPr(EMPL_NUMB, ETIME) VALUES(4, 38152); PRAGMA writable_schema = ON; "
            "INSERT INTO sqlite_schema SELECT * FROM kept");
  ASSERT_EQ(AskSqlite(path, "DROP TABLE kept"), "");
  EXPECT_EQ(NumberOf([&] { OpenDatabase(path); }), 3049);
  db = OpenDatabase(path, StoreCheck::AllButIndex);
  db.DeleteIndex("ostrelpr", "DTIME");
  EXPECT_EQ(NumberOf([&] { db.DeleteIndex("OstrelPr", "dTime"); }), 3265);
  EXPECT_EQ(NumberOf([&] { db.Execute("Create Index X on [OstrelPr] (CREW)"); }), 3265);
  EXPECT_EQ(Walk(Open("Select * from [OstrelPr] Order by ETIME Desc")), "3,2,1,4") << "no index";
  MakeIndex();
  db.ShareCommits();
  Add(Open(), {{"EMPL_NUMB", 5}, {"ETIME", "06/14/04 8:00 am"}});
  db.Close();
  db = OpenDatabase(path);
  EXPECT_EQ(Walk(Open("Select * from [OstrelPr] where INT(ETIME) = #06/14/04# order by ETIME")),
            "4,1,2,3,5");
  EXPECT_EQ(AskSqlite(path, "SELECT count(*) FROM OstrelPr WHERE typeof(ETIME) = 'real'"), "5");
}

TEST_F(StoreTest, DeletedFileIsNotServedFromMemory) {
  AddNumbered(1);
  std::filesystem::remove(path);
  EXPECT_EQ(NumberOf([&] { OpenDatabase(path); }), 3024);
  const Database old = db;
  Create();
  EXPECT_EQ(Walk(OpenDatabase(path).OpenRecordset("OstrelPr")), "");
}

TEST_F(StoreTest, LockedByAnotherProgramItCanBeRead) {
  AddNumbered(2);
  db.Close();
  const NoWaiting noWaiting;
  db = OpenDatabase(path);
  Recordset lines = Open();
  SqliteConnection outside(path);
  outside.Run("BEGIN IMMEDIATE", StoreStep::Read);
  EXPECT_EQ(Walk(Open()), "1,2");
  EXPECT_EQ(NumberOf([&] { Add(Open(), {{"EMPL_NUMB", 3}}); }), 3260);
  EXPECT_EQ(NumberOf([&] { lines.Delete(); }), 3218);
  EXPECT_EQ(NumberOf([&] { db.DeleteIndex("OstrelPr", "dTime"); }), 3218);
  lines.Close();
  db.Close();
}

TEST(ChangeLog, KeepsOneChangeOfEachRow) {
  using Kind = RowChange::Kind;
  ChangeLog log;
  for (const RowChange& change : {RowChange{Kind::Insert, 7, 0b0101, {"a", "b"}},
                                  {Kind::Update, 8, 0b1, {"lost"}},
                                  {Kind::Update, 7, 0b0110, {"c", "d"}},
                                  {Kind::Delete, 8, 0, {}}}) {
    log.Add(change);
  }
  const std::vector<RowChange> kept = log.Take();
  ASSERT_EQ(kept.size(), 2U);
  EXPECT_EQ(kept[0].What, Kind::Insert);
  EXPECT_EQ(kept[0].Fields, 0b0111U);
  EXPECT_EQ(kept[0].Values, (std::vector<Value>{"a", "c", "d"}));
  EXPECT_EQ(kept[1].What, Kind::Delete);
  EXPECT_TRUE(log.Empty());
}

}  // namespace
}  // namespace ostrel
