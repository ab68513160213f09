#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "browser/attributepanel.h"
#include "browser/browserservices.h"
#include "browser/objecttree.h"
#include "browser/segmentview.h"
#include "platform/widgets/treenode.h"

namespace qmrules::browser {

// A row of a list in the panes.
struct DetailRow {
  std::string key;
  std::vector<std::string> cells;  // in the order of the list's columns
  std::string tag;
  bool isForeign = false;  // of a rule set that the tree does not show
};

// All that the panes show of one object, as the repository has it.
struct NodeDetails {
  std::string name;
  std::string description;
  std::string business;            // the business area of a function, the business description of a rule
  std::vector<DetailRow> content;  // the rule sets of a function, the rules of a rule set
  std::vector<DetailRow> triggers;
  std::vector<DetailRow> dataElements;
  std::vector<DetailRow> conditions;
  std::vector<std::string> attributes;  // the texts of the attribute panel, index 1 first
  SegmentPlace segment;
  std::string triggeredName;     // the rule set that a rule triggers
  std::int32_t triggeredID = 0;  // 0 for none
};

// Reads the node's object; what is not of its kind stays empty. Throws Error when the repository fails and, naming the
// object, when it is gone.
[[nodiscard]] NodeDetails ReadNodeDetails(const BrowserServices& services, const ObjectTree& tree,
                                          const AttributePanel& attributes, const platform::widgets::TreeNode& node);

}  // namespace qmrules::browser
