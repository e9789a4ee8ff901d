#pragma once

// Text that is never cut: drawn narrower where its place is too narrow for it.

#include <QFont>
#include <QHash>
#include <QPainter>
#include <QRect>
#include <QStaticText>
#include <QString>

#include "platform/forms/control.h"

namespace ostrel {

/// The form's font: 8.25 points at factor 1, with the form's factor and no other.
QFont FormFont(double factor);

/// Alignment as flags; General has the text to the left.
Qt::Alignment AlignmentFlags(Alignment align);

/// Texts laid out once, for a view that draws hundreds of them for each key: laying a text out takes
/// longer than drawing it.
class LaidOutTexts {
 public:
  /// Good until the next call.
  const QStaticText& Of(const QString& text, const QFont& font);

 private:
  QFont font_;
  QHash<QString, QStaticText> texts_;
};

void DrawFitted(QPainter& painter, const QRect& place, Qt::Alignment align,
                const QStaticText& text);

/// Draws one line, squeezed to the width of `place` if it must be. `flags` may hold
/// Qt::TextShowMnemonic.
void DrawFitted(QPainter& painter, const QRect& place, int flags, const QString& text);

}  // namespace ostrel
