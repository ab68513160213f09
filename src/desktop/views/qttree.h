#pragma once

#include <vector>

#include "desktop/views/rowview.h"
#include "desktop/views/treemodel.h"
#include "desktop/views/widgetbinding.h"
#include "platform/widgets/treeview.h"

namespace qmrules::desktop {

// Shows a tree. Nothing is selected, opened or checked here: each press and key goes to the model as its user's action,
// and what the model then is, is shown.
class QtTree final : public RowView {
 public:
  QtTree(FocusBridge& focus, platform::widgets::TreeView& model, QWidget* parent);
  ~QtTree() override;

  const TreeModel& Items() const { return items_; }

 protected:
  void GoTo(const QModelIndex& index, platform::widgets::ShiftState shift) override;
  void TakeSelection() override;
  void ShowSelection() override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  enum class Place { Beside, Sign, CheckBox, Text };
  Place PlaceAt(const QPoint& point, const QModelIndex& index) const;
  void Press(const QMouseEvent& event, bool twice);
  void ShowExpanded(const platform::widgets::TreeNode& node);

  platform::widgets::TreeView& model_;
  TreeModel items_;
  WidgetBinding binding_;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
