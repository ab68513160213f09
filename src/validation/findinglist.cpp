#include "validation/findinglist.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <sstream>
#include <utility>

#include "shell/casefold.h"

namespace qmrules::validation {

namespace {

constexpr std::array<Verdict, kVerdicts> kByNeed = {Verdict::FileMissing, Verdict::NotFound,  Verdict::RowsDisagree,
                                                    Verdict::Changed,     Verdict::Ambiguous, Verdict::Moved,
                                                    Verdict::InPlace,     Verdict::Unchanged, Verdict::NoSegment};

std::size_t NeedOf(Verdict verdict) {
  return static_cast<std::size_t>(std::ranges::find(kByNeed, verdict) - kByNeed.begin());
}

// The rows of the place that was taken; rows 0 where there is none.
RowRange NewRows(const RuleFinding& finding) {
  return finding.candidates.empty() ? RowRange() : finding.candidates[finding.chosen];
}

bool RowsLess(const RowRange& left, const RowRange& right) {
  return std::pair(left.FromRow, left.ToRow) < std::pair(right.FromRow, right.ToRow);
}

bool IsLess(const RuleFinding& left, const RuleFinding& right, FindingColumn column) {
  switch (column) {
    case FindingColumn::Verdict:
      return NeedOf(left.verdict) < NeedOf(right.verdict);
    case FindingColumn::Rule:
      return shell::CompareIgnoringCase(left.ruleName, right.ruleName) < 0;
    case FindingColumn::File:
      return shell::CompareIgnoringCase(left.fileName, right.fileName) < 0;
    case FindingColumn::OldRows:
      return RowsLess(left.rows, right.rows);
    case FindingColumn::NewRows:
      break;
  }
  return RowsLess(NewRows(left), NewRows(right));
}

}  // namespace

const std::array<Verdict, kVerdicts>& VerdictsByNeed() {
  return kByNeed;
}

void FindingList::SetReport(std::shared_ptr<const ValidationReport> report) {
  report_ = std::move(report);
  counts_ = {};
  if (report_) {
    for (const RuleFinding& finding : report_->findings) ++counts_[static_cast<std::size_t>(finding.verdict)];
  }
  Fold();
  order_ = Sorted();
  Show();
}

void FindingList::SetWords(VerdictWords words) {
  words_ = std::move(words);
  Fold();
  Show();
}

void FindingList::SortBy(FindingColumn column, bool descending) {
  column_ = column;
  descending_ = descending;
  order_ = Sorted();
  Show();
}

void FindingList::SetFilter(std::string_view text) {
  filter_.clear();
  std::istringstream words{shell::FoldCase(text)};
  for (std::string word; words >> word;) filter_.push_back(word);
  Show();
}

void FindingList::Fold() {
  folded_.clear();
  if (!report_) return;
  folded_.reserve(report_->findings.size());
  for (const RuleFinding& finding : report_->findings) {
    folded_.push_back(shell::FoldCase(
        fmt::format("{}\n{}\nRULE#{}\n{}", Word(finding.verdict), finding.ruleName, finding.ruleID, finding.fileName)));
  }
}

std::vector<std::size_t> FindingList::Sorted() const {
  std::vector<std::size_t> order(CountOfAll());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, [this](std::size_t left, std::size_t right) {
    const auto& findings = report_->findings;
    return descending_ ? IsLess(findings[right], findings[left], column_)
                       : IsLess(findings[left], findings[right], column_);
  });
  return order;
}

void FindingList::Show() {
  shown_.clear();
  std::ranges::copy_if(order_, std::back_inserter(shown_), [this](std::size_t finding) {
    return std::ranges::all_of(
        filter_, [&](const std::string& word) { return folded_[finding].find(word) != std::string::npos; });
  });
}

std::string FindingList::Text(std::size_t row, FindingColumn column) const {
  const RuleFinding& finding = At(row);
  switch (column) {
    case FindingColumn::Verdict:
      return Word(finding.verdict);
    case FindingColumn::Rule:
      return finding.ruleName;
    case FindingColumn::File:
      return finding.fileName;
    case FindingColumn::OldRows:
      return finding.verdict == Verdict::NoSegment ? std::string() : RowsText(finding.rows);
    case FindingColumn::NewRows:
      break;
  }
  if (finding.candidates.empty()) return {};
  const std::size_t others = finding.candidates.size() - 1;
  return RowsText(NewRows(finding)) + (others == 0 ? std::string() : fmt::format(" (+{})", others));
}

}  // namespace qmrules::validation
