#include "desktop/views/controlview.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desktop/views/attributepanelview.h"
#include "desktop/views/focusbridge.h"
#include "desktop/views/qtsplitter.h"
#include "desktop/views/qttext.h"
#include "desktop/views/qttoolbar.h"
#include "desktop/views/viewmaking.h"

namespace qmrules::desktop {

using browser::ControlWidgets;
using platform::widgets::Splitter;
using platform::widgets::TabStrip;
using platform::widgets::Widget;

namespace {

constexpr int kGap = 4;

QVBoxLayout* Column(QWidget* pane) {
  auto* const column = new QVBoxLayout(pane);
  column->setContentsMargins(kGap, kGap, kGap, kGap);
  column->setSpacing(kGap);
  return column;
}

QHBoxLayout* Line() {
  auto* const line = new QHBoxLayout;
  line->setSpacing(kGap);
  return line;
}

// The widgets that stand in a pane; the pane is empty while none of them is seen.
std::vector<Widget*> WidgetsIn(const ControlWidgets& widgets, const std::string& pane) {
  if (pane == "Descriptions") {
    return {&widgets.txtObjName, &widgets.tsDescrs, &widgets.rtbDescription, &widgets.rtbBusiness};
  }
  if (pane == "FirstArea") return {&widgets.lvContent, &widgets.pbAttrs, &widgets.txtFileName};
  return {&widgets.lvTriggers, &widgets.txtTriggers, &widgets.tsIOCond, &widgets.lvIOElems, &widgets.lvConditions};
}

QString CaptionOf(const TabStrip& tabs, std::size_t place) {
  return place < tabs.Tabs().size() ? ToQt(tabs.Tabs()[place].caption) : QString();
}

}  // namespace

ControlView::ControlView(ControlWidgets& widgets, Splitter& splitter, QWidget* parent)
    : QWidget(parent), widgets_(widgets), focus_(std::make_unique<FocusBridge>(widgets, *this)) {
  setObjectName(QStringLiteral("QMRules"));
  auto* const whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->setSpacing(0);
  whole->addWidget(new QtToolBar(*focus_, widgets.tbToolbar, widgets.ilIcons, this));
  panes_ = new QtSplitter(splitter,
                          {{"Objects", MakeObjects()},
                           {"Descriptions", MakeDescriptions()},
                           {"FirstArea", MakeFirstArea()},
                           {"SecondArea", MakeSecondArea()}},
                          this);
  whole->addWidget(panes_, 1);
  subscriptions_.push_back(focus_->OnEntered.Subscribe([this] { OnEntered.Raise(); }));
  for (const char* const pane : {"Descriptions", "FirstArea", "SecondArea"}) {
    for (Widget* const model : WidgetsIn(widgets, pane)) {
      subscriptions_.push_back(model->OnChanged.Subscribe([this] { ShowEmptyPanesLater(); }));
    }
  }
  for (TabStrip* const tabs : {&widgets.tsDescrs, &widgets.tsIOCond}) {
    subscriptions_.push_back(tabs->OnChanged.Subscribe([this] { NameViews(); }));
  }
  NameViews();
  ShowEmptyPanes();
  focus_->SetTabOrder();
}

ControlView::~ControlView() = default;

QWidget* ControlView::Make(Widget& model, QWidget* parent) {
  return MakeView(*focus_, model, parent);
}

QWidget* ControlView::ViewOf(const Widget& model) const {
  return focus_->ViewOf(model);
}

void ControlView::TakeFocus() {
  if (widgets_.ActiveWidget() == nullptr) widgets_.tvObjects.SetFocus();
  focus_->ShowActive();
}

void ControlView::GoToNextLine() {
  panes_->GoToNextBar();
}

QWidget* ControlView::MakeObjects() {
  auto* const pane = new QWidget(this);
  auto* const column = Column(pane);
  column->addWidget(Make(widgets_.tvObjects, pane));
  return pane;
}

QWidget* ControlView::MakeDescriptions() {
  auto* const pane = new QWidget(this);
  auto* const column = Column(pane);
  auto* const name = Line();
  auto* const label = static_cast<QLabel*>(Make(widgets_.lblObjName, pane));
  QWidget* const field = Make(widgets_.txtObjName, pane);
  label->setBuddy(field);
  name->addWidget(label);
  name->addWidget(field, 1);
  column->addLayout(name);
  column->addWidget(Make(widgets_.tsDescrs, pane));
  column->addWidget(Make(widgets_.rtbDescription, pane), 1);
  column->addWidget(Make(widgets_.rtbBusiness, pane), 1);
  return pane;
}

QWidget* ControlView::MakeFirstArea() {
  auto* const pane = new QWidget(this);
  auto* const column = Column(pane);
  column->addWidget(Make(widgets_.lvContent, pane), 1);
  auto* const panel = Line();
  panel->addWidget(new AttributePanelView(*focus_, widgets_, pane), 1);
  panel->addWidget(Make(widgets_.vScroll, pane));
  column->addLayout(panel, 1);
  column->addWidget(Make(widgets_.txtFileName, pane));
  return pane;
}

QWidget* ControlView::MakeSecondArea() {
  auto* const pane = new QWidget(this);
  auto* const column = Column(pane);
  column->addWidget(Make(widgets_.lvTriggers, pane), 1);
  auto* const triggers = Line();
  auto* const label = static_cast<QLabel*>(Make(widgets_.lblTriggers, pane));
  QWidget* const field = Make(widgets_.txtTriggers, pane);
  label->setBuddy(field);
  triggers->addWidget(label);
  triggers->addWidget(field, 1);
  triggers->addWidget(Make(widgets_.cmdSelectTrigger, pane));
  column->addLayout(triggers);
  column->addWidget(Make(widgets_.tsIOCond, pane));
  column->addWidget(Make(widgets_.lvIOElems, pane), 1);
  column->addWidget(Make(widgets_.lvConditions, pane), 1);
  return pane;
}

// What has no caption and no label in front gets the name of what it shows.
void ControlView::NameViews() {
  const auto name = [this](const Widget& model, const QString& text) {
    QWidget* const view = focus_->ViewOf(model);
    if (view != nullptr && widgets_.AccessibleNameOf(model).empty()) view->setAccessibleName(text);
  };
  const auto& content = widgets_.lvContent.Columns();
  const auto& triggers = widgets_.lvTriggers.Columns();
  name(widgets_.tbToolbar, tr("Commands"));
  name(widgets_.tvObjects, tr("Rule catalogue"));
  name(widgets_.tsDescrs, tr("Descriptions"));
  name(widgets_.rtbDescription, CaptionOf(widgets_.tsDescrs, 0));
  name(widgets_.rtbBusiness, CaptionOf(widgets_.tsDescrs, 1));
  name(widgets_.lvContent, content.empty() ? QString() : ToQt(content.front().text));
  name(widgets_.vScroll, tr("Scroll the attributes"));
  name(widgets_.txtFileName, tr("Source file"));
  name(widgets_.lvTriggers, triggers.empty() ? QString() : ToQt(triggers.front().text));
  name(widgets_.tsIOCond, tr("Lists of the rule"));
  name(widgets_.lvIOElems, CaptionOf(widgets_.tsIOCond, 0));
  name(widgets_.lvConditions, CaptionOf(widgets_.tsIOCond, 1));
}

// The logic hides and shows many widgets at a time.
void ControlView::ShowEmptyPanesLater() {
  if (std::exchange(panesAreStale_, true)) return;
  const auto show = [this] {
    panesAreStale_ = false;
    ShowEmptyPanes();
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

void ControlView::ShowEmptyPanes() {
  for (const char* const pane : {"Descriptions", "FirstArea", "SecondArea"}) {
    const auto shown = WidgetsIn(widgets_, pane);
    panes_->SetEmpty(pane,
                     std::none_of(shown.begin(), shown.end(), [](const Widget* model) { return model->Visible(); }));
  }
}

}  // namespace qmrules::desktop
