#pragma once

// A form: its controls, its menus, and the focus. Focus belongs to the model: SetFocus raises
// LostFocus on the old control, then GotFocus on the new one if the first did not move the focus
// again; the window follows. A message box, a menu or another window that takes the keyboard is no
// loss of focus.
//
// Every event is raised through Raise, the one edge at which a failure that leaves a routine is
// caught and handed to OnFailure. ProgramEnded passes through.

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "platform/forms/control.h"

namespace ostrel {

/// Whoever draws the form.
class FormObserver {
 public:
  virtual ~FormObserver() = default;
  virtual void ControlChanged(Control& control) = 0;
  virtual void FocusMoved(Control& control) = 0;
  virtual void RepaintNow(Control& control) = 0;
  virtual void FormChanged() = 0;  ///< caption, place, size, visibility
  virtual void Unloaded() = 0;
};

enum class Direction { Forward, Back };

class Form : public ControlOwner {
 public:
  /// Empty, invisible, nothing focused; the observer is let go.
  void Design(std::string caption, int width, int height);

  /// Adds a control; those added later lie on top. Menu entries go to Menus in their order.
  void Add(Control& control, Control* container = nullptr);
  void AddMenu(MenuItem& item, MenuItem* menu = nullptr);

  const std::vector<Control*>& Controls() const override { return controls_; }
  const std::vector<MenuItem*>& Menus() const { return menus_; }

  std::string Caption;
  int Left = 0, Top = 0, Width = 0, Height = 0;  ///< twips, the inner size
  bool Visible = false;
  bool IsVisible() const override { return Visible; }
  /// Tells the observer that caption, place or size have changed.
  void Changed();

  /// Makes the form visible; the first control in tab order gets the focus if none has it.
  void Show();
  /// Raises QueryUnload, then goes. Does nothing on a form that has gone.
  void Unload();

  /// The control that has the focus, or nullptr.
  Control* ActiveControl() const { return active_; }
  /// throws  Failure 5 when the control cannot take the focus
  void SetFocus(Control& control) override;
  /// What the Tab key does: on to the next control in tab order that can take the focus, round the
  /// end; or back.
  void FocusNext(Direction direction);

  /// Runs an event routine; a failure that leaves it goes to OnFailure.
  void Raise(const std::function<void()>& routine) override;
  /// Runs a step that can be run again, for as long as it fails and OnFailure wants that.
  ///   returns  whether the step has run well
  bool Try(const std::function<void()>& step) override;

  void ControlChanged(Control& control) override;
  void RepaintNow(Control& control) override;

  void SetObserver(FormObserver* observer) { observer_ = observer; }

  std::function<void()> Load, QueryUnload;
  /// Reports a failure or any other fault; true: the operator wants a retry.
  std::function<bool(const std::exception&)> OnFailure;

 private:
  std::vector<Control*> TabOrder() const;

  std::vector<Control*> controls_;
  std::vector<MenuItem*> menus_;
  Control* active_ = nullptr;
  bool activeHasGotFocus_ = false;
  unsigned turn_ = 0;
  FormObserver* observer_ = nullptr;
};

}  // namespace ostrel
