#include "workbench/flow/chainquestion.h"

#include <gmock/gmock.h>

#include <map>
#include <random>
#include <utility>
#include <vector>

#include "workbench/flow/referencesolver.h"

namespace qmrules::test {
namespace {

using workbench::flow::AreaEffect;
using workbench::flow::BlockBodies;
using workbench::flow::ByteInterval;
using workbench::flow::ByteSet;
using workbench::flow::ChainArea;
using workbench::flow::DefinitionsBefore;
using workbench::flow::EffectKind;
using workbench::flow::FlowGraph;
using workbench::flow::PointId;
using workbench::flow::PointKind;
using workbench::flow::QuestionAnswer;
using workbench::flow::QuestionStart;
using workbench::flow::RangeBodies;
using workbench::flow::RangeId;
using workbench::flow::UsesBehind;
using workbench::flow::Way;
using workbench::flow::WayKind;

constexpr std::uint64_t kBytes = 12;

// A program of a few labels whose points perform ranges, decide and jump at random, with effects on one small area.
class RandomProgram {
 public:
  explicit RandomProgram(std::uint32_t seed) : random_(seed) {
    entry_ = Add(PointKind::Entry);
    flow_.AddRange({.entry = entry_});
    const std::uint32_t labels = 2 + Below(4);
    for (std::uint32_t label = 0; label < labels; ++label) {
      starts_.push_back(Add(PointKind::Start));
      ends_.push_back(Add(PointKind::End));
    }
    leave_ = Add(PointKind::Leave);
    for (std::uint32_t range = 0; range < 1 + Below(4); ++range) {
      const std::uint32_t first = Below(labels);
      const std::uint32_t last = Below(labels);
      flow_.AddRange({.first = first + 1, .last = last + 1, .entry = starts_[first], .exit = ends_[last]});
    }
    Join(entry_, starts_[0]);
    for (std::uint32_t label = 0; label < labels; ++label) {
      Fill(label);
      Join(ends_[label], label + 1 < labels ? starts_[label + 1] : leave_);
    }
    effects_.push_back(MakeEffect(entry_, EffectKind::Define, {0, kBytes}));
    flow_.Finish();
    area_ = ChainArea(effects_, {});
  }

  const FlowGraph& Flow() const { return flow_; }
  const ChainArea& Area() const { return area_; }

 private:
  std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random_() % limit); }
  PointId Add(PointKind kind) { return flow_.AddPoint({.kind = kind}); }
  void Join(PointId from, PointId to, WayKind kind = WayKind::Next) { flow_.AddWay(from, Way{to, kind}); }

  AreaEffect MakeEffect(PointId point, EffectKind kind, ByteInterval bytes) {
    AreaEffect effect;
    effect.point = point;
    effect.effect.kind = kind;
    effect.effect.operand = static_cast<workbench::flow::NodeId>(effects_.size());
    effect.bytes = ByteSet(bytes);
    return effect;
  }

  void TouchAtRandom(PointId point) {
    for (std::uint32_t number = Below(3); number > 0; --number) {
      const std::uint64_t begin = Below(kBytes);
      const std::uint64_t end = begin + 1 + Below(static_cast<std::uint32_t>(kBytes - begin));
      constexpr EffectKind kKinds[] = {EffectKind::Use, EffectKind::Define, EffectKind::MayDefine};
      effects_.push_back(MakeEffect(point, kKinds[Below(3)], {begin, end}));
      // Some are about several intervals, as those on a field of a table are.
      const std::uint64_t other = Below(kBytes);
      if (Below(3) == 0) effects_.back().bytes.Add({other, other + 1});
    }
  }

  // The points of one label: a row of steps, each of which may jump elsewhere.
  void Fill(std::uint32_t label) {
    PointId last = starts_[label];
    for (std::uint32_t step = Below(5); step > 0; --step) {
      const std::uint32_t what = Below(6);
      if (what == 0) {
        const PointId call = flow_.AddPoint(
            {.range = 1 + Below(static_cast<std::uint32_t>(flow_.Ranges().size()) - 1), .kind = PointKind::Call});
        Join(last, call);
        last = call;
        continue;
      }
      const PointId point = Add(PointKind::Statement);
      TouchAtRandom(point);
      Join(last, point);
      last = point;
      if (what == 1) Join(point, starts_[Below(static_cast<std::uint32_t>(starts_.size()))], WayKind::Jump);
      if (what == 2) Join(point, leave_, WayKind::Exception);
    }
    Join(last, ends_[label]);
  }

  std::mt19937 random_;
  FlowGraph flow_;
  PointId entry_ = 0, leave_ = 0;
  std::vector<PointId> starts_, ends_;
  std::vector<AreaEffect> effects_;
  ChainArea area_;
};

using Links = std::map<std::pair<std::uint32_t, std::uint32_t>, ByteSet>;

Links LinksBackward(BlockBodies& bodies, const ChainArea& area) {
  Links links;
  for (std::uint32_t use = 0; use < area.Effects().size(); ++use) {
    const AreaEffect& effect = area.Effects()[use];
    if (!effect.IsUse()) continue;
    const QuestionStart start{effect.point, effect.bytes};
    for (auto& found : DefinitionsBefore(bodies, area, {&start, 1}).effects) links[{use, found.effect}] = found.bytes;
  }
  return links;
}

Links LinksForward(BlockBodies& bodies, const ChainArea& area) {
  Links links;
  for (std::uint32_t definition = 0; definition < area.Effects().size(); ++definition) {
    const AreaEffect& effect = area.Effects()[definition];
    if (effect.IsUse()) continue;
    const QuestionStart start{effect.point, effect.bytes};
    for (auto& found : UsesBehind(bodies, area, {&start, 1}).effects) links[{found.effect, definition}] = found.bytes;
  }
  return links;
}

std::string Shown(const Links& links) {
  std::string text;
  for (const auto& [pair, bytes] : links) {
    text += std::to_string(pair.second) + " -> " + std::to_string(pair.first) + ":";
    for (const ByteInterval& interval : bytes.Intervals()) {
      text += " " + std::to_string(interval.begin) + "-" + std::to_string(interval.end);
    }
    text += "\n";
  }
  return text;
}

TEST(ChainQuestion, BothDirectionsEqualThePlainSolverOnRandomPrograms) {
  std::size_t found = 0;
  for (std::uint32_t seed = 0; seed < 3000; ++seed) {
    const RandomProgram program(seed);
    const RangeBodies bodies(program.Flow());
    BlockBodies blocks(bodies);
    const Links expected = ReferenceSolver(bodies, program.Area()).Links();
    ASSERT_EQ(Shown(LinksBackward(blocks, program.Area())), Shown(expected)) << "seed " << seed;
    // Definitions that never run lead nowhere, and the search forward must not begin at them.
    ASSERT_EQ(Shown(LinksForward(blocks, program.Area())), Shown(expected)) << "seed " << seed;
    found += expected.size();
  }
  EXPECT_GT(found, 3000U);
}

bool HasAllOf(const Links& links, const Links& others) {
  return std::ranges::all_of(others, [&links](const auto& other) {
    const auto found = links.find(other.first);
    return found != links.end() && found->second.Within(other.second) == other.second;
  });
}

TEST(ChainQuestion, WithoutMatchedReturnsThereAreMoreLinksAndNeverFewer) {
  std::size_t more = 0;
  for (std::uint32_t seed = 0; seed < 500; ++seed) {
    const RandomProgram program(seed);
    const RangeBodies matched(program.Flow()), unmatched(program.Flow(), 0);
    BlockBodies blocks(matched), wholeBlocks(unmatched);
    const Links exact = LinksBackward(blocks, program.Area());
    const Links found = LinksBackward(wholeBlocks, program.Area());
    ASSERT_TRUE(HasAllOf(found, exact)) << "seed " << seed;
    ASSERT_EQ(Shown(LinksForward(wholeBlocks, program.Area())), Shown(found)) << "seed " << seed;
    more += found.size() - exact.size();
  }
  EXPECT_GT(more, 100U);
}

// Rows of a hand-made program: points in a row, each with one effect or a call.
class ChainQuestionRow : public ::testing::Test {
 protected:
  PointId Add(PointKind kind) { return flow_.AddPoint({.kind = kind}); }
  void Row(const std::vector<PointId>& points) {
    for (std::size_t at = 1; at < points.size(); ++at) flow_.AddWay(points[at - 1], {points[at], WayKind::Next});
  }
  void Touch(PointId point, EffectKind kind, ByteInterval bytes) {
    AreaEffect effect;
    effect.point = point;
    effect.effect.kind = kind;
    effect.bytes = ByteSet(bytes);
    effects_.push_back(effect);
  }
  // The points of the definitions that reach the point's bytes.
  std::vector<PointId> Before(PointId point, ByteInterval bytes) {
    const RangeBodies bodies(flow_);
    BlockBodies blocks(bodies);
    const ChainArea area(effects_, {});
    const QuestionStart start{point, ByteSet(bytes)};
    std::vector<PointId> points;
    for (const auto& found : DefinitionsBefore(blocks, area, {&start, 1}).effects) {
      points.push_back(area.Effects()[found.effect].point);
    }
    return points;
  }

  FlowGraph flow_;
  std::vector<AreaEffect> effects_;
};

TEST_F(ChainQuestionRow, TwoCallsOfOneRangeDoNotMix) {
  // entry  1: define  call P  2: use  3: define  call P  4: use  leave      P: nothing on the bytes 0-2, a use of 4
  const PointId entry = Add(PointKind::Entry);
  const PointId one = Add(PointKind::Statement);
  const PointId callOne = flow_.AddPoint({.range = 1, .kind = PointKind::Call});
  const PointId two = Add(PointKind::Statement);
  const PointId three = Add(PointKind::Statement);
  const PointId callTwo = flow_.AddPoint({.range = 1, .kind = PointKind::Call});
  const PointId four = Add(PointKind::Statement);
  const PointId leave = Add(PointKind::Leave);
  const PointId start = Add(PointKind::Start);
  const PointId inside = Add(PointKind::Statement);
  const PointId end = Add(PointKind::End);
  flow_.AddRange({.entry = entry});
  flow_.AddRange({.first = 1, .last = 1, .entry = start, .exit = end});
  Row({entry, one, callOne, two, three, callTwo, four, leave});
  Row({start, inside, end});
  flow_.Finish();
  Touch(one, EffectKind::Define, {0, 2});
  Touch(three, EffectKind::Define, {0, 2});
  Touch(inside, EffectKind::MayDefine, {1, 4});
  EXPECT_THAT(Before(two, {0, 1}), ::testing::ElementsAre(one));
  EXPECT_THAT(Before(four, {0, 1}), ::testing::ElementsAre(three));
  EXPECT_THAT(Before(four, {0, 2}), ::testing::ElementsAre(three, inside));
  EXPECT_THAT(Before(inside, {0, 1}), ::testing::ElementsAre(one, three));
}

TEST_F(ChainQuestionRow, MoreThanSixtyFourPiecesOfOneUseAreAllFound) {
  const PointId entry = Add(PointKind::Entry);
  flow_.AddRange({.entry = entry});
  std::vector<PointId> row{entry};
  for (std::uint64_t byte = 0; byte < 200; ++byte) {
    row.push_back(Add(PointKind::Statement));
    Touch(row.back(), EffectKind::Define, {2 * byte, 2 * byte + 1});
  }
  const PointId use = Add(PointKind::Statement);
  row.push_back(use);
  row.push_back(Add(PointKind::Leave));
  Row(row);
  flow_.Finish();
  EXPECT_EQ(Before(use, {0, 400}).size(), 200U);
  EXPECT_EQ(Before(use, {3, 399}).size(), 198U);
}

TEST_F(ChainQuestionRow, ALongRowOfCallsNeedsNoDeepStack) {
  // Each range performs the next one; the definition stands in the last.
  constexpr std::uint32_t kRanges = 50'000;
  const PointId entry = Add(PointKind::Entry);
  flow_.AddRange({.entry = entry});
  const PointId first = flow_.AddPoint({.range = 1, .kind = PointKind::Call});
  const PointId use = Add(PointKind::Statement);
  Row({entry, first, use, Add(PointKind::Leave)});
  PointId defined = 0;
  for (RangeId range = 1; range <= kRanges; ++range) {
    const PointId start = Add(PointKind::Start);
    const PointId middle =
        range < kRanges ? flow_.AddPoint({.range = range + 1, .kind = PointKind::Call}) : Add(PointKind::Statement);
    const PointId end = Add(PointKind::End);
    Row({start, middle, end});
    flow_.AddRange({.first = range, .last = range, .entry = start, .exit = end});
    defined = middle;
  }
  flow_.Finish();
  Touch(defined, EffectKind::Define, {0, 4});
  EXPECT_THAT(Before(use, {0, 4}), ::testing::ElementsAre(defined));
}

}  // namespace
}  // namespace qmrules::test
