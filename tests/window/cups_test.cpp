// Pages through a real printer queue: a print server of the test's own, whose one printer puts each
// document into a folder and can be out of paper.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDeadlineTimer>
#include <filesystem>
#include <functional>
#include <string>

#include "window/paper_office.h"

namespace ostrel {

namespace {

using testing::HasSubstr;

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
    for (const char* folder : {"etc", "cache", "run", "spool", "spool/tmp", "lib", "lib/backend"}) {
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
    return server_.waitForStarted() && ComesTrue([&] {
             const bool runs = Run("lpstat", {"-r"}).find("is running") != std::string::npos;
             return runs || server_.waitForFinished(0);
           }) &&
           AddPrinter();
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

}  // namespace

}  // namespace ostrel
