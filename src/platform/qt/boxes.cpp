#include "platform/qt/boxes.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "platform/forms/control.h"
#include "platform/forms/selection.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

namespace {

constexpr int kInputWidth = 360;           // pixels at the least
constexpr int kFilesWide = 110;            // characters of an average width
constexpr int kFilesHigh = 26;             // lines
constexpr int kTitleButtons = 100;         // pixels beside a title, for the window's own buttons
constexpr qsizetype kLongestShown = 3000;  // characters; more would not fit on a screen

/// Texts of the program part their lines by carriage returns.
QString Lines(const std::string& text) {
  QString lines = ToQt(text).replace("\r\n", "\n").replace('\r', '\n');
  // A report may quote a whole field; a box taller than the screen would hide its buttons.
  if (lines.size() > kLongestShown) lines = lines.left(kLongestShown) + QChar(0x2026);
  return lines;
}

/// The window that a box belongs to, also when another program is in front.
QWidget* OwnerOfBox() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible()) return window;
  }
  return nullptr;
}

struct BoxButton {
  BoxAnswer Answer;
  const char* Caption;
};

const std::vector<BoxButton>& ButtonsOf(BoxButtons buttons) {
  using enum BoxAnswer;
  static const std::vector<BoxButton> sets[] = {
      {{Ok, "OK"}},
      {{Ok, "OK"}, {Cancel, "Cancel"}},
      {{Abort, "&Abort"}, {Retry, "&Retry"}, {Ignore, "&Ignore"}},
      {{Yes, "&Yes"}, {No, "&No"}, {Cancel, "Cancel"}},
      {{Yes, "&Yes"}, {No, "&No"}},
  };
  return sets[static_cast<int>(buttons)];
}

/// The style's picture for a box; none for none.
std::optional<QStyle::StandardPixmap> PictureOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Stop:
      return QStyle::SP_MessageBoxCritical;
    case BoxIcon::Question:
      return QStyle::SP_MessageBoxQuestion;
    case BoxIcon::Exclamation:
      return QStyle::SP_MessageBoxWarning;
    case BoxIcon::Information:
      return QStyle::SP_MessageBoxInformation;
    case BoxIcon::None:
      break;
  }
  return std::nullopt;
}

/// While a box is up the pointer is an arrow, also in the midst of a long command; afterwards the
/// keyboard goes back to the window that had it, which not every window manager sees to.
class BoxTime {
 public:
  BoxTime() : owner_(OwnerOfBox()), waiting_(QApplication::overrideCursor() != nullptr) {
    if (waiting_) QApplication::setOverrideCursor(Qt::ArrowCursor);
  }
  ~BoxTime() {
    if (waiting_) QApplication::restoreOverrideCursor();
    if (owner_ != nullptr) owner_->activateWindow();
  }
  BoxTime(const BoxTime&) = delete;
  BoxTime& operator=(const BoxTime&) = delete;

 private:
  QPointer<QWidget> owner_;
  bool waiting_;
};

/// Plain text as it stands, its lines broken where they would need more than most of the screen, also
/// within a path that has no blank; behind a scroll bar where it is too tall.
QWidget* WordsOf(const QString& lines, QSize screen) {
  auto* words = new QTextEdit;
  auto* document = new QTextDocument(lines, words);
  // Measured before it is shown: a text edit knows its height only once it has a width, and the box
  // must not jump.
  document->setDocumentMargin(0);
  document->setDefaultFont(words->font());
  document->setDefaultTextOption(words->document()->defaultTextOption());
  const int needed = words->fontMetrics().size(0, lines).width() + 1;
  const int wide = std::min(needed, screen.width() * 2 / 3);
  document->setTextWidth(wide);
  const int high = static_cast<int>(std::ceil(document->size().height()));
  const int most = screen.height() * 2 / 3;
  const int bar = high > most ? words->verticalScrollBar()->sizeHint().width() : 0;
  words->setVerticalScrollBarPolicy(bar > 0 ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  words->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  words->setFrameStyle(QFrame::NoFrame);
  words->setFixedSize(wide + bar, std::min(high, most));
  words->setDocument(document);
  words->setReadOnly(true);
  // The keyboard stays with the buttons; the mouse may still select what is to be quoted on the
  // phone.
  words->setFocusPolicy(Qt::NoFocus);
  words->viewport()->setAutoFillBackground(false);
  words->viewport()->setCursor(Qt::ArrowCursor);
  return words;
}

/// The buttons of all boxes alike, whatever the desktop's theme draws on them.
void TakeIconsOff(const QDialog& dialog) {
  for (const QDialogButtonBox* buttons : dialog.findChildren<QDialogButtonBox*>()) {
    for (QAbstractButton* button : buttons->buttons()) button->setIcon({});
  }
}

/// A key that is still held down from before has not been pressed for the box: it answers nothing.
class NoRepeatedAnswer : public QObject {
 public:
  explicit NoRepeatedAnswer(QDialog& dialog) : QObject(&dialog) {
    dialog.installEventFilter(this);
    for (QWidget* inside : dialog.findChildren<QWidget*>()) inside->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool types = qobject_cast<QLineEdit*>(watched) != nullptr &&
                       key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter &&
                       key.key() != Qt::Key_Escape;
    return key.isAutoRepeat() && !types;
  }
};

/// A message box whose Esc and close box answer what the request allows, which may be nothing.
class MessageBox : public QDialog {
 public:
  explicit MessageBox(const MessageBoxRequest& request)
      : QDialog(OwnerOfBox()), buttons_(ButtonsOf(request.Buttons)) {
    setWindowTitle(ToQt(request.Title));
    setAccessibleDescription(Lines(request.Text + "\r" + request.Detail));
    auto* words = new QVBoxLayout;
    for (const std::string& text : {request.Text, request.Detail}) {
      if (!text.empty())
        words->addWidget(WordsOf(Lines(text), screen()->availableSize()), 0, Qt::AlignLeft);
    }
    words->addStretch();
    auto* message = new QHBoxLayout;
    message->setSpacing(fontMetrics().height());
    if (const auto picture = PictureOf(request.Icon)) {
      auto* icon = new QLabel;
      icon->setPixmap(
          style()->standardIcon(*picture, nullptr, this).pixmap(2 * fontMetrics().height()));
      message->addWidget(icon, 0, Qt::AlignTop);
    }
    message->addLayout(words, 1);

    auto* column = new QVBoxLayout(this);
    column->setSpacing(fontMetrics().height());
    column->addLayout(message);
    column->addLayout(ButtonRow());
    const int title = fontMetrics().horizontalAdvance(windowTitle()) + kTitleButtons;
    // A title that the window system cuts off would say half of what went wrong.
    setFixedSize(sizeHint().expandedTo({title, 0}));
    new NoRepeatedAnswer(*this);  // the box owns it
  }

  /// The end of the program answers as the last button.
  BoxAnswer Ask() {
    const int answer = exec();
    return answer == 0 ? buttons_.back().Answer : static_cast<BoxAnswer>(answer);
  }

  /// Esc and the close box come here.
  void reject() override {
    // Where the choice is Yes or No, or Abort, Retry or Ignore, there is no way round the question.
    const BoxAnswer last = buttons_.back().Answer;
    if (last == BoxAnswer::Cancel || buttons_.size() == 1) done(static_cast<int>(last));
  }

 protected:
  /// The letter of a button presses it, with Alt and without.
  void keyPressEvent(QKeyEvent* event) override {
    const bool plain = (event->modifiers() & ~Qt::ShiftModifier) == 0;
    for (QPushButton* button : findChildren<QPushButton*>()) {
      const QKeySequence letter = button->shortcut();
      if (plain && !letter.isEmpty() && letter[0].key() == event->key()) return button->click();
    }
    QDialog::keyPressEvent(event);
  }

 private:
  QLayout* ButtonRow() {
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (const BoxButton& button : buttons_) {
      auto* shown = new QPushButton(button.Caption);
      connect(shown, &QPushButton::clicked, this,
              [this, answer = button.Answer] { done(static_cast<int>(answer)); });
      row->addWidget(shown);
    }
    return row;
  }

  const std::vector<BoxButton>& buttons_;
};

class InputDialog : public QDialog {
 public:
  InputDialog(const std::string& prompt, const std::string& title, const std::string& offered)
      : QDialog(OwnerOfBox()), answer_(new QLineEdit(ToQt(offered))) {
    setWindowTitle(ToQt(title));
    auto* text = new QLabel(Lines(prompt));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    answer_->setMaxLength(std::max(kMostTyped, static_cast<int>(answer_->text().size())));
    connect(answer_, &QLineEdit::inputRejected, answer_, [] { QApplication::beep(); });
    answer_->setAccessibleName(ToQt(title));
    answer_->selectAll();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* column = new QVBoxLayout(this);
    column->addWidget(text);
    column->addWidget(answer_);
    column->addWidget(buttons);
    setMinimumWidth(kInputWidth);
    TakeIconsOff(*this);
    answer_->setFocus();
    new NoRepeatedAnswer(*this);  // the box owns it
  }

  std::string Ask() {
    return exec() == QDialog::Accepted ? SingleLine(FromQt(answer_->text())) : std::string();
  }

 private:
  QLineEdit* answer_;
};

}  // namespace

BoxAnswer RunMessageBox(const MessageBoxRequest& request) {
  const BoxTime up;
  return MessageBox(request).Ask();
}

std::string RunInputBox(const std::string& prompt, const std::string& title,
                        const std::string& offered) {
  const BoxTime up;
  return InputDialog(prompt, title, offered).Ask();
}

/// The toolkit's own dialog: it matches patterns without regard to case on every system.
std::string RunOpenFile(const OpenFileRequest& request) {
  const BoxTime up;
  const QString filter = ToQt(request.FilterName + " (" + request.FilterPattern + ")");
  QFileDialog dialog(OwnerOfBox(), ToQt(request.Title), ToQt(request.Folder), filter);
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  // A name that is typed must be there: what comes back is opened without another question.
  dialog.setFileMode(QFileDialog::ExistingFile);
  TakeIconsOff(dialog);
  const QFontMetrics text = dialog.fontMetrics();
  dialog.resize(kFilesWide * text.averageCharWidth(), kFilesHigh * text.height());
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return FromQt(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()));
}

}  // namespace ostrel
