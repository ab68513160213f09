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

TEST_F(FlowCommands, UnknownParagraphsAreRefused) {
  EXPECT_EQ(Run({"flow", "RATES", "--paragraph", "NOWHERE"}),
            (CliRun{1, "",
                    "qmrules: RATES has no paragraph NOWHERE; \"qmrules model RATES --entity LABEL\" lists its "
                    "paragraphs and sections.\n"}));
  EXPECT_EQ(Run({"flow", "RATES", "--format", "png"}).code, 2);
}

}  // namespace
}  // namespace qmrules::test
