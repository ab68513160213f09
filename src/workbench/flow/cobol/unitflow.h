#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/flow/cobol/monitorways.h"
#include "workbench/flow/cobol/openways.h"
#include "workbench/flow/cobol/sqlways.h"
#include "workbench/flow/cobol/unitlabels.h"
#include "workbench/flow/cobol/useprocedures.h"

namespace qmrules::workbench::flow::cobol {

// Builds the flow of one procedure division in a walk through its nodes in the order of the text. The first point that
// a statement adds is the one that control comes to it at.
class UnitFlow {
 public:
  // The unit's Entry and its range are in the graph. `isCalled` for a program that is certainly called by another one.
  UnitFlow(const codemodel::ModelImage& model, NodeId division, FlowGraph& graph, PointId entry, bool isCalled);
  void Build();

 private:
  // Statements nested deeper than the parser lets them be are left out, with a gap.
  static constexpr int kMostDepth = 600;

  // What a PERFORM goes through: a range or the statements of a block; neither when that is not known.
  struct Performed {
    NodeId node = 0;
    PointId statement = kNoPoint;
    RangeId range = kNoRange;
    NodeId block = 0;
  };
  struct Counter {
    NodeId variable = 0;
    NodeId condition = 0;  // its UNTIL
  };
  // A condition with its two outcomes, which lead nowhere yet.
  struct Test {
    PointId condition = kNoPoint, isTrue = kNoPoint, isFalse = kNoPoint;
  };
  // The points of one counter of a PERFORM VARYING.
  struct Level {
    PointId begin = kNoPoint, step = kNoPoint;
    Test test;
  };
  struct Phrase {
    NodeId node = 0, condition = 0;
    NodeId failure = 0, success = 0;  // blocks
    bool negated = false;             // the condition tells success
  };

  // Labels and lists of statements: unitflow.cpp
  void Label(NodeId label);
  void Statements(NodeId list);
  // Gives what stands behind it.
  NodeId Statement(NodeId node);
  void Dispatch(NodeId node);
  void PassParts(NodeId node, PointKind kind);
  void EndSentence();
  bool IsStatement(NodeId node) const;

  // Branches: branchflow.cpp
  void Branch(NodeId block);
  bool AlwaysHolds(NodeId condition) const;
  Test MakeTest(NodeId condition);
  // The same, and what is open leads to it.
  Test ReachTest(NodeId condition);
  void Decide(NodeId node);
  void Outcomes(NodeId node, PointId again);
  void Search(NodeId node, NodeId outcomes);
  NodeId FindPhrases(NodeId node);
  NodeId WithPhrases(NodeId node);
  void Phrases(NodeId node, std::size_t first);
  bool GoesOnAfterError(NodeId node) const;
  std::size_t Errors(NodeId node, bool hasPhrases);

  // Loops: loopflow.cpp
  void Perform(NodeId node);
  void Control(const Performed& performed);
  // Gives the point that the body begins with, kNoPoint for one without any. `cycle` is where EXIT PERFORM CYCLE leads;
  // behind the loop where that is none.
  PointId Body(const Performed& performed, PointId cycle);
  void Times(const Performed& performed, NodeId times);
  void Until(const Performed& performed, NodeId condition);
  void UntilBehind(const Performed& performed, NodeId condition);
  void Forever(const Performed& performed);
  std::vector<Level> MakeLevels(std::size_t first);
  void VaryingBefore(const Performed& performed, std::size_t first);
  void VaryingBehind(const Performed& performed, std::size_t first);
  void SetInnerCounters(const Performed& performed, std::size_t first);
  void ExitPerform(NodeId node, bool cycle);
  void Procedures(NodeId node);

  // Jumps and ends: jumpflow.cpp
  void JumpTo(NodeId node, PointId target);
  bool IsAlone(NodeId node) const;
  void GoTo(NodeId node);
  void ExitSection(NodeId node);
  void EndFirstSection();
  void ExitProgram(NodeId node);
  void Resume(NodeId node);
  void NextSentence(NodeId node);
  void Entry(NodeId node);
  void Unknown(NodeId node);

  codemodel::cobol::Verb VerbOf(NodeId node) const { return static_cast<codemodel::cobol::Verb>(nodes_[node].verb); }

  const codemodel::ModelImage& model_;
  std::span<const codemodel::NodeRecord> nodes_;
  NodeId division_;
  FlowGraph& graph_;
  PointId entry_;
  bool isCalled_;
  OpenWays ways_;
  UnitLabels labels_;
  UseProcedures uses_;
  MonitorWays monitor_;
  SqlWays sql_;
  NodeId section_ = 0, paragraph_ = 0;  // that the walk has come to
  int depth_ = 0;
  std::vector<PointId> loops_;              // of the inline PERFORMs around: where EXIT PERFORM CYCLE leads
  std::vector<PointId> exits_;              // EXIT PERFORMs of the loops around
  std::vector<PointId> sentences_;          // NEXT SENTENCEs of the sentence
  std::vector<PointId> firstSectionExits_;  // EXIT SECTIONs before the first section
  std::vector<Counter> counters_;           // of the PERFORMs around
  std::vector<Phrase> phrases_;             // of the statements around
  std::vector<UnitLabels::NamedRange> ranges_;
  std::vector<RangeId> useRanges_;
  std::vector<NodeId> targets_;
};

}  // namespace qmrules::workbench::flow::cobol
