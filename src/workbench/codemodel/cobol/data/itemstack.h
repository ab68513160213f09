#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "workbench/codemodel/cobol/data/headcontext.h"
#include "workbench/codemodel/cobol/data/picture.h"

namespace qmrules::workbench::codemodel::cobol {

inline constexpr std::uint8_t kRenamesLevel = 66;
inline constexpr std::uint8_t kSingleLevel = 77;
inline constexpr std::uint8_t kConstantLevel = 78;
inline constexpr std::uint8_t kConditionLevel = 88;
inline constexpr std::uint8_t kDeepestLevel = 49;

// What the clauses of a data description entry say.
struct ItemDescription {
  NodeId node = 0;
  std::uint32_t firstToken = 0;
  std::uint32_t name = SymbolTable::kNone;
  std::uint8_t level = 0;
  DataSectionKind section = DataSectionKind::WorkingStorage;
  std::optional<PictureFacts> picture;
  bool hasPicture = false;  // also for one that cannot be read
  bool hasUsage = false;
  bool hasSign = false;
  bool needsNoPicture = false;  // TYPE and the like: what it is stands elsewhere
  bool isFaulty = false;        // told already
  DataUsage usage = DataUsage::Display;
  std::uint16_t flags = 0;
  std::uint32_t occursLeast = 1, occurs = 1;
  NodeId redefines = 0;
  NodeId renames = 0, renamesThrough = 0;
  TextId pictureText = 0, value = 0;
  std::uint8_t fixedBytes = 0;     // of a usage that tells the size itself: BINARY-LONG
  std::uint64_t literalBytes = 0;  // of the VALUE's literal
  std::int64_t number = -1;        // of the VALUE, where it is a whole number
};

// The data items that are open, from level 01 down to the last one met, and where they lie. An item's place is known
// once the next one shows whether it is a group.
class ItemStack {
 public:
  explicit ItemStack(HeadContext& context) : context_(context) {}

  // Items from here on are of this section; with a file, all records at level 01 lie over each other.
  void Begin(DataSectionKind section, NodeId file);
  // Closes the items that cannot hold one of this level, and opens its DECL.
  NodeId Open(std::uint8_t level, std::uint32_t firstToken);
  // Enters what the clauses of the item opened last say; its entry ends with the token.
  void Describe(const ItemDescription& description, std::uint32_t lastToken);
  void CloseAll();

  DataSectionKind Section() const { return section_; }
  // What the item opened last lies below.
  NodeId Parent() const;
  // The level of an item that goes on after the last one.
  std::uint8_t NextLevel() const;
  // The record at level 01 that is open, or 0.
  NodeId Record() const { return items_.empty() ? 0 : items_.front().description.node; }

 private:
  struct Item {
    ItemDescription description;
    bool isGroup = false;
    NodeId area = 0;
    std::uint64_t offset = 0;
    std::uint64_t used = 0;  // bytes of what lies below it
    std::uint32_t alignment = 1;
  };
  void CloseDownTo(std::size_t count);
  void Settle(Item& item);
  void Place(Item& item);
  void Inherit(ItemDescription& description) const;
  void DescribeRenames(const ItemDescription& description);
  void CheckPicture(const Item& item);
  std::uint64_t ElementaryBytes(const ItemDescription& description) const;
  void AddToParent(const Item& item, std::uint64_t total);

  HeadContext& context_;
  std::vector<Item> items_;
  DataSectionKind section_ = DataSectionKind::WorkingStorage;
  NodeId file_ = 0;
  std::uint32_t lastToken_ = 0;
  std::vector<NodeId> conditions_;  // that wait for the place of the item they belong to
};

}  // namespace qmrules::workbench::codemodel::cobol
