#include "desktop/window/rulecounts.h"

#include <utility>

#include "catalogue/gateway.h"

namespace qmrules::desktop {

namespace {

// Rows between two looks at the clock.
constexpr int kRun = 256;

}  // namespace

void RuleCounts::Begin() {
  counts_.clear();
  all_ = 0;
  fetch_ = catalogue::NewQuery(FE_.Repository());
  fetch_->SetRoot(fetch_->AddObject(true, catalogue::kRule, "Model,Program"));
  fetch_->Execute(FE_.ProjectObject()->ObjectID());
}

bool RuleCounts::Continue(std::chrono::milliseconds howLong) {
  if (!fetch_) return false;
  // What throws ends the count.
  auto fetch = std::move(fetch_);
  const auto end = std::chrono::steady_clock::now() + howLong;
  while (!fetch->Eof() && std::chrono::steady_clock::now() < end) {
    for (int row = 0; row < kRun && !fetch->Eof(); ++row, fetch->MoveNext()) {
      ++all_;
      auto program = fetch->Row().Item("Program").Text();
      if (!program.empty()) ++counts_[{fetch->Row().Item("Model").Text(), std::move(program)}];
    }
  }
  if (fetch->Eof()) return false;
  fetch_ = std::move(fetch);
  return true;
}

std::int64_t RuleCounts::Of(const std::string& language, const std::string& program) const {
  const auto found = counts_.find({language, program});
  return found == counts_.end() ? 0 : found->second;
}

}  // namespace qmrules::desktop
