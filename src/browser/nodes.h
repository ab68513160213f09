#pragma once

#include <cstdint>
#include <string>

#include "platform/widgets/treeview.h"
#include "shell/messages.h"

// The nodes of the catalogue's tree. The image key of a node is its object's entity and tells its kind; the key is told
// in catalogue/nodekeys.h; the tag of a rule set and of a rule is its sequence number.
//
// A rule set whose rules have not been read has one child in their place, the placeholder: its key and tag are empty.
namespace qmrules::browser {

[[nodiscard]] bool IsFunction(const platform::widgets::TreeNode& node);
[[nodiscard]] bool IsRuleSet(const platform::widgets::TreeNode& node);
[[nodiscard]] bool IsRule(const platform::widgets::TreeNode& node);

// The ID of the node's object. Throws Error for a placeholder.
[[nodiscard]] std::int32_t NodeID(const platform::widgets::TreeNode& node);

[[nodiscard]] platform::widgets::NewNode FunctionNode(std::int32_t functionID, std::string name);
[[nodiscard]] platform::widgets::NewNode RuleSetNode(std::int32_t functionID, std::int32_t setID, std::string name,
                                                     std::int64_t seqNo);
[[nodiscard]] platform::widgets::NewNode RuleNode(std::int32_t functionID, std::int32_t ruleID, std::string ruleName,
                                                  std::int64_t seqNo);

// True when the first child is a placeholder.
[[nodiscard]] bool HasPlaceholder(const platform::widgets::TreeNode& node);
// True when a placeholder is the one child.
[[nodiscard]] bool HasOnlyPlaceholder(const platform::widgets::TreeNode& node);
void AddPlaceholder(platform::widgets::TreeView& tree, platform::widgets::TreeNode& node,
                    const shell::StringTable& texts);

// The sequence number in the node's tag; 0 without one.
[[nodiscard]] std::int64_t SequenceOf(const platform::widgets::TreeNode& node);
void SetSequence(platform::widgets::TreeNode& node, std::int64_t seqNo);

// Adds a child that has been given the sequence number in its tag: before the first child with this number or a higher
// one, else at the end. A child that has the number itself makes room as the store's numbers did: the unbroken run of
// numbers from there on goes up by one. nullptr, with nothing changed, when the key is taken.
platform::widgets::TreeNode* InsertInSequence(platform::widgets::TreeView& tree, platform::widgets::TreeNode& parent,
                                              platform::widgets::NewNode content);

}  // namespace qmrules::browser
