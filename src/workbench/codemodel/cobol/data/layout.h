#pragma once

#include <cstdint>
#include <optional>

#include "workbench/codemodel/cobol/data/picture.h"
#include "workbench/codemodel/records.h"

// How many bytes data items take, and on what boundaries they lie.
namespace qmrules::workbench::codemodel::cobol {

// Sizes past this one are cut to it, so that sums and products of them stay in 64 bits.
inline constexpr std::uint64_t kMostBytes = 1ULL << 48;

// The size of an elementary item. The picture of a usage that has none is left aside.
std::uint64_t ElementarySize(DataUsage usage, const std::optional<PictureFacts>& picture, std::uint16_t flags);
// The boundary that SYNCHRONIZED lays an item of the usage and size on; 1 for none.
std::uint32_t AlignmentOf(DataUsage usage, std::uint64_t size);
// Bytes to be left free so that the offset lies on the boundary.
std::uint64_t SlackBefore(std::uint64_t offset, std::uint32_t alignment);

// Up to kMostBytes.
std::uint64_t AddBytes(std::uint64_t left, std::uint64_t right);
std::uint64_t MultiplyBytes(std::uint64_t size, std::uint64_t count);

// Enters digits, scale and what the category tells.
void DescribePicture(DeclRecord& decl, const PictureFacts& picture);

// True for a usage whose items have a picture.
bool TakesPicture(DataUsage usage);

}  // namespace qmrules::workbench::codemodel::cobol
