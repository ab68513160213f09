#include "shell/likepattern.h"

#include <algorithm>
#include <stdexcept>

#include "shell/casemapping.h"
#include "shell/utf16.h"
#include "shell/utf8.h"

namespace qmrules::shell {
namespace {

/// The step at `position` with its value folded.
Utf8Step FoldedAt(std::string_view text, std::size_t position) {
  const auto byte = static_cast<unsigned char>(text[position]);
  if (byte < 0x80) {
    return {FoldAscii(byte), 1};
  }
  Utf8Step step = DecodeAt(text, position);
  step.value = CaseMapping::Unicode().Fold(step.value);
  return step;
}

std::string ColumnOf(std::string_view pattern, std::size_t position) {
  return std::to_string(CharacterCount(pattern.substr(0, position)) + 1);
}

std::invalid_argument UnclosedList(std::string_view pattern, std::size_t position) {
  return std::invalid_argument("The pattern \"" + std::string(pattern) + "\" opens a list with \"[\" at column " +
                               ColumnOf(pattern, position) +
                               " and does not close it. Add \"]\", or write \"[[]\" for the character itself.");
}

std::invalid_argument BackwardRange(std::string_view pattern, std::size_t position) {
  return std::invalid_argument("The pattern \"" + std::string(pattern) + "\" has a range at column " +
                               ColumnOf(pattern, position) + " that runs backwards. Write its lower end first.");
}

}  // namespace

LikePattern::LikePattern(std::string_view pattern) {
  for (std::size_t position = 0; position < pattern.size();) {
    const Utf8Step step = FoldedAt(pattern, position);
    switch (step.value) {
      case U'*':
        AddRun();
        break;
      case U'?':
        tokens_.push_back({.kind = Kind::AnyCharacter});
        break;
      case U'#':
        tokens_.push_back({.kind = Kind::Digit});
        break;
      case U'[':
        position = AddList(pattern, position);
        continue;
      default:
        tokens_.push_back({.kind = Kind::Literal, .literal = step.value});
    }
    position += step.length;
  }
  ChooseShape();
}

void LikePattern::AddRun() {
  if (tokens_.empty() || tokens_.back().kind != Kind::AnyRun) {
    tokens_.push_back({.kind = Kind::AnyRun});
  }
}

std::size_t LikePattern::AddList(std::string_view pattern, std::size_t position) {
  const std::size_t close = pattern.find(']', position);
  if (close == std::string_view::npos) {
    throw UnclosedList(pattern, position);
  }
  // Cut at the bracket, so that no character of the list can reach behind it.
  const std::string_view list = pattern.substr(0, close);
  std::size_t place = position + 1;
  Token token{.kind = Kind::List, .firstRange = ranges_.size()};
  if (place == close) {
    return close + 1;
  }
  if (list[place] == '!' && place + 1 < close) {
    token.isNegated = true;
    ++place;
  }
  while (place < close) {
    const std::size_t start = place;
    const Utf8Step first = DecodeAt(list, place);
    place += first.length;
    Utf8Step last = first;
    if (place + 1 < close && list[place] == '-') {
      last = DecodeAt(list, place + 1);
      place += 1 + last.length;
    }
    if (last.value < first.value) {
      throw BackwardRange(pattern, start);
    }
    ranges_.push_back({first.value, last.value});
  }
  token.endRange = ranges_.size();
  tokens_.push_back(token);
  return close + 1;
}

void LikePattern::ChooseShape() {
  const auto isRun = [](const Token& token) { return token.kind == Kind::AnyRun; };
  const bool isOpenAtStart = !tokens_.empty() && isRun(tokens_.front());
  const bool isOpenAtEnd = !tokens_.empty() && isRun(tokens_.back());
  auto begin = tokens_.begin() + (isOpenAtStart ? 1 : 0);
  auto end = tokens_.end() - (isOpenAtEnd && tokens_.size() > 1 ? 1 : 0);
  if (!std::all_of(begin, end, [](const Token& token) { return token.kind == Kind::Literal; }) ||
      (isOpenAtStart && !isOpenAtEnd)) {
    return;
  }
  std::transform(begin, end, std::back_inserter(literal_), [](const Token& token) { return token.literal; });
  if (isOpenAtStart) {
    shape_ = Shape::Anywhere;
  } else {
    shape_ = isOpenAtEnd ? Shape::Beginning : Shape::Whole;
  }
}

bool LikePattern::Matches(std::string_view text) const {
  switch (shape_) {
    case Shape::Whole:
      return LiteralEnd(text, 0) == text.size();
    case Shape::Beginning:
      return LiteralEnd(text, 0) != std::string_view::npos;
    case Shape::Anywhere:
      return HoldsLiteral(text);
    case Shape::General:
      break;
  }
  return MatchesTokens(text);
}

std::size_t LikePattern::LiteralEnd(std::string_view text, std::size_t position) const {
  for (const char32_t expected : literal_) {
    if (position == text.size()) {
      return std::string_view::npos;
    }
    const Utf8Step step = FoldedAt(text, position);
    if (step.value != expected) {
      return std::string_view::npos;
    }
    position += step.length;
  }
  return position;
}

bool LikePattern::HoldsLiteral(std::string_view text) const {
  if (literal_.empty()) {
    return true;
  }
  for (std::size_t position = 0; position < text.size();) {
    const Utf8Step step = FoldedAt(text, position);
    if (step.value == literal_.front() && LiteralEnd(text, position) != std::string_view::npos) {
      return true;
    }
    position += step.length;
  }
  return false;
}

bool LikePattern::IsInList(const Token& token, char32_t value) const {
  const char32_t folded = CaseMapping::Unicode().Fold(value);
  const char32_t upper = CaseMapping::Unicode().Upper(folded);
  const auto holds = [&](const Range& range) {
    const auto isWithin = [&range](char32_t letter) { return range.first <= letter && letter <= range.last; };
    // A letter can have more than two cases; a single one of them in the list stands for all.
    const bool isSameLetter = range.first == range.last && CaseMapping::Unicode().Fold(range.first) == folded;
    return isSameLetter || isWithin(value) || isWithin(folded) || isWithin(upper);
  };
  const auto* first = ranges_.data() + token.firstRange;
  return std::any_of(first, ranges_.data() + token.endRange, holds);
}

bool LikePattern::Accepts(const Token& token, char32_t value) const {
  switch (token.kind) {
    case Kind::Literal:
      return CaseMapping::Unicode().Fold(value) == token.literal;
    case Kind::AnyCharacter:
      return true;
    case Kind::Digit:
      return value >= U'0' && value <= U'9';
    case Kind::List:
      return IsInList(token, value) != token.isNegated;
    case Kind::AnyRun:
      break;
  }
  return false;
}

bool LikePattern::MatchesTokens(std::string_view text) const {
  constexpr std::size_t kNone = std::string_view::npos;
  std::size_t position = 0;
  std::size_t next = 0;
  // Only the last run met need ever grow: what stands before it has found its earliest place already.
  std::size_t run = kNone;
  std::size_t runEnd = 0;
  while (position < text.size()) {
    if (next < tokens_.size() && tokens_[next].kind == Kind::AnyRun) {
      run = next++;
      runEnd = position;
      if (next == tokens_.size()) {
        return true;
      }
      continue;
    }
    const Utf8Step step = DecodeAt(text, position);
    if (next < tokens_.size() && Accepts(tokens_[next], step.value)) {
      ++next;
      position += step.length;
      continue;
    }
    if (run == kNone) {
      return false;
    }
    next = run + 1;
    runEnd += DecodeAt(text, runEnd).length;
    position = runEnd;
  }
  while (next < tokens_.size() && tokens_[next].kind == Kind::AnyRun) {
    ++next;
  }
  return next == tokens_.size();
}

bool MatchesPattern(std::string_view text, std::string_view pattern) {
  return LikePattern(pattern).Matches(text);
}

}  // namespace qmrules::shell
