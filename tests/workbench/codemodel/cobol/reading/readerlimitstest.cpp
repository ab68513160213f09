#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "workbench/codemodel/cobol/reading/expandedprogram.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using workbench::codemodel::cobol::ReaderLimits;

std::string Repeated(std::string_view text, int times) {
  std::string all;
  for (int time = 0; time < times; ++time) all += text;
  return all;
}

TEST(ReaderLimits, ACopybookThatCopiesItselfIsLeftOutThere) {
  const ExpandedProgram program({{"P.cbl", "A COPY BOOK. B"}, {"BOOK", "C\n COPY BOOK. D"}});
  EXPECT_EQ(program.Words(), "A C D B");
  EXPECT_THAT(program.Problems(),
              ElementsAre("BOOK:2:2: gap: Copybook BOOK copies itself (BOOK, BOOK); this COPY was left out."));
}

TEST(ReaderLimits, ARingOfCopybooksIsNamed) {
  const ExpandedProgram program(
      {{"P.cbl", "COPY A. END"}, {"A", "1 COPY B. 2"}, {"B", "3 COPY C. 4"}, {"C", "5 COPY A. 6"}});
  EXPECT_EQ(program.Words(), "1 3 5 6 4 2 END");
  EXPECT_THAT(program.Problems(),
              ElementsAre("C:1:3: gap: Copybook A copies itself (A, B, C, A); this COPY was left out."));
}

TEST(ReaderLimits, AProgramThatCopiesItselfIsReadOnce) {
  const ExpandedProgram program({{"P.cbl", "A COPY 'P.cbl'. B"}});
  EXPECT_EQ(program.Words(), "A B");
  EXPECT_THAT(program.Problems(),
              ElementsAre("P.cbl:1:3: gap: Copybook P.cbl copies itself (P.cbl, P.cbl); this COPY was left out."));
}

TEST(ReaderLimits, CopyWithinCopyEndsAtTheDepth) {
  MemorySources sources{{"P.cbl", "COPY B1. END"}};
  for (int level = 1; level <= 100; ++level) {
    sources.Put(fmt::format("B{}", level), fmt::format("{} COPY B{}.", level, level + 1));
  }
  ReaderLimits limits;
  limits.depth = 3;
  const ExpandedProgram program(sources, limits);
  EXPECT_EQ(program.Words(), "1 2 3 END");
  EXPECT_THAT(program.Problems(),
              ElementsAre("B3:1:3: gap: Copybook B4 was left out: COPY statements lie more than 3 deep."));
}

TEST(ReaderLimits, TheNumberOfCopyStatementsIsBounded) {
  ReaderLimits limits;
  limits.inclusions = 2;
  const ExpandedProgram program({{"P.cbl", "COPY A. COPY A. COPY A. END"}, {"A", "1"}}, limits);
  EXPECT_EQ(program.Words(), "1 1 END");
  EXPECT_THAT(program.Problems(), ElementsAre("P.cbl:1:17: gap: Copybook A was left out: the program has more than 2 "
                                              "COPY statements."));
}

// Each level copies the next one ten times, so that 10^20 words would come of it.
TEST(ReaderLimits, AnExpansionWithoutEndIsCut) {
  MemorySources sources{{"P.cbl", "COPY B1. END"}};
  for (int level = 1; level <= 20; ++level) {
    sources.Put(fmt::format("B{}", level), "A " + Repeated(fmt::format("COPY B{}. ", level + 1), 10));
  }
  sources.Put("B21", "A");
  ReaderLimits limits;
  limits.inclusions = 5000;
  const ExpandedProgram program(sources, limits);
  EXPECT_LE(program.Text().inclusions.size(), 5001U);
  EXPECT_EQ(program.Text().Text(program.Text().tokens[program.Text().tokens.size() - 2]), "END");
  EXPECT_THAT(program.Problems(), testing::Not(IsEmpty()));
}

TEST(ReaderLimits, ALargeCopybookCopiedWithoutEndIsCut) {
  ReaderLimits limits;
  limits.growth = 2;
  const ExpandedProgram program({{"P.cbl", Repeated("COPY BOOK. ", 1000) + "END"}, {"BOOK", Repeated("A ", 10'000)}},
                                limits);
  EXPECT_LE(program.Text().tokens.size(), 140'000U);
  EXPECT_EQ(program.Text().Text(program.Text().tokens[program.Text().tokens.size() - 2]), "END");
  EXPECT_THAT(program.Problems(), testing::Contains("P.cbl:1:10990: gap: Copybook BOOK was left out: with it the "
                                                    "program grows past what can be read."));
}

TEST(ReaderLimits, ACopybookThatCannotBeReadIsLeftOut) {
  class Torn final : public SourceProvider {
   public:
    Source Read(std::string_view file) override {
      if (file == "BOOK") throw platform::Error("BOOK: this is no text file");
      return sources_.Read(file);
    }
    std::optional<std::string> FindCopybook(std::string_view name, std::string_view, std::string_view) override {
      return std::string(name);
    }

   private:
    MemorySources sources_{{"P.cbl", "A COPY INNER. B"}, {"INNER", "C COPY BOOK. D"}};
  };
  Torn sources;
  SymbolTable symbols(cobol::CobolWordList());
  Diagnostics diagnostics;
  const auto text = cobol::ProgramReader(sources, symbols, ExpandedProgram::FreeForm()).Read("P.cbl", diagnostics);
  EXPECT_EQ(text.tokens.size(), 5U);
  const auto problems = diagnostics.Take();
  ASSERT_THAT(problems, SizeIs(1));
  EXPECT_EQ(problems[0].text, "Copybook BOOK cannot be read: BOOK: this is no text file");
  EXPECT_EQ(problems[0].file, "INNER");
  EXPECT_EQ(problems[0].column, 3U);
}

TEST(ReaderLimits, ReplacingThatGrowsWithoutEndIsGivenUp) {
  // Ten words for one, at each of twenty levels.
  MemorySources sources{{"P.cbl", "COPY B1 REPLACING ==A== BY ==" + Repeated("A ", 10) + "==. END"}};
  for (int level = 1; level < 20; ++level) {
    sources.Put(fmt::format("B{}", level),
                fmt::format("COPY B{} REPLACING ==A== BY =={}==.", level + 1, Repeated("A ", 10)));
  }
  sources.Put("B20", "A");
  const ExpandedProgram program(sources);
  EXPECT_LE(program.Text().tokens.size(), 1'000'000U);
  EXPECT_EQ(program.Text().Text(program.Text().tokens[program.Text().tokens.size() - 2]), "END");
  EXPECT_THAT(program.Problems(), testing::Contains(testing::HasSubstr(
                                      "gap: REPLACING was given up in copybook B1: it makes the program grow past what "
                                      "can be read.")));
}

TEST(ReaderLimits, LongWordsMadeWithoutEndAreGivenUp) {
  const std::string longWord(20'000, 'X');
  const ExpandedProgram program({{"P.cbl", "REPLACE ==:T:== BY ==" + longWord + "==. " + Repeated(":T:-A ", 20'000)}});
  std::size_t bytes = 0;
  for (const std::string& text : program.Text().composed) bytes += text.size();
  EXPECT_LE(bytes, 64U * 300'000 + 20'000'000);
  EXPECT_THAT(program.Problems(), SizeIs(1));
}

TEST(ReaderLimits, PairsThatAllBeginAlikeAreGivenUp) {
  std::string pairs;
  for (int number = 0; number < 3000; ++number) {
    pairs += fmt::format(" ==A {} B{}== BY ==C==", Repeated("A ", 20), number);
  }
  ReaderLimits limits;
  limits.growth = 4;
  const ExpandedProgram program({{"P.cbl", "REPLACE" + pairs + ".\n" + Repeated("A ", 100'000)}}, limits);
  EXPECT_EQ(program.Text().tokens.size(), 100'001U);
  EXPECT_THAT(program.Problems(), ElementsAre("P.cbl:2:1: gap: REPLACE was given up: it makes the program grow past "
                                              "what can be read."));
}

}  // namespace
}  // namespace qmrules::test
