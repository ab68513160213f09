#pragma once

#include <QMenu>

#include "platform/event.h"
#include "platform/widgets/menu.h"

namespace qmrules::desktop {

// Shows a menu, in a menu bar or as a popup. Hidden items take no room; a separator stands only between items that are
// seen.
class QtMenu final : public QMenu {
 public:
  // `model` outlives this. Choosing an entry clicks its item.
  explicit QtMenu(platform::widgets::Menu& model, QWidget* parent = nullptr);

  // The same for a popup: opens it at the place, in screen coordinates, and gives the item chosen, or nullptr. The item
  // is not clicked.
  platform::widgets::MenuItem* Choose(const QPoint& place);

 private:
  void Show();
  void Fill();
  platform::widgets::MenuItem* ItemOf(const QAction* action) const;

  platform::widgets::Menu& model_;
  bool choosing_ = false;
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
