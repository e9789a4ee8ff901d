#pragma once

// A text box of the form.

#include "platform/qt/line_editor.h"

namespace ostrel {

class TextBoxView : public LineEditor, public ControlView {
 public:
  TextBoxView(TextBox& box, const Surface& surface, QWidget* parent);

  QWidget& Widget() override { return *this; }
  void Follow() override;

 protected:
  int Holds() const override { return box_.Holds; }
  void Report(std::string text, Selection selection) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void FollowColor();

  TextBox& box_;
};

}  // namespace ostrel
