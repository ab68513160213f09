#pragma once

#include <QTreeView>
#include <vector>

#include "desktop/views/treemodel.h"
#include "desktop/views/widgetbinding.h"
#include "platform/widgets/treeview.h"

namespace qmrules::desktop {

// Shows a tree. Nothing is selected, opened or checked here: each press and key goes to the model as its user's action,
// and what the model then is, is shown.
class QtTree final : public QTreeView {
 public:
  QtTree(FocusBridge& focus, platform::widgets::TreeView& model, QWidget* parent);
  ~QtTree() override;

  const TreeModel& Items() const { return items_; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void keyboardSearch(const QString& search) override;
  void resizeEvent(QResizeEvent* event) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

 private:
  enum class Place { Beside, Sign, CheckBox, Text };
  Place PlaceAt(const QPoint& point, const QModelIndex& index) const;
  void Press(const QMouseEvent& event, bool twice);
  void GoTo(const QModelIndex& index);
  void ShowExpanded(const platform::widgets::TreeNode& node);
  void ShowSelection();

  platform::widgets::TreeView& model_;
  TreeModel items_;
  WidgetBinding binding_;
  bool showing_ = false;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
