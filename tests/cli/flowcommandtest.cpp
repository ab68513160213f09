#include "cli/clifixture.h"

namespace qmrules::test {
namespace {

using nlohmann::json;

constexpr const char* kFlowing = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. RATES.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  FEE      PIC 9(3).
       PROCEDURE DIVISION.
       MAIN-PART.
           MOVE 1 TO FEE
           ADD 1 TO FEE
           IF FEE > 10
             PERFORM SHOW-FEE
           ELSE
             GO TO LAST-PART
           END-IF.
       NEXT-PART.
           STOP RUN.
       SHOW-FEE.
           DISPLAY "FEE " FEE.
       LAST-PART.
           STOP RUN.
       DEAD-PART.
           STOP RUN.
)";

class FlowCommands : public CliTest {
 protected:
  FlowCommands() {
    MakeWorkspace();
    folder_.Write("cobol/rates.cbl", kFlowing);
    Do({"scan"});
  }
  static bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(FlowCommands, AParagraphIsDrawnStatementByStatement) {
  const std::string dot = Do({"flow", "rates", "--paragraph", "main-part", "--format", "dot"});
  EXPECT_TRUE(Has(dot, "[label=\"    8  MOVE 1 TO FEE\\l    9  ADD 1 TO FEE\\l\"]")) << dot;
  EXPECT_TRUE(Has(dot, "[label=\"FEE > 10\", shape=diamond")) << dot;
  EXPECT_TRUE(Has(dot, "[label=\"11  SHOW-FEE\", peripheries=2")) << dot;
  EXPECT_TRUE(Has(dot, "[label=\"LAST-PART\", shape=box")) << dot;
  EXPECT_TRUE(Has(dot, "label=\" true\"")) << dot;
  EXPECT_TRUE(Has(dot, "style=dashed")) << dot;
  EXPECT_FALSE(Has(dot, "DEAD-PART")) << dot;
}

TEST_F(FlowCommands, AllParagraphsShowHowTheyLeadToEachOther) {
  const std::string dot = Do({"flow", "RATES", "--format", "dot"});
  const auto id = [&](const std::string& name) {
    const std::size_t at = dot.find(" [label=\"" + name + "\\n");
    const std::size_t begin = dot.rfind(' ', at - 1) + 1;
    return dot.substr(begin, at - begin);
  };
  EXPECT_TRUE(Has(dot, id("MAIN-PART") + " -> " + id("SHOW-FEE") + " [label=\"\"]")) << dot;
  EXPECT_TRUE(Has(dot, id("MAIN-PART") + " -> " + id("NEXT-PART") + " [label=\"\", color")) << dot;
  EXPECT_TRUE(Has(dot, id("MAIN-PART") + " -> " + id("LAST-PART") + " [label=\"\", style=dashed")) << dot;
  EXPECT_FALSE(Has(dot, id("SHOW-FEE") + " -> ")) << dot;  // it returns
  EXPECT_TRUE(Has(dot, "DEAD-PART\\n21\", fontcolor")) << dot;
}

TEST_F(FlowCommands, JsonHasPointsAndWays) {
  const json document = DoJson({"flow", "RATES", "--paragraph", "SHOW-FEE"});
  EXPECT_EQ(document["program"], "RATES");
  ASSERT_EQ(document["points"].size(), 3U);
  const json& display = document["points"][2];
  EXPECT_EQ(display["kind"], "statement");
  EXPECT_EQ(display["object"]["name"], "DISPLAY");
  EXPECT_EQ(display["object"]["row"], 18);
  EXPECT_EQ(display["runs"], true);
  EXPECT_EQ(display["ways"], json::array({{{"to", document["points"][1]["id"]}, {"kind", "next"}}}));
  EXPECT_EQ(document["ranges"].size(), 2U);
  EXPECT_EQ(document["gaps"], json::array());
}

TEST_F(FlowCommands, ThePictureGoesIntoAFile) {
  EXPECT_EQ(Do({"flow", "RATES", "--format", "dot", "--output", "rates.dot"}), "");
  EXPECT_EQ(folder_.Read("rates.dot"), Do({"flow", "RATES", "--format", "dot"}));
}

TEST_F(FlowCommands, GraphvizDrawsThePicture) {
  const std::string svg = Do({"flow", "RATES", "--paragraph", "MAIN-PART"});
  EXPECT_TRUE(Has(svg, "<svg")) << svg;
  EXPECT_TRUE(Has(svg, "MOVE 1 TO FEE")) << svg;
}

TEST_F(FlowCommands, AParagraphOfSeveralSectionsIsNamedWithItsSection) {
  folder_.Write("cobol/twice.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. TWICE.
       PROCEDURE DIVISION.
       ONE SECTION.
           DISPLAY "0".
       PART-A.
           DISPLAY "1".
       TWO SECTION.
       PART-A.
           DISPLAY "2".
           STOP RUN.
)");
  Do({"scan"});
  EXPECT_EQ(Run({"flow", "TWICE", "--paragraph", "PART-A"}),
            (CliRun{1, "",
                    "qmrules: TWICE has several paragraphs PART-A: PART-A OF ONE, PART-A OF TWO; name one of them "
                    "so.\n"}));
  EXPECT_TRUE(Has(Do({"flow", "TWICE", "--paragraph", "part-a of two", "--format", "dot"}), "DISPLAY \\\"2\\\""));
  EXPECT_TRUE(Has(Do({"flow", "TWICE", "--paragraph", "ONE", "--format", "dot"}), "DISPLAY \\\"0\\\""));
}

TEST_F(FlowCommands, ProgramsNestedInTheOneShownAreTold) {
  folder_.Write("cobol/outer.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. OUTER.
       PROCEDURE DIVISION.
       MAIN-PART.
           CALL "INNER"
           STOP RUN.
       IDENTIFICATION DIVISION.
       PROGRAM-ID. INNER.
       PROCEDURE DIVISION.
       MAIN-PART.
           DISPLAY "INSIDE"
           GOBACK.
       END PROGRAM INNER.
       END PROGRAM OUTER.
)");
  Do({"scan"});
  const auto whole = Run({"flow", "OUTER", "--format", "dot"});
  EXPECT_EQ(whole.code, 0);
  EXPECT_EQ(whole.err,
            "The programs nested in OUTER are not shown: INNER. A paragraph P of one is shown by --paragraph \"P OF "
            "INNER\".\n");
  const auto inner = Run({"flow", "OUTER", "--paragraph", "MAIN-PART OF INNER", "--format", "dot"});
  EXPECT_EQ(inner.err, "");
  EXPECT_TRUE(Has(inner.out, "INSIDE")) << inner.out;
  EXPECT_EQ(Run({"flow", "OUTER", "--paragraph", "MAIN-PART"}).err,
            "qmrules: OUTER has several paragraphs MAIN-PART: MAIN-PART OF OUTER, MAIN-PART OF INNER; name one of them "
            "so.\n");
}

TEST_F(FlowCommands, UnknownParagraphsAreRefused) {
  EXPECT_EQ(Run({"flow", "RATES", "--paragraph", "NOWHERE"}),
            (CliRun{1, "",
                    "qmrules: RATES has no paragraph NOWHERE; \"qmrules model RATES --entity LABEL\" lists its "
                    "paragraphs and sections.\n"}));
  EXPECT_EQ(Run({"flow", "RATES", "--format", "png"}).code, 2);
}

TEST_F(FlowCommands, AStatementThatReadsWhatItHasJustSetIsDrawnOnce) {
  folder_.Write("cobol/order.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. ORDERING.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  I        PIC 9.
       01  T.
           05  E    PIC 9 OCCURS 9.
       PROCEDURE DIVISION.
       MAIN-PART.
           MOVE 3 TO I E (I)
           STOP RUN.
)");
  Do({"scan"});
  const std::string dot = Do({"flow", "ORDERING", "--paragraph", "MAIN-PART", "--format", "dot"});
  EXPECT_TRUE(Has(dot, "[label=\"   10  MOVE 3 TO I E (I)\\l\"]")) << dot;
}

TEST_F(FlowCommands, AReturnThatCompilersDifferAboutIsAGap) {
  folder_.Write("cobol/left.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. LEAVING.
       PROCEDURE DIVISION.
       MAIN-PART.
           PERFORM PART-B.
           STOP RUN.
       PART-A.
           DISPLAY "A".
       PART-B.
           GO TO PART-D.
       PART-C.
           DISPLAY "C".
       PART-D.
           PERFORM PART-E
           STOP RUN.
       PART-E.
           GO TO PART-A.
)");
  Do({"scan"});
  EXPECT_EQ(DoJson({"flow", "LEAVING"})["gaps"], json::array());
  folder_.Write("cobol/left.cbl", R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. LEAVING.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  X        PIC 9.
       PROCEDURE DIVISION.
       MAIN-PART.
           PERFORM PART-B.
           STOP RUN.
       PART-A.
           DISPLAY "A".
       PART-B.
           IF X = 1 GO TO PART-D.
       PART-C.
           DISPLAY "C".
       PART-D.
           PERFORM PART-A THRU PART-C
           STOP RUN.
)");
  Do({"scan"});
  const json gaps = DoJson({"flow", "LEAVING"})["gaps"];
  ASSERT_EQ(gaps.size(), 1U);
  EXPECT_EQ(gaps[0]["kind"], "open return");
  EXPECT_EQ(gaps[0]["object"]["name"], "PART-B");
}

}  // namespace
}  // namespace qmrules::test
