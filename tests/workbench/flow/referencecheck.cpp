#include "workbench/flow/referencecheck.h"

#include <time.h>

#include <map>
#include <utility>

#include "workbench/flow/chaincollection.h"
#include "workbench/flow/chainquestion.h"
#include "workbench/flow/flowlanguage.h"
#include "workbench/flow/referencesolver.h"

namespace qmrules::test {

namespace {

using workbench::codemodel::Entity;
using workbench::codemodel::ModelImage;
using workbench::flow::AreaEffect;
using workbench::flow::BlockBodies;
using workbench::flow::ByteInterval;
using workbench::flow::ByteSet;
using workbench::flow::ChainArea;
using workbench::flow::QuestionAnswer;
using workbench::flow::QuestionStart;
using workbench::flow::RangeBodies;

using Links = std::map<std::pair<std::uint32_t, std::uint32_t>, ByteSet>;  // by use and definition

double Seconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::string FirstDifference(const Links& expected, const Links& found, const std::string& what) {
  for (const auto* side : {&expected, &found}) {
    for (const auto& [pair, bytes] : *side) {
      const Links& other = side == &expected ? found : expected;
      const auto same = other.find(pair);
      if (same != other.end() && same->second == bytes) continue;
      return what + ": effect " + std::to_string(pair.second) + " at the use " + std::to_string(pair.first) +
             (same == other.end() ? (side == &expected ? " is missing" : " is too much") : " has other bytes");
    }
  }
  return {};
}

class Comparison {
 public:
  Comparison(BlockBodies& blocks, const ChainArea& area, ReferenceComparison& result)
      : blocks_(blocks), area_(area), result_(result) {}

  void Run(const std::string& name) {
    const double start = Seconds();
    const Links expected = ReferenceSolver(blocks_.Bodies(), area_).Links();
    const double solved = Seconds();
    Links backward;
    Links forward;
    Ask(backward, true);
    const double asked = Seconds();
    Ask(forward, false);
    result_.referenceSeconds += solved - start;
    result_.questionSeconds += asked - solved;
    result_.links += expected.size();
    if (result_.difference.empty()) result_.difference = FirstDifference(expected, backward, name + ", backward");
    if (result_.difference.empty()) result_.difference = FirstDifference(expected, forward, name + ", forward");
  }

 private:
  void Ask(Links& links, bool backward) {
    for (std::uint32_t index = 0; index < area_.Effects().size(); ++index) {
      const AreaEffect& effect = area_.Effects()[index];
      if (effect.IsUse() != backward) continue;
      if (backward) ++result_.questions;
      const QuestionStart start{effect.point, effect.bytes};
      QuestionAnswer answer =
          backward ? DefinitionsBefore(blocks_, area_, {&start, 1}) : UsesBehind(blocks_, area_, {&start, 1});
      for (auto& found : answer.effects) {
        links[backward ? std::pair{index, found.effect} : std::pair{found.effect, index}] = std::move(found.bytes);
      }
    }
  }

  BlockBodies& blocks_;
  const ChainArea& area_;
  ReferenceComparison& result_;
};

}  // namespace

ReferenceComparison CompareWithReference(const ModelImage& model, std::uint32_t unit) {
  const auto& language = *workbench::flow::FlowLanguageOf(model);
  const auto flow = language.BuildFlow(model, unit);
  const auto effects = language.EffectsOf(model, unit, flow);
  const RangeBodies bodies(flow);
  BlockBodies blocks(bodies);
  ReferenceComparison result;
  for (const auto node : model.NodesOf(Entity::Decl)) {
    if (model.Decl(node).area != node) continue;
    const ChainArea area = CollectArea(*effects, flow, node, {});
    Comparison(blocks, area, result).Run(std::string(model.Text(model.Nodes()[node].name)));
  }
  return result;
}

}  // namespace qmrules::test
