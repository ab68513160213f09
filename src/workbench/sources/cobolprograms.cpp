#include "workbench/sources/cobolprograms.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "shell/casefold.h"
#include "workbench/sources/cobolwords.h"

namespace qmrules::workbench {

namespace {

// Words that follow a PROGRAM-ID without a name.
bool IsReserved(std::string_view word) {
  constexpr std::array<std::string_view, 10> reserved{
      "AUTHOR",       "DATA", "DATE-COMPILED", "DATE-WRITTEN", "ENVIRONMENT",
      "INSTALLATION", "IS",   "PROCEDURE",     "REMARKS",      "SECURITY"};
  return std::ranges::any_of(reserved, [&](std::string_view known) { return shell::EqualIgnoringCase(known, word); });
}

class ProgramFinder {
 public:
  explicit ProgramFinder(std::string_view text) : words_(text, DetectFormat(text)) { Advance(); }

  CobolPrograms Find() {
    while (current_) {
      if (AtProgramID()) {
        ReadProgramID();
      } else if (IsWord("END")) {
        Advance();
        if (IsWord("PROGRAM")) ReadEndProgram();
      } else {
        Advance();
      }
    }
    return std::move(found_);
  }

 private:
  void Advance() {
    afterPeriod_ = !current_ || current_->kind == CobolWord::Kind::Period;
    current_ = words_.Next();
  }

  bool IsWord(std::string_view text) const {
    return current_ && current_->kind == CobolWord::Kind::Word && shell::EqualIgnoringCase(current_->text, text);
  }

  // The heading of a paragraph, and not the word in a running remark.
  bool AtProgramID() const { return IsWord("PROGRAM-ID") && (afterPeriod_ || current_->firstOnLine); }

  // The name at the current word, in upper case.
  std::optional<std::string> Name() const {
    if (!current_ || current_->kind == CobolWord::Kind::Period) return std::nullopt;
    if (current_->kind == CobolWord::Kind::Word && IsReserved(current_->text)) return std::nullopt;
    const auto first = current_->text.find_first_not_of(' ');
    if (first == std::string::npos) return std::nullopt;
    const auto last = current_->text.find_last_not_of(' ');
    return shell::ToUpper(std::string_view(current_->text).substr(first, last - first + 1));
  }

  void ReadProgramID() {
    const std::size_t row = current_->row;
    Advance();
    if (!current_ || current_->kind != CobolWord::Kind::Period) return;
    Advance();
    auto name = Name();
    if (!name) {
      found_.nameless.push_back(row);
      return;
    }
    if (open_.empty()) {
      found_.programs.push_back({*name, current_->row, {}});
    } else {
      found_.programs.back().nested.push_back(*name);
    }
    open_.push_back(std::move(*name));
    Advance();
  }

  // Ends the innermost open program of this name with those in it; the innermost one when none has the name.
  void ReadEndProgram() {
    Advance();
    const auto name = Name();
    if (open_.empty()) return;
    auto ended = open_.end() - 1;
    if (name) {
      const auto match = std::find(open_.rbegin(), open_.rend(), *name);
      if (match != open_.rend()) ended = match.base() - 1;
    }
    open_.erase(ended, open_.end());
  }

  CobolWords words_;
  std::optional<CobolWord> current_;
  bool afterPeriod_ = true;
  std::vector<std::string> open_;  // names of the programs that have not ended, the innermost last
  CobolPrograms found_;
};

}  // namespace

CobolPrograms FindPrograms(std::string_view text) {
  return ProgramFinder(text).Find();
}

}  // namespace qmrules::workbench
