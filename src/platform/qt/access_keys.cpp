#include "platform/qt/access_keys.h"

#include <cctype>

namespace ostrel {

namespace {

const std::string* CaptionOf(const Control& control) {
  if (const auto* button = dynamic_cast<const Button*>(&control)) return &button->Caption.Get();
  if (const auto* option = dynamic_cast<const OptionButton*>(&control)) {
    return &option->Caption.Get();
  }
  if (const auto* check = dynamic_cast<const CheckBox*>(&control)) return &check->Caption.Get();
  return nullptr;
}

char AccessLetter(const std::string& caption) {
  const std::size_t mark = caption.find('&');
  if (mark == std::string::npos || mark + 1 >= caption.size()) return '\0';
  return static_cast<char>(std::toupper(static_cast<unsigned char>(caption[mark + 1])));
}

}  // namespace

Control* AccessKeyOwner(const Form& form, char letter) {
  for (Control* control : form.Controls()) {
    const std::string* caption = CaptionOf(*control);
    if (caption == nullptr || AccessLetter(*caption) != letter) continue;
    // What cannot be used now leaves its letter to the next control, and at last to the menus.
    if (control->CanTakeFocus()) return control;
  }
  return nullptr;
}

}  // namespace ostrel
