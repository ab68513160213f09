#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/codemodel/cobol/reading/compilationconditions.h"
#include "workbench/codemodel/cobol/reading/copybooks.h"
#include "workbench/codemodel/cobol/reading/copystatement.h"
#include "workbench/codemodel/cobol/reading/reader.h"
#include "workbench/codemodel/cobol/reading/replacer.h"
#include "workbench/codemodel/diagnostics.h"
#include "workbench/codemodel/expandedtext.h"
#include "workbench/codemodel/frontend.h"
#include "workbench/codemodel/symboltable.h"

namespace qmrules::workbench::codemodel::cobol {

// Makes the expanded text of one program.
class Expansion {
 public:
  Expansion(SourceProvider& provider, SymbolTable& symbols, Copybooks& copybooks, const LexerOptions& options,
            const ReaderLimits& limits)
      : provider_(provider), symbols_(symbols), copybooks_(copybooks), options_(options), limits_(limits) {}

  struct Result {
    ExpandedText text;
    std::vector<Diagnostic> diagnostics;
    // What a copybook told too late: options with which the program has to be read again.
    std::optional<LexerOptions> again;
  };
  // The program is in the file of the source.
  Result Run(const SourceProvider::Source& source);

 private:
  // A file that is being worked off.
  struct Reading {
    std::shared_ptr<const ReadFile> file;
    Placement placement;
  };
  struct Request {
    std::string name, library;
    const std::vector<ReplacementPair>* pairs = nullptr;
    bool isSql = false;
    // The statement in the file that is being worked off.
    std::uint32_t offset = 0, end = 0, row = 0, endRow = 0;
  };

  void EnterPlain(ReadFile program);
  std::uint32_t Enter(const std::shared_ptr<const ReadFile>& file);
  void ExpandFile(const Reading& reading, std::vector<Token>& out);
  void TakeTokens(const Reading& reading, std::size_t first, std::size_t end, std::vector<Token>& out);
  std::size_t TakeCopy(const Reading& reading, std::size_t first, std::vector<Token>& out);
  std::size_t TakeSqlInclude(const Reading& reading, std::size_t first, std::vector<Token>& out);
  void TakeDirective(const Reading& reading, const Directive& directive, std::vector<Token>& out);
  void Include(const Reading& reading, const Request& request, std::vector<Token>& out);
  void IncludeFile(const Reading& reading, const Request& request, std::uint32_t file,
                   const std::shared_ptr<const ReadFile>& copybook, std::vector<Token>& out);
  void Spend(std::size_t tokens, std::size_t bytes);
  std::string FileOf(const Request& request);
  std::string RingOf(const Reading& reading, const std::string& file) const;
  std::string Refusal(const Reading& reading, const std::string& file, std::string_view title) const;
  CopyStatement ParseCopy(const Reading& reading, std::size_t first);
  void ReplaceAll();
  void Report(Severity severity, const SourceFile& file, std::uint32_t offset, std::string text);

  SourceProvider& provider_;
  SymbolTable& symbols_;
  Copybooks& copybooks_;
  LexerOptions options_;
  const ReaderLimits& limits_;

  Result result_;
  ExpandedText& text_ = result_.text;
  ExpansionBudget budget_;
  std::size_t granted_ = 0;  // tokens of the budget that files have brought
  CompilationConditions conditions_;
  bool hasReplace_ = false;
  SourceFormat programFormat_ = SourceFormat::Fixed;
  std::vector<const Replacements*> around_;  // REPLACING of the COPY statements that are being worked off
  std::unordered_map<std::string, std::uint32_t> fileNumbers_;
  std::vector<std::uint32_t> composedStarts_;  // by file
  std::unordered_map<std::string, std::size_t> dependencyNumbers_;
};

}  // namespace qmrules::workbench::codemodel::cobol
