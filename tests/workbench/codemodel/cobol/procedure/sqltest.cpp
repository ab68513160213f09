#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using workbench::codemodel::Entity;

constexpr std::string_view kSqlData = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
           EXEC SQL INCLUDE SQLCA END-EXEC.
           EXEC SQL BEGIN DECLARE SECTION END-EXEC.
       01  HV-A PIC X(10).
       01  HV-B PIC X(10).
       01  HV-N PIC S9(04) COMP.
       01  IND PIC S9(04) COMP.
       01  GRP.
           05  FLD PIC X(10).
       01  OTHERS.
           05  FLD PIC X(10).
           EXEC SQL END DECLARE SECTION END-EXEC.
           EXEC SQL DECLARE C0 CURSOR FOR
               SELECT COL1 FROM T1 WHERE COL1 > :HV-A AND COL2 = :GRP.FLD
           END-EXEC.
)";

std::vector<std::string> References(const MarkedStatements& marked) {
  std::vector<std::string> names;
  for (const auto& node : marked.Nodes(Entity::Ref)) names.push_back(marked.Text(node.name));
  return names;
}

TEST(SqlStatements, SelectBringsDataIn) {
  const auto marked = ExpectMarked(kSqlData,
                                   "EXEC SQL\n"
                                   "  SELECT COL1, COL2 INTO :$IntoIn[[HV-A]], :$IntoIn[[HV-B]]:$OtherIn[[IND]]\n"
                                   "    FROM $Other[[OWNER.T1]] X, $Other[[T2]]\n"
                                   "   WHERE X.COL3 = :$KeyOut[[HV-N]] AND COL4 = 'A:B'\n"
                                   "END-EXEC.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT EXEC SQL SELECT"));
  EXPECT_THAT(References(marked), ElementsAre("OWNER.T1", "T2"));
}

TEST(SqlStatements, TakeIndicatorsInAllSpellings) {
  ExpectMarked(kSqlData,
               "EXEC SQL SELECT A, B, C INTO :$IntoIn[[HV-A]] :$OtherIn[[IND]],\n"
               "  :$IntoIn[[HV-B]] INDICATOR :$OtherIn[[IND]], :$IntoIn[[HV-N]] FROM $Other[[T1]] END-EXEC.");
}

TEST(SqlStatements, QualifyHostVariablesFromTheLeft) {
  const auto marked = ExpectMarked(kSqlData,
                                   "EXEC SQL SELECT A INTO :$IntoIn[[$Qualifier[[GRP]].FLD]] FROM $Other[[T1]] "
                                   "WHERE B = :$KeyOut[[$Qualifier[[OTHERS]].FLD]]\nEND-EXEC.");
  const auto variables = marked.Nodes(Entity::Var);
  EXPECT_NE(variables[0].declaration, variables[1].declaration);
}

TEST(SqlStatements, ReadVariablesOfSubqueries) {
  ExpectMarked(kSqlData,
               "EXEC SQL SELECT MAX(A) INTO :$IntoIn[[HV-N]] FROM $Other[[T1]]\n"
               "  JOIN $Other[[T2]] ON T1.K = :$KeyOut[[HV-A]]\n"
               "  WHERE EXTRACT(YEAR FROM D) = 1 AND B IN (SELECT B FROM $Other[[T3]] WHERE C = :$KeyOut[[HV-B]])\n"
               "END-EXEC.");
}

TEST(SqlStatements, InsertUpdateAndDeleteReadTheirVariables) {
  const auto marked =
      ExpectMarked(kSqlData,
                   "EXEC SQL INSERT INTO $Other[[T1]] (A, B) VALUES (:$SourceOut[[HV-A]],:$SourceOut[[HV-B]]\n"
                   "  :$OtherOut[[IND]]) END-EXEC.\n"
                   "EXEC SQL UPDATE $Other[[T1]] SET A = :$SourceOut[[HV-A]], B = B + 1\n"
                   "  WHERE C = :$KeyOut[[HV-B]] END-EXEC.\n"
                   "EXEC SQL UPDATE $Other[[T1]] SET A = 1 WHERE CURRENT OF $Other[[C0]] END-EXEC.\n"
                   "EXEC SQL DELETE FROM $Other[[T1]] WHERE A = :$KeyOut[[HV-A]] END-EXEC.");
  EXPECT_THAT(marked.Statements(), ElementsAre("IOSTAT EXEC SQL INSERT", "IOSTAT EXEC SQL UPDATE",
                                               "IOSTAT EXEC SQL UPDATE", "IOSTAT EXEC SQL DELETE"));
}

TEST(SqlCursors, AreDeclaredOpenedFetchedAndClosed) {
  const auto marked =
      ExpectMarked(kSqlData,
                   "EXEC SQL DECLARE $Other[[C1]] CURSOR WITH HOLD FOR\n"
                   "  SELECT A FROM $Other[[T1]] WHERE B = :$KeyOut[[HV-B]] FOR UPDATE OF A END-EXEC.\n"
                   "EXEC SQL OPEN $Other[[C1]] END-EXEC.\n"
                   "EXEC SQL FETCH $Other[[C1]] INTO :$IntoIn[[HV-A]], :$IntoIn[[$Qualifier[[GRP]].FLD]] END-EXEC\n"
                   "EXEC SQL FETCH NEXT ROWSET FROM $Other[[C1]] FOR :$SourceOut[[HV-N]] ROWS\n"
                   "  INTO :$IntoIn[[HV-A]] END-EXEC.\n"
                   "EXEC SQL CLOSE $Other[[C1]] END-EXEC.");
  EXPECT_THAT(marked.Statements(),
              ElementsAre("STAT EXEC SQL DECLARE CURSOR", "IOSTAT EXEC SQL OPEN", "IOSTAT EXEC SQL FETCH",
                          "IOSTAT EXEC SQL FETCH", "IOSTAT EXEC SQL CLOSE"));
  EXPECT_THAT(marked.Implicit(), ElementsAre("Key HV-B OUT"));
}

TEST(SqlCursors, ReadTheVariablesOfTheirQueryWhenTheyAreOpened) {
  const auto marked = ExpectMarked(kSqlData, "EXEC SQL OPEN $Other[[C0]] END-EXEC.");
  EXPECT_THAT(marked.Implicit(), ElementsAre("Key HV-A OUT", "Key FLD OUT"));
}

TEST(SqlStatements, CallPassesItsParametersBothWays) {
  const auto marked = ExpectMarked(kSqlData,
                                   "EXEC SQL CALL $Program[[OWNER.PROC1]] (:$ArgumentInOut[[HV-A]], "
                                   ":$ArgumentInOut[[HV-N]]:$OtherInOut[[IND]])\nEND-EXEC.\n"
                                   "EXEC SQL CALL :$ProgramOut[[HV-B]] (:$ArgumentInOut[[HV-A]]) END-EXEC.");
  EXPECT_EQ(marked.Statements()[0], "IOSTAT EXEC SQL CALL");
}

TEST(SqlStatements, SetBringsDataIn) {
  ExpectMarked(kSqlData,
               "EXEC SQL SET :$IntoIn[[HV-A]] = CURRENT DATE END-EXEC.\n"
               "EXEC SQL SET :$IntoIn[[HV-A]] = UPPER(:$SourceOut[[HV-B]]), :$IntoIn[[HV-N]] = 1 END-EXEC.\n"
               "EXEC SQL VALUES (CURRENT TIMESTAMP) INTO :$IntoIn[[HV-A]] END-EXEC.\n"
               "EXEC SQL GET DIAGNOSTICS :$IntoIn[[HV-N]] = ROW_COUNT, :$IntoIn[[HV-A]] = LAST_ID END-EXEC.\n"
               "EXEC SQL GET DIAGNOSTICS CONDITION 1 :$IntoIn[[HV-A]] = MESSAGE_TEXT END-EXEC.\n"
               "EXEC SQL ASSOCIATE LOCATORS (:$IntoIn[[HV-N]]) WITH PROCEDURE P1 END-EXEC.\n"
               "EXEC SQL DESCRIBE S1 INTO :$IntoIn[[HV-A]] END-EXEC.");
}

TEST(SqlStatements, PrepareAndExecuteReadTheirText) {
  const auto marked = ExpectMarked(kSqlData,
                                   "EXEC SQL PREPARE S1 FROM :$SourceOut[[HV-A]] END-EXEC.\n"
                                   "EXEC SQL EXECUTE S1 USING :$SourceOut[[HV-B]] END-EXEC.\n"
                                   "EXEC SQL EXECUTE IMMEDIATE :$SourceOut[[HV-A]] END-EXEC.");
  EXPECT_THAT(marked.Statements(),
              ElementsAre("STAT EXEC SQL PREPARE", "IOSTAT EXEC SQL EXECUTE", "IOSTAT EXEC SQL EXECUTE IMMEDIATE"));
}

TEST(SqlStatements, WheneverNamesParagraphs) {
  const auto marked = ExpectMarked(kSqlData,
                                   "EXEC SQL WHENEVER SQLERROR GO TO $Procedure[[MAIN]] END-EXEC.\n"
                                   "EXEC SQL WHENEVER NOT FOUND GOTO :$Procedure[[MAIN]] END-EXEC.\n"
                                   "EXEC SQL WHENEVER SQLWARNING CONTINUE END-EXEC.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT EXEC SQL WHENEVER SQLERROR", "STAT EXEC SQL WHENEVER NOT FOUND",
                                               "STAT EXEC SQL WHENEVER SQLWARNING"));
  for (const auto& node : marked.Nodes(Entity::Ref)) {
    EXPECT_EQ(marked.Model().nodes[node.declaration].entity, Entity::Par);
  }
}

TEST(SqlStatements, HaveNothingOfTheProgramInTransactionsAndDeclarations) {
  const auto marked =
      ExpectMarked(kSqlData,
                   "EXEC SQL COMMIT WORK END-EXEC.\n"
                   "EXEC SQL ROLLBACK END-EXEC.\n"
                   "EXEC SQL DECLARE $Other[[T1]] TABLE (A CHAR(10) NOT NULL, B DECIMAL(9,2)) END-EXEC.\n"
                   "EXEC SQL CONNECT TO DB1 USER :$SourceOut[[HV-A]] END-EXEC.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT EXEC SQL COMMIT", "STAT EXEC SQL ROLLBACK",
                                               "STAT EXEC SQL DECLARE TABLE", "STAT EXEC SQL CONNECT"));
}

TEST(SqlStatements, TellOfUnknownAndAmbiguousVariables) {
  const MarkedStatements marked(kSqlData, "EXEC SQL DELETE FROM T1 WHERE A = :NIL\n  OR B = :FLD END-EXEC.");
  EXPECT_THAT(marked.Diagnostics(), ElementsAre("1:36 NIL is not declared.", "2:11 FLD is ambiguous; qualify it."));
}

}  // namespace
}  // namespace qmrules::test
