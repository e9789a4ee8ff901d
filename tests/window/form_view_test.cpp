#include "platform/qt/form_view.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QDialog>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "platform/forms/data_control.h"
#include "platform/forms/grid.h"
#include "platform/qt/grid_view.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_text.h"
#include "store/timecard_store.h"
#include "support/temp_folder.h"
#include "window/qt_application.h"

namespace ostrel {
namespace {

constexpr Alignment kLeft = Alignment::Left, kRight = Alignment::Right;

/// A small form with one control of each kind. What happens goes into `log`.
class FormViewTest : public testing::Test {
 protected:
  FormViewTest() {
    TheApplication();
    SetDesktop(&desktop);
    form.Design("Test", 9000, 6000);
    Add(mark, "mark", "", {1900, 0, 1000, 500}, -1);
    Add(first, "first", "125", {420, 60, 600, 285}, 0);
    Add(second, "second", "abc", {1035, 60, 780, 285}, 1);
    Add(save, "save", "&Save", {2000, 60, 900, 400}, 2);
    Add(kinds, "kinds", "Event", {3000, 0, 1500, 900}, -1);
    Add(in, "in", "&In", {30, 200, 700, 240}, 3, &kinds);
    Add(out, "out", "&Out", {30, 450, 700, 240}, 4, &kinds);
    Add(check, "check", "Std &Hrly", {4600, 100, 1200, 150}, 5);
    Add(count, "count", "12 Lines", {5900, 100, 900, 180}, -1);
    Add(grid, "grid", "", {150, 1000, 8700, 4500}, 6);
    Add(data, "data", "", {400, 5500, 1155, 345}, -1);
    AddMenus();
    Tie(first);
    Tie(second);
    save.Click = [this] { log += "save "; };
    save.KeyPress = [this](int& code) {
      if (code == key::kEscape) second.SetFocus();
    };
    in.Click = [this] { log += "in "; };
    out.Click = [this] { log += "out "; };
    check.Click = [this] { log += "check "; };
    form.OnFailure = [this](const std::exception& failure) {
      log += std::to_string(AsFailure(failure).Number) + " ";
      return false;
    };
  }
  ~FormViewTest() override {
    view.reset();
    ResetAppState();
    SetDesktop(nullptr);
  }

  void Add(Control& control, const char* name, const char* text, Place place, int tab,
           Control* container = nullptr) {
    control.Design(name, text, place);
    control.TabIndex.Put(tab);
    form.Add(control, container);
  }

  void AddMenus() {
    options.Design("options", "&Options", {});
    all.Design("all", "All Dates", {});
    all.Shortcut = "Ctrl+A";
    all.Click = [this] {
      log += "all ";
      all.Checked = !all.Checked;
    };
    paste.Design("paste", "Paste", {});
    paste.Shortcut = "Ctrl+V";
    paste.Click = [this] { form.ActiveControl()->SetSelText(desktop.ClipboardText()); };
    form.AddMenu(options);
    form.AddMenu(all, &options);
    form.AddMenu(paste, &options);
  }

  /// The boxes' keys: Enter is Tab, a key at the start overtypes, letters turn to upper case.
  void Tie(TextBox& box) {
    box.GotFocus = [&box] {
      box.BackColor = kYellow;
      box.SelStart = 0;
    };
    box.LostFocus = [&box] { box.BackColor = kWhite; };
    box.KeyPress = [this, &box](int& code) {
      if (code == key::kEnter) {
        code = 0;
        TheDesktop().Post([this] { form.FocusNext(true); });
        return;
      }
      if (box.CaretAtStart()) box.Text = "";
      if (code >= 'a' && code <= 'z') code += 'A' - 'a';
    };
  }

  void Bind(int lines) {
    DataPath = folder.Path();
    ClientNumb = "1234";
    CreatePrinMdb();
    const Database store = OpenDatabase(StorePath());
    Recordset rows = store.OpenRecordset("OstrelPr", RecordsetType::Dynaset);
    store.ShareCommits();
    for (int line = 0; line < lines; ++line) {
      rows.AddNew();
      rows["EMPL_NUMB"] = 100 + line;
      rows["SORT_NAME"] = "NAME";
      rows["RATE"] = line == 0 ? -9 : 6;
      rows.Update();
    }
    store.CommitShared();
    grid.DesignColumns({{"Empl#", "EMPL_NUMB", "", 615, kLeft, kLeft, kLeft, false, false},
                        {"Name", "SORT_NAME", "", 1650, kLeft, kLeft, kLeft, false, true},
                        {"Rate", "RATE", "", 705, kRight, kLeft, kLeft, true, false}});
    grid.Columns("RATE").TranslatedNumber = -9;
    grid.Columns("RATE").TranslatedWord = "Std Rate";
    grid.Bind(data);
    data.DatabaseName = StorePath();
    data.RecordSource = "Select * from [OstrelPr]";
    data.Refresh();
  }

  void Show(double factor = 1) {
    view = std::make_unique<FormView>(form, edge, factor);
    edge.Run([this] { form.Show(); });
    view->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
  }

  /// Through the window, as a keyboard does: shortcuts and access keys have their chance.
  void Press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(view->windowHandle(), key, held);
  }
  void Type(const char* text) {
    for (; *text != '\0'; ++text) QTest::keyClick(view->windowHandle(), *text);
  }
  void Click(const Control& control, QPoint at = {4, 4}) {
    QTest::mouseClick(&view->WidgetOf(control), Qt::LeftButton, {}, at);
  }
  GridView& Lines() { return static_cast<GridView&>(view->WidgetOf(grid)); }
  /// Middle of a cell; column -1 is the record box.
  QPoint Cell(int line, int column) {
    const GridGeometry geometry = Lines().Geometry();
    const QRect row = geometry.Line(line);
    if (column < 0) return {geometry.RecordBoxRight / 2, row.center().y()};
    return geometry.Cell(row, geometry.Columns[static_cast<std::size_t>(column)]).center();
  }
  void ClickCell(int line, int column) {
    QTest::mouseClick(Lines().viewport(), Qt::LeftButton, {}, Cell(line, column));
  }
  std::string Focus() const { return form.ActiveControl()->Name; }

  TempFolder folder;
  EventEdge edge;
  QtDesktop desktop{edge};
  Form form;
  TextBox first, second;
  Button save;
  Frame kinds;
  OptionButton in, out;
  CheckBox check;
  Label count;
  Shape mark;
  Grid grid;
  DataControl data;
  MenuItem options, all, paste;
  std::unique_ptr<FormView> view;
  std::string log;
};

TEST_F(FormViewTest, TypingOvertypesAndEnterWalksOn) {
  Show();
  EXPECT_EQ(Focus(), "first");
  EXPECT_EQ(first.BackColor, kYellow);
  Type("13x");
  EXPECT_EQ(first.Text, "13X");
  Press(Qt::Key_Return);
  EXPECT_EQ(Focus(), "second");
  EXPECT_TRUE(view->WidgetOf(second).hasFocus());
  EXPECT_EQ(first.BackColor, kWhite);
  EXPECT_EQ(second.SelStart, 0);
  Press(Qt::Key_End);
  Type("d");
  Press(Qt::Key_Left);
  Press(Qt::Key_Backspace);
  EXPECT_EQ(second.Text, "abD");
  EXPECT_EQ(second.SelStart, 2);
  Press(Qt::Key_Home);
  Press(Qt::Key_Escape);
  EXPECT_EQ(second.Text, "");
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(Focus(), "first");
}

/// Keys that have queued up come without a pause between them; each must find the focus that the
/// one before has moved.
TEST_F(FormViewTest, QueuedKeysLoseAndReorderNothing) {
  Show();
  for (const Qt::Key code : {Qt::Key_1, Qt::Key_2, Qt::Key_Return, Qt::Key_3, Qt::Key_4}) {
    const QString text = code == Qt::Key_Return ? QString("\r") : QString(QChar(code));
    QKeyEvent event(QEvent::KeyPress, code, {}, text);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
  }
  EXPECT_EQ(first.Text, "12");
  EXPECT_EQ(second.Text, "34");
}

TEST_F(FormViewTest, FirstClickLeavesTheCaretAtTheStart) {
  Show();
  Click(second, {40, 8});
  EXPECT_EQ(Focus(), "second");
  EXPECT_EQ(second.SelStart, 0);
  Click(second, {40, 8});
  EXPECT_EQ(second.SelStart, 3);
  EXPECT_EQ(second.SelLength, 0);
}

TEST_F(FormViewTest, MenuShortcutsReachThroughATextBox) {
  Show();
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(log, "all ");
  EXPECT_EQ(first.SelLength, 0);
  EXPECT_TRUE(all.Checked);
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_FALSE(all.Checked);
  all.Visible = false;
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(log, "all all ");
}

TEST_F(FormViewTest, AccessKeysGoToControlsOnShowBeforeMenus) {
  Show();
  Press(Qt::Key_O, Qt::AltModifier);
  Press(Qt::Key_S, Qt::AltModifier);
  Press(Qt::Key_H, Qt::AltModifier);
  EXPECT_EQ(log, "out save check ");
  EXPECT_TRUE(out.Value);
  EXPECT_EQ(check.Value, 1);
  kinds.Visible = false;
  edge.Run([this] { first.SetFocus(); });
  Press(Qt::Key_O, Qt::AltModifier);
  QWidget* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  QTest::keyClick(menu, Qt::Key_Return);
  EXPECT_EQ(log, "out save check all ");
  EXPECT_EQ(Focus(), "first");
  EXPECT_EQ(first.Text, "125");
}

TEST_F(FormViewTest, ButtonTakesEnterSpaceClickAndEsc) {
  Show();
  edge.Run([this] { save.SetFocus(); });
  Press(Qt::Key_Return);
  Press(Qt::Key_Space);
  Click(save);
  EXPECT_EQ(log, "save save save ");
  Press(Qt::Key_Escape);
  EXPECT_EQ(Focus(), "second");
}

TEST_F(FormViewTest, OptionButtonsFollowTheFormOnly) {
  Show();
  Click(in);
  Click(in);
  EXPECT_TRUE(in.Value);
  Press(Qt::Key_Down);
  EXPECT_EQ(log, "in in out ");
  EXPECT_FALSE(in.Value);
  EXPECT_FALSE(static_cast<QAbstractButton&>(view->WidgetOf(in)).isChecked());
  edge.Run([this] { in.Value = true; });
  EXPECT_TRUE(static_cast<QAbstractButton&>(view->WidgetOf(in)).isChecked());
}

TEST_F(FormViewTest, ABoxDisabledUnderTheFocusHandsItOnAfterTheEvent) {
  Show();
  edge.Run([this] {
    first.Enabled = false;
    EXPECT_EQ(Focus(), "first");
  });
  EXPECT_EQ(Focus(), "second");
  edge.Run([this] {
    second.Enabled = false;
    check.SetFocus();
  });
  EXPECT_EQ(Focus(), "check");
  EXPECT_TRUE(view->WidgetOf(check).hasFocus());
}

TEST_F(FormViewTest, SelectedTextIsReplaced) {
  Show();
  Press(Qt::Key_End);
  Press(Qt::Key_Left, Qt::ShiftModifier);
  Press(Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(first.SelText(), "25");
  Press(Qt::Key_Alt, Qt::AltModifier);
  desktop.SetClipboardText("7");
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(first.Text, "17");
  Press(Qt::Key_Q, Qt::AltModifier);
  EXPECT_EQ(first.Text, "17") << "an access key that nothing answers to types nothing";
}

TEST_F(FormViewTest, EveryBoxTakesWhateverIsPasted) {
  Show();
  const std::string emoji = "\xF0\x9F\x98\x80", hebrew = "\xD7\xA9\xD7\x9C";
  const struct {
    const char* Name;
    std::string Pasted, Kept;
  } cases[] = {{"a megabyte", std::string(1 << 20, 'x'), std::string(1 << 20, 'x')},
               {"control characters", std::string("a\0\t\r\nb", 6), "a    b"},
               {"emoji", emoji + emoji, emoji + emoji},
               {"right to left", hebrew, hebrew},
               {"lone continuation", "a\x80", "a\xEF\xBF\xBD"}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Name);
    first.Text = "";
    desktop.SetClipboardText(each.Pasted);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(first.Text == each.Kept);
    Type("9");
    Press(Qt::Key_Backspace);
    EXPECT_TRUE(first.Text == each.Kept);
    view->grab();
  }
}

TEST_F(FormViewTest, ComposedTextIsTypedCharacterByCharacter) {
  Show();
  QInputMethodEvent made;
  made.setCommitString(
      QString::fromUtf8("\xC3\xA9"
                        "ab"));
  QCoreApplication::sendEvent(QApplication::focusWidget(), &made);
  EXPECT_EQ(first.Text,
            "\xC3\xA9"
            "AB");
  EXPECT_EQ(first.SelStart, 3);
}

TEST_F(FormViewTest, AMessageBoxIsNoLossOfFocus) {
  Show();
  BoxAnswer answer = BoxAnswer::Cancel;
  save.Click = [&] {
    answer = desktop.ShowMessageBox({"<b>1</b>\r2", BoxButtons::YesNo, BoxIcon::Question});
  };
  first.LostFocus = [this] { log += "lost "; };
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->findChild<QTextEdit*>()->toPlainText(), "<b>1</b>\n2");
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_TRUE(box->isVisible()) << "neither button means Esc";
    QTest::keyClick(box->findChildren<QPushButton*>().at(1), Qt::Key_Space);
  });
  edge.Run(save.Click);
  EXPECT_EQ(answer, BoxAnswer::No);
  EXPECT_EQ(log, "");
  EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
  EXPECT_TRUE(view->WidgetOf(first).hasFocus());
}

TEST_F(FormViewTest, EndingTheProgramLeavesWithoutTheUnload) {
  form.QueryUnload = [this] { log += "unload "; };
  Show();
  save.Click = [] { throw ProgramEnded{}; };
  Click(save);
  EXPECT_TRUE(edge.Ended());
  Click(check);
  EXPECT_EQ(log, "");
}

TEST_F(FormViewTest, GridShowsMovesAndSelects) {
  Bind(40);
  Show();
  ClickCell(2, 0);
  EXPECT_EQ(Focus(), "grid");
  EXPECT_EQ(grid.CellText(0), "102");
  Press(Qt::Key_Down);
  Press(Qt::Key_Right);
  Press(Qt::Key_Right);
  EXPECT_EQ(grid.CellText(grid.Col), "6");
  Press(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(grid.CellText(0), "139");
  EXPECT_GT(Lines().FirstRow(), 0);
  Press(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(grid.CellText(grid.Col), "Std Rate");
  EXPECT_EQ(Lines().FirstRow(), 0);

  const auto bookmark = [this](std::size_t row) { return data.Recordset.BookmarkAt(row); };
  ClickCell(3, -1);
  ClickCell(1, -1);
  ClickCell(5, -1);
  ClickCell(3, -1);
  EXPECT_EQ(grid.SelBookmarks, (std::vector<Bookmark>{bookmark(1), bookmark(5)}));
  edge.Run([this] { data.Refresh(); });
  EXPECT_TRUE(grid.SelBookmarks.empty());
}

TEST_F(FormViewTest, CellsAreEditedInPlace) {
  Bind(3);
  Show();
  std::string hook;
  grid.BeforeColUpdate = [&](int column, const Value& old, std::int16_t& cancel) {
    hook += std::to_string(column) + ":" + old.ToText() + ">" + grid.CellText(column) + " ";
    if (grid.CellText(column) == "no") cancel = -1;
  };
  ClickCell(1, 0);
  Type("77");
  EXPECT_TRUE(grid.Editing);
  Press(Qt::Key_Return);
  EXPECT_EQ(hook, "0:101>77 ");
  EXPECT_EQ(grid.CellText(0), "77");
  EXPECT_EQ(data.Mode(), EditMode::None);

  Press(Qt::Key_F2);
  Press(Qt::Key_Backspace);
  Press(Qt::Key_Escape);
  Type("no");
  Press(Qt::Key_Down);
  EXPECT_EQ(grid.CellText(0), "102");
  Type("8x");
  Press(Qt::Key_Tab);
  EXPECT_EQ(Focus(), "first");
  EXPECT_EQ(log, "3421 ");
  EXPECT_EQ(hook, "0:101>77 0:77>no 0:102>8x ");
  EXPECT_EQ(grid.CellText(0), "102");

  ClickCell(1, 1);
  Type("x");
  EXPECT_FALSE(grid.Editing) << "the column is locked";
}

TEST_F(FormViewTest, PasteReachesTheCellEditorAndLinesBecomeOne) {
  Bind(2);
  Show();
  ClickCell(0, 0);
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(log, "438 ") << "no cell is being edited";
  desktop.SetClipboardText("3\n4");
  Press(Qt::Key_F2);
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(grid.EditText, "1003 4");
  Press(Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(log, "438 3421 save ") << "written before the focus goes";
}

TEST_F(FormViewTest, AKeyHookMayReloadTheGridUnderTheEditor) {
  Bind(3);
  Show();
  grid.KeyPress = [this](int& code) {
    if (code != 's') return;
    data.Refresh();
    first.SetFocus();
  };
  ClickCell(2, 2);
  Type("5s");
  EXPECT_EQ(Focus(), "first");
  EXPECT_FALSE(grid.Editing);
  EXPECT_EQ(first.Text, "125");
  EXPECT_EQ(data.Recordset.Position(), 0);
}

TEST_F(FormViewTest, DataControlWalksThroughTheRows) {
  Bind(4);
  Show();
  const QList<QAbstractButton*> buttons = view->WidgetOf(data).findChildren<QAbstractButton*>();
  ASSERT_EQ(buttons.size(), 4);
  std::string positions;
  for (const int press : {0, 1, 2, 2, 3, 2, 1, 0}) {
    buttons[press]->click();
    positions += std::to_string(data.Recordset.Position());
  }
  EXPECT_EQ(positions, "00123320");
}

class ScaleTest : public FormViewTest, public testing::WithParamInterface<double> {};

TEST_P(ScaleTest, BoxesStandAboveTheirColumnsAndNoTextIsCut) {
  Bind(3);
  first.Left.Put(420);  // the first column's place in the form
  second.Left.Put(420 + 615);
  Show(GetParam());
  const GridGeometry geometry = Lines().Geometry();
  const auto left = [&](QWidget& widget, int x = 0) {
    return widget.mapTo(view.get(), QPoint(x, 0)).x();
  };
  EXPECT_EQ(left(Lines(), geometry.Columns[0].Left), left(view->WidgetOf(first)));
  EXPECT_EQ(left(Lines(), geometry.Columns[1].Left), left(view->WidgetOf(second)));
  EXPECT_EQ(geometry.Columns.back().Right, Lines().viewport()->width());
  for (const Control* control : {static_cast<Control*>(&count), static_cast<Control*>(&check)}) {
    const QWidget& widget = view->WidgetOf(*control);
    EXPECT_GE(widget.height(), widget.fontMetrics().height()) << control->Name;
  }
  grid.Columns("Name").Visible = false;
  EXPECT_EQ(Lines().Geometry().Columns[1].Left, geometry.Columns[1].Left);
  const QSize before = Lines().size();
  view->resize(view->size() + QSize(50, 80));
  QCoreApplication::processEvents();
  EXPECT_EQ(Lines().size(), before + QSize(50, 80));
  EXPECT_EQ(left(Lines(), Lines().Geometry().Columns[0].Left), left(view->WidgetOf(first)));
}

INSTANTIATE_TEST_SUITE_P(Factors, ScaleTest, testing::Values(1.0, 1.25, 1.5, 1.7, 2.0));

TEST(Scaling, FillsMostOfTheScreenAndNeverMore) {
  const QSize twips(11910, 8625);
  const struct {
    QSize Screen;
    double Factor;
  } cases[] = {{{1920, 1040}, 1.6}, {{1366, 728}, 1.1}, {{1024, 560}, 0.85}, {{300, 200}, 0.5}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.Screen.width());
    EXPECT_NEAR(Scaling::ForScreen(each.Screen, twips).Factor(), each.Factor, 1e-9);
  }
}

}  // namespace
}  // namespace ostrel
