#include "browser/selectedkeys.h"

#include <algorithm>
#include <vector>

#include "catalogue/gateway.h"
#include "catalogue/nodekeys.h"

namespace qmrules::browser {

bool SelectedKeys::Add(const std::string& ruleKey, const std::string& setKey) {
  if (!rules_.Add(ruleKey, ruleKey)) return false;
  sets_.Add(setKey, ruleKey);
  return true;
}

bool SelectedKeys::Remove(std::string_view ruleKey) {
  sets_.Remove(ruleKey);
  return rules_.Remove(ruleKey);
}

void SelectedKeys::RemoveRule(std::int32_t ruleID) {
  std::vector<std::string> keys;
  for (const std::string& key : rules_) {
    if (catalogue::NodeKeyID(catalogue::kRule, key) == ruleID) keys.push_back(key);
  }
  for (const std::string& key : keys) Remove(key);
}

void SelectedKeys::Clear() {
  rules_.Clear();
  sets_.Clear();
  position_ = 0;
}

const std::string& SelectedKeys::Step(bool forward) {
  const std::size_t count = rules_.Count();
  if (forward) {
    position_ = position_ >= count ? 1 : position_ + 1;
  } else {
    position_ = position_ <= 1 ? count : std::min(position_ - 1, count);
  }
  return rules_.At(position_);
}

void SelectedKeys::DropStepped(std::string_view ruleKey, bool forward) {
  if (Remove(ruleKey) && forward && position_ > 0) --position_;
}

}  // namespace qmrules::browser
