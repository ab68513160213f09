#include "workbench/codemodel/cobol/procedure/phrases.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

struct PhraseTexts {
  std::string_view kind, condition, negated;
};

const PhraseTexts& TextsOf(PhraseKind kind) {
  static constexpr PhraseTexts kTexts[kPhraseKinds] = {
      {"", "", ""},
      {"If at end", "AT END", "NOT AT END"},
      {"If invalid key", "INVALID KEY", "NOT INVALID KEY"},
      {"If size error", "ON SIZE ERROR", "NOT ON SIZE ERROR"},
      {"If overflow", "ON OVERFLOW", "NOT ON OVERFLOW"},
      {"If exception", "ON EXCEPTION", "NOT ON EXCEPTION"},
      {"If end of page", "AT END-OF-PAGE", "NOT AT END-OF-PAGE"},
      {"If no data", "NO DATA", "WITH DATA"},
  };
  return kTexts[static_cast<std::size_t>(kind)];
}

bool EndsSomethingElse(Word word) {
  using enum Word;
  return word == Program || word == Declaratives || word == Function || word == Method || word == Class ||
         word == Factory || word == Object;
}

// The phrase whose words begin `at` tokens behind the cursor, NOT passed over.
Phrase PositivePhrase(const TokenCursor& cursor, std::uint32_t at, bool endAlone) {
  using enum Word;
  const Word first = cursor.WordAt(at), second = cursor.WordAt(at + 1);
  switch (first) {
    case At:
      if (second == End) return {PhraseKind::AtEnd, false, at + 2};
      if (second == EndOfPage || second == Eop) return {PhraseKind::EndOfPage, false, at + 2};
      return {};
    case End:
      if (!endAlone || EndsSomethingElse(second)) return {};
      return {PhraseKind::AtEnd, false, at + 1};
    case EndOfPage:
    case Eop:
      return {PhraseKind::EndOfPage, false, at + 1};
    case Invalid:
      return {PhraseKind::InvalidKey, false, at + (second == Key ? 2U : 1U)};
    case On:
      if (second == Size && cursor.WordAt(at + 2) == Error) return {PhraseKind::SizeError, false, at + 3};
      if (second == Overflow) return {PhraseKind::Overflow, false, at + 2};
      if (second == Exception || second == Escape) return {PhraseKind::Exception, false, at + 2};
      return {};
    case Size:
      return second == Error ? Phrase{PhraseKind::SizeError, false, at + 2} : Phrase{};
    case Overflow:
      return {PhraseKind::Overflow, false, at + 1};
    case Exception:
    case Escape:
      return {PhraseKind::Exception, false, at + 1};
    default:
      return {};
  }
}

}  // namespace

Phrase PhraseAt(const TokenCursor& cursor, bool endAlone) {
  switch (cursor.WordAt()) {
    case Word::None:
      return {};
    case Word::Not: {
      Phrase phrase = PositivePhrase(cursor, 1, endAlone);
      phrase.negated = true;
      return phrase;
    }
    case Word::No:
    case Word::With: {
      if (cursor.WordAt(1) != Word::Data) return {};
      return {PhraseKind::NoData, cursor.WordAt() == Word::With, 2};
    }
    default:
      return PositivePhrase(cursor, 0, endAlone);
  }
}

bool HasPhrase(Verb verb, PhraseKind kind) {
  using enum Verb;
  switch (kind) {
    case PhraseKind::AtEnd:
      return verb == Read || verb == Return || verb == Search;
    case PhraseKind::InvalidKey:
      return verb == Read || verb == Write || verb == Rewrite || verb == Delete || verb == Start;
    case PhraseKind::SizeError:
      return verb == Add || verb == Subtract || verb == Multiply || verb == Divide || verb == Compute;
    case PhraseKind::Overflow:
      return verb == String || verb == Unstring || verb == Call;
    case PhraseKind::Exception:
      return verb == Call || verb == Invoke || verb == Accept || verb == Display || verb == XmlGenerate ||
             verb == XmlParse || verb == JsonGenerate || verb == JsonParse || verb == Delete;
    case PhraseKind::EndOfPage:
      return verb == Write;
    case PhraseKind::NoData:
      return verb == Receive;
    case PhraseKind::None:
      break;
  }
  return false;
}

std::string_view ConditionOf(const Phrase& phrase) {
  const PhraseTexts& texts = TextsOf(phrase.kind);
  return phrase.negated ? texts.negated : texts.condition;
}

std::string_view IfKindOf(PhraseKind kind) {
  return TextsOf(kind).kind;
}

}  // namespace qmrules::workbench::codemodel::cobol
