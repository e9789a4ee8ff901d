#include "platform/qt/data_control_view.h"

#include <QAbstractButton>
#include <QPainter>
#include <QPolygon>
#include <QStyleOptionButton>

#include "platform/qt/fitted_text.h"
#include "platform/qt/qt_text.h"

namespace ostrel {

namespace {

void MoveFirst(Recordset& rows) { rows.MoveFirst(); }

/// Before the first row, or with no current row, the walk stays at the end it has come to.
void MovePrevious(Recordset& rows) {
  if (!rows.Bof()) rows.MovePrevious();
  if (rows.Bof()) rows.MoveFirst();
}

void MoveNext(Recordset& rows) {
  if (!rows.Eof()) rows.MoveNext();
  if (rows.Eof()) rows.MoveLast();
}

void MoveLast(Recordset& rows) { rows.MoveLast(); }

struct Step {
  const char* Name;
  bool Forward, ToTheEnd;
  void (*Move)(Recordset&);
};

constexpr Step kSteps[] = {
    {.Name = "First line", .Forward = false, .ToTheEnd = true, .Move = MoveFirst},
    {.Name = "Previous line", .Forward = false, .ToTheEnd = false, .Move = MovePrevious},
    {.Name = "Next line", .Forward = true, .ToTheEnd = false, .Move = MoveNext},
    {.Name = "Last line", .Forward = true, .ToTheEnd = true, .Move = MoveLast},
};

class StepButton : public QAbstractButton {
 public:
  StepButton(const Step& step, QWidget* parent) : QAbstractButton(parent), step_(step) {
    setFocusPolicy(Qt::NoFocus);
    setAccessibleName(step.Name);
    setToolTip(step.Name);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    QStyleOptionButton option;
    option.initFrom(this);
    option.state |= isDown() ? QStyle::State_Sunken : QStyle::State_Raised;
    style()->drawControl(QStyle::CE_PushButtonBevel, &option, &painter, this);

    const int half = std::min(width(), height()) / 4;
    const int tip = step_.Forward ? half : -half;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect().center());
    painter.setBrush(palette().color(QPalette::ButtonText));
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(
        QPolygon{QPoint(-tip / 2, -half), QPoint(-tip / 2, half), QPoint(tip / 2, 0)});
    if (step_.ToTheEnd) painter.drawRect(QRect(tip / 2 - (tip < 0 ? 2 : 0), -half, 2, 2 * half));
  }

 private:
  const Step& step_;
};

}  // namespace

DataControlView::DataControlView(DataControl& control, const Surface& surface, QWidget* parent)
    : QWidget(parent), control_(control) {
  for (const Step& step : kSteps) {
    auto* button = new StepButton(step, this);
    connect(button, &QAbstractButton::clicked, this, [&control, &step, surface] {
      surface.Edge.Run([&] {
        if (Control* active = surface.Shown.ActiveControl()) active->FinishTyping();
        Recordset& rows = control.Recordset;
        if (rows && rows.RowCount() > 0) step.Move(rows);
      });
    });
  }
}

/// Two buttons on either side, each as wide as a sixth of the control, and the name between them.
void DataControlView::resizeEvent(QResizeEvent* /*event*/) {
  const int wide = width() / 6;
  const int lefts[] = {0, wide, width() - 2 * wide, width() - wide};
  int number = 0;
  for (QObject* child : children()) {
    if (auto* button = qobject_cast<QAbstractButton*>(child)) {
      button->setGeometry(lefts[number++], 0, wide, height());
    }
  }
}

void DataControlView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::WindowText));
  const int wide = width() / 6;
  DrawFitted(painter, rect().adjusted(2 * wide + 2, 0, -2 * wide - 2, 0), Qt::AlignCenter,
             ToQt(control_.Name));
}

}  // namespace ostrel
