// The flow of files, SORT, declaratives, and embedded CICS and SQL.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/flow/flowprogram.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view kExceptionFiles = R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. PROBE.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO 'F'.
           SELECT G ASSIGN TO 'G'.
           SELECT W ASSIGN TO 'W'.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  F-REC PIC X.
       FD  G.
       01  G-REC PIC X.
       SD  W.
       01  W-REC PIC X.
       WORKING-STORAGE SECTION.
       01  A PIC 9.
       01  B PIC 9.
       PROCEDURE DIVISION.
)";

FlowProgram ExceptionProgram(std::string_view procedures) {
  return FlowProgram(std::string(kExceptionFiles) + std::string(procedures));
}

TEST(ExceptionFlow, AtEndAndItsOpposite) {
  const auto program = ExceptionProgram(R"(       MAIN-PARA.
           READ F
               AT END MOVE 1 TO A
               NOT AT END MOVE 2 TO A
           END-READ
           STOP RUN.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 22 READ
22 READ > 23 If at end
22 completed > 24 MOVE
23 If at end > 23 AT END
23 AT END > 23 yes, 23 no
23 yes > exception 23 MOVE
23 no > 22 completed
23 MOVE > 26 leave
24 MOVE > 26 leave
end MAIN-PARA > leave
26 leave
)");
}

TEST(ExceptionFlow, AnErrorThatNoPhraseIsAboutPassesThemByWhereTheStatusIsLookedAt) {
  std::string text(kExceptionFiles);
  text.replace(text.find("ASSIGN TO 'F'."), 14, "ASSIGN TO 'F' STATUS B.");
  const FlowProgram program(text + R"(       MAIN-PARA.
           READ F
               AT END MOVE 1 TO A
               NOT AT END MOVE 2 TO A
           END-READ
           STOP RUN.
)");
  EXPECT_THAT(program.AfterNamed("22 READ"), ElementsAre("22 chance"));
  EXPECT_THAT(program.AfterNamed("22 chance"), ElementsAre("23 If at end", "exception 26 leave"));
}

TEST(ExceptionFlow, SortRunsItsProceduresInTheirOrder) {
  const auto program = ExceptionProgram(R"(       MAIN-PARA.
           SORT W ON ASCENDING KEY W-REC
               INPUT PROCEDURE IN-PARA THRU IN-END
               OUTPUT PROCEDURE OUT-PARA.
           SORT W ON ASCENDING KEY W-REC USING F GIVING G.
           MERGE W ASCENDING W-REC USING F G
               OUTPUT PROCEDURE OUT-PARA.
           STOP RUN.
       IN-PARA.
           RELEASE W-REC.
       IN-END.
           EXIT.
       OUT-PARA.
           RETURN W AT END GO TO OUT-PARA.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 22 SORT
22 SORT > 22 call IN-PARA THRU IN-END
22 call IN-PARA THRU IN-END > 22 call OUT-PARA
22 call OUT-PARA > 25 SORT
25 SORT > 26 MERGE
26 MERGE > 26 call OUT-PARA
26 call OUT-PARA > 28 leave
end MAIN-PARA > start IN-PARA
28 leave
start IN-PARA > 30 RELEASE
30 RELEASE > end IN-PARA
end IN-PARA > start IN-END
start IN-END > 32 EXIT
end IN-END > start OUT-PARA
32 EXIT > end IN-END
start OUT-PARA > 34 RETURN
34 RETURN > 34 If at end
34 completed > end OUT-PARA
34 If at end > 34 AT END
34 AT END > 34 yes, 34 no
34 yes > exception 34 GO TO
34 no > 34 completed
34 GO TO > jump start OUT-PARA
end OUT-PARA > leave
)");
  EXPECT_THAT(program.Gaps(), IsEmpty());
}

TEST(ExceptionFlow, UseProceduresRunBehindStatementsOnTheirFiles) {
  const auto program = ExceptionProgram(R"(       DECLARATIVES.
       F-ERROR SECTION.
           USE AFTER ERROR PROCEDURE ON F.
       F-PARA.
           MOVE 1 TO A.
       OUT-ERROR SECTION.
           USE AFTER ERROR PROCEDURE ON OUTPUT.
       IN-ERROR SECTION.
           USE AFTER ERROR PROCEDURE ON INPUT.
       END DECLARATIVES.
       MAIN-PART SECTION.
       MAIN-PARA.
           $open^OPEN INPUT F OUTPUT G.
           $read^READ F AT END MOVE 2 TO A.
           $write^WRITE G-REC.
           $move^MOVE 3 TO A.
           STOP RUN.
)");
  EXPECT_THAT(program.AfterNamed("entry"), ElementsAre("start MAIN-PART"));
  // The declaratives end where they end: nothing falls out of them.
  EXPECT_THAT(program.AfterNamed("end F-PARA"), ElementsAre("end F-ERROR"));
  EXPECT_THAT(program.After(program.Flow().Ranges()[1].exit), IsEmpty());
  EXPECT_THAT(program.After(program.Flow().Ranges()[3].exit), IsEmpty());
  EXPECT_THAT(program.After("open"), ElementsAre("33 chance"));
  EXPECT_THAT(program.AfterNamed("33 chance"),
              ElementsAre("exception 33 call F-ERROR", "exception 33 call OUT-ERROR", "34 READ"));
  EXPECT_THAT(program.AfterNamed("33 call OUT-ERROR"), ElementsAre("34 READ"));
  // Another error than the end of the file.
  EXPECT_THAT(program.AfterNamed("34 chance"), ElementsAre("exception 34 call F-ERROR", "34 If at end"));
  EXPECT_THAT(program.AfterNamed("34 call F-ERROR"), ElementsAre("35 WRITE"));
  EXPECT_THAT(program.AfterNamed("34 MOVE"), ElementsAre("35 WRITE"));
  EXPECT_THAT(program.AfterNamed("35 chance"), ElementsAre("exception 35 call OUT-ERROR", "36 MOVE"));
  EXPECT_THAT(program.After("move"), ElementsAre("37 leave"));
  EXPECT_THAT(program.Gaps(), IsEmpty());
}

TEST(ExceptionFlow, DebuggingSectionsAreAGap) {
  const auto program = ExceptionProgram(R"(       DECLARATIVES.
       DEBUG-PART SECTION.
           USE FOR DEBUGGING ON ALL PROCEDURES.
       END DECLARATIVES.
       MAIN-PART SECTION.
       MAIN-PARA.
           STOP RUN.
)");
  EXPECT_THAT(program.Gaps(), ElementsAre("debugging 23 USE"));
  EXPECT_THAT(program.AfterNamed("entry"), ElementsAre("start MAIN-PART"));
}

TEST(ExceptionFlow, ResumeLeavesAUseProcedure) {
  const auto program = ExceptionProgram(R"(       DECLARATIVES.
       F-ERROR SECTION.
           USE AFTER ERROR PROCEDURE ON F.
           IF A = 1 $next^RESUME NEXT STATEMENT.
           $label^RESUME AT MAIN-PARA.
       END DECLARATIVES.
       MAIN-PART SECTION.
       MAIN-PARA.
           STOP RUN.
)");
  EXPECT_THAT(program.After("next"), ElementsAre("jump end F-ERROR"));
  EXPECT_THAT(program.After("label"), ElementsAre("jump start MAIN-PARA"));
}

TEST(ExceptionFlow, OneOfSeveralFailuresLeavesTheStatementUncompleted) {
  const auto program = ExceptionProgram(R"(       MAIN-PARA.
           WRITE G-REC
               INVALID KEY MOVE 1 TO A
               NOT INVALID KEY MOVE 2 TO A
               AT END-OF-PAGE MOVE 3 TO A
               NOT AT END-OF-PAGE MOVE 4 TO A.
           STOP RUN.
)");
  EXPECT_THAT(program.AfterNamed("23 no"), ElementsAre("25 If end of page"));
  EXPECT_THAT(program.AfterNamed("23 MOVE"), ElementsAre("27 leave"));
  EXPECT_THAT(program.AfterNamed("25 no"), ElementsAre("22 completed"));
  EXPECT_THAT(program.AfterNamed("22 completed"), ElementsAre("23 chance"));
  EXPECT_THAT(program.AfterNamed("23 chance"), ElementsAre("24 MOVE", "25 chance"));
  EXPECT_THAT(program.AfterNamed("25 chance"), ElementsAre("26 MOVE", "27 leave"));
}

TEST(ExceptionFlow, XmlParsePerformsItsProcedureForEachEvent) {
  const auto program = ExceptionProgram(R"(       MAIN-PARA.
           XML PARSE A PROCESSING PROCEDURE EVENT-PARA
               ON EXCEPTION MOVE 1 TO B.
           STOP RUN.
       EVENT-PARA.
           CONTINUE.
)");
  EXPECT_THAT(program.AfterNamed("22 XML PARSE"), ElementsAre("22 chance"));
  EXPECT_THAT(program.AfterNamed("22 chance"), ElementsAre("22 call EVENT-PARA", "23 If exception"));
  EXPECT_THAT(program.AfterNamed("22 call EVENT-PARA"), ElementsAre("loop 22 XML PARSE"));
}

constexpr std::string_view kMonitorData = "01  A PIC 9.\n01  R PIC S9(8) COMP.\n";

TEST(MonitorFlow, CommandsCanLeadToTheLabelsOfHandle) {
  const auto program = FlowProgram::Of(kMonitorData, R"(MAIN-PARA.
    EXEC CICS HANDLE CONDITION NOTFND(GONE-PARA) ERROR(BAD-PARA) END-EXEC
    EXEC CICS HANDLE AID PF3(KEY-PARA) END-EXEC
    $read^EXEC CICS READ FILE('F') INTO(A) RIDFLD(A) END-EXEC
    $asked^EXEC CICS READ FILE('F') INTO(A) RIDFLD(A) RESP(R) END-EXEC
    $receive^EXEC CICS RECEIVE INTO(A) END-EXEC
    $move^MOVE 1 TO A
    $return^EXEC CICS RETURN END-EXEC.
GONE-PARA.
    CONTINUE.
BAD-PARA.
    CONTINUE.
KEY-PARA.
    GOBACK.
)");
  EXPECT_EQ(program.Listing(), R"(entry > start MAIN-PARA
leave
start MAIN-PARA > 9 EXEC CICS HANDLE CONDITION
9 chance > jump start GONE-PARA, jump start BAD-PARA
9 EXEC CICS HANDLE CONDITION > 10 EXEC CICS HANDLE AID
10 chance > jump start KEY-PARA
10 EXEC CICS HANDLE AID > 11 EXEC CICS READ
11 EXEC CICS READ > 11 chance
11 chance > exception 9 chance, 12 EXEC CICS READ
12 EXEC CICS READ > 13 EXEC CICS RECEIVE
13 EXEC CICS RECEIVE > 13 chance
13 chance > exception 9 chance, exception 10 chance, 14 MOVE
14 MOVE > 15 EXEC CICS RETURN
end MAIN-PARA > start GONE-PARA
15 EXEC CICS RETURN > 15 chance
15 chance > 15 leave, exception 9 chance
15 leave
start GONE-PARA > 17 CONTINUE
end GONE-PARA > start BAD-PARA
17 CONTINUE > end GONE-PARA
start BAD-PARA > 19 CONTINUE
end BAD-PARA > start KEY-PARA
19 CONTINUE > end BAD-PARA
start KEY-PARA > 21 leave
end KEY-PARA > leave
21 leave
)");
}

TEST(MonitorFlow, LeavingCommandsEndTheProgram) {
  const auto program = FlowProgram::Of(kMonitorData, R"(MAIN-PARA.
    IF A = 1 $xctl^EXEC CICS XCTL PROGRAM('P') END-EXEC END-IF
    IF A = 2 $asked^EXEC CICS XCTL PROGRAM('P') RESP(R) END-EXEC END-IF
    IF A = 3 $abend^EXEC CICS ABEND ABCODE('X') END-EXEC END-IF
    $link^EXEC CICS LINK PROGRAM('P') END-EXEC
    $return^EXEC CICS RETURN END-EXEC
    MOVE 1 TO A.
)");
  EXPECT_EQ(program.Describe(program.PointAt("xctl")), "9 leave");
  EXPECT_THAT(program.AfterNamed("10 chance"), ElementsAre("10 leave", "11 IF"));
  EXPECT_EQ(program.Describe(program.PointAt("abend")), "11 leave");
  EXPECT_THAT(program.After("link"), ElementsAre("13 leave"));
  EXPECT_THAT(program.After("return"), IsEmpty());
}

TEST(MonitorFlow, AbendsLeadToTheirHandlerOrAreAGap) {
  const auto program = FlowProgram::Of(kMonitorData, R"(MAIN-PARA.
    EXEC CICS HANDLE ABEND LABEL(BAD-PARA) END-EXEC
    $other^EXEC CICS HANDLE ABEND PROGRAM('P') END-EXEC
    $abend^EXEC CICS ABEND ABCODE('X') END-EXEC
    MOVE 1 TO A.
BAD-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.AfterNamed("11 chance"), ElementsAre("11 leave", "exception 9 chance"));
  EXPECT_THAT(program.AfterNamed("9 chance"), ElementsAre("jump start BAD-PARA"));
  EXPECT_THAT(program.Gaps(),
              ElementsAre("handled elsewhere 10 EXEC CICS HANDLE ABEND", "any statement 9 EXEC CICS HANDLE ABEND"));
}

TEST(SqlFlow, WheneverHoldsForWhatStandsBehindIt) {
  const auto program = FlowProgram::Of(kMonitorData, R"(MAIN-PARA.
    $before^EXEC SQL DELETE FROM T END-EXEC
    EXEC SQL WHENEVER NOT FOUND GO TO GONE-PARA END-EXEC
    EXEC SQL WHENEVER SQLERROR DO PERFORM BAD-PARA END-EXEC
    $both^EXEC SQL DELETE FROM T END-EXEC
    EXEC SQL WHENEVER NOT FOUND CONTINUE END-EXEC
    $one^EXEC SQL DELETE FROM T END-EXEC
    EXEC SQL WHENEVER SQLERROR CONTINUE END-EXEC
    $none^EXEC SQL DELETE FROM T END-EXEC
    GOBACK.
BAD-PARA.
    CONTINUE.
GONE-PARA.
    GOBACK.
)");
  EXPECT_THAT(program.After("before"), ElementsAre("10 EXEC SQL WHENEVER NOT FOUND"));
  EXPECT_THAT(program.After("both"), ElementsAre("12 chance"));
  EXPECT_THAT(program.AfterNamed("12 chance"),
              ElementsAre("exception start GONE-PARA", "exception 12 call BAD-PARA", "13 EXEC SQL WHENEVER NOT FOUND"));
  EXPECT_THAT(program.AfterNamed("12 call BAD-PARA"), ElementsAre("13 EXEC SQL WHENEVER NOT FOUND"));
  EXPECT_THAT(program.AfterNamed("14 chance"),
              ElementsAre("exception 14 call BAD-PARA", "15 EXEC SQL WHENEVER SQLERROR"));
  EXPECT_THAT(program.After("none"), ElementsAre("17 leave"));
}

}  // namespace
}  // namespace qmrules::test
