#include "browser/detailpanes.h"

#include "browser/fieldtext.h"
#include "browser/labelnumbers.h"
#include "browser/nodedetails.h"
#include "browser/nodes.h"
#include "catalogue/gateway.h"
#include "platform/error.h"

namespace qmrules::browser {

using platform::widgets::Color;
using platform::widgets::ListRow;
using platform::widgets::ListView;
using platform::widgets::TreeNode;
using platform::widgets::TreeNodeHandle;

namespace {

constexpr int kRuleSetsLabel = 180;

// A row whose key is there already is left out.
void ShowRows(ListView& list, const std::vector<DetailRow>& rows) {
  list.Clear();
  for (const DetailRow& row : rows) {
    ListRow* const added = list.Add(row.key, row.cells.front());
    if (added == nullptr) continue;
    for (std::size_t column = 1; column < row.cells.size(); ++column) {
      added->SetSubItem(list.Columns()[column].key, row.cells[column]);
    }
    added->SetTag(row.tag);
    if (row.isForeign) added->SetForeColor(Color::Grey);
  }
}

}  // namespace

DetailPanes::DetailPanes(const BrowserServices& services, ObjectTree& tree, const AttributeSource& source)
    : services_(services),
      objects_(tree),
      attributes_(services.widgets, source),
      layout_(services, attributes_),
      segment_(services),
      edits_(services, tree, source, attributes_, current_),
      lists_(services) {}

void DetailPanes::ShowNode(TreeNode* node) {
  const platform::BusyCursor busy(services_.pointer);
  const bool isPlaceholder = node != nullptr && node->Key().empty();
  const TreeNodeHandle shown(isPlaceholder ? nullptr : node);
  edits_.CommitPending();
  current_ = {};
  services_.host.UpdateCommands(shown.Get());
  segment_.Clear();
  if (shown.Get() == nullptr) {
    Fill({});
    return;
  }
  NodeDetails details;
  try {
    details = ReadNodeDetails(services_, objects_, attributes_, *node);
  } catch (const platform::Error&) {
    Fill({});
    ShowPanesFor(nullptr);
    throw;
  }
  current_ = {shown, catalogue::MakeKey(node->Image(), NodeID(*node))};
  services_.widgets.lvContent.SetColumnText("Names",
                                            services_.texts.Text(IsFunction(*node) ? kRuleSetsLabel : kRulesLabel));
  Fill(details);
  segment_.Show(details.segment);
}

void DetailPanes::ShowPanesFor(const TreeNode* node) {
  layout_.ShowPanesFor(node);
}

void DetailPanes::ReplaceCurrentNode(TreeNode& node) {
  current_.node = TreeNodeHandle(&node);
}

// A field that shows the same text again stays as it is, with the user's caret in it.
void DetailPanes::Fill(const NodeDetails& details) {
  ControlWidgets& widgets = services_.widgets;
  ShowText(widgets.txtObjName, details.name);
  ShowText(widgets.rtbDescription, details.description);
  ShowText(widgets.rtbBusiness, details.business);
  ShowRows(widgets.lvContent, details.content);
  ShowRows(widgets.lvTriggers, details.triggers);
  ShowRows(widgets.lvIOElems, details.dataElements);
  ShowRows(widgets.lvConditions, details.conditions);
  for (int index = 1; index <= attributes_.Count(); ++index) {
    attributes_.Show(index, details.attributes.empty() ? "" : details.attributes[static_cast<std::size_t>(index) - 1]);
  }
  const bool triggers = details.triggeredID != 0;
  const std::string& triggered = triggers ? details.triggeredName : services_.texts.Text(kNoTrigger);
  widgets.txtTriggers.SetText(triggered);
  widgets.txtTriggers.SetToolTipText(triggered);
  widgets.txtTriggers.SetTag(std::to_string(details.triggeredID));
}

}  // namespace qmrules::browser
