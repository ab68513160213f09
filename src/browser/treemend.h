#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "browser/browserservices.h"
#include "browser/objecttree.h"
#include "browser/selectedonly.h"
#include "platform/widgets/treeview.h"

namespace qmrules::browser {

// Brings the tree in line with what other processes have changed in the store: texts, sequence, and what the
// repository's events could not tell because it was gone by then. Checks, the selection and what is open stay, except
// that a rule set which changes its place is closed, and that the selection falls to it from a rule within. While
// Selected Only is on nothing is added.
class TreeMend {
 public:
  // Both outlive this.
  TreeMend(const BrowserServices& services, ObjectTree& tree, SelectedOnly& selectedOnly);

  // Around these objects of the store, which need not exist any more. Gives the keys of all business functions and rule
  // sets that were looked at. Throws Error when the repository fails; what is mended by then stays so.
  std::unordered_set<std::string> Mend(const std::vector<std::string>& objectKeys);

  // The whole tree. Throws as Mend does.
  void MendAll();

 private:
  using IDs = std::unordered_set<std::int32_t>;
  // A child as the store has it.
  struct Wanted {
    platform::widgets::NewNode content;
    bool hasRules = false;  // of a rule set
  };
  using WantedChildren = std::unordered_map<std::int32_t, std::vector<Wanted>>;  // by the ID of the node above

  void AddFunctionsOfCalls(const IDs& calls, IDs& functions) const;
  void AddSetsOfRules(const IDs& rules, IDs& sets) const;
  void MendFunctions(const IDs& functions);
  void MendRuleSets(const IDs& sets);
  void ReadFunctions(const std::string& ids, std::unordered_map<std::int32_t, std::string>& names) const;
  void ReadRuleSets(const std::string& ids, WantedChildren& wanted) const;
  platform::widgets::TreeNode* FunctionNodeOf(std::int32_t functionID, const std::string& name);
  void BringInLine(platform::widgets::TreeNode& parent, const std::vector<Wanted>& wanted);
  void RemoveAllBut(platform::widgets::TreeNode& parent, const std::vector<Wanted>& wanted);
  platform::widgets::TreeNode* PutBefore(platform::widgets::TreeNode* place, platform::widgets::TreeNode& parent,
                                         const Wanted& wanted, bool checked);
  void MendPlaceholder(platform::widgets::TreeNode& set, bool hasRules);

  BrowserServices services_;
  ObjectTree& objects_;
  SelectedOnly& selectedOnly_;
  platform::widgets::TreeView& tree_;
};

}  // namespace qmrules::browser
