#include "workbench/codemodel/modelbuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "workbench/codemodel/handmadetext.h"
#include "workbench/codemodel/showndiagnostic.h"

namespace qmrules::workbench::codemodel {
namespace {

using test::HandMadeText;
using ::testing::ElementsAre;

// "file:rows:characters" of a node.
std::string PlaceOf(const ModelData& model, NodeId node) {
  const NodeRecord& record = model.nodes[node];
  return model.files[record.file].name + ":" + std::to_string(record.firstRow) + "-" + std::to_string(record.lastRow) +
         ":" + std::to_string(record.position) + "-" + std::to_string(record.endPosition);
}

TEST(ModelBuilder, NodesAreNumberedInTheOrderOfTheTree) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "IF A\n  MOVE B\nEND-IF\n");
  hand.AddAll(0, "IF A MOVE B END-IF");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);

  EXPECT_EQ(builder.Current(), 0U);
  const NodeId statement = builder.Open(Entity::If, 0);
  const NodeId condition = builder.Leaf(Entity::Cond, 1, 1);
  const NodeId block = builder.Open(Entity::Block, 2);
  EXPECT_EQ(builder.Current(), block);
  EXPECT_EQ(builder.FirstToken(block), 2U);
  const NodeId move = builder.Open(Entity::Stat, 2);
  const NodeId variable = builder.Leaf(Entity::Var, 3, 3);
  builder.Close(move, 3);
  builder.Close(block, 3);
  EXPECT_EQ(builder.Current(), statement);
  builder.Close(statement, 4);
  EXPECT_EQ(builder.LastNode(), 5U);

  const ModelData model = builder.Take("COBOL");
  EXPECT_EQ(model.language, "COBOL");
  EXPECT_EQ(model.rows, 3U);
  ASSERT_EQ(model.nodes.size(), 6U);
  EXPECT_EQ(model.nodes[0].parent, 0U);
  EXPECT_EQ(model.nodes[statement].parent, 0U);
  EXPECT_EQ(model.nodes[statement].last, variable);
  EXPECT_EQ(model.nodes[condition].parent, statement);
  EXPECT_EQ(model.nodes[condition].last, condition);
  EXPECT_EQ(model.nodes[block].parent, statement);
  EXPECT_EQ(model.nodes[block].last, variable);
  EXPECT_EQ(model.nodes[move].parent, block);
  EXPECT_EQ(model.nodes[variable].parent, move);
  EXPECT_EQ(model.nodes[variable].order, 3U);
  EXPECT_EQ(PlaceOf(model, statement), "a.cbl:1-3:0-20");
  EXPECT_EQ(PlaceOf(model, condition), "a.cbl:1-1:3-4");
  EXPECT_EQ(PlaceOf(model, block), "a.cbl:2-2:7-13");
}

TEST(ModelBuilder, ANodeThatEndsInACopybookIsPlacedUpToTheCopyStatement) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "IF A\n  COPY\n  BRANCH.\nDISPLAY C");
  hand.AddFile("branch.cpy", "* comment\nMOVE 1 TO B\nEND-IF");
  hand.AddAll(0, "IF A");
  const std::uint32_t copy = hand.Include(1, 0, "COPY\n  BRANCH.");
  hand.AddAll(copy, "MOVE 1 TO B END-IF");
  hand.AddAll(0, "DISPLAY C");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);

  const NodeId statement = builder.Open(Entity::If, 0);
  const NodeId move = builder.Leaf(Entity::Stat, 2, 5);
  builder.Close(statement, 6);
  const NodeId across = builder.Leaf(Entity::Stat, 6, 8);
  const NodeId around = builder.Leaf(Entity::Par, 1, 7);
  const ModelData model = builder.Take("COBOL");

  EXPECT_EQ(PlaceOf(model, statement), "a.cbl:1-3:0-21");
  EXPECT_EQ(PlaceOf(model, move), "branch.cpy:2-2:10-21");
  EXPECT_EQ(PlaceOf(model, across), "a.cbl:2-4:7-31");
  EXPECT_EQ(PlaceOf(model, around), "a.cbl:1-4:3-29");
}

TEST(ModelBuilder, ANodeOverTwoCopybooksIsPlacedInTheInnermostFileThatHoldsBoth) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "START\nCOPY OUTER.\nEND");
  hand.AddFile("outer.cpy", "X\nCOPY DEEP.\nY\nCOPY SIDE.\n");
  hand.AddFile("deep.cpy", "COPY DEEPER.");
  hand.AddFile("deeper.cpy", "P Q");
  hand.AddFile("side.cpy", "R");
  hand.Add(0, "START");
  const std::uint32_t outer = hand.Include(1, 0, "COPY OUTER.");
  hand.Add(outer, "X");
  const std::uint32_t deep = hand.Include(2, outer, "COPY DEEP.");
  const std::uint32_t deeper = hand.Include(3, deep, "COPY DEEPER.");
  hand.AddAll(deeper, "P Q");
  hand.Add(outer, "Y");
  const std::uint32_t side = hand.Include(4, outer, "COPY SIDE.");
  hand.Add(side, "R");
  hand.Add(0, "END");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);

  const NodeId inDeeper = builder.Leaf(Entity::Stat, 2, 3);
  const NodeId deeperToSide = builder.Leaf(Entity::Stat, 3, 5);
  const NodeId deeperToEnd = builder.Leaf(Entity::Stat, 2, 6);
  const NodeId startToSide = builder.Leaf(Entity::Stat, 0, 5);
  const ModelData model = builder.Take("COBOL");

  EXPECT_EQ(PlaceOf(model, inDeeper), "deeper.cpy:1-1:0-3");
  EXPECT_EQ(PlaceOf(model, deeperToSide), "outer.cpy:2-4:2-25");
  EXPECT_EQ(PlaceOf(model, deeperToEnd), "a.cbl:2-3:6-21");
  EXPECT_EQ(PlaceOf(model, startToSide), "a.cbl:1-2:0-17");
}

TEST(ModelBuilder, PlacesCountCharactersNotBytes) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "* \xC3\xA9\xF0\x9F\x98\x80 \nMOVE '\xC3\xA9' TO B");
  hand.AddAll(0, "MOVE '\xC3\xA9' TO B");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  const NodeId statement = builder.Leaf(Entity::Stat, 0, 3);
  builder.Report(Severity::Warning, 3, "Odd.");
  const ModelData model = builder.Take("COBOL");
  EXPECT_EQ(PlaceOf(model, statement), "a.cbl:2-2:7-20");
  ASSERT_EQ(model.diagnostics.size(), 1U);
  EXPECT_EQ(Show(model.diagnostics[0]), "warning a.cbl:2:13: Odd.");
}

TEST(ModelBuilder, AContinuedTokenReachesToItsLastRow) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "DISPLAY 'AB\n  -  'CD'\nSTOP");
  hand.Add(0, "DISPLAY");
  hand.Add(0, "'AB\n  -  'CD'", kComposed);
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  const NodeId statement = builder.Leaf(Entity::Stat, 0, 1);
  EXPECT_EQ(PlaceOf(builder.Take("COBOL"), statement), "a.cbl:1-2:0-21");
}

TEST(ModelBuilder, TokensThatAreNotThereAreTakenForTheLastOne) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "STOP RUN\n");
  hand.AddAll(0, "STOP RUN");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  const NodeId over = builder.Leaf(Entity::Stat, 1, 1000);
  const NodeId beyond = builder.Leaf(Entity::Stat, 1000, 0);
  const NodeId backwards = builder.Leaf(Entity::Stat, 1, 0);
  builder.Report(Severity::Note, 1000, "Beyond.");
  const ModelData model = builder.Take("COBOL");
  EXPECT_EQ(PlaceOf(model, over), "a.cbl:1-1:5-9");
  EXPECT_EQ(PlaceOf(model, beyond), "a.cbl:1-1:9-9");
  EXPECT_EQ(PlaceOf(model, backwards), "a.cbl:1-1:5-8");
  EXPECT_EQ(Show(model.diagnostics.at(0)), "note a.cbl:1:10: Beyond.");
}

TEST(ModelBuilder, AGapMarksTheInnermostOpenStatement) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "IF A\n  MOVE B\n");
  hand.AddAll(0, "IF A MOVE B");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  builder.Report(Severity::Gap, 0, "Outside.");
  const NodeId statement = builder.Open(Entity::If, 0);
  const NodeId condition = builder.Open(Entity::Cond, 1);
  builder.Report(Severity::Gap, 1, "A is not declared.");
  builder.Close(condition, 1);
  const NodeId move = builder.Open(Entity::Stat, 2);
  builder.Report(Severity::Warning, 3, "Odd.");
  builder.Close(move, 3);
  builder.Close(statement, 3);
  const ModelData model = builder.Take("COBOL");
  EXPECT_EQ(model.nodes[statement].flags, kGap);
  EXPECT_EQ(model.nodes[condition].flags, 0);
  EXPECT_EQ(model.nodes[move].flags, 0);
  ASSERT_EQ(model.diagnostics.size(), 3U);
  EXPECT_EQ(Show(model.diagnostics[1]), "gap a.cbl:1:4: A is not declared.");
  EXPECT_EQ(Show(model.diagnostics[2]), "warning a.cbl:2:8: Odd.");
}

TEST(ModelBuilder, RecordsOfDeclarationsAndFilesAreTiedToTheirNodes) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "F D1 D2");
  hand.AddAll(0, "F D1 D2");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  const NodeId file = builder.Leaf(Entity::File, 0, 0);
  builder.AddFile(file).isSort = 1;
  const NodeId first = builder.Leaf(Entity::Decl, 1, 1);
  builder.AddDecl(first).size = 10;
  const NodeId second = builder.Leaf(Entity::Decl, 2, 2);
  builder.AddDecl(second).size = 20;
  builder.Decl(first).offset = 7;
  EXPECT_EQ(builder.Decl(second).size, 20U);
  EXPECT_EQ(builder.File(file).node, file);
  builder.Units().push_back({});
  const ModelData model = builder.Take("COBOL");
  ASSERT_EQ(model.decls.size(), 2U);
  EXPECT_EQ(model.decls[0].node, first);
  EXPECT_EQ(model.decls[0].offset, 7U);
  EXPECT_EQ(model.decls[1].node, second);
  EXPECT_EQ(model.nodes[second].detail, 1U);
  EXPECT_EQ(model.units.size(), 1U);
}

TEST(ModelBuilder, TakesAsManyNodesAsThereAre) {
  HandMadeText hand;
  hand.AddFile("a.cbl", std::string(20'000, 'A'));
  for (int token = 0; token < 20'000; ++token) hand.Add(0, "A");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  // Few nodes for many tokens at first, then many for few.
  for (std::uint32_t token = 0; token < 19'000; token += 10) builder.Leaf(Entity::Decl, token, token + 9);
  for (std::uint32_t token = 19'000; token < 20'000; ++token) {
    for (int node = 0; node < 50; ++node) builder.Leaf(Entity::Var, token, token);
  }
  ASSERT_EQ(builder.LastNode(), 51'900U);
  EXPECT_EQ(builder.FirstToken(1900), 18'990U);
  EXPECT_EQ(builder.FirstToken(51'900), 19'999U);
  const ModelData model = builder.Take("COBOL");
  EXPECT_EQ(PlaceOf(model, 1900), "a.cbl:1-1:18990-19000");
  EXPECT_LE(model.nodes.capacity(), model.nodes.size() * 2);
}

TEST(ModelBuilder, TextsOfSymbolsAreThoseOfThePool) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "A");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  const TextId text = builder.Text("TOTAL");
  EXPECT_EQ(builder.SymbolText(7000, "TOTAL"), text);
  EXPECT_EQ(builder.SymbolText(7000, "TOTAL"), text);
  EXPECT_NE(builder.SymbolText(3, "COUNT"), text);
  EXPECT_EQ(builder.TextOf(text), "TOTAL");
  EXPECT_THAT(builder.Take("COBOL").texts, ElementsAre("", "TOTAL", "COUNT"));
}

TEST(ModelBuilder, ClosingAnotherNodeThanTheInnermostIsADefectOfTheCaller) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "A");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  EXPECT_THROW(builder.Close(0, 0), std::logic_error);
  const NodeId outer = builder.Open(Entity::Stat, 0);
  const NodeId inner = builder.Open(Entity::Stat, 0);
  EXPECT_THROW(builder.Close(outer, 0), std::logic_error);
  EXPECT_THROW(builder.Take("COBOL"), std::logic_error);
  builder.Close(inner, 0);
  builder.Close(outer, 0);
  EXPECT_EQ(builder.Take("COBOL").nodes.size(), 3U);
}

TEST(ModelBuilder, FilesPastTheLastNumberAreShownAtTheCopyThatLeadsToThem) {
  HandMadeText hand;
  hand.AddFile("a.cbl", "COPY LAST.");
  for (int file = 1; file < 65'536; ++file) hand.AddFile("copybook", "X");
  const std::uint32_t copy = hand.Include(65'535, 0, "COPY LAST.");
  hand.Add(copy, "X");
  Diagnostics diagnostics;
  ModelBuilder builder(hand.End(), diagnostics);
  const NodeId statement = builder.Leaf(Entity::Stat, 0, 0);
  const ModelData model = builder.Take("COBOL");
  EXPECT_EQ(PlaceOf(model, statement), "a.cbl:1-1:0-10");
  ASSERT_EQ(model.diagnostics.size(), 1U);
  EXPECT_EQ(Show(model.diagnostics[0]),
            "gap a.cbl:0:0: The program has more than 65535 files. What stands in the others is shown at the COPY that "
            "leads to it.");
}

}  // namespace
}  // namespace qmrules::workbench::codemodel
