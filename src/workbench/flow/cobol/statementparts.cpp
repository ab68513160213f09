#include "workbench/flow/cobol/statementparts.h"

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

#include "workbench/flow/cobol/statementeffects.h"
#include "workbench/flow/cobol/storagelayout.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;

namespace {

bool IsInput(Verb verb) {
  return verb == Verb::Read || verb == Verb::Return;
}

// Those that take their operands one after the other. STRING, INSPECT and CALL look at all of them first.
bool TakesInTurn(Verb verb) {
  switch (verb) {
    case Verb::Move:
    case Verb::Set:
    case Verb::Initialize:
    case Verb::Add:
    case Verb::Subtract:
    case Verb::Multiply:
    case Verb::Divide:
    case Verb::Compute:
    case Verb::Unstring:
      return true;
    default:
      return IsInput(verb);
  }
}

bool IsArithmetic(Verb verb) {
  return verb == Verb::Add || verb == Verb::Subtract || verb == Verb::Multiply || verb == Verb::Divide;
}

bool IsTarget(const NodeRecord& node) {
  return node.entity == Entity::Var && Defines(node.usage) && node.role != Role::Pointer && node.role != Role::Tally;
}

// Whether a target that is not the first one reads something at all. Of CORRESPONDING, items of the same name read each
// other only where groups overlap, and then it is not told what becomes of them.
bool CanHaveParts(const ModelImage& model, NodeId statement) {
  const NodeRecord& record = model.Nodes()[statement];
  const auto verb = static_cast<Verb>(record.verb);
  if (!TakesInTurn(verb)) return false;
  bool any = IsInput(verb);
  for (NodeId child = statement + 1; child <= record.last; child = model.Nodes()[child].last + 1) {
    const NodeRecord& operand = model.Nodes()[child];
    if ((operand.flags & codemodel::kCorresponding) != 0) return false;
    const bool comesLate = IsTarget(operand) || (verb == Verb::Set && operand.entity == Entity::Var);
    if (any && comesLate && (operand.last > child || Reads(operand.usage))) return true;
    any = any || IsTarget(operand);
  }
  return false;
}

// What stands behind more of them belongs to the last one.
constexpr std::size_t kMostParts = 256;

struct Extent {
  NodeId area = 0;
  ByteInterval bytes;
};

// Finds the parts of one statement. What is defined is the stretch from the first to the last
// byte of an area, which may be more, and of tables all.
class Parts {
 public:
  Parts(const ModelImage& model, NodeId statement)
      : model_(model), verb_(static_cast<Verb>(model.Nodes()[statement].verb)) {
    if (IsInput(verb_)) TakeFileItems(statement);
  }

  void Take(NodeId operand) {
    if (parts_.empty()) parts_.emplace_back();
    const bool changes = IsTarget(model_.Nodes()[operand]) && Reads(model_.Nodes()[operand].usage);
    readsAgain_ = readsAgain_ ||
                  (changes && std::ranges::any_of(sources_, [this](NodeId source) { return ReadsDefined(source); }));
    if (parts_.size() < kMostParts && (ReadsDefined(operand) || (readsAgain_ && !defined_.empty()))) {
      parts_.emplace_back(readsAgain_ ? sources_ : std::vector<NodeId>());
      defined_.clear();
    }
    if (IsArithmetic(verb_) && !IsTarget(model_.Nodes()[operand])) sources_.push_back(operand);
    parts_.back().push_back(operand);
    if (IsTarget(model_.Nodes()[operand])) Define(ExtentOf(operand));
  }
  std::vector<std::vector<NodeId>> All() && {
    if (parts_.size() == 1) parts_.clear();
    return std::move(parts_);
  }

 private:
  bool IsItem(NodeId node) const { return node != 0 && model_.Nodes()[node].entity == Entity::Decl; }

  Extent ExtentOf(NodeId var) const {
    const NodeRecord& node = model_.Nodes()[var];
    if (node.role == Role::LengthOf || !IsItem(node.declaration)) return {};
    const codemodel::DeclRecord& decl = model_.Decl(node.declaration);
    const bool whole = node.role == Role::Record || (node.flags & codemodel::kRefMod) != 0 ||
                       (decl.flags & codemodel::kDynamic) != 0 || !DimensionsOf(model_, node.declaration).empty();
    if (whole) return {decl.area, {0, std::numeric_limits<std::uint64_t>::max()}};
    return {decl.area, BytesOf(decl)};
  }

  // A file's items that a READ sets before its INTO.
  void TakeFileItems(NodeId statement) {
    for (NodeId child = statement + 1; child <= model_.Nodes()[statement].last;
         child = model_.Nodes()[child].last + 1) {
      const NodeId file = model_.Nodes()[child].declaration;
      if (model_.Nodes()[child].entity != Entity::Ref || file == 0) continue;
      if (model_.Nodes()[file].entity != Entity::File) continue;
      for (const NodeId item : {model_.File(file).status, model_.File(file).key}) {
        if (IsItem(item)) Define({model_.Decl(item).area, BytesOf(model_.Decl(item))});
      }
    }
  }

  bool IsDefined(const Extent& read) const {
    const auto found = defined_.find(read.area);
    return found != defined_.end() && found->second.begin < read.bytes.end && read.bytes.begin < found->second.end;
  }

  void Define(const Extent& extent) {
    if (extent.area == 0) return;
    const auto [found, isNew] = defined_.try_emplace(extent.area, extent.bytes);
    if (isNew) return;
    found->second.begin = std::min(found->second.begin, extent.bytes.begin);
    found->second.end = std::max(found->second.end, extent.bytes.end);
  }

  bool ReadsDefined(NodeId operand) const {
    const NodeRecord& record = model_.Nodes()[operand];
    if (defined_.empty()) return false;
    if (record.entity == Entity::Var && Reads(record.usage) && IsDefined(ExtentOf(operand))) return true;
    for (NodeId node = operand + 1; node <= record.last; ++node) {
      if (model_.Nodes()[node].entity == Entity::Var && IsDefined(ExtentOf(node))) return true;
    }
    return false;
  }

  const ModelImage& model_;
  Verb verb_;
  std::vector<std::vector<NodeId>> parts_;
  // What is added to several targets is added up first, or looked at again for each of them: compilers differ.
  std::vector<NodeId> sources_;
  bool readsAgain_ = false;
  std::map<NodeId, ByteInterval> defined_;  // by area: from the first to behind the last byte
};

}  // namespace

std::vector<std::vector<NodeId>> PartsOf(const ModelImage& model, NodeId statement) {
  if (!CanHaveParts(model, statement)) return {};
  const auto verb = static_cast<Verb>(model.Nodes()[statement].verb);
  const bool isInput = IsInput(verb);
  const auto comesLate = [&](NodeId operand) {
    const NodeRecord& node = model.Nodes()[operand];
    return IsTarget(node) && !(isInput && node.role == Role::Record);
  };
  Parts parts(model, statement);
  std::vector<NodeId> targets;
  const auto takeTargets = [&] {
    for (const NodeId target : targets) parts.Take(target);
    targets.clear();
  };
  // What is moved or computed is known before any target gets it, wherever it stands. SET can have several clauses,
  // each of which begins with its targets.
  bool hasSource = false;
  for (const NodeId operand : OperandsBelow(model, statement)) {
    if (comesLate(operand)) {
      if (verb == Verb::Set && hasSource) takeTargets();
      hasSource = false;
      targets.push_back(operand);
    } else {
      hasSource = true;
      parts.Take(operand);
    }
  }
  takeTargets();
  return std::move(parts).All();
}

}  // namespace qmrules::workbench::flow::cobol
