#pragma once

// A box of one line whose keys the form sees first; text boxes and the grid's cell editor are made
// of it. Text and caret are the model's: the editor shows them and reports every change at once.

#include <QLineEdit>
#include <string>

#include "platform/forms/selection.h"
#include "platform/qt/control_view.h"

namespace ostrel {

class LineEditor : public QLineEdit {
 public:
  LineEditor(KeyControl& control, const Surface& surface, QWidget* parent);
  ~LineEditor() override { control_.Full = nullptr; }

 protected:
  /// How many characters the operator can fill.
  virtual int Holds() const = 0;
  /// The operator has changed text or caret.
  virtual void Report(std::string text, Selection selection) = 0;
  /// A key that the form has let through; true when it has found its use.
  virtual bool UseKey(const QKeyEvent& /*event*/) { return false; }

  /// Shows text and caret as the model has them.
  void ShowText(const std::string& text, Selection selection);
  const Surface& TheSurface() const { return surface_; }

  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void HandleKey(QKeyEvent& event);
  void TypeCharacter(int character);
  void ReportChange();
  void SayFull();
  Selection Caret() const;

  KeyControl& control_;
  Surface surface_;
  bool following_ = false;
};

}  // namespace ostrel
