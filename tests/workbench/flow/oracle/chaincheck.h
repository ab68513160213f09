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
#include "workbench/flow/programnetwork.h"

namespace qmrules::test {

// Holds the answers about programs that call each other against what runs of them have shown. Each statement, and each
// condition, must stand on a row of its own, whichever program it is in.
class ChainCheck {
 public:
  // The outermost programs, with those nested in them.
  explicit ChainCheck(std::vector<std::shared_ptr<const workbench::codemodel::ModelImage>> models);

  // Each event must be what the analysis says can be:
  // - of bytes that were read, the writer is among the definitions that reach the use, and the use among those that the
  //   definition reaches; a question about these bytes alone tells the same;
  // - when a statement runs, its conditions that always hold came out as told the last time, and those of one way in
  // did;
  // - what runs is not told never to run.
  void Check(const std::vector<RunEvent>& events);

  // What the analysis had missed, each once, for the reader.
  const std::set<std::string>& Misses() const { return misses_; }
  // Pairs of use and definition in the answers about the uses that have run; those of them whose definition has run as
  // well, in one of the runs; and those that were seen.
  struct Shares {
    std::size_t told = 0, couldBe = 0, seen = 0;
  };
  Shares Pairs() const;
  // The pairs whose definition has run and that were not seen, for the reader.
  std::vector<std::string> Unseen() const;
  // Of all the events checked: reads and statements.
  std::size_t Checked() const { return checked_; }

 private:
  using NodeId = workbench::codemodel::NodeId;
  using ModelImage = workbench::codemodel::ModelImage;
  using NetworkProgram = workbench::flow::NetworkProgram;
  // A node of a unit of a model.
  struct Place {
    const ModelImage* model = nullptr;
    std::uint32_t unit = 0;
    NodeId node = 0;
    auto operator<=>(const Place&) const = default;
  };
  // What is defined where: the row, and the program.
  using Writer = std::pair<std::uint32_t, std::string>;
  struct UseLink {
    Place use;
    workbench::flow::NetworkLink link;
  };
  struct Use {
    std::vector<UseLink> links;  // of all the occurrences of the name on the row
    std::set<Writer> seen;
  };

  void TakeUnit(const std::shared_ptr<const ModelImage>& model, std::uint32_t unit);
  void TakeGlobal(const Place& item, const std::string& name);
  void CheckRead(const RunEvent& read);
  void CheckStatement(std::uint32_t row);
  Use& UseOf(std::uint32_t row, const std::string& name);
  std::vector<const UseLink*> LinksOf(const RunEvent& read);
  bool TellsForward(const UseLink& link);
  bool TellsOfBytes(const UseLink& link, workbench::flow::ByteInterval bytes);
  bool IsHandedOn(const Place& use);
  std::set<Writer> WritersOf(const Use& use) const;
  bool CameOut(const ModelImage& model, const workbench::flow::ControllingCondition& condition) const;
  const workbench::flow::StatementConditions& ConditionsOf(const Place& statement);
  NetworkProgram& ProgramOf(const Place& place);

  std::vector<std::shared_ptr<const ModelImage>> models_;
  workbench::flow::ProgramNetwork network_;
  std::map<std::pair<std::uint32_t, std::string>, std::vector<Place>> occurrences_;  // VARs by row and name
  std::multimap<std::uint32_t, Place> statements_;                                   // by row
  std::map<std::string, Place, std::less<>> areas_;                                  // by "PROGRAM/AREA"
  std::map<std::pair<std::uint32_t, std::string>, Use> uses_;
  std::map<std::pair<Place, Place>, bool> forward_;                                 // by definition and use
  std::map<std::tuple<Place, NodeId, std::uint64_t, std::uint64_t>, bool> narrow_;  // by use, definition and bytes
  std::map<Place, workbench::flow::StatementConditions> conditions_;
  std::map<std::uint32_t, bool> outcomes_;  // of the conditions, by row: how each came out last
  std::set<std::uint32_t> hasRun_;          // rows
  std::set<std::string> misses_;
  std::size_t checked_ = 0;
};

}  // namespace qmrules::test
