// Holds the models of the NIST programs against what a compiler says of them.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <set>

#include "support/temporaryfolder.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/cobol/programs/crossreference.h"
#include "workbench/codemodel/cobol/programs/programfiles.h"

namespace qmrules::test {
namespace {

namespace codemodel = workbench::codemodel;
using codemodel::Entity;
using codemodel::ModelData;

constexpr std::size_t kShown = 40;  // of the differences

// The listing cuts names to so many characters.
constexpr std::size_t kListedData = 30, kListedLabels = 28;

// The row that the listing gives: continuation lines are counted with the line that they go on from.
std::uint32_t ListedRow(const codemodel::SourceFile& file, std::uint32_t row) {
  while (row > 1 && file.Row(row).size() > 6 && file.Row(row)[6] == '-') --row;
  return row;
}

// The names that an occurrence of this declaration stands for in the listing: its own; where it is a condition name,
// that of its variable; and those of the items below a group, to which the listing carries some references over.
void AddNames(const ModelData& model, codemodel::NodeId declaration, std::vector<std::string>& names) {
  const auto add = [&](codemodel::NodeId node) { names.push_back(model.texts[model.nodes[node].name]); };
  add(declaration);
  const auto& node = model.nodes[declaration];
  if (node.entity != Entity::Decl) return;
  if (model.decls[node.detail].level == 88) add(node.parent);
  for (codemodel::NodeId below = declaration + 1; below <= node.last; ++below) {
    if (model.nodes[below].entity == Entity::Decl) add(below);
  }
}

// Occurrences of names in the models of one file. The listing takes SELECT for a file's declaration and its FD for a
// reference; in the model it is the other way round.
std::set<CompilerReference> Occurrences(const std::vector<codemodel::FrontEnd::Program>& programs,
                                        const codemodel::SourceFile& file) {
  std::set<CompilerReference> occurrences;
  for (const auto& program : programs) {
    const ModelData& model = program.model;
    for (const auto& node : model.nodes) {
      std::vector<std::string> names;
      if (node.entity == Entity::File) names.push_back(model.texts[node.name]);
      if (node.declaration != 0) AddNames(model, node.declaration, names);
      for (const auto& name : names) {
        for (const std::uint32_t row : {node.firstRow, ListedRow(file, node.firstRow)}) {
          occurrences.insert({name, row});
          if (name.size() > kListedData) occurrences.insert({name.substr(0, kListedData), row});
          if (name.size() > kListedLabels) occurrences.insert({name.substr(0, kListedLabels), row});
        }
      }
    }
  }
  return occurrences;
}

std::string Join(const std::vector<std::string>& lines) {
  return fmt::format(
      "{}",
      fmt::join(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(lines.size(), kShown)), "\n"));
}

class NistPrograms : public testing::Test {
 protected:
  std::vector<codemodel::FrontEnd::Program> Translate(const std::string& file) {
    return frontEnd_.Translate(file, [] { return false; });
  }

  ProgramFiles files_ = NistFiles();
  TemporaryFolder scratch_;
  codemodel::cobol::CobolFrontEnd frontEnd_{files_.sources, {}};
};

TEST_F(NistPrograms, ThatTheCompilerAcceptsHaveNoGapAndEachOfItsReferences) {
  std::vector<std::string> gaps, missing;
  std::size_t accepted = 0, references = 0;
  for (const auto& file : files_.programs) {
    const auto expected = AskCompiler(NistFolder() + "/" + file, scratch_.Path());
    if (!expected) continue;
    ++accepted;
    const auto programs = Translate(file);
    EXPECT_FALSE(programs.empty()) << file;
    for (const auto& program : programs) {
      for (const auto& diagnostic : program.model.diagnostics) {
        if (diagnostic.severity != codemodel::Severity::Gap) continue;
        gaps.push_back(
            fmt::format("{}:{}:{}: {}", diagnostic.file, diagnostic.row, diagnostic.column, diagnostic.text));
      }
    }
    const auto occurrences = Occurrences(programs, *files_.sources.Read(file).file);
    references += expected->size();
    for (const auto& reference : *expected) {
      if (!occurrences.contains(reference))
        missing.push_back(fmt::format("{}:{}: {}", file, reference.row, reference.name));
    }
  }
  EXPECT_EQ(gaps.size(), 0U) << Join(gaps);
  EXPECT_EQ(missing.size(), 0U) << Join(missing);
  // The listing is not read past: these many are accepted, and this is what they hold.
  EXPECT_GE(accepted, 360U);
  EXPECT_GE(references, 100'000U);
}

}  // namespace
}  // namespace qmrules::test
