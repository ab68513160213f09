#include "desktop/views/attributepanelview.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>

#include "desktop/views/qttext.h"
#include "desktop/views/viewmaking.h"

namespace qmrules::desktop {

using platform::widgets::Widget;

namespace {

constexpr int kRowGap = 4;
constexpr int kLabelGap = 8;
constexpr int kLeastAttributes = 3;

}  // namespace

AttributePanelView::AttributePanelView(FocusBridge& focus, browser::ControlWidgets& widgets, QWidget* parent)
    : QWidget(parent), focus_(focus), widgets_(widgets) {
  setObjectName(QStringLiteral("pbAttrs"));
  setVisible(widgets.pbAttrs.Visible());
  subscriptions_.push_back(widgets.pbAttrs.OnChanged.Subscribe([this] {
    setEnabled(widgets_.pbAttrs.Enabled());
    if (widgets_.pbAttrs.Visible()) show();
    AskForLayout();
  }));
  subscriptions_.push_back(widgets.vScroll.OnChanged.Subscribe([this] { LayOut(); }));
  subscriptions_.push_back(widgets.OnWidgetAdded.Subscribe([this](Widget& model) {
    if (!IsOwn(model)) return;
    rowsAreStale_ = true;
    AskForLayout();
  }));
  subscriptions_.push_back(widgets.OnWidgetRemoving.Subscribe([this](Widget& model) {
    if (!IsOwn(model)) return;
    // The view goes with its model, and the other fields of the row are about to follow.
    std::erase_if(rows_, [&](const Row& row) { return row.index == model.Index(); });
    rowsAreStale_ = true;
    AskForLayout();
  }));
  MakeRows();
}

AttributePanelView::~AttributePanelView() = default;

bool AttributePanelView::IsOwn(const Widget& model) const {
  return model.Index() > 0 && (model.Name() == "lblAttrs" || model.Name() == "txtAttrs" || model.Name() == "cmbAttrs" ||
                               model.Name() == "rtbAttrs");
}

// The fields get their properties only after they have been added, and many of them at a time.
void AttributePanelView::AskForLayout() {
  QApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

bool AttributePanelView::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) {
    if (rowsAreStale_) MakeRows();
    if (!widgets_.pbAttrs.Visible()) hide();
    LayOut();
  }
  return QWidget::event(event);
}

AttributePanelView::Row AttributePanelView::MakeRow(int index) {
  Row row;
  row.index = index;
  const auto show = [&](Widget& model) {
    QWidget* view = focus_.ViewOf(model);
    if (view == nullptr) view = MakeView(focus_, model, this);
    row.seen.push_back(model.OnChanged.Subscribe([this] { AskForLayout(); }));
    row.seen.push_back(model.OnGotFocus.Subscribe([this, index] { BringIntoSight(index); }));
    return view;
  };
  row.label = show(widgets_.lblAttrs(index));
  row.fields = {show(widgets_.txtAttrs(index)), show(widgets_.cmbAttrs(index)), show(widgets_.rtbAttrs(index))};
  return row;
}

void AttributePanelView::MakeRows() {
  rowsAreStale_ = false;
  rows_.clear();
  for (int index = 1; index <= widgets_.AttributeCount(); ++index) rows_.push_back(MakeRow(index));
  focus_.SetTabOrder();
  toldRoom_ = -1;
  LayOut();
}

// A field that has no name of its own is called as its row is.
void AttributePanelView::ShowNames(const Row& row) const {
  const QString name = ToQt(widgets_.AccessibleNameOf(widgets_.lblAttrs(row.index)));
  for (QWidget* const field : row.fields) {
    if (field->accessibleName().isEmpty()) field->setAccessibleName(name);
    if (!field->isHidden()) static_cast<QLabel*>(row.label)->setBuddy(field);
  }
}

int AttributePanelView::RowHeight() const {
  int height = fontMetrics().height() + 2 * style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + kRowGap;
  if (!rows_.empty()) {
    for (std::size_t field = 0; field < 2; ++field) {
      height = std::max(height, rows_.front().fields[field]->sizeHint().height());
    }
  }
  return height + kRowGap;
}

void AttributePanelView::LayOut() {
  if (rowsAreStale_) return;
  int labels = 0;
  for (const Row& row : rows_) labels = std::max(labels, row.label->sizeHint().width());
  const int height = RowHeight();
  const int fieldsFrom = labels + kLabelGap;
  const int fieldWidth = std::max(0, width() - fieldsFrom);
  int at = -widgets_.vScroll.Value() * height;
  for (const Row& row : rows_) {
    const int rowHeight = widgets_.AttributeRows(row.index) * height - kRowGap;
    const bool fromRight = isRightToLeft();
    row.label->setGeometry(fromRight ? width() - labels : 0, at, labels, height - kRowGap);
    for (QWidget* const field : row.fields) {
      field->setGeometry(fromRight ? 0 : fieldsFrom, at, fieldWidth, rowHeight);
    }
    ShowNames(row);
    at += rowHeight + kRowGap;
  }
  TellRoom();
}

void AttributePanelView::TellRoom() {
  const int room = (height() + kRowGap) / RowHeight();
  if (room == toldRoom_) return;
  toldRoom_ = room;
  widgets_.OnPanelResized.Raise(room);
}

void AttributePanelView::BringIntoSight(int index) {
  int above = 0;
  for (const Row& row : rows_) {
    const int lines = widgets_.AttributeRows(row.index);
    if (row.index == index) {
      auto& bar = widgets_.vScroll;
      const int least = above + lines - toldRoom_;
      bar.SetValue(std::clamp(bar.Value(), std::min(least, above), above));
      return;
    }
    above += lines;
  }
}

QSize AttributePanelView::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 24, kLeastAttributes * RowHeight()};
}

void AttributePanelView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  LayOut();
}

void AttributePanelView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) AskForLayout();
}

void AttributePanelView::wheelEvent(QWheelEvent* event) {
  const int steps = event->angleDelta().y() / QWheelEvent::DefaultDeltasPerStep;
  if (steps != 0) widgets_.vScroll.Step(-steps);
  event->accept();
}

}  // namespace qmrules::desktop
