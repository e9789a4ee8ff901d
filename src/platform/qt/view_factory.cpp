#include "platform/qt/view_factory.h"

#include <cassert>
#include <cstdlib>

#include "platform/forms/data_control.h"
#include "platform/forms/grid.h"
#include "platform/qt/button_views.h"
#include "platform/qt/clock_view.h"
#include "platform/qt/data_control_view.h"
#include "platform/qt/grid_view.h"
#include "platform/qt/plain_views.h"
#include "platform/qt/text_box_view.h"

namespace ostrel {

namespace {

template <class Model, class View>
ControlView* ViewIfKind(Control& control, const Surface& surface, QWidget& parent) {
  auto* model = dynamic_cast<Model*>(&control);
  return model == nullptr ? nullptr : new View(*model, surface, &parent);
}

}  // namespace

ControlView& MakeControlView(Control& control, const Surface& surface, QWidget& parent) {
  using Maker = ControlView* (*)(Control&, const Surface&, QWidget&);
  constexpr Maker kMakers[] = {
      ViewIfKind<TextBox, TextBoxView>,
      ViewIfKind<Label, LabelView>,
      ViewIfKind<Button, ButtonView>,
      ViewIfKind<OptionButton, OptionButtonView>,
      ViewIfKind<CheckBox, CheckBoxView>,
      ViewIfKind<Frame, FrameView>,
      ViewIfKind<Shape, ShapeView>,
      ViewIfKind<ClockControl, ClockView>,
      ViewIfKind<DataControl, DataControlView>,
      ViewIfKind<Grid, GridView>,
  };
  for (const Maker make : kMakers) {
    if (ControlView* view = make(control, surface, parent)) return *view;
  }
  assert(false && "a kind of control that has no view");
  std::abort();
}

}  // namespace ostrel
