#include "workbench/flow/chainquestion.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "workbench/flow/chainsearch.h"

namespace qmrules::workbench::flow {

namespace {

using Direction = ChainSearch::Direction;

constexpr std::size_t kMostPieces = 64;

// Up to 64 consecutive pieces of the bytes asked about, none of which an effect cuts.
class PieceTable {
 public:
  explicit PieceTable(std::span<const ByteInterval> pieces) : pieces_(pieces) {}

  Pieces Of(const ByteSet& bytes) const {
    Pieces found = 0;
    for (const ByteInterval& interval : bytes.Intervals()) {
      const auto first = std::ranges::lower_bound(pieces_, interval.begin, {}, &ByteInterval::begin);
      const auto last = std::ranges::lower_bound(first, pieces_.end(), interval.end, {}, &ByteInterval::begin);
      for (auto piece = first; piece != last; ++piece) found |= Pieces{1} << (piece - pieces_.begin());
    }
    return found;
  }
  void AddTo(ByteSet& bytes, Pieces pieces) const {
    for (; pieces != 0; pieces &= pieces - 1) bytes.Add(pieces_[static_cast<std::size_t>(std::countr_zero(pieces))]);
  }

 private:
  std::span<const ByteInterval> pieces_;
};

// The bytes, cut wherever an effect or a start begins or ends.
std::vector<ByteInterval> CutIntoPieces(const ChainArea& area, std::span<const std::uint32_t> effects,
                                        std::span<const QuestionStart> starts, const ByteSet& bytes) {
  std::vector<std::uint64_t> cuts;
  const auto cut = [&](const ByteSet& cutting) {
    for (const ByteInterval& interval : cutting.Intervals()) {
      cuts.push_back(interval.begin);
      cuts.push_back(interval.end);
    }
  };
  for (const std::uint32_t index : effects) cut(area.Effects()[index].bytes);
  for (const QuestionStart& start : starts) cut(start.bytes);
  std::ranges::sort(cuts);
  cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
  std::vector<ByteInterval> pieces;
  for (const ByteInterval& interval : bytes.Intervals()) {
    std::uint64_t begin = interval.begin;
    for (auto at = std::ranges::upper_bound(cuts, begin); at != cuts.end() && *at < interval.end; ++at) {
      pieces.push_back({begin, *at});
      begin = *at;
    }
    pieces.push_back({begin, interval.end});
  }
  return pieces;
}

class Question {
 public:
  Question(BlockBodies& bodies, const ChainArea& area, Direction direction, std::span<const QuestionStart> starts,
           std::span<const PointId> watched)
      : bodies_(bodies), area_(area), direction_(direction), starts_(starts), watched_(watched) {}

  QuestionAnswer Answer() {
    ByteSet bytes;
    for (const QuestionStart& start : starts_) bytes.Add(start.bytes);
    const auto effects = area_.Touching(bytes);
    const auto pieces = CutIntoPieces(area_, effects, starts_, bytes);
    for (std::size_t first = 0; first < pieces.size(); first += kMostPieces) {
      const auto part = std::span(pieces).subspan(first, std::min(kMostPieces, pieces.size() - first));
      if (part.size() == pieces.size()) {
        Search(effects, part);
      } else {
        Search(area_.Touching(ByteSet({part.front().begin, part.back().end})), part);
      }
    }
    QuestionAnswer answer;
    for (auto& [effect, found] : effects_) answer.effects.push_back({effect, std::move(found)});
    for (auto& [point, found] : seen_) answer.watched.push_back({point, std::move(found)});
    return answer;
  }

 private:
  bool IsWanted(const AreaEffect& effect) const { return effect.IsUse() == (direction_ == Direction::Forward); }

  // `pieces` are those of the effects.
  std::vector<Touch> TouchesOf(std::span<const std::uint32_t> effects, std::span<const Pieces> pieces) const {
    std::vector<Touch> touches;
    for (std::size_t at = 0; at < effects.size(); ++at) {
      const AreaEffect& effect = area_.Effects()[effects[at]];
      const bool kills = effect.Kills();
      const bool isWanted = IsWanted(effect);
      if (pieces[at] == 0 || (!kills && !isWanted)) continue;
      if (touches.empty() || touches.back().point != effect.point) touches.push_back({.point = effect.point});
      if (isWanted) touches.back().wanted |= pieces[at];
      if (kills) touches.back().stopped |= pieces[at];
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

  void Search(std::span<const std::uint32_t> effects, std::span<const ByteInterval> part) {
    const PieceTable table(part);
    std::vector<Pieces> pieces;
    pieces.reserve(effects.size());
    for (const std::uint32_t index : effects) pieces.push_back(table.Of(area_.Effects()[index].bytes));
    const auto touches = TouchesOf(effects, pieces);
    ChainSearch search(bodies_, direction_, touches);
    for (const QuestionStart& start : starts_) {
      if (const Pieces asked = table.Of(start.bytes); asked != 0) search.Start(start.point, asked);
    }
    search.Run();
    // Effects, watched points and touches are all in the order of the points.
    std::size_t touch = 0;
    const auto foundAt = [&](PointId point) {
      while (touch < touches.size() && touches[touch].point < point) ++touch;
      return touch < touches.size() && touches[touch].point == point ? search.FoundAt(touch) : Pieces{0};
    };
    for (std::size_t at = 0; at < effects.size(); ++at) {
      const AreaEffect& effect = area_.Effects()[effects[at]];
      if (!IsWanted(effect)) continue;
      const Pieces found = foundAt(effect.point) & pieces[at];
      if (found != 0) table.AddTo(effects_[effects[at]], found);
    }
    touch = 0;
    for (std::uint32_t index = 0; index < watched_.size(); ++index) {
      if (const Pieces found = foundAt(watched_[index]); found != 0) table.AddTo(seen_[index], found);
    }
  }

  BlockBodies& bodies_;
  const ChainArea& area_;
  Direction direction_;
  std::span<const QuestionStart> starts_;
  std::span<const PointId> watched_;
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
