#pragma once

// Access keys and what a click means, whatever made it.

#include "platform/forms/form.h"

namespace ostrel {

/// The button, option button or check box whose caption marks `letter` (upper case) with "&" and
/// that can be used now; nullptr when there is none.
Control* AccessKeyOwner(const Form& form, char letter);

/// The operator's click: a button is pressed, an option button set, a check box turned over. The
/// control takes the focus first.
void Operate(Control& control);

}  // namespace ostrel
