#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "workbench/codemodel/cobol/procedure/verbs.h"
#include "workbench/codemodel/cobol/reading/tokencursor.h"

// AT END, ON SIZE ERROR and the like: what tells the outcome of the statement before them.
namespace qmrules::workbench::codemodel::cobol {

enum class PhraseKind : std::uint8_t { None, AtEnd, InvalidKey, SizeError, Overflow, Exception, EndOfPage, NoData };
inline constexpr std::size_t kPhraseKinds = 8;

struct Phrase {
  PhraseKind kind = PhraseKind::None;
  bool negated = false;
  std::uint32_t tokens = 0;
};

// The phrase at the cursor. END alone is taken for AT END where `endAlone` tells so.
Phrase PhraseAt(const TokenCursor& cursor, bool endAlone);
// True when statements of this verb have the phrase.
bool HasPhrase(Verb verb, PhraseKind kind);
std::string_view ConditionOf(const Phrase& phrase);  // "AT END", "NOT AT END"
std::string_view IfKindOf(PhraseKind kind);          // "If at end"

}  // namespace qmrules::workbench::codemodel::cobol
