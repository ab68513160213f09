#pragma once

#include <QWidget>
#include <vector>

#include "browser/controlwidgets.h"
#include "desktop/views/focusbridge.h"
#include "platform/event.h"

namespace qmrules::desktop {

// Shows the attribute panel: a row for each attribute with its label and the one field of it that is seen, the labels
// in a column as wide as the widest of them, a long text in three times the height of the others. The content stands
// moved up by the rows that the scroll bar's value tells. A field that gets the focus is brought into sight.
class AttributePanelView final : public QWidget {
 public:
  // `widgets` outlives this.
  AttributePanelView(FocusBridge& focus, browser::ControlWidgets& widgets, QWidget* parent);
  ~AttributePanelView() override;

  QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  struct Row {
    int index = 0;
    QWidget* label = nullptr;
    std::vector<QWidget*> fields;
    std::vector<platform::Subscription> seen;
  };
  bool IsOwn(const platform::widgets::Widget& model) const;
  void AskForLayout();
  void MakeRows();
  Row MakeRow(int index);
  void ShowNames(const Row& row) const;
  void LayOut();
  void TellRoom();
  int RowHeight() const;
  void BringIntoSight(int index);

  FocusBridge& focus_;
  browser::ControlWidgets& widgets_;
  std::vector<Row> rows_;
  int toldRoom_ = -1;
  bool rowsAreStale_ = true;
  std::vector<platform::Subscription> subscriptions_;
};

}  // namespace qmrules::desktop
