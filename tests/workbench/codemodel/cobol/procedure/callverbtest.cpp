#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using workbench::codemodel::Entity;

constexpr std::string_view kCallData = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC X(10).
       01  B PIC X(10).
       01  N PIC 9(02).
       01  PGM PIC X(08).
       01  PP PROCEDURE-POINTER.
       01  P POINTER.
       01  O OBJECT REFERENCE.
       LINKAGE SECTION.
       01  L1 PIC X(10).
       01  L2 PIC X(10).
)";

std::vector<std::string> CalledPrograms(const MarkedStatements& marked) {
  std::vector<std::string> programs;
  for (const auto& port : marked.Nodes(Entity::Port)) {
    const bool isCall = (port.flags & (workbench::codemodel::kPortUsing | workbench::codemodel::kPortReturn)) == 0;
    if (isCall) programs.push_back(marked.Text(port.detail));
  }
  return programs;
}

TEST(CallVerb, NamesTheProgramOfALiteral) {
  const auto marked =
      ExpectMarked(kCallData, "CALL $Program[['Sub1']].\nCALL $ProgramOut[[PGM]].\nCALL $ProgramOut[[PP]].");
  EXPECT_EQ(marked.Statements()[0], "PORT CALL");
  EXPECT_THAT(CalledPrograms(marked), ElementsAre("SUB1", "", ""));
}

TEST(CallVerb, ReadsAndWritesArgumentsByReference) {
  ExpectMarked(kCallData, "CALL $Program[['SUB']] USING $ArgumentInOut[[A]] BY REFERENCE $ArgumentInOut[[B]].");
}

TEST(CallVerb, KeepsAPassingPhraseForAllArgumentsBehindIt) {
  ExpectMarked(kCallData,
               "CALL $Program[['SUB']] USING BY CONTENT $ArgumentOutByContent[[A]] $ArgumentOutByContent[[B]]\n"
               "    BY VALUE $ArgumentOutByContent[[N]] $ArgumentByContent[[1]]\n"
               "    REFERENCE $ArgumentInOut[[A]].");
}

TEST(CallVerb, TakesLengthsAddressesAndWhatIsLeftOut) {
  ExpectMarked(
      kCallData,
      "CALL $Program[['SUB']] USING $ArgumentOmitted[[OMITTED]] BY CONTENT $LengthOfNoneByContent[[LENGTH OF A]]\n"
      "    BY VALUE SIZE $Other[[4]] $ArgumentOutByContent[[N]]\n"
      "    BY VALUE $AddressOfNoneByContent[[ADDRESS OF A]].");
}

TEST(CallVerb, BringsInWhatTheProgramReturns) {
  ExpectMarked(kCallData,
               "CALL $Program[['SUB']] USING $ArgumentInOut[[A]] RETURNING $ReturningIn[[N]].\n"
               "CALL $Program[['SUB']] GIVING $ReturningIn[[N]].");
}

TEST(CallVerb, HasBranchesForAnException) {
  const auto marked = ExpectMarked(kCallData,
                                   "CALL $ProgramOut[[PGM]] USING $ArgumentInOut[[A]]\n"
                                   "    ON EXCEPTION CONTINUE NOT ON EXCEPTION CONTINUE END-CALL.\n"
                                   "CALL $ProgramOut[[PGM]] ON OVERFLOW CONTINUE.");
  EXPECT_THAT(marked.Statements(), ElementsAre("PORT CALL", "IF If exception", "STAT CONTINUE", "STAT CONTINUE",
                                               "PORT CALL", "IF If overflow", "STAT CONTINUE"));
}

TEST(CallVerb, TellsWhatItLacks) {
  EXPECT_THAT(MarkedStatements(kCallData, "CALL USING A.").Diagnostics(),
              ElementsAre("1:6 CALL lacks the name of a program."));
  EXPECT_THAT(MarkedStatements(kCallData, "CALL 'X' USING.").Diagnostics(),
              ElementsAre("1:15 USING lacks its arguments."));
}

TEST(CancelVerb, NamesItsPrograms) {
  const auto marked = ExpectMarked(kCallData, "CANCEL $Program[['SUB']] $ProgramOut[[PGM]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT CANCEL"));
}

TEST(EntryVerb, IsAnEntryWithParametersOfItsOwn) {
  const auto marked = ExpectMarked(kCallData,
                                   "ENTRY $Program[['ALT']] USING $ArgumentIn[[L1]] $ArgumentOut[[L2]].\n"
                                   "MOVE $SourceOut[[L1]] TO $TargetIn[[L2]].");
  EXPECT_EQ(marked.Statements()[0], "PORT ENTRY");
  const auto ports = marked.Nodes(Entity::Port);
  EXPECT_NE(ports[1].flags & workbench::codemodel::kPortUsing, 0);
  EXPECT_EQ(marked.Text(ports[1].detail), "ALT");
}

TEST(InvokeVerb, CallsAMethod) {
  const auto marked = ExpectMarked(kCallData,
                                   "INVOKE $OtherOut[[O]] $Program[['run']] USING BY VALUE $ArgumentOutByContent[[N]]\n"
                                   "    RETURNING $ReturningIn[[A]].\n"
                                   "INVOKE $Other[[SELF]] $ProgramOut[[PGM]].");
  EXPECT_EQ(marked.Statements()[0], "PORT INVOKE");
  EXPECT_THAT(CalledPrograms(marked), ElementsAre("RUN", ""));
}

TEST(RaiseVerb, NamesItsException) {
  ExpectMarked(kCallData, "RAISE EXCEPTION $Other[[EC-USER-FAULT]].");
}

TEST(ResumeVerb, GoesOnBehindTheStatement) {
  ExpectMarked(kCallData, "RESUME AT NEXT STATEMENT.\nRESUME $Procedure[[MAIN]].");
}

}  // namespace
}  // namespace qmrules::test
