#include "cli/clifixture.h"

namespace qmrules::test {
namespace {

using nlohmann::json;

constexpr const char* kRates = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. RATES.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  FEE          PIC 9(3) VALUE 7.
       01  KIND         PIC X.
       01  PARMS.
           05  AMOUNT   PIC 9(5).
           05  TAX      PIC 9(5).
       01  TAX-DIGITS REDEFINES PARMS.
           05  DIGIT    PIC 9 OCCURS 10.
       01  TOTAL        PIC 9(6).
       PROCEDURE DIVISION.
       MAIN-PART.
           ACCEPT KIND
           IF KIND = 'A'
             ADD 1 TO FEE
           END-IF
           MOVE FEE TO AMOUNT
           CALL 'TAXES' USING PARMS
           CALL 'PBX01' USING KIND
           IF KIND NOT = 'B'
             MOVE 0 TO DIGIT (10)
           END-IF
           ADD AMOUNT TAX GIVING TOTAL
           DISPLAY TOTAL
           STOP RUN.
)";

constexpr const char* kTaxes = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. TAXES.
       DATA DIVISION.
       LINKAGE SECTION.
       01  P.
           05  P-AMOUNT  PIC 9(5).
           05  P-TAX     PIC 9(5).
       PROCEDURE DIVISION USING P.
       TAX-PART.
           DIVIDE P-AMOUNT BY 5 GIVING P-TAX
           GOBACK.
)";

class ChainCommands : public CliTest {
 protected:
  ChainCommands() {
    MakeWorkspace();
    folder_.Write("cobol/rates.cbl", kRates);
    folder_.Write("cobol/taxes.cbl", kTaxes);
    Do({"scan"});
  }
};

TEST_F(ChainCommands, WhyShowsTheChainWithItsConditionsAcrossPrograms) {
  EXPECT_EQ(
      Do({"why", "cobol/rates.cbl:26", "TOTAL"}),
      "TOTAL  cobol/rates.cbl:26  DISPLAY TOTAL\n"
      "  TOTAL <- cobol/rates.cbl:25  ADD AMOUNT TAX GIVING TOTAL  [computation]\n"
      "    AMOUNT <- cobol/rates.cbl:19  MOVE FEE TO AMOUNT  [move]\n"
      "      FEE <- cobol/rates.cbl:5  01  FEE          PIC 9(3) VALUE 7.  [initial value]\n"
      "      FEE <- cobol/rates.cbl:17  ADD 1 TO FEE  [computation]\n"
      "          when KIND = 'A'  (16)\n"
      "        FEE <- cobol/rates.cbl:5  01  FEE          PIC 9(3) VALUE 7.  [initial value]\n"
      "    TAX <- cobol/rates.cbl:23  MOVE 0 TO DIGIT (10)  [constant move, byte 5, through DIGIT, which overlaps it]\n"
      "        when KIND NOT = 'B'  (22)\n"
      "    P-TAX <- cobol/taxes.cbl:10  DIVIDE P-AMOUNT BY 5 GIVING P-TAX  [computation]\n"
      "        through the call at cobol/rates.cbl:20\n"
      "      P-AMOUNT <- cobol/taxes.cbl:5  01  P.  [parameter]\n"
      "      PARMS <- cobol/rates.cbl:19  MOVE FEE TO AMOUNT  [move, bytes 1 to 5]  (see above)\n"
      "          through the call at cobol/rates.cbl:20\n");
}

TEST_F(ChainCommands, UsesShowsWhatComesOfADefinition) {
  EXPECT_EQ(Do({"uses", "rates.cbl:17", "FEE"}),
            "FEE  cobol/rates.cbl:17  ADD 1 TO FEE\n"
            "  FEE -> cobol/rates.cbl:19  MOVE FEE TO AMOUNT\n"
            "    AMOUNT -> cobol/rates.cbl:25  ADD AMOUNT TAX GIVING TOTAL\n"
            "      TOTAL -> cobol/rates.cbl:26  DISPLAY TOTAL\n"
            "    P-AMOUNT -> cobol/taxes.cbl:10  DIVIDE P-AMOUNT BY 5 GIVING P-TAX\n"
            "        through the call at cobol/rates.cbl:20\n"
            "      TAX -> cobol/rates.cbl:25  ADD AMOUNT TAX GIVING TOTAL  (see above)\n"
            "          through the call at cobol/rates.cbl:20\n");
}

TEST_F(ChainCommands, AProgramThatIsNotThereIsToldBelowTheTree) {
  EXPECT_EQ(Do({"why", "rates.cbl:22", "KIND"}),
            "KIND  cobol/rates.cbl:22  IF KIND NOT = 'B'\n"
            "  KIND <- cobol/rates.cbl:15  ACCEPT KIND  [input]\n"
            "  KIND <- cobol/rates.cbl:21  CALL 'PBX01' USING KIND  [call, perhaps]\n"
            "    KIND <- cobol/rates.cbl:15  ACCEPT KIND  [input]\n"
            "\n"
            "What is not known:\n"
            "  cobol/rates.cbl:21  PBX01 is not in the workspace: what it does with KIND is not known.\n");
}

TEST_F(ChainCommands, ConditionsOfTheWholeTreeStandAboveIt) {
  folder_.Write("cobol/shared.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. SHARED.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A            PIC 9.
       01  B            PIC 9.
       PROCEDURE DIVISION.
       MAIN-PART.
           ACCEPT A
           IF NOT A = 1
             GOBACK
           END-IF
           MOVE 3 TO A
           IF A > 2
             MOVE A TO B
           END-IF
           DISPLAY B
           GOBACK.
)");
  Do({"scan"});
  EXPECT_EQ(Do({"why", "shared.cbl:15", "B"}),
            "B  cobol/shared.cbl:15  MOVE A TO B\n"
            "  All of it runs only\n"
            "      when A = 1  (10)\n"
            "  B <- cobol/shared.cbl:15  MOVE A TO B\n"
            "      when A > 2  (14)\n"
            "    A <- cobol/shared.cbl:13  MOVE 3 TO A  [constant move]\n");
}

constexpr const char* kGroups = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. GROUPS.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  FIRST-GROUP.
           05  A        PIC X(3).
           05  B        PIC X(3).
       01  SECOND-GROUP.
           05  C        PIC X(3).
           05  D        PIC X(3).
       01  E            PIC X(6).
       PROCEDURE DIVISION.
       MAIN-PART.
           ACCEPT A
           ACCEPT B
           MOVE FIRST-GROUP TO SECOND-GROUP
           STRING C D DELIMITED BY SIZE INTO E
           DISPLAY E
           MOVE SPACES TO E
           STOP RUN.
)";

TEST_F(ChainCommands, AGroupMoveIsFollowedAgainForOtherBytes) {
  folder_.Write("cobol/groups.cbl", kGroups);
  Do({"scan"});
  EXPECT_EQ(Do({"why", "groups.cbl:18", "E"}),
            "E  cobol/groups.cbl:18  DISPLAY E\n"
            "  E <- cobol/groups.cbl:17  STRING C D DELIMITED BY SIZE INTO E  [computation]\n"
            "    C <- cobol/groups.cbl:16  MOVE FIRST-GROUP TO SECOND-GROUP  [move]\n"
            "      FIRST-GROUP <- cobol/groups.cbl:14  ACCEPT A  [input, bytes 1 to 3]\n"
            "    D <- cobol/groups.cbl:16  MOVE FIRST-GROUP TO SECOND-GROUP  [move]\n"
            "      FIRST-GROUP <- cobol/groups.cbl:15  ACCEPT B  [input, bytes 4 to 6]\n");
}

TEST_F(ChainCommands, AValueThatNothingUsesIsToldSo) {
  folder_.Write("cobol/groups.cbl", kGroups);
  Do({"scan"});
  EXPECT_EQ(Do({"uses", "groups.cbl:19", "E"}),
            "E  cobol/groups.cbl:19  MOVE SPACES TO E\n"
            "  is used nowhere\n");
}

TEST_F(ChainCommands, APlaceIsOneLine) {
  for (const char* place : {"rates.cbl", "rates.cbl:", "rates.cbl:0", "rates.cbl:-1", "rates.cbl:22-23", ":22"}) {
    const auto run = Run({"why", place, "KIND"});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.err, "qmrules: \"" + std::string(place) +
                           "\" names no line: write FILE:LINE, with lines from 1, as \"billing.cbl:437\".\n"
                           "See \"qmrules why --help\".\n");
  }
}

TEST_F(ChainCommands, DepthCutsTheTree) {
  EXPECT_EQ(Do({"why", "rates.cbl:26", "TOTAL", "--depth", "1"}),
            "TOTAL  cobol/rates.cbl:26  DISPLAY TOTAL\n"
            "  TOTAL <- cobol/rates.cbl:25  ADD AMOUNT TAX GIVING TOTAL  [computation]  (goes on)\n");
}

TEST_F(ChainCommands, JsonHasPlacesKindsConditionsAndGaps) {
  const json why = DoJson({"why", "rates.cbl:22", "KIND"});
  ASSERT_EQ(why.size(), 1U);
  EXPECT_EQ(why[0]["occurrence"]["row"], 22);
  ASSERT_EQ(why[0]["chain"].size(), 2U);
  EXPECT_EQ(why[0]["chain"][0]["kind"], "input");
  EXPECT_EQ(why[0]["chain"][0]["row"], 15);
  EXPECT_EQ(why[0]["chain"][1]["kind"], "call");
  EXPECT_EQ(why[0]["chain"][1]["perhaps"], true);
  ASSERT_EQ(why[0]["gaps"].size(), 1U);
  EXPECT_EQ(why[0]["gaps"][0]["gap"], "PBX01 is not in the workspace: what it does with KIND is not known.");
  const json uses = DoJson({"uses", "rates.cbl:17", "FEE", "--depth", "1"});
  ASSERT_EQ(uses[0]["chain"].size(), 1U);
  EXPECT_EQ(uses[0]["chain"][0]["name"], "FEE");
  EXPECT_EQ(uses[0]["chain"][0]["row"], 19);
  EXPECT_EQ(uses[0]["chain"][0]["goesOn"], true);
  EXPECT_EQ(uses[0]["chain"][0]["conditions"], json::array());
}

TEST_F(ChainCommands, ANameThatIsNotThereIsToldWithThoseThatAre) {
  const auto run = Run({"why", "rates.cbl:25", "FEE"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "qmrules: The statement at rates.cbl:25 has no FEE; it has AMOUNT, TAX, TOTAL.\n");
  EXPECT_EQ(Run({"why", "rates.cbl:3", "FEE"}).err, "qmrules: There is no statement with variables at rates.cbl:3.\n");
}

TEST_F(ChainCommands, AFileThatIsNoSourceIsAnError) {
  const auto run = Run({"uses", "copy/rates.cpy:25", "FEE"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "qmrules: copy/rates.cpy is no source of the project; \"qmrules source list\" shows its sources, \"qmrules "
            "scan\" finds new ones. For a line of a copybook, name the program with --program.\n");
}

TEST_F(ChainCommands, ALineOfACopybookNeedsTheProgram) {
  folder_.Write("copybooks/ADDFEE.cpy", "           ADD 2 TO FEE.\n");
  folder_.Write("cobol/copying.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. COPYING.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  FEE          PIC 9(3) VALUE 7.
       PROCEDURE DIVISION.
       MAIN-PART.
           COPY ADDFEE.
           DISPLAY FEE.
           STOP RUN.
)");
  Do({"scan"});
  const std::string uses = Do({"uses", "ADDFEE.cpy:1", "FEE", "--program", "COPYING"});
  EXPECT_NE(uses.find("FEE -> cobol/copying.cbl:9  DISPLAY FEE."), std::string::npos) << uses;
}

TEST_F(ChainCommands, ACallOfAnEntryLeadsIntoTheProgramThatHasIt) {
  folder_.Write("cobol/caller.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. CALLER.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A            PIC 9.
       PROCEDURE DIVISION.
       MAIN-PART.
           CALL 'EXTRA' USING A
           DISPLAY A
           GOBACK.
)");
  folder_.Write("cobol/holder.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. HOLDER.
       DATA DIVISION.
       LINKAGE SECTION.
       01  X            PIC 9.
       PROCEDURE DIVISION.
       MAIN-PART.
           ENTRY 'EXTRA' USING X.
           MOVE 7 TO X
           GOBACK.
)");
  Do({"scan"});
  EXPECT_EQ(Do({"why", "caller.cbl:9", "A"}),
            "A  cobol/caller.cbl:9  DISPLAY A\n"
            "  X <- cobol/holder.cbl:9  MOVE 7 TO X  [constant move]\n"
            "      through the call at cobol/caller.cbl:8\n");
  EXPECT_EQ(Do({"uses", "holder.cbl:9", "X"}),
            "X  cobol/holder.cbl:9  MOVE 7 TO X\n"
            "  A -> cobol/caller.cbl:9  DISPLAY A\n"
            "      through the call at cobol/caller.cbl:8\n");
}

constexpr const char* kTwoItems = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  GIVEN        PIC 9.
       01  GOT          PIC 9.
)";

constexpr const char* kTakesTwo = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  KEPT         PIC 9.
       LINKAGE SECTION.
       01  X            PIC 9.
       01  Y            PIC 9.
       PROCEDURE DIVISION USING X Y.
       MAIN-PART.
)";

// RATING and RENEWAL each call MID, which calls LOW.
class ChainsOfTwoCallers : public CliTest {
 protected:
  ChainsOfTwoCallers() {
    MakeWorkspace();
    const std::string calls = R"(       PROCEDURE DIVISION.
       MAIN-PART.
           ACCEPT GIVEN
           CALL 'MID' USING GIVEN GOT
           DISPLAY GOT
)";
    Add("rating", kTwoItems, calls);
    Add("renewal", kTwoItems, calls);
    Add("mid", kTakesTwo, "           CALL 'LOW' USING X Y\n");
  }
  void Add(const std::string& name, const std::string& data, const std::string& procedures) {
    const std::string header = "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " + name + ".\n";
    folder_.Write("cobol/" + name + ".cbl", header + data + procedures + "           GOBACK.\n");
  }
};

TEST_F(ChainsOfTwoCallers, AChainComesOutOfNestedCallsWhereItHasGoneIn) {
  Add("low", kTakesTwo, "           ADD 1 X GIVING Y\n");
  Do({"scan"});
  EXPECT_EQ(Do({"uses", "rating.cbl:9", "GIVEN"}),
            "GIVEN  cobol/rating.cbl:9  ACCEPT GIVEN\n"
            "  X -> cobol/low.cbl:11  ADD 1 X GIVING Y\n"
            "      through the call at cobol/rating.cbl:10\n"
            "      through the call at cobol/mid.cbl:11\n"
            "    GOT -> cobol/rating.cbl:11  DISPLAY GOT\n"
            "        through the call at cobol/mid.cbl:11\n"
            "        through the call at cobol/rating.cbl:10\n");
  EXPECT_EQ(Do({"why", "renewal.cbl:11", "GOT"}),
            "GOT  cobol/renewal.cbl:11  DISPLAY GOT\n"
            "  Y <- cobol/low.cbl:11  ADD 1 X GIVING Y  [computation]\n"
            "      through the call at cobol/renewal.cbl:10\n"
            "      through the call at cobol/mid.cbl:11\n"
            "    X <- cobol/low.cbl:7  01  X            PIC 9.  [parameter]\n"
            "    X <- cobol/mid.cbl:7  01  X            PIC 9.  [parameter]\n"
            "        through the call at cobol/mid.cbl:11\n"
            "    GIVEN <- cobol/renewal.cbl:9  ACCEPT GIVEN  [input]\n"
            "        through the call at cobol/mid.cbl:11\n"
            "        through the call at cobol/renewal.cbl:10\n");
}

TEST_F(ChainsOfTwoCallers, AChainThatBeginsInACalledProgramComesFromAllCallers) {
  Add("low", kTakesTwo, "           ADD 1 X GIVING Y\n");
  Do({"scan"});
  const std::string why = Do({"why", "low.cbl:11", "X"});
  EXPECT_NE(why.find("GIVEN <- cobol/rating.cbl:9"), std::string::npos) << why;
  EXPECT_NE(why.find("GIVEN <- cobol/renewal.cbl:9"), std::string::npos) << why;
}

TEST_F(ChainsOfTwoCallers, WhatAProgramKeepsForItsNextCallComesOutAtAllCallers) {
  Add("low", kTakesTwo, "           MOVE KEPT TO Y\n           MOVE X TO KEPT\n");
  Do({"scan"});
  EXPECT_EQ(Do({"uses", "rating.cbl:9", "GIVEN"}),
            "GIVEN  cobol/rating.cbl:9  ACCEPT GIVEN\n"
            "  X -> cobol/low.cbl:12  MOVE X TO KEPT\n"
            "      through the call at cobol/rating.cbl:10\n"
            "      through the call at cobol/mid.cbl:11\n"
            "    KEPT -> cobol/low.cbl:11  MOVE KEPT TO Y  [when the program is called again]\n"
            "      GOT -> cobol/rating.cbl:11  DISPLAY GOT\n"
            "          through the call at cobol/mid.cbl:11\n"
            "          through the call at cobol/rating.cbl:10\n"
            "      GOT -> cobol/renewal.cbl:11  DISPLAY GOT\n"
            "          through the call at cobol/mid.cbl:11\n"
            "          through the call at cobol/renewal.cbl:10\n");
  const std::string why = Do({"why", "rating.cbl:11", "GOT"});
  EXPECT_NE(why.find("GIVEN <- cobol/rating.cbl:9"), std::string::npos) << why;
  EXPECT_NE(why.find("GIVEN <- cobol/renewal.cbl:9"), std::string::npos) << why;
}

TEST_F(ChainsOfTwoCallers, AProgramThatIsCalledAgainIsShownInsideOnce) {
  Add("low", kTakesTwo, "           ADD 1 X GIVING KEPT\n           MOVE KEPT TO Y\n");
  Add("twice", kTwoItems, R"(       PROCEDURE DIVISION.
       MAIN-PART.
           ACCEPT GIVEN
           CALL 'LOW' USING GIVEN GOT
           CALL 'LOW' USING GOT GIVEN
           DISPLAY GIVEN
)");
  Do({"scan"});
  EXPECT_EQ(Do({"uses", "twice.cbl:9", "GIVEN"}),
            "GIVEN  cobol/twice.cbl:9  ACCEPT GIVEN\n"
            "  X -> cobol/low.cbl:11  ADD 1 X GIVING KEPT\n"
            "      through the call at cobol/twice.cbl:10\n"
            "    KEPT -> cobol/low.cbl:12  MOVE KEPT TO Y\n"
            "      X -> cobol/low.cbl:11  ADD 1 X GIVING KEPT  (inside as above)\n"
            "          through the call at cobol/twice.cbl:10\n"
            "          through the call at cobol/twice.cbl:11\n"
            "        GIVEN -> cobol/twice.cbl:12  DISPLAY GIVEN\n"
            "            through the call at cobol/twice.cbl:11\n");
  const json why = DoJson({"why", "twice.cbl:12", "GIVEN"});
  const json& first = why[0]["chain"][0];
  EXPECT_EQ(first["insideSeen"], false);
  const json& again = first["next"][0]["next"][1];
  EXPECT_EQ(again["row"], 12);
  EXPECT_EQ(again["insideSeen"], true);
  ASSERT_EQ(again["next"].size(), 1U);
  EXPECT_EQ(again["next"][0]["file"], "cobol/twice.cbl");
  EXPECT_EQ(again["next"][0]["row"], 9);
}

}  // namespace
}  // namespace qmrules::test
