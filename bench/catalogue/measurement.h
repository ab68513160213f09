#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "bars.h"
#include "stopwatch.h"

namespace qmrules::bench {

// Where the rows of a walk go: each field comes as a text of its own. While timing only lengths are summed up, so that
// the sum costs next to nothing; when checking, every byte and its place counts.
class RowSink {
 public:
  enum class Mode { Timing, Checking };
  explicit RowSink(Mode mode) : mode_(mode) {}

  void Take(const std::string& field) {
    bytes_ += field.size();
    if (mode_ == Mode::Checking) AddToSum(field);
  }
  void EndRow() { ++rows_; }

  std::uint64_t Rows() const { return rows_; }
  friend bool operator==(const RowSink&, const RowSink&) = default;

 private:
  void AddToSum(std::string_view field);

  Mode mode_;
  std::uint64_t rows_ = 0;
  std::uint64_t bytes_ = 0;
  std::uint64_t sum_ = 0xCBF29CE484222325ULL;
};

// One of the two ways to get the same rows. `round` counts from 0 and chooses what is asked for.
using Side = std::function<void(int round, RowSink& sink)>;

struct Comparison {
  std::string name;
  std::uint64_t rows = 0;  // of the first round
  int rounds = 0;
  double ours = 0;  // median seconds of one round
  double raw = 0;
  double Ratio() const { return ours / raw; }
};

// Runs both sides once to check that they give the same rows, in every round that is asked for, and then times them in
// turn. Throws std::runtime_error, naming the comparison, when they differ.
Comparison Compare(const std::string& name, int rounds, const Side& ours, const Side& raw);

// What the program prints: a line of the table for each comparison as it comes, and the bars at the end.
class Report {
 public:
  void PrintHeading() const;
  void Print(const Comparison& comparison) const;
  void AddBar(const std::string& name, double value, double limit) { bars_.Add(name, value, limit); }
  // Prints the comparison and makes its ratio a bar: the limit is the one for long walks from 10,000 rows on.
  void AddFetch(const Comparison& comparison);
  void PrintBars() const { bars_.Print(); }

 private:
  Bars bars_;
};

}  // namespace qmrules::bench
