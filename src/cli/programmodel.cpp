#include "cli/programmodel.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/error.h"
#include "shell/casefold.h"

namespace qmrules::cli {

using platform::Error;

catalogue::RegisteredSource FindProgram(workbench::EmbeddedHost& host, const std::string& text) {
  const auto programs = catalogue::RegisteredSources(host);
  for (const bool byKey : {true, false}) {
    const auto found = std::ranges::find_if(programs, [&](const catalogue::RegisteredSource& program) {
      return shell::EqualIgnoringCase(byKey ? program.key : program.name, text);
    });
    if (found != programs.end()) return *found;
  }
  throw Error(fmt::format(
      "There is no program {} in the project; \"qmrules source list\" shows its programs, \"qmrules scan\" finds new "
      "ones.",
      text));
}

void RequireModel(const catalogue::RegisteredSource& program) {
  if (!program.modelFile.empty()) return;
  throw Error(fmt::format("{0} is not scanned yet; run \"qmrules scan\".", program.name));
}

std::shared_ptr<const workbench::codemodel::ModelImage> OpenImage(workbench::EmbeddedHost& host,
                                                                  const catalogue::RegisteredSource& program) {
  RequireModel(program);
  return workbench::codemodel::ModelImage::Open(host.PathOf(program.modelFile));
}

std::uint32_t UnitAround(const workbench::codemodel::ModelImage& model, workbench::codemodel::NodeId node) {
  std::uint32_t found = 0;
  for (std::uint32_t unit = 0; unit < model.Units().size(); ++unit) {
    if (model.Units()[unit].firstNode <= node && node <= model.Units()[unit].lastNode) found = unit;
  }
  return found;
}

void PrintGaps(Context& context, const catalogue::RegisteredSource& program, std::size_t gaps) {
  if (gaps == 0) return;
  context.environment.out << fmt::format("This program's model has {}; see \"qmrules diagnostics {}\".\n",
                                         Counted(gaps, "gap"), program.name);
}

std::string Counted(std::size_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

}  // namespace qmrules::cli
