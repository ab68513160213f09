#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workbench/codemodel/cobol/reading/reader.h"
#include "workbench/codemodel/cobol/reading/words.h"
#include "workbench/scan/workspacesources.h"

namespace qmrules::workbench {
namespace {

using namespace codemodel;
using namespace codemodel::cobol;
using testing::IsEmpty;
using testing::Not;

// The demo programs, read as a scan reads them.
class SampleReading : public testing::Test {
 protected:
  ExpandedText Read(const std::string& file) {
    Diagnostics diagnostics;
    ExpandedText text = reader_.Read(file, diagnostics);
    problems_ = diagnostics.Take();
    return text;
  }

  WorkspaceSources sources_{{.root = QMRULES_SAMPLES, .encoding = "", .copybookFolders = {}}};
  SymbolTable symbols_{CobolWordList()};
  ProgramReader reader_{sources_, symbols_, {}};
  std::vector<Diagnostic> problems_;
};

TEST_F(SampleReading, EveryCopyIsFoundAndReplaced) {
  const auto programs = ListSources({.root = QMRULES_SAMPLES, .path = QMRULES_SAMPLES, .encoding = "", .limits = {}});
  ASSERT_THAT(programs.files, Not(IsEmpty()));
  std::size_t copied = 0;
  for (const std::string& file : programs.files) {
    const ExpandedText text = Read(file);
    for (const Diagnostic& problem : problems_)
      ADD_FAILURE() << problem.file << ":" << problem.row << ": " << problem.text;
    for (const Dependency& dependency : text.dependencies)
      EXPECT_NE(dependency.file, "") << file << ": " << dependency.name;
    for (const Token& token : text.tokens) {
      EXPECT_FALSE(token.kind == TokenKind::Word && text.Text(token) == "TAG") << file << ":" << token.row;
    }
    copied += text.inclusions.size() - 1;
  }
  EXPECT_GT(copied, programs.files.size());
}

TEST_F(SampleReading, ATaggedCopybookIsReadUnderTwoNames) {
  const ExpandedText text = Read("policybilling/cobol/pbrate01.cbl");
  std::vector<std::string> places;
  for (const Token& token : text.tokens) {
    const std::string_view word = text.Text(token);
    const bool declares = text.File(token).Name() == "policybilling/copybooks/PBPOLMS.cpy";
    if (declares && (word == "PM-POLICY-NO" || word == "WP-POLICY-NO")) {
      const Inclusion& copy = text.inclusions[token.inclusion];
      places.push_back(std::string(word) + " " + std::to_string(token.row) + " by " + std::to_string(copy.row));
    }
  }
  EXPECT_THAT(places, testing::ElementsAre("PM-POLICY-NO 9 by 48", "WP-POLICY-NO 9 by 112"));
}

}  // namespace
}  // namespace qmrules::workbench
