#pragma once

// The menus of a form in the window's menu bar.

#include <QHash>
#include <QMenuBar>

#include "platform/forms/form.h"
#include "platform/qt/event_edge.h"

namespace ostrel {

class MenuView {
 public:
  MenuView(Form& form, EventEdge& edge, QMenuBar& bar, const QFont& font);

  /// Shows what the entry holds now: caption, check mark, visible, enabled.
  void Follow(const MenuItem& item);

 private:
  void Tie(Form& form, const MenuItem& item, QAction& action, EventEdge& edge);

  QHash<const MenuItem*, QAction*> actions_;
};

}  // namespace ostrel
