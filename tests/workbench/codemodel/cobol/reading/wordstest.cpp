#include "workbench/codemodel/cobol/reading/words.h"

#include <gtest/gtest.h>

#include <set>

namespace qmrules::workbench::codemodel::cobol {
namespace {

class Words : public ::testing::Test {
 protected:
  Word Named(std::string_view text) const { return WordOf(symbols_.Find(text)); }

  SymbolTable symbols_{CobolWordList()};
};

TEST_F(Words, TheSymbolOfAWordIsItsNumber) {
  EXPECT_EQ(symbols_.Count(), static_cast<std::uint32_t>(Word::None));
  EXPECT_EQ(Named("MOVE"), Word::Move);
  EXPECT_EQ(Named("end-exec"), Word::EndExec);
  EXPECT_EQ(Named("I-O-CONTROL"), Word::IOControl);
  EXPECT_EQ(Named("ACCOUNT"), Word::None);
}

TEST_F(Words, EachWordIsListedOnce) {
  const std::set<std::string_view> words(CobolWordList().begin(), CobolWordList().end());
  EXPECT_EQ(words.size(), CobolWordList().size());
}

TEST_F(Words, VerbsBeginStatements) {
  for (const char* verb : {"MOVE", "IF", "EXEC", "EXECUTE", "XML", "GOBACK", "NEXT", "UNSTRING", "RELEASE"}) {
    EXPECT_TRUE(IsVerb(Named(verb))) << verb;
  }
  for (const char* word : {"ELSE", "WHEN", "END-IF", "TO", "COPY", "COUNT", "FUNCTION"}) {
    EXPECT_FALSE(IsVerb(Named(word))) << word;
  }
  EXPECT_FALSE(IsVerb(Word::None));
}

TEST_F(Words, ScopesAreEndedByWordsWithEnd) {
  std::size_t count = 0;
  for (std::uint32_t symbol = 0; symbol < symbols_.Count(); ++symbol) {
    if (!IsScopeEnd(WordOf(symbol))) continue;
    ++count;
    EXPECT_TRUE(symbols_.Text(symbol).starts_with("END-")) << symbols_.Text(symbol);
    EXPECT_TRUE(IsVerb(Named(symbols_.Text(symbol).substr(4)))) << symbols_.Text(symbol);
  }
  EXPECT_EQ(count, 24U);
  EXPECT_FALSE(IsScopeEnd(Word::EndOfPage));
  EXPECT_FALSE(IsScopeEnd(Word::None));
}

TEST_F(Words, WordsThatJoinStatementsTogetherAreReserved) {
  for (const char* word :
       {"MOVE",   "IF",   "ELSE",    "END-IF",  "TO",        "FROM",      "INTO",     "UNTIL",     "WHEN",  "THEN",
        "AND",    "OR",   "NOT",     "BY",      "USING",     "GIVING",    "VARYING",  "THRU",      "OF",    "IN",
        "IS",     "ZERO", "SPACES",  "ALL",     "DEPENDING", "DELIMITED", "TALLYING", "REPLACING", "AT",    "END",
        "ON",     "SIZE", "ERROR",   "INVALID", "STATUS",    "DATE",      "TIME",     "DAY",       "CLASS", "COUNT",
        "LENGTH", "COPY", "SECTION", "FILLER",  "POINTER",   "VALUE"}) {
    EXPECT_TRUE(IsReserved(Named(word))) << word;
  }
}

TEST_F(Words, WordsOfLaterStandardsAndOfSingleCompilersAreNames) {
  for (const char* word : {"ACTIVE-CLASS", "ARGUMENT-NUMBER",
                           "BEEP",         "CONVERT",
                           "CYCLE",        "JSON",
                           "XML",          "PARSE",
                           "WINDOW",       "UPDATE",
                           "TYPE",         "STEP",
                           "RAISE",        "VALIDATE",
                           "NAME",         "OBJECT",
                           "SCREEN",       "UPPER",
                           "LOWER",        "TITLE",
                           "ID",           "FREE",
                           "COMMIT",       "TALLY",
                           "RETURN-CODE",  "TEXT",
                           "MESSAGE",      "QUEUE",
                           "CICS",         "SQL",
                           "CRT",          "FULL",
                           "NATIONAL"}) {
    EXPECT_NE(Named(word), Word::None) << word;
    EXPECT_FALSE(IsReserved(Named(word))) << word;
  }
  EXPECT_FALSE(IsReserved(Word::None));
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
