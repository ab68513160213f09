// Holds the analysis of programs against the logs of their runs: flow_chaincheck [--unseen] PROGRAMS.cbl LOG…
// Prints each miss, with --unseen each pair that was not seen, and at the end
// "checked N told N could be N seen N misses N"; exits with 1 when there are misses.

#include <fstream>
#include <iostream>
#include <sstream>
#include <string_view>

#include "support/memorysources.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/modelfile.h"
#include "workbench/flow/oracle/chaincheck.h"

namespace {

using qmrules::workbench::codemodel::ModelImage;

std::string ReadFile(const char* path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(std::string(path) + " cannot be read");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::vector<std::shared_ptr<const ModelImage>> ModelsOf(const char* path) {
  namespace cobol = qmrules::workbench::codemodel::cobol;
  qmrules::test::MemorySources sources{{"programs.cbl", ReadFile(path)}};
  cobol::CobolFrontEnd frontEnd(sources, {.format = cobol::SourceFormat::Fixed});
  std::vector<std::shared_ptr<const ModelImage>> models;
  for (const auto& program : frontEnd.Translate("programs.cbl", [] { return false; })) {
    models.push_back(ModelImage::FromBytes(SerializeModel(program.model), path));
    for (const auto& diagnostic : models.back()->ListDiagnostics()) {
      std::cout << "diagnostic: row " << diagnostic.row << " " << diagnostic.text << '\n';
    }
  }
  return models;
}

int Check(int count, char** arguments) {
  const bool wantsUnseen = std::string_view(arguments[1]) == "--unseen";
  const int first = wantsUnseen ? 2 : 1;
  qmrules::test::ChainCheck check(ModelsOf(arguments[first]));
  for (int place = first + 1; place < count; ++place) {
    std::ifstream log(arguments[place]);
    if (!log) throw std::runtime_error(std::string(arguments[place]) + " cannot be read");
    check.Check(qmrules::test::ReadRunLog(log));
  }
  for (const std::string& miss : check.Misses()) std::cout << miss << '\n';
  if (wantsUnseen) {
    for (const std::string& pair : check.Unseen()) std::cout << pair << '\n';
  }
  const auto pairs = check.Pairs();
  std::cout << "checked " << check.Checked() << " told " << pairs.told << " could be " << pairs.couldBe << " seen "
            << pairs.seen << " misses " << check.Misses().size() << '\n';
  return check.Misses().empty() ? 0 : 1;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    if (count < 3) throw std::runtime_error("usage: flow_chaincheck [--unseen] PROGRAMS.cbl LOG...");
    return Check(count, arguments);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
  }
}
