#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/keyedcollection.h"

namespace qmrules::browser {

// The rules that a search has found, by their node keys, whether the tree holds these nodes or not. A rule that stands
// under several functions has a key under each.
class SelectedKeys {
 public:
  // `setKey`: the node key of the rule set that the rule stands in. False, with nothing changed, when it is there.
  bool Add(const std::string& ruleKey, const std::string& setKey);
  // False when it is not there.
  bool Remove(std::string_view ruleKey);
  // All keys of one rule.
  void RemoveRule(std::int32_t ruleID);
  void Clear();

  bool Contains(std::string_view key) const { return rules_.Contains(key); }
  bool Empty() const { return rules_.Empty(); }
  // In the order in which they were found.
  const platform::KeyedCollection<std::string>& Rules() const { return rules_; }
  // The node key of the rule's set, or nullptr.
  const std::string* SetOf(std::string_view ruleKey) const { return sets_.Find(ruleKey); }

  // Where the walk through the keys stands, from 1; 0 before the first. The key there may have gone since.
  std::size_t Position() const { return position_; }
  void SetPosition(std::size_t position) { position_ = position; }

  // Moves the position to the next key, or the previous one, around the ends, and gives the key there. There must be
  // one.
  const std::string& Step(bool forward);
  // Takes out the key that Step gave, such that the next Step the same way meets the key that would have come next.
  void DropStepped(std::string_view ruleKey, bool forward);

 private:
  platform::KeyedCollection<std::string> rules_;
  platform::KeyedCollection<std::string> sets_;  // under the rules' keys
  std::size_t position_ = 0;
};

}  // namespace qmrules::browser
