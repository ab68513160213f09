#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/cobol/reading/directivewords.h"

namespace qmrules::workbench::codemodel::cobol {

// Conditional compilation: >>DEFINE, >>IF, >>EVALUATE and their older forms $SET CONSTANT, $IF, $ELSE, $END. Takes the
// directives of a program in their order and tells whether the text behind them is compiled. A condition that cannot be
// decided from the sources counts as true.
class CompilationConditions {
 public:
  // Takes a directive as it stands in the text. Returns what is wrong with it, for the reader, or "". Directives that
  // have nothing to do with conditions are passed over.
  std::string Take(std::string_view directive);
  // Whether the text from here on is compiled.
  bool IsActive() const { return blocks_.empty() || blocks_.back().active; }

  // A block ends in the file in which it begins. Between the two calls directives count for the file; the second one
  // ends the blocks that are still open and returns what is wrong, or "".
  void EnterFile() { files_.push_back(blocks_.size()); }
  std::string LeaveFile();

 private:
  using Item = DirectiveWords::Item;
  // A >>IF or >>EVALUATE that is not ended.
  struct Block {
    bool isEvaluate = false;
    bool outerActive = true;  // the text around it is compiled
    bool active = false;      // its current branch is
    bool taken = false;       // one of its branches was or is
    bool otherwise = false;   // ELSE or WHEN OTHER was met
    bool isTruth = false;     // EVALUATE TRUE
    Item subject;             // of EVALUATE
  };
  enum class Truth : std::uint8_t { False, True, Unknown };

  std::string Define(DirectiveWords& words);
  std::string SetConstants(DirectiveWords& words);
  std::string Open(DirectiveWords& words, bool isEvaluate);
  std::string Branch(DirectiveWords& words, bool isWhen, bool isOtherwise);
  std::string Close(bool isEvaluate);
  std::string Begin(Truth truth);
  bool IsWithin(bool isEvaluate) const;

  Truth Or(DirectiveWords& words, int depth) const;
  Truth And(DirectiveWords& words, int depth) const;
  Truth Not(DirectiveWords& words, int depth) const;
  Truth Relation(DirectiveWords& words) const;
  Truth Matches(const Item& subject, DirectiveWords& words) const;
  std::optional<std::string> ValueOf(const Item& item) const;

  // By name in upper case. Nothing: the value is given from outside.
  std::unordered_map<std::string, std::optional<std::string>> constants_;
  std::vector<Block> blocks_;
  std::vector<std::size_t> files_;  // blocks that were open when a file was entered
};

}  // namespace qmrules::workbench::codemodel::cobol
