#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "browser/browserservices.h"
#include "browser/rulenodes.h"
#include "platform/fetch.h"
#include "platform/keyedcollection.h"
#include "platform/progress.h"
#include "platform/widgets/treeview.h"

namespace qmrules::browser {

// One filling of a tree from the repository, used once: all is read before anything of the tree is changed. In the
// midst of it the host may paint.
class TreeLoad {
 public:
  // Reads the functions of the project. `keepsNodes`: what stands in the tree stays. Throws Error, as Read does, when
  // the repository fails.
  TreeLoad(const BrowserServices& services, bool keepsNodes);

  // The number of functions: one step of progress each.
  int Steps() const { return static_cast<int>(functions_.size()); }

  // Reads the rule sets, the rules of those that stand open in a tree that is kept, and the foreign sets.
  // `reportsSteps` tells the progress display of each function.
  void Read(bool reportsSteps);

  // Changes the tree to what was read: what is missing is added in its place, the numbers of what stands are set, and
  // the rules of open rule sets are exchanged, with the check marks that they had.
  void Apply();

  // The rule sets of the repository that no function of the project triggers: the IDs, each under its row key. Good
  // once.
  platform::KeyedCollection<std::int32_t> TakeForeignSets() { return std::move(foreignSets_); }

 private:
  struct Function {
    std::int32_t id = 0;
    std::string name;
  };
  struct RuleSet {
    std::int32_t functionID = 0;
    std::int32_t id = 0;
    std::string name;
    std::int64_t seqNo = 0;
    bool hasRules = false;
  };

  void ReadRuleSets(bool reportsSteps);
  void ReadRow(const platform::FetchRow& row);
  void ReadOpenRules();
  void ReadForeignSets();
  platform::widgets::TreeNode* NodeOf(const RuleSet& set) const;
  void AddFunctions();
  void AddRuleSets();
  platform::widgets::TreeNode* AddRuleSet(const RuleSet& set, platform::widgets::TreeNode* last);
  void ExchangeRules();

  BrowserServices services_;
  platform::PaintPauses pauses_;
  platform::widgets::TreeView& tree_;
  bool keepsNodes_;
  std::vector<Function> functions_;
  std::vector<RuleSet> ruleSets_;        // in the order of the rows, each once below a function
  std::unordered_set<std::string> met_;  // their node keys
  std::vector<std::int32_t> knownSets_;
  std::unordered_set<std::int32_t> isKnown_;
  std::vector<platform::widgets::TreeNode*> openSets_;
  RulesOfSets openRules_;
  platform::KeyedCollection<std::int32_t> foreignSets_;
};

}  // namespace qmrules::browser
