#pragma once

#include <vector>

#include "desktop/views/listmodel.h"
#include "desktop/views/rowview.h"
#include "desktop/views/widgetbinding.h"
#include "platform/widgets/listview.h"

namespace qmrules::desktop {

// Shows a list with its columns. Each press and key goes to the model as its user's action, and what the model then is,
// is shown.
class QtList final : public RowView {
 public:
  QtList(FocusBridge& focus, platform::widgets::ListView& model, QWidget* parent);

  const ListModel& Items() const { return items_; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void GoTo(const QModelIndex& index, platform::widgets::ShiftState shift) override;
  void TakeSelection() override;
  void ShowSelection() override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Show();
  std::vector<int> WidthsNeeded() const;
  void ShareOutWidth();
  void ShareOutWidthLater();

  platform::widgets::ListView& model_;
  ListModel items_;
  WidgetBinding binding_;
  bool sharing_ = false;
  bool sharesLater_ = false;
  bool widthsAreTheUsers_ = false;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
