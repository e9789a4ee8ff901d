#pragma once

// Push button, option button and check box. Their state is the form's: the toolkit's own changes of
// it are suppressed, and a click becomes Operate.

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

#include "platform/qt/control_view.h"

namespace ostrel {

class ButtonView : public QPushButton, public ControlView {
 public:
  ButtonView(Button& button, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void HandleKey(QKeyEvent& event);

  Button& button_;
  Surface surface_;
};

class OptionButtonView : public QRadioButton, public ControlView {
 public:
  OptionButtonView(OptionButton& option, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& at) const override { return rect().contains(at); }
  void nextCheckState() override {}

 private:
  void StepThroughGroup(int step);

  OptionButton& option_;
  Surface surface_;
};

class CheckBoxView : public QCheckBox, public ControlView {
 public:
  CheckBoxView(CheckBox& check, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool hitButton(const QPoint& at) const override { return rect().contains(at); }
  void nextCheckState() override {}

 private:
  CheckBox& check_;
};

}  // namespace ostrel
