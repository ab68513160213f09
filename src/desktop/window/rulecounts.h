#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "platform/frontend.h"

namespace qmrules::desktop {

// Counts the rules of a project by the program of their segment. A catalogue may have a million rules, so the count is
// made in short steps, between which the user goes on working.
class RuleCounts {
 public:
  // `FE` outlives this.
  explicit RuleCounts(platform::FrontEnd& FE) : FE_(FE) {}

  // Begins anew. Throws platform::Error when the store cannot be read or no project is chosen.
  void Begin();
  // Counts on for so long. True while there is more to count. Throws platform::Error when the store cannot be read; the
  // count is then over.
  bool Continue(std::chrono::milliseconds howLong);

  // Of the program's entity and name, as far as it is counted.
  std::int64_t Of(const std::string& language, const std::string& program) const;
  // All rules, those without a segment included.
  std::int64_t All() const { return all_; }

 private:
  platform::FrontEnd& FE_;
  std::unique_ptr<platform::Fetch> fetch_;  // under way
  std::map<std::pair<std::string, std::string>, std::int64_t> counts_;
  std::int64_t all_ = 0;
};

}  // namespace qmrules::desktop
