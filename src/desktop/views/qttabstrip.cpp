#include "desktop/views/qttabstrip.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

#include "desktop/views/qttext.h"

namespace qmrules::desktop {

using platform::widgets::TabStrip;

QtTabStrip::QtTabStrip(FocusBridge& focus, TabStrip& model, QWidget* parent)
    : QTabBar(parent),
      model_(model),
      binding_(focus, model, *this, WidgetBinding::Acting::Model),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  setDrawBase(true);
  setExpanding(false);
  setUsesScrollButtons(true);
  connect(this, &QTabBar::currentChanged, this, [this](int place) { Chosen(place); });
  connect(this, &QTabBar::tabBarClicked, this, [this](int place) {
    if (place == currentIndex()) Chosen(place);
  });
  Show();
}

void QtTabStrip::Show() {
  const QSignalBlocker silent(this);
  const auto& tabs = model_.Tabs();
  while (count() > static_cast<int>(tabs.size())) removeTab(count() - 1);
  for (int place = 0; place < static_cast<int>(tabs.size()); ++place) {
    const auto& tab = tabs[static_cast<std::size_t>(place)];
    const QString caption = ToQt(tab.caption);
    if (place == count()) {
      addTab(caption);
    } else if (tabText(place) != caption) {
      setTabText(place, caption);
    }
    if (tab.key == model_.Selected()) setCurrentIndex(place);
  }
}

// A click on another tab comes as a change of the current one, whichever way it was made.
void QtTabStrip::Chosen(int place) {
  if (choosing_ || place < 0 || place >= static_cast<int>(model_.Tabs().size())) return;
  const QScopedValueRollback<bool> choosing(choosing_, true);
  model_.Choose(model_.Tabs()[static_cast<std::size_t>(place)].key);
  Show();
}

}  // namespace qmrules::desktop
