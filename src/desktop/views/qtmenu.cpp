#include "desktop/views/qtmenu.h"

#include <QAction>
#include <QScopedValueRollback>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::Menu;
using platform::widgets::MenuItem;

QtMenu::QtMenu(Menu& model, QWidget* parent)
    : QMenu(parent), model_(model), changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  setObjectName(ToQt(model.Name()));
  setSeparatorsCollapsible(true);
  connect(this, &QMenu::triggered, this, [this](const QAction* action) {
    MenuItem* const item = ItemOf(action);
    if (item != nullptr && !choosing_) item->Click();
  });
  Show();
}

MenuItem* QtMenu::ItemOf(const QAction* action) const {
  const auto place = actions().indexOf(action);
  const auto& items = model_.Items();
  return place < 0 || place >= static_cast<qsizetype>(items.size()) ? nullptr
                                                                    : items[static_cast<std::size_t>(place)].get();
}

void QtMenu::Fill() {
  clear();
  for (std::size_t count = 0; count < model_.Items().size(); ++count) addAction(QString());
}

// One action stands for each item, in the order of the items.
void QtMenu::Show() {
  const auto& items = model_.Items();
  if (actions().size() != static_cast<qsizetype>(items.size())) Fill();
  const QList<QAction*> shown = actions();
  for (std::size_t place = 0; place < items.size(); ++place) {
    const MenuItem& item = *items[place];
    QAction& action = *shown[static_cast<qsizetype>(place)];
    action.setObjectName(ToQt(item.Name()));
    // A separator that has a text shows it.
    action.setText(item.IsSeparator() ? QString() : ToQt(item.Caption()));
    action.setSeparator(item.IsSeparator());
    action.setEnabled(item.Enabled());
    action.setVisible(item.Visible());
    action.setCheckable(item.Checked());
    action.setChecked(item.Checked());
  }
}

MenuItem* QtMenu::Choose(const QPoint& place) {
  const QScopedValueRollback<bool> choosing(choosing_, true);
  return ItemOf(exec(place));
}

}  // namespace qmrules::desktop
