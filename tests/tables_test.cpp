#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "platform/database/database.h"
#include "platform/database/dbf_file.h"
#include "platform/database/dbf_values.h"
#include "platform/values/numbers.h"
#include "platform/values/text.h"
#include "support/dbf_builder.h"
#include "support/failure_number.h"
#include "support/temp_folder.h"

namespace ostrel {
namespace {

using namespace std::string_literals;

std::string Rendered(const Value& value) {
  if (value.IsNull()) return "~";
  if (value.KindOf() == Value::Kind::Text) return "'" + value.Characters() + "'";
  if (value.KindOf() == Value::Kind::Date) return "@" + GeneralText(value.NumberOrZero());
  return value.ToText();
}

/// All rows of a table, or the words of its refusal.
std::string Parsed(const std::string& file) {
  std::string text;
  try {
    const DbfTable table = ParseDbf(file, "/t/X.dbf");
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
      for (std::size_t field = 0; field < table.Fields().size(); ++field) {
        text += (field > 0 ? "," : row > 0 ? "|" : "") + Rendered(table.At(row, field));
      }
    }
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number, 3274);
    EXPECT_TRUE(ContainsText(failure.Text, "/t/X.dbf")) << failure.Text;
    text = failure.Text;
  }
  return text;
}

/// The first field of all rows, by walking.
std::string Walked(Recordset rows) {
  std::string text;
  for (; !rows.Eof(); rows.MoveNext()) {
    text += (text.empty() ? "" : " ") + Rendered(rows[0].Get());
  }
  return text;
}

DbfBuilder Crew() {
  return DbfBuilder()
      .Field("EMPL_NUMB", 'N', 5)
      .Field("SORT_NAME", 'C', 15)
      .Field("CREW", 'N', 2)
      .Field("YTD_GROSS", 'N', 9, 2)
      .Field("YTD_NET", 'F', 9, 2)
      .Field("HIRED", 'D', 8)
      .Row({"130", "RUIZ ANA", "2", "1234.50", "900.25", "20010302"})
      .Row({"7", "ALVAREZ MARIA", "1", "88.00", "80.00", "20020101"})
      .Row({"12", "GONE PEDRO", "1", "500.00", "400.00", ""}, '*')
      .Row({"102", "IBARRA JOSE", "", "", "", ""})
      .Row({"", "NO NUMBER", "2", "*********", "1.00", "20011301"})
      .Row({"7", "SECOND SEVEN", "12", "0.00", "0.00", "20040614"});
}

class TableFolderTest : public testing::Test {
 protected:
  TableFolderTest() { Files.Write("PRMS1234.Dbf", Crew().Bytes()); }

  Database Open(bool readOnly = false) const {
    return OpenTableFolder(Files.Path(), false, readOnly, "FoxPro 2.5;");
  }
  TempFolder Files;
};

TEST(Tables, ValuesOfFields) {
  const struct {
    const char* Expected;
    char Type;
    std::vector<std::string> Raw;
  } cases[] = {
      {"12", 'N', {"   12", "12   ", "+12", "12\0\0"s, "1.2E+1"}},
      {"-0.5", 'F', {"-0.50", " -.5"}},
      {"~", 'N', {"  ", "**", "0x10", "1,50", "12a", "1 2", "+-5", "-", "nan", "1e999"}},
      {"@38152", 'D', {"20040614"}},
      {"~", 'D', {"20040230", "2004 614", "        "}},
      {"True", 'L', {"y", "T"}},
      {"~", 'L', {"?"}},
      {"' RUIZ'", 'C', {" RUIZ  ", " RUIZ\0\0"s}},
      {"-2", 'I', {"\xFE\xFF\xFF\xFF"}},
      {"~", 'I', {"\1\0"s}},
      {"1.2345", 'Y', {"\x39\x30\0\0\0\0\0\0"s}},
      {"-2.5", 'B', {"\0\0\0\0\0\0\x04\xC0"s}},
      {"~", 'B', {"\0\0\0\0\0\0\xF0\x7F"s, "0000000123"}},  // infinity; the memo of an older kind
      {"@39339.5", 'T', {"\x56\x73\x25\0\0\x2E\x93\x02"s}},
      {"~", 'T', {"\0\0\0\0\0\0\0\0"s}},
      {"~", 'M', {"         3"}},
  };
  for (const auto& test : cases) {
    for (const std::string& raw : test.Raw) {
      EXPECT_EQ(Rendered(DbfValue(test.Type, raw, CodePageOf(3))), test.Expected)
          << test.Type << " " << raw;
    }
  }
}

TEST(Tables, CodePages) {
  const std::tuple<std::uint8_t, const char*, const char*> cases[] = {
      {0x00, "PE\321A \x80", "PEÑA €"},
      {0x01, "PE\245A", "PEÑA"},
      {0x02, "\xB5", "Á"},
      {0x64, "\x9D", "Ł"},
      {0xC8, "\243\363d\237", "Łódź"},
      {0xC9, "\310\342", "Ив"},
      {0x65, "\210\242", "Ив"},
      {0x03, "\x81", "\xC2\x81"},
      {0xF0, "Ñ", "Ñ"}};
  for (const auto& [language, bytes, text] : cases) {
    EXPECT_EQ(CodePageOf(language).ToUtf8(bytes), text);
  }
}

TEST(Tables, RowsAsTheFileHasThem) {
  EXPECT_EQ(Parsed(Crew().Bytes()),
            "130,'RUIZ ANA',2,1234.5,900.25,@36952|7,'ALVAREZ MARIA',1,88,80,@37257|"
            "102,'IBARRA JOSE',~,~,~,~|~,'NO NUMBER',2,~,1,~|7,'SECOND SEVEN',12,0,0,@38152");

  DbfBuilder visual;  // bits: NAME part filled, NAME null, HOURS null
  visual.Version = 0x32;
  visual.Field("NAME", 'V', 5, 0, 2).Field("ID", 'I', 4).Field("HOURS", 'N', 4, 1, 2);
  visual.Field("_NullFlags", '0', 1, 0, 5);
  visual.Row({"ABCDE", "\1\0\0\0"s, "1.5", "\0"s}).Row({"AB  \2", "\2\0\0\0"s, "2.5", "\1"});
  visual.Row({"     ", "\3\0\0\0"s, "3.5", "\6"});
  EXPECT_EQ(Parsed(visual.Bytes()), "'ABCDE',1,1.5|'AB',2,2.5|~,3,~");

  DbfBuilder wide;  // the decimals of a text are the high byte of its length
  wide.Field("NOTE", 'C', 44, 1).Field("N", 'N', 2);
  std::string file = wide.Row({std::string(44, 'x'), "5"}).Bytes();
  file.insert(wide.HeaderLength() + 1, 256, 'x');
  DbfBuilder::Put(file, 10, 2, 303);
  EXPECT_EQ(Parsed(file), "'" + std::string(300, 'x') + "',5");
}

TEST(Tables, AreReadWholeOrRefusedForAReason) {
  DbfBuilder table;
  table.Field("ID", 'N', 3).Field("NAME", 'C', 4);
  const std::string good = table.Row({"1", "ANNA"}).Row({"2", "BERT"}).Row({"3", "CARL"}).Bytes();
  const auto with = [&](std::size_t at, char byte) {
    return std::string(good).replace(at, 1, 1, byte);
  };
  const char* const all = "1,'ANNA'|2,'BERT'|3,'CARL'";
  const std::pair<std::string, std::string> cases[] = {
      {with(4, '\0'), all},
      {good.substr(0, good.size() - 1), all},  // the end mark
      {good + std::string(512, '\0'), all},
      {good.substr(0, good.size() - 3), "1,'ANNA'|2,'BERT'|3,''"},
      {with(4, '\4'), "X.dbf holds 3 records of the 4"},
      {"", "X.dbf is empty"},
      {"ID,NAME,CREW,YTD_GROSS,YTD_NET\r\n1,A,2,0,0\r\n", "X.dbf is no dBase table"},
      {good.substr(0, 60), "cut off in its header"},
      {with(0, '\x04'), "dBase 7"},
      {with(15, '\1'), "X.dbf is encrypted"},
      {with(10, '\x32'), "its fields take"},
      {with(32, '\0'), "a field without a name"},
      {with(8, '\x60'), "no mark at the end of its fields"},
      {with(8, '\x62'), "begin at byte 98, but something stands before"},
      {with(43, 'I'), "a field ID of no type"},
      {with(97, '!'), "damaged record, number 1"},
  };
  for (const auto& [file, expected] : cases) {
    const std::string found = Parsed(file);
    const bool read = expected[0] == '1';
    EXPECT_TRUE(read ? found == expected : ContainsText(found, expected))
        << expected << ": " << found;
  }
  EXPECT_EQ(NumberOf([] { ReadDbf("/proc/self/mem"); }), 3275);
}

TEST_F(TableFolderTest, FindsNamesInAnyCaseAndKeepsNoHandle) {
  Files.Write("glen1234.DBF", "rubbish");
  const auto handles = [] {
    const std::filesystem::directory_iterator open("/proc/self/fd");
    return std::distance(begin(open), end(open));
  };
  const auto before = handles();
  const Database tables = Open();
  const Recordset employees = tables.OpenRecordset("prms1234", RecordsetType::Table);
  EXPECT_EQ(NumberOf([&] { tables.OpenRecordset("Glen1234"); }), 3274);
  EXPECT_EQ(NumberOf([&] { tables.OpenRecordset("Glod1234"); }), 3078);
  EXPECT_EQ(handles(), before);
  Files.Write("PRMS1234.Dbf", DbfBuilder().Field("EMPL_NUMB", 'N', 5).Row({"9"}).Bytes());
  EXPECT_EQ(Walked(employees), "130 7 102 ~ 7") << "what was read stays";
  EXPECT_EQ(Walked(tables.OpenRecordset("Prms1234")), "9") << "what is opened is read anew";
  EXPECT_EQ(NumberOf([&] { OpenTableFolder(Files.Path("none"), false, false, "FoxPro;"); }), 76);
  EXPECT_EQ(NumberOf([&] { OpenTableFolder(Files.Path(), false, false, "Paradox;"); }), 3275);
}

TEST_F(TableFolderTest, SeeksInTheOrderOfTheKey) {
  Recordset employees = Open().OpenRecordset("Prms1234", RecordsetType::Table);
  EXPECT_EQ(NumberOf([&] { employees.Seek("=", 7); }), 3019);
  EXPECT_EQ(NumberOf([&] { employees.SetIndex("dTime"); }), 3265);
  employees.SetIndex("PrimaryIndex");
  EXPECT_EQ(Walked(employees), "~ 7 7 102 130");

  const std::tuple<const char*, Value, const char*> cases[] = {
      {">=", 1, "ALVAREZ MARIA"},  {"=", 130.0F, "RUIZ ANA"}, {"=", 7, "ALVAREZ MARIA"},
      {"=", "102", "IBARRA JOSE"}, {">=", 103, "RUIZ ANA"},   {"=", 12, "!3021"},
      {"=", 102.5, "!3021"},       {">=", 131, "!3021"}};
  for (const auto& [comparison, key, name] : cases) {
    employees.Seek(comparison, key);
    EXPECT_EQ(OutcomeOf([&] { return employees["sort_name"].Get().ToText(); }), name);
    EXPECT_EQ(employees.NoMatch(), *name == '!');
  }
  EXPECT_EQ(NumberOf([&] { employees.Seek("=", "x"); }), 13);
  EXPECT_EQ(NumberOf([&] { employees.Seek("<", 1); }), 5);
  employees.Seek("=", 7);
  employees.MoveNext();
  EXPECT_EQ(employees["SORT_NAME"].Get(), Value("SECOND SEVEN")) << "equal keys in file order";
  EXPECT_EQ(NumberOf([&] { employees.Edit(); }), 3027);
}

TEST_F(TableFolderTest, AnswersTheLookups) {
  const std::pair<const char*, const char*> cases[] = {
      {"SELECT Distinct CREW FROM Prms1234  where CREW > 0 Order by CREW", "1 2 12"},
      {"SELECT Distinct EMPL_NUMB FROM Prms1234  where CREW =2 Order by EMPL_NUMB", "~ 130"},
      {"SELECT Distinct EMPL_NUMB FROM Prms1234 where CREW in (1,12) Order by EMPL_NUMB", "7"},
      {"SELECT Sum(YTD_GROSS) as X from Prms1234 Where CREW < 3", "1322.5"},
      {"SELECT Max(SORT_NAME) as X from Prms1234 Where SORT_NAME < 's'", "'RUIZ ANA'"},
      {"SELECT Last(SORT_NAME) as X from Prms1234 Where EMPL_NUMB = 7", "'SECOND SEVEN'"},
      {"SELECT LAST(CREW) as X from Prms1234 Where INT(HIRED) = #03/02/01#", "2"},
      {"Select * from Prms1234 Order by CREW Desc, EMPL_NUMB", "7 ~ 130 7 102"},
      {"SELECT Distinct WAGE FROM Prms1234 Order by WAGE", "!3061"},
      {"SELECT Sum(SORT_NAME) as X from Prms1234", "!3421"},
  };
  for (const auto& [sql, answer] : cases) {
    EXPECT_EQ(OutcomeOf([&, q = sql] { return Walked(Open().OpenRecordset(q)); }), answer) << sql;
  }
}

TEST_F(TableFolderTest, AnUpdateChangesOnlyItsFields) {
  std::string expected = Crew().Bytes();
  const std::size_t first = Crew().HeaderLength();
  for (std::size_t record = 0; record < 6; ++record) {  // the deleted one too
    expected.replace(first + record * 49 + 23, 18, "     0.00     0.00");
  }
  Open().Execute("Update Prms1234 set YTD_GROSS=0, YTD_NET=0");
  const std::pair<const char*, int> refusals[] = {
      {"Update Prms1234 set YTD_GROSS=1, YTD_FIT=0", 3061},
      {"Update Prms1234 set SORT_NAME=1", 3421},
      {"Update Prms1234 set CREW=100", 6},
      {"Create Index dTime on [Prms1234] (CREW DESC)", 3251}};
  for (const auto& [sql, number] : refusals) {
    EXPECT_EQ(NumberOf([&, action = sql] { Open().Execute(action); }), number) << sql;
  }
  EXPECT_EQ(NumberOf([&] { Open(true).Execute("Update Prms1234 set CREW=0"); }), 3027);
  EXPECT_EQ(Files.Contents(), "PRMS1234.Dbf=" + expected + "|");

  DbfBuilder binary;
  binary.Version = 0x30;
  binary.Field("A", 'I', 4).Field("B", 'Y', 8).Field("C", 'B', 8).Field("D", 'N', 3, 1);
  binary.Row({std::string(4, '\7'), std::string(8, '\7'), std::string(8, '\7'), "9.9"});
  Files.Write("Glen1234.dbf", binary.Bytes());
  Open().Execute("Update Glen1234 set a=-3, b=-1.25, c=0.5, d=0");
  EXPECT_EQ(Parsed(Files.Read("Glen1234.dbf")), "-3,-1.25,0.5,0");
}

TEST_F(TableFolderTest, AZeroFindsItsPlaceInFieldsOfEveryType) {
  DbfBuilder table;
  table.Version = 0x30;
  table.Field("A", 'C', 5).Field("B", 'N', 2, 2).Field("C", 'D', 8).Field("D", 'L', 1);
  table.Field("E", 'M', 10).Field("F", 'M', 4).Field("G", 'T', 8).Field("H", 'F', 5, 1);
  const std::vector<std::string> row{"99.50",      "99",       "20040614",         "T",
                                     "0000000012", "\1\2\3\4", "\1\2\3\4\5\6\7\7", "99.50"};
  const std::string good = table.Row(row).Row(row, '*').Bytes();
  // Behind the mark of the end what is left of a larger table, cut off in its last field.
  const std::string left = table.Row(row).Bytes().substr(good.size(), 41);
  Files.Write("Glen1234.dbf", good + left);
  Open().Execute("Update Glen1234 set a=0, b=0, c=0, d=0, e=0, f=0, g=0, h=0");
  const std::string zero = "0     0" + std::string(19, ' ') + std::string(12, '\0');
  EXPECT_EQ(Files.Read("Glen1234.dbf").substr(table.HeaderLength()),
            " " + zero + "  0.0*" + zero + "  0.0\x1A" + zero + "  0");
}

}  // namespace
}  // namespace ostrel
