#include "catalogue/measurement.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace qmrules::bench {

namespace {

constexpr std::uint64_t longWalkRows = 10000;
constexpr double longWalkLimit = 1.3;
constexpr double shortWalkLimit = 2.0;

double TimeOnce(const Side& side, int round, RowSink& sink) {
  const Stopwatch stopwatch;
  side(round, sink);
  return stopwatch.Seconds();
}

std::uint64_t Check(const std::string& name, int round, const Side& ours, const Side& raw) {
  RowSink ourSink(RowSink::Mode::Checking);
  RowSink rawSink(RowSink::Mode::Checking);
  ours(round, ourSink);
  raw(round, rawSink);
  if (ourSink == rawSink) return ourSink.Rows();
  throw std::runtime_error(fmt::format("{}, round {}: the two sides deliver different rows ({} and {}).", name, round,
                                       ourSink.Rows(), rawSink.Rows()));
}

}  // namespace

void RowSink::AddToSum(std::string_view field) {
  for (const char byte : field) sum_ = (sum_ ^ static_cast<unsigned char>(byte)) * 0x100000001B3ULL;
  sum_ = (sum_ ^ 0x100U) * 0x100000001B3ULL;
}

Comparison Compare(const std::string& name, int rounds, const Side& ours, const Side& raw) {
  Comparison comparison;
  comparison.name = name;
  comparison.rounds = rounds;
  comparison.rows = Check(name, 0, ours, raw);
  // Rounds of a long walk all ask for the same.
  if (comparison.rows < longWalkRows) {
    for (int round = 1; round < rounds; ++round) Check(name, round, ours, raw);
  }
  std::vector<double> ourTimes;
  std::vector<double> rawTimes;
  for (int round = 0; round < rounds; ++round) {
    RowSink ourSink(RowSink::Mode::Timing);
    RowSink rawSink(RowSink::Mode::Timing);
    ourTimes.push_back(TimeOnce(ours, round, ourSink));
    rawTimes.push_back(TimeOnce(raw, round, rawSink));
    if (!(ourSink == rawSink)) throw std::runtime_error(fmt::format("{}: the two sides deliver different rows.", name));
  }
  comparison.ours = Median(std::move(ourTimes));
  comparison.raw = Median(std::move(rawTimes));
  return comparison;
}

void Report::PrintHeading() const {
  fmt::print("{:<22} {:>9} {:>7} {:>14} {:>14} {:>7}\n", "measurement", "rows", "rounds", "ours ms", "by hand ms",
             "ratio");
}

void Report::Print(const Comparison& comparison) const {
  fmt::print("{:<22} {:>9} {:>7} {:>14.4f} {:>14.4f} {:>7.2f}\n", comparison.name, comparison.rows, comparison.rounds,
             comparison.ours * 1000, comparison.raw * 1000, comparison.Ratio());
  std::fflush(stdout);
}

void Report::AddFetch(const Comparison& comparison) {
  Print(comparison);
  AddBar(comparison.name, comparison.Ratio(), comparison.rows >= longWalkRows ? longWalkLimit : shortWalkLimit);
}

}  // namespace qmrules::bench
