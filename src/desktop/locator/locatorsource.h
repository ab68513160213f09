#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qmrules::desktop {

// An object that the locator offers.
struct LocatorEntry {
  std::string entity;  // "BUSINESSFUNC", "RULESET", "RULE", or that of a program, such as "COBOL"
  std::string name;
  std::string place;  // where it stands, for the reader: "Function / Rule set" of a rule, the file of a program
  std::string key;    // "RULE#12"
  // The place that a jump leads to; 0 where there is none: a rule set without a function, a function itself, a program.
  std::int32_t functionID = 0;
  std::int32_t ruleSetID = 0;  // of a rule

  friend bool operator==(const LocatorEntry&, const LocatorEntry&) = default;
};

// One search under way. It is done in short steps, so that the user can type on meanwhile; dropping it ends it.
class LocatorSearch {
 public:
  virtual ~LocatorSearch() = default;
  // Searches on for some milliseconds. False when everything has been searched. Throws platform::Error when the store
  // fails; the search is over then.
  virtual bool Continue() = 0;
  // The search for a text that finds nothing but what this one's text finds, such as one that was typed on: it goes on
  // where this one is, with what this one has found. nullptr when it has to begin anew.
  virtual std::unique_ptr<LocatorSearch> NarrowedTo(std::string_view /*text*/) const { return nullptr; }
  // How much has been searched, in percent; may be a guess.
  virtual int Percent() const = 0;
  // The best entries until now, the best first, at most as many as the limit.
  virtual const std::vector<LocatorEntry>& Best() const = 0;
};

class LocatorSource {
 public:
  virtual ~LocatorSource() = default;
  // Begins a search for the objects whose names match the text, as locatormatch.h tells. The source outlives it.
  virtual std::unique_ptr<LocatorSearch> Find(std::string_view text, std::size_t limit) = 0;
};

}  // namespace qmrules::desktop
