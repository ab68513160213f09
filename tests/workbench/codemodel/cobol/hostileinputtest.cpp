// Inputs that nobody should write: each is taken without a crash, in time and memory that follow its size, and what
// follows the damage is still in the model.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "support/memorysources.h"
#include "workbench/codemodel/cobol/cobolfrontend.h"
#include "workbench/codemodel/cobol/procedure/verbs.h"

namespace qmrules::test {
namespace {

namespace codemodel = workbench::codemodel;
namespace cobol = codemodel::cobol;
using codemodel::Entity;
using codemodel::Severity;

constexpr std::string_view kHead =
    "       IDENTIFICATION DIVISION.\n"
    "       PROGRAM-ID. HOSTILE.\n"
    "       DATA DIVISION.\n"
    "       WORKING-STORAGE SECTION.\n"
    "       01  A                    PIC X(04).\n"
    "       01  B                    PIC X(04).\n";
constexpr std::string_view kProcedure =
    "       PROCEDURE DIVISION.\n"
    "       MAIN-PARA.\n";
constexpr std::string_view kTail =
    "       LAST-PARA.\n"
    "           MOVE A TO B.\n"
    "           GOBACK.\n";

class HostileInput : public testing::Test {
 protected:
  std::vector<codemodel::FrontEnd::Program> Translate(std::string text) {
    sources_.Put("hostile.cbl", std::move(text));
    cobol::CobolFrontEnd frontEnd(sources_, {});
    return frontEnd.Translate("hostile.cbl", [] { return false; });
  }

  // The program's model; its last paragraph must have come through.
  codemodel::ModelData Survivor(std::string text) {
    auto programs = Translate(std::move(text));
    EXPECT_EQ(programs.size(), 1U);
    if (programs.empty()) return {};
    auto& model = programs.front().model;
    EXPECT_EQ(CountVerb(model, cobol::Verb::Goback), 1U);
    EXPECT_TRUE(std::ranges::any_of(model.nodes, [&](const auto& node) {
      return node.entity == Entity::Par && model.texts[node.name] == "LAST-PARA";
    }));
    return std::move(model);
  }

  static std::size_t CountVerb(const codemodel::ModelData& model, cobol::Verb verb) {
    return static_cast<std::size_t>(
        std::ranges::count(model.nodes, static_cast<std::uint8_t>(verb), &codemodel::NodeRecord::verb));
  }

  static std::size_t CountGaps(const codemodel::ModelData& model) {
    return static_cast<std::size_t>(
        std::ranges::count(model.diagnostics, Severity::Gap, &codemodel::Diagnostic::severity));
  }

  static std::string Repeat(std::string_view text, std::size_t times) {
    std::string repeated;
    repeated.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i) repeated += text;
    return repeated;
  }

  MemorySources sources_;
};

TEST_F(HostileInput, TenThousandNestedIfsAreAllInTheModel) {
  const auto model = Survivor(fmt::format("{}{}{}           MOVE B TO A.\n{}", kHead, kProcedure,
                                          Repeat("           IF A = B\n", 10'000), kTail));
  EXPECT_EQ(CountVerb(model, cobol::Verb::If), 10'000U);
  EXPECT_EQ(CountVerb(model, cobol::Verb::Move), 2U);
}

TEST_F(HostileInput, TenThousandParenthesesCostTheirStatementOnly) {
  const auto model =
      Survivor(fmt::format("{}{}           COMPUTE A = {}B{}.\n           MOVE B TO A.\n{}", kHead, kProcedure,
                           Repeat("(\n           ", 10'000), Repeat(")\n           ", 10'000), kTail));
  EXPECT_EQ(CountVerb(model, cobol::Verb::Move), 2U);
}

TEST_F(HostileInput, TenThousandParenthesesInAConditionCostTheirStatementOnly) {
  const auto model = Survivor(fmt::format("{}{}           IF {}A = B{} MOVE B TO A.\n{}", kHead, kProcedure,
                                          Repeat("(\n           ", 10'000), Repeat(")\n           ", 10'000), kTail));
  EXPECT_EQ(CountVerb(model, cobol::Verb::If), 1U);
}

TEST_F(HostileInput, ALiteralOfAHundredMegabytesIsOneOperand) {
  std::string text = fmt::format("{}{}           MOVE '", kHead, kProcedure);
  text.append(std::size_t{100} * 1024 * 1024, 'x');
  text += fmt::format("' TO A.\n{}", kTail);
  sources_.Put("hostile.cbl", std::move(text));
  cobol::LexerOptions options;
  options.format = cobol::SourceFormat::WideFixed;
  cobol::CobolFrontEnd frontEnd(sources_, options);
  const auto programs = frontEnd.Translate("hostile.cbl", [] { return false; });
  ASSERT_EQ(programs.size(), 1U);
  EXPECT_EQ(CountVerb(programs.front().model, cobol::Verb::Move), 2U);
}

TEST_F(HostileInput, ALiteralOverAHundredThousandContinuationLinesIsOneOperand) {
  std::string text = fmt::format("{}{}           MOVE 'x{}\n", kHead, kProcedure, std::string(58, 'x'));
  for (int line = 0; line < 100'000; ++line) text += fmt::format("      -    '{}\n", std::string(60, 'y'));
  text += fmt::format("      -    'z' TO A.\n{}", kTail);
  const auto model = Survivor(std::move(text));
  EXPECT_EQ(CountVerb(model, cobol::Verb::Move), 2U);
}

TEST_F(HostileInput, NulBytesCostTheirStatementOnly) {
  std::string text = fmt::format("{}{}           MOVE A TO B\n", kHead, kProcedure);
  text += std::string("           MOVE \0\0\0 TO B.\n", 26);
  const auto model = Survivor(text + std::string(kTail));
  EXPECT_EQ(CountVerb(model, cobol::Verb::Move), 3U);
  EXPECT_GE(CountGaps(model), 1U);
}

TEST_F(HostileInput, ABinaryFileHoldsNoProgramOrAGap) {
  std::mt19937 random(11);
  std::string bytes;
  for (int i = 0; i < 1'000'000; ++i) bytes.push_back(static_cast<char>(random() & 0xFF));
  for (const auto& program : Translate(bytes)) EXPECT_GE(CountGaps(program.model), 1U);
}

TEST_F(HostileInput, ACopybookThatIncludesItselfIsReadOnce) {
  sources_.Put("RING1.cpy", "           MOVE A TO B.\n           COPY RING2.\n");
  sources_.Put("RING2.cpy", "           COPY RING1.\n");
  const auto model = Survivor(fmt::format("{}{}           COPY RING1.\n{}", kHead, kProcedure, kTail));
  EXPECT_EQ(CountVerb(model, cobol::Verb::Move), 2U);
  EXPECT_EQ(CountGaps(model), 1U);
}

TEST_F(HostileInput, CopiesThatDoubleAtEachLevelEndAtTheLimit) {
  for (int level = 0; level < 40; ++level) {
    const auto next = fmt::format("           COPY D{}.\n", level + 1);
    sources_.Put(fmt::format("D{}.cpy", level), next + next + "           MOVE A TO B.\n");
  }
  sources_.Put("D40.cpy", "           MOVE A TO B.\n");
  const auto model = Survivor(fmt::format("{}{}           COPY D0.\n{}", kHead, kProcedure, kTail));
  EXPECT_GE(CountGaps(model), 1U);
  EXPECT_LE(model.nodes.size(), 2'000'000U);
}

TEST_F(HostileInput, AReplacementThatGrowsWithoutEndEndsAtTheLimit) {
  std::string text = fmt::format("{}{}", kHead, kProcedure);
  for (int i = 0; i < 200; ++i) text += fmt::format("           COPY GROW REPLACING ==A== BY ==A A A A A A A A==.\n");
  sources_.Put("GROW.cpy", Repeat("           DISPLAY A A A A A A A A A A A A A A A A.\n", 5'000));
  const auto model = Survivor(text + std::string(kTail));
  EXPECT_LE(model.nodes.size(), 100'000'000U);
}

TEST_F(HostileInput, AnEndOfScopeInAreaAIsNoHeaderAndDoesNotStopTheParser) {
  for (const std::string_view word : {"END-XML", "END-JSON", "END-IF", "ELSE", "WHEN", "COMMIT", "JSON"}) {
    const auto model = Survivor(fmt::format("{}{}       {}.\n{}", kHead, kProcedure, word, kTail));
    EXPECT_EQ(CountVerb(model, cobol::Verb::Move), 1U) << word;
  }
}

TEST_F(HostileInput, FiftyThousandItemsOfOneNameAreDeclaredAndAmbiguous) {
  std::string text(kHead);
  for (int i = 0; i < 50'000; ++i) text += "       01  SAME                 PIC X.\n";
  const auto model = Survivor(fmt::format("{}{}           MOVE SAME TO A.\n{}", text, kProcedure, kTail));
  EXPECT_EQ(CountVerb(model, cobol::Verb::Move), 2U);
  EXPECT_GE(CountGaps(model), 1U);
}

TEST_F(HostileInput, FortyNineLevelsOfTablesDoNotOverflowTheLayout) {
  std::string text(kHead);
  for (int level = 2; level < 49; ++level)
    text += fmt::format("           {:02}  T{} OCCURS 2000000000 TIMES.\n", level, level);
  text += "           49  T49 PIC X(2000000000).\n";
  const auto model = Survivor(fmt::format("{}{}{}", text, kProcedure, kTail));
  EXPECT_GE(CountGaps(model), 1U);
}

TEST_F(HostileInput, EachPrefixOfAProgramIsTaken) {
  const std::string text =
      fmt::format("{}{}           IF A = 'X' MOVE A (1:2) TO B ELSE EVALUATE TRUE WHEN A > B CONTINUE\n{}", kHead,
                  kProcedure, kTail);
  for (std::size_t length = 0; length <= text.size(); ++length) {
    EXPECT_LE(Translate(text.substr(0, length)).size(), 1U);
  }
}

}  // namespace
}  // namespace qmrules::test
