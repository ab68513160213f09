#include "workbench/codemodel/cobol/reading/replacer.h"

#include <algorithm>
#include <utility>

#include "workbench/codemodel/cobol/reading/characters.h"
#include "workbench/codemodel/cobol/reading/fragmentlexer.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {

namespace {

bool EqualWithoutCase(std::string_view left, std::string_view right) {
  return std::ranges::equal(left, right, [](char a, char b) { return UpperOf(a) == UpperOf(b); });
}

// Between two of a PICTURE's characters there is a border of words unless both are letters or digits.
bool IsBorder(std::string_view text, std::size_t offset) {
  const auto isWordy = [](char c) { return IsLetter(c) || IsDigit(c); };
  return offset == 0 || offset >= text.size() || !isWordy(text[offset - 1]) || !isWordy(text[offset]);
}

// Kinds that make one word with a neighbour of them when nothing stands between the two.
bool IsSticky(TokenKind kind) {
  switch (kind) {
    case TokenKind::Word:
    case TokenKind::Number:
    case TokenKind::Literal:
    case TokenKind::Picture:
    case TokenKind::Minus:
    case TokenKind::Other:
      return true;
    default:
      return false;
  }
}

bool IsPic(const Token& token) {
  const Word word = token.kind == TokenKind::Word ? WordOf(token.symbol) : Word::None;
  return word == Word::Pic || word == Word::Picture;
}

bool IsIs(const Token& token) {
  return token.kind == TokenKind::Word && WordOf(token.symbol) == Word::Is;
}

}  // namespace

bool Replacer::Apply(const Replacements& replacements, std::span<const Token> in, std::vector<Token>& out) {
  replacements_ = &replacements;
  in_ = in;
  out_ = &out;
  out.reserve(out.size() + in.size());
  runStart_ = out.size();
  runChanged_ = runCut_ = apart_ = inExec_ = false;
  Place at;
  while (at.token < in.size() && !budget_.IsSpent()) {
    const Token& token = in[at.token];
    if (token.kind == TokenKind::Picture) {
      TakePicture(at);
      continue;
    }
    if (token.kind == TokenKind::Word) {
      const Word word = WordOf(token.symbol);
      if (word == Word::Exec || word == Word::Execute) inExec_ = true;
      if (word == Word::EndExec) inExec_ = false;
    }
    const auto match = replacements.MayMatch(token) ? Find(at) : std::nullopt;
    if (match) {
      Put(*match, at);
      at = match->end;
    } else {
      Emit(token);
      ++at.token;
    }
  }
  if (at.offset != 0) EmitFragment(in[at.token], at.offset, text_.Text(in[at.token]).size()), ++at.token;
  FinishRun();
  out.insert(out.end(), in.begin() + static_cast<std::ptrdiff_t>(at.token), in.end());
  return !budget_.IsSpent();
}

std::optional<Replacer::Match> Replacer::Find(Place at) {
  replacements_->FindCandidates(in_[at.token], candidates_);
  budget_.comparisons -= std::min(budget_.comparisons, candidates_.size());
  for (const std::uint32_t index : candidates_) {
    const auto& pair = replacements_->At(index);
    if (pair.part != ReplacementPair::Part::Whole) {
      if (MatchesPartly(pair, in_[at.token])) return Match{index, {at.token + 1, 0}};
    } else if (const auto end = MatchWhole(pair, at)) {
      return Match{index, *end};
    }
  }
  return std::nullopt;
}

// A PICTURE is one word, but a tag can stand in it, and a name in its parentheses.
std::optional<Replacer::Match> Replacer::FindInPicture(Place at) {
  const auto& indices = replacements_->InPictures();
  budget_.comparisons -= std::min(budget_.comparisons, indices.size());
  const std::string_view text = text_.Text(in_[at.token]);
  const bool isName = at.offset > 0 && text[at.offset - 1] == '(' && IsLetter(text[at.offset]);
  for (const std::uint32_t index : indices) {
    const auto& pair = replacements_->At(index);
    const auto end = MatchWhole(pair, at);
    const bool isWhole = at.offset == 0 && end && end->offset == 0;
    if (end && (pair.tag || isName || isWhole)) return Match{index, *end};
  }
  return std::nullopt;
}

std::optional<Replacer::Place> Replacer::MatchWhole(const Replacements::Pair& pair, Place at) {
  const bool inPicture = in_[at.token].kind == TokenKind::Picture;
  for (std::size_t index = 0; index < pair.from.size(); ++index) {
    const auto& word = pair.from[index];
    if (at.token == in_.size()) return std::nullopt;
    const Token& token = in_[at.token];
    if (index > 0) budget_.comparisons -= std::min<std::size_t>(budget_.comparisons, 1);
    if (token.kind == TokenKind::Picture) {
      const std::string_view text = text_.Text(token);
      if (at.offset > 0 && index > 0 && !word.adjacent) return std::nullopt;
      if (!EqualWithoutCase(text.substr(at.offset, word.text.size()), word.text)) return std::nullopt;
      at.offset += word.text.size();
      if (at.offset == text.size()) at = {at.token + 1, 0};
      continue;
    }
    if (token.kind != word.kind) return std::nullopt;
    if (inPicture && index > 0 && !token.Has(kAdjacent)) return std::nullopt;
    if (token.kind == TokenKind::Word) {
      if (token.symbol != word.symbol) return std::nullopt;
    } else if (token.kind == TokenKind::Literal ? text_.Text(token) != word.text
                                                : !EqualWithoutCase(text_.Text(token), word.text)) {
      return std::nullopt;
    }
    ++at.token;
  }
  if (at.offset > 0 && !IsBorder(text_.Text(in_[at.token]), at.offset)) return std::nullopt;
  return at;
}

bool Replacer::MatchesPartly(const Replacements::Pair& pair, const Token& token) {
  const std::string_view text = text_.Text(token);
  const std::size_t size = pair.partialWord.size();
  if (text.size() < size) return false;
  const bool leading = pair.part == ReplacementPair::Part::Leading;
  return EqualWithoutCase(leading ? text.substr(0, size) : text.substr(text.size() - size), pair.partialWord);
}

// From `at`, in a PICTURE, up to behind what is replaced in it, or behind it.
void Replacer::TakePicture(Place& at) {
  const Token& token = in_[at.token];
  const std::size_t size = text_.Text(token).size();
  for (std::size_t offset = at.offset; offset < size && !replacements_->InPictures().empty(); ++offset) {
    const char character = text_.Text(token)[offset];
    if (offset > 0 && character != ':' && character != '(' && text_.Text(token)[offset - 1] != '(') continue;
    const auto match = FindInPicture({at.token, offset});
    if (!match) continue;
    if (offset > at.offset) EmitFragment(token, at.offset, offset);
    Put(*match, {at.token, offset});
    at = match->end;
    return;
  }
  if (at.offset == 0) {
    Emit(token);
  } else {
    EmitFragment(token, at.offset, size);
  }
  at = {at.token + 1, 0};
}

void Replacer::Put(const Match& match, Place at) {
  const auto& pair = replacements_->At(match.pair);
  Token place = in_[at.token];
  const std::size_t size = text_.Text(place).size();
  if (at.offset > 0) {
    place.flags |= kAdjacent;
    place.flags &= static_cast<std::uint8_t>(~(kAreaA | kFirstOnRow));
    if (!place.Has(kComposed)) {
      place.offset += static_cast<std::uint32_t>(at.offset);
      place.length -= static_cast<std::uint32_t>(at.offset);
    }
  }
  const Token& last = in_[match.end.offset > 0 ? match.end.token : match.end.token - 1];
  if (last.inclusion == place.inclusion && last.offset >= place.offset) {
    place.length = last.offset + last.length - place.offset;
  }
  switch (pair.part) {
    case ReplacementPair::Part::Whole:
      PutWhole(pair, place);
      break;
    case ReplacementPair::Part::Leading:
      PutWhole(pair, place);
      if (size > pair.partialWord.size()) EmitFragment(in_[at.token], pair.partialWord.size(), size);
      break;
    case ReplacementPair::Part::Trailing:
      if (size > pair.partialWord.size()) {
        EmitFragment(in_[at.token], 0, size - pair.partialWord.size());
        place.flags |= kAdjacent;
      }
      PutWhole(pair, place);
      break;
  }
}

// The pair's second text, in the place of what is replaced.
void Replacer::PutWhole(const Replacements::Pair& pair, const Token& place) {
  constexpr std::uint8_t whereItStands = kAreaA | kFirstOnRow | kAdjacent;
  bool first = true;
  for (Token token : pair.to) {
    if (first) token.flags = static_cast<std::uint8_t>((token.flags & ~kAdjacent) | (place.flags & whereItStands));
    first = false;
    token.inclusion = place.inclusion;
    token.offset = place.offset;
    token.length = place.length;
    token.row = place.row;
    Emit(token);
    runChanged_ = true;
    budget_.tokens -= std::min<std::size_t>(budget_.tokens, 1);
  }
  if (!first) return;
  if (place.Has(kAdjacent)) {
    runChanged_ = runCut_ = true;
  } else {
    apart_ = true;
  }
}

void Replacer::Emit(Token token) {
  if (apart_) {
    token.flags &= static_cast<std::uint8_t>(~kAdjacent);
    apart_ = false;
  }
  if (!token.Has(kAdjacent)) FinishRun();
  out_->push_back(token);
}

// A part of a token's text. The run is lexed again.
void Replacer::EmitFragment(const Token& token, std::size_t from, std::size_t to) {
  Token fragment = token;
  if (from > 0) {
    fragment.flags |= kAdjacent;
    fragment.flags &= static_cast<std::uint8_t>(~(kAreaA | kFirstOnRow));
  }
  if (fragment.Has(kComposed)) {
    std::string part = text_.composed[token.text].substr(from, to - from);
    budget_.bytes -= std::min(budget_.bytes, part.size());
    fragment.text = static_cast<std::uint32_t>(text_.composed.size());
    text_.composed.push_back(std::move(part));
  } else {
    fragment.offset += static_cast<std::uint32_t>(from);
    fragment.length = static_cast<std::uint32_t>(to - from);
  }
  Emit(fragment);
  runChanged_ = runCut_ = true;
}

void Replacer::FinishRun() {
  if (runChanged_ && out_->size() > runStart_ && NeedsGlue()) Glue();
  runStart_ = out_->size();
  runChanged_ = runCut_ = false;
}

// True when the tokens of the run can be others once they are written side by side.
bool Replacer::NeedsGlue() const {
  const std::vector<Token>& out = *out_;
  if (runCut_) return true;
  if (IsPictureDue()) return out[runStart_].kind != TokenKind::Picture || out.size() > runStart_ + 1;
  for (std::size_t index = runStart_ + 1; index < out.size(); ++index) {
    const bool replaced = out[index].Has(kReplaced) || out[index - 1].Has(kReplaced);
    if (replaced && IsSticky(out[index].kind) && IsSticky(out[index - 1].kind)) return true;
  }
  return false;
}

bool Replacer::IsPictureDue() const {
  const std::vector<Token>& out = *out_;
  if (runStart_ == 0) return false;
  if (IsPic(out[runStart_ - 1])) return true;
  return runStart_ > 1 && IsIs(out[runStart_ - 1]) && IsPic(out[runStart_ - 2]);
}

// Writes the run out and lexes it again. A full stop at its end stays what it is.
void Replacer::Glue() {
  std::vector<Token>& out = *out_;
  const FragmentContext context = IsPictureDue() ? FragmentContext::Picture
                                  : inExec_      ? FragmentContext::Exec
                                                 : FragmentContext::Plain;
  const bool hasPeriod = out.back().kind == TokenKind::Period && !out.back().Has(kReplaced);
  const Token period = out.back();
  pieces_.assign(out.begin() + static_cast<std::ptrdiff_t>(runStart_), out.end() - (hasPeriod ? 1 : 0));
  out.resize(runStart_);
  glued_.clear();
  ends_.clear();
  for (const Token& piece : pieces_) {
    glued_ += text_.Text(piece);
    ends_.push_back(glued_.size());
  }
  budget_.bytes -= std::min(budget_.bytes, glued_.size());
  if (!glued_.empty()) {
    LexFragment(glued_, context, options_, symbols_, glueTokens_);
    PutGlued();
  }
  if (hasPeriod) out.push_back(period);
}

// The tokens of the glued text, each in the place of the pieces that it is made of.
void Replacer::PutGlued() {
  std::size_t piece = 0;
  for (const Token& token : glueTokens_) {
    const std::size_t begin = token.offset;
    const std::size_t end = begin + token.length;
    while (piece + 1 < pieces_.size() && ends_[piece] <= begin) ++piece;
    std::size_t last = piece;
    while (last + 1 < pieces_.size() && ends_[last] < end) ++last;
    Token placed = pieces_[piece];
    placed.kind = token.kind;
    placed.symbol = token.symbol;
    placed.flags |= token.flags & kUnclosed;
    if (begin > 0) placed.flags |= token.flags & kAdjacent;
    const bool isPiece = last == piece && end == ends_[piece] && begin == (piece == 0 ? 0 : ends_[piece - 1]);
    if (!isPiece) Compose(placed, pieces_[last], glued_.substr(begin, token.length));
    out_->push_back(placed);
  }
}

// Gives a token that reaches to the end of `last` the text.
void Replacer::Compose(Token& token, const Token& last, std::string text) {
  if (last.inclusion == token.inclusion && last.offset >= token.offset) {
    token.length = std::max(token.length, last.offset + last.length - token.offset);
  }
  token.flags |= kComposed | kReplaced;
  token.text = static_cast<std::uint32_t>(text_.composed.size());
  text_.composed.push_back(std::move(text));
}

}  // namespace qmrules::workbench::codemodel::cobol
