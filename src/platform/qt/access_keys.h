#pragma once

// Access keys: the letters that captions mark with "&".

#include "platform/forms/form.h"

namespace ostrel {

/// The button, option button or check box whose caption marks `letter` (upper case) with "&" and
/// that can be used now; nullptr when there is none.
Control* AccessKeyOwner(const Form& form, char letter);

}  // namespace ostrel
