// Pages as PDF and through a real printer queue, read back with poppler's tools.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>

#include "frame/app_state.h"
#include "platform/qt/printer_trouble.h"
#include "platform/qt/qt_printing.h"
#include "platform/qt/qt_text.h"
#include "scan_main/scan_main.h"
#include "support/full_disk.h"
#include "support/payroll.h"
#include "window/qt_application.h"

namespace ostrel {

namespace {

using testing::HasSubstr;

/// What a command writes, the empty text when it fails.
std::string OutputOf(const char* program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  const bool well = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
                    process.exitCode() == 0;
  return well ? process.readAllStandardOutput().toStdString() : "";
}

/// Wherever it is: the printing system's programs lie in folders that only root has in its path.
QString FindProgram(const char* name) {
  const QString found = QStandardPaths::findExecutable(name);
  return found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin"}) : found;
}

class PrintingDesktop : public ScriptedDesktop {
 public:
  std::unique_ptr<PrintJob> StartPrintJob(const PrintJobRequest& request) override {
    return StartQtPrintJob(request);
  }
};

class PaperOffice : public testing::Test {
 protected:
  static void SetUpTestSuite() { TheApplication(); }

  /// No test prints on the developer's printer: the queues are those behind `socket`, if any.
  void Start(const std::string& socket) {
    qputenv("CUPS_SERVER", socket.c_str());
    qputenv("HOME", Office.App().c_str());
    Office.Start();
    txtComments.Text = "Crew#2";
  }

  void AddLines(int count) {
    std::string lines;
    for (int i = 1; i <= count; ++i) lines += std::to_string(i) + " P 8:00 am 10 0.5|";
    Office.AddLine(lines);
  }

  /// Chooses Print Displayed Lines and answers the closing message.
  void Print() {
    Desktop.WillAnswer(BoxAnswer::Ok);
    Office.Choose(mnuPrintLines);
  }

  Payroll Office;
  PrintingDesktop Desktop;
};

/// The printer. With a file named "empty" beside its documents it is out of paper and stops.
constexpr const char* kBackend = R"(#!/bin/sh
folder=${DEVICE_URI#folder:}
if [ -e "$folder/empty" ]; then echo "STATE: +media-empty-error" >&2; exit 4; fi
echo "STATE: -media-empty-error" >&2
cp "$6" "$folder/document-$1.part" && mv "$folder/document-$1.part" "$folder/document-$1.pdf"
)";

bool ComesTrue(const std::function<bool()>& condition) {
  const QDeadlineTimer deadline(20000);
  while (!condition()) {
    if (deadline.hasExpired()) return false;
  }
  return true;
}

class CupsTest : public PaperOffice {
 protected:
  TempFolder Queue;  ///< of the server and its printer

  void SetUp() override {
    for (const char* program : {"cupsd", "lpadmin", "lpstat", "cupsenable", "pdftotext"}) {
      if (FindProgram(program).isEmpty()) GTEST_SKIP() << program << " is not installed";
    }
    if (!StartServer()) GTEST_SKIP() << "no print server can run here";
    Start(Socket());
  }
  void TearDown() override {
    server_.kill();
    server_.waitForFinished();
  }

  std::string Socket() const { return Queue.Path("sock"); }
  std::string Document(int job) const {
    return Queue.Path("document-" + std::to_string(job) + ".pdf");
  }
  bool Printed(int job) const {
    return ComesTrue([&] { return std::filesystem::exists(Document(job)); });
  }
  std::string StateOfPrinter() const { return Run("lpstat", {"-p", "Office"}); }
  std::string Run(const char* program, const QStringList& arguments) const {
    return OutputOf(FindProgram(program).toUtf8(), QStringList{"-h", ToQt(Socket())} + arguments);
  }

 private:
  bool StartServer() {
    qputenv("LC_ALL", "C.UTF-8");
    for (const char* folder : {"etc", "cache", "run", "spool/tmp", "lib/backend"}) {
      std::filesystem::create_directories(Queue.Path(folder));
    }
    std::filesystem::create_symlink("/usr/lib/cups/daemon", Queue.Path("lib/daemon"));
    // Readable by its owner alone, or the server would run it as somebody who may write nowhere.
    std::filesystem::permissions(Queue.Write("lib/backend/folder", kBackend),
                                 std::filesystem::perms::owner_all);
    Queue.Write("cupsd.conf",
                "Listen " + Socket() +
                    "\nBrowsing No\nWebInterface No\nDefaultAuthType None\n"
                    "<Location />\nAllow all\n</Location>\n"
                    "<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n");
    const std::string base = Queue.Path() + "/";
    Queue.Write("files.conf", "ServerRoot " + base + "etc\nCacheDir " + base + "cache\nStateDir " +
                                  base + "run\nRequestRoot " + base + "spool\nTempDir " + base +
                                  "spool/tmp\nServerBin " + base + "lib\nErrorLog " + base +
                                  "error.log\nAccessLog /dev/null\nPageLog /dev/null\n");
    server_.start(FindProgram("cupsd"), {"-f", "-c", ToQt(Queue.Path("cupsd.conf")), "-s",
                                         ToQt(Queue.Path("files.conf"))});
    const auto runs = [&] { return Run("lpstat", {"-r"}).find("is running") != std::string::npos; };
    return server_.waitForStarted() &&
           ComesTrue([&] { return runs() || server_.waitForFinished(0); }) && AddPrinter();
  }
  bool AddPrinter() {
    Run("lpadmin", {"-p", "Office", "-E", "-v", ToQt("folder:" + Queue.Path())});
    Run("lpadmin", {"-d", "Office"});
    return StateOfPrinter().find("idle") != std::string::npos;
  }

  QProcess server_;
};

TEST_F(CupsTest, PrintsReportsAnEmptyPrinterAndPrintsAgain) {
  AddLines(60);
  Print();
  ASSERT_TRUE(Printed(1));
  EXPECT_EQ(Desktop.TakeShown(), "[i] Ostrel Payroll | 11/18/04 report printed. | Ok -> Ok");
  const std::string text = OutputOf("pdftotext", {"-layout", ToQt(Document(1)), "-"});
  EXPECT_THAT(text,
              AllOf(HasSubstr("** 11/18/04, Thursday **"), HasSubstr("\f1234, Sample Ranch")));

  Queue.Write("empty", "");
  Print();  // the queue takes it, the printer stops
  ASSERT_TRUE(ComesTrue([&] { return StateOfPrinter().find("disabled") != std::string::npos; }));
  Desktop.TakeShown();
  Desktop.WillAnswer(BoxAnswer::Retry, [&] {
    std::filesystem::remove(Queue.Path("empty"));
    Run("cupsenable", {"Office"});
    EXPECT_TRUE(Printed(2));
    EXPECT_TRUE(ComesTrue([&] { return StateOfPrinter().find("idle") != std::string::npos; }));
  });
  Print();
  EXPECT_THAT(Desktop.TakeShown(), HasSubstr("Printer error: 'Office' is out of paper. (Err#482)"));
  EXPECT_TRUE(Printed(3));
  EXPECT_FALSE(std::filesystem::exists(Office.App("Printed")));
}

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

TEST_F(PrintTest, EveryTextStaysWithinItsColumnAndThePaper) {
  constexpr int kEdges[] = {360,  975,  1770, 3420, 4260, 4905,  5685, 6270,
                            6975, 7860, 8715, 9270, 9825, 10425, 10920};
  AddFullLine("WORCESTERSHIRE-", "A memo of 20 letters", 12345678.91);
  AddFullLine("AB", "Ok", -9);
  AddLines(60);
  Print();
  const std::string boxes = Text({"-bbox"});
  EXPECT_THAT(boxes, HasSubstr("<page width=\"612.000000\" height=\"792.000000\""));
  std::istringstream words(boxes);
  double lowest = 0;
  for (std::string word; std::getline(words, word);) {
    double left = 0, top = 0, right = 0, bottom = 0;  // points
    const int read =
        std::sscanf(word.c_str(), " <word xMin=\"%lf\" yMin=\"%lf\" xMax=\"%lf\" yMax=\"%lf\"",
                    &left, &top, &right, &bottom);
    if (read != 4) continue;
    EXPECT_GE(top, 35) << word;
    lowest = std::max(lowest, bottom);
    if (top < 720 * kPointsPerTwip + 18) continue;  // the header
    const auto* const edge =
        std::upper_bound(std::begin(kEdges), std::end(kEdges), (left + 0.1) / kPointsPerTwip);
    ASSERT_TRUE(edge != std::begin(kEdges) && edge != std::end(kEdges)) << word;
    EXPECT_LE(right - 0.1, *edge * kPointsPerTwip) << word;
  }
  EXPECT_GT(lowest, 735);
  EXPECT_LT(lowest, 757);
  const std::string text = Text({"-raw"});
  for (const char* whole : {"99999", "WORCESTERSHIRE-", "12345678.91", "Std Rate", "Gross/Hr"}) {
    EXPECT_THAT(text, HasSubstr(whole));
  }
}

TEST_F(PrintTest, TextCanBeSearchedInAnyLanguageAndIsCutWhereThereIsNoRoom) {
  const std::string names[] = {"STRAUß-MÜLL Åse", "ŁĘCKA Zoë", "GRIFFIN office", "ΕΛΛΗΝ", "ИВАНОВ"};
  for (const std::string& name : names) AddFullLine(name, "Añejo", 1);
  AddFullLine("\xD7\x90\xD7\x91 \xF0\x9F\x98\x80\t\x02", "\n", 1e30);
  txtComments.Text = "Crew#2 “Señor” " + std::string(1 << 20, 'W') + "\n\t\x01";
  AddLines(60);
  Print();
  const std::string text = Text();
  EXPECT_THAT(text, AllOf(HasSubstr("\f1234, Sample Ranch"), HasSubstr("Crew#2 “Señor” WWW")));
  EXPECT_THAT(text, HasSubstr("WWW…"));
  for (const std::string& name : names) EXPECT_THAT(text, HasSubstr(name));
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
      {{"media-empty-report,toner-low-error", "true", "4"}, ""},
      {{"offline-report,cover-open-error", "true", "5"}, "has its cover open"},
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
