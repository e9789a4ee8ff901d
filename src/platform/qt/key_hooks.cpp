#include "platform/qt/key_hooks.h"

namespace ostrel {

bool RaiseKeys(Form& form, KeyControl& control, int keyCode, int shift, int& character) {
  // The focus may have gone while the key waited in the queue; a hook may send it away. Either way
  // the key has lost its control, and typing it into the next one would be a surprise.
  if (form.ActiveControl() != &control) return false;
  if (control.KeyDown) form.Raise([&] { control.KeyDown(keyCode, shift); });
  if (form.ActiveControl() != &control) return false;
  if (character == 0) return true;
  if (control.KeyPress) form.Raise([&] { control.KeyPress(character); });
  return character != 0 && form.ActiveControl() == &control;
}

}  // namespace ostrel
