// The program's own form on the real window, driven by keys and clicks.

#include "platform/qt/form_view.h"

#include <gtest/gtest.h>

#include <QInputMethodEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <map>

#include "frame/app_state.h"
#include "platform/failure.h"
#include "platform/qt/grid_view.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_text.h"
#include "support/payroll.h"
#include "window/qt_application.h"

namespace ostrel {
namespace {

/// What routines post goes to the edge, as on a real screen.
class WindowDesktop : public ScriptedDesktop {
 public:
  explicit WindowDesktop(EventEdge& edge) : edge_(edge) {}
  void Post(std::function<void()> action) override { edge_.Post(std::move(action)); }

 private:
  EventEdge& edge_;
};

class FormViewTest : public testing::Test {
 protected:
  void Open(bool timeClock = true, double factor = 1) {
    TheApplication();
    Office.Start(timeClock);
    Window = std::make_unique<FormView>(ScanMain, Edge, factor);
    Edge.Run([] { ScanMain.Changed(); });
    Window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  }

  /// With lines of the employees from 100 on, in their order; the first is paid by the hour.
  void OpenWithLines(int count) {
    Open();
    PrinDb.ShareCommits();
    for (int i = 0; i < count; ++i) {
      Office.AddLine(std::to_string(100 + i) + " P 8:00 am 10 " + (i == 0 ? "-9" : "6"));
    }
    PrinDb.CommitShared();
    Edge.Run(mnuEmplOrder.Click);
  }

  /// Through the window, as a keyboard does: shortcuts and access keys have their chance.
  void Press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(Window->windowHandle(), key, held);
  }
  void Ctrl(char letter) { Press(static_cast<Qt::Key>(letter), Qt::ControlModifier); }
  void Alt(char letter) { Press(static_cast<Qt::Key>(letter), Qt::AltModifier); }
  void Type(const char* keys) {  // as Payroll::Keys
    const std::map<char, Qt::Key> named = {{'\r', Qt::Key_Return},    {'\t', Qt::Key_Tab},
                                           {'\b', Qt::Key_Backspace}, {'\x1b', Qt::Key_Escape},
                                           {'<', Qt::Key_Left},       {'>', Qt::Key_Right}};
    for (; *keys != '\0'; ++keys) {
      const auto key = named.find(*keys);
      if (key != named.end()) {
        Press(key->second);
      } else {
        QTest::keyClick(Window->windowHandle(), *keys);
      }
    }
  }
  void Click(const Control& control, QPoint at = {4, 4}) {
    QTest::mouseClick(&Window->WidgetOf(control), Qt::LeftButton, {}, at);
  }
  void Focus(Control& control) {
    Edge.Run([&] { control.SetFocus(); });
  }
  static std::string Focused() { return ScanMain.ActiveControl()->Name; }

  GridView& Lines() { return static_cast<GridView&>(Window->WidgetOf(TDBGrid1)); }
  /// Clicks into a cell, or on the record box in front of the line.
  void ClickCell(int line, const char* column) {
    const GridGeometry geometry = Lines().Geometry();
    const QRect row = geometry.Line(line);
    QPoint at(geometry.RecordBoxRight / 2, row.center().y());
    if (*column != '\0') {
      const int index = geometry.IndexOf(TDBGrid1.ColumnNumber(column));
      at = geometry.Cell(row, geometry.Columns[static_cast<std::size_t>(index)]).center();
    }
    QTest::mouseClick(Lines().viewport(), Qt::LeftButton, {}, at);
  }
  static std::string CurrentCell() { return TDBGrid1.CellText(TDBGrid1.Col); }

  Payroll Office;
  EventEdge Edge;
  WindowDesktop Desktop{Edge};
  std::unique_ptr<FormView> Window;
};

TEST_F(FormViewTest, ADayByKeys) {
  Open();
  Type("130\r\r");
  Office.SetClock("11/18/04 11:00 am");
  Alt('P');
  Desktop.Expect("[input] Piecework Rate not set*-> .5", [&] { Type("130\r100\r\r"); });
  Office.SetClock("11/18/04 12:30 pm");
  Alt('O');  // the event button goes before the menu
  Type("\r\r");
  EXPECT_EQ(Office.Lines(), "130 I 10:42 am|130 P 11:00 am 100x0.5=50|130 O 12:30 pm");
  Desktop.Expect("[i]*lines have successfully been written.*-> Ok", [&] { Ctrl('W'); });
  EXPECT_TRUE(Office.Folder.Read("disk/Pck-1234.asc")
                  .ends_with("130,100,0.5,\"0\",0,0,\"11/18/04\",0,1.8,\"P\",\"0\"\r\n"));
}

TEST_F(FormViewTest, KeysWalkTheRow) {
  const struct {
    bool timeClock;
    int start;  // box, or -1 for the button
    const char* keys;
    int end;
  } cases[] = {
      {true, 0, "\r", 1},   {true, 1, "\r", -1},  {true, 1, "\t", -1}, {true, -1, "\x1b", 3},
      {true, -1, "\t", 2},  {true, 2, "\r", 3},   {true, 3, "\r", 4},  {true, 4, "\r", 5},
      {true, 5, "\r", 6},   {true, 6, "\r", 7},   {true, 7, "\r", 8},  {true, 8, "\r", 0},
      {true, 8, "\t", 0},   {true, 3, "<", 2},    {true, 2, "<", -1},  {true, 3, "a>", 4},
      {true, 3, "\b>", 4},  {true, 1, "<", 0},    {false, 0, "\r", 1}, {false, 1, "\r", 2},
      {false, 2, "\r", -1}, {false, -1, "\t", 3}, {false, 3, "<", -1}, {false, 8, "\r", 0}};
  const auto at = [](int box) -> Control& {
    return box < 0 ? static_cast<Control&>(cmdSave) : txtInput[static_cast<std::size_t>(box)];
  };
  for (const bool timeClock : {true, false}) {
    Open(timeClock);
    if (timeClock) {
      Type("\r");
      EXPECT_EQ(Focused(), "cmdSave") << "a clock-in has no quantity";
      Alt('P');
    }
    for (const auto& test : cases) {
      if (test.timeClock != timeClock) continue;
      SCOPED_TRACE(std::to_string(test.start) + (timeClock ? " clock " : " plain ") + test.keys);
      Focus(at(test.start));
      Type(test.keys);
      EXPECT_EQ(Focused(), at(test.end).Name);
      EXPECT_TRUE(Window->WidgetOf(at(test.end)).hasFocus());
    }
    Window.reset();
  }
}

TEST_F(FormViewTest, TheFirstKeyReplacesTheBox) {
  const struct {
    InputBoxIndex box;
    const char* keys;
    const char* after;
    int caret;
  } cases[] = {{kQuanDescBox, "lbs", "LBS", 3}, {kQuanDescBox, "\b", "", 0},
               {kQuanDescBox, "\x1b", "", 0},   {kQuanDescBox, ">x", "OXLD", 2},
               {kQuanDescBox, ">\b", "LD", 0},  {kRateBox, ">>>s", "Std Rate", 0},
               {kMemoBox, "a b", "A B", 3},     {kMemoBox, "ab<c", "ACB", 2}};
  Open();
  const auto back = [&](const Control& box) {
    return Window->WidgetOf(box).palette().color(QPalette::Base).name();
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.keys);
    TextBox& box = txtInput[test.box];
    chkStdRate.Value = 1;  // the S key then only moves on
    Focus(txtInput[kEmplBox]);
    EXPECT_EQ(back(box), "#ffffff");
    Focus(box);
    EXPECT_EQ(back(box), "#ffff00");
    Edge.Run([&] { box.Text = "OLD"; });
    Type(test.keys);
    EXPECT_EQ(box.Text.Get(), test.after);
    EXPECT_EQ(box.SelStart, test.caret);
  }
}

/// Keys that have queued up come without a pause between them; each must find the focus that the
/// one before has moved.
TEST_F(FormViewTest, FastTypingLosesNothing) {
  Open();
  for (int i = 0; i < 40 * 5; ++i) {
    const char typed = "130\r\r"[i % 5];
    const int key = typed == '\r' ? static_cast<int>(Qt::Key_Return) : typed;
    QKeyEvent event(QEvent::KeyPress, key, {}, QChar(typed));
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
  }
  EXPECT_EQ(lblLineCt.Caption.Get(), "40 lines");
  EXPECT_EQ(Focused(), "txtInput(0)");
}

TEST_F(FormViewTest, ClicksAndAccessKeysGoToControlsBeforeMenus) {
  Open();
  Edge.Run([] { txtInput[kMemoBox].Text = "OLD"; });
  for (const int caret : {0, 3}) {  // the first click only brings the focus
    Click(txtInput[kMemoBox], {40, 8});
    EXPECT_EQ(Focused(), "txtInput(8)");
    EXPECT_EQ(txtInput[kMemoBox].SelStart, caret);
  }
  Edge.Run([] { txtInput[kEmplBox].Text = "130"; });
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {
    Focus(txtInput[kEmplBox]);
    Focus(cmdSave);
    Press(key);
  }
  Click(cmdSave);
  Alt('S');
  EXPECT_EQ(lblLineCt.Caption.Get(), "4 lines");
  Alt('H');
  EXPECT_EQ(chkStdRate.Value, 1);
  const auto option = [&](EventKind kind) {
    const bool shown = static_cast<QAbstractButton&>(Window->WidgetOf(Option1[kind])).isChecked();
    EXPECT_EQ(shown, Option1[kind].Value.Get());
    return shown;
  };
  Click(Option1[kClockOut]);
  Click(Option1[kClockOut]);
  EXPECT_TRUE(option(kClockOut) && !option(kClockIn));
  Focus(Option1[kClockOut]);
  Press(Qt::Key_Down);
  EXPECT_TRUE(option(kPiecework) && !option(kClockOut));

  Edge.Run(mnuUseTimeClock.Click);
  Alt('O');  // the buttons are hidden in the plain layout
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_TRUE(mnuUseTimeClock.Checked);
}

TEST_F(FormViewTest, ShortcutsBelongToTheMenusInATextBox) {
  Open();
  Ctrl('A');
  EXPECT_EQ(txtToday.Text.Get(), "All");
  EXPECT_EQ(txtInput[kEmplBox].SelLength, 0);
  Ctrl('E');
  EXPECT_TRUE(mnuEmplOrder.Checked);
  Ctrl('S');
  EXPECT_TRUE(!mnuAutosetTime.Checked && lblClockOff.Visible);
  Ctrl('J');
  EXPECT_EQ(Focused(), "txtInput(3)");
  Desktop.Expect("[i]*To select a line to delete*-> Ok", [&] { Ctrl('D'); });
  Edge.Run(mnuUseTimeClock.Click);
  Ctrl('S');
  EXPECT_FALSE(mnuAutosetTime.Checked) << "the entry is hidden";
}

TEST_F(FormViewTest, ABoxDisabledUnderTheFocusHandsItOnAfterTheEvent) {
  Open(false);
  Edge.Run([] {
    txtInput[0].Enabled = false;
    EXPECT_EQ(Focused(), "txtInput(0)");
  });
  EXPECT_EQ(Focused(), "txtInput(1)");
  Edge.Run([] {
    txtInput[1].Enabled = false;
    txtToday.SetFocus();
  });
  EXPECT_EQ(Focused(), "txtToday");
  EXPECT_TRUE(Window->WidgetOf(txtToday).hasFocus());
}

TEST_F(FormViewTest, CutCopyAndPasteWhereverTheFocusIs) {
  Open();
  TextBox& memo = txtInput[kMemoBox];
  const auto state = [&] { return memo.Text.Get() + "|" + Desktop.ClipboardText(); };
  Edge.Run([&] { memo.Text = "125"; });
  Focus(memo);
  Press(Qt::Key_End);
  Press(Qt::Key_Left, Qt::ShiftModifier);
  Press(Qt::Key_Left, Qt::ShiftModifier);
  Press(Qt::Key_Alt, Qt::AltModifier);
  Ctrl('C');
  EXPECT_EQ(state(), "125|25");
  Ctrl('X');
  EXPECT_EQ(state(), "1|25");
  Ctrl('V');
  Ctrl('V');
  EXPECT_EQ(state(), "12525|25");
  Alt('Q');
  EXPECT_EQ(state(), "12525|25") << "an access key that nothing answers to types nothing";
  Ctrl('X');
  EXPECT_EQ(state(), "12525|") << "nothing was selected";
  Focus(txtInput[kEmplBox]);
  Focus(cmdSave);
  Desktop.Expect("[!]*(Err#438)*-> Ignore", [&] { Ctrl('C'); });
}

TEST_F(FormViewTest, EveryBoxTakesWhateverIsPasted) {
  Open();
  TextBox& box = txtInput[kEmplBox];
  const std::string emoji = "\xF0\x9F\x98\x80", hebrew = "\xD7\xA9\xD7\x9C";
  const std::pair<std::string, std::string> cases[] = {
      {std::string(1 << 20, 'x'), std::string(1 << 20, 'x')},
      {std::string("a\0\t\r\nb", 6), "a    b"},
      {emoji + emoji, emoji + emoji},
      {hebrew, hebrew}};
  for (const auto& [pasted, kept] : cases) {
    SCOPED_TRACE(kept.substr(0, 20));
    Edge.Run([&] { box.Text = ""; });
    Desktop.SetClipboardText(pasted);
    Ctrl('V');
    EXPECT_TRUE(box.Text == kept);
    Type("9\b");
    EXPECT_TRUE(box.Text == kept);
    Window->grab();
  }
  Focus(txtInput[kMemoBox]);
  QInputMethodEvent made;  // composed text is typed character by character
  made.setCommitString(
      QString::fromUtf8("\xC3\xA9"
                        "ab"));
  QCoreApplication::sendEvent(QApplication::focusWidget(), &made);
  EXPECT_EQ(txtInput[kMemoBox].Text,
            "\xC3\xA9"
            "AB");
  EXPECT_EQ(txtInput[kMemoBox].SelStart, 3);
}

TEST_F(FormViewTest, AMessageBoxIsNoLossOfFocus) {
  Open();
  QtDesktop real(Edge);
  SetDesktop(&real);
  BoxAnswer answer = BoxAnswer::Cancel;
  int losses = 0;
  txtInput[kEmplBox].LostFocus = [&] { ++losses; };
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), "<b>1</b>\n2");
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_TRUE(box->isVisible()) << "neither button means Esc";
    QTest::keyClick(box->buttons().at(1), Qt::Key_Space);
  });
  Edge.Run([&] {
    answer = real.ShowMessageBox({"<b>1</b>\r2", BoxButtons::YesNo, BoxIcon::Question});
  });
  EXPECT_EQ(answer, BoxAnswer::No);
  EXPECT_EQ(losses, 0);
  EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  EXPECT_TRUE(Window->WidgetOf(txtInput[kEmplBox]).hasFocus());
  real.SetClipboardText("x");
  EXPECT_EQ(real.ClipboardText(), "x");
  SetDesktop(&Desktop);
}

TEST_F(FormViewTest, EndingTheProgramLeavesWithoutTheUnload) {
  Open();
  const std::string before = Office.Ini();
  cmdSave.Click = [] { throw ProgramEnded{}; };
  Click(cmdSave);
  EXPECT_TRUE(Edge.Ended());
  Click(chkStdRate);
  EXPECT_EQ(chkStdRate.Value, 0);
  EXPECT_EQ(Office.Ini(), before);
}

TEST_F(FormViewTest, GridShowsMovesAndSelects) {
  OpenWithLines(60);
  ClickCell(2, "Empl#");
  EXPECT_EQ(Focused(), "TDBGrid1");
  EXPECT_EQ(CurrentCell(), "102");
  Press(Qt::Key_Down);
  Press(Qt::Key_Right);
  EXPECT_EQ(CurrentCell(), "10");
  Press(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(TDBGrid1.CellText(0), "159");
  EXPECT_GT(Lines().FirstRow(), 0);
  Press(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(TDBGrid1.CellText(0), "100");
  EXPECT_EQ(Lines().FirstRow(), 0);
  const auto bookmark = [](std::size_t row) { return Data1.Recordset.BookmarkAt(row); };
  for (const int line : {3, 1, 5, 3}) ClickCell(line, "");
  EXPECT_EQ(TDBGrid1.SelBookmarks, (std::vector<Bookmark>{bookmark(1), bookmark(5)}));
  Edge.Run([] { Data1.Refresh(); });
  EXPECT_TRUE(TDBGrid1.SelBookmarks.empty());

  const auto steps = Window->WidgetOf(Data1).findChildren<QAbstractButton*>();
  ASSERT_EQ(steps.size(), 4);
  for (const auto& [press, row] : {std::pair(3, 59), {2, 59}, {1, 58}, {0, 0}, {1, 0}, {2, 1}}) {
    steps[press]->click();
    EXPECT_EQ(Data1.Recordset.Position(), row);
  }
}

TEST_F(FormViewTest, CellsAreEditedInPlace) {
  OpenWithLines(3);
  const std::string refused = "[!]*(Err#3421)*-> Ignore";
  ClickCell(1, "Empl#");
  Type("77");
  EXPECT_TRUE(TDBGrid1.Editing);
  Type("\r");
  EXPECT_EQ(Office.Fields("EMPL_NUMB"), "100|77|102");
  EXPECT_EQ(Data1.Mode(), EditMode::None);
  Press(Qt::Key_F2);
  Type("\b\x1b");
  EXPECT_EQ(CurrentCell(), "77");
  Type("no");
  Desktop.Expect(refused, [&] { Press(Qt::Key_Down); });
  EXPECT_EQ(CurrentCell(), "102");
  Type("8x");
  Desktop.Expect(refused, [&] { Type("\t"); });
  EXPECT_EQ(Focused(), "Option1(0)");
  EXPECT_EQ(Office.Fields("EMPL_NUMB"), "100|77|102");
  ClickCell(1, "Name");
  Type("x");
  EXPECT_FALSE(TDBGrid1.Editing) << "the column is locked";

  ClickCell(0, "Pce Quan");
  Desktop.Expect("[!]*(Err#438)*-> Ignore", [&] { Ctrl('V'); });  // no cell is being edited
  Desktop.SetClipboardText("3\n4");
  Press(Qt::Key_F2);
  Ctrl('V');
  EXPECT_EQ(TDBGrid1.EditText, "103 4");
  Desktop.Expect(refused, [&] { Alt('O'); });  // written before the focus goes
  EXPECT_TRUE(Option1[kClockOut].Value);
}

TEST_F(FormViewTest, ALetterInTheRateCellIsTheStandardRate) {
  OpenWithLines(3);
  ClickCell(2, "Rate");
  Type("-.5");
  EXPECT_TRUE(TDBGrid1.Editing);
  Type("k");  // the view is loaded anew under the editor
  EXPECT_FALSE(TDBGrid1.Editing);
  EXPECT_EQ(Focused(), "txtInput(0)");
  EXPECT_EQ(txtInput[kEmplBox].Text, "0");
  EXPECT_EQ(Office.Fields("RATE"), "-9|6|-9");
  EXPECT_EQ(Data1.Recordset.Position(), 0);
}

/// With a larger system font, too, a box stands above its column and no text is cut.
TEST_F(FormViewTest, BoxesStandAboveTheirColumnsAtEveryScale) {
  TheApplication();
  const QFont usual = QApplication::font();
  const char* const columns[] = {"Empl#", "Pce Quan", "Time", "QDesc", "Rate",
                                 "Ent#",  "Oper",     "Eqp#", "Memo"};
  for (const auto& [factor, points] :
       {std::pair(1.0, 9), {1.25, 9}, {1.5, 9}, {1.7, 9}, {2.0, 9}, {1.0, 20}, {1.5, 30}}) {
    SCOPED_TRACE(std::to_string(factor) + " " + std::to_string(points));
    QFont font = usual;
    font.setPointSize(points);
    QApplication::setFont(font);
    Open(true, factor);
    const auto left = [&](QWidget& widget, int x = 0) {
      return widget.mapTo(Window.get(), QPoint(x, 0)).x();
    };
    const auto expectAligned = [&] {
      const GridGeometry geometry = Lines().Geometry();
      for (std::size_t box = 0; box < kInputBoxCount; ++box) {
        const int column = TDBGrid1.ColumnNumber(
            box == kTimeBox && !mnuUseTimeClock.Checked ? "Hours" : columns[box]);
        const int twips = TDBGrid1.Left + TDBGrid1.ColumnLeft(column);
        const int boxTwips = Scaling::LeftInForm(&txtInput[box]);
        EXPECT_TRUE(twips <= boxTwips && boxTwips <= twips + 45) << columns[box];
        const auto index = static_cast<std::size_t>(geometry.IndexOf(column));
        EXPECT_EQ(left(Lines(), geometry.Columns[index].Left), Window->Scale().Pixels(twips));
        EXPECT_EQ(left(Window->WidgetOf(txtInput[box])), Window->Scale().Pixels(boxTwips));
      }
      EXPECT_EQ(geometry.Columns.back().Right, Lines().viewport()->width());
    };
    expectAligned();
    const Control* const withText[] = {&lblLineCt, &chkStdRate, &txtInput[kEmplBox]};
    for (const Control* control : withText) {
      const QWidget& widget = Window->WidgetOf(*control);
      EXPECT_GE(widget.height(), widget.fontMetrics().height()) << control->Name;
    }
    const QSize before = Lines().size();
    Window->resize(Window->size() + QSize(50, 80));
    QCoreApplication::processEvents();
    EXPECT_EQ(Lines().size(), before + QSize(50, 80));
    expectAligned();
    Edge.Run(mnuUseTimeClock.Click);
    Window->resize(Window->size() + QSize(1, 1));
    QCoreApplication::processEvents();
    expectAligned();
    Window.reset();
  }
  QApplication::setFont(usual);
}

TEST(Scaling, FillsMostOfTheScreenAndNeverMore) {
  const std::pair<QSize, double> cases[] = {
      {{1920, 1040}, 1.6}, {{1366, 728}, 1.1}, {{1024, 560}, 0.85}, {{300, 200}, 0.5}};
  for (const auto& [screen, factor] : cases) {
    EXPECT_NEAR(Scaling::ForScreen(screen, {11910, 8625}).Factor(), factor, 1e-9) << factor;
  }
}

}  // namespace
}  // namespace ostrel
