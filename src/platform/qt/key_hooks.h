#pragma once

// The form's say in a key, before the key has its usual effect.

#include "platform/forms/form.h"

namespace ostrel {

/// Key code of a character that an input method has made.
inline constexpr int kInputMethodKey = 229;

/// Raises KeyDown and, for a key that makes a character, KeyPress.
///   character  0 for none; the hook may change it
///   returns    whether the key goes on to its usual effect: not when it has been swallowed, and not
///              when the focus has moved meanwhile
bool RaiseKeys(Form& form, KeyControl& control, int keyCode, int shift, int& character);

}  // namespace ostrel
