#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "browser/browserservices.h"
#include "browser/nodes.h"
#include "browser/objecttree.h"
#include "browser/selectedonly.h"
#include "platform/event.h"
#include "platform/objectkey.h"

namespace qmrules::browser {

// Mends the tree and the lists when the repository tells of a change, whoever made it. The selection and the panes stay
// as they are, except that the selection falls to a neighbour when its node goes. While the events are silenced, what
// is new is passed over: whoever silenced them fills the tree again.
class RepositoryNotifications {
 public:
  // Both outlive this.
  RepositoryNotifications(const BrowserServices& services, ObjectTree& tree, SelectedOnly& selectedOnly);
  RepositoryNotifications(const RepositoryNotifications&) = delete;
  RepositoryNotifications& operator=(const RepositoryNotifications&) = delete;

 private:
  void Repository_ObjectAdded(const std::string& objID);
  void Repository_ObjectDeleted(const std::string& objID);
  void Repository_Linked(const std::string& fromObjId, const std::string& toObjId, const std::string& relation);
  void Repository_UnLinked(const std::string& fromObjId, const std::string& toObjId, const std::string& relation);

  // Runs a handler with the busy pointer; what fails in it is recorded.
  void Mend(const std::function<void()>& handler);
  void EmptyDescriptions();
  void RemoveNodes(const platform::ObjectKey& object);
  void AddRuleSet(std::int32_t callID, std::int32_t functionID);
  void AddRule(std::int32_t ruleID, std::int32_t setID);
  void AddRuleBelow(platform::widgets::TreeNode& set, platform::widgets::NewNode rule);
  platform::widgets::TreeNode* Insert(platform::widgets::TreeNode& parent, platform::widgets::NewNode child);
  void ReadNumbersOfRuleSets(platform::widgets::TreeNode& function);
  void ReadNumbersOfRules(platform::widgets::TreeNode& set);
  void AddElement(std::string_view entity, std::int32_t id, std::int32_t ruleID);
  void RemoveRuleSet(std::int32_t callID, std::int32_t functionID);

  BrowserServices services_;
  ObjectTree& objects_;
  SelectedOnly& selectedOnly_;
  platform::widgets::TreeView& tree_;
  platform::Subscription objectAdded_;
  platform::Subscription objectDeleted_;
  platform::Subscription linked_;
  platform::Subscription unLinked_;
};

}  // namespace qmrules::browser
