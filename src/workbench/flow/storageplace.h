#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "workbench/codemodel/records.h"

// Which bytes of storage something is about.
namespace qmrules::workbench::flow {

using codemodel::NodeId;

// Bytes of an area, from `begin` up to `end`, exclusive.
struct ByteInterval {
  std::uint64_t begin = 0, end = 0;
  bool operator==(const ByteInterval&) const = default;
};

// Disjoint intervals, ascending, none empty, none touching the next.
class ByteSet {
 public:
  ByteSet() = default;
  explicit ByteSet(ByteInterval interval) { Add(interval); }
  // Every byte that an area can have.
  static ByteSet All() { return ByteSet({0, ~std::uint64_t{0}}); }

  bool Empty() const { return intervals_.empty(); }
  const std::vector<ByteInterval>& Intervals() const { return intervals_; }
  std::uint64_t Bytes() const;
  bool Overlaps(ByteInterval interval) const;
  bool Overlaps(const ByteSet& other) const;
  void Add(ByteInterval interval);
  void Add(const ByteSet& other);
  void Remove(ByteInterval interval);
  void Remove(const ByteSet& other);
  ByteSet Within(const ByteSet& other) const;
  ByteSet Within(ByteInterval interval) const;
  bool operator==(const ByteSet&) const = default;

 private:
  friend struct StoragePlace;
  std::vector<ByteInterval> intervals_;
};

// A table has up to seven dimensions. A subscript that is not constant stands for every occurrence.
struct Stride {
  std::uint64_t step = 0;   // bytes from one occurrence to the next
  std::uint32_t count = 0;  // occurrences
};

// The bytes that an operand stands for. With strides, one of these places, it is not known which.
struct StoragePlace {
  NodeId area = 0;  // DeclRecord::area; 0 for an operand without storage of its own
  ByteInterval first;
  std::vector<Stride> strides;

  bool IsExact() const { return strides.empty(); }
  // All bytes that the place may be. More than `most` intervals become the one around them all.
  ByteSet Bytes(std::size_t most = 4096) const;
};

}  // namespace qmrules::workbench::flow
