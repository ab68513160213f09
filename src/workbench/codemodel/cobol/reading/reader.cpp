#include "workbench/codemodel/cobol/reading/reader.h"

#include <utility>

#include "workbench/codemodel/cobol/reading/copybooks.h"
#include "workbench/codemodel/cobol/reading/expansion.h"

namespace qmrules::workbench::codemodel::cobol {

ProgramReader::ProgramReader(SourceProvider& provider, SymbolTable& symbols, LexerOptions options, ReaderLimits limits)
    : provider_(provider),
      symbols_(symbols),
      options_(options),
      limits_(limits),
      copybooks_(std::make_unique<Copybooks>(provider, symbols)) {}

ProgramReader::~ProgramReader() = default;

ExpandedText ProgramReader::Read(std::string_view file, Diagnostics& diagnostics) {
  const SourceProvider::Source source = provider_.Read(file);
  const auto expand = [&](const LexerOptions& options) {
    return Expansion(provider_, symbols_, *copybooks_, options, limits_).Run(source);
  };
  Expansion::Result result = expand(options_);
  if (result.again) {
    const LexerOptions options = *result.again;
    result = expand(options);
  }
  for (Diagnostic& diagnostic : result.diagnostics) diagnostics.Add(std::move(diagnostic));
  return std::move(result.text);
}

}  // namespace qmrules::workbench::codemodel::cobol
