#include "workbench/codemodel/cobol/data/programscope.h"

#include <gtest/gtest.h>

#include <chrono>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;
using namespace workbench::codemodel::cobol;
using enum Resolution::Found;

Resolution Resolve(const HeadModel& model, std::string_view name, std::vector<std::string_view> qualifiers = {}) {
  std::vector<std::uint32_t> symbols;
  for (const std::string_view qualifier : qualifiers) symbols.push_back(model.Symbol(qualifier));
  return model.Scope().Resolve(model.Symbol(name), symbols);
}

std::string TwoGroups() {
  return HeadModel::WorkingStorage(R"(
01  A.
    05  B.
        10  C PIC X.
            88  ON-C VALUE 'Y'.
    05  D.
        10  C PIC X.
            88  ON-C VALUE 'Y'.
        10  E PIC X.
01  F.
    05  B.
        10  G PIC X.
)");
}

TEST(ProgramScope, ANameThatSeveralItemsAnswerToIsAmbiguous) {
  const HeadModel model(TwoGroups());
  EXPECT_EQ(Resolve(model, "C").found, Several);
  EXPECT_EQ(Resolve(model, "B").found, Several);
  EXPECT_EQ(Resolve(model, "C", {"A"}).found, Several);
}

TEST(ProgramScope, QualifiersTellWhichOneIsMeant) {
  const HeadModel model(TwoGroups());
  EXPECT_EQ(model.Node(Resolve(model, "C", {"B"}).node).firstRow, 7U);
  EXPECT_EQ(model.Node(Resolve(model, "C", {"D"}).node).firstRow, 10U);
  EXPECT_EQ(model.Node(Resolve(model, "C", {"D", "A"}).node).firstRow, 10U);
  EXPECT_EQ(model.Node(Resolve(model, "G", {"F"}).node).firstRow, 15U);
  EXPECT_EQ(model.Node(Resolve(model, "ON-C", {"D"}).node).firstRow, 11U);
  EXPECT_EQ(model.Node(Resolve(model, "ON-C", {"C", "B"}).node).firstRow, 8U);
}

TEST(ProgramScope, QualifiersStandInTheirOrder) {
  const HeadModel model(TwoGroups());
  EXPECT_EQ(Resolve(model, "C", {"A", "B"}).found, None);
  EXPECT_EQ(Resolve(model, "E", {"B"}).found, None);
  EXPECT_EQ(Resolve(model, "E", {"NOWHERE"}).found, None);
  EXPECT_EQ(Resolve(model, "NOWHERE").found, None);
}

TEST(ProgramScope, AnItemWhoseWholeChainIsNamedIsMeant) {
  const HeadModel model(
      HeadModel::WorkingStorage("01  A.\n    05  X PIC X.\n    05  B.\n        10  X PIC X.\n01  X PIC X.\n"));
  EXPECT_EQ(model.Node(Resolve(model, "X").node).firstRow, 9U);
  EXPECT_EQ(model.Node(Resolve(model, "X", {"A"}).node).firstRow, 6U);
  EXPECT_EQ(model.Node(Resolve(model, "X", {"B"}).node).firstRow, 8U);
}

TEST(ProgramScope, AFileQualifiesItsRecords) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  R.
           05  X PIC X.
       FD  G.
       01  R.
           05  X PIC X.
)");
  EXPECT_EQ(Resolve(model, "R").found, Several);
  EXPECT_EQ(model.Node(Resolve(model, "R", {"G"}).node).firstRow, 9U);
  EXPECT_EQ(model.Node(Resolve(model, "X", {"F"}).node).firstRow, 7U);
  EXPECT_EQ(model.Node(model.Scope().ResolveFile(model.Symbol("G")).node).firstRow, 8U);
  EXPECT_EQ(model.Scope().ResolveFile(model.Symbol("R")).found, None);
}

TEST(ProgramScope, NamesOfTheProgramsAroundAreKnownWhenTheyAreGlobal) {
  const HeadModel outer(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       FILE SECTION.
       FD  F IS GLOBAL.
       01  R PIC X.
       FD  G.
       01  S PIC X.
       WORKING-STORAGE SECTION.
       01  A IS GLOBAL.
           05  B PIC X.
               88  C VALUE 'Y'.
       01  D PIC X.
       01  E PIC X GLOBAL.
)");
  SymbolTable symbols(CobolWordList());
  ProgramScope inner(outer.Model(), symbols, &outer.Scope());
  const auto found = [&](std::string_view name) { return inner.Resolve(outer.Symbol(name), {}).found; };
  EXPECT_EQ(found("A"), One);
  EXPECT_EQ(found("B"), One);
  EXPECT_EQ(found("C"), One);
  EXPECT_EQ(found("E"), One);
  EXPECT_EQ(found("R"), One);
  EXPECT_EQ(found("D"), None);
  EXPECT_EQ(found("S"), None);
  EXPECT_TRUE(inner.IsDeclared(outer.Symbol("B")));
  EXPECT_FALSE(inner.IsDeclared(outer.Symbol("D")));
  EXPECT_EQ(inner.ResolveFile(outer.Symbol("F")).found, One);
  EXPECT_EQ(inner.ResolveFile(outer.Symbol("G")).found, None);
}

TEST(ProgramScope, ANameOfTheProgramItselfHidesAGlobalOne) {
  const HeadModel outer(HeadModel::WorkingStorage("01  A PIC X GLOBAL.\n01  B PIC X.\n"));
  SymbolTable symbols(CobolWordList());
  ProgramScope inner(outer.Model(), symbols, &outer.Scope());
  inner.Declare(outer.Symbol("A"), outer.Item("B").node);
  EXPECT_EQ(inner.Resolve(outer.Symbol("A"), {}).node, outer.Item("B").node);
}

TEST(ProgramScope, ANameDeclaredTensOfThousandsOfTimesIsStillFoundQuickly) {
  constexpr int kGroups = 20'000;
  std::string lines;
  for (int group = 0; group < kGroups; ++group) {
    lines += "01  G" + std::to_string(group) + ".\n    05  X PIC X.\n";
  }
  const HeadModel model(HeadModel::WorkingStorage(lines));
  const auto start = std::chrono::steady_clock::now();
  for (int group = 0; group < kGroups; ++group) {
    ASSERT_EQ(Resolve(model, "X", {"G" + std::to_string(group)}).found, One);
    ASSERT_EQ(Resolve(model, "X").found, Several);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST(ProgramScope, WordsOfTheLanguageThatAreNotReservedCanBeDeclared) {
  const HeadModel model(HeadModel::WorkingStorage("01  WINDOW PIC X.\n01  PARSE.\n    05  CYCLE PIC X.\n"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Layout(), "01 WINDOW 0+1\n01 PARSE 0+1\n  05 CYCLE 0+1\n");
}

}  // namespace
}  // namespace qmrules::test
