#include "platform/qt/boxes.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>
#include <vector>

#include "platform/forms/selection.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

namespace {

constexpr int kInputWidth = 360;           // pixels at the least
constexpr qsizetype kLongestShown = 3000;  // characters; more would not fit on a screen

/// Texts of the program part their lines by carriage returns.
QString Lines(const std::string& text) {
  QString lines = ToQt(text).replace("\r\n", "\n").replace('\r', '\n');
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

QMessageBox::Icon IconOf(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Stop:
      return QMessageBox::Critical;
    case BoxIcon::Question:
      return QMessageBox::Question;
    case BoxIcon::Exclamation:
      return QMessageBox::Warning;
    case BoxIcon::Information:
      return QMessageBox::Information;
    case BoxIcon::None:
      break;
  }
  return QMessageBox::NoIcon;
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

/// A message box whose Esc and close box answer what the request allows, which may be nothing.
class MessageBox : public QMessageBox {
 public:
  explicit MessageBox(const MessageBoxRequest& request)
      : QMessageBox(OwnerOfBox()), buttons_(ButtonsOf(request.Buttons)) {
    setWindowTitle(ToQt(request.Title));
    setIcon(IconOf(request.Icon));
    setTextFormat(Qt::PlainText);
    setText(Lines(request.Text));
    setInformativeText(Lines(request.Detail));
    KeepLinesWhole();
    if (auto* detail = findChild<QLabel*>("qt_msgbox_informativelabel")) {
      detail->setTextFormat(Qt::PlainText);
    }
    AddButtons();
  }

  BoxAnswer Ask() {
    exec();
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
      if (clickedButton() == shown_[i]) return buttons_[i].Answer;
    }
    return buttons_.back().Answer;
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Escape && !MayEscape()) return;
    QMessageBox::keyPressEvent(event);
  }
  void closeEvent(QCloseEvent* event) override {
    if (MayEscape()) {
      QMessageBox::closeEvent(event);
    } else {
      event->ignore();
    }
  }

 private:
  /// The toolkit breaks lines of 500 pixels; the lines of a message need no more than most of a screen.
  void KeepLinesWhole() {
    auto* label = findChild<QLabel*>("qt_msgbox_label");
    if (label == nullptr) return;
    const QString lines = text() + "\n" + informativeText();
    const int widest = label->fontMetrics().size(0, lines).width();
    label->setMinimumWidth(std::min(widest, screen()->availableGeometry().width() * 2 / 3));
  }

  bool MayEscape() const { return escapeButton() != nullptr; }

  /// All have one role, since the toolkit would sort them by it.
  void AddButtons() {
    for (const BoxButton& button : buttons_) {
      shown_.push_back(addButton(button.Caption, QMessageBox::AcceptRole));
      if (button.Answer == BoxAnswer::Cancel || buttons_.size() == 1)
        setEscapeButton(shown_.back());
    }
    setDefaultButton(shown_.front());
  }

  const std::vector<BoxButton>& buttons_;
  std::vector<QPushButton*> shown_;
};

class InputDialog : public QDialog {
 public:
  InputDialog(const std::string& prompt, const std::string& title, const std::string& offered)
      : QDialog(OwnerOfBox()), answer_(new QLineEdit(ToQt(offered))) {
    setWindowTitle(ToQt(title));
    auto* text = new QLabel(Lines(prompt));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    answer_->setMaxLength(std::numeric_limits<int>::max());
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
    answer_->setFocus();
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
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  return FromQt(dialog.selectedFiles().constFirst());
}

}  // namespace ostrel
