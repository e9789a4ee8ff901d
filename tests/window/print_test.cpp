// Pages as PDF, read back with poppler's tools.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>

#include "frame/app_state.h"
#include "platform/qt/printer_trouble.h"
#include "support/full_disk.h"
#include "window/paper_office.h"

namespace ostrel {

namespace {

using testing::HasSubstr;

constexpr double kPointsPerTwip = 0.05;

class PrintTest : public PaperOffice {
 protected:
  void SetUp() override {
    if (FindProgram("pdftotext").isEmpty()) {
      GTEST_SKIP() << "pdftotext is not installed, so nobody can read the pages back";
    }
    Start("/no/printer/here");
  }

  std::string Pdf() const { return Office.App("Printed/2004-11-18 Displayed lines.pdf"); }
  std::string Text(const QStringList& options = {}) const {
    return OutputOf("pdftotext", options + QStringList{ToQt(Pdf()), "-"});
  }

  /// A line with texts as long as the store takes them, or with the given ones.
  void AddFullLine(const std::string& name, const std::string& memo, double amount) {
    LinesRs.AddNew();
    LinesRs["EMPL_NUMB"] = 99999;
    LinesRs["SORT_NAME"] = name;
    LinesRs["ETIME"] = "11/18/04 8:00 am";
    LinesRs["EVENT_TYPE"] = "P";
    LinesRs["QUAN_DESC"] = "WWWWW";
    LinesRs["MEMO"] = memo;
    for (const char* field :
         {"QUANTITY", "RATE", "GROSS", "HOUR_GROSS", "ENTERPRISE", "OPERATION"}) {
      LinesRs[field] = amount;
    }
    LinesRs.Update();
    Data1.Refresh();
  }
};

TEST_F(PrintTest, EveryTextStaysWithinItsColumn) {
  constexpr int kEdges[] = {360,  975,  1770, 3420, 4260, 4905,  5685, 6270,
                            6975, 7860, 8715, 9270, 9825, 10425, 10920};
  AddFullLine("WORCESTERSHIRE-", "A memo of 20 letters", 12345678.91);
  AddFullLine("AB", "Ok", -9);
  Print();
  std::istringstream words(Text({"-bbox"}));
  int inTable = 0;
  for (std::string word; std::getline(words, word);) {
    double left = 0, top = 0, right = 0;  // points
    const int read = std::sscanf(word.c_str(), " <word xMin=\"%lf\" yMin=\"%lf\" xMax=\"%lf\"",
                                 &left, &top, &right);
    if (read != 3 || top < 720 * kPointsPerTwip + 18) continue;  // the header
    const auto* const edge =
        std::upper_bound(std::begin(kEdges), std::end(kEdges), (left + 0.1) / kPointsPerTwip);
    ASSERT_NE(edge, std::end(kEdges)) << word;
    EXPECT_LE(right - 0.1, *edge * kPointsPerTwip) << word;
    ++inTable;
  }
  EXPECT_GE(inTable, 40);
  const std::string text = Text({"-raw"});
  for (const char* whole :
       {"99999", "WORCESTERSHIRE-", "12345678.91", "08:00 am", "Std Rate", "Gross/Hr"}) {
    EXPECT_THAT(text, HasSubstr(whole));
  }
}

TEST_F(PrintTest, TextCanBeSearchedInAnyLanguage) {
  const std::string names[] = {"STRAUß-MÜLL Åse", "ŁĘCKA Zoë", "GRIFFIN office", "ΕΛΛΗΝ", "ИВАНОВ"};
  for (const std::string& name : names) AddFullLine(name, "Añejo", 1);
  txtComments.Text = "Crew#2 “Señor”";
  AddLines(60);
  Print();
  const std::string text = Text();
  EXPECT_THAT(text, HasSubstr("\f1234, Sample Ranch")) << "a second page";
  EXPECT_THAT(text, AllOf(HasSubstr("1234, Sample Ranch"), HasSubstr("** 11/18/04, Thursday **"),
                          HasSubstr("Crew#2 “Señor”")));
  for (const std::string& name : names) EXPECT_THAT(text, HasSubstr(name));
}

TEST_F(PrintTest, TextNobodyExpectedDoesNoHarm) {
  txtComments.Text = std::string(1 << 20, 'W') + "\n\t\x01";
  AddFullLine("\xD7\x90\xD7\x91 \xF0\x9F\x98\x80\t\x02", "\n", 1e30);
  Print();
  EXPECT_THAT(Text(), HasSubstr("WWW…")) << "the header is cut, and says so";
}

TEST_F(PrintTest, APageIsFullAndItsMarginsAreEmpty) {
  AddLines(60);
  Print();
  const struct {
    int Left, Top, Width, Height;  // points
    bool Empty;
  } strips[] = {{0, 0, 17, 792, true},   {595, 0, 17, 792, true},  {0, 0, 612, 35, true},
                {0, 757, 612, 35, true}, {17, 35, 578, 20, false}, {17, 727, 578, 30, false}};
  for (const auto& [left, top, width, height, empty] : strips) {
    QStringList options{"-r", "72", "-gray", "-f", "1", "-l", "1"};
    options << "-x" << QString::number(left) << "-y" << QString::number(top);
    options << "-W" << QString::number(width) << "-H" << QString::number(height);
    const std::string picture = OutputOf("pdftoppm", options << ToQt(Pdf()));
    const auto dots = static_cast<std::size_t>(width * height);
    ASSERT_GT(picture.size(), dots);
    const std::size_t ink = picture.find_first_not_of('\xFF', picture.size() - dots);
    EXPECT_EQ(ink == std::string::npos, empty) << left << " " << top;
  }
  EXPECT_THAT(OutputOf("pdfinfo", {ToQt(Pdf())}), HasSubstr("612 x 792 pts (letter)"));
}

TEST_F(PrintTest, AFullDiskIsReportedAndLeavesNoFile) {
  AddLines(3000);
  Desktop.WillAnswer(BoxAnswer::Retry);
  Desktop.WillAnswer(BoxAnswer::Ignore);
  {
    const FullDisk full(100'000);
    Print();
  }
  EXPECT_THAT(Desktop.Shown().front(), HasSubstr("(Err#61) in Line# 3170"));
  EXPECT_TRUE(std::filesystem::is_empty(Office.App("Printed")));
  EXPECT_EQ(TDBGrid1.Columns("Memo").Width, 990);
}

TEST(PrinterTrouble, SaysWhatAPersonCanMend) {
  const struct {
    PrinterState State;
    const char* Words;
  } cases[] = {
      {{"none", "true", "3"}, ""},
      {{"media-empty-error", "true", "3"}, ""},
      {{"media-low-warning,media-empty-error", "true", "4"}, "is out of paper"},
      {{"media-empty", "true", "5"}, "is out of paper"},
      {{"media-empty-report,toner-low-error", "true", "4"}, ""},
      {{"offline-report,cover-open-error", "true", "5"}, "has its cover open"},
      {{"paused", "true", "5"}, "has been stopped"},
      {{"", "true", "5"}, "has been stopped"},
      {{"none", "false", "3"}, "takes no jobs"},
  };
  for (const auto& [state, words] : cases) {
    EXPECT_EQ(TroubleOf(state), words)
        << state.Reasons << " " << state.Accepting << " " << state.State;
  }
}

}  // namespace

}  // namespace ostrel
