// The program's own form on the real window, driven by keys.

#include <gtest/gtest.h>

#include <QTest>

#include "entry/scan_main.h"
#include "platform/qt/form_view.h"
#include "support/payroll.h"
#include "window/qt_application.h"

namespace ostrel {
namespace {

class ScanMainTest : public testing::Test {
 protected:
  void Open(bool timeClock) {
    TheApplication();
    payroll.Start(timeClock);
    window = std::make_unique<FormView>(ScanMain, edge, 1.0);
    ScanMain.Changed();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    txtToday.SetFocus();  // the window follows from here on
    txtInput[kEmplBox].SetFocus();
  }

  void Press(int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QWidget* focused = window->focusWidget();
    QTest::keyClick(focused != nullptr ? focused : window.get(), static_cast<Qt::Key>(key), with);
    payroll.Desktop.RunPosted();
  }
  void Type(const char* keys) {
    for (; *keys != '\0'; ++keys) {
      if (*keys == '\r') {
        Press(Qt::Key_Return);
      } else {
        QTest::keyClick(window->focusWidget(), *keys);
        payroll.Desktop.RunPosted();
      }
    }
  }
  static std::string Focused() { return ScanMain.ActiveControl()->Name; }

  Payroll payroll;
  EventEdge edge;
  std::unique_ptr<FormView> window;
};

TEST_F(ScanMainTest, ADayByKeys) {
  Open(true);
  Type("130\r\r");
  payroll.SetClock("11/18/04 11:00 am");
  Press(Qt::Key_P, Qt::AltModifier);
  EXPECT_EQ(Focused(), "txtInput(0)");
  payroll.Desktop.WillType(".5");
  Type("130\r100\r\r");
  payroll.SetClock("11/18/04 12:30 pm");
  Press(Qt::Key_O, Qt::AltModifier);  // the event button goes before the menu
  Type("\r\r");
  EXPECT_EQ(payroll.Lines(), "130 I 10:42 am|130 P 11:00 am 100x0.5=50|130 O 12:30 pm");
  payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  Press(Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(ReadWholeFile(payroll.Disk("Pck-1234.asc"))
                  .ends_with("130,100,0.5,\"0\",0,0,\"11/18/04\",0,1.8,\"P\",\"0\"\r\n"));
}

TEST_F(ScanMainTest, KeysWalkTheRow) {
  const struct {
    bool timeClock;
    const char* focus;
  } cases[] = {{true,
                "txtInput(0) txtInput(1) cmdSave txtInput(2) txtInput(3) txtInput(4) txtInput(5) "
                "txtInput(6) txtInput(7) txtInput(8) txtInput(0) "},
               {false,
                "txtInput(0) txtInput(1) txtInput(2) cmdSave txtInput(3) txtInput(4) txtInput(5) "
                "txtInput(6) txtInput(7) txtInput(8) txtInput(0) "}};
  for (const auto& test : cases) {
    Open(test.timeClock);
    if (test.timeClock) Press(Qt::Key_P, Qt::AltModifier);
    std::string walked;
    for (int i = 0; i < 11; ++i) {
      walked += Focused() + " ";
      // Enter on the button would save.
      Press(i % 3 == 1 || Focused() == "cmdSave" ? Qt::Key_Tab : Qt::Key_Return);
    }
    EXPECT_EQ(walked, test.focus);
    window.reset();
  }
}

TEST_F(ScanMainTest, ShortcutsBelongToTheMenusInATextBox) {
  Open(true);
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(txtToday.Text.Get(), "All");
  Press(Qt::Key_E, Qt::ControlModifier);
  EXPECT_TRUE(mnuEmplOrder.Checked);
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(mnuAutosetTime.Checked);
  EXPECT_TRUE(lblClockOff.Visible);
  Press(Qt::Key_J, Qt::ControlModifier);
  EXPECT_EQ(Focused(), "txtInput(3)");
  payroll.Desktop.WillAnswer(BoxAnswer::Ok);
  Press(Qt::Key_D, Qt::ControlModifier);
  EXPECT_NE(payroll.Desktop.TakeShown().find("To select a line to delete"), std::string::npos);
  Type("lbs");
  EXPECT_EQ(txtInput[kQuanDescBox].Text.Get(), "LBS");
}

TEST_F(ScanMainTest, FastTypingLosesNothing) {
  Open(true);
  for (int i = 0; i < 40; ++i) Type("130\r\r");
  EXPECT_EQ(lblLineCt.Caption.Get(), "40 lines");
  EXPECT_EQ(Focused(), "txtInput(0)");
}

}  // namespace
}  // namespace ostrel
