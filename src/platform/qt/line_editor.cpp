#include "platform/qt/line_editor.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <limits>

#include "platform/qt/key_codes.h"
#include "platform/qt/key_hooks.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

namespace {
constexpr int kBackspace = 8, kBlank = 32;

/// An access key that nothing answers to, which the toolkit would type as a letter.
bool IsAltKey(const QKeyEvent& event) {
  return IsCommandKey(event) && event.modifiers().testFlag(Qt::AltModifier);
}

}  // namespace

LineEditor::LineEditor(KeyControl& control, const Surface& surface, QWidget* parent)
    : QLineEdit(parent), control_(control), surface_(surface) {
  // The toolkit would cut at 32,767 characters; what is too long for a field is the store's to say.
  setMaxLength(std::numeric_limits<int>::max());
  setFrame(false);
  setAcceptDrops(false);
  setFocusPolicy(Qt::NoFocus);  // the focus is the form's to give
  connect(this, &QLineEdit::textChanged, this, [this] { ReportChange(); });
  connect(this, &QLineEdit::cursorPositionChanged, this, [this] { ReportChange(); });
  connect(this, &QLineEdit::selectionChanged, this, [this] { ReportChange(); });
}

Selection LineEditor::Caret() const {
  const QString shown = text();
  const int start = hasSelectedText() ? selectionStart() : cursorPosition();
  const int end = hasSelectedText() ? selectionEnd() : start;
  const int characters = CharactersIn(shown, start);
  return {characters, CharactersIn(shown, end) - characters};
}

void LineEditor::ReportChange() {
  if (following_) return;
  const std::string typed = FromQt(text());
  std::string line = SingleLine(typed);
  const Selection caret = Caret();
  // Pasted text may hold line breaks and control characters; what stands in the box is what will be
  // stored, so they go at once.
  if (line != typed) ShowText(line, caret);
  Report(std::move(line), caret);
}

void LineEditor::ShowText(const std::string& shown, Selection selection) {
  // Each setter below tells of a change as if the operator had made it.
  following_ = true;
  const QString wanted = ToQt(shown);
  if (text() != wanted) setText(wanted);
  const Selection caret = Caret();
  if (caret.Start != selection.Start || caret.Length != selection.Length) {
    const int start = UnitsOf(wanted, selection.Start);
    const int end = UnitsOf(wanted, selection.Start + selection.Length);
    if (start == end) {
      deselect();
      setCursorPosition(start);
    } else {
      setSelection(start, end - start);
    }
  }
  following_ = false;
}

void LineEditor::keyPressEvent(QKeyEvent* event) {
  if (!IsCommandKey(*event) && event->text().toUcs4().size() > 1) {  // a dead key and its follower
    QInputMethodEvent made;
    made.setCommitString(event->text());
    inputMethodEvent(&made);
  } else {
    surface_.Edge.Run([&] { HandleKey(*event); });
  }
  event->accept();
}

void LineEditor::HandleKey(QKeyEvent& event) {
  const int typed = CharacterOf(event);
  int character = typed;
  if (!RaiseKeys(surface_.Shown, control_, KeyCodeOf(event), ShiftOf(event), character)) return;
  if (UseKey(event)) return;
  if (character != 0 && (character != typed || character >= kBlank)) {
    TypeCharacter(character);
  } else if (character != key::kEnter && character != key::kEscape && !IsAltKey(event)) {
    QLineEdit::keyPressEvent(&event);
  }
}

void LineEditor::TypeCharacter(int character) {
  if (character == kBackspace) {
    backspace();
  } else if (character >= kBlank) {
    const auto code = static_cast<char32_t>(character);
    insert(QString::fromUcs4(&code, 1));
  }
}

/// Text of an input method, of a dead key or of a compose key is typed character by character. Where
/// the focus moves in the midst of it the rest goes after the focus.
void LineEditor::inputMethodEvent(QInputMethodEvent* event) {
  const QString made = event->commitString();
  if (made.isEmpty()) {
    QLineEdit::inputMethodEvent(event);
    return;
  }
  QInputMethodEvent composed;
  QLineEdit::inputMethodEvent(&composed);
  const QList<uint> characters = made.toUcs4();
  for (qsizetype i = 0; i < characters.size(); ++i) {
    surface_.Edge.Run([&] {
      int character = static_cast<int>(characters[i]);
      if (RaiseKeys(surface_.Shown, control_, kInputMethodKey, 0, character))
        TypeCharacter(character);
    });
    if (hasFocus() || i + 1 == characters.size()) continue;
    QInputMethodEvent rest;
    rest.setCommitString(made.mid(UnitsOf(made, static_cast<int>(i) + 1)));
    if (QWidget* next = QApplication::focusWidget()) QCoreApplication::sendEvent(next, &rest);
    return;
  }
}

/// The menu bar that takes the keyboard is no loss of focus: the selection stays, for Cut and Copy.
void LineEditor::focusOutEvent(QFocusEvent* event) {
  if (event->reason() == Qt::MenuBarFocusReason) {
    QFocusEvent asPopup(QEvent::FocusOut, Qt::PopupFocusReason);
    QLineEdit::focusOutEvent(&asPopup);
    return;
  }
  QLineEdit::focusOutEvent(event);
}

}  // namespace ostrel
