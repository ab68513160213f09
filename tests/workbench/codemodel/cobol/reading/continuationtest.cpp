#include <gtest/gtest.h>

#include <string>

#include "workbench/codemodel/cobol/reading/lexedtext.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

std::string Blanks(std::size_t count) {
  return std::string(count, ' ');
}

// A line of fixed form whose text ends in column 72.
std::string Full(std::string_view text) {
  return Blanks(72 - text.size()) + std::string(text) + "\n";
}

TEST(Continuation, AWordGoesOnOverAContinuationLine) {
  const LexedFile lexed = LexFixed(
      "       PROGRAM-\n"
      "      * between\n"
      "\n"
      "      -    ID. X\n");
  EXPECT_EQ(Shown(lexed), "PROGRAM-ID . X");
  const Token& word = lexed.tokens[0];
  EXPECT_TRUE(word.Has(kComposed));
  EXPECT_EQ(word.row, 1U);
  EXPECT_EQ(word.offset, 7U);
  EXPECT_EQ(lexed.file->Text().substr(word.offset + word.length - 2, 3), "ID.");
  EXPECT_EQ(Flagged(lexed, kFirstOnRow), "PROGRAM-ID");
  EXPECT_EQ(Flagged(lexed, kAdjacent), ".");
}

TEST(Continuation, AWordGoesOnOverMoreThanOneLine) {
  EXPECT_EQ(Fixed("       MO\n      -    V\n      -    E A TO\n           B"), "MOVE A TO|B");
  EXPECT_EQ(Fixed("       WS-\n      -    A-\n      -    B C"), "WS-A-B C");
  EXPECT_EQ(Fixed("       A\n      -\n      -    B C"), "AB C");
}

TEST(Continuation, AHyphenCanBeginTheContinuation) {
  EXPECT_EQ(Fixed("       WS\n      -    -A B"), "WS-A B");
}

TEST(Continuation, WhatAWordIsIsToldByAllOfIt) {
  EXPECT_EQ(Fixed("       05 A PICT\n      -    URE X(5).\n"), "#05 A PICTURE {X(5)} .");
  EXPECT_EQ(Fixed("       1\n      -    ST-TIME\n"), "1ST-TIME");
  EXPECT_EQ(Fixed("       EX\n      -    EC SQL A, B END-EX\n      -    EC C, D"), "EXEC SQL A , B END-EXEC C D");
}

TEST(Continuation, ANumberGoesOn) {
  EXPECT_EQ(Fixed("       12\n      -    34 5\n"), "#1234 #5");
  EXPECT_EQ(Fixed("       12\n      -    34.5 A\n"), "#1234.5 A");
  EXPECT_EQ(Fixed("       12.\n      -    5 A\n"), "#12.5 A");
  EXPECT_EQ(Fixed("       12\n      -    .5 A\n"), "#12.5 A");
  EXPECT_EQ(Fixed("       12.5\n      -    67. A\n"), "#12.567 . A");
}

TEST(Continuation, APictureGoesOn) {
  EXPECT_EQ(Fixed("       PIC X(1\n      -    20). A\n"), "PIC {X(120)} . A");
  EXPECT_EQ(Fixed("       PIC 9(3)\n      -    V\n      -    99 COMP\n"), "PIC {9(3)V99} COMP");
}

TEST(Continuation, ASeparatorEndsWhatCanGoOn) {
  EXPECT_EQ(Fixed("       A,\n      -    B\n       C *> no\n      -    D\n"), "A|B|C|D");
  EXPECT_EQ(Fixed("       A.\n      -    B\n       (\n      -    1)\n"), "A .|B|(|#1 )");
}

TEST(Continuation, WhatAContinuationLineBeginsWithTouchesTheLineBefore) {
  const LexedFile lexed = LexFixed("       A\n      -    (1)\n");
  EXPECT_EQ(Shown(lexed), "A|( #1 )");
  EXPECT_EQ(Flagged(lexed, kAdjacent), "( 1 )");
}

TEST(Continuation, ALiteralKeepsTheBlanksUpToColumn72) {
  const LexedFile lexed = LexFixed("       A 'one   \n      -    'two' B\n");
  EXPECT_EQ(Shown(lexed), "A 'one" + Blanks(72 - 13) + "two' B");
  EXPECT_EQ(Diagnosed(lexed), "");
  const Token& literal = lexed.tokens[1];
  EXPECT_TRUE(literal.Has(kComposed));
  EXPECT_EQ(literal.row, 1U);
  EXPECT_EQ(lexed.file->Text().substr(literal.offset, 4), "'one");
  EXPECT_EQ(lexed.file->Text().substr(literal.offset + literal.length - 4, 6), "two' B");
  EXPECT_EQ(Flagged(lexed, kFirstOnRow), "A");
}

TEST(Continuation, ALiteralGoesOnOverMoreThanOneLine) {
  EXPECT_EQ(Fixed(Full("\"one") + "      * c\n      -    \"" + Blanks(57) + "two\n      -    \"three\".\n"),
            "\"one" + Blanks(57) + "twothree\" .");
}

TEST(Continuation, ALiteralWithTabsOrLettersAboveAsciiIsFilledByItsColumns) {
  EXPECT_EQ(Fixed("\tA '\u00e9\n      -\t'x'\n"), "A '\u00e9" + Blanks(72 - 12) + "x'");
}

TEST(Continuation, AWideLineIsNotFilled) {
  LexerOptions options;
  options.format = SourceFormat::WideFixed;
  EXPECT_EQ(Shown(LexText("       A 'one \n      -    'two'\n", options)), "A 'one two'");
}

TEST(Continuation, ADoubledQuoteIsPartedByTheLineEnd) {
  EXPECT_EQ(Fixed(Full("'it'") + "      -    ''s' A\n"), "'it''s' A");
  EXPECT_EQ(Fixed(Full("'it''") + "      -    's' A\n"), "'it''s' A");
  EXPECT_EQ(Fixed(Full("'one'") + "      -    'two' A\n"), "'one'|'two' A");
  EXPECT_EQ(Fixed("       'one'\n      -    ''s' A\n"), "'one'|'' s ' A!");
}

TEST(Continuation, AContinuationWithoutAQuoteEndsTheLiteral) {
  const LexedFile lexed = LexFixed("       A 'one\n      -    two B\n");
  EXPECT_EQ(Shown(lexed), "A 'one!|two B");
  EXPECT_EQ(Diagnosed(lexed), "1:10 warning: The literal has no closing quote. It is taken to end with its line.\n");
}

TEST(Continuation, ALiteralThatGoesOnAndIsNeverClosedEndsWithItsLastLine) {
  const LexedFile lexed = LexFixed(Full("'one") + "      -    'two\n       B\n");
  EXPECT_EQ(Shown(lexed), "'onetwo!|B");
  EXPECT_EQ(Diagnosed(lexed), "1:69 warning: The literal has no closing quote. It is taken to end with its line.\n");
}

TEST(Continuation, AHyphenBehindTheQuoteJoinsTheLiteralOfTheNextLine) {
  EXPECT_EQ(Free("A \"abc\"-  \n   \"def\" B"), "A \"abcdef\" B");
  EXPECT_EQ(Free("A 'a'-\n 'b'-\n 'c'-\n B"), "A 'abc' -|B");
  EXPECT_EQ(Free("A 'a'-\n \"b\" 'c'-1"), "A 'a' -|\"b\" 'c' - #1");
  EXPECT_EQ(Free("A 'a'-\n 'b"), "A 'ab!");
}

TEST(Continuation, AFirstLineCanBeAContinuation) {
  EXPECT_EQ(Fixed("      -    A B\n"), "A B");
}

TEST(Continuation, ManyLinesAreJoinedInOnePass) {
  constexpr std::size_t lines = 100'000;
  std::string literal = Full("'");
  std::string word = Full("A");
  std::string number = Full("1");
  for (std::size_t line = 0; line < lines; ++line) {
    literal += "      -    'x\n";
    word += "      -    x\n";
    number += "      -    1\n";
  }
  EXPECT_EQ(LexFixed(literal + "      -    ''").composed.at(0).size(), 2 + lines * 60);
  EXPECT_EQ(LexFixed(word).composed.at(0).size(), 1 + lines);
  EXPECT_EQ(LexFixed(number).composed.at(0).size(), 1 + lines);
}

// The "-" that joins the literals is taken back when the second one has been met, behind the directive.
TEST(Continuation, ADirectiveBetweenJoinedLiteralsStandsBeforeWhatFollowsThem) {
  const LexedFile lexed = LexFree("\"ab\"-\n>>IF 1 = 1\n\"cd\" X\n>>END-IF\n");
  EXPECT_EQ(Shown(lexed), "\"abcd\" X");
  ASSERT_EQ(lexed.directives.size(), 2U);
  EXPECT_EQ(lexed.directives[0].token, 1U);
  EXPECT_EQ(lexed.directives[1].token, 2U);
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
