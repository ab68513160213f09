#include "workbench/scan/sourcetranslation.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "workbench/scan/modelfilename.h"

namespace qmrules::workbench {

namespace {

using codemodel::ModelData;
using codemodel::Severity;

std::uint32_t Count(const ModelData& model, Severity severity) {
  return static_cast<std::uint32_t>(std::ranges::count(model.diagnostics, severity, &codemodel::Diagnostic::severity));
}

void NoteRepeated(ModelData& first, std::string_view source, const ModelData& repeated, std::string_view name) {
  codemodel::Diagnostic diagnostic;
  diagnostic.file = source;
  if (!repeated.units.empty()) diagnostic.row = repeated.nodes[repeated.units.front().identification].firstRow;
  if (diagnostic.row > 0) diagnostic.column = 1;
  diagnostic.text = fmt::format("Another program {} of the same file is left out; give it another PROGRAM-ID.", name);
  first.diagnostics.push_back(std::move(diagnostic));
}

// The programs that can be told apart by their names.
std::vector<codemodel::FrontEnd::Program> OnePerName(std::vector<codemodel::FrontEnd::Program> programs,
                                                     std::string_view source) {
  std::vector<codemodel::FrontEnd::Program> taken;
  for (auto& program : programs) {
    program.name = NameOfProgram(program.name, source);
    const auto first = std::ranges::find(taken, program.name, &codemodel::FrontEnd::Program::name);
    if (first == taken.end()) {
      taken.push_back(std::move(program));
    } else {
      NoteRepeated(first->model, source, program.model, program.name);
    }
  }
  return taken;
}

// Tells a later scan which text it was that held no program.
ModelData NoProgramNote(std::string_view source, const std::array<std::uint64_t, 2>& hash, const std::string& options) {
  ModelData note;
  note.nodes.emplace_back();
  note.texts.emplace_back();
  note.files.push_back({std::string(source), {hash[0], hash[1]}});
  note.options = options;
  return note;
}

}  // namespace

std::vector<KnownModel> TranslateSource(std::string_view source, codemodel::FrontEnd& frontEnd,
                                        codemodel::SourceProvider& sources, const TranslationTarget& target,
                                        const std::function<bool()>& cancelled) {
  const auto hash = sources.Hash(source);
  auto programs = OnePerName(frontEnd.Translate(source, cancelled), source);
  const auto path = [&](const std::string& name) { return target.modelFolder + "/" + name; };
  std::vector<KnownModel> models;
  for (auto& [name, model] : programs) {
    model.options = target.options;
    KnownModel known;
    known.fileName = ModelFileName(source, name);
    known.program = name;
    known.rows = model.rows;
    known.gaps = Count(model, Severity::Gap);
    known.warnings = Count(model, Severity::Warning);
    codemodel::WriteModelFile(path(known.fileName), model);
    models.push_back(std::move(known));
  }
  if (models.empty()) {
    models.emplace_back().fileName = NoProgramFileName(source);
    codemodel::WriteModelFile(path(models.front().fileName), NoProgramNote(source, hash, target.options));
  }
  return models;
}

}  // namespace qmrules::workbench
