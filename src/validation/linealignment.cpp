#include "validation/linealignment.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <utility>

#include "shell/trim.h"
#include "validation/preparedline.h"

namespace qmrules::validation {

namespace {

// The cells of the largest table: lengths within it fit 16 bits, and it is filled within some hundredths of a second.
constexpr std::size_t kMostCells = 4'000'000;

using Symbols = std::vector<int>;
using Places = std::vector<std::pair<std::size_t, std::size_t>>;

// Gives equal texts equal numbers.
class Numbering {
 public:
  int Of(std::string_view text) {
    return numbers_.try_emplace(std::string(text), static_cast<int>(numbers_.size())).first->second;
  }

 private:
  std::unordered_map<std::string, int> numbers_;
};

// What stands between the common ends; false when it is too much to be searched.
bool AppendCommon(std::span<const int> left, std::span<const int> right, std::size_t offset, Places& places) {
  const std::size_t width = right.size() + 1;
  if (left.empty() || right.empty()) return true;
  if ((left.size() + 1) > kMostCells / width) return false;
  // In each cell the length of what is common to the rests that begin there.
  std::vector<std::uint16_t> lengths((left.size() + 1) * width);
  for (std::size_t i = left.size(); i-- > 0;) {
    for (std::size_t j = right.size(); j-- > 0;) {
      const std::size_t cell = i * width + j;
      lengths[cell] = left[i] == right[j] ? static_cast<std::uint16_t>(lengths[cell + width + 1] + 1)
                                          : std::max(lengths[cell + width], lengths[cell + 1]);
    }
  }
  for (std::size_t i = 0, j = 0; i < left.size() && j < right.size();) {
    const std::size_t cell = i * width + j;
    if (left[i] == right[j]) {
      places.emplace_back(offset + i++, offset + j++);
    } else if (lengths[cell + width] >= lengths[cell + 1]) {
      ++i;
    } else {
      ++j;
    }
  }
  return true;
}

// The places of a longest common subsequence, in order. `fallBack` gives the places between the common ends when the
// rest is too long.
template <class FallBack>
Places CommonPlaces(const Symbols& left, const Symbols& right, const FallBack& fallBack) {
  Places places;
  const std::size_t least = std::min(left.size(), right.size());
  std::size_t front = 0;
  while (front < least && left[front] == right[front]) {
    places.emplace_back(front, front);
    ++front;
  }
  std::size_t back = 0;
  while (back < least - front && left[left.size() - back - 1] == right[right.size() - back - 1]) ++back;
  const auto middle = [&](const Symbols& symbols) {
    return std::span(symbols).subspan(front, symbols.size() - front - back);
  };
  if (!AppendCommon(middle(left), middle(right), front, places)) fallBack(middle(left), middle(right), front, places);
  for (; back > 0; --back) places.emplace_back(left.size() - back, right.size() - back);
  return places;
}

// What lies before the next common line: in pairs from the top, the rest alone.
void AppendDifferent(LinePair next, std::size_t leftEnd, std::size_t rightEnd, std::vector<LinePair>& pairs) {
  std::size_t left = *next.left;
  std::size_t right = *next.right;
  while (left < leftEnd && right < rightEnd) pairs.push_back({LinePairKind::Changed, left++, right++});
  while (left < leftEnd) pairs.push_back({LinePairKind::LeftOnly, left++, std::nullopt});
  while (right < rightEnd) pairs.push_back({LinePairKind::RightOnly, std::nullopt, right++});
}

Symbols NumberLines(const std::vector<std::string_view>& lines, Numbering& numbering) {
  Symbols symbols;
  symbols.reserve(lines.size());
  std::string safe;
  for (const std::string_view line : lines) symbols.push_back(numbering.Of(PrepareLine(line, safe)));
  return symbols;
}

bool IsOfWord(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code >= 0x80 || (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') ||
         code == '-' || code == '_';
}

// Words, runs of blanks, and every other sign by itself.
std::vector<std::string_view> SplitWords(std::string_view line) {
  std::vector<std::string_view> words;
  while (!line.empty()) {
    std::size_t length = 1;
    const bool isBlank = line.front() == ' ';
    if (isBlank || IsOfWord(line.front())) {
      while (length < line.size() && (isBlank ? line[length] == ' ' : IsOfWord(line[length]))) ++length;
    }
    words.push_back(line.substr(0, length));
    line.remove_prefix(length);
  }
  return words;
}

void Append(std::string_view text, bool differs, std::vector<LinePiece>& pieces) {
  if (text.empty()) return;
  if (pieces.empty() || pieces.back().differs != differs) pieces.push_back({"", differs});
  pieces.back().text += text;
}

// `isCommon`: of each word.
std::vector<LinePiece> Pieces(std::string_view line, const std::vector<std::string_view>& words,
                              const std::vector<bool>& isCommon) {
  std::vector<LinePiece> pieces;
  const std::string_view body = shell::TrimBlanks(line);
  if (body.empty()) {
    Append(line, false, pieces);
    return pieces;
  }
  const auto indent = static_cast<std::size_t>(body.data() - line.data());
  Append(line.substr(0, indent), false, pieces);
  for (std::size_t word = 0; word < words.size(); ++word) Append(words[word], !isCommon[word], pieces);
  Append(line.substr(indent + body.size()), false, pieces);
  return pieces;
}

}  // namespace

std::vector<LinePair> AlignLines(const std::vector<std::string_view>& left,
                                 const std::vector<std::string_view>& right) {
  Numbering numbering;
  const Symbols leftSymbols = NumberLines(left, numbering);
  const Symbols rightSymbols = NumberLines(right, numbering);
  const auto inRows = [](std::span<const int> leftRest, std::span<const int> rightRest, std::size_t offset,
                         Places& places) {
    for (std::size_t row = 0; row < std::min(leftRest.size(), rightRest.size()); ++row) {
      if (leftRest[row] == rightRest[row]) places.emplace_back(offset + row, offset + row);
    }
  };
  std::vector<LinePair> pairs;
  LinePair next{LinePairKind::Same, 0, 0};
  for (const auto& [leftPlace, rightPlace] : CommonPlaces(leftSymbols, rightSymbols, inRows)) {
    AppendDifferent(next, leftPlace, rightPlace, pairs);
    pairs.push_back({LinePairKind::Same, leftPlace, rightPlace});
    next = {LinePairKind::Same, leftPlace + 1, rightPlace + 1};
  }
  AppendDifferent(next, left.size(), right.size(), pairs);
  return pairs;
}

WordDifferences CompareWords(std::string_view left, std::string_view right) {
  Numbering numbering;
  const auto number = [&numbering](const std::vector<std::string_view>& words) {
    Symbols symbols;
    for (const std::string_view word : words) symbols.push_back(numbering.Of(word));
    return symbols;
  };
  const auto leftWords = SplitWords(shell::TrimBlanks(left));
  const auto rightWords = SplitWords(shell::TrimBlanks(right));
  std::vector<bool> leftCommon(leftWords.size());
  std::vector<bool> rightCommon(rightWords.size());
  const auto nothing = [](auto...) {};
  for (const auto& [leftPlace, rightPlace] : CommonPlaces(number(leftWords), number(rightWords), nothing)) {
    leftCommon[leftPlace] = true;
    rightCommon[rightPlace] = true;
  }
  return {Pieces(left, leftWords, leftCommon), Pieces(right, rightWords, rightCommon)};
}

}  // namespace qmrules::validation
