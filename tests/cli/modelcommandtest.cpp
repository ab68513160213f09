#include "cli/clifixture.h"

namespace qmrules::test {
namespace {

using nlohmann::json;

constexpr const char* kProgram = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. RATES.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  POLICY.
           05  PREMIUM  PIC 9(5)V99.
           05  FEE      PIC 9(3).
       01  TOTALS.
           05  PREMIUM  PIC 9(7)V99.
       PROCEDURE DIVISION.
       MAIN-PART.
           MOVE FEE TO PREMIUM OF POLICY
           IF FEE > 10
             ADD FEE TO PREMIUM OF TOTALS
           END-IF
           PERFORM SHOW-FEE
           STOP RUN.
       SHOW-FEE.
           DISPLAY FEE.
)";

class ModelCommands : public CliTest {
 protected:
  ModelCommands() {
    MakeWorkspace();
    folder_.Write("cobol/rates.cbl", kProgram);
    Do({"scan"});
  }
  // The lines of a text that hold this.
  static std::string LinesWith(const std::string& text, const std::string& part) {
    std::string lines;
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = text.find('\n', at) + 1;
      const std::string line = text.substr(at, end - at);
      if (line.find(part) != std::string::npos) lines += line;
      at = end;
    }
    return lines;
  }
};

TEST_F(ModelCommands, XrefShowsDeclarationsAndOccurrences) {
  EXPECT_EQ(Do({"xref", "RATES", "fee"}),
            "Key     Level  Name  Picture  Offset  Size  Declared at\n"
            "DECL#6  05     FEE   9(3)     7       3     cobol/rates.cbl:7\n"
            "\n"
            "Used at             Usage  Statement  Text\n"
            "cobol/rates.cbl:12  OUT    MOVE       MOVE FEE TO PREMIUM OF POLICY\n"
            "cobol/rates.cbl:13  OUT    IF         IF FEE > 10\n"
            "cobol/rates.cbl:14  OUT    ADD        ADD FEE TO PREMIUM OF TOTALS\n"
            "cobol/rates.cbl:19  OUT    DISPLAY    DISPLAY FEE.\n");
}

TEST_F(ModelCommands, XrefOfAQualifiedNameShowsOneOfSeveral) {
  const std::string both = Do({"xref", "RATES", "PREMIUM"});
  EXPECT_NE(both.find("cobol/rates.cbl:6\n"), std::string::npos) << both;
  EXPECT_NE(both.find("cobol/rates.cbl:9\n"), std::string::npos) << both;
  EXPECT_EQ(Do({"xref", "RATES", "PREMIUM OF TOTALS"}),
            "Key     Level  Name     Picture  Offset  Size  Declared at\n"
            "DECL#8  05     PREMIUM  9(7)V99  0       9     cobol/rates.cbl:9\n"
            "\n"
            "Used at             Usage  Statement  Text\n"
            "cobol/rates.cbl:14  INOUT  ADD        ADD FEE TO PREMIUM OF TOTALS\n");
}

TEST_F(ModelCommands, XrefOfAParagraphShowsWhereItIsPerformed) {
  const auto found = DoJson({"xref", "RATES", "SHOW-FEE"});
  ASSERT_EQ(found["declarations"].size(), 1U);
  EXPECT_EQ(found["declarations"][0]["row"], 18);
  ASSERT_EQ(found["occurrences"].size(), 1U);
  EXPECT_EQ(found["occurrences"][0]["statement"], "PERFORM");
  EXPECT_EQ(found["occurrences"][0]["row"], 16);
  EXPECT_EQ(found["occurrences"][0]["declaration"], found["declarations"][0]["key"]);
}

TEST_F(ModelCommands, XrefOfAnUnknownNameTellsWhatIsMuchLikeIt) {
  EXPECT_EQ(Run({"xref", "RATES", "PREMUIM"}),
            (CliRun{1, "", "qmrules: RATES has no name PREMUIM; much like it: PREMIUM.\n"}));
  EXPECT_EQ(Run({"xref", "RATES", "X"}),
            (CliRun{1, "", "qmrules: RATES has no name X; \"qmrules model RATES --entity DECL\" lists its data.\n"}));
}

TEST_F(ModelCommands, ModelShowsTheTree) {
  const std::string tree = Do({"model", "rates"});
  EXPECT_TRUE(tree.starts_with("IDENTIFICATION#1  RATES  cobol/rates.cbl:1-2\n")) << tree;
  EXPECT_EQ(LinesWith(tree, "  FEE  cobol"), "      DECL#6  FEE  cobol/rates.cbl:7\n");
}

TEST_F(ModelCommands, ModelShowsTheObjectsOfAnEntityWithItsSpecialKinds) {
  const std::string paragraphs = Do({"model", "RATES", "--entity", "par"});
  EXPECT_NE(paragraphs.find("  MAIN-PART  cobol/rates.cbl:11-17\n"), std::string::npos) << paragraphs;
  EXPECT_NE(paragraphs.find("  SHOW-FEE  cobol/rates.cbl:18-19\n"), std::string::npos) << paragraphs;
  const std::string statements = Do({"model", "RATES", "--entity", "STAT"});
  EXPECT_NE(statements.find("IF#"), std::string::npos) << statements;
  EXPECT_EQ(statements.find("PAR#"), std::string::npos) << statements;
  EXPECT_EQ(Run({"model", "RATES", "--entity", "CARD"}).code, 1);
}

TEST_F(ModelCommands, ModelShowsWhatStandsAtALine) {
  const auto at = DoJson({"model", "RATES", "--at", "rates.cbl:14", "--entity", "VAR"});
  ASSERT_EQ(at.size(), 2U);
  EXPECT_EQ(at[0]["attributes"]["Name"], "FEE");
  EXPECT_EQ(at[0]["attributes"]["VarUsage"], "OUT");
  EXPECT_EQ(at[1]["attributes"]["Text"], "PREMIUM OF TOTALS");
  EXPECT_EQ(at[1]["attributes"]["VarUsage"], "INOUT");
  EXPECT_EQ(Run({"model", "RATES", "--at", "other.cbl:1"}),
            (CliRun{1, "", "qmrules: other.cbl is no file of RATES; name cobol/rates.cbl or a copybook of it.\n"}));
  EXPECT_EQ(Run({"model", "RATES", "--at", "rates.cbl"}).code, 2);
}

TEST_F(ModelCommands, AModelWithGapsSaysSoFirst) {
  std::string text = kProgram;
  text.replace(text.find("DISPLAY FEE"), 11, "DISPLAY TAX");
  folder_.Write("cobol/rates.cbl", text);
  Do({"scan"});
  const std::string first = "This program's model has 1 gap; see \"qmrules diagnostics RATES\".\n";
  EXPECT_TRUE(Do({"xref", "RATES", "FEE"}).starts_with(first));
  EXPECT_TRUE(Do({"model", "RATES"}).starts_with(first));
  EXPECT_EQ(DoJson({"xref", "RATES", "FEE"})["gaps"], 1);
}

TEST_F(ModelCommands, AnEmptyListIsJsonToo) {
  EXPECT_EQ(DoJson({"model", "RATES", "--entity", "FUNC"}), json::array());
}

}  // namespace
}  // namespace qmrules::test
