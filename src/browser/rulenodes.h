#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/frontend.h"
#include "platform/widgets/treeview.h"

// The rules below the rule sets in the tree.
namespace qmrules::browser {

// A rule as the tree shows it.
struct RuleRow {
  std::int32_t id = 0;
  std::string ruleName;
  std::int64_t seqNo = 0;
};

// By the ID of the rule set.
using RulesOfSets = std::unordered_map<std::int32_t, std::vector<RuleRow>>;

// The rules that the current project sees in the rule sets of these nodes, in sequence; a rule set without rules is
// left out. Throws Error when the store refuses.
[[nodiscard]] RulesOfSets ReadRules(platform::FrontEnd& frontEnd,
                                    const std::vector<platform::widgets::TreeNode*>& sets);

// Adds the rules of the node's rule set at the end of its children. `isChecked` tells a rule's check mark from its key.
void AddRules(platform::widgets::TreeView& tree, platform::widgets::TreeNode& set, const RulesOfSets& rules,
              const std::function<bool(const std::string& ruleKey)>& isChecked);

}  // namespace qmrules::browser
