#pragma once

#include <QSplitter>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/event.h"
#include "platform/widgets/splitter.h"

namespace qmrules::desktop {

class SplitterBar;

// Shows the layout of a splitter by splitters within each other. A pane that is empty leaves its room to the other one
// of its division, unless that one is empty too or the pane is divided itself.
class QtSplitter final : public QWidget {
 public:
  // `model` outlives this. The panes become children of this; a pane that the layout does not name is hidden.
  QtSplitter(platform::widgets::Splitter& model, std::map<std::string, QWidget*> panes, QWidget* parent);
  ~QtSplitter() override;

  // Tells by its name whether a pane has something to show now.
  void SetEmpty(const std::string& pane, bool empty);

  // Brings the keyboard to the first bar, from there to the next one, and from the last one back to where it was.
  void GoToNextBar();

 private:
  using Pane = platform::widgets::Splitter::Pane;
  class Division;

  void Show();
  void Build();
  QWidget* Make(const Pane& pane);
  void ShowShares(const Pane& pane);
  bool IsEmptyLeaf(const Pane& pane) const;
  void CollectBars(const Pane& pane, std::vector<SplitterBar*>& bars) const;
  static std::string ShapeOf(const Pane& pane);

  platform::widgets::Splitter& model_;
  std::map<std::string, QWidget*> panes_;
  std::map<std::string, bool> empty_;
  std::map<std::string, Division*> divisions_;
  QWidget* top_ = nullptr;
  std::string shape_;  // of the layout shown, without the shares
  platform::Subscription changed_;
};

}  // namespace qmrules::desktop
