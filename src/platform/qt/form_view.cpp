#include "platform/qt/form_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontInfo>
#include <QMenuBar>
#include <QScreen>

#include "platform/forms/grid.h"
#include "platform/qt/fitted_text.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/view_factory.h"

namespace ostrel {

namespace {

constexpr int kMenuAndTitleTwips =
    900;                                // what stands above the form's inside, for choosing a scale
constexpr int kFewestGridTwips = 2400;  // the grid is never lower

/// The form's inside.
class Canvas : public QWidget {
 public:
  explicit Canvas(std::function<void()> resized) : resized_(std::move(resized)) {}

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override { resized_(); }

 private:
  std::function<void()> resized_;
};

Scaling ScaleFor(const Form& form, std::optional<double> factor) {
  if (factor) return Scaling(*factor);
  const QSize available = QGuiApplication::primaryScreen()->availableSize();
  return Scaling::ForScreen(available, {form.Width, form.Height + kMenuAndTitleTwips});
}

/// Whether the design's height for the control is that of its text, so that a font of another
/// height needs another place.
bool HoldsText(const Control& control) {
  return dynamic_cast<const Label*>(&control) != nullptr ||
         dynamic_cast<const OptionButton*>(&control) != nullptr ||
         dynamic_cast<const CheckBox*>(&control) != nullptr ||
         dynamic_cast<const TextBox*>(&control) != nullptr;
}

}  // namespace

FormView::FormView(Form& form, EventEdge& edge, std::optional<double> factor)
    : form_(form),
      edge_(edge),
      input_(form, edge),
      surface_{form, edge, input_, ScaleFor(form, factor)},
      canvas_(new Canvas([this] { PlaceAll(); })) {
  // Every widget of the form inherits this font; the menus do not, since the system's may be
  // larger.
  canvas_->setFont(FormFont(surface_.Scale.Factor()));
  designed_ = {surface_.Scale.Pixels(form.Width), surface_.Scale.Pixels(form.Height)};
  setCentralWidget(canvas_);
  menus_ = std::make_unique<MenuView>(form, edge, *menuBar(), TextFont());
  BuildControls();

  // The window can be made as low as the grid allows; nothing else of the form gives way.
  const int spare = stretching_ == nullptr ? 0 : stretching_->Height - kFewestGridTwips;
  canvas_->setMinimumSize(designed_ - QSize(0, surface_.Scale.Pixels(std::max(0, spare))));
  resize(designed_ + QSize(0, menuBar()->sizeHint().height()));
  form.SetObserver(this);
  edge.Raise = [&form](const std::function<void()>& action) { form.Raise(action); };
  // What routines change without telling: the recordset's place, and the focus of a control that is
  // no longer on show.
  edge.Afterwards = [this] {
    for (ControlView* view : views_) view->Afterwards();
    FollowFocus();
  };
}

FormView::~FormView() {
  form_.SetObserver(nullptr);
  edge_.Raise = nullptr;
  edge_.Afterwards = nullptr;
}

QFont FormView::TextFont() const {
  const QFont form = FormFont(surface_.Scale.Factor());
  const QFont system = QApplication::font();
  return QFontInfo(system).pixelSize() > QFontInfo(form).pixelSize() ? system : form;
}

void FormView::BuildControls() {
  for (Control* control : form_.Controls()) {
    if (dynamic_cast<Grid*>(control) != nullptr) stretching_ = control;
  }
  // A second pass: which control stretches must be known before the first one is placed.
  for (Control* control : form_.Controls()) FollowControl(*control, ViewOf(*control));
}

/// Made when first asked for, so that a frame is there before what lies in it.
ControlView& FormView::ViewOf(Control& control) {
  if (ControlView* made = views_.value(&control)) return *made;
  QWidget& parent = control.Container == nullptr ? *canvas_ : ViewOf(*control.Container).Widget();
  ControlView& view = MakeControlView(control, surface_, parent);
  view.Widget().setObjectName(ToQt(control.Name));
  view.Widget().setAccessibleName(ToQt(control.AccessibleName));
  view.Widget().setToolTip(ToQt(control.ToolTip));
  views_.insert(&control, &view);
  return view;
}

QWidget& FormView::WidgetOf(const Control& control) const {
  return views_.value(&control)->Widget();
}

void FormView::FollowControl(Control& control, ControlView& view) {
  QWidget& widget = view.Widget();
  Place(control, widget);
  widget.setEnabled(control.Enabled);
  widget.setVisible(control.Visible);
  view.Follow();
}

void FormView::ControlChanged(Control& control) {
  if (const auto* item = dynamic_cast<const MenuItem*>(&control)) {
    menus_->Follow(*item);
  } else if (ControlView* view = views_.value(&control)) {
    FollowControl(control, *view);
    PlaceWithin(control);
  }
}

void FormView::FocusMoved(Control& control) {
  ViewOf(control).FocusTarget().setFocus(Qt::OtherFocusReason);
}

/// A control that an event has disabled or hidden under the focus hands it on. The menu bar keeps
/// the keyboard for as long as it has it.
void FormView::FollowFocus() {
  Control* active = form_.ActiveControl();
  if (active != nullptr && form_.Visible && !active->CanTakeFocus()) {
    form_.FocusNext(Direction::Forward);
  }
  active = form_.ActiveControl();
  if (active == nullptr || menuBar()->hasFocus()) return;
  QWidget& target = ViewOf(*active).FocusTarget();
  if (!target.hasFocus()) target.setFocus(Qt::OtherFocusReason);
}

void FormView::RepaintNow(Control& control) { ViewOf(control).Widget().repaint(); }

void FormView::FormChanged() {
  setWindowTitle(ToQt(form_.Caption));
  // Place and size are looked at when the window comes up and never again: from then on they are
  // the operator's.
  if (form_.Visible == isVisible()) return;
  if (form_.Visible) PlaceWindow();
  setVisible(form_.Visible);
  if (form_.Visible) activateWindow();  // shortcuts need it where no window manager does it
}

void FormView::Unloaded() {
  hide();
  QCoreApplication::quit();
}

/// The form decides: the window stays until Unload has saved the settings, and is hidden by it.
void FormView::closeEvent(QCloseEvent* event) {
  event->setAccepted(!form_.Visible);
  if (form_.Visible) edge_.Run([this] { form_.Unload(); });
}

/// In the middle of the screen and as high up as the form asks. The form's height counts the menu
/// bar in; more than the design needs goes to the grid.
void FormView::PlaceWindow() {
  const QRect free = screen()->availableGeometry();
  const int high = std::max(height(), surface_.Scale.Pixels(form_.Height));
  resize(width(), std::min(high, free.height()));
  move(free.left() + std::max(0, free.width() - width()) / 2,
       free.top() + surface_.Scale.Pixels(form_.Top));
}

void FormView::PlaceAll() {
  for (auto view = views_.begin(); view != views_.end(); ++view) {
    Place(*view.key(), view.value()->Widget());
  }
}

/// What lies in a frame is rounded to pixels by its place on the form, which moves with the frame.
void FormView::PlaceWithin(const Control& frame) {
  for (auto view = views_.begin(); view != views_.end(); ++view) {
    if (view.key()->Container == &frame) Place(*view.key(), view.value()->Widget());
  }
}

/// The grid takes what the window has beyond the design, and what lies below it moves down.
void FormView::Place(const Control& control, QWidget& widget) const {
  // A font may be taller than the design's line. The text then grows evenly to both sides, since a
  // caption that is cut cannot be read and one that moves looks torn from its box.
  QRect place = surface_.Scale.Of(control);
  if (HoldsText(control)) {
    const int missing = std::max(0, widget.fontMetrics().height() + 1 - place.height());
    place.adjust(0, -missing / 2, 0, missing - missing / 2);
    if (place.top() < 0) place.moveTop(0);
  }
  const QSize extra = canvas_->size() - designed_;
  if (&control == stretching_) {
    place.setSize(place.size() + extra);
  } else if (stretching_ != nullptr && control.Container == nullptr &&
             control.Top >= stretching_->Top + stretching_->Height) {
    place.translate(0, extra.height());
  }
  widget.setGeometry(place);
}

}  // namespace ostrel
