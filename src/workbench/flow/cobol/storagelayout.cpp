#include "workbench/flow/cobol/storagelayout.h"

#include <algorithm>

#include "workbench/codemodel/cobol/data/itemstack.h"
#include "workbench/codemodel/cobol/data/layout.h"
#include "workbench/flow/equalrun.h"

namespace qmrules::workbench::flow::cobol {

using codemodel::DataUsage;
using codemodel::DeclRecord;
using codemodel::Entity;
using codemodel::ModelImage;
using codemodel::cobol::AddBytes;
using codemodel::cobol::kConstantLevel;
using codemodel::cobol::kMostBytes;
using codemodel::cobol::kSingleLevel;
using codemodel::cobol::MultiplyBytes;

namespace {

bool IsItem(const ModelImage& model, NodeId node) {
  return node != 0 && model.Nodes()[node].entity == Entity::Decl;
}

}  // namespace

std::uint64_t SizeOf(const DeclRecord& decl) {
  // More than any caller hands over.
  constexpr std::uint64_t kAnyLength = 1U << 20;
  const bool isAlone = decl.level <= 1 || decl.level == kSingleLevel;
  const bool any = isAlone && (decl.flags & (codemodel::kDynamic | codemodel::kOccurs)) == codemodel::kDynamic;
  return any ? kAnyLength : std::min(decl.size, kMostBytes);
}

ByteInterval BytesOf(const DeclRecord& decl) {
  const std::uint64_t begin = std::min(decl.offset, kMostBytes);
  return {begin, AddBytes(begin, SizeOf(decl))};
}

ByteInterval AllBytesOf(const DeclRecord& decl) {
  const std::uint64_t begin = std::min(decl.offset, kMostBytes);
  return {begin, AddBytes(begin, MultiplyBytes(SizeOf(decl), decl.occurs))};
}

bool HasOwnBytes(const DeclRecord& decl) {
  return decl.usage != DataUsage::Condition && decl.usage != DataUsage::Renames && decl.level != kConstantLevel &&
         (decl.flags & codemodel::kIndexName) == 0;
}

std::vector<Dimension> DimensionsOf(const ModelImage& model, NodeId item) {
  std::vector<Dimension> dimensions;
  const DeclRecord& own = model.Decl(item);
  if (own.usage == DataUsage::Renames || (own.flags & codemodel::kIndexName) != 0) return dimensions;
  NodeId around = own.usage == DataUsage::Condition ? model.Nodes()[item].parent : item;
  for (int level = 0; IsItem(model, around); around = model.Nodes()[around].parent) {
    if (++level > kMostLevels) return {};
    const DeclRecord& decl = model.Decl(around);
    if ((decl.flags & codemodel::kOccurs) == 0) continue;
    dimensions.push_back({around, {std::min(decl.size, kMostBytes), decl.occurs}});
  }
  std::ranges::reverse(dimensions);
  return dimensions;
}

StorageLayout::StorageLayout(const ModelImage& model) : model_(model) {
  std::vector<std::pair<NodeId, NodeId>> byArea;
  for (const DeclRecord& decl : model.Decls()) {
    if (decl.area != 0) byArea.emplace_back(decl.area, decl.node);
  }
  std::ranges::sort(byArea);
  items_.reserve(byArea.size());
  for (const auto& [area, item] : byArea) {
    if (areas_.empty() || areas_.back() != area) {
      areas_.push_back(area);
      starts_.push_back(static_cast<std::uint32_t>(items_.size()));
    }
    items_.push_back(item);
  }
  starts_.push_back(static_cast<std::uint32_t>(items_.size()));
  FindLeastBytes();
}

void StorageLayout::FindLeastBytes() {
  for (const DeclRecord& table : model_.Decls()) {
    if (table.dependingOn == 0) continue;
    AddSlack(table);
    const std::uint64_t end = AddBytes(std::min(table.offset, kMostBytes),
                                       MultiplyBytes(std::min(table.size, kMostBytes), table.occursLeast));
    NodeId around = model_.Nodes()[table.node].parent;
    for (int level = 0; IsItem(model_, around) && level < kMostLevels; ++level) {
      const std::uint64_t begin = BytesOf(model_.Decl(around)).begin;
      least_.emplace_back(around, end > begin ? end - begin : 0);
      around = model_.Nodes()[around].parent;
    }
  }
  // Of several, the smallest comes first.
  std::ranges::sort(least_);
  std::ranges::sort(slacks_, {}, &Slack::record);
}

void StorageLayout::AddSlack(const DeclRecord& table) {
  if (table.occursLeast >= table.occurs) return;
  Slack slack;
  slack.bytes = MultiplyBytes(std::min(table.size, kMostBytes), table.occurs - table.occursLeast);
  slack.table = slack.record = table.node;
  NodeId around = model_.Nodes()[table.node].parent;
  for (int level = 0; IsItem(model_, around) && level < kMostLevels; around = model_.Nodes()[around].parent, ++level) {
    const DeclRecord& decl = model_.Decl(around);
    slack.record = around;
    if ((decl.flags & codemodel::kOccurs) == 0) continue;
    slack.bytes = MultiplyBytes(slack.bytes, decl.occurs);
    slack.table = around;
  }
  slack.end = AllBytesOf(model_.Decl(slack.table)).end;
  slacks_.push_back(slack);
}

std::uint64_t StorageLayout::SlackOf(NodeId item) const {
  if (slacks_.empty()) return 0;
  NodeId record = item, redefining = 0;
  NodeId around = item;
  for (int level = 0; IsItem(model_, around) && level <= kMostLevels; around = model_.Nodes()[around].parent, ++level) {
    record = around;
    if (model_.Decl(around).redefines != 0 && model_.Decl(around).usage != DataUsage::Renames) redefining = around;
  }
  const std::uint64_t begin = BytesOf(model_.Decl(item)).begin;
  std::uint64_t bytes = 0;
  for (const Slack& slack : EqualRun(slacks_, record, &Slack::record)) {
    // What redefines another item moves with that one.
    const bool alternative =
        redefining != 0 && (slack.table < redefining || slack.table > model_.Nodes()[redefining].last);
    const std::uint64_t place = alternative ? BytesOf(model_.Decl(redefining)).begin : begin;
    if (place >= slack.end) bytes = AddBytes(bytes, slack.bytes);
  }
  return std::min(bytes, begin);
}

std::span<const NodeId> StorageLayout::ItemsOf(NodeId area) const {
  const auto found = std::ranges::lower_bound(areas_, area);
  if (found == areas_.end() || *found != area) return {};
  const auto index = static_cast<std::size_t>(found - areas_.begin());
  return std::span(items_).subspan(starts_[index], starts_[index + 1] - starts_[index]);
}

ByteInterval StorageLayout::ExtentOf(NodeId area) const {
  ByteInterval extent;
  for (const NodeId item : ItemsOf(area)) {
    const DeclRecord& decl = model_.Decl(item);
    if (HasOwnBytes(decl)) extent.end = std::max(extent.end, AllBytesOf(decl).end);
  }
  // An index is an area of its own.
  if (extent.end == 0 && area != 0 && IsItem(model_, area)) extent = AllBytesOf(model_.Decl(area));
  return extent;
}

std::uint64_t StorageLayout::LeastBytes(NodeId item) const {
  const std::uint64_t size = SizeOf(model_.Decl(item));
  const auto found = std::ranges::lower_bound(least_, std::pair<NodeId, std::uint64_t>(item, 0));
  return found != least_.end() && found->first == item ? std::min(found->second, size) : size;
}

}  // namespace qmrules::workbench::flow::cobol
