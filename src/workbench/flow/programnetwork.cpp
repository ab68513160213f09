#include "workbench/flow/programnetwork.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "workbench/codemodel/nodewalk.h"
#include "workbench/flow/programbinding.h"
#include "workbench/flow/programsearch.h"

namespace qmrules::workbench::flow {

namespace {

using codemodel::Entity;
using codemodel::ModelImage;

// Programs within one another whose outcome is asked for at a time.
constexpr std::size_t kMostNested = 32;

// A literal as it is called by: without quotation marks and the blanks at its end, in capitals.
std::string ProgramName(std::string_view text) {
  if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front()) {
    text = text.substr(1, text.size() - 2);
  }
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  std::string name(text);
  for (char& character : name) {
    if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  }
  return name;
}

bool IsLiteral(std::string_view text) {
  return text.size() >= 2 && (text.front() == '"' || text.front() == '\'');
}

// The literal that a definition gives; "" where it is none, or more than one.
std::string ValueOf(const ModelImage& model, const ChainLink& link) {
  if (link.kind == DefinitionKind::InitialValue) {
    if (model.Nodes()[link.definition].entity != Entity::Decl) return {};
    const std::string_view text = model.Text(model.Decl(link.definition).value);
    return IsLiteral(text) ? ProgramName(text) : std::string();
  }
  if (link.kind != DefinitionKind::ConstantMove) return {};
  const auto constants = ChildrenOf(model, link.definedAt, Entity::Const);
  if (constants.size() != 1) return {};
  const std::string_view text = model.Text(model.Nodes()[constants.front()].name);
  return IsLiteral(text) ? ProgramName(text) : std::string();
}

// The ENTRYs of a model. Calls take(unit, PORT, name in capitals).
template <typename Take>
void ForEntries(const ModelImage& model, Take take) {
  for (const NodeId port : model.NodesOf(Entity::Port)) {
    const auto& record = model.Nodes()[port];
    if ((record.flags & codemodel::kPortUsing) == 0 || record.detail == 0) continue;
    std::uint32_t unit = 0;
    for (std::uint32_t each = 0; each < model.Units().size(); ++each) {
      const NodeId division = model.Units()[each].division;
      if (division != 0 && division < port && port <= model.Nodes()[division].last) unit = each;
    }
    take(unit, port, ProgramName(model.Text(record.detail)));
  }
}

// Holds a program in a set as long as it lives.
class Mark {
 public:
  Mark(std::set<const NetworkProgram*>& set, const NetworkProgram* program) : set_(set), program_(program) {
    set_.insert(program_);
  }
  ~Mark() { set_.erase(program_); }
  Mark(const Mark&) = delete;
  Mark& operator=(const Mark&) = delete;

 private:
  std::set<const NetworkProgram*>& set_;
  const NetworkProgram* program_;
};

}  // namespace

ProgramNetwork::ProgramNetwork(Opener open, Callers callers) : open_(std::move(open)), callers_(std::move(callers)) {}

ProgramNetwork::~ProgramNetwork() = default;

NetworkProgram& ProgramNetwork::Add(std::shared_ptr<const ModelImage> model, std::uint32_t unit) {
  NetworkProgram*& known = byUnit_[{model.get(), unit}];
  if (known != nullptr) return *known;
  known = programs_.emplace_back(std::make_unique<NetworkProgram>()).get();
  NetworkProgram& added = *known;
  added.name = ProgramName(model->Text(model->Units()[unit].name));
  added.unit = unit;
  added.flow = std::make_unique<ProgramFlow>(
      model, unit, [this, &added](NodeId statement, NodeId operand, const StoragePlace& place) {
        return OutcomeOf(added, statement, operand, place);
      });
  added.model = std::move(model);
  if (unit == 0) byName_.emplace(added.name, &added);
  return added;
}

NetworkProgram* ProgramNetwork::Find(std::string_view name) {
  const std::string key = ProgramName(name);
  if (const auto found = byName_.find(key); found != byName_.end()) return found->second;
  const auto model = open_ ? open_(key) : nullptr;
  NetworkProgram* program = nullptr;
  if (model != nullptr && !model->Units().empty() && FlowLanguageOf(*model) != nullptr) {
    const std::string own = ProgramName(model->Text(model->Units()[0].name));
    // Somebody may have opened it already.
    const auto known = byName_.find(own);
    const bool isKnown = known != byName_.end() && known->second != nullptr;
    const CallTarget entry = own == key ? CallTarget() : FindEntry(isKnown ? known->second->model : model, key);
    if (entry.program == nullptr) {
      program = &Add(model, 0);
    } else {
      entries_[key] = entry;
    }
  }
  byName_[key] = program;
  return program;
}

CallTarget ProgramNetwork::FindEntry(const std::shared_ptr<const ModelImage>& model, std::string_view name) {
  CallTarget found;
  ForEntries(*model, [&](std::uint32_t unit, NodeId port, const std::string& entry) {
    if (entry == name && found.program == nullptr) found = {&Add(model, unit), port};
  });
  return found;
}

// A program nested in the one that calls, or beside it, goes before one of the workspace.
CallTarget ProgramNetwork::Resolve(const NetworkProgram& caller, std::string_view name) {
  const auto units = caller.model->Units();
  for (std::uint32_t unit = 0; unit < units.size(); ++unit) {
    if (ProgramName(caller.model->Text(units[unit].name)) == name) return {&Add(caller.model, unit), 0};
  }
  if (const CallTarget own = FindEntry(caller.model, name); own.program != nullptr) return own;
  if (NetworkProgram* program = Find(name)) return {program, 0};
  const auto entry = entries_.find(name);
  return entry == entries_.end() ? CallTarget() : entry->second;
}

std::vector<std::string> ProgramNetwork::NamesOf(NetworkProgram& caller, const ProgramCall& call) {
  if (call.program == 0) return {};
  const ModelImage& model = *caller.model;
  const auto& record = model.Nodes()[call.program];
  if (record.entity == Entity::Const) return {ProgramName(model.Text(record.name))};
  const Chain chain = caller.flow->DefinitionsReaching(call.program);
  ByteSet all;
  for (const ChainLink& link : chain.links) all.Add(link.bytes);
  std::set<std::string> names;
  for (const ChainLink& link : chain.links) {
    const std::string name = link.bytes == all && !link.mayDefine ? ValueOf(model, link) : std::string();
    if (name.empty()) return {};
    names.insert(name);
  }
  return {names.begin(), names.end()};
}

std::vector<CallTarget> ProgramNetwork::ProgramsCalled(NetworkProgram& caller, const ProgramCall& call,
                                                       std::string* why) {
  auto found = called_.find({&caller, call.statement});
  if (found == called_.end()) {
    // Asking for the name can lead to this call again: then it is not known yet.
    found = called_.emplace(std::make_pair(&caller, call.statement), std::vector<CallTarget>()).first;
    std::vector<CallTarget> programs;
    for (const std::string& name : NamesOf(caller, call)) programs.push_back(Resolve(caller, name));
    if (std::ranges::find(programs, nullptr, &CallTarget::program) == programs.end())
      found->second = std::move(programs);
  }
  if (found->second.empty() && why != nullptr) {
    const auto names = NamesOf(caller, call);
    *why = "It is not known which program is called";
    for (const std::string& name : names) {
      if (Resolve(caller, name).program == nullptr) *why = fmt::format("{} is not in the workspace", name);
    }
  }
  return found->second;
}

const ProgramNetwork::KnownCalls& ProgramNetwork::FindCalls(NetworkProgram& program) {
  KnownCalls& known = callsOf_[&program];
  if (known.programs == 0) {
    std::set<std::string> names{program.name};
    ForEntries(*program.model, [&](std::uint32_t, NodeId, std::string name) { names.insert(std::move(name)); });
    for (const std::string& called : names) {
      for (const std::string& name : callers_ ? callers_(called) : std::vector<std::string>()) Find(name);
    }
    for (std::uint32_t unit = 0; unit < program.model->Units().size(); ++unit) Add(program.model, unit);
  }
  if (known.programs == programs_.size()) return known;
  std::vector<NetworkProgram*> callers;
  for (const auto& caller : programs_) callers.push_back(caller.get());
  std::ranges::stable_sort(callers, {},
                           [](const NetworkProgram* caller) { return std::tie(caller->name, caller->unit); });
  known = {.programs = callers.size(), .calls = {}, .open = {}};
  for (NetworkProgram* caller : callers) {
    for (const ProgramCall& call : caller->flow->Calls()) {
      const auto targets = ProgramsCalled(*caller, call);
      for (const CallTarget& called : targets) {
        if (called.program == &program) known.calls.push_back({caller, &call, called.entry});
      }
      if (targets.empty() && call.program != 0 && NamesOf(*caller, call).empty()) {
        known.open.push_back({.caller = caller, .call = &call});
      }
    }
  }
  return known;
}

std::optional<CallOutcome> ProgramNetwork::OutcomeOf(NetworkProgram& caller, NodeId statement, NodeId operand,
                                                     const StoragePlace& place) {
  const auto& calls = caller.flow->Calls();
  const auto call = std::ranges::find(calls, statement, &ProgramCall::statement);
  if (call == calls.end() || underWay_.size() >= kMostNested) return std::nullopt;
  if (std::ranges::find(call->arguments, operand, &Argument::operand) == call->arguments.end()) return std::nullopt;
  const auto called = ProgramsCalled(caller, *call);
  if (called.empty()) return std::nullopt;
  ByteSet touched;
  ByteSet surely = place.Bytes();
  for (const CallTarget& target : called) {
    if (underWay_.contains(target.program)) return std::nullopt;
    const auto binding = BindArgument(*call, target.Parameters(), operand);
    const CallOutcome outcome = binding ? OutcomeIn(*target.program, *binding) : CallOutcome();
    touched.Add(outcome.surely);
    touched.Add(outcome.perhaps);
    surely = surely.Within(outcome.surely);
  }
  if (call->mayFail) surely = ByteSet();
  CallOutcome all{std::move(surely), std::move(touched)};
  all.perhaps.Remove(all.surely);
  return all;
}

CallOutcome ProgramNetwork::OutcomeIn(NetworkProgram& called, const ProgramBinding& binding) {
  const Mark mark(underWay_, &called);
  ByteSet written;
  ByteSet untouched;
  const StoragePlace& place = binding.parameter.place;
  for (const ChainLink& link : called.flow->DefinitionsAtEnd(place.area, place.Bytes()).links) {
    (link.kind == DefinitionKind::Parameter ? untouched : written).Add(link.bytes);
  }
  CallOutcome outcome{binding.Outwards(written), binding.Outwards(written.Within(untouched))};
  outcome.surely.Remove(outcome.perhaps);
  return outcome;
}

NetworkChain ProgramNetwork::DefinitionsReaching(NetworkProgram& program, NodeId occurrence, const ByteSet& bytes,
                                                 const CallContext& context) {
  return ProgramSearch(*this).Backward(program, occurrence, bytes, context);
}

NetworkChain ProgramNetwork::UsesReached(NetworkProgram& program, NodeId definition, const ByteSet& bytes,
                                         const CallContext& context) {
  return ProgramSearch(*this).Forward(program, definition, bytes, context);
}

}  // namespace qmrules::workbench::flow
