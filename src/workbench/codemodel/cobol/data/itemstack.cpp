#include "workbench/codemodel/cobol/data/itemstack.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "workbench/codemodel/cobol/data/layout.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// Entries that have no storage and no items below them.
bool IsAside(std::uint8_t level) {
  return level == kRenamesLevel || level == kConditionLevel || level == kConstantLevel;
}

bool IsOutermost(std::uint8_t level) {
  return level <= 1 || level == kSingleLevel;
}

}  // namespace

void ItemStack::Begin(DataSectionKind section, NodeId file) {
  CloseAll();
  section_ = section;
  file_ = file;
}

NodeId ItemStack::Parent() const {
  return items_.empty() ? 0 : context_.model.Node(items_.back().description.node).parent;
}

std::uint8_t ItemStack::NextLevel() const {
  if (items_.empty()) return 1;
  const Item& last = items_.back();
  if (last.description.hasPicture || last.description.level >= kDeepestLevel) return last.description.level;
  return static_cast<std::uint8_t>(last.description.level + 1);
}

NodeId ItemStack::Open(std::uint8_t level, std::uint32_t firstToken) {
  if (IsOutermost(level)) {
    CloseAll();
  } else if (level == kRenamesLevel) {
    CloseDownTo(std::min<std::size_t>(items_.size(), 1));
  } else if (!IsAside(level)) {
    while (!items_.empty() && items_.back().description.level >= level) CloseDownTo(items_.size() - 1);
  }
  const bool isBelow = !items_.empty();
  if (isBelow && !IsAside(level)) items_.back().isGroup = true;
  const NodeId node = context_.model.Open(Entity::Decl, firstToken);
  Item item;
  item.description.node = node;
  item.description.level = level;
  item.area = node;
  if (isBelow) {
    const Item& parent = items_.back();
    item.area = parent.area;
    item.offset = AddBytes(parent.offset, parent.used);
  } else if (file_ != 0 && !IsAside(level)) {
    FileRecord& file = context_.model.File(file_);
    if (file.firstRecord == 0) file.firstRecord = node;
    item.area = file.firstRecord;
  }
  items_.push_back(item);
  context_.model.AddDecl(node);
  return node;
}

void ItemStack::Inherit(ItemDescription& description) const {
  constexpr std::uint16_t kSigns = kSignSeparate | kSignLeading;
  if (items_.size() < 2) {
    if (!description.hasSign) description.flags |= context_.defaultSign;
    return;
  }
  const ItemDescription& parent = items_[items_.size() - 2].description;
  if (!description.hasUsage && parent.hasUsage) {
    description.usage = parent.usage;
    description.hasUsage = true;
  }
  if (!description.hasSign && (parent.hasSign || (parent.flags & kSigns) != 0)) {
    description.flags |= parent.flags & kSigns;
    description.hasSign = true;
  }
}

void ItemStack::Describe(const ItemDescription& description, std::uint32_t lastToken) {
  lastToken_ = lastToken;
  Item& item = items_.back();
  item.description = description;
  DeclRecord& decl = context_.model.Decl(description.node);
  decl.level = description.level;
  decl.section = static_cast<std::uint8_t>(section_);
  decl.picture = description.pictureText;
  decl.value = description.value;
  decl.occursLeast = description.occursLeast;
  decl.occurs = description.occurs;
  decl.redefines = description.redefines;
  if (!IsAside(description.level)) {
    Inherit(item.description);
    Place(item);
    decl.flags = item.description.flags;
    return;
  }
  decl.flags = description.flags;
  decl.area = item.area;
  decl.usage = DataUsage::Condition;
  if (description.level == kRenamesLevel) DescribeRenames(description);
  if (description.level == kConditionLevel && items_.size() > 1) conditions_.push_back(description.node);
  if (description.level == kConstantLevel) decl.usage = DataUsage::Display;
  context_.model.Close(description.node, lastToken);
  items_.pop_back();
}

void ItemStack::DescribeRenames(const ItemDescription& description) {
  DeclRecord& decl = context_.model.Decl(description.node);
  decl.usage = DataUsage::Renames;
  decl.redefines = description.renames;
  decl.renamesThrough = description.renamesThrough;
  if (description.renames == 0) return;
  const DeclRecord first = context_.model.Decl(description.renames);
  const DeclRecord last =
      context_.model.Decl(description.renamesThrough == 0 ? description.renames : description.renamesThrough);
  decl.area = first.area;
  decl.offset = first.offset;
  const std::uint64_t end = last.offset + MultiplyBytes(last.size, last.occurs);
  decl.size = end > first.offset ? end - first.offset : 0;
}

void ItemStack::CloseAll() {
  CloseDownTo(0);
  ModelBuilder& model = context_.model;
  for (const NodeId node : conditions_) {
    const DeclRecord item = model.Decl(model.Node(node).parent);
    DeclRecord& condition = model.Decl(node);
    condition.offset = item.offset;
    condition.size = item.size;
    condition.area = item.area;
  }
  conditions_.clear();
}

void ItemStack::CloseDownTo(std::size_t count) {
  while (items_.size() > count) {
    Item item = items_.back();
    items_.pop_back();
    Settle(item);
    context_.model.Close(item.description.node, lastToken_);
  }
}

void ItemStack::CheckPicture(const Item& item) {
  const ItemDescription& description = item.description;
  if (description.isFaulty) return;
  std::string text;
  const std::string name =
      description.name == SymbolTable::kNone ? "This item" : std::string(context_.symbols.Text(description.name));
  if (item.isGroup) {
    if (!description.hasPicture) return;
    text = fmt::format("{} has a PICTURE and items below it.", name);
  } else {
    const bool isShown = section_ == DataSectionKind::Report || section_ == DataSectionKind::Screen;
    if (description.hasPicture || !TakesPicture(description.usage) || isShown) return;
    if (description.needsNoPicture || description.fixedBytes != 0) return;
    text = fmt::format("{} has no PICTURE.", name);
  }
  context_.model.Report(Severity::Gap, description.firstToken, std::move(text));
}

// Where an item with its redefinition begins.
void ItemStack::Place(Item& item) {
  if (item.description.redefines != 0) {
    const DeclRecord& redefined = context_.model.Decl(item.description.redefines);
    item.area = redefined.area;
    item.offset = redefined.offset;
  }
}

std::uint64_t ItemStack::ElementaryBytes(const ItemDescription& description) const {
  if (description.fixedBytes != 0) return description.fixedBytes;
  if (!description.hasPicture && TakesPicture(description.usage)) return description.literalBytes;
  return ElementarySize(description.usage, description.picture, description.flags);
}

void ItemStack::Settle(Item& item) {
  CheckPicture(item);
  const ItemDescription& description = item.description;
  std::uint64_t size = item.used;
  if (item.isGroup) {
    if (description.occurs > 1) size = AddBytes(size, SlackBefore(size, item.alignment));
  } else {
    size = ElementaryBytes(description);
    if ((description.flags & kSynchronized) != 0) {
      item.alignment = AlignmentOf(description.usage, size);
      if (description.redefines == 0) item.offset = AddBytes(item.offset, SlackBefore(item.offset, item.alignment));
    }
  }
  const std::uint64_t total = MultiplyBytes(size, description.occurs);
  if (AddBytes(item.offset, total) == kMostBytes && AddBytes(item.offset, size) < kMostBytes) {
    context_.model.Report(Severity::Gap, description.firstToken, "The table is too large to be laid out.");
  }
  DeclRecord& decl = context_.model.Decl(description.node);
  decl.offset = item.offset;
  decl.size = size;
  decl.area = item.area;
  decl.usage = item.isGroup ? DataUsage::Group : description.usage;
  if (!item.isGroup && description.picture) DescribePicture(decl, *description.picture);
  if (!item.isGroup && !TakesPicture(description.usage) && description.usage <= DataUsage::Index) {
    decl.flags |= kNumeric | kSigned;
  }
  AddToParent(item, total);
}

void ItemStack::AddToParent(const Item& item, std::uint64_t total) {
  if (items_.empty()) return;
  Item& parent = items_.back();
  parent.alignment = std::max(parent.alignment, item.alignment);
  const std::uint64_t begin = item.offset >= parent.offset ? item.offset - parent.offset : 0;
  const std::uint64_t end = AddBytes(begin, total);
  parent.used = item.description.redefines != 0 ? std::max(parent.used, end) : end;
}

}  // namespace qmrules::workbench::codemodel::cobol
