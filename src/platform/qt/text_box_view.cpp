#include "platform/qt/text_box_view.h"

#include <QPainter>

#include "platform/qt/fitted_text.h"
#include "platform/qt/pixel_lines.h"

namespace ostrel {

namespace {
constexpr int kMarginTwips = 15;
}

TextBoxView::TextBoxView(TextBox& box, const Surface& surface, QWidget* parent)
    : LineEditor(box, surface, parent), box_(box) {
  if (box.Bold) {
    QFont bold = FormFont(surface.Scale.Factor());
    bold.setBold(true);
    setFont(bold);
  }
  const int margin = box.Border ? surface.Scale.Pixels(kMarginTwips) : 0;
  setTextMargins(margin, 0, margin, 0);
  surface.Input.Watch(*this, box);
}

void TextBoxView::Follow() {
  FollowColor();
  setAlignment(AlignmentFlags(box_.Align));
  ShowText(box_.Text, {box_.SelStart, box_.SelLength});
}

/// The colour alone tells where the focus is, so it is the same in every theme, and on a box that is
/// disabled too.
void TextBoxView::FollowColor() {
  const Color& back = box_.BackColor.Get();
  const QColor wanted(back.Red, back.Green, back.Blue);
  if (palette().color(QPalette::Base) == wanted) return;
  QPalette colors = palette();
  colors.setColor(QPalette::Base, wanted);
  colors.setColor(QPalette::Active, QPalette::Text, Qt::black);
  colors.setColor(QPalette::Inactive, QPalette::Text, Qt::black);
  colors.setColor(QPalette::Disabled, QPalette::Text, Qt::darkGray);
  setPalette(colors);
}

void TextBoxView::Report(std::string text, Selection selection) {
  box_.Typed(std::move(text), selection.Start, selection.Length);
}

void TextBoxView::paintEvent(QPaintEvent* event) {
  LineEditor::paintEvent(event);
  if (!box_.Border) return;
  QPainter painter(this);
  DrawFrame(painter, rect(), Qt::darkGray);
}

}  // namespace ostrel
