#pragma once

#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

// True for ZERO, SPACES and the like, NULL included; not for ALL, which a literal follows.
inline bool IsFigurativeConstant(Word word) {
  using enum Word;
  switch (word) {
    case Zero:
    case Zeros:
    case Zeroes:
    case Space:
    case Spaces:
    case HighValue:
    case HighValues:
    case LowValue:
    case LowValues:
    case Quote:
    case Quotes:
    case Null:
    case Nulls:
      return true;
    default:
      return false;
  }
}

}  // namespace qmrules::workbench::codemodel::cobol
