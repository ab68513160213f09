#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/procedure/markedstatements.h"

namespace qmrules::test {
namespace {

using testing::ElementsAre;

constexpr std::string_view kMarkupData = R"(       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  DOC PIC X(1000).
       01  N PIC 9(04).
       01  A PIC X(10).
       01  G.
           05  F1 PIC X(02).
           05  F2 PIC 9(02).
           05  F3 PIC X.
               88  F3-ON VALUE 'Y'.
)";

TEST(XmlGenerateVerb, WritesTheDocument) {
  const auto marked = ExpectMarked(kMarkupData,
                                   "XML GENERATE $TargetIn[[DOC]] FROM $SourceOut[[G]] COUNT IN $CountIn[[N]]\n"
                                   "    WITH ENCODING $Other[[1208]] WITH XML-DECLARATION WITH ATTRIBUTES\n"
                                   "    NAMESPACE IS $Other[['urn:x']] NAMESPACE-PREFIX $OtherOut[[A]]\n"
                                   "    NAME OF $OtherNone[[F1]] IS $Other[['one']] $OtherNone[[F2]] $Other[['two']]\n"
                                   "    TYPE OF $OtherNone[[F1]] IS ATTRIBUTE\n"
                                   "    SUPPRESS $OtherOut[[F1]] WHEN $Other[[SPACES]] OR $Other[[LOW-VALUES]]\n"
                                   "    ON EXCEPTION CONTINUE END-XML.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT XML GENERATE", "IF If exception", "STAT CONTINUE"));
}

TEST(XmlParseVerb, NamesItsProcedure) {
  const auto marked = ExpectMarked(kMarkupData,
                                   "XML PARSE $SourceOut[[DOC]] WITH ENCODING $OtherOut[[N]] RETURNING NATIONAL\n"
                                   "    VALIDATING WITH $OtherOut[[A]]\n"
                                   "    PROCESSING PROCEDURE IS $Procedure[[MAIN]] THRU $Thru[[MAIN]]\n"
                                   "    NOT ON EXCEPTION CONTINUE END-XML.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT XML PARSE", "IF If exception", "STAT CONTINUE"));
}

TEST(JsonGenerateVerb, WritesTheDocument) {
  const auto marked = ExpectMarked(kMarkupData,
                                   "JSON GENERATE $TargetIn[[DOC]] FROM $SourceOut[[G]] COUNT $CountIn[[N]]\n"
                                   "    NAME OF $OtherNone[[G]] IS OMITTED SUPPRESS EVERY NUMERIC WHEN $Other[[ZERO]]\n"
                                   "    CONVERTING $OtherNone[[F3]] TO JSON BOOLEAN USING $OtherOut[[F3-ON]]\n"
                                   "END-JSON.");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT JSON GENERATE"));
}

TEST(JsonParseVerb, WritesTheItems) {
  const auto marked = ExpectMarked(kMarkupData,
                                   "JSON PARSE $SourceOut[[DOC]] INTO $TargetIn[[G]] WITH DETAIL\n"
                                   "    NAME $OtherNone[[F1]] IS $Other[['one']] SUPPRESS $OtherOut[[F2]].");
  EXPECT_THAT(marked.Statements(), ElementsAre("STAT JSON PARSE"));
}

TEST(MarkupVerbs, TellWhatTheyLack) {
  EXPECT_THAT(MarkedStatements(kMarkupData, "XML GENERATE DOC.").Diagnostics(),
              ElementsAre("1:17 GENERATE lacks FROM."));
  EXPECT_THAT(MarkedStatements(kMarkupData, "XML PARSE DOC.").Diagnostics(),
              ElementsAre("1:14 PARSE lacks PROCESSING PROCEDURE."));
}

}  // namespace
}  // namespace qmrules::test
