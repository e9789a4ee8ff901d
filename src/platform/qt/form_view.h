#pragma once

// The window of a form. It draws any form and knows no control and no routine by name: each control
// has its view, the form tells of every change, and keys, clicks and commands go back to it as its
// events. The whole form is drawn at one scale, chosen from the screen; a larger window gives its
// room to the grid.

#include <QHash>
#include <QMainWindow>
#include <memory>
#include <optional>

#include "platform/forms/form.h"
#include "platform/qt/control_view.h"
#include "platform/qt/input_filter.h"
#include "platform/qt/menu_view.h"

namespace ostrel {

class FormView : public QMainWindow, public FormObserver {
 public:
  /// `factor` is 1 at 15 twips to the pixel; without it the screen decides.
  FormView(Form& form, EventEdge& edge, std::optional<double> factor = {});
  ~FormView() override;

  const Scaling& Scale() const { return surface_.Scale; }
  /// For menus and boxes: the form's font, or the system's where the operator has a larger one.
  QFont TextFont() const;
  /// The widget of a control of this form.
  QWidget& WidgetOf(const Control& control) const;

  void ControlChanged(Control& control) override;
  void FocusMoved(Control& control) override;
  void RepaintNow(Control& control) override;
  void FormChanged() override;
  void Unloaded() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  /// The toolkit would move the focus by itself from a box that is disabled or hidden.
  bool focusNextPrevChild(bool /*next*/) override { return false; }

 private:
  ControlView& ViewOf(Control& control);
  void BuildControls();
  void FollowControl(Control& control, ControlView& view);
  void FollowFocus();
  void Place(const Control& control, QWidget& widget) const;
  void PlaceAll();
  void PlaceWithin(const Control& frame);
  void PlaceWindow();

  Form& form_;
  EventEdge& edge_;
  InputFilter input_;
  Surface surface_;
  QWidget* canvas_;
  const Control* stretching_ = nullptr;  // the grid, which follows the window's size
  QHash<const Control*, ControlView*> views_;
  std::unique_ptr<MenuView> menus_;
  QSize designed_;  // pixels of the form's inside as designed
};

}  // namespace ostrel
