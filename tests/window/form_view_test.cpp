// The program's own form on the real window, driven by keys and clicks.

#include "platform/qt/form_view.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QInputMethodEvent>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include "frame/standard_rate.h"
#include "platform/qt/grid_view.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_text.h"
#include "platform/values/failure.h"
#include "scan_main/scan_main.h"
#include "support/payroll.h"
#include "window/qt_application.h"

namespace ostrel {
namespace {

class FormViewTest : public testing::Test {
 protected:
  void Open(bool timeClock = true, double factor = 1) {
    TheApplication();
    Office.Start(timeClock);
    Office.Desktop.PostTo = [this](auto action) { Edge.Post(std::move(action)); };
    Window = std::make_unique<FormView>(ScanMain, Edge, factor);
    Edge.Run([] { ScanMain.Changed(); });
    Window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  }

  /// With lines of the employees from 100 on, in their order; the first is paid by the hour.
  void OpenWithLines(int count) {
    Open();
    std::string lines = "100 P 8:00 am 10 -9";
    for (int i = 1; i < count; ++i) lines += "|" + std::to_string(100 + i) + " P 8:00 am 10 6";
    Office.AddLine(lines);
    Edge.Run(mnuEmplOrder.Click);
  }

  /// Through the window, as a keyboard does: shortcuts and access keys have their chance.
  void Press(const char* chords) {  // "Shift+Left Ctrl+C"
    for (const QString& chord : QString(chords).split(' ')) {
      const QKeyCombination keys = QKeySequence(chord)[0];
      QTest::keyClick(Window->windowHandle(), keys.key(), keys.keyboardModifiers());
    }
  }
  /// Characters as they stand; "\r" is Enter, "\x1b" Esc, "<" Left and ">" Right arrow.
  void Type(const char* keys) {
    for (; *keys != '\0'; ++keys) {
      if (*keys == '<' || *keys == '>') {
        Press(*keys == '<' ? "Left" : "Right");
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

  EventEdge Edge;
  Payroll Office;
  ScriptedDesktop& Desktop = Office.Desktop;
  std::unique_ptr<FormView> Window;
};

TEST_F(FormViewTest, ADayByKeys) {
  Open();
  Type("130\r\r");
  Office.SetClock("11/18/04 11:00 am");
  Press("Alt+P");
  Desktop.Expect("[input] Piecework Rate not set*-> .5", [&] { Type("130\r100\r\r"); });
  Office.SetClock("11/18/04 12:30 pm");
  Press("Alt+O");  // the event button goes before the menu
  Type("\r\r");
  EXPECT_EQ(Office.Lines(), "130 I 10:42 am|130 P 11:00 am 100x0.5=50|130 O 12:30 pm");
  Desktop.Expect("[i]*1 lines have successfully been written.*-> Ok", [&] { Press("Ctrl+W"); });
}

TEST_F(FormViewTest, KeysWalkTheRow) {
  // From a box, the button S, the date D or the comment C; the keys; to. \033 is Esc.
  const char* const clock[] = {"0\r1", "1\rS",  "1\tS", "S\0333", "S\t2", "2\r3", "3\r4", "4\r5",
                               "5\r6", "6\r7",  "7\r8", "8\r0",   "8\t0", "3<2",  "2<S",  "1<0",
                               "3a>4", "3\b>4", "D\r0", "D<0",    "C\r0", "C<0"};
  const char* const plain[] = {"0\r1", "1\r2", "2\rS", "S\t3", "3<S", "8\r0"};
  const auto walk = [&](const std::string& step) {
    SCOPED_TRACE(step);
    const auto at = [](char place) -> Control& {
      if (place == 'S') return cmdSave;
      if (place == 'D') return txtToday;
      return place == 'C' ? txtComments : txtInput.at(static_cast<std::size_t>(place - '0'));
    };
    Focus(at(step.front()));
    Type(step.substr(1, step.size() - 2).c_str());
    EXPECT_EQ(Focused(), at(step.back()).Name);
    EXPECT_TRUE(Window->WidgetOf(at(step.back())).hasFocus());
  };
  Open();
  Type("\r");
  EXPECT_EQ(Focused(), "cmdSave") << "a clock-in has no quantity";
  Press("Alt+P");
  for (const char* step : clock) walk(step);
  Edge.Run(mnuUseTimeClock.Click);
  for (const char* step : plain) walk(step);
}

TEST_F(FormViewTest, TheFirstKeyReplacesTheBox) {
  const std::pair<const char*, const char*> cases[] = {
      // what becomes of "OLD", with the caret
      {"lbs", "LBS|"}, {"\b", "|"},    {"\x1b", "|"},      {">x", "OX|LD"},
      {">\b", "|LD"},  {"ab<", "A|B"}, {"a b<c", "A C|B"}, {">>>s", "OLDS|"}};
  Open();
  const auto back = [&](const Control& box) {
    return Window->WidgetOf(box).palette().color(QPalette::Base).name();
  };
  TextBox& box = txtInput[kMemoBox];
  for (const auto& [keys, after] : cases) {
    Edge.Run([&] { box.Text = "OLD"; });
    EXPECT_EQ(back(box), "#ffffff");
    Focus(box);
    EXPECT_EQ(back(box), "#ffff00");
    Type(keys);
    std::string text = box.Text;
    EXPECT_EQ(text.insert(static_cast<std::size_t>(box.SelStart), "|"), after) << keys;
    Focus(txtInput[kEmplBox]);
  }
  Focus(txtInput[kRateBox]);
  Type(">s");
  EXPECT_EQ(txtInput[kRateBox].Text.Get(), kStdRateWord);
  EXPECT_EQ(chkStdRate.Value, 1);
  Focus(txtToday);
  Type("6/14/04\r");
  EXPECT_EQ(txtToday.Text.Get() + " " + lblToday.Caption.Get(), "06/14/04 Monday");
  Focus(txtComments);
  Type("#1\r");
  EXPECT_EQ(txtComments.Text, "#1");
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
  for (const char* key : {"\r", " "}) {
    Focus(txtInput[kEmplBox]);
    Focus(cmdSave);
    Type(key);
  }
  Click(cmdSave);
  Press("Alt+S Alt+H");
  EXPECT_EQ(lblLineCt.Caption.Get(), "4 lines");
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
  Press("Down");
  EXPECT_TRUE(option(kPiecework) && !option(kClockOut));

  Edge.Run(mnuUseTimeClock.Click);
  Press("Alt+O");  // the buttons are hidden in the plain layout
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_TRUE(mnuUseTimeClock.Checked);
}

TEST_F(FormViewTest, ShortcutsBelongToTheMenusInATextBox) {
  Open();
  Press("Ctrl+A");
  EXPECT_EQ(txtToday.Text.Get(), "All");
  EXPECT_EQ(txtInput[kEmplBox].SelLength, 0);
  Press("Ctrl+E");
  EXPECT_TRUE(mnuEmplOrder.Checked);
  Press("Ctrl+S");
  EXPECT_TRUE(!mnuAutosetTime.Checked && lblClockOff.Visible);
  Press("Ctrl+J");
  EXPECT_EQ(Focused(), "txtInput(3)");
  Desktop.Expect("[i]*To select a line to delete*-> Ok", [&] { Press("Ctrl+D"); });
  Edge.Run(mnuUseTimeClock.Click);
  Press("Ctrl+S");
  EXPECT_FALSE(mnuAutosetTime.Checked) << "the entry is hidden";
}

TEST_F(FormViewTest, ABoxDisabledUnderTheFocusHandsItOnAfterTheEvent) {
  Open(false);
  Edge.Run([] {
    txtInput[0].Enabled = false;
    EXPECT_EQ(Focused(), "txtInput(0)");
  });
  EXPECT_EQ(Focused(), "txtInput(1)");
  EXPECT_TRUE(Window->WidgetOf(txtInput[1]).hasFocus());
}

TEST_F(FormViewTest, CutCopyAndPasteWhereverTheFocusIs) {
  Open();
  TextBox& memo = txtInput[kMemoBox];
  const auto state = [&] { return memo.Text.Get() + "|" + Desktop.ClipboardText(); };
  Edge.Run([&] { memo.Text = "125"; });
  Focus(memo);
  Press("Alt+Q End Shift+Left Shift+Left");  // nothing answers to the first: it types nothing
  QTest::keyClick(Window->windowHandle(), Qt::Key_Alt, Qt::AltModifier);
  Press("Ctrl+C");
  EXPECT_EQ(state(), "125|25");
  Press("Ctrl+X");
  EXPECT_EQ(state(), "1|25");
  Press("Ctrl+V Ctrl+V");
  EXPECT_EQ(state(), "12525|25");
  Press("Ctrl+X");
  EXPECT_EQ(state(), "12525|") << "nothing was selected";
  Focus(txtInput[kEmplBox]);
  Focus(cmdSave);
  Desktop.Expect("[!]*(Err#438)*-> Ignore", [&] { Press("Ctrl+C"); });
}

TEST_F(FormViewTest, EveryBoxTakesWhateverIsPasted) {
  Open();
  TextBox& box = txtInput[kEmplBox];
  const std::pair<std::string, std::string> cases[] = {
      {std::string(1 << 20, 'x'), std::string(1 << 20, 'x')},
      {std::string("a\0\t\r\nb", 6), "a    b"},
      {"😀😀", "😀😀"},
      {"של", "של"}};
  for (const auto& [pasted, kept] : cases) {
    SCOPED_TRACE(kept.substr(0, 20));
    Edge.Run([&] { box.Text = ""; });
    Desktop.SetClipboardText(pasted);
    Press("Ctrl+V");
    EXPECT_TRUE(box.Text == kept);
    Type("9\b");
    EXPECT_TRUE(box.Text == kept);
    Window->grab();
  }
  Focus(txtInput[kMemoBox]);
  QInputMethodEvent made;  // composed text is typed character by character
  made.setCommitString(ToQt("éab"));
  QCoreApplication::sendEvent(QApplication::focusWidget(), &made);
  EXPECT_EQ(txtInput[kMemoBox].Text, "éAB");
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
    auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    const auto words = box->findChildren<QTextEdit*>();
    EXPECT_EQ(words.at(0)->toPlainText(), "<b>1</b>\n2");
    EXPECT_LT(box->width(), box->screen()->availableSize().width());
    for (const QTextEdit* each : words) {
      EXPECT_LE(each->document()->size().height(), each->viewport()->height()) << "text is cut";
      EXPECT_LE(each->document()->idealWidth(), each->viewport()->width()) << "text is cut";
    }
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_TRUE(box->isVisible()) << "neither button means Esc";
    QTest::keyClick(box, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_TRUE(box->isVisible()) << "a shortcut is no answer";
    QTest::keyClick(box, Qt::Key_N);
  });
  Edge.Run([&] {
    answer = real.ShowMessageBox({.Text = "<b>1</b>\r2",
                                  .Buttons = BoxButtons::YesNo,
                                  .Icon = BoxIcon::Question,
                                  .Detail = std::string(1500, '/')});
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
  Press("Down Right");
  EXPECT_EQ(CurrentCell(), "10");
  Press("Ctrl+End");
  EXPECT_EQ(TDBGrid1.CellText(0), "159");
  EXPECT_GT(Lines().FirstRow(), 0);
  Press("Ctrl+Home");
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
  Press("F2");
  Type("\b\x1b");
  EXPECT_EQ(CurrentCell(), "77");
  Type("no");
  Desktop.Expect(refused, [&] { Press("Down"); });
  EXPECT_EQ(CurrentCell(), "102");
  Type("8x");
  Desktop.Expect(refused, [&] { Type("\t"); });
  EXPECT_EQ(Focused(), "Option1(0)");
  EXPECT_EQ(Office.Fields("EMPL_NUMB"), "100|77|102");
  ClickCell(1, "Name");
  Type("x");
  EXPECT_FALSE(TDBGrid1.Editing) << "the column is locked";

  ClickCell(0, "Pce Quan");
  Desktop.Expect("[!]*(Err#438)*-> Ignore", [&] { Press("Ctrl+V"); });  // no cell is being edited
  Desktop.SetClipboardText("3\n4");
  Press("F2 Ctrl+V");
  EXPECT_EQ(TDBGrid1.EditText, "103 4");
  Desktop.Expect(refused, [&] { Press("Alt+O"); });  // written before the focus goes
  EXPECT_TRUE(Option1[kClockOut].Value);

  ClickCell(2, "Rate");
  Type("-.5");
  EXPECT_TRUE(TDBGrid1.Editing);
  Type("k");  // the view is loaded anew under the editor
  EXPECT_FALSE(TDBGrid1.Editing);
  EXPECT_EQ(Focused(), "txtInput(0)");
  EXPECT_EQ(Office.Fields("RATE"), "-9|6|-9");
  EXPECT_EQ(Data1.Recordset.Position(), 0);
}

/// With a larger system font, too, a box stands above its column and no text is cut.
TEST_F(FormViewTest, BoxesStandAboveTheirColumnsAtEveryScale) {
  TheApplication();
  const QFont usual = QApplication::font();
  const char* const columns[] = {"Empl#", "Pce Quan", "",     "QDesc", "Rate",
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
    /// Twips by which each box stands to the right of its column.
    const auto offsets = [&](const char* timeColumn) {
      std::string twips;
      const GridGeometry geometry = Lines().Geometry();
      for (std::size_t i = 0; i < kInputBoxCount; ++i) {
        const int column = TDBGrid1.ColumnNumber(i == kTimeBox ? timeColumn : columns[i]);
        const int columnLeft = TDBGrid1.Left + TDBGrid1.ColumnLeft(column);
        const int boxLeft = Scaling::LeftInForm(&txtInput[i]);
        const auto& span = geometry.Columns.at(static_cast<std::size_t>(geometry.IndexOf(column)));
        EXPECT_EQ(left(Lines(), span.Left), Window->Scale().Pixels(columnLeft));
        EXPECT_EQ(left(Window->WidgetOf(txtInput[i])), Window->Scale().Pixels(boxLeft));
        twips += std::to_string(boxLeft - columnLeft) + " ";
      }
      EXPECT_EQ(geometry.Columns.back().Right, Lines().viewport()->width());
      return twips;
    };
    EXPECT_EQ(offsets("Time"), "15 15 30 0 0 30 30 30 45 ");
    const Control* const withText[] = {&lblLineCt, &chkStdRate, &txtInput[kEmplBox]};
    for (const Control* control : withText) {
      const QWidget& widget = Window->WidgetOf(*control);
      EXPECT_GE(widget.height(), widget.fontMetrics().height()) << control->Name;
    }
    Edge.Run(mnuUseTimeClock.Click);
    EXPECT_EQ(offsets("Hours"), "15 15 30 18 18 15 15 15 30 ");
    const QSize before = Lines().size();
    Window->resize(Window->size() + QSize(50, 80));
    QCoreApplication::processEvents();
    EXPECT_EQ(Lines().size(), before + QSize(50, 80));
    EXPECT_EQ(offsets("Hours"), "15 15 30 18 18 15 15 15 30 ");
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
