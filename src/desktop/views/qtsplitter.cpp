#include "desktop/views/qtsplitter.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/views/qttext.h"
#include "desktop/views/splitterbar.h"

namespace qmrules::desktop {

using platform::widgets::SplitDirection;
using platform::widgets::Splitter;

namespace {

constexpr int kWhole = 1000;

}  // namespace

// One divided pane. Its sizes follow the share, which only the user's own drag changes: a size that comes out otherwise
// since a part has a least size is not told to the model.
class QtSplitter::Division final : public QSplitter {
 public:
  Division(Splitter& model, const Pane& pane)
      : QSplitter(pane.direction == SplitDirection::SideBySide ? Qt::Horizontal : Qt::Vertical),
        model_(model),
        name_(pane.name) {
    setObjectName(ToQt(pane.name));
    setChildrenCollapsible(false);
    connect(this, &QSplitter::splitterMoved, this, [this] { Dragged(); });
  }

  void ShowShare(int share) {
    share_ = share;
    const int room = (orientation() == Qt::Horizontal ? width() : height()) - handleWidth();
    if (room <= 0 || dragging_) return;
    const int first = room * share / kWhole;
    setSizes({first, room - first});
  }

 protected:
  QSplitterHandle* createHandle() override { return new SplitterBar(orientation(), this); }

  void resizeEvent(QResizeEvent* event) override {
    QSplitter::resizeEvent(event);
    ShowShare(share_);
  }

 private:
  void Dragged() {
    const QList<int> now = sizes();
    const int room = now[0] + now[1];
    if (room <= 0) return;
    const QScopedValueRollback<bool> dragging(dragging_, true);
    share_ = now[0] * kWhole / room;
    model_.Drag(name_, share_);
  }

  Splitter& model_;
  std::string name_;
  int share_ = kWhole / 2;
  bool dragging_ = false;
};

QtSplitter::QtSplitter(Splitter& model, std::map<std::string, QWidget*> panes, QWidget* parent)
    : QWidget(parent),
      model_(model),
      panes_(std::move(panes)),
      changed_(model.OnChanged.Subscribe([this] { Show(); })) {
  auto* const whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  for (const auto& [name, pane] : panes_) pane->setParent(this);
  Show();
}

QtSplitter::~QtSplitter() = default;

std::string QtSplitter::ShapeOf(const Pane& pane) {
  if (pane.first == nullptr) return pane.name;
  const char direction = pane.direction == SplitDirection::SideBySide ? 'h' : 'v';
  return pane.name + "(" + direction + ShapeOf(*pane.first) + "," + ShapeOf(*pane.second) + ")";
}

QWidget* QtSplitter::Make(const Pane& pane) {
  if (pane.first == nullptr) {
    const auto found = panes_.find(pane.name);
    if (found == panes_.end()) return new QWidget;
    found->second->show();
    return found->second;
  }
  auto* const division = new Division(model_, pane);
  divisions_[pane.name] = division;
  division->addWidget(Make(*pane.first));
  division->addWidget(Make(*pane.second));
  return division;
}

void QtSplitter::Build() {
  const bool topIsPane =
      std::any_of(panes_.begin(), panes_.end(), [this](const auto& entry) { return entry.second == top_; });
  for (const auto& [name, pane] : panes_) {
    pane->setParent(this);
    pane->hide();
  }
  divisions_.clear();
  if (!topIsPane) delete top_;
  top_ = Make(model_.Root());
  layout()->addWidget(top_);
  top_->show();
}

bool QtSplitter::IsEmptyLeaf(const Pane& pane) const {
  const auto found = empty_.find(pane.name);
  return pane.first == nullptr && found != empty_.end() && found->second;
}

void QtSplitter::ShowShares(const Pane& pane) {
  if (pane.first == nullptr) return;
  Division& division = *divisions_.at(pane.name);
  const bool firstIsEmpty = IsEmptyLeaf(*pane.first);
  const bool secondIsEmpty = IsEmptyLeaf(*pane.second);
  division.widget(0)->setVisible(!firstIsEmpty || secondIsEmpty);
  division.widget(1)->setVisible(!secondIsEmpty || firstIsEmpty);
  division.refresh();
  division.ShowShare(pane.share);
  ShowShares(*pane.first);
  ShowShares(*pane.second);
}

void QtSplitter::Show() {
  if (!model_.On()) {
    if (top_ != nullptr) top_->hide();
    return;
  }
  if (const std::string shape = ShapeOf(model_.Root()); shape != shape_ || top_ == nullptr) {
    shape_ = shape;
    Build();
  }
  top_->show();
  ShowShares(model_.Root());
}

// Those in sight, from the outside inwards.
void QtSplitter::CollectBars(const Pane& pane, std::vector<SplitterBar*>& bars) const {
  if (pane.first == nullptr) return;
  auto* const bar = static_cast<SplitterBar*>(divisions_.at(pane.name)->handle(1));
  if (bar->isVisible()) bars.push_back(bar);
  CollectBars(*pane.first, bars);
  CollectBars(*pane.second, bars);
}

void QtSplitter::GoToNextBar() {
  std::vector<SplitterBar*> bars;
  if (model_.On()) CollectBars(model_.Root(), bars);
  if (bars.empty()) return;
  QWidget* const now = QApplication::focusWidget();
  const auto current = std::ranges::find(bars, now);
  if (current == bars.end()) {
    bars.front()->TakeKeyboard(now);
  } else if (current + 1 != bars.end()) {
    (*(current + 1))->TakeKeyboard((*current)->Before());
  } else {
    (*current)->GiveKeyboardBack();
  }
}

void QtSplitter::SetEmpty(const std::string& pane, bool empty) {
  bool& held = empty_[pane];
  if (held == empty) return;
  held = empty;
  Show();
}

}  // namespace qmrules::desktop
