#include "platform/forms/form.h"

#include <algorithm>
#include <exception>

#include "platform/values/failure.h"

namespace ostrel {

void Form::Design(std::string caption, int width, int height) {
  controls_.clear();
  menus_.clear();
  active_ = nullptr;
  activeHasGotFocus_ = false;
  observer_ = nullptr;
  Caption = std::move(caption);
  Left = Top = 0;
  Width = width;
  Height = height;
  Visible = false;
  Load = nullptr;
  QueryUnload = nullptr;
  OnFailure = nullptr;
}

void Form::Add(Control& control, Control* container) {
  control.Owner = this;
  control.Container = container;
  controls_.push_back(&control);
}

void Form::AddMenu(MenuItem& item, MenuItem* menu) {
  item.Owner = this;
  item.Menu = menu;
  menus_.push_back(&item);
}

void Form::Changed() {
  if (observer_ != nullptr) observer_->FormChanged();
}

void Form::ControlChanged(Control& control) {
  if (observer_ != nullptr) observer_->ControlChanged(control);
}

void Form::RepaintNow(Control& control) {
  if (observer_ != nullptr) observer_->RepaintNow(control);
}

void Form::Show() {
  Visible = true;
  Changed();
  if (active_ == nullptr) FocusNext(Direction::Forward);
}

void Form::Unload() {
  if (!Visible) return;
  // A cell that is half typed is a line half written; closing the window must not lose it.
  if (active_ != nullptr) active_->FinishTyping();
  Raise(QueryUnload);
  Visible = false;
  if (observer_ != nullptr) observer_->Unloaded();
}

void Form::SetFocus(Control& control) {
  if (!control.CanTakeFocus()) {
    throw Failure(failure_number::kInvalidCall,
                  "Invalid procedure call: '" + control.Name + "' cannot take the focus.");
  }
  if (active_ == &control) return;
  if (active_ != nullptr) active_->FinishTyping();
  Control* old = activeHasGotFocus_ ? active_ : nullptr;
  active_ = &control;
  activeHasGotFocus_ = false;
  // Each move of the focus has its number, by which a move tells whether a later one has overtaken
  // it.
  const unsigned turn = ++turn_;
  if (old != nullptr) Raise(old->LostFocus);
  if (turn != turn_) return;  // LostFocus has sent the focus elsewhere
  activeHasGotFocus_ = true;
  if (observer_ != nullptr) observer_->FocusMoved(control);
  Raise(control.GotFocus);
}

std::vector<Control*> Form::TabOrder() const {
  std::vector<Control*> order;
  std::copy_if(
      controls_.begin(), controls_.end(), std::back_inserter(order),
      [](const Control* control) { return control->TakesFocus() && control->TabIndex >= 0; });
  std::stable_sort(order.begin(), order.end(), [](const Control* a, const Control* b) {
    return a->TabIndex.Get() < b->TabIndex.Get();
  });
  return order;
}

namespace {

/// The Tab key stops once at a group of option buttons: at the one that is set.
bool IsTabStop(const Control& control) {
  const auto* option = dynamic_cast<const OptionButton*>(&control);
  return control.CanTakeFocus() && (option == nullptr || option->Value);
}

}  // namespace

void Form::FocusNext(Direction direction) {
  const bool forward = direction == Direction::Forward;
  const std::vector<Control*> order = TabOrder();
  const auto count = static_cast<std::ptrdiff_t>(order.size());
  if (count == 0) return;
  const auto found = std::find(order.begin(), order.end(), active_);
  const std::ptrdiff_t start =
      found != order.end() ? found - order.begin() : (forward ? -1 : count);
  for (std::ptrdiff_t step = 1; step <= count; ++step) {
    const std::ptrdiff_t place = (start + (forward ? step : -step) + 2 * count) % count;
    Control& next = *order[static_cast<std::size_t>(place)];
    if (!IsTabStop(next)) continue;
    SetFocus(next);
    return;
  }
}

bool Form::Try(const std::function<void()>& step) {
  for (;;) {
    try {
      step();
      return true;
    } catch (const std::exception& fault) {
      if (!OnFailure) throw;
      if (!OnFailure(fault)) return false;
    }
  }
}

void Form::Raise(const std::function<void()>& routine) {
  if (!routine) return;
  try {
    routine();
  } catch (const std::exception& fault) {
    if (!OnFailure) throw;
    OnFailure(fault);
  }
}

}  // namespace ostrel
