#include "browser/nodes.h"

#include <charconv>
#include <string_view>
#include <utility>

#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"

namespace qmrules::browser {

using platform::widgets::NewNode;
using platform::widgets::TreeNode;
using platform::widgets::TreeRelation;
using platform::widgets::TreeView;

namespace {

constexpr int kPleaseWait = 592;

std::int64_t NumberIn(std::string_view tag) {
  std::int64_t number = 0;
  std::from_chars(tag.data(), tag.data() + tag.size(), number);
  return number;
}

// Raises the unbroken run of numbers from `first` on, which has the number of the node that goes before it.
void MakeRoom(TreeNode& first) {
  std::int64_t expected = SequenceOf(first);
  for (TreeNode* node = &first; node != nullptr; node = node->NextSibling()) {
    const std::int64_t taken = SequenceOf(*node);
    if (taken > expected) return;
    expected = taken + 1;
    SetSequence(*node, expected);
  }
}

}  // namespace

bool IsFunction(const TreeNode& node) {
  return node.Image() == catalogue::kBusinessFunction;
}

bool IsRuleSet(const TreeNode& node) {
  return node.Image() == catalogue::kRuleSet;
}

bool IsRule(const TreeNode& node) {
  return node.Image() == catalogue::kRule;
}

std::int32_t NodeID(const TreeNode& node) {
  return catalogue::NodeKeyID(node.Image(), node.Key());
}

NewNode FunctionNode(std::int32_t functionID, std::string name) {
  return {catalogue::FunctionNodeKey(functionID), std::move(name), std::string(catalogue::kBusinessFunction), ""};
}

NewNode RuleSetNode(std::int32_t functionID, std::int32_t setID, std::string name, std::int64_t seqNo) {
  return {catalogue::RuleSetNodeKey(functionID, setID), std::move(name), std::string(catalogue::kRuleSet),
          std::to_string(seqNo)};
}

NewNode RuleNode(std::int32_t functionID, std::int32_t ruleID, std::string ruleName, std::int64_t seqNo) {
  return {catalogue::RuleNodeKey(functionID, ruleID), std::move(ruleName), std::string(catalogue::kRule),
          std::to_string(seqNo)};
}

bool HasPlaceholder(const TreeNode& node) {
  return node.FirstChild() != nullptr && node.FirstChild()->Key().empty();
}

bool HasOnlyPlaceholder(const TreeNode& node) {
  return HasPlaceholder(node) && node.ChildCount() == 1;
}

void AddPlaceholder(TreeView& tree, TreeNode& node, const shell::StringTable& texts) {
  tree.Add({.key = "", .text = texts.Text(kPleaseWait), .image = "", .tag = ""}, &node);
}

std::int64_t SequenceOf(const TreeNode& node) {
  return NumberIn(node.Tag());
}

void SetSequence(TreeNode& node, std::int64_t seqNo) {
  node.SetTag(std::to_string(seqNo));
}

TreeNode* InsertInSequence(TreeView& tree, TreeNode& parent, NewNode content) {
  if (tree.Find(content.key) != nullptr) return nullptr;
  const std::int64_t seqNo = NumberIn(content.tag);
  TreeNode* behind = parent.FirstChild();
  while (behind != nullptr && SequenceOf(*behind) < seqNo) behind = behind->NextSibling();
  if (behind == nullptr) return tree.Add(std::move(content), &parent);
  if (SequenceOf(*behind) == seqNo) MakeRoom(*behind);
  return tree.Add(std::move(content), behind, TreeRelation::tvwPrevious);
}

}  // namespace qmrules::browser
