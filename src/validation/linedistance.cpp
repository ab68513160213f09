#include "validation/linedistance.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <span>
#include <vector>

#include "shell/utf8.h"

namespace qmrules::validation {

namespace {

constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;
constexpr unsigned kSurrogateBits = 10;

bool IsAscii(std::string_view text) {
  unsigned char bits = 0;
  for (const char character : text) bits = static_cast<unsigned char>(bits | static_cast<unsigned char>(character));
  return bits < 0x80;
}

// The UTF-16 code units. A malformed byte is a unit of its own, unlike every other.
std::vector<char32_t> CodeUnits(std::string_view text) {
  std::vector<char32_t> units;
  units.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const shell::Utf8Step step = shell::DecodeAt(text, at);
    at += step.length;
    if (step.value < kFirstSupplementary || step.value >= shell::kMalformedByte) {
      units.push_back(step.value);
      continue;
    }
    const char32_t rest = step.value - kFirstSupplementary;
    units.push_back(kHighSurrogate + (rest >> kSurrogateBits));
    units.push_back(kLowSurrogate + (rest & ((1U << kSurrogateBits) - 1)));
  }
  return units;
}

// Calls `measure` with the code units of both texts, in the narrowest form that holds them.
template <class Measure>
std::int32_t WithCodeUnits(std::string_view a, std::string_view b, const Measure& measure) {
  if (IsAscii(a) && IsAscii(b)) return measure(std::span(a), std::span(b));
  const auto left = CodeUnits(a);
  const auto right = CodeUnits(b);
  return measure(std::span(left), std::span(right));
}

// Takes off what both begin and end with: it is no part of any difference.
template <class Unit>
void DropCommonEnds(std::span<Unit>& a, std::span<Unit>& b) {
  const auto front = static_cast<std::size_t>(std::ranges::mismatch(a, b).in1 - a.begin());
  a = a.subspan(front);
  b = b.subspan(front);
  std::size_t back = 0;
  while (back < a.size() && back < b.size() && a[a.size() - back - 1] == b[b.size() - back - 1]) ++back;
  a = a.first(a.size() - back);
  b = b.first(b.size() - back);
}

// The last row of the table, computed within one row of memory. `limit` bounds the cells to those near the diagonal: a
// path through any other costs more than it.
template <class Unit>
std::int32_t Distance(std::span<Unit> a, std::span<Unit> b, std::int32_t limit) {
  if (a.size() < b.size()) std::swap(a, b);
  DropCommonEnds(a, b);
  const auto band = static_cast<std::size_t>(limit);
  const std::int32_t tooFar = limit + 1;
  if (a.size() - b.size() > band) return tooFar;
  if (b.empty()) return static_cast<std::int32_t>(a.size());

  std::vector<std::int32_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), 0);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    const std::size_t first = i > band ? i - band : 1;
    const std::size_t last = std::min(b.size(), i + band);
    std::int32_t diagonal = row[first - 1];
    row[first - 1] = first == 1 ? static_cast<std::int32_t>(i) : tooFar;
    std::int32_t least = row[first - 1];
    for (std::size_t j = first; j <= last; ++j) {
      // The cell at the band's upper end has none above it within the band.
      const std::int32_t upper = j == i + band ? tooFar : row[j];
      const std::int32_t substituted = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({row[j - 1] + 1, upper + 1, substituted});
      least = std::min(least, row[j]);
    }
    if (least > limit) return tooFar;
  }
  return std::min(row.back(), tooFar);
}

}  // namespace

std::int32_t LineEditDistance(std::string_view a, std::string_view b) {
  return WithCodeUnits(a, b, [](auto left, auto right) {
    return Distance(left, right, static_cast<std::int32_t>(std::max(left.size(), right.size())));
  });
}

std::int32_t LineEditDistanceUpTo(std::string_view a, std::string_view b, std::int32_t limit) {
  return WithCodeUnits(a, b, [limit](auto left, auto right) { return Distance(left, right, limit); });
}

}  // namespace qmrules::validation
