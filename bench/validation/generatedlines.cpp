#include "validation/generatedlines.h"

#include <fmt/format.h>

#include <iterator>
#include <random>

namespace qmrules::bench {

namespace {

template <class Next>
std::string Lines(std::size_t lines, const Next& next) {
  std::string text;
  for (std::size_t line = 0; line < lines; ++line) {
    fmt::format_to(std::back_inserter(text), "           MOVE WS-FIELD-{} TO WS-TARGET.\n", next(line));
  }
  return text;
}

}  // namespace

std::string DistinctLines(std::size_t lines) {
  return Lines(lines, [](std::size_t line) { return line; });
}

std::string HalfDistinctLines(std::size_t lines) {
  std::mt19937_64 random(1);
  // Of n drawn from 0.63 n about 0.8 of these come up.
  std::uniform_int_distribution<std::size_t> text(0, lines * 63 / 100);
  return Lines(lines, [&](std::size_t) { return text(random); });
}

std::string StockAndUniqueLines(std::size_t lines) {
  constexpr std::size_t stock = 1'000;
  std::mt19937_64 random(1);
  return Lines(lines, [&](std::size_t line) { return random() % 2 == 0 ? random() % stock : stock + line; });
}

std::string RepeatedLine(std::size_t lines) {
  return Lines(lines, [](std::size_t) { return 0; });
}

std::string AlternatingLines(std::size_t lines) {
  return Lines(lines, [](std::size_t line) { return line % 2; });
}

}  // namespace qmrules::bench
