#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;

bool Has(const DeclRecord& item, DeclFlags flag) {
  return (item.flags & flag) != 0;
}

TEST(DataClauses, StandInAnyOrder) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A.
    05  B PIC S9(3) COMP-3 VALUE 5 OCCURS 4 SYNC.
    05  C OCCURS 4 TIMES USAGE IS COMPUTATIONAL-3
        VALUE IS ZERO PICTURE IS S9(3).
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Layout(), "01 A 0+16\n  05 B 0+2*4\n  05 C 8+2*4\n");
}

TEST(DataClauses, FlagsTellWhatAnItemIs) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A PIC X(3) JUST RIGHT IS EXTERNAL.
01  B PIC S9(3) SIGN LEADING SEPARATE IS GLOBAL.
01  C PIC 9(3) BLANK WHEN ZERO.
01  D PIC Z9.
01  E PIC A(3).
01  F PIC S9(4) COMP SYNC.
01  G PIC X ANY LENGTH.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_TRUE(Has(model.Item("A"), kJustified) && Has(model.Item("A"), kExternal));
  EXPECT_TRUE(Has(model.Item("B"), kSigned) && Has(model.Item("B"), kSignSeparate) &&
              Has(model.Item("B"), kSignLeading));
  EXPECT_TRUE(Has(model.Item("B"), kGlobal) && Has(model.Item("B"), kNumeric));
  EXPECT_TRUE(Has(model.Item("C"), kBlankWhenZero) && !Has(model.Item("C"), kSigned));
  EXPECT_TRUE(Has(model.Item("D"), kEdited));
  EXPECT_TRUE(Has(model.Item("E"), kAlphabetic));
  EXPECT_TRUE(Has(model.Item("F"), kSynchronized));
  EXPECT_TRUE(Has(model.Item("G"), kDynamic));
}

TEST(DataClauses, PictureAndValueAreKeptAsWritten) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A PIC S9(5)V99 VALUE -1.50.
    88  B VALUES ARE 1 THRU 5, 7 9.
01  C PIC X(3) VALUE ALL '*'.
01  D PIC X(2) VALUE SPACES.
)"));
  EXPECT_EQ(model.Text(model.Item("A").picture), "S9(5)V99");
  EXPECT_EQ(model.Item("A").digits, 7);
  EXPECT_EQ(model.Item("A").scale, 2);
  EXPECT_EQ(model.Text(model.Item("B").value), "1 THRU 5 7 9");
  EXPECT_EQ(model.Text(model.Item("C").value), "ALL '*'");
  EXPECT_EQ(model.Tree(Entity::DataSection),
            "DECL A\n  CONST -1.50 Value\n  DECL B\n    CONST 1 Value\n    CONST 5 Thru\n    CONST 7 Value\n"
            "    CONST 9 Value\nDECL C\n  CONST ALL '*' Value\nDECL D\n  CONST SPACES Value\n");
}

TEST(DataClauses, AConditionNameHasAValueForFalse) {
  const HeadModel model(HeadModel::WorkingStorage("01  A PIC X.\n    88  B VALUE 'Y' WHEN SET TO FALSE IS 'N'.\n"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Tree(Entity::DataSection), "DECL A\n  DECL B\n    CONST 'Y' Value\n    CONST 'N' Other\n");
}

TEST(DataClauses, OccursNamesItsLengthKeysAndIndexes) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  N PIC 99.
01  A.
    05  B OCCURS 2 TO 10 TIMES DEPENDING ON N OF N2 OF GG
          ASCENDING KEY IS C DESCENDING D
          INDEXED BY I, J.
        10  C PIC X.
        10  D PIC X.
01  GG.
    05  N2.
        10  N PIC 99.
01  OTHER-TABLE.
    05  E OCCURS 3 ASCENDING KEY C.
        10  C PIC X.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  const DeclRecord table = model.Item("B");
  EXPECT_EQ(table.occursLeast, 2U);
  EXPECT_EQ(table.occurs, 10U);
  EXPECT_EQ(table.dependingOn, model.Item("N", {"N2"}).node);
  EXPECT_TRUE(Has(table, kOccurs));
  EXPECT_EQ(model.Tree(Entity::DataSection),
            "DECL N\nDECL A\n  DECL B\n    VAR N OUT DependingOn @14\n      REF N2 Qualifier @13\n      REF GG "
            "Qualifier @12\n"
            "    VAR C OUT Key @10\n    VAR D OUT Key @11\n"
            "    DECL I\n    DECL J\n    DECL C\n    DECL D\nDECL GG\n  DECL N2\n    DECL N\nDECL OTHER-TABLE\n"
            "  DECL E\n    VAR C OUT Key @17\n    DECL C\n");
}

TEST(DataClauses, RedefinesAndRenamesAreReferences) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A.
    05  B PIC X.
    05  C REDEFINES B PIC 9.
    66  D RENAMES B THROUGH C OF A.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Tree(Entity::DataSection),
            "DECL A\n  DECL B\n  DECL C\n    REF B Redefined @6\n  DECL D\n    REF B Renamed @6\n    REF C Renamed "
            "@7\n      REF A Qualifier @5\n");
}

TEST(DataClauses, ConstantsStandForNumbersInOtherClauses) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
78  MOST VALUE 5.
01  WIDTH CONSTANT AS 3.
01  A.
    05  B PIC X(WIDTH) OCCURS MOST.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Item("B").size, 3U);
  EXPECT_EQ(model.Item("B").occurs, 5U);
  EXPECT_EQ(model.Scope().Special(model.Symbol("MOST")),
            workbench::codemodel::cobol::ProgramScope::SpecialKind::Constant);
}

TEST(DataClauses, AConstantAmongTheItemsOfAGroupDoesNotEndIt) {
  const HeadModel model(HeadModel::WorkingStorage("01  A.\n    05  B PIC X.\n78  C VALUE 1.\n    05  D PIC X.\n"));
  EXPECT_EQ(model.Item("A").size, 2U);
  EXPECT_EQ(model.Item("D").offset, 1U);
}

TEST(DataClauses, GroupUsageAndOthersWithoutBytesArePassedOver) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
01  A GROUP-USAGE IS NATIONAL.
    05  B PIC N(2).
01  C PIC X VOLATILE.
01  D PIC 9(6) DATE FORMAT YYXXXX.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Item("A").size, 4U);
}

TEST(DataClauses, SectionsTellTheirItemsApart) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       77  A PIC X.
       LOCAL-STORAGE SECTION.
       77  B PIC X.
       LINKAGE SECTION.
       77  C PIC X.
)");
  EXPECT_EQ(model.Item("A").section, static_cast<std::uint8_t>(DataSectionKind::WorkingStorage));
  EXPECT_EQ(model.Item("B").section, static_cast<std::uint8_t>(DataSectionKind::LocalStorage));
  EXPECT_EQ(model.Item("C").section, static_cast<std::uint8_t>(DataSectionKind::Linkage));
  EXPECT_EQ(
      model.Tree(Entity::Data),
      "DATASECTION WORKING-STORAGE\n  DECL A\nDATASECTION LOCAL-STORAGE\n  DECL B\nDATASECTION LINKAGE\n  DECL C\n");
}

TEST(DataClauses, EmbeddedStatementsArePassedOver) {
  const HeadModel model(HeadModel::WorkingStorage(R"(
    EXEC SQL BEGIN DECLARE SECTION END-EXEC.
01  A PIC X.
    EXEC SQL END DECLARE SECTION END-EXEC.
01  B PIC X.
    EXEC SQL DECLARE T TABLE (C CHAR(3) NOT NULL) END-EXEC.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Layout(), "01 A 0+1\n01 B 0+1\n");
}

}  // namespace
}  // namespace qmrules::test
