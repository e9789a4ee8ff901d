// Pages as PDF, read back with poppler's tools.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/resource.h>

#include <csignal>
#endif

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "frame/app_state.h"
#include "platform/qt/printer_trouble.h"
#include "window/paper_office.h"

namespace ostrel {

namespace {

using testing::HasSubstr;

constexpr double kPointsPerInch = 72, kPointsPerTwip = 0.05;

class PrintTest : public PaperOffice {
 protected:
  void SetUp() override {
    if (FindProgram("pdftotext").isEmpty()) {
      GTEST_SKIP() << "pdftotext is not installed, so nobody can read the pages back";
    }
    Start("/no/printer/here");
  }

  std::string Pdf(const char* name = "2004-11-18 Displayed lines.pdf") const {
    return Office.App(std::string("Printed/") + name);
  }
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

struct Word {
  double Left, Top, Right, Bottom;  // points
  std::string Text;
};

std::vector<Word> WordsOf(const std::string& boxes) {
  std::vector<Word> words;
  std::istringstream lines(boxes);
  for (std::string line; std::getline(lines, line);) {
    Word word;
    char text[256];
    if (std::sscanf(line.c_str(),
                    " <word xMin=\"%lf\" yMin=\"%lf\" xMax=\"%lf\" yMax=\"%lf\">%255[^<]",
                    &word.Left, &word.Top, &word.Right, &word.Bottom, text) == 5) {
      word.Text = text;
      words.push_back(word);
    }
  }
  return words;
}

TEST_F(PrintTest, EveryTextStaysWithinItsColumn) {
  constexpr int kEdges[] = {360,  975,  1770, 3420, 4260, 4905,  5685, 6270,
                            6975, 7860, 8715, 9270, 9825, 10425, 10920};
  AddFullLine("WORCESTERSHIRE-", "A memo of 20 letters", 12345678.91);
  AddFullLine("AB", "Ok", -9);
  Print();
  const std::vector<Word> words = WordsOf(Text({"-bbox"}));
  int inTable = 0;
  for (const Word& word : words) {
    if (word.Top < 720 * kPointsPerTwip + 18) continue;  // the header
    const auto edge =
        std::upper_bound(std::begin(kEdges), std::end(kEdges), (word.Left + 0.1) / kPointsPerTwip);
    ASSERT_NE(edge, std::end(kEdges)) << word.Text;
    EXPECT_LE(word.Right - 0.1, *edge * kPointsPerTwip) << word.Text;
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
  Print();
  const std::string text = Text();
  EXPECT_THAT(text, HasSubstr("1234, Sample Ranch"));
  EXPECT_THAT(text, HasSubstr("** 11/18/04, Thursday **"));
  EXPECT_THAT(text, HasSubstr("Crew#2 “Señor”"));
  for (const std::string& name : names) EXPECT_THAT(text, HasSubstr(name));
}

TEST_F(PrintTest, ALongDayPrintsHeaderAndHeadingsOnEveryPage) {
  AddLines(2000);
  Office.Choose(mnuEmplOrder);
  Print();
  std::istringstream pages(Text({"-layout"}));
  int page = 0, employee = 0;
  for (std::string text; std::getline(pages, text, '\f');) {
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    EXPECT_THAT(line,
                AllOf(HasSubstr("1234, Sample Ranch "), HasSubstr("** 11/18/04, Thursday **")))
        << "page " << page;
    while (std::getline(lines, line) && line.find("Empl#") == std::string::npos)
      EXPECT_EQ(line, "");
    while (std::getline(lines, line)) {
      if (line.empty()) continue;
      EXPECT_EQ(std::stoi(line), ++employee);
    }
    ++page;
  }
  EXPECT_EQ(page, 40);
  EXPECT_EQ(employee, 2000);
}

/// The first page as grey dots, one a point.
struct Picture {
  int Width = 0, Height = 0;
  std::string Dots;
  bool IsWhite(int left, int top, int right, int bottom) const {
    for (int y = top; y < bottom; ++y) {
      for (int x = left; x < right; ++x) {
        if (Dots[static_cast<std::size_t>(y) * static_cast<std::size_t>(Width) +
                 static_cast<std::size_t>(x)] != '\xFF')
          return false;
      }
    }
    return true;
  }
};

Picture Drawn(const std::string& pdf) {
  Picture picture;
  const std::string file =
      OutputOf("pdftoppm", {"-r", "72", "-gray", "-f", "1", "-l", "1", ToQt(pdf)});
  int header = 0;
  std::sscanf(file.c_str(), "P5 %d %d 255%n", &picture.Width, &picture.Height, &header);
  if (header > 0) picture.Dots = file.substr(static_cast<std::size_t>(header) + 1);
  return picture;
}

TEST_F(PrintTest, NothingIsDrawnInTheMargins) {
  AddLines(60);
  Print();
  const Picture page = Drawn(Pdf());
  ASSERT_EQ(page.Width, 8.5 * kPointsPerInch);
  ASSERT_EQ(page.Height, 11 * kPointsPerInch);
  ASSERT_EQ(page.Dots.size(), static_cast<std::size_t>(page.Width * page.Height));
  constexpr int kLeft = 17, kRight = 612 - 17, kTop = 35, kBottom = 792 - 35;
  EXPECT_TRUE(page.IsWhite(0, 0, kLeft, page.Height));
  EXPECT_TRUE(page.IsWhite(kRight, 0, page.Width, page.Height));
  EXPECT_TRUE(page.IsWhite(0, 0, page.Width, kTop));
  EXPECT_TRUE(page.IsWhite(0, kBottom, page.Width, page.Height));
  EXPECT_FALSE(page.IsWhite(kLeft, kTop, kRight, kTop + 20)) << "the header is missing";
  EXPECT_FALSE(page.IsWhite(kLeft, kBottom - 30, kRight, kBottom)) << "the page is not full";
}

TEST_F(PrintTest, AnEarlierPdfIsNeverOverwritten) {
  Print();
  AddLines(3);
  Print();
  EXPECT_THAT(Desktop.Shown().back(), HasSubstr("Printed/2004-11-18 Displayed lines (2).pdf)"));
  EXPECT_EQ(OutputOf("pdftotext", {ToQt(Pdf()), "-"}).find("08:00"), std::string::npos);
  EXPECT_THAT(OutputOf("pdftotext", {ToQt(Pdf("2004-11-18 Displayed lines (2).pdf")), "-"}),
              HasSubstr("08:00"));
}

TEST_F(PrintTest, TextNobodyExpectedDoesNoHarm) {
  txtComments.Text = std::string(1 << 20, 'W') + "\n\t\x01";
  AddFullLine("\xD7\x90\xD7\x91 \xF0\x9F\x98\x80\t\x02", "\n", 1e30);
  Print();
  EXPECT_THAT(Text(), HasSubstr("WWW…")) << "the header is cut, and says so";
}

#ifndef _WIN32
TEST_F(PrintTest, AFullDiskIsReportedAndLeavesNoFile) {
  AddLines(3000);
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{100000, before.rlim_max};
  Desktop.WillAnswer(BoxAnswer::Retry);
  Desktop.WillAnswer(BoxAnswer::Ignore);
  setrlimit(RLIMIT_FSIZE, &small);
  Print();
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_THAT(Desktop.Shown().front(), HasSubstr("(Err#61) in Line# 3170"));
  EXPECT_TRUE(std::filesystem::is_empty(Office.App("Printed")));
  EXPECT_EQ(TDBGrid1.Columns("Memo").Width, 990);
}
#endif

TEST(PrinterTrouble, SaysWhatAPersonCanMend) {
  const struct {
    PrinterState State;
    const char* Words;
  } cases[] = {
      {{"none", "true", "3"}, ""},
      {{"none", "true", "4"}, ""},
      {{"media-empty-error", "true", "3"}, ""},
      {{"media-low-warning,media-empty-error", "true", "4"}, "is out of paper"},
      {{"media-empty", "true", "5"}, "is out of paper"},
      {{"media-empty-report,toner-low-error", "true", "4"}, ""},
      {{"offline-report,cover-open-error", "true", "5"}, "has its cover open"},
      {{"paused", "true", "5"}, "has been stopped"},
      {{"", "true", "5"}, "has been stopped"},
      {{"none", "false", "3"}, "takes no jobs"},
      {{",,", "", ""}, ""},
  };
  for (const auto& [state, words] : cases) {
    EXPECT_EQ(TroubleOf(state), words)
        << state.Reasons << " " << state.Accepting << " " << state.State;
  }
}

}  // namespace

}  // namespace ostrel
