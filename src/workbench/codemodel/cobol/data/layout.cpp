#include "workbench/codemodel/cobol/data/layout.h"

#include <algorithm>

namespace qmrules::workbench::codemodel::cobol {

namespace {

std::uint64_t BinarySize(std::uint32_t digits) {
  if (digits <= 4) return 2;
  if (digits <= 9) return 4;
  return digits <= 18 ? 8 : 16;
}

// As few bytes as hold every number of so many digits.
std::uint64_t ByteBinarySize(std::uint32_t digits, bool isSigned) {
  constexpr std::uint8_t kUnsignedDigits[] = {2, 4, 7, 9, 12, 14, 16, 19};
  constexpr std::uint8_t kSignedDigits[] = {2, 4, 6, 9, 11, 14, 16, 18};
  const auto& most = isSigned ? kSignedDigits : kUnsignedDigits;
  std::uint64_t size = 1;
  for (const std::uint8_t limit : most) {
    if (digits <= limit) return size;
    ++size;
  }
  return 16;
}

// Digits that are stored: those of P are not.
std::uint32_t StoredDigits(const PictureFacts& picture) {
  return picture.characters;
}

std::uint64_t DisplaySize(const PictureFacts& picture, std::uint16_t flags) {
  const bool isWide = picture.category == PictureFacts::Category::National ||
                      picture.category == PictureFacts::Category::NationalEdited ||
                      picture.category == PictureFacts::Category::Dbcs;
  const std::uint64_t size = picture.characters * (isWide ? 2ULL : 1ULL);
  const bool ownSign =
      picture.category == PictureFacts::Category::Numeric && picture.isSigned && (flags & kSignSeparate);
  return size + (ownSign ? 1 : 0);
}

}  // namespace

std::uint64_t ElementarySize(DataUsage usage, const std::optional<PictureFacts>& picture, std::uint16_t flags) {
  switch (usage) {
    case DataUsage::Float:
      return 4;
    case DataUsage::Double:
      return 8;
    case DataUsage::Index:
      return 4;
    case DataUsage::Pointer:
    case DataUsage::ProcedurePointer:
    case DataUsage::ObjectReference:
      return 8;
    default:
      break;
  }
  if (!picture) return 0;
  switch (usage) {
    case DataUsage::Binary:
    case DataUsage::NativeBinary:
      return BinarySize(StoredDigits(*picture));
    case DataUsage::ByteBinary:
      if (picture->category != PictureFacts::Category::Numeric) return picture->characters;
      return ByteBinarySize(StoredDigits(*picture), picture->isSigned);
    case DataUsage::Packed:
      return StoredDigits(*picture) / 2 + 1;
    case DataUsage::PackedNoSign:
      return (StoredDigits(*picture) + 1) / 2;
    case DataUsage::National: {
      const bool ownSign = picture->isSigned && (flags & kSignSeparate) != 0;
      return 2ULL * (picture->characters + (ownSign ? 1 : 0));
    }
    case DataUsage::Dbcs:
      return 2ULL * picture->characters;
    default:
      return DisplaySize(*picture, flags);
  }
}

std::uint32_t AlignmentOf(DataUsage usage, std::uint64_t size) {
  switch (usage) {
    case DataUsage::Binary:
    case DataUsage::NativeBinary:
    case DataUsage::ByteBinary:
      return size == 2 || size == 4 || size == 8 ? static_cast<std::uint32_t>(size) : 1;
    case DataUsage::Float:
    case DataUsage::Index:
      return 4;
    case DataUsage::Double:
    case DataUsage::Pointer:
    case DataUsage::ProcedurePointer:
    case DataUsage::ObjectReference:
      return 8;
    default:
      return 1;
  }
}

std::uint64_t SlackBefore(std::uint64_t offset, std::uint32_t alignment) {
  const std::uint64_t over = offset % alignment;
  return over == 0 ? 0 : alignment - over;
}

std::uint64_t AddBytes(std::uint64_t left, std::uint64_t right) {
  return std::min(left + right, kMostBytes);
}

std::uint64_t MultiplyBytes(std::uint64_t size, std::uint64_t count) {
  return count != 0 && size > kMostBytes / count ? kMostBytes : size * count;
}

void DescribePicture(DeclRecord& decl, const PictureFacts& picture) {
  decl.digits = picture.digits;
  decl.scale = picture.scale;
  std::uint16_t flags = decl.flags;
  if (picture.isSigned) flags |= kSigned;
  switch (picture.category) {
    case PictureFacts::Category::Numeric:
    case PictureFacts::Category::FloatingPoint:
      flags |= kNumeric;
      break;
    case PictureFacts::Category::NumericEdited:
      flags |= kNumeric | kEdited;
      break;
    case PictureFacts::Category::AlphanumericEdited:
    case PictureFacts::Category::NationalEdited:
      flags |= kEdited;
      break;
    case PictureFacts::Category::Alphabetic:
      flags |= kAlphabetic;
      break;
    default:
      break;
  }
  decl.flags = flags;
}

bool TakesPicture(DataUsage usage) {
  switch (usage) {
    case DataUsage::Float:
    case DataUsage::Double:
    case DataUsage::Index:
    case DataUsage::Pointer:
    case DataUsage::ProcedurePointer:
    case DataUsage::ObjectReference:
      return false;
    default:
      return true;
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
