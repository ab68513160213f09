#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "workbench/flow/programbinding.h"
#include "workbench/flow/programnetwork.h"

// One question over several programs: what is left to ask, and the answer so far.
namespace qmrules::workbench::flow {

class ProgramSearch {
 public:
  explicit ProgramSearch(ProgramNetwork& network) : network_(network) {}

  NetworkChain Backward(NetworkProgram& program, NodeId occurrence, const ByteSet& bytes, const CallContext& context);
  NetworkChain Forward(NetworkProgram& program, NodeId definition, const ByteSet& bytes, const CallContext& context);

 private:
  enum class Question : std::uint8_t { Reaching, AtEnd, Reached, FromStart };
  struct Item {
    NetworkProgram* program = nullptr;
    Question question = Question::Reaching;
    NodeId node = 0;  // the occurrence or definition; the area for AtEnd and FromStart
    ByteSet bytes;
    CallContext context = {};
    std::vector<CallPassed> calls = {};
    bool isOtherCall = false;  // AtEnd: of the call of the program before this one; FromStart: of the one after
  };

  void Ask(Item item);
  // The item that follows at the other end of a call.
  void AskBeyond(const Item& from, const CallPassed& call, Item item);
  void Run();
  void TakeGaps(const Item& item, const Chain& chain);
  void Keep(const Item& item, const ChainLink& link);
  void FollowDefinitions(const Item& item);
  void FollowUses(const Item& item);
  bool FollowIntoCall(const Item& item, const ChainLink& link, NodeId statement, NodeId operand, Question question);
  bool KeepsValues(NetworkProgram& program, NodeId area);
  void FollowEarlierCall(const Item& item, const ChainLink& link);
  void FollowParameter(const Item& item, const ChainLink& link);
  void FollowEnd(const Item& item, const ByteSet& atEnd);
  void FollowParameterAtEnd(const Item& item, NodeId area, const ByteSet& atEnd);
  std::vector<ProgramNetwork::KnownCall> CallersOf(const Item& item);
  void AddOpenCalls(const Item& item);
  void AddGap(const NetworkProgram& program, NodeId node, std::string text);

  ProgramNetwork& network_;
  std::deque<Item> items_;
  std::map<std::tuple<const NetworkProgram*, Question, NodeId, std::vector<std::uint64_t>>, std::vector<CallContext>>
      asked_;
  NetworkChain answer_;
};

}  // namespace qmrules::workbench::flow
