#pragma once

// Which view draws which kind of control: the one place that knows all of them.

#include "platform/qt/control_view.h"

namespace ostrel {

/// The view that fits the kind of control; `parent` owns it.
ControlView& MakeControlView(Control& control, const Surface& surface, QWidget& parent);

}  // namespace ostrel
