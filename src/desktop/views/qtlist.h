#pragma once

#include <QTreeView>
#include <vector>

#include "desktop/views/listmodel.h"
#include "desktop/views/widgetbinding.h"
#include "platform/widgets/listview.h"

namespace qmrules::desktop {

// Shows a list with its columns. Each press and key goes to the model as its user's action, and what the model then is,
// is shown.
class QtList final : public QTreeView {
 public:
  QtList(FocusBridge& focus, platform::widgets::ListView& model, QWidget* parent);

  const ListModel& Items() const { return items_; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

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
  void Show();
  void ShowSelection();
  void ShareOutWidth();
  void GoTo(const QModelIndex& index, platform::widgets::ShiftState shift);
  bool IsOnCheckBox(const QPoint& point, const QModelIndex& index) const;

  platform::widgets::ListView& model_;
  ListModel items_;
  WidgetBinding binding_;
  bool showing_ = false;
  bool sharing_ = false;
  bool widthsAreTheUsers_ = false;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
