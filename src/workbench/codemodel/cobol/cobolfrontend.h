#pragma once

#include <string>

#include "workbench/codemodel/cobol/reading/reader.h"
#include "workbench/codemodel/frontend.h"

namespace qmrules::workbench::codemodel::cobol {

// Reads and parses COBOL sources.
class CobolFrontEnd final : public FrontEnd {
 public:
  CobolFrontEnd(SourceProvider& provider, const LexerOptions& options, ReaderLimits limits = {});
  std::vector<Program> Translate(std::string_view file, const std::function<bool()>& cancelled) override;

  // What ModelData::options is for these options: a model with other ones is out of date.
  static std::string OptionsText(const LexerOptions& options);

 private:
  SourceProvider& provider_;
  std::string optionsText_;
  SymbolTable symbols_;
  ProgramReader reader_;
};

}  // namespace qmrules::workbench::codemodel::cobol
