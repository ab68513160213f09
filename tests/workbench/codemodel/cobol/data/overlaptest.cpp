#include "workbench/codemodel/cobol/data/overlap.h"

#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::cobol::BytesOf;
using workbench::codemodel::cobol::Overlap;

TEST(Overlap, ItemsShareBytesWhenOneLiesInTheOther) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A.
    05  B PIC X(4).
    05  C PIC X(2) OCCURS 3.
    05  D PIC X.
01  E REDEFINES A.
    05  F PIC X(5).
    05  G PIC X(6).
01  H PIC X(11).
)"));
  EXPECT_TRUE(Overlap(model.Item("A"), model.Item("D")));
  EXPECT_TRUE(Overlap(model.Item("B"), model.Item("F")));
  EXPECT_TRUE(Overlap(model.Item("C"), model.Item("F")));
  EXPECT_TRUE(Overlap(model.Item("D"), model.Item("G")));
  EXPECT_FALSE(Overlap(model.Item("B"), model.Item("C")));
  EXPECT_FALSE(Overlap(model.Item("B"), model.Item("G")));
  EXPECT_FALSE(Overlap(model.Item("C"), model.Item("D")));
  EXPECT_FALSE(Overlap(model.Item("A"), model.Item("H")));
}

TEST(Overlap, ATableTakesTheBytesOfAllItsOccurrences) {
  const HeadModel model(HeadModel::WorkingStorage("01  A.\n    05  B PIC X(2) OCCURS 3.\n"));
  EXPECT_EQ(BytesOf(model.Item("B")).begin, 0U);
  EXPECT_EQ(BytesOf(model.Item("B")).end, 6U);
}

TEST(Overlap, RecordsOfOneFileShareTheirBytes) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  A PIC X(10).
       01  B.
           05  C PIC X(4).
       FD  G.
       01  D PIC X.
)");
  EXPECT_TRUE(Overlap(model.Item("A"), model.Item("C")));
  EXPECT_FALSE(Overlap(model.Item("A"), model.Item("D")));
}

}  // namespace
}  // namespace qmrules::test
