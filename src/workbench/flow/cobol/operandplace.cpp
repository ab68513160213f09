#include "workbench/flow/cobol/operandplace.h"

#include <algorithm>
#include <vector>

#include "workbench/codemodel/cobol/data/layout.h"
#include "workbench/codemodel/nodewalk.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::DataUsage;
using codemodel::DeclRecord;
using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::NodeRecord;
using codemodel::Role;
using codemodel::cobol::AddBytes;
using codemodel::cobol::MultiplyBytes;

namespace {

// How far the text of an implicit operand is looked for.
constexpr int kMostSiblings = 32;

// Tokens of a subscript; 0 for one whose tokens cannot be told.
std::uint32_t TokensOf(const ModelImage& model, NodeId operand) {
  const NodeRecord& node = model.Nodes()[operand];
  if (node.entity == Entity::Const) return 1;
  if (node.entity != Entity::Var) return 0;
  std::uint32_t tokens = 1;
  for (NodeId child = operand + 1; child <= node.last; child = model.Nodes()[child].last + 1) {
    if (model.Nodes()[child].role != Role::Qualifier) return 0;
    tokens += 2;
  }
  return tokens;
}

// A subscript for each dimension: its number, or 0 where it is not constant. Operands with nothing between them belong
// to different dimensions, others to one expression. Empty when the subscripts cannot be told apart.
std::vector<std::uint32_t> SubscriptsOf(const ModelImage& model, NodeId var) {
  std::vector<std::uint32_t> subscripts;
  const NodeRecord& owner = model.Nodes()[var];
  std::uint32_t behind = 0;
  for (NodeId child = var + 1; child <= owner.last; child = model.Nodes()[child].last + 1) {
    const NodeRecord& node = model.Nodes()[child];
    if (node.role != Role::Subscript) continue;
    const std::uint32_t tokens = TokensOf(model, child);
    if (tokens == 0) return {};
    if (subscripts.empty() || node.order == behind) {
      subscripts.push_back(node.entity == Entity::Const ? WholeNumber(model, child).value_or(0) : 0);
    } else {
      subscripts.back() = 0;
    }
    behind = node.order + tokens;
  }
  return subscripts;
}

}  // namespace

std::optional<std::uint32_t> WholeNumber(const ModelImage& model, NodeId constant) {
  constexpr std::size_t kMostDigits = 9;
  const std::string_view text = model.Text(model.Nodes()[constant].name);
  if (model.Nodes()[constant].entity != Entity::Const || text.empty() || text.size() > kMostDigits) return {};
  std::uint32_t number = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') return {};
    number = number * 10 + static_cast<std::uint32_t>(digit - '0');
  }
  return number;
}

std::uint32_t BytesOfCharacter(const DeclRecord& decl) {
  return decl.usage == DataUsage::National || decl.usage == DataUsage::Dbcs ? 2 : 1;
}

OperandPlace OperandPlaces::OfItem(NodeId item) const {
  OperandPlace operand = Declared(item);
  Slide(item, operand);
  return operand;
}

// As if all tables were full.
OperandPlace OperandPlaces::Declared(NodeId item) const {
  OperandPlace operand;
  const DeclRecord& decl = model_.Decl(item);
  operand.place.area = decl.area;
  operand.place.first = BytesOf(decl);
  operand.certain =
      decl.usage == DataUsage::Condition ? layout_.LeastBytes(model_.Nodes()[item].parent) : layout_.LeastBytes(item);
  for (const Dimension& dimension : DimensionsOf(model_, item)) operand.place.strides.push_back(dimension.stride);
  // An item within a group that is described by another one: its bytes are not known.
  const bool isUnknown = (decl.flags & codemodel::kDynamic) != 0 && decl.size == 0 && HasOwnBytes(decl);
  if (isUnknown && operand.IsNowhere()) operand.gap = EffectGapKind::UnresolvedName;
  return operand;
}

// The operand that the text has for an implicit one: the subject of an EVALUATE, the group of a CORRESPONDING. 0 where
// there is none.
NodeId OperandPlaces::ExplicitOf(NodeId var) const {
  const NodeRecord& implicit = model_.Nodes()[var];
  NodeId owner = implicit.parent;
  const bool isSubject = owner != 0 && model_.Nodes()[owner].entity == Entity::Cond;
  if (isSubject) owner = model_.Nodes()[owner].parent;
  if (owner == 0) return 0;
  NodeId found = 0;
  int left = kMostSiblings;
  for (NodeId child = owner + 1; child < var && left > 0; child = model_.Nodes()[child].last + 1, --left) {
    const NodeRecord& node = model_.Nodes()[child];
    if (node.entity == Entity::Cond) break;
    if (node.entity != Entity::Var || (node.flags & codemodel::kImplicit) != 0 || node.declaration == 0) continue;
    if (isSubject) {
      if (node.declaration != implicit.declaration || node.role != implicit.role) continue;
      if (found != 0) return 0;
      found = child;
    } else if ((node.flags & codemodel::kCorresponding) != 0 && node.declaration < implicit.declaration &&
               implicit.declaration <= model_.Nodes()[node.declaration].last) {
      return child;
    }
  }
  return found;
}

OperandPlace OperandPlaces::Of(NodeId var) const {
  OperandPlace operand = Spelled(var);
  if (operand.place.area != 0) Slide(model_.Nodes()[var].declaration, operand);
  return operand;
}

// Behind a table of variable size, and within an occurrence whose size varies, it is not known where the item lies.
void OperandPlaces::Slide(NodeId item, OperandPlace& operand) const {
  NodeId moving = item;
  for (const Dimension& dimension : DimensionsOf(model_, item)) {
    const DeclRecord& table = model_.Decl(dimension.table);
    if (layout_.LeastBytes(dimension.table) >= SizeOf(table)) continue;
    operand.place.first = AllBytesOf(table);
    operand.place.strides.clear();
    operand.partial = true;
    moving = dimension.table;
    break;
  }
  const std::uint64_t slack = layout_.SlackOf(moving);
  operand.partial = operand.partial || slack > 0;
  if (moving == item && slack == 0) return;
  ByteInterval& bytes = operand.place.first;
  bytes.begin -= std::min(slack, bytes.begin);
  operand.certain = 0;
  if (!operand.gap) operand.gap = EffectGapKind::MovingItem;
}

OperandPlace OperandPlaces::Spelled(NodeId var) const {
  const NodeRecord& node = model_.Nodes()[var];
  OperandPlace operand;
  if (node.entity != Entity::Var || node.role == Role::LengthOf) return operand;
  if (node.declaration == 0) {
    operand.gap = EffectGapKind::UnresolvedName;
    return operand;
  }
  if (model_.Nodes()[node.declaration].entity != Entity::Decl) return operand;
  const NodeId item = node.declaration;
  if ((node.flags & codemodel::kImplicit) != 0) {
    if (const NodeId spelled = ExplicitOf(var)) {
      const NodeRecord& group = model_.Nodes()[spelled];
      if (group.declaration == item) return Spelled(spelled);
      // An item of a group that is an occurrence of a table.
      operand = Subscripted(spelled, group.declaration);
      const ByteInterval whole = BytesOf(model_.Decl(group.declaration)), part = BytesOf(model_.Decl(item));
      if (part.begin < whole.begin || part.end > whole.end) return Declared(item);
      operand.place.first.begin += part.begin - whole.begin;
      operand.place.first.end = operand.place.first.begin + (part.end - part.begin);
      operand.certain = layout_.LeastBytes(item);
      return operand;
    }
  }
  operand = Subscripted(var, item);
  if ((node.flags & codemodel::kRefMod) != 0) Refer(var, item, operand);
  return operand;
}

OperandPlace OperandPlaces::Subscripted(NodeId var, NodeId item) const {
  OperandPlace operand = Declared(item);
  if (operand.place.strides.empty()) return operand;
  const bool all = (model_.Nodes()[var].flags & codemodel::kAllSubscript) != 0;
  const std::vector<std::uint32_t> subscripts = all ? std::vector<std::uint32_t>() : SubscriptsOf(model_, var);
  const std::vector<Stride> strides = std::move(operand.place.strides);
  operand.place.strides.clear();
  for (std::size_t at = 0; at < strides.size(); ++at) {
    const std::uint32_t number = subscripts.size() == strides.size() ? subscripts[at] : 0;
    if (number == 0 || number > strides[at].count) {
      operand.place.strides.push_back(strides[at]);
      continue;
    }
    const std::uint64_t shift = MultiplyBytes(strides[at].step, number - 1);
    operand.place.first.begin = AddBytes(operand.place.first.begin, shift);
    operand.place.first.end = AddBytes(operand.place.first.end, shift);
  }
  const bool hasSubscripts = model_.Nodes()[var].last != var;
  if (!operand.place.strides.empty() && !all && hasSubscripts) operand.gap = EffectGapKind::VariableSubscript;
  return operand;
}

// Reference modification.
void OperandPlaces::Refer(NodeId var, NodeId item, OperandPlace& operand) const {
  const auto constantOf = [&](Role role, bool& some) {
    std::optional<std::uint32_t> number;
    int count = 0;
    for (const NodeId child : codemodel::ChildrenOf(model_, var, Entity::Const)) {
      if (model_.Nodes()[child].role == role && ++count == 1) number = WholeNumber(model_, child);
    }
    for (const Entity entity : {Entity::Var, Entity::Func}) {
      for (const NodeId child : codemodel::ChildrenOf(model_, var, entity)) {
        if (model_.Nodes()[child].role == role) ++count;
      }
    }
    some = count > 0;
    return count == 1 ? number : std::nullopt;
  };
  bool hasOffset = false, hasLength = false;
  const std::optional<std::uint32_t> offset = constantOf(Role::Offset, hasOffset);
  const std::optional<std::uint32_t> length = constantOf(Role::Length, hasLength);
  ByteInterval& bytes = operand.place.first;
  const ByteInterval whole = bytes;
  const std::uint32_t width = BytesOfCharacter(model_.Decl(item));
  const bool known = offset && *offset > 0;
  if (known) bytes.begin = AddBytes(bytes.begin, MultiplyBytes(width, *offset - 1));
  if (known && length && *length > 0) {
    bytes.end = AddBytes(bytes.begin, MultiplyBytes(width, *length));
  } else {
    operand.partial = !known || hasLength;
  }
  // Past its end lies what follows in storage.
  const bool leaves = bytes.begin >= whole.end || bytes.end > whole.end;
  if (bytes.begin >= bytes.end) bytes = {bytes.begin, AddBytes(bytes.begin, 1)};
  operand.certain = bytes.end <= AddBytes(whole.begin, operand.certain) ? bytes.end - bytes.begin : 0;
  if (operand.partial || leaves) operand.gap = EffectGapKind::VariableReference;
}

}  // namespace qmrules::workbench::flow::cobol
