#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/oracle/runlog.h"
#include "workbench/flow/programflow.h"

namespace qmrules::test {

// Holds the answers about a program against what runs of it have shown. Each statement, and each condition, must stand
// on a row of its own.
class ChainCheck {
 public:
  explicit ChainCheck(std::shared_ptr<const workbench::codemodel::ModelImage> model);

  // Each event must be what the analysis says can be:
  // - of bytes that were read, the writer is among the definitions that reach the use, and the use among those that the
  //   definition reaches;
  // - when a statement runs, its conditions that always hold came out as told the last time, and those of one way in
  // did;
  // - what runs is not told never to run.
  void Check(const std::vector<RunEvent>& events);

  // What the analysis had missed, each once, for the reader.
  const std::set<std::string>& Misses() const { return misses_; }
  // Pairs of use and definition in the answers about the uses that have run, and those of them that were seen.
  std::size_t Told() const;
  std::size_t Seen() const { return seen_.size(); }
  // Of all the events checked: reads and statements.
  std::size_t Checked() const { return checked_; }

 private:
  using NodeId = workbench::codemodel::NodeId;
  struct Use {
    std::vector<workbench::flow::ChainLink> links;  // of all the occurrences of the name on the row
  };

  void CheckRead(const RunEvent& read);
  void CheckStatement(std::uint32_t row);
  const Use& UseOf(std::uint32_t row, const std::string& name);
  std::vector<const workbench::flow::ChainLink*> LinksOf(const RunEvent& read);
  bool TellsForward(const workbench::flow::ChainLink& link);
  std::uint32_t RowOfDefinition(const workbench::flow::ChainLink& link) const;
  std::uint32_t RowOf(NodeId node) const;
  bool CameOut(const workbench::flow::ControllingCondition& condition) const;
  const workbench::flow::StatementConditions& ConditionsOf(NodeId statement);

  std::shared_ptr<const workbench::codemodel::ModelImage> model_;
  workbench::flow::ProgramFlow flow_;
  std::map<std::pair<std::uint32_t, std::string>, std::vector<NodeId>> occurrences_;  // VARs by row and name
  std::multimap<std::uint32_t, NodeId> statements_;                                   // by row
  std::map<std::string, NodeId, std::less<>> areas_;
  std::map<std::pair<std::uint32_t, std::string>, Use> uses_;
  std::map<std::pair<NodeId, NodeId>, bool> forward_;
  std::map<NodeId, workbench::flow::StatementConditions> conditions_;
  std::map<std::uint32_t, bool> outcomes_;  // of the conditions, by row: how each came out last
  std::set<std::string> misses_;
  std::set<std::tuple<std::uint32_t, std::string, std::uint32_t>> seen_;
  std::size_t checked_ = 0;
};

}  // namespace qmrules::test
