#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "validation/validationrun.h"

namespace qmrules::validation {

enum class FindingColumn { Verdict, Rule, File, OldRows, NewRows };
inline constexpr std::size_t kFindingColumns = 5;

// What a verdict is called, by its number.
using VerdictWords = std::array<std::string, kVerdicts>;

// The findings of a run as a list for a reader: sorted by a column, and only those that hold what was typed.
class FindingList {
 public:
  // Sorted by the verdict, those first that ask for a look soonest. Rows count from 0.
  FindingList() = default;

  // Another run; order and filter stay. The report outlives the list or the next call.
  void SetReport(std::shared_ptr<const ValidationReport> report);
  void SetWords(VerdictWords words);
  // Equal ones stay in the order of the run.
  void SortBy(FindingColumn column, bool descending);
  // Leaves the findings in which each word of the text occurs in the verdict, the rule's name, its key or the file, in
  // any case.
  void SetFilter(std::string_view text);

  std::size_t Count() const { return shown_.size(); }
  std::size_t CountOfAll() const { return report_ ? report_->findings.size() : 0; }
  // Of all, not of those left by the filter.
  std::size_t CountOf(Verdict verdict) const { return counts_[static_cast<std::size_t>(verdict)]; }
  const RuleFinding& At(std::size_t row) const { return report_->findings[shown_[row]]; }
  // What stands in the list. New rows are those of the place that was taken, "(+2)" telling of two more.
  std::string Text(std::size_t row, FindingColumn column) const;
  const std::string& Word(Verdict verdict) const { return words_[static_cast<std::size_t>(verdict)]; }

 private:
  void Fold();
  void Show();
  std::vector<std::size_t> Sorted() const;

  std::shared_ptr<const ValidationReport> report_;
  VerdictWords words_;
  std::array<std::size_t, kVerdicts> counts_{};
  FindingColumn column_ = FindingColumn::Verdict;
  bool descending_ = false;
  std::vector<std::string> filter_;  // folded words
  std::vector<std::string> folded_;  // what is searched, of each finding
  std::vector<std::size_t> order_;   // of all findings
  std::vector<std::size_t> shown_;
};

// The verdicts in the order in which they ask for a look.
[[nodiscard]] const std::array<Verdict, kVerdicts>& VerdictsByNeed();

}  // namespace qmrules::validation
