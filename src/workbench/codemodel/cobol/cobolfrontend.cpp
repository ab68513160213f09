#include "workbench/codemodel/cobol/cobolfrontend.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/error.h"
#include "workbench/codemodel/cobol/programtranslation.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

// Raised with every change that makes other models of the same sources.
constexpr int kVersion = 4;

// The rows of the program's own file that each program of it takes: from the first one's beginning, or the end of the
// one before it, to its end.
struct Extent {
  std::uint32_t firstRow = 0, lastRow = 0;
};

// Gives what the reading found wrong to the program that it is in; for a copybook, to the first program.
std::vector<Diagnostics> ShareOut(std::vector<Diagnostic> found, const std::string& file,
                                  const std::vector<Extent>& extents) {
  std::vector<Diagnostics> shares(extents.size());
  for (Diagnostic& diagnostic : found) {
    std::size_t at = 0;
    if (diagnostic.file == file) {
      while (at + 1 < extents.size() && diagnostic.row > extents[at].lastRow) ++at;
    }
    shares[at].Add(std::move(diagnostic));
  }
  return shares;
}

void ThrowIfCancelled(const std::function<bool()>& cancelled) {
  if (cancelled && cancelled()) throw platform::Error("The scan was cancelled.");
}

}  // namespace

std::string CobolFrontEnd::OptionsText(const LexerOptions& options) {
  return fmt::format("cobol {} format {}{}{}{}", kVersion, options.format ? NameOf(*options.format) : "auto",
                     options.debuggingLines ? " debugging" : "", options.decimalComma ? " comma" : "",
                     options.wideCharactersTakeTwoColumns ? " double" : "");
}

CobolFrontEnd::CobolFrontEnd(SourceProvider& provider, const LexerOptions& options, ReaderLimits limits)
    : provider_(provider),
      optionsText_(OptionsText(options)),
      symbols_(CobolWordList()),
      reader_(provider, symbols_, options, limits) {}

std::vector<FrontEnd::Program> CobolFrontEnd::Translate(std::string_view file, const std::function<bool()>& cancelled) {
  Diagnostics reading;
  const ExpandedText text = reader_.Read(file, reading);
  std::vector<Program> programs;
  std::vector<Extent> extents;
  TokenCursor cursor(text);
  const ProgramBounds bounds(text, symbols_);
  while (ProgramBounds::PassToProgram(cursor)) {
    ThrowIfCancelled(cancelled);
    const std::uint32_t first = cursor.Index();
    programs.push_back(ProgramTranslation(cursor, symbols_, bounds, Diagnostics()).Translate());
    if (cursor.Index() == first) cursor.Next();
    extents.push_back({text.tokens[first].row, text.tokens[cursor.Previous()].row});
  }
  ThrowIfCancelled(cancelled);
  if (programs.empty()) return programs;
  std::vector<Diagnostics> shares = ShareOut(reading.Take(), text.files[0]->Name(), extents);
  for (std::size_t at = 0; at < programs.size(); ++at) {
    ModelData& model = programs[at].model;
    std::vector<Diagnostic> diagnostics = shares[at].Take();
    std::move(model.diagnostics.begin(), model.diagnostics.end(), std::back_inserter(diagnostics));
    model.diagnostics = std::move(diagnostics);
    model.options = optionsText_;
    for (FileEntry& entry : model.files) {
      const SourceProvider::Source source = provider_.Read(entry.name);
      std::copy(std::begin(source.hash), std::end(source.hash), std::begin(entry.hash));
    }
  }
  return programs;
}

}  // namespace qmrules::workbench::codemodel::cobol
