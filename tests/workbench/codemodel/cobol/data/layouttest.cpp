#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::DataUsage;
using workbench::codemodel::DeclRecord;

std::string LayoutOf(std::string_view lines) {
  const HeadModel model(HeadModel::WorkingStorage(lines));
  EXPECT_EQ(model.Diagnostics(), "");
  return model.Layout();
}

TEST(Layout, ItemsOfAGroupLieOneBehindTheOther) {
  EXPECT_EQ(LayoutOf("01  A.\n  05  B PIC X(3).\n  05  C.\n    10  D PIC 99.\n    10  E PIC A.\n  05  FILLER PIC X.\n"),
            "01 A 0+7\n  05 B 0+3\n  05 C 3+3\n    10 D 3+2\n    10 E 5+1\n  05 - 6+1\n");
}

TEST(Layout, EachUsageHasItsSize) {
  EXPECT_EQ(LayoutOf(R"(
77  A PIC S9(4) COMP.
77  B PIC S9(9) BINARY.
77  C PIC S9(18) COMP-4.
77  D PIC 9(5) COMP-5.
77  E PIC S9(5) COMP-3.
77  F PIC S9(6) PACKED-DECIMAL.
77  G COMP-1.
77  H USAGE IS COMP-2.
77  I USAGE INDEX.
77  J POINTER.
77  K PROCEDURE-POINTER.
77  L PIC N(3).
77  M PIC N(3) USAGE NATIONAL.
77  N PIC G(3) DISPLAY-1.
77  O PIC 9(5) COMP-X.
77  P PIC 9(5) COMP-6.
77  Q BINARY-LONG UNSIGNED.
77  R OBJECT REFERENCE.
77  S PIC S9(5) DISPLAY.
77  T PIC X(4) COMP-X.
)"),
            "77 A 0+2\n77 B 0+4\n77 C 0+8\n77 D 0+4\n77 E 0+3\n77 F 0+4\n77 G 0+4\n77 H 0+8\n77 I 0+4\n77 J 0+8\n"
            "77 K 0+8\n77 L 0+6\n77 M 0+6\n77 N 0+6\n77 O 0+3\n77 P 0+3\n77 Q 0+4\n77 R 0+8\n77 S 0+5\n77 T 0+4\n");
}

TEST(Layout, ScalingPositionsTakeNoStorage) {
  EXPECT_EQ(LayoutOf("77  A PIC S99PPP.\n77  B PIC PP99 COMP-3.\n77  C PIC 9(4)V99 COMP.\n"),
            "77 A 0+2\n77 B 0+2\n77 C 0+4\n");
}

TEST(Layout, ASeparateSignTakesOneByte) {
  EXPECT_EQ(LayoutOf("77  A PIC S9(4) SIGN IS LEADING SEPARATE CHARACTER.\n77  B PIC S9(4) TRAILING.\n"
                     "77  C PIC S9(4) TRAILING SEPARATE.\n"),
            "77 A 0+5\n77 B 0+4\n77 C 0+5\n");
}

TEST(Layout, SignAndUsageOfAGroupHoldForItsItems) {
  const std::string text = HeadModel::WorkingStorage(R"(
01  A SIGN LEADING SEPARATE.
    05  B PIC S9(4).
    05  C PIC S9(4) SIGN TRAILING.
    05  D PIC 9(4).
01  E COMP-3.
    05  F.
        10  G PIC S9(5).
    05  H PIC S9(5) DISPLAY.
)");
  const HeadModel model(text);
  EXPECT_EQ(model.Layout(),
            "01 A 0+13\n  05 B 0+5\n  05 C 5+4\n  05 D 9+4\n01 E 0+8\n  05 F 0+3\n    10 G 0+3\n  05 H 3+5\n");
  EXPECT_EQ(model.Item("G").usage, DataUsage::Packed);
  EXPECT_EQ(model.Item("F").usage, DataUsage::Group);
}

TEST(Layout, SynchronizedItemsLieOnTheirBoundaries) {
  EXPECT_EQ(LayoutOf(R"(
01  A.
    05  B PIC X.
    05  C PIC S9(4) COMP SYNC.
    05  D PIC X.
    05  E PIC S9(9) COMP SYNCHRONIZED RIGHT.
    05  F PIC X.
    05  G COMP-2 SYNC.
    05  H PIC X.
    05  I PIC S9(5) COMP-3 SYNC.
)"),
            "01 A 0+28\n  05 B 0+1\n  05 C 2+2\n  05 D 4+1\n  05 E 8+4\n  05 F 12+1\n  05 G 16+8\n  05 H 24+1\n  05 I "
            "25+3\n");
}

TEST(Layout, OccurrencesOfAGroupWithSynchronizedItemsAllLieOnBoundaries) {
  EXPECT_EQ(LayoutOf(R"(
01  A.
    05  B PIC X.
    05  C OCCURS 3.
        10  D PIC X.
        10  E PIC S9(9) COMP SYNC.
        10  F PIC X.
    05  G PIC X.
)"),
            "01 A 0+26\n  05 B 0+1\n  05 C 1+8*3\n    10 D 1+1\n    10 E 4+4\n    10 F 8+1\n  05 G 25+1\n");
}

TEST(Layout, ATableCountsWithAllItsOccurrences) {
  EXPECT_EQ(LayoutOf("01  A.\n  05  B OCCURS 3 TIMES.\n    10  C PIC XX OCCURS 2.\n    10  D PIC X.\n  05  E PIC X.\n"),
            "01 A 0+16\n  05 B 0+5*3\n    10 C 0+2*2\n    10 D 4+1\n  05 E 15+1\n");
}

TEST(Layout, ARedefiningItemLiesOverTheRedefined) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A.
    05  B PIC X(4).
    05  C REDEFINES B.
        10  D PIC X.
        10  E PIC X(2).
    05  F REDEFINES B PIC X(6).
    05  G PIC X.
01  H REDEFINES A PIC X(20).
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Layout(),
            "01 A 0+7\n  05 B 0+4\n  05 C 0+3\n    10 D 0+1\n    10 E 1+2\n  05 F 0+6\n  05 G 6+1\n01 H 0+20\n");
  EXPECT_EQ(model.Item("H").area, model.Item("A").node);
  EXPECT_EQ(model.Item("E").area, model.Item("A").node);
  EXPECT_EQ(model.Item("F").redefines, model.Item("B").node);
}

TEST(Layout, RenamesTakesTheBytesOfWhatItRenames) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A.
    05  B PIC X(4).
    05  C.
        10  D PIC X(2).
        10  E PIC X(3).
    05  F PIC X(5).
    66  G RENAMES D THRU F.
    66  H RENAMES C.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Item("G").offset, 4U);
  EXPECT_EQ(model.Item("G").size, 10U);
  EXPECT_EQ(model.Item("G").redefines, model.Item("D").node);
  EXPECT_EQ(model.Item("G").renamesThrough, model.Item("F").node);
  EXPECT_EQ(model.Item("G").usage, DataUsage::Renames);
  EXPECT_EQ(model.Item("H").offset, 4U);
  EXPECT_EQ(model.Item("H").size, 5U);
}

TEST(Layout, AConditionNameHasTheBytesOfItsItem) {
  const HeadModel model(
      HeadModel::WorkingStorage("01  A.\n    05  B PIC X(3).\n    05  C PIC X(2).\n        88  D VALUE 'AB'.\n    05  "
                                "E.\n        88  F VALUE 'X'.\n"
                                "        10  G PIC X.\n"));
  EXPECT_EQ(model.Item("D").offset, 3U);
  EXPECT_EQ(model.Item("D").size, 2U);
  EXPECT_EQ(model.Item("D").area, model.Item("A").node);
  EXPECT_EQ(model.Item("F").offset, 5U);
  EXPECT_EQ(model.Item("F").size, 1U);
}

TEST(Layout, AnIndexHasStorageOfItsOwn) {
  const HeadModel model(HeadModel::WorkingStorage("01  A.\n    05  B PIC X OCCURS 5 INDEXED BY I J.\n"));
  const DeclRecord index = model.Item("J");
  EXPECT_EQ(index.area, index.node);
  EXPECT_EQ(index.size, 4U);
  EXPECT_EQ(index.flags & workbench::codemodel::kIndexName, workbench::codemodel::kIndexName);
  EXPECT_EQ(model.Node(index.node).parent, model.Item("B").node);
}

TEST(Layout, ATablePastAllMemoryIsCutWithAGap) {
  std::string lines = "01  A.\n";
  for (int level = 2; level < 12; ++level) {
    lines += "  " + std::to_string(level + 10) + "  T" + std::to_string(level) + " OCCURS 4000000000.\n";
  }
  const HeadModel model(HeadModel::WorkingStorage(lines + "    40  X PIC X(2000000000).\n"));
  EXPECT_EQ(model.Diagnostics(), "gap 15:10 The table is too large to be laid out.\n");
  EXPECT_EQ(model.Item("A").size, 1ULL << 48);
}

}  // namespace
}  // namespace qmrules::test
