#include "workbench/codemodel/cobol/reading/copystatement.h"

#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

// The text of a literal without its quotes; other texts as they are.
std::string_view Unquoted(std::string_view text) {
  const std::size_t quote = text.find_first_of("'\"");
  if (quote == std::string_view::npos) return text;
  text.remove_prefix(quote + 1);
  const std::size_t end = text.find_last_of("'\"");
  return end == std::string_view::npos ? text : text.substr(0, end);
}

constexpr std::string_view kNoBy = "BY is missing between the text to be replaced and the text for it.";
constexpr std::string_view kOpenPseudoText = "The pseudo-text is not closed by \"==\".";

// Tokens that an identifier in REPLACING may have at most; what is longer was not closed.
constexpr std::size_t kLongestIdentifier = 200;

}  // namespace

std::string DirectingStatementParser::ParseName(std::size_t& index) const {
  std::string name;
  const std::size_t first = index;
  for (; !IsAt(index, TokenKind::End) && !IsAt(index, TokenKind::Period) && !IsAt(index, TokenKind::PseudoText);
       ++index) {
    if (index != first && !tokens_[index].Has(kAdjacent)) break;
    name += IsAt(index, TokenKind::Literal) ? Unquoted(TextAt(index)) : TextAt(index);
  }
  return name;
}

CopyStatement DirectingStatementParser::ParseCopy(std::size_t first) {
  CopyStatement statement;
  std::size_t index = first + 1;
  const bool named = !IsWord(tokens_[index], Word::Replacing);
  if (named) statement.name = ParseName(index);
  if (statement.name.empty()) statement.fault = {"COPY names no copybook.", first};
  if (IsWord(tokens_[index], Word::Of) || IsWord(tokens_[index], Word::In)) {
    ++index;
    statement.library = ParseName(index);
  }
  for (;;) {
    if (IsWord(tokens_[index], Word::Suppress)) {
      ++index;
      if (IsWord(tokens_[index], Word::Printing)) ++index;
    } else if (IsWord(tokens_[index], Word::Replacing)) {
      ++index;
      ParsePairs(index, statement.pairs, statement.fault);
    } else if (IsAt(index, TokenKind::PseudoText)) {
      Note(statement.fault, "REPLACING is missing before the text to be replaced.", index);
      ParsePairs(index, statement.pairs, statement.fault);
    } else {
      break;
    }
  }
  statement.hasPeriod = IsAt(index, TokenKind::Period);
  if (statement.hasPeriod) ++index;
  statement.end = index;
  return statement;
}

bool DirectingStatementParser::IsReplace(std::span<const Token> tokens, std::size_t first) {
  std::size_t index = first + 1;
  const auto skip = [&](Word word) {
    if (IsWord(tokens[index], word)) ++index;
  };
  skip(Word::Also);
  skip(Word::Last);
  if (IsWord(tokens[index], Word::Off)) return true;
  skip(Word::Leading);
  skip(Word::Trailing);
  return tokens[index].kind == TokenKind::PseudoText;
}

ReplaceStatement DirectingStatementParser::ParseReplace(std::size_t first) {
  ReplaceStatement statement;
  std::size_t index = first + 1;
  statement.also = IsWord(tokens_[index], Word::Also);
  if (statement.also) ++index;
  statement.last = IsWord(tokens_[index], Word::Last);
  if (statement.last) ++index;
  statement.off = IsWord(tokens_[index], Word::Off);
  if (statement.off) {
    ++index;
  } else {
    ParsePairs(index, statement.pairs, statement.fault);
  }
  if (IsAt(index, TokenKind::Period)) {
    ++index;
  } else if (statement.fault.text.empty()) {
    statement.fault = {"REPLACE has no full stop.", first};
  }
  statement.end = index;
  return statement;
}

// LEADING and TRAILING are words of a pair only before its text.
bool DirectingStatementParser::IsPartialWord(std::size_t index) const {
  const Token& token = tokens_[index];
  return (IsWord(token, Word::Leading) || IsWord(token, Word::Trailing)) && !IsWord(tokens_[index + 1], Word::By);
}

// Stops before the full stop, or before what can be no pair. A pair that lacks one of its words or delimiters is taken
// where it can be told what was meant.
void DirectingStatementParser::ParsePairs(std::size_t& index, std::vector<ReplacementPair>& pairs,
                                          StatementFault& fault) const {
  for (;;) {
    const std::size_t first = index;
    ReplacementPair pair;
    if (IsPartialWord(index)) {
      pair.part =
          IsWord(tokens_[index], Word::Leading) ? ReplacementPair::Part::Leading : ReplacementPair::Part::Trailing;
      ++index;
    }
    bool good = ParseOperand(index, pair.from, fault);
    if (good && !pairs.empty() && tokens_[first].Has(kFirstOnRow) && !IsAt(first, TokenKind::PseudoText) &&
        !IsWord(tokens_[index], Word::By)) {
      index = first;  // the full stop was forgotten
      return;
    }
    good = good && TakeBy(index, pair, fault) && ParseOperand(index, pair.to, fault);
    if (!good) {
      index = EndAfterFault(first);
      return;
    }
    if (IsAt(index, TokenKind::PseudoText) && IsAt(index + 1, TokenKind::Period)) {
      Note(fault, "A \"==\" is missing before this one.", index++);
    }
    if (pair.from.empty()) {
      Note(fault, "The text to be replaced is empty.", first);
    } else {
      pairs.push_back(std::move(pair));
    }
    if (IsAt(index, TokenKind::Period) || IsAt(index, TokenKind::End) || IsWord(tokens_[index], Word::Copy)) return;
  }
}

// The first fault of a statement is the one that is told.
void DirectingStatementParser::Note(StatementFault& fault, std::string_view text, std::size_t token) {
  if (fault.text.empty()) fault = {std::string(text), token};
}

// BY, between the two texts of a pair.
bool DirectingStatementParser::TakeBy(std::size_t& index, ReplacementPair& pair, StatementFault& fault) const {
  if (IsWord(tokens_[index], Word::By)) {
    ++index;
    return true;
  }
  if (IsAt(index, TokenKind::PseudoText)) {
    if (IsWord(tokens_[index + 1], Word::By)) {
      Note(fault, "A \"==\" is missing before this one.", index);
      index += 2;
    } else {
      Note(fault, kNoBy, index);
    }
    return true;
  }
  // The pseudo-text was not closed before BY, and ended where that behind BY begins.
  if (pair.from.size() > 1 && IsWord(pair.from.back(), Word::By) && IsAt(index - 1, TokenKind::PseudoText)) {
    Note(fault, kOpenPseudoText, index - 1);
    pair.from.pop_back();
    --index;
    return true;
  }
  Note(fault, kNoBy, index);
  return false;
}

bool DirectingStatementParser::ParseOperand(std::size_t& index, std::vector<Token>& operand,
                                            StatementFault& fault) const {
  if (IsAt(index, TokenKind::PseudoText)) {
    ParsePseudoText(index, operand, fault);
    return true;
  }
  if (IsAt(index, TokenKind::Period) || IsAt(index, TokenKind::End) || IsWord(tokens_[index], Word::By)) {
    Note(fault, "REPLACING lacks a text.", index);
    return false;
  }
  ParseIdentifier(index, operand);
  return true;
}

// Between two "==". Neither the word COPY nor the end of the file can stand there: then the closing one was forgotten,
// and the text goes on to the end of the statement.
void DirectingStatementParser::ParsePseudoText(std::size_t& index, std::vector<Token>& operand,
                                               StatementFault& fault) const {
  const std::size_t opening = index;
  std::size_t end = opening + 1;
  while (!IsAt(end, TokenKind::PseudoText) && !IsAt(end, TokenKind::End) && !IsWord(tokens_[end], Word::Copy)) ++end;
  const bool isClosed = IsAt(end, TokenKind::PseudoText);
  if (!isClosed) {
    Note(fault, kOpenPseudoText, opening);
    end = EndAfterFault(opening + 1);
  }
  for (index = opening + 1; index < end; ++index) operand.push_back(placement_(tokens_[index]));
  if (isClosed) ++index;
}

// A word, number or literal with all that touches it, its qualifiers and its subscripts.
void DirectingStatementParser::ParseIdentifier(std::size_t& index, std::vector<Token>& operand) const {
  const auto take = [&] { operand.push_back(placement_(tokens_[index++])); };
  const auto ends = [&] { return IsAt(index, TokenKind::End) || IsAt(index, TokenKind::Period); };
  take();
  while (!ends() && operand.size() < kLongestIdentifier) {
    if (IsWord(tokens_[index], Word::Of) || IsWord(tokens_[index], Word::In)) {
      take();
      if (!ends()) take();
    } else if (IsAt(index, TokenKind::Open)) {
      std::size_t open = 0;
      do {
        if (IsAt(index, TokenKind::Open)) ++open;
        if (IsAt(index, TokenKind::Close)) --open;
        take();
      } while (open > 0 && !ends() && operand.size() < kLongestIdentifier);
    } else if (tokens_[index].Has(kAdjacent) && !IsAt(index, TokenKind::PseudoText)) {
      take();
    } else {
      return;
    }
  }
}

// Behind a pair that cannot be read the statement goes on to the first full stop that ends its line.
std::size_t DirectingStatementParser::EndAfterFault(std::size_t index) const {
  for (; !IsAt(index, TokenKind::End) && !IsWord(tokens_[index], Word::Copy); ++index) {
    if (IsAt(index, TokenKind::Period) && tokens_[index + 1].row != tokens_[index].row) return index;
  }
  return index;
}

}  // namespace qmrules::workbench::codemodel::cobol
