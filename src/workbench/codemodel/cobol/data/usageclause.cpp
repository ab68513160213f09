#include "workbench/codemodel/cobol/data/usageclause.h"

#include <fmt/format.h>

namespace qmrules::workbench::codemodel::cobol {

namespace {

using enum Word;

std::optional<DataUsage> UsageNamed(Word word) {
  switch (word) {
    case Comp:
    case Comp4:
    case Computational:
    case Computational4:
    case Binary:
      return DataUsage::Binary;
    case Comp1:
    case Computational1:
    case FloatShort:
      return DataUsage::Float;
    case Comp2:
    case Computational2:
    case FloatLong:
      return DataUsage::Double;
    case Comp3:
    case Computational3:
    case PackedDecimal:
      return DataUsage::Packed;
    case Comp5:
    case Computational5:
    case NativeBinary:
      return DataUsage::NativeBinary;
    case Comp6:
    case Computational6:
      return DataUsage::PackedNoSign;
    case CompX:
    case ComputationalX:
      return DataUsage::ByteBinary;
    case BinaryChar:
    case BinaryShort:
    case BinaryLong:
    case BinaryInt:
    case BinaryDouble:
      return DataUsage::NativeBinary;
    case Display:
      return DataUsage::Display;
    case Display1:
    case Kanji:
      return DataUsage::Dbcs;
    case National:
      return DataUsage::National;
    case Index:
      return DataUsage::Index;
    case Pointer:
    case Pointer32:
      return DataUsage::Pointer;
    case ProcedurePointer:
    case FunctionPointer:
      return DataUsage::ProcedurePointer;
    case Bit:
      return DataUsage::Display;
    default:
      return {};
  }
}

// Bytes of a usage that needs no picture; 0 for others.
std::uint8_t FixedBytes(Word word) {
  switch (word) {
    case BinaryChar:
      return 1;
    case BinaryShort:
      return 2;
    case BinaryLong:
    case BinaryInt:
    case Pointer32:
      return 4;
    case BinaryDouble:
      return 8;
    default:
      return 0;
  }
}

void SetUsage(ItemDescription& item, DataUsage usage) {
  item.usage = usage;
  item.hasUsage = true;
}

bool ParseBinaryNamed(HeadContext& context, ItemDescription& item, Word word) {
  item.fixedBytes = FixedBytes(word);
  context.cursor.Next();
  if (item.fixedBytes == 0 || word == Pointer32) return true;
  item.flags |= kNumeric;
  if (!context.cursor.Accept(Unsigned)) item.flags |= kSigned;
  context.cursor.Accept(Signed);
  return true;
}

}  // namespace

bool IsUsageWord(Word word) {
  return UsageNamed(word).has_value() && word != Index && word != Bit;
}

bool ParseUsage(HeadContext& context, ItemDescription& item) {
  TokenCursor& cursor = context.cursor;
  const bool isGroup = cursor.At(GroupUsage);
  const bool isNamed = isGroup || cursor.At(Usage);
  if (isNamed) {
    cursor.Next();
    cursor.Accept(Is);
  }
  const Word word = cursor.WordAt();
  if (word == Object && cursor.WordAt(1) == Reference) {
    SetUsage(item, DataUsage::ObjectReference);
    cursor.Next();
    cursor.Next();
    context.ReadReference(Role::Other, PendingName::Kind::Program);
    return true;
  }
  const std::optional<DataUsage> usage = UsageNamed(word);
  if (!usage) {
    if (!isNamed) return false;
    if (!item.isFaulty) context.Report("The usage is missing here.");
    item.isFaulty = true;
    if (cursor.At(TokenKind::Word) && context.AtName()) cursor.Next();
    return true;
  }
  SetUsage(item, *usage);
  ParseBinaryNamed(context, item, word);
  if (cursor.At(Native) || (word == Display && cursor.At(Native))) cursor.Next();
  if (*usage == DataUsage::Pointer && cursor.Accept(To)) context.ReadReference(Role::Other, PendingName::Kind::Program);
  return true;
}

}  // namespace qmrules::workbench::codemodel::cobol
