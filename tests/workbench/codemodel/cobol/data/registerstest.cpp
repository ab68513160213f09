#include "workbench/codemodel/cobol/data/registers.h"

#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;

constexpr std::string_view kHead =
    "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. P.\n       DATA DIVISION.\n"
    "       WORKING-STORAGE SECTION.\n       01  SORT-RETURN PIC X.\n";

// Uses the registers by a node each, as statements do, and makes them.
std::string RegistersFor(std::string_view procedure, const std::vector<std::string_view>& names) {
  const HeadModel model(std::string(kHead) + std::string(procedure));
  std::vector<NodeId> vars;
  for (const std::string_view name : names) {
    const std::uint32_t symbol = model.Symbol(name);
    if (!model.Scope().IsRegister(symbol)) return std::string(name) + " is no register.";
    vars.push_back(model.Model().Leaf(Entity::Var, 0, 0));
    model.Scope().UseRegister(vars.back(), symbol);
  }
  const NodeId before = model.Model().LastNode();
  model.Scope().MakeRegisters(0);
  for (const NodeId var : vars) EXPECT_GT(model.Node(var).declaration, before);
  std::string layout = model.Layout();
  return layout.substr(layout.find('\n') + 1);
}

TEST(Registers, AreMadeAsFarAsTheyAreUsed) {
  EXPECT_EQ(RegistersFor("       PROCEDURE DIVISION. ADD RETURN-CODE TO TALLY.\n", {"RETURN-CODE", "TALLY", "TALLY"}),
            "01 RETURN-CODE 0+2\n01 TALLY 0+4\n");
  EXPECT_EQ(RegistersFor("       PROCEDURE DIVISION.\n", {}), "");
}

TEST(Registers, ThatTheProgramDeclaresAreItsOwn) {
  EXPECT_EQ(RegistersFor("       PROCEDURE DIVISION. MOVE 1 TO SORT-RETURN.\n", {"SORT-RETURN"}),
            "SORT-RETURN is no register.");
}

TEST(Registers, OfCicsLieInTheirBlock) {
  EXPECT_EQ(RegistersFor("       PROCEDURE DIVISION. IF EIBCALEN = 0 AND EIBRESP = 1 EXEC CICS RETURN END-EXEC.\n",
                         {"EIBRESP", "EIBCALEN"}),
            "01 DFHEIBLK 0+85\n  02 EIBCALEN 24+2\n  02 EIBRESP 76+4\n");
}

TEST(Registers, OfSqlLieInTheirBlock) {
  EXPECT_EQ(RegistersFor("       PROCEDURE DIVISION.\n           EXEC SQL COMMIT END-EXEC\n"
                         "           IF SQLCODE = 0 MOVE SQLERRD (3) TO SQLERRMC\n               SQLSTATE.\n",
                         {"SQLCODE", "SQLERRMC", "SQLERRD", "SQLSTATE"}),
            "01 SQLCA 0+136\n  02 SQLCODE 12+4\n  02 SQLERRM 16+72\n    03 SQLERRMC 18+70\n  02 SQLERRD 96+4*6\n"
            "  02 SQLEXT 128+8\n    03 SQLSTATE 131+5\n");
}

TEST(Registers, OfAnEnvironmentThatTheProgramDoesNotUseAreNone) {
  EXPECT_EQ(RegistersFor("       PROCEDURE DIVISION. DISPLAY SQLCODE.\n", {"SQLCODE"}), "SQLCODE is no register.");
}

TEST(Registers, OfFilesAndReportsAreOneForEach) {
  const HeadModel model(std::string(kHead) +
                        "       PROCEDURE DIVISION. ADD LINAGE-COUNTER OF F TO LINAGE-COUNTER OF G.\n");
  const NodeId first = model.Model().Leaf(Entity::Var, 0, 0);
  const NodeId second = model.Model().Leaf(Entity::Var, 0, 0);
  const NodeId third = model.Model().Leaf(Entity::Var, 0, 0);
  const std::uint32_t symbol = model.Symbol("LINAGE-COUNTER");
  model.Scope().UseRegister(first, symbol, model.Symbol("F"));
  model.Scope().UseRegister(second, symbol, model.Symbol("G"));
  model.Scope().UseRegister(third, symbol, model.Symbol("F"));
  model.Scope().MakeRegisters(0);
  EXPECT_EQ(model.Node(first).declaration, model.Node(third).declaration);
  EXPECT_NE(model.Node(first).declaration, model.Node(second).declaration);
}

TEST(Registers, DebugItemHoldsItsParts) {
  EXPECT_EQ(RegistersFor("       PROCEDURE DIVISION. DISPLAY DEBUG-ITEM DEBUG-NAME DEBUG-SUB-1.\n",
                         {"DEBUG-ITEM", "DEBUG-NAME", "DEBUG-SUB-1"}),
            "01 DEBUG-ITEM 0+155\n  02 DEBUG-NAME 7+30\n  02 DEBUG-SUB-1 38+5\n");
}

}  // namespace
}  // namespace qmrules::test
