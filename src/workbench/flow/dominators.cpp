#include "workbench/flow/dominators.h"

#include <algorithm>

namespace qmrules::workbench::flow {
namespace {

constexpr std::uint32_t kNone = RangeBody::kNoPlace;

// Works on the numbers in which a search in depth meets the places.
class DominatorSearch {
 public:
  explicit DominatorSearch(const RangeBody& body) : body_(body), count_(body.points.size()) {
    NumberPlaces();
    semi_.resize(count_);
    best_.resize(count_);
    for (std::uint32_t number = 0; number < count_; ++number) semi_[number] = best_[number] = number;
    ancestor_.assign(count_, kNone);
    bucket_.assign(count_, kNone);
    nextInBucket_.assign(count_, kNone);
    dominator_.assign(count_, 0);
  }

  std::vector<std::uint32_t> Run() {
    for (auto number = static_cast<std::uint32_t>(count_); number-- > 1;) {
      for (const std::uint32_t before : body_.Ins(placeOf_[number])) {
        semi_[number] = std::min(semi_[number], semi_[Best(numberOf_[before])]);
      }
      nextInBucket_[number] = bucket_[semi_[number]];
      bucket_[semi_[number]] = number;
      ancestor_[number] = parent_[number];
      EmptyBucket(parent_[number]);
    }
    std::vector<std::uint32_t> result(count_, 0);
    for (std::uint32_t number = 1; number < count_; ++number) {
      if (dominator_[number] != semi_[number]) dominator_[number] = dominator_[dominator_[number]];
      result[placeOf_[number]] = placeOf_[dominator_[number]];
    }
    return result;
  }

 private:
  void NumberPlaces() {
    struct Step {
      std::uint32_t number;
      std::uint32_t way;
    };
    numberOf_.assign(count_, kNone);
    std::vector<Step> steps;
    const auto enter = [&](std::uint32_t place, std::uint32_t parent) {
      numberOf_[place] = static_cast<std::uint32_t>(placeOf_.size());
      placeOf_.push_back(place);
      parent_.push_back(parent);
      steps.push_back({numberOf_[place], 0});
    };
    enter(0, 0);
    while (!steps.empty()) {
      const auto outs = body_.Outs(placeOf_[steps.back().number]);
      if (steps.back().way == outs.size()) {
        steps.pop_back();
        continue;
      }
      const std::uint32_t out = outs[steps.back().way++];
      if (numberOf_[out] == kNone) enter(out, steps.back().number);
    }
  }

  // The number with the lowest semidominator on the way up through the trees that are linked so far. Shortens the way.
  std::uint32_t Best(std::uint32_t number) {
    if (ancestor_[number] == kNone) return best_[number];
    path_.clear();
    for (std::uint32_t at = number; ancestor_[ancestor_[at]] != kNone; at = ancestor_[at]) path_.push_back(at);
    for (; !path_.empty(); path_.pop_back()) {
      const std::uint32_t at = path_.back();
      const std::uint32_t above = ancestor_[at];
      if (semi_[best_[above]] < semi_[best_[at]]) best_[at] = best_[above];
      ancestor_[at] = ancestor_[above];
    }
    return best_[number];
  }

  void EmptyBucket(std::uint32_t parent) {
    for (std::uint32_t number = bucket_[parent]; number != kNone; number = nextInBucket_[number]) {
      const std::uint32_t best = Best(number);
      dominator_[number] = semi_[best] < semi_[number] ? best : parent;
    }
    bucket_[parent] = kNone;
  }

  const RangeBody& body_;
  std::size_t count_;
  std::vector<std::uint32_t> numberOf_, placeOf_, parent_;
  std::vector<std::uint32_t> semi_, best_, ancestor_, bucket_, nextInBucket_, dominator_;
  std::vector<std::uint32_t> path_;
};

}  // namespace

std::vector<std::uint32_t> ImmediateDominators(const RangeBody& body) {
  return DominatorSearch(body).Run();
}

}  // namespace qmrules::workbench::flow
