#include "workbench/codemodel/cobol/data/programscope.h"

#include <algorithm>

#include "workbench/codemodel/cobol/data/registers.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {
// From so many items of one name on, what a reference means is remembered.
constexpr std::size_t kMany = 32;
}  // namespace

struct ProgramScope::Tally {
  std::span<const std::uint32_t> qualifiers;
  bool globalOnly = false;
  NodeId part = 0, whole = 0;
  std::uint32_t parts = 0, wholes = 0;

  Resolution Result() const {
    using enum Resolution::Found;
    if (wholes > 0) return {wholes == 1 ? One : Several, whole};
    if (parts > 0) return {parts == 1 ? One : Several, part};
    return {};
  }
};

ProgramScope::ProgramScope(ModelBuilder& model, const SymbolTable& symbols, ProgramScope* parent)
    : model_(model), parent_(parent) {
  if (parent_ != nullptr) {
    currencySymbol = parent_->currencySymbol;
    decimalComma = parent_->decimalComma;
    return;
  }
  decimalComma = model.Source().decimalComma;
  registers_ = RegistersOf(symbols, model.Source());
}

void ProgramScope::Declare(std::uint32_t symbol, NodeId node) {
  if (nodeSymbols_.empty()) firstNode_ = node;
  nodeSymbols_.resize(node - firstNode_ + 1, SymbolTable::kNone);
  nodeSymbols_.back() = symbol;
  const std::uint32_t known = names_.Find(symbol);
  if (known == SymbolMap::kNone) {
    names_.Set(symbol, static_cast<std::uint32_t>(candidates_.size()));
    onlyOnes_.Set(symbol, node);
    candidates_.push_back({node, {}});
  } else {
    onlyOnes_.Set(symbol, kSeveral);
    candidates_[known].more.push_back(node);
  }
}

const ProgramScope::Candidates* ProgramScope::Find(std::uint32_t name) const {
  const std::uint32_t place = names_.Find(name);
  return place == SymbolMap::kNone ? nullptr : &candidates_[place];
}

std::uint32_t ProgramScope::SymbolOf(NodeId node) const {
  if (node < firstNode_ || node - firstNode_ >= nodeSymbols_.size()) return SymbolTable::kNone;
  return nodeSymbols_[node - firstNode_];
}

ProgramScope::Fit ProgramScope::FitOf(NodeId node, std::span<const std::uint32_t> qualifiers, bool globalOnly) const {
  std::size_t met = 0;
  bool whole = true, global = false;
  for (NodeId at = node; at != 0; at = model_.Node(at).parent) {
    const Entity entity = model_.Node(at).entity;
    if (entity == Entity::Decl) {
      global = global || (model_.Decl(at).flags & kGlobal) != 0;
    } else if (entity == Entity::File) {
      global = global || (model_.File(at).flags & kGlobal) != 0;
    } else {
      break;
    }
    if (at == node) continue;
    const std::uint32_t symbol = SymbolOf(at);
    if (met < qualifiers.size() && symbol == qualifiers[met]) {
      ++met;
    } else if (symbol != SymbolTable::kNone && entity == Entity::Decl) {
      whole = false;
    }
  }
  if (met < qualifiers.size() || (globalOnly && !global)) return Fit::No;
  return whole ? Fit::Whole : Fit::Part;
}

void ProgramScope::Count(Tally& tally, const Candidates& candidates, NodeId first, NodeId last) const {
  const auto look = [&](NodeId node) {
    const Fit fit = FitOf(node, tally.qualifiers, tally.globalOnly);
    if (fit == Fit::Part && tally.parts++ == 0) tally.part = node;
    if (fit == Fit::Whole && tally.wholes++ == 0) tally.whole = node;
  };
  if (candidates.first >= first && candidates.first <= last) look(candidates.first);
  auto at = std::lower_bound(candidates.more.begin(), candidates.more.end(), first);
  for (; at != candidates.more.end() && *at <= last && tally.wholes < 2; ++at) look(*at);
}

Resolution ProgramScope::Look(std::uint32_t name, std::span<const std::uint32_t> qualifiers, bool globalOnly) const {
  const Candidates* candidates = Find(name);
  if (candidates == nullptr) return {};
  Tally tally{.qualifiers = qualifiers, .globalOnly = globalOnly};
  const Candidates* outer = qualifiers.empty() ? nullptr : Find(qualifiers.back());
  if (!qualifiers.empty() && outer == nullptr) return {};
  if (outer == nullptr || outer->more.size() >= candidates->more.size()) {
    Count(tally, *candidates, 0, model_.LastNode());
    return tally.Result();
  }
  NodeId done = 0;
  const auto below = [&](NodeId group) {
    const NodeId last = model_.Node(group).last;
    if (last > done) Count(tally, *candidates, std::max(group, done) + 1, last);
    done = std::max(done, last);
  };
  below(outer->first);
  for (const NodeId group : outer->more) below(group);
  return tally.Result();
}

Resolution ProgramScope::ResolveHere(std::uint32_t name, std::span<const std::uint32_t> qualifiers,
                                     bool globalOnly) const {
  const std::uint32_t only = onlyOnes_.Find(name);
  if (only == SymbolMap::kNone) return {};
  if (only != kSeveral && !globalOnly && qualifiers.empty()) return {Resolution::Found::One, only};
  const Candidates* candidates = Find(name);
  if (candidates->more.size() < kMany) return Look(name, qualifiers, globalOnly);
  std::vector<std::uint32_t> key = {name, globalOnly ? 1U : 0U, static_cast<std::uint32_t>(nodeSymbols_.size())};
  key.insert(key.end(), qualifiers.begin(), qualifiers.end());
  const auto known = found_.find(key);
  if (known != found_.end()) return known->second;
  const Resolution resolution = Look(name, qualifiers, globalOnly);
  found_.emplace(std::move(key), resolution);
  return resolution;
}

Resolution ProgramScope::Resolve(std::uint32_t name, std::span<const std::uint32_t> qualifiers) const {
  Resolution resolution = ResolveHere(name, qualifiers, false);
  for (const ProgramScope* scope = parent_; scope != nullptr && resolution.found == Resolution::Found::None;
       scope = scope->parent_) {
    resolution = scope->ResolveHere(name, qualifiers, true);
  }
  return resolution;
}

Resolution ProgramScope::ResolveWithin(NodeId first, NodeId last, std::uint32_t name,
                                       std::span<const std::uint32_t> qualifiers) const {
  const Candidates* candidates = Find(name);
  if (candidates == nullptr) return {};
  Tally tally{.qualifiers = qualifiers};
  Count(tally, *candidates, first, last);
  return tally.Result();
}

NodeId ProgramScope::LastChild(NodeId parent, std::uint32_t name) const {
  constexpr int kMostTried = 1000;
  const Candidates* candidates = Find(name);
  if (candidates == nullptr) return 0;
  int tried = 0;
  for (auto at = candidates->more.rbegin(); at != candidates->more.rend() && *at > parent; ++at) {
    if (model_.Node(*at).parent == parent) return *at;
    if (++tried == kMostTried) return 0;
  }
  return model_.Node(candidates->first).parent == parent ? candidates->first : 0;
}

bool ProgramScope::IsDeclared(std::uint32_t name) const {
  if (onlyOnes_.Find(name) != SymbolMap::kNone) return true;
  return parent_ != nullptr && Resolve(name, {}).found != Resolution::Found::None;
}

Resolution ProgramScope::ResolveFile(std::uint32_t name) const {
  for (const ProgramScope* scope = this; scope != nullptr; scope = scope->parent_) {
    const Candidates* candidates = scope->Find(name);
    if (candidates == nullptr) continue;
    const auto fits = [&](NodeId node) {
      return model_.Node(node).entity == Entity::File && (scope == this || (model_.File(node).flags & kGlobal) != 0);
    };
    if (fits(candidates->first)) return {Resolution::Found::One, candidates->first};
    const auto at = std::find_if(candidates->more.begin(), candidates->more.end(), fits);
    if (at != candidates->more.end()) return {Resolution::Found::One, *at};
  }
  return {};
}

void ProgramScope::DeclareSpecial(std::uint32_t symbol, SpecialKind kind, NodeId node) {
  specials_.try_emplace(symbol, SpecialName{kind, node});
}

ProgramScope::SpecialKind ProgramScope::Special(std::uint32_t symbol) const {
  for (const ProgramScope* scope = this; scope != nullptr; scope = scope->parent_) {
    const auto place = scope->specials_.find(symbol);
    if (place != scope->specials_.end()) return place->second.kind;
  }
  return SpecialKind::None;
}

NodeId ProgramScope::SpecialNode(std::uint32_t symbol) const {
  for (const ProgramScope* scope = this; scope != nullptr; scope = scope->parent_) {
    const auto place = scope->specials_.find(symbol);
    if (place != scope->specials_.end()) return place->second.node;
  }
  return 0;
}

std::int64_t ProgramScope::Constant(std::uint32_t symbol) const {
  for (const ProgramScope* scope = this; scope != nullptr; scope = scope->parent_) {
    const auto place = scope->constants_.find(symbol);
    if (place != scope->constants_.end()) return place->second;
  }
  return -1;
}

const ProgramScope& ProgramScope::Outermost() const {
  const ProgramScope* scope = this;
  while (scope->parent_ != nullptr) scope = scope->parent_;
  return *scope;
}

bool ProgramScope::IsRegister(std::uint32_t symbol) const {
  const auto& registers = Outermost().registers_;
  const auto place = std::lower_bound(registers.begin(), registers.end(), std::pair{symbol, 0U});
  return place != registers.end() && place->first == symbol && !IsDeclared(symbol);
}

void ProgramScope::UseRegister(NodeId var, std::uint32_t symbol, std::uint32_t qualifier) {
  ProgramScope* scope = this;
  while (scope->parent_ != nullptr) scope = scope->parent_;
  scope->registerUses_.push_back({var, symbol, qualifier});
}

void ProgramScope::MakeRegisters(std::uint32_t lastToken) {
  if (registerUses_.empty()) return;
  std::vector<RegisterMaker::Wanted> wanted;
  for (const RegisterUse& use : registerUses_) {
    const auto place = std::lower_bound(registers_.begin(), registers_.end(), std::pair{use.symbol, 0U});
    if (place == registers_.end() || place->first != use.symbol) continue;
    wanted.push_back({place->second, use.qualifier, use.var});
  }
  RegisterMaker(model_, lastToken).Make(std::move(wanted));
  registerUses_.clear();
}

}  // namespace qmrules::workbench::codemodel::cobol
