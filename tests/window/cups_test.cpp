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
using testing::Not;

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
  void SetUp() override {
    for (const char* program : {"cupsd", "lpadmin", "lpstat", "cupsenable", "pdftotext"}) {
      if (FindProgram(program).isEmpty()) GTEST_SKIP() << program << " is not installed";
    }
    if (!StartServer())
      GTEST_SKIP() << "no print server can run here: " << Server_.Read("error.log");
    Start(Socket());
  }
  void TearDown() override {
    server_.kill();
    server_.waitForFinished();
  }

  std::string Socket() const { return Server_.Path("sock"); }
  std::string Document(int job) const {
    return Server_.Path("document-" + std::to_string(job) + ".pdf");
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
      std::filesystem::create_directories(Server_.Path(folder));
    }
    // Readable by its owner alone, or the server would run it as somebody who may write nowhere.
    std::filesystem::permissions(Server_.Write("lib/backend/folder", kBackend),
                                 std::filesystem::perms::owner_all);
    Server_.Write("cupsd.conf",
                  "Listen " + Socket() +
                      "\nBrowsing No\nWebInterface No\nDefaultAuthType None\n"
                      "<Location />\nAllow all\n</Location>\n"
                      "<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n");
    const std::string base = Server_.Path() + "/";
    Server_.Write("files.conf", "ServerRoot " + base + "etc\nCacheDir " + base +
                                    "cache\nStateDir " + base + "run\nRequestRoot " + base +
                                    "spool\nTempDir " + base + "spool/tmp\nServerBin " + base +
                                    "lib\nErrorLog " + base +
                                    "error.log\nAccessLog /dev/null\nPageLog /dev/null\n");
    server_.start(FindProgram("cupsd"), {"-f", "-c", ToQt(Server_.Path("cupsd.conf")), "-s",
                                         ToQt(Server_.Path("files.conf"))});
    return ComesTrue([&] {
             return server_.state() != QProcess::Running || !Run("lpstat", {"-r"}).empty();
           }) &&
           server_.state() == QProcess::Running && AddPrinter();
  }
  bool AddPrinter() {
    Run("lpadmin", {"-p", "Office", "-E", "-v", ToQt("folder:" + Server_.Path())});
    Run("lpadmin", {"-d", "Office"});
    return StateOfPrinter().find("idle") != std::string::npos;
  }

  QProcess server_;

 protected:
  TempFolder Server_;
};

TEST_F(CupsTest, PrintsReportsAnEmptyPrinterAndPrintsAgain) {
  AddLines(60);
  Print();
  ASSERT_TRUE(Printed(1));
  EXPECT_EQ(Desktop.TakeShown(), "[i] Ostrel Payroll | 11/18/04 report printed. | Ok -> Ok");
  const std::string text = OutputOf("pdftotext", {"-layout", ToQt(Document(1)), "-"});
  EXPECT_THAT(text, AllOf(HasSubstr("** 11/18/04, Thursday **"), HasSubstr("\fEmpl#")));

  Server_.Write("empty", "");
  Print();  // the queue takes it, the printer stops
  ASSERT_TRUE(ComesTrue([&] { return StateOfPrinter().find("disabled") != std::string::npos; }));
  Desktop.TakeShown();
  Desktop.WillAnswer(BoxAnswer::Retry, [&] {
    std::filesystem::remove(Server_.Path("empty"));
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
