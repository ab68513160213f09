#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/fetch.h"
#include "platform/keyedcollection.h"
#include "platform/objectkey.h"
#include "platform/repository.h"

// The small languages by which the logic speaks to the repository: object keys, ID lists and keyed collections.
// Fetch lists and filters are told in platform/fetch.h.
namespace qmrules::catalogue {

// The names of the catalogue's entities, which are the image keys of its nodes as well.
inline constexpr std::string_view kBusinessFunction = "BUSINESSFUNC";
inline constexpr std::string_view kRuleSet = "RULESET";
inline constexpr std::string_view kRuleSetCall = "RULESETCALL";
inline constexpr std::string_view kRule = "RULE";
inline constexpr std::string_view kRuleIO = "RULEIO";
inline constexpr std::string_view kRuleCond = "RULECOND";
inline constexpr std::string_view kRuleLog = "RULELOG";

// Object keys; told in platform/objectkey.h.
using platform::MakeKey;
using platform::ObjectKey;
using platform::SplitKey;

// A fetch of the repository, empty and ready to be filled.
[[nodiscard]] std::unique_ptr<platform::Fetch> NewQuery(platform::Repository& repository);

// The ID that the row delivers under the name. Throws Error for a field that the row does not have or that is no ID.
[[nodiscard]] std::int32_t IDField(const platform::FetchRow& row, std::string_view name);

// True when the collection holds an item under the key.
template <class T>
[[nodiscard]] bool KeyExists(const platform::KeyedCollection<T>& collection, std::string_view key) {
  return collection.Contains(key);
}

// Adds the text under the key "k" & text. False, with nothing changed, when it is there already.
bool AddKeyed(platform::KeyedCollection<std::string>& collection, std::string_view text);

// The same items in the same order, without keys.
template <class T>
[[nodiscard]] platform::KeyedCollection<T> CopyCollection(const platform::KeyedCollection<T>& collection) {
  platform::KeyedCollection<T> copy;
  for (const T& item : collection) copy.Add(item);
  return copy;
}

// Packs a collection of ID texts into comma lists, each of which can stand behind "ID in ": while there are two items,
// the first two are joined and the joined text goes to the end. Stops for good at the first joined text that would be
// longer than 5000 characters. Joined items have no key.
void PackIDs(platform::KeyedCollection<std::string>& ids);

// The text of an ID list for a filter. It begins with "0", which no object has, so that "ID in " & Text() is never
// malformed. A caller with many IDs asks IsFull() after each Add, runs its query when it is, and goes on with Clear().
class IDList {
 public:
  void Add(std::int32_t id);
  // True when the text is longer than 4000 characters.
  [[nodiscard]] bool IsFull() const;
  // True when no ID was added since the last Clear.
  [[nodiscard]] bool Empty() const { return text_.size() == 1; }
  [[nodiscard]] const std::string& Text() const { return text_; }
  void Clear() { text_.resize(1); }

 private:
  std::string text_ = "0";
};

}  // namespace qmrules::catalogue
