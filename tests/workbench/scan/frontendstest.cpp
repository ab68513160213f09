#include "workbench/scan/frontends.h"

#include <gtest/gtest.h>

#include "support/errortext.h"

namespace qmrules::workbench {
namespace {

using codemodel::ClassedRun;
using codemodel::SourceFile;
using codemodel::TextClass;

std::vector<ClassedRun> FirstRow(const codemodel::TextClassifier& classifier, std::string text) {
  const codemodel::ClassedText classes = classifier(std::make_shared<const SourceFile>("PROG.cbl", std::move(text)));
  const auto runs = classes.Row(1);
  return {runs.begin(), runs.end()};
}

TEST(CobolTextClassifier, ReadsByTheFormOfTheProject) {
  SourceOptions options;
  options.format = "free";
  EXPECT_EQ(FirstRow(CobolTextClassifier(options, ""), "MOVE A TO B"),
            (std::vector<ClassedRun>{{1, 4, TextClass::Verb}, {8, 2, TextClass::Reserved}}));
  options.format = "fixed";
  EXPECT_EQ(FirstRow(CobolTextClassifier(options, ""), "MOVE A TO B"),
            (std::vector<ClassedRun>{{1, 6, TextClass::Margin}, {8, 2, TextClass::Reserved}}));
}

TEST(CobolTextClassifier, AFormThatIsNotKnownIsRefused) {
  SourceOptions options;
  options.format = "loose";
  EXPECT_EQ(test::ErrorText([&] { CobolTextClassifier(options, ""); }),
            "There is no form of source lines \"loose\"; choose auto, fixed, wide or free.");
}

}  // namespace
}  // namespace qmrules::workbench
