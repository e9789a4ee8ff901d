#pragma once

// From the design's twips to pixels: one factor for the whole form. Edges are rounded, not widths,
// and each is rounded at its place in the form, so that two edges that meet in the design meet on
// the screen, in whichever frame or grid they lie.

#include <QRect>
#include <QSize>
#include <algorithm>
#include <cmath>

#include "platform/forms/control.h"

namespace ostrel {

class Scaling {
 public:
  static constexpr double kTwipsPerPixel = 15.0;  ///< at factor 1

  explicit Scaling(double factor) : factor_(factor) {}

  /// The factor at which a form of `twips` leaves a tenth of the screen free.
  static Scaling ForScreen(QSize available, QSize twips) {
    constexpr double kShare = 0.9, kStep = 0.05, kSmallest = 0.5, kLargest = 4.0;
    const double across = available.width() * kShare * kTwipsPerPixel / twips.width();
    const double down = available.height() * kShare * kTwipsPerPixel / twips.height();
    const double whole = std::floor(std::min(across, down) / kStep) * kStep;
    return Scaling(std::clamp(whole, kSmallest, kLargest));
  }

  double Factor() const { return factor_; }
  int Pixels(int twips) const {
    return static_cast<int>(std::floor(twips * factor_ / kTwipsPerPixel + 0.5));
  }

  /// Distance on the screen from one place in the form to another.
  int Between(int fromTwips, int toTwips) const { return Pixels(toTwips) - Pixels(fromTwips); }

  /// A control's rectangle inside the frame or form that holds it.
  QRect Of(const Control& control) const {
    const int originX = LeftInForm(control.Container), originY = TopInForm(control.Container);
    const int left = originX + control.Left, top = originY + control.Top;
    return {Between(originX, left), Between(originY, top), Between(left, left + control.Width),
            Between(top, top + control.Height)};
  }

  static int LeftInForm(const Control* control) {
    return control == nullptr ? 0 : control->Left + LeftInForm(control->Container);
  }
  static int TopInForm(const Control* control) {
    return control == nullptr ? 0 : control->Top + TopInForm(control->Container);
  }

 private:
  double factor_;
};

}  // namespace ostrel
