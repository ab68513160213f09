#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/storageplace.h"

namespace qmrules::workbench::flow::cobol {

// A dimension of a table that an item is or lies in.
struct Dimension {
  NodeId table = 0;  // the DECL with the OCCURS
  Stride stride;
};

// Tables have up to seven dimensions, and levels go from 01 to 49.
inline constexpr int kMostLevels = 64;

// The dimensions of a data item, the outermost first; those of its item for a condition name. None for an item nested
// deeper than kMostLevels.
std::vector<Dimension> DimensionsOf(const codemodel::ModelImage& model, NodeId item);

// A data item that takes part in the layout of its area: no condition name, constant or index of a table. RENAMES is
// none either: its bytes are those of others.
bool HasOwnBytes(const codemodel::DeclRecord& decl);

// How data items lie in their areas, as far as that takes a look at more than the item. The model has to outlive it.
class StorageLayout {
 public:
  explicit StorageLayout(const codemodel::ModelImage& model);

  // The DECLs of an area in the order of the text; empty for a node that is none.
  std::span<const NodeId> ItemsOf(NodeId area) const;
  // The areas, ascending.
  const std::vector<NodeId>& Areas() const { return areas_; }
  // From the first to behind the last byte of its items.
  ByteInterval ExtentOf(NodeId area) const;
  // How many of the item's bytes, from its first one on, it has in any case: fewer than its size where an OCCURS
  // DEPENDING ON lies below it.
  std::uint64_t LeastBytes(NodeId item) const;
  // How many bytes before its place, which is that behind full tables, the item's first occurrence can lie: more than
  // none behind an OCCURS DEPENDING ON of the same record.
  std::uint64_t SlackOf(NodeId item) const;

 private:
  // What a table of variable size can lack.
  struct Slack {
    NodeId record = 0;  // DECL at level 01
    NodeId table = 0;   // the one that it lies in when that is one of several
    std::uint64_t end = 0;
    std::uint64_t bytes = 0;
  };
  void FindLeastBytes();
  void AddSlack(const codemodel::DeclRecord& table);

  const codemodel::ModelImage& model_;
  std::vector<NodeId> areas_;
  std::vector<std::uint32_t> starts_;  // by index in areas_, into items_
  std::vector<NodeId> items_;
  std::vector<std::pair<NodeId, std::uint64_t>> least_;  // ascending by item
  std::vector<Slack> slacks_;                            // ascending by record
};

// Of one occurrence. An item at level 01 or 77 whose size is known at run time only has more than it can get.
std::uint64_t SizeOf(const codemodel::DeclRecord& decl);
// Of one occurrence of the item, and of all.
ByteInterval BytesOf(const codemodel::DeclRecord& decl);
ByteInterval AllBytesOf(const codemodel::DeclRecord& decl);

}  // namespace qmrules::workbench::flow::cobol
