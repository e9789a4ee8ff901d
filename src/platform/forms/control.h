#pragma once

// The controls of a form as data: the properties that the routines read and set, and the events as
// functions. No toolkit in sight; platform/qt draws them, tests drive them as they are. The control
// is the only storage of what stands in it.
//
// Positions and sizes are in twips: 1440 to the inch, 15 to a pixel at 100 %.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/forms/property.h"

namespace ostrel {

class Control;

struct Color {
  std::uint8_t Red = 0, Green = 0, Blue = 0;
  friend bool operator==(const Color&, const Color&) = default;
};
inline constexpr Color kWhite{255, 255, 255};
inline constexpr Color kYellow{255, 255, 0};

enum class Alignment { Left, Right, Center, General };

/// Key codes of KeyDown, the system's own numbers.
namespace key {
inline constexpr int kTab = 9;
inline constexpr int kEnter = 13;
inline constexpr int kEscape = 27;
inline constexpr int kLeft = 37;
inline constexpr int kRight = 39;
}  // namespace key

/// A control's place in the design, one row of the form's table.
struct Place {
  int Left = 0, Top = 0, Width = 0, Height = 0;
};

/// What a control asks of the form that it lies on.
class ControlOwner {
 public:
  virtual ~ControlOwner() = default;
  virtual bool IsVisible() const = 0;
  virtual const std::vector<Control*>& Controls() const = 0;
  virtual void SetFocus(Control& control) = 0;
  virtual void Raise(const std::function<void()>& routine) = 0;
  virtual bool Try(const std::function<void()>& step) = 0;
  // Both tell whoever draws the form.
  virtual void ControlChanged(Control& control) = 0;
  virtual void RepaintNow(Control& control) = 0;
};

class Control {
 public:
  Control() = default;
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  /// Back to the state in which the design leaves a control of this kind: visible, enabled, at its
  /// place, holding `text`, no events tied.
  virtual void Design(std::string name, std::string text, Place place);

  /// Whether the operator can see it: itself, the frame around it and the form are visible.
  bool Shown() const;
  bool CanTakeFocus() const { return TakesFocus() && Shown() && Enabled && !InDisabledFrame(); }
  virtual bool TakesFocus() const { return false; }

  /// throws  Failure 5 when the control cannot take the focus now
  void SetFocus();

  /// The operator clicked it, or pressed its access key. Does nothing where it cannot take the focus.
  virtual void Press();

  /// Called before the focus leaves the control: what is half typed is written now.
  virtual void FinishTyping() {}

  /// The selected text of a control that holds text; the clipboard commands' business.
  ///   throws  Failure 438 for a control that has none
  virtual std::string SelText() const;
  virtual void SetSelText(const std::string& text);

  std::string Name;               ///< such as "txtInput(0)"
  std::string ToolTip;            ///< one line
  std::string AccessibleName;     ///< what a screen reader says
  ControlOwner* Owner = nullptr;  ///< the form; none before it is added to one
  Control* Container = nullptr;   ///< the frame it lies in; its place is then relative to the frame

  Property<int> Left{*this}, Top{*this}, Width{*this}, Height{*this};
  Property<bool> Visible{*this, true};
  Property<bool> Enabled{*this, true};
  Property<int> TabIndex{*this, -1};

  std::function<void()> GotFocus, LostFocus;

 private:
  bool InDisabledFrame() const { return Container != nullptr && !Container->Enabled; }
};

/// A control that takes keys before they have their usual effect.
class KeyControl : public Control {
 public:
  void Design(std::string name, std::string text, Place place) override;
  bool TakesFocus() const override { return true; }

  /// Any key going down; `shift` has bit 0 Shift, bit 1 Ctrl, bit 2 Alt.
  std::function<void(int keyCode, int shift)> KeyDown;
  /// A key that makes a character (Enter 13, Esc 27 and Backspace 8 among them); `keyAscii` can be
  /// changed, 0 swallows the key. Beyond 126 it is the character's Unicode number.
  std::function<void(int& keyAscii)> KeyPress;
};

class TextBox : public KeyControl {
 public:
  void Design(std::string name, std::string text, Place place) override;

  /// Setting it by code puts the caret to the start.
  Property<std::string> Text{*this};
  Property<int> SelStart{*this};   ///< caret, in characters
  Property<int> SelLength{*this};  ///< selected characters behind it
  Property<Color> BackColor{*this, kWhite};
  Property<Alignment> Align{*this, Alignment::Left};
  bool Border = true;
  bool Bold = false;

  std::string SelText() const override;
  /// Replaces the selection, or inserts at the caret; the caret ends up behind the new text. Line
  /// breaks and control characters become blanks.
  void SetSelText(const std::string& text) override;
  bool CaretAtStart() const { return SelStart == 0; }
  bool CaretAtEnd() const;

  /// The operator has typed: text and caret as they stand on the screen now. No event.
  void Typed(std::string text, int selStart, int selLength);
};

class Label : public Control {
 public:
  void Design(std::string name, std::string text, Place place) override;
  Property<std::string> Caption{*this};
  Property<Alignment> Align{*this, Alignment::Left};
  bool Bold = false;
  /// Repaints at once, before the running routine ends.
  void Refresh();
};

class Frame : public Control {
 public:
  void Design(std::string name, std::string text, Place place) override;
  Property<std::string> Caption{*this};
  bool Border = true;
};

/// A coloured rectangle behind other controls.
class Shape : public Control {
 public:
  Property<Color> FillColor{*this, kYellow};
};

/// Shows the computer's time; runs by itself wherever it is drawn.
class ClockControl : public Control {};

class Button : public KeyControl {
 public:
  void Design(std::string name, std::string text, Place place) override;
  Property<std::string> Caption{*this};
  std::function<void()> Click;
  void Press() override;
};

/// One of several in the same frame, of which one at most is set. A change to set raises Click,
/// whether the operator made it or a routine; pressing one that is set raises it too.
class OptionButton : public Control {
 public:
  OptionButton();
  void Design(std::string name, std::string text, Place place) override;
  bool TakesFocus() const override { return true; }
  void Press() override;
  Property<std::string> Caption{*this};
  Property<bool> Value{*this};
  std::function<void()> Click;
};

/// Value 1 is on, 0 is off. Every change raises Click.
class CheckBox : public Control {
 public:
  CheckBox();
  void Design(std::string name, std::string text, Place place) override;
  bool TakesFocus() const override { return true; }
  void Press() override;
  Property<std::string> Caption{*this};
  Property<int> Value{*this};
  std::function<void()> Click;
};

/// A menu or one of its entries. The caption "-" is a separator; "&" marks the access key.
class MenuItem : public Control {
 public:
  void Design(std::string name, std::string text, Place place) override;
  Property<std::string> Caption{*this};
  Property<bool> Checked{*this};
  std::string Shortcut;      ///< such as "Ctrl+M", or empty
  MenuItem* Menu = nullptr;  ///< the menu that the entry belongs to; none for a menu itself
  std::function<void()> Click;
};

}  // namespace ostrel
