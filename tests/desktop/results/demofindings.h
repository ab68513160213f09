#pragma once

#include <memory>
#include <optional>
#include <string>

#include "validation/validationrun.h"

namespace qmrules::test {

inline validation::RuleFinding Finding(std::int32_t ruleID, validation::Verdict verdict, std::string name,
                                       std::string file, validation::RowRange rows, std::string storedText) {
  validation::RuleFinding finding;
  finding.ruleID = ruleID;
  finding.verdict = verdict;
  finding.ruleName = std::move(name);
  finding.fileName = std::move(file);
  finding.rows = rows;
  finding.storedText = std::move(storedText);
  return finding;
}

// Six rules over pay.cbl, gone.cbl, and the program that SourceOf gives.
inline std::shared_ptr<const validation::ValidationReport> DemoReport() {
  using validation::Verdict;
  auto report = std::make_shared<validation::ValidationReport>();
  auto& findings = report->findings;
  findings.push_back(Finding(1, Verdict::Unchanged, "Fee", "pay.cbl", {1, 1}, "ADD 1 TO FEE\n"));
  findings.push_back(Finding(2, Verdict::Moved, "Tax", "pay.cbl", {1, 2}, "ADD 2 TO TAX\nADD 3 TO TAX\n"));
  findings.back().candidates = {{3, 5}};
  findings.push_back(Finding(3, Verdict::Ambiguous, "Total", "pay.cbl", {4, 4}, "PERFORM TOTAL\n"));
  findings.back().candidates = {{8, 8}, {6, 6}, {2, 2}};
  findings.back().chosen = 1;
  findings.push_back(Finding(4, Verdict::NotFound, "Rate", "pay.cbl", {2, 2}, "MOVE 12 TO RATE\n"));
  findings.push_back(Finding(5, Verdict::FileMissing, "Lost", "gone.cbl", {7, 8}, "STOP RUN.\nGOBACK.\n"));
  findings.push_back(Finding(6, Verdict::NoSegment, "Unwritten", "", {0, 0}, ""));
  return report;
}

inline std::optional<std::string> SourceOf(const std::string& file) {
  if (file != "pay.cbl") return std::nullopt;
  return "ADD 1 TO FEE\n"
         "PERFORM TOTAL\n"
         "    ADD 2 TO TAX\n"
         "\n"
         "    ADD 3 TO TAX\n"
         "PERFORM TOTAL\n"
         "MOVE 10 TO RATE\n"
         "PERFORM TOTAL\n";
}

}  // namespace qmrules::test
