#include "workbench/flow/chainquestion.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <utility>
#include <vector>

#include "workbench/flow/chainsearch.h"

namespace qmrules::workbench::flow {

namespace {

using Direction = ChainSearch::Direction;

constexpr std::size_t kMostPieces = 64;

// The bytes asked about in pieces that the effects on them do not tell apart: all bytes of a piece are in the same
// sets. A piece need not be one interval: where the subscripts of a table are variable, one field of all its rows is a
// piece.
class Partition {
 public:
  Partition(const ChainArea& area, std::span<const std::uint32_t> sets, std::span<const QuestionStart> starts,
            const ByteSet& bytes) {
    piecesOf_.resize(sets.size() + starts.size());
    for (std::uint32_t set = 0; set < sets.size(); ++set) AddBounds(area.SetOfBytes(sets[set]).Within(bytes), set);
    for (std::uint32_t start = 0; start < starts.size(); ++start) {
      AddBounds(starts[start].bytes, static_cast<std::uint32_t>(sets.size()) + start);
    }
    std::ranges::sort(bounds_, {}, &Bound::at);
    Sweep();
  }

  // In the order of their first bytes.
  std::span<const ByteSet> Pieces() const { return pieces_; }
  // Those that make up a set, by its place among the sets, or a start, which come behind the sets. Ascending.
  std::span<const std::uint32_t> PiecesOf(std::size_t set) const { return piecesOf_[set]; }

 private:
  // Where a set begins or ends.
  struct Bound {
    std::uint64_t at;
    std::uint32_t set;
  };
  // Which sets the bytes are in that the sweep is at: two large numbers for each of them, as good as random, by
  // exclusive or. That two lots of sets that come up have one signature is out of the question.
  using Signature = std::pair<std::uint64_t, std::uint64_t>;

  void AddBounds(const ByteSet& bytes, std::uint32_t set) {
    for (const ByteInterval& interval : bytes.Intervals()) {
      bounds_.push_back({interval.begin, set});
      bounds_.push_back({interval.end, set});
    }
  }

  static std::uint64_t Mixed(std::uint64_t number) {
    number = (number ^ (number >> 30)) * 0xBF58476D1CE4E5B9U;
    number = (number ^ (number >> 27)) * 0x94D049BB133111EBU;
    return number ^ (number >> 31);
  }

  void Turn(std::uint32_t set) {
    const std::uint64_t number = 2 * std::uint64_t{set} + 1;
    signature_.first ^= Mixed(number * 0x9E3779B97F4A7C15U);
    signature_.second ^= Mixed(~number * 0xD1B54A32D192ED03U);
    if (open_.erase(set) == 0) open_.insert(set);
  }

  void Sweep() {
    for (std::size_t next = 0; next < bounds_.size();) {
      const std::uint64_t at = bounds_[next].at;
      for (; next < bounds_.size() && bounds_[next].at == at; ++next) Turn(bounds_[next].set);
      if (!open_.empty()) pieces_[PieceNow()].Add({at, bounds_[next].at});
    }
  }

  std::uint32_t PieceNow() {
    const auto [found, isNew] = numbers_.try_emplace(signature_, static_cast<std::uint32_t>(pieces_.size()));
    if (isNew) {
      pieces_.emplace_back();
      for (const std::uint32_t set : open_) piecesOf_[set].push_back(found->second);
    }
    return found->second;
  }

  std::vector<Bound> bounds_;
  std::set<std::uint32_t> open_;  // the sets that the sweep is in
  Signature signature_;
  std::map<Signature, std::uint32_t> numbers_;  // of pieces
  std::vector<ByteSet> pieces_;
  std::vector<std::vector<std::uint32_t>> piecesOf_;
};

class Question {
 public:
  Question(BlockBodies& bodies, const ChainArea& area, Direction direction, std::span<const QuestionStart> starts,
           std::span<const PointId> watched)
      : bodies_(bodies), area_(area), direction_(direction), starts_(starts), watched_(watched) {}

  QuestionAnswer Answer() {
    ByteSet bytes;
    for (const QuestionStart& start : starts_) bytes.Add(start.bytes);
    sets_ = area_.SetsWith(bytes);
    const Partition partition(area_, sets_, starts_, bytes);
    const auto pieces = partition.Pieces();
    for (std::size_t first = 0; first < pieces.size(); first += kMostPieces) {
      Search(partition, static_cast<std::uint32_t>(first));
    }
    QuestionAnswer answer;
    for (auto& [effect, found] : effects_) answer.effects.push_back({effect, std::move(found)});
    for (auto& [point, found] : seen_) answer.watched.push_back({point, std::move(found)});
    return answer;
  }

 private:
  // An effect, with those of the pieces that are searched for at a time.
  struct PiecesOfEffect {
    std::uint32_t effect;
    Pieces pieces;
  };

  bool IsWanted(const AreaEffect& effect) const { return effect.IsUse() == (direction_ == Direction::Forward); }

  // Ascending.
  std::vector<Touch> TouchesOf(std::span<const PiecesOfEffect> effects) const {
    std::vector<Touch> touches;
    for (const auto& [index, pieces] : effects) {
      const AreaEffect& effect = area_.Effects()[index];
      const bool kills = effect.Kills();
      const bool isWanted = IsWanted(effect);
      if (!kills && !isWanted) continue;
      if (touches.empty() || touches.back().point != effect.point) touches.push_back({.point = effect.point});
      if (isWanted) touches.back().wanted |= pieces;
      if (kills) touches.back().stopped |= pieces;
    }
    return watched_.empty() ? touches : WithWatched(touches);
  }

  std::vector<Touch> WithWatched(std::vector<Touch> touches) const {
    for (const PointId point : watched_) touches.push_back({.point = point, .wanted = ~Pieces{0}});
    std::ranges::stable_sort(touches, {}, &Touch::point);
    std::vector<Touch> merged;
    for (const Touch& touch : touches) {
      if (merged.empty() || merged.back().point != touch.point) {
        merged.push_back(touch);
      } else {
        merged.back().wanted |= touch.wanted;
        merged.back().stopped |= touch.stopped;
      }
    }
    return merged;
  }

  // The 64 pieces from the first one on, as bits.
  static Pieces BitsOf(std::span<const std::uint32_t> pieces, std::uint32_t first) {
    Pieces bits = 0;
    for (auto at = std::ranges::lower_bound(pieces, first); at != pieces.end() && *at < first + kMostPieces; ++at) {
      bits |= Pieces{1} << (*at - first);
    }
    return bits;
  }

  // Ascending by effect, and so by point.
  std::vector<PiecesOfEffect> EffectsOn(const Partition& partition, std::uint32_t first) const {
    std::vector<PiecesOfEffect> effects;
    for (std::size_t at = 0; at < sets_.size(); ++at) {
      const Pieces bits = BitsOf(partition.PiecesOf(at), first);
      if (bits == 0) continue;
      for (const std::uint32_t effect : area_.EffectsOn(sets_[at])) effects.push_back({effect, bits});
    }
    std::ranges::sort(effects, {}, &PiecesOfEffect::effect);
    return effects;
  }

  static void Add(std::span<const ByteSet> pieces, Pieces found, ByteSet& bytes) {
    for (; found != 0; found &= found - 1) bytes.Add(pieces[static_cast<std::size_t>(std::countr_zero(found))]);
  }

  void Search(const Partition& partition, std::uint32_t first) {
    const auto pieces = partition.Pieces().subspan(first);
    const auto effects = EffectsOn(partition, first);
    const auto touches = TouchesOf(effects);
    ChainSearch search(bodies_, direction_, touches);
    for (std::size_t start = 0; start < starts_.size(); ++start) {
      const Pieces asked = BitsOf(partition.PiecesOf(sets_.size() + start), first);
      if (asked != 0) search.Start(starts_[start].point, asked);
    }
    search.Run();
    // Effects, watched points and touches are all in the order of the points.
    std::size_t touch = 0;
    const auto foundAt = [&](PointId point) {
      while (touch < touches.size() && touches[touch].point < point) ++touch;
      return touch < touches.size() && touches[touch].point == point ? search.FoundAt(touch) : Pieces{0};
    };
    for (const auto& [index, own] : effects) {
      if (!IsWanted(area_.Effects()[index])) continue;
      const Pieces found = foundAt(area_.Effects()[index].point) & own;
      if (found != 0) Add(pieces, found, effects_[index]);
    }
    touch = 0;
    for (std::uint32_t index = 0; index < watched_.size(); ++index) {
      if (const Pieces found = foundAt(watched_[index]); found != 0) Add(pieces, found, seen_[index]);
    }
  }

  BlockBodies& bodies_;
  const ChainArea& area_;
  Direction direction_;
  std::span<const QuestionStart> starts_;
  std::span<const PointId> watched_;
  std::vector<std::uint32_t> sets_;  // that have some of the bytes
  std::map<std::uint32_t, ByteSet> effects_;
  std::map<std::uint32_t, ByteSet> seen_;
};

}  // namespace

QuestionAnswer DefinitionsBefore(BlockBodies& bodies, const ChainArea& area, std::span<const QuestionStart> starts,
                                 std::span<const PointId> watched) {
  return Question(bodies, area, Direction::Backward, starts, watched).Answer();
}

QuestionAnswer UsesBehind(BlockBodies& bodies, const ChainArea& area, std::span<const QuestionStart> starts,
                          std::span<const PointId> watched) {
  return Question(bodies, area, Direction::Forward, starts, watched).Answer();
}

}  // namespace qmrules::workbench::flow
