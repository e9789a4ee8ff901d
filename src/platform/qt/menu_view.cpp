#include "platform/qt/menu_view.h"

#include <QMenu>

#include "platform/qt/qt_text.h"

namespace ostrel {

MenuView::MenuView(const Form& form, EventEdge& edge, QMenuBar& bar, const QFont& font) {
  bar.setFont(font);
  for (const MenuItem* item : form.Menus()) {
    if (item->Menu == nullptr) {
      QMenu* menu = bar.addMenu(ToQt(item->Caption));
      menu->setFont(font);
      actions_.insert(item, menu->menuAction());
    } else {
      QMenu* menu = actions_.value(item->Menu)->menu();
      QAction* action = menu->addAction(QString());
      actions_.insert(item, action);
      Tie(*item, *action, edge);
    }
    Follow(*item);
  }
}

/// A shortcut belongs to the whole window, boxes and the grid's cell editor included.
void MenuView::Tie(const MenuItem& item, QAction& action, EventEdge& edge) {
  action.setSeparator(item.Caption.Get() == "-");
  action.setShortcut(QKeySequence(ToQt(item.Shortcut)));
  action.setMenuRole(QAction::NoRole);
  QObject::connect(&action, &QAction::triggered, &action, [this, &item, &edge] {
    Follow(item);  // only the routine changes the check mark
    edge.Run(item.Click);
  });
}

void MenuView::Follow(const MenuItem& item) {
  QAction* action = actions_.value(&item);
  if (!action->isSeparator()) action->setText(ToQt(item.Caption));
  // Checkable only while it is checked, so that an entry without a mark has no empty box beside it.
  action->setCheckable(item.Checked);
  action->setChecked(item.Checked);
  action->setVisible(item.Visible);
  action->setEnabled(item.Enabled);
}

}  // namespace ostrel
