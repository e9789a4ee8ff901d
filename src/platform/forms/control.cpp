#include "platform/forms/control.h"

#include "platform/forms/selection.h"
#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {

namespace detail {
void TellChange(Control& owner) {
  if (owner.Owner != nullptr) owner.Owner->ControlChanged(owner);
}
}  // namespace detail

namespace {

void RaiseOn(const Control& control, const std::function<void()>& routine) {
  if (!routine) return;
  if (control.Owner != nullptr) {
    control.Owner->Raise(routine);
  } else {
    routine();
  }
}

}  // namespace

void Control::Design(std::string name, std::string /*text*/, Place place) {
  Name = std::move(name);
  ToolTip.clear();
  AccessibleName = Name;
  Owner = nullptr;
  Container = nullptr;
  Left.Put(place.Left);
  Top.Put(place.Top);
  Width.Put(place.Width);
  Height.Put(place.Height);
  Visible.Put(true);
  Enabled.Put(true);
  TabIndex.Put(-1);
  GotFocus = nullptr;
  LostFocus = nullptr;
}

bool Control::Shown() const {
  if (!Visible || Owner == nullptr || !Owner->IsVisible()) return false;
  return Container == nullptr || Container->Visible;
}

void Control::SetFocus() {
  if (Owner == nullptr) {
    throw Failure(failure_number::kInvalidCall,
                  "Invalid procedure call: '" + Name + "' is on no form.");
  }
  Owner->SetFocus(*this);
}

void Control::Press() {
  if (CanTakeFocus()) SetFocus();
}

namespace {

[[noreturn]] void RefuseSelection(const std::string& name) {
  throw Failure(failure_number::kNoSuchProperty,
                "Object doesn't support this property: '" + name + "' has no selected text now.");
}

}  // namespace

std::string Control::SelText() const { RefuseSelection(Name); }

void Control::SetSelText(const std::string& /*text*/) { RefuseSelection(Name); }

void KeyControl::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), std::move(text), place);
  KeyDown = nullptr;
  KeyPress = nullptr;
}

void TextBox::Design(std::string name, std::string text, Place place) {
  KeyControl::Design(std::move(name), {}, place);
  Text.Put(std::move(text));
  Text.AfterChange = [this] {
    SelStart = 0;
    SelLength = 0;
  };
  SelStart.Put(0);
  SelLength.Put(0);
  BackColor.Put(kWhite);
  Align.Put(Alignment::Left);
  Border = true;
  Bold = false;
}

std::string TextBox::SelText() const { return SelectedPart(Text, {SelStart, SelLength}); }

void TextBox::SetSelText(const std::string& text) {
  Selection selection{SelStart, SelLength};
  Text = ReplaceSelected(Text, selection, SingleLine(text));
  SelStart = selection.Start;
  SelLength = selection.Length;
}

bool TextBox::CaretAtEnd() const { return SelStart >= static_cast<int>(LengthOf(Text)); }

void TextBox::Typed(std::string text, int selStart, int selLength) {
  Text.Put(std::move(text));
  SelStart.Put(selStart);
  SelLength.Put(selLength);
}

void Label::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), {}, place);
  Caption.Put(std::move(text));
  Align.Put(Alignment::Left);
  Bold = false;
}

void Label::Refresh() {
  if (Owner != nullptr) Owner->RepaintNow(*this);
}

void Frame::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), {}, place);
  Caption.Put(std::move(text));
  Border = true;
}

void Button::Design(std::string name, std::string text, Place place) {
  KeyControl::Design(std::move(name), {}, place);
  Caption.Put(std::move(text));
  Click = nullptr;
}

void Button::Press() {
  if (!CanTakeFocus()) return;
  SetFocus();
  RaiseOn(*this, Click);
}

void OptionButton::Press() {
  if (!CanTakeFocus()) return;
  SetFocus();
  // No change, so no event of its own; the operator has asked for the routine all the same.
  if (Value) return RaiseOn(*this, Click);
  Value = true;
}

void CheckBox::Press() {
  if (!CanTakeFocus()) return;
  SetFocus();
  Value = Value == 0 ? 1 : 0;
}

OptionButton::OptionButton() {
  Value.AfterChange = [this] {
    if (!Value) return;
    if (Owner != nullptr) {
      for (Control* other : Owner->Controls()) {
        auto* option = dynamic_cast<OptionButton*>(other);
        if (option != nullptr && option != this && option->Container == Container)
          option->Value = false;
      }
    }
    RaiseOn(*this, Click);
  };
}

void OptionButton::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), {}, place);
  Caption.Put(std::move(text));
  Value.Put(false);
  Click = nullptr;
}

CheckBox::CheckBox() {
  Value.AfterChange = [this] { RaiseOn(*this, Click); };
}

void CheckBox::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), {}, place);
  Caption.Put(std::move(text));
  Value.Put(0);
  Click = nullptr;
}

void MenuItem::Design(std::string name, std::string text, Place place) {
  Control::Design(std::move(name), {}, place);
  Caption.Put(std::move(text));
  Checked.Put(false);
  Shortcut.clear();
  Menu = nullptr;
  Click = nullptr;
}

}  // namespace ostrel
