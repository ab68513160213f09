#include "workbench/scan/modelfilename.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "shell/casefold.h"

namespace qmrules::workbench {
namespace {

TEST(ModelFileName, CanBeReadAndNamesSourceAndProgram) {
  const std::string name = ModelFileName("cobol/pbrate01.cbl", "PBRATE01");
  EXPECT_TRUE(name.starts_with("pbrate01.cbl.")) << name;
  EXPECT_TRUE(name.ends_with(".PBRATE01.qmm")) << name;
  EXPECT_EQ(name.size(), std::string("pbrate01.cbl.0123456789abcdef.PBRATE01.qmm").size());
}

TEST(ModelFileName, IsUniqueWithoutRegardToCase) {
  const std::vector<std::pair<std::string, std::string>> programs{{"a.cbl", "A"},   {"A.cbl", "A"}, {"a.CBL", "A"},
                                                                  {"x/a.cbl", "A"}, {"a.cbl", "B"}, {"a.cbl", "A.B"},
                                                                  {"a.cbl", ""},    {"a.cbl.A", ""}};
  std::set<std::string> names;
  for (const auto& [source, program] : programs) names.insert(shell::FoldCase(ModelFileName(source, program)));
  names.insert(shell::FoldCase(NoProgramFileName("a.cbl")));
  EXPECT_EQ(names.size(), programs.size() + 1);
}

TEST(ModelFileName, HoldsNothingThatAFileSystemRefuses) {
  const std::string name = ModelFileName("x/a<b>:c\"d|e?f*g\\h i\xC3\xA4.cbl", "P/Q\nR");
  EXPECT_EQ(name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.%"),
            std::string::npos)
      << name;
}

TEST(ModelFileName, OfLongNamesIsCutAndStaysUnique) {
  const std::string one = ModelFileName(std::string(250, 'a') + "1", std::string(5000, 'P') + "1");
  EXPECT_LE(one.size(), 255U);
  EXPECT_NE(one, ModelFileName(std::string(250, 'a') + "1", std::string(5000, 'P') + "2"));
  EXPECT_NE(one, ModelFileName(std::string(250, 'a') + "2", std::string(5000, 'P') + "1"));
  const std::string wide = ModelFileName(std::string(80, '<'), std::string(80, '<'));
  EXPECT_LE(wide.size(), 255U);
}

TEST(ModelFileName, TellsTheStemOfItsSource) {
  for (const std::string source : {"a.cbl", "x/y.z/a.0123456789abcdef", ".cbl", "a"}) {
    const std::string stem = ModelFileStem(source);
    for (const std::string program : {"A", "0123456789ABCDEF", "A.B", ""}) {
      EXPECT_EQ(StemOfModelFile(ModelFileName(source, program)), stem);
    }
    EXPECT_EQ(StemOfModelFile(NoProgramFileName(source)), stem);
  }
}

TEST(ModelFileName, TellsWhetherThereIsAProgram) {
  const std::vector<std::string> sources{"a.cbl", "x/~none", "~none.qmm", std::string(250, 'a')};
  const std::vector<std::string> programs{"A", "", "~none", ".~none", "~NONE", std::string(5000, '~')};
  for (const auto& source : sources) {
    EXPECT_TRUE(NotesNoProgram(NoProgramFileName(source))) << source;
    for (const auto& program : programs) {
      EXPECT_FALSE(NotesNoProgram(ModelFileName(source, program))) << source << ' ' << program;
    }
  }
  EXPECT_FALSE(NotesNoProgram("a.~none"));
  EXPECT_FALSE(NotesNoProgram(""));
}

TEST(ModelFileName, OfAnotherFileHasNoStem) {
  for (const std::string name : {"", ".qmm", "a.qmm", "a.b.qmm", "a.0123456789abcdeg.A.qmm", "a.0123456789abcdef.A",
                                 ".0123456789abcdef.A.qmm", "a.0123456789abcdef.A.qmm.tmp"}) {
    EXPECT_EQ(StemOfModelFile(name), "") << name;
  }
}

}  // namespace
}  // namespace qmrules::workbench
