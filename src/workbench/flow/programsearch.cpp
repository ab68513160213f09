#include "workbench/flow/programsearch.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qmrules::workbench::flow {

namespace {

constexpr std::size_t kMostCalls = 32;

std::string NameOf(const NetworkProgram& program, NodeId node) {
  return std::string(program.model->Text(program.model->Nodes()[node].name));
}

const ProgramCall* CallAt(NetworkProgram& program, NodeId statement) {
  const auto& calls = program.flow->Calls();
  const auto found = std::ranges::find(calls, statement, &ProgramCall::statement);
  return found == calls.end() ? nullptr : &*found;
}

// The area in which a declaration or an occurrence lies; 0 where it is not known.
NodeId AreaOf(const NetworkProgram& program, NodeId node) {
  const auto& record = program.model->Nodes()[node];
  const NodeId item = record.entity == codemodel::Entity::Decl ? node : record.declaration;
  return item != 0 && program.model->Nodes()[item].entity == codemodel::Entity::Decl ? program.model->Decl(item).area
                                                                                     : 0;
}

}  // namespace

NetworkChain ProgramSearch::Backward(NetworkProgram& program, NodeId occurrence, const ByteSet& bytes,
                                     const CallContext& context) {
  Ask({.program = &program, .question = Question::Reaching, .node = occurrence, .bytes = bytes, .context = context});
  Run();
  return std::move(answer_);
}

NetworkChain ProgramSearch::Forward(NetworkProgram& program, NodeId definition, const ByteSet& bytes,
                                    const CallContext& context) {
  Ask({.program = &program, .question = Question::Reached, .node = definition, .bytes = bytes, .context = context});
  Run();
  return std::move(answer_);
}

void ProgramSearch::Ask(Item item) {
  std::vector<std::uint64_t> bytes;
  for (const ByteInterval& interval : item.bytes.Intervals()) {
    bytes.push_back(interval.begin);
    bytes.push_back(interval.end);
  }
  auto& contexts = asked_[{item.program, item.question, item.node, std::move(bytes)}];
  if (std::ranges::any_of(contexts, [&](const CallContext& asked) { return Covers(asked, item.context); })) return;
  if (contexts.size() >= kMostContexts) item.context.clear();
  contexts.push_back(item.context);
  items_.push_back(std::move(item));
}

void ProgramSearch::AskBeyond(const Item& from, const CallPassed& call, Item item) {
  if (item.bytes.Empty()) return;
  if (from.calls.size() >= kMostCalls) {
    AddGap(*from.program, call.program == from.program ? call.statement : from.node,
           fmt::format("The chain goes through more than {} calls and is cut here.", kMostCalls));
    return;
  }
  item.calls = from.calls;
  item.calls.push_back(call);
  Ask(std::move(item));
}

void ProgramSearch::Run() {
  while (!items_.empty()) {
    const Item item = std::move(items_.front());
    items_.pop_front();
    if (item.question == Question::Reached || item.question == Question::FromStart) {
      FollowUses(item);
    } else {
      FollowDefinitions(item);
    }
  }
}

void ProgramSearch::AddGap(const NetworkProgram& program, NodeId node, std::string text) {
  const auto same = [&](const NetworkGap& gap) {
    return gap.program == &program && gap.gap.node == node && gap.gap.text == text;
  };
  if (std::ranges::none_of(answer_.gaps, same)) answer_.gaps.push_back({&program, {node, std::move(text)}});
}

void ProgramSearch::TakeGaps(const Item& item, const Chain& chain) {
  for (const AnswerGap& gap : chain.gaps) AddGap(*item.program, gap.node, gap.text);
}

void ProgramSearch::Keep(const Item& item, const ChainLink& link) {
  answer_.links.push_back({item.program, link, item.calls, item.context, item.isOtherCall});
}

void ProgramSearch::FollowDefinitions(const Item& item) {
  ProgramFlow& flow = *item.program->flow;
  Chain chain;
  if (item.question == Question::AtEnd) {
    chain = flow.DefinitionsAtEnd(item.node, item.bytes);
  } else {
    chain = flow.DefinitionsReaching(item.node, item.bytes);
  }
  TakeGaps(item, chain);
  for (const ChainLink& link : chain.links) {
    if (link.kind == DefinitionKind::Call &&
        FollowIntoCall(item, link, link.definedAt, link.definition, Question::AtEnd)) {
      continue;
    }
    // What passes through a called program untouched is in the chain of the one that calls.
    if (link.kind == DefinitionKind::Parameter && item.question == Question::AtEnd) continue;
    if (link.kind == DefinitionKind::InitialValue && item.isOtherCall) continue;
    Keep(item, link);
    if (link.kind == DefinitionKind::Parameter) FollowParameter(item, link);
    if (link.kind == DefinitionKind::InitialValue) FollowEarlierCall(item, link);
  }
}

// The storage of a program that is called keeps its values from one call to the next.
bool ProgramSearch::KeepsValues(NetworkProgram& program, NodeId area) {
  if (program.model->Nodes()[area].entity != codemodel::Entity::Decl) return false;
  const auto section = static_cast<codemodel::DataSectionKind>(program.model->Decl(area).section);
  if (section == codemodel::DataSectionKind::LocalStorage || section == codemodel::DataSectionKind::Linkage) {
    return false;
  }
  return !program.flow->Parameters().empty() || !network_.CallsOf(program).empty();
}

void ProgramSearch::FollowEarlierCall(const Item& item, const ChainLink& link) {
  if (!KeepsValues(*item.program, link.area)) return;
  Ask({.program = item.program,
       .question = Question::AtEnd,
       .node = link.area,
       .bytes = link.bytes,
       .calls = item.calls,
       .isOtherCall = true});
}

// Whether all programs that the call can lead to are known, so that the link is replaced by what follows in them.
bool ProgramSearch::FollowIntoCall(const Item& item, const ChainLink& link, NodeId statement, NodeId operand,
                                   Question question) {
  const ProgramCall* call = CallAt(*item.program, statement);
  if (call == nullptr || std::ranges::find(call->arguments, operand, &Argument::operand) == call->arguments.end()) {
    if (question == Question::AtEnd) {
      AddGap(*item.program, statement,
             fmt::format("What the called program gives {} is not followed.", NameOf(*item.program, item.node)));
    }
    return false;
  }
  std::string why;
  const auto called = network_.ProgramsCalled(*item.program, *call, &why);
  if (called.empty()) {
    AddGap(*item.program, statement,
           fmt::format("{}: what it does with {} is not known.", why, NameOf(*item.program, operand)));
    return false;
  }
  for (const CallTarget& target : called) {
    const auto binding = BindArgument(*call, target.Parameters(), operand);
    if (!binding) continue;
    AskBeyond(item, {item.program, statement},
              {.program = target.program,
               .question = question,
               .node = binding->parameter.place.area,
               .bytes = binding->Inwards(link.bytes),
               .context = Entered(item.context, {item.program, statement})});
  }
  return true;
}

// What a parameter gets, and what becomes of it, is not known where a program is called by a name that is not known.
void ProgramSearch::AddOpenCalls(const Item& item) {
  if (!item.context.empty()) return;
  for (const ProgramNetwork::KnownCall& open : network_.OpenCalls(*item.program)) {
    AddGap(*open.caller, open.call->statement,
           fmt::format("It is not known which program is called; it may be {}.", item.program->name));
  }
}

// The calls that the item's program can have been called by.
std::vector<ProgramNetwork::KnownCall> ProgramSearch::CallersOf(const Item& item) {
  if (item.context.empty()) return network_.CallsOf(*item.program);
  const auto& [caller, statement] = item.context.back();
  const ProgramCall* call = CallAt(*caller, statement);
  std::vector<ProgramNetwork::KnownCall> calls;
  if (call == nullptr) return calls;
  for (const CallTarget& target : network_.ProgramsCalled(*caller, *call)) {
    if (target.program == item.program) calls.push_back({caller, call, target.entry});
  }
  return calls;
}

void ProgramSearch::FollowParameter(const Item& item, const ChainLink& link) {
  AddOpenCalls(item);
  const CallContext context = Left(item.context);
  for (const auto& [caller, call, entry] : CallersOf(item)) {
    const auto& parameters = item.program->flow->ParametersAt(entry);
    for (std::size_t position = 0; position < std::min(parameters.size(), call->arguments.size()); ++position) {
      const Argument& argument = call->arguments[position];
      const ProgramBinding binding{argument, parameters[position]};
      if (parameters[position].place.area != link.area || argument.operand == 0) continue;
      if (argument.place.area != 0) {
        AskBeyond(item, {caller, call->statement},
                  {.program = caller,
                   .question = Question::Reaching,
                   .node = argument.operand,
                   .bytes = binding.Outwards(link.bytes),
                   .context = context});
      } else if (caller->model->Nodes()[argument.operand].entity == codemodel::Entity::Const &&
                 link.bytes.Overlaps(parameters[position].place.Bytes())) {
        ChainLink constant;
        constant.definition = argument.operand;
        constant.definedAt = constant.usedAt = call->statement;
        constant.kind = DefinitionKind::ConstantMove;
        answer_.links.push_back({caller, constant, item.calls, context, false});
        answer_.links.back().calls.push_back({caller, call->statement});
      }
    }
  }
}

void ProgramSearch::FollowUses(const Item& item) {
  ProgramFlow& flow = *item.program->flow;
  ByteSet atEnd;
  const Chain chain = item.question == Question::FromStart ? flow.UsesOfStart(item.node, item.bytes, &atEnd)
                                                           : flow.UsesReached(item.node, item.bytes, &atEnd);
  TakeGaps(item, chain);
  for (const ChainLink& link : chain.links) {
    if (!FollowIntoCall(item, link, link.usedAt, link.use, Question::Reached)) Keep(item, link);
  }
  if (!atEnd.Empty()) FollowEnd(item, atEnd);
}

// What a definition leaves at the end is found behind the calls of the program, and by the next one. What came in at
// the start has been followed for both where it came from.
void ProgramSearch::FollowEnd(const Item& item, const ByteSet& atEnd) {
  if (item.program->model->Nodes()[item.node].entity == codemodel::Entity::Decl) return;
  const NodeId area = AreaOf(*item.program, item.node);
  if (area == 0) return;
  FollowParameterAtEnd(item, area, atEnd);
  if (!KeepsValues(*item.program, area)) return;
  Ask({.program = item.program,
       .question = Question::FromStart,
       .node = area,
       .bytes = atEnd,
       .calls = item.calls,
       .isOtherCall = true});
}

void ProgramSearch::FollowParameterAtEnd(const Item& item, NodeId area, const ByteSet& atEnd) {
  const auto section = static_cast<codemodel::DataSectionKind>(item.program->model->Decl(area).section);
  if (section == codemodel::DataSectionKind::Linkage) AddOpenCalls(item);
  const CallContext context = Left(item.context);
  for (const auto& [caller, call, entry] : CallersOf(item)) {
    const auto& parameters = item.program->flow->ParametersAt(entry);
    for (std::size_t position = 0; position < std::min(parameters.size(), call->arguments.size()); ++position) {
      const Argument& argument = call->arguments[position];
      if (parameters[position].place.area != area || !argument.canChange || argument.place.area == 0) continue;
      AskBeyond(item, {caller, call->statement},
                {.program = caller,
                 .question = Question::Reached,
                 .node = argument.operand,
                 .bytes = ProgramBinding{argument, parameters[position]}.Outwards(atEnd),
                 .context = context});
    }
  }
}

}  // namespace qmrules::workbench::flow
