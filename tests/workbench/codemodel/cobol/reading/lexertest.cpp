#include "workbench/codemodel/cobol/reading/lexer.h"

#include <gtest/gtest.h>

#include <string>

#include "workbench/codemodel/cobol/reading/lexedtext.h"
#include "workbench/codemodel/cobol/reading/words.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

std::string WithDecimalComma(std::string_view text) {
  LexerOptions options;
  options.format = SourceFormat::Free;
  options.decimalComma = true;
  return Shown(LexText(text, options));
}

TEST(Lexer, AnEmptyTextHasOnlyItsEnd) {
  const LexedFile lexed = LexFree("");
  ASSERT_EQ(lexed.tokens.size(), 1U);
  EXPECT_EQ(lexed.tokens[0].kind, TokenKind::End);
  EXPECT_EQ(lexed.tokens[0].row, 1U);
  EXPECT_TRUE(lexed.commentRows->empty());
}

TEST(Lexer, WordsOfTheLanguageHaveTheirNumberInAnyCase) {
  const LexedFile lexed = LexFree("move Move MOVE Mover");
  EXPECT_EQ(WordOf(lexed.tokens[0].symbol), Word::Move);
  EXPECT_EQ(WordOf(lexed.tokens[1].symbol), Word::Move);
  EXPECT_EQ(WordOf(lexed.tokens[2].symbol), Word::Move);
  EXPECT_EQ(WordOf(lexed.tokens[3].symbol), Word::None);
}

TEST(Lexer, WordsHoldLettersDigitsHyphensAndMore) {
  EXPECT_EQ(Free("WS-A1 1ST-TIME 88-LEVEL A_B \u00e9tat-\u00fc #A B@C D$E 100-200"),
            "WS-A1 1ST-TIME 88-LEVEL A_B \u00e9tat-\u00fc #A B@C D$E 100-200");
}

TEST(Lexer, AHyphenAtTheEndOfAWordIsASignOfItsOwn) {
  EXPECT_EQ(Free("A- B-- -C 5-"), "A - B - - - C #5 -");
  EXPECT_EQ(Free("PRE-:TAG:-X"), "PRE- : TAG : - X");
}

TEST(Lexer, NumbersHaveAFractionAndAnExponent) {
  EXPECT_EQ(Free("1 01 1.5 .5 1.5E-3 1.5E3 1.5e+12 1E3"), "#1 #01 #1.5 #.5 #1.5E-3 #1.5E3 #1.5e+12 1E3");
  EXPECT_EQ(Free("+1 -1.5 1.5EX 1.5E"), "+ #1 - #1.5 #1.5 EX #1.5 E");
}

TEST(Lexer, AFullStopBehindANumberEndsTheSentence) {
  EXPECT_EQ(Free("VALUE 1.\nVALUE 1.5.\nVALUE 1. MOVE"), "VALUE #1 .|VALUE #1.5 .|VALUE #1 . MOVE");
}

TEST(Lexer, AFullStopThatTouchesAnOperandIsNoDecimalPoint) {
  EXPECT_EQ(Free("A.5 (1).5 'x'.5 (.5)"), "A . #5 ( #1 ) . #5 'x' . #5 ( #.5 )");
}

TEST(Lexer, CommasAndSemicolonsPartWords) {
  const LexedFile lexed = LexFree("A,B; C ,D(1,2)");
  EXPECT_EQ(Shown(lexed), "A B C D ( #1 #2 )");
  EXPECT_EQ(Flagged(lexed, kAdjacent), "( 1 )");
}

TEST(Lexer, ADecimalCommaIsPartOfANumber) {
  EXPECT_EQ(WithDecimalComma("1,5 ,5 A,5 1, 5 (1,2) X,Y"), "#1,5 #,5 A #5 #1 #5 ( #1,2 ) X Y");
  EXPECT_EQ(WithDecimalComma("1,5E-3 1.5"), "#1,5E-3 #1 . #5");
}

TEST(Lexer, AProgramAsksForDecimalCommasUpToItsEnd) {
  const LexedFile lexed = LexFree(
      "PROGRAM-ID. A.\n1,5\nDECIMAL-POINT IS COMMA.\n1,5\nPROGRAM-ID. B.\n1,5\nEND PROGRAM B.\n1,5\nEND PROGRAM A.\n"
      "PROGRAM-ID. C.\n1,5\nDECIMAL-POINT COMMA 1,5");
  EXPECT_EQ(Shown(lexed),
            "PROGRAM-ID . A .|#1 #5|DECIMAL-POINT IS COMMA .|#1,5|PROGRAM-ID . B .|#1,5|END PROGRAM B .|#1,5|"
            "END PROGRAM A .|PROGRAM-ID . C .|#1 #5|DECIMAL-POINT COMMA #1,5");
  EXPECT_TRUE(lexed.decimalComma);
  EXPECT_FALSE(LexFree("SEPARATE IS COMMA").decimalComma);
}

TEST(Lexer, LiteralsHaveEitherQuoteAndDoubleIt) {
  EXPECT_EQ(Free(R"(A 'it''s' "say ""no""" '"' "'" '')"), R"(A 'it''s' "say ""no""" '"' "'" '')");
}

TEST(Lexer, ACommentSignInALiteralIsText) {
  EXPECT_EQ(Free("A '*> no' B"), "A '*> no' B");
}

TEST(Lexer, LiteralsHavePrefixes) {
  const LexedFile lexed = LexFree("X'0D' b\"01\" N'n' NX'00' Z'z' g'g' U'u' ux'0' H'7' BX'1' Y'y' VALUE'v'");
  std::string literals;
  for (const Token& token : lexed.tokens) {
    if (token.kind == TokenKind::Literal) literals += std::string(lexed.Text(token)) + ' ';
  }
  EXPECT_EQ(literals, "X'0D' b\"01\" N'n' NX'00' Z'z' g'g' U'u' ux'0' H'7' BX'1' 'y' 'v' ");
  EXPECT_EQ(Flagged(lexed, kAdjacent), "'y' 'v'");
}

TEST(Lexer, AnOpenLiteralEndsWithItsLine) {
  const LexedFile lexed = LexFree("A 'open  \nB 'c'\n  X'");
  EXPECT_EQ(Shown(lexed), "A 'open!|B 'c'|X'!");
  EXPECT_EQ(Diagnosed(lexed),
            "1:3 warning: The literal has no closing quote. It is taken to end with its line.\n"
            "3:3 warning: The literal has no closing quote. It is taken to end with its line.\n");
}

TEST(Lexer, OperatorsAndSignsAreTokens) {
  const LexedFile lexed = LexFree("( ) : + - * / ** < > = <= >= <> & == . ! |");
  const TokenKind kinds[] = {TokenKind::Open,         TokenKind::Close,    TokenKind::Colon,     TokenKind::Plus,
                             TokenKind::Minus,        TokenKind::Star,     TokenKind::Slash,     TokenKind::Power,
                             TokenKind::Less,         TokenKind::Greater,  TokenKind::Equal,     TokenKind::LessEqual,
                             TokenKind::GreaterEqual, TokenKind::NotEqual, TokenKind::Ampersand, TokenKind::PseudoText,
                             TokenKind::Period,       TokenKind::Other,    TokenKind::Other,     TokenKind::End};
  ASSERT_EQ(lexed.tokens.size(), std::size(kinds));
  for (std::size_t index = 0; index < std::size(kinds); ++index) EXPECT_EQ(lexed.tokens[index].kind, kinds[index]);
}

TEST(Lexer, SignsPartWordsWithoutBlanks) {
  EXPECT_EQ(Free("A(1:2)=B+C,D;E.F"), "A ( #1 : #2 ) = B + C D E . F");
  EXPECT_EQ(Free("A>>B A**B==C"), "A > > B A ** B == C");
}

TEST(Lexer, PseudoTextIsLexedLikeText) {
  EXPECT_EQ(Free("COPY A REPLACING ==:T:== BY ==X-Y== ==PIC X(3).== BY ====."),
            "COPY A REPLACING == : T : == BY == X-Y == == PIC {X(3)} . == BY == == .");
}

TEST(Lexer, ARunOfControlCharactersIsOneToken) {
  const std::string text("A\0\x01\x02 B\0C", 8);
  const LexedFile lexed = LexFree(text);
  ASSERT_EQ(lexed.tokens.size(), 6U);
  EXPECT_EQ(lexed.tokens[1].kind, TokenKind::Other);
  EXPECT_EQ(lexed.tokens[1].length, 3U);
  EXPECT_EQ(lexed.tokens[3].kind, TokenKind::Other);
  EXPECT_EQ(lexed.tokens[3].length, 1U);
}

TEST(Lexer, PlacesAreThoseInTheFile) {
  const LexedFile lexed = LexFixed("000100 A\r\n\r\n      * c\n           \u00e9t\u00e9 'x'\n");
  EXPECT_EQ(lexed.tokens[0].row, 1U);
  EXPECT_EQ(lexed.tokens[0].offset, 7U);
  EXPECT_EQ(lexed.tokens[0].length, 1U);
  EXPECT_EQ(lexed.tokens[1].row, 4U);
  EXPECT_EQ(lexed.file->Column(lexed.tokens[1].offset), 12U);
  EXPECT_EQ(lexed.tokens[1].length, 5U);
  EXPECT_EQ(lexed.file->Column(lexed.tokens[2].offset), 16U);
  EXPECT_EQ(lexed.tokens[3].kind, TokenKind::End);
  EXPECT_EQ(lexed.tokens[3].row, 4U);
  EXPECT_EQ(lexed.tokens[3].offset, lexed.file->Text().size());
}

TEST(Lexer, TokensTellWhereTheyStand) {
  const LexedFile fixed = LexFixed("       A B(C)\n          D\n           E\n      -F\n");
  EXPECT_EQ(Flagged(fixed, kAreaA), "A B ( D");
  EXPECT_EQ(Flagged(fixed, kFirstOnRow), "A D EF");
  EXPECT_EQ(Flagged(fixed, kAdjacent), "( C )");
  const LexedFile free = LexFree("  A B\n          C.D\n");
  EXPECT_EQ(Flagged(free, kAreaA), "A C");
  EXPECT_EQ(Flagged(free, kFirstOnRow), "A C");
  EXPECT_EQ(Flagged(free, kAdjacent), ". D");
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
