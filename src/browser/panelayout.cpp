#include "browser/panelayout.h"

#include <utility>

#include "browser/nodes.h"

namespace qmrules::browser {

using platform::widgets::TreeNode;
using platform::widgets::Widget;

namespace {

constexpr int kDescription = 132;
constexpr int kBusinessArea = 197;
constexpr int kTechnicalDescription = 195;
constexpr int kBusinessDescription = 196;

}  // namespace

PaneLayout::PaneLayout(const BrowserServices& services, AttributePanel& attributes)
    : texts_(services.texts),
      globals_(services.globals),
      widgets_(services.widgets),
      attributes_(attributes),
      descriptionTab_(widgets_.tsDescrs.OnClick.Subscribe([this] {
        if (widgets_.rtbDescription.Visible() || widgets_.rtbBusiness.Visible()) BringDescriptionToFront();
      })),
      listTab_(widgets_.tsIOCond.OnClick.Subscribe([this] {
        if (widgets_.lvIOElems.Visible() || widgets_.lvConditions.Visible()) BringListToFront();
      })) {
  ShowPanesFor(nullptr);
}

void PaneLayout::ShowPanesFor(const TreeNode* node) {
  const bool isFunction = node != nullptr && IsFunction(*node);
  const bool isRuleSet = node != nullptr && IsRuleSet(*node);
  const bool isRule = node != nullptr && IsRule(*node);
  if (isFunction) SetTabCaptions(kDescription, kBusinessArea);
  if (isRuleSet) widgets_.rtbDescription.SetAccessibleName(texts_.Text(kDescription));
  if (isRule) {
    SetTabCaptions(kTechnicalDescription, kBusinessDescription);
    widgets_.mnuAuxMain.Item("mnuSyncBusinessNames").SetVisible(globals_.glossaryAvailable);
  }
  const bool showsBusiness = (isFunction || isRule) && !DescriptionTabInFront();
  const std::pair<Widget&, bool> panes[] = {
      {widgets_.lblObjName, node != nullptr},
      {widgets_.txtObjName, node != nullptr},
      {widgets_.tsDescrs, isFunction || isRule},
      {widgets_.rtbDescription, node != nullptr && !showsBusiness},
      {widgets_.rtbBusiness, showsBusiness},
      {widgets_.lvContent, isFunction || isRuleSet},
      {widgets_.lvTriggers, isRuleSet},
      {widgets_.lblTriggers, isRule},
      {widgets_.txtTriggers, isRule},
      {widgets_.cmdSelectTrigger, isRule},
      {widgets_.tsIOCond, isRule},
      {widgets_.lvIOElems, isRule && DataElementsTabInFront()},
      {widgets_.lvConditions, isRule && !DataElementsTabInFront()},
  };
  for (const auto& [pane, visible] : panes) pane.SetVisible(visible);
  attributes_.SetVisible(isRule);
}

void PaneLayout::SetTabCaptions(int description, int business) {
  widgets_.tsDescrs.SetCaption("Description", texts_.Text(description));
  widgets_.tsDescrs.SetCaption("Business", texts_.Text(business));
  widgets_.rtbDescription.SetAccessibleName(texts_.Text(description));
  widgets_.rtbBusiness.SetAccessibleName(texts_.Text(business));
}

bool PaneLayout::DescriptionTabInFront() const {
  return widgets_.tsDescrs.Selected() == "Description";
}

bool PaneLayout::DataElementsTabInFront() const {
  return widgets_.tsIOCond.Selected() == "I/O";
}

void PaneLayout::BringDescriptionToFront() {
  widgets_.rtbDescription.SetVisible(DescriptionTabInFront());
  widgets_.rtbBusiness.SetVisible(!DescriptionTabInFront());
}

void PaneLayout::BringListToFront() {
  widgets_.lvIOElems.SetVisible(DataElementsTabInFront());
  widgets_.lvConditions.SetVisible(!DataElementsTabInFront());
}

}  // namespace qmrules::browser
