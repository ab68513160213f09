#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workbench/codemodel/cobol/reading/expandedprogram.h"

namespace qmrules::test {
namespace {

using namespace workbench::codemodel;
using testing::IsEmpty;

struct ReplacingCase {
  std::string name, pairs, copybook, words;
};

void ExpectReplaced(const std::vector<ReplacingCase>& cases) {
  for (const ReplacingCase& each : cases) {
    const ExpandedProgram program(
        {{"P.cbl", "COPY BOOK REPLACING " + each.pairs + ". END"}, {"BOOK", each.copybook}, {"INNER", "X Y"}});
    EXPECT_EQ(program.Words(), each.words + " END") << each.name;
    EXPECT_THAT(program.Problems(), IsEmpty()) << each.name;
  }
}

TEST(Replacing, ReplacesWordsLiteralsAndPseudoText) {
  ExpectReplaced({
      {"a word", "A BY B", "A C A-1 A", "B C A-1 B"},
      {"words without case", "abc BY Xyz", "ABC Abc", "Xyz Xyz"},
      {"a literal", "'A' BY \"B\"", "'A' A 'a'", "\"B\" A 'a'"},
      {"a number", "5 BY 6", "5 05 5", "6 05 6"},
      {"a qualified name", "A OF B BY C", "A OF B. A OF C. A", "C. A OF C. A"},
      {"a subscripted name", "A(1, 2) BY C IN D", "A (1 2) A(1 2) A(1)", "C IN D C IN D A(1)"},
      {"pseudo-text", "==A B== BY ==C D E==", "A  B A\nB A C B", "C D E C D E A C B"},
      {"commas are blanks", "==A, B== BY ==C==", "A B; A; B,", "C C"},
      {"full stops", "==A.== BY ==B==", "A. A", "B A"},
      {"text removed", "==A== BY ====", "X A. A", "X ."},
      {"several pairs in their order", "==A== BY ==B== ==B== BY ==C== A BY D", "A B A", "B C B"},
      {"the longer text named first", "==A B== BY ==1== ==A== BY ==2==", "A B A C", "1 2 C"},
      {"overlapping places", "==A A== BY ==B==", "A A A", "B A"},
      {"lines end between pairs", "A BY B\n C BY D", "A C", "B D"},
  });
}

TEST(Replacing, ATagIsAPartOfAWord) {
  ExpectReplaced({
      {"in front", "==:TAG:== BY ==PM==", "01 :TAG:-REC. 05 :TAG:-NO", "01 PM-REC. 05 PM-NO"},
      {"at the end", "==:TAG:== BY ==PM==", "REC-:TAG:. MOVE REC-:TAG: TO A", "REC-PM. MOVE REC-PM TO A"},
      {"in the middle", "==:TAG:== BY ==PM==", "PRE-:TAG:-X", "PRE-PM-X"},
      {"twice", "==:A:== BY ==X== ==:B:== BY ==Y==", ":A:-:B:", "X-Y"},
      {"in parentheses", "==(TAG)== BY ==PM==", "(TAG)-REC A(TAG)B A(TAG2)", "PM-REC APMB A(TAG2)"},
      {"in quotes", "=='TAG'== BY ==PM==", "'TAG'-REC", "PM-REC"},
      {"removed", "==:TAG:== BY ====", "A:TAG:B X-:TAG:Y :TAG:C", "AB X-Y C"},
      {"made a literal", "==:PGM:== BY =='PB01'==", "VALUE :PGM:.", "VALUE 'PB01'."},
      {"made a hexadecimal literal", "==:P:== BY ==X==", ":P:'0D'", "X'0D'"},
      {"made a number", "==:N:== BY ==12==", "05 A PIC X VALUE :N:.", "05 A PIC X VALUE 12."},
      {"in parentheses of a reference", "==:N:== BY ==4==", "A(:N:) A(1::N:)", "A(4) A(1:4)"},
      {"in a qualification", "==:T:== BY ==X==", "A OF :T:-REC(I)", "A OF X-REC(I)"},
  });
}

TEST(Replacing, ReachesIntoPictures) {
  ExpectReplaced({
      {"a size", "==:LEN:== BY ==10==", "PIC X(:LEN:). PIC 9(:LEN:)V99.", "PIC X(10). PIC 9(10)V99."},
      {"a size in parentheses", "==(LEN)== BY ==(8)==", "PIC X(LEN).", "PIC X(8)."},
      {"a size as a word", "LEN BY 8", "PIC X(LEN) LEN", "PIC X(8) 8"},
      {"the whole", "==X(5)== BY ==9(7)V99==", "PIC X(5). PIC X(5)V.", "PIC 9(7)V99. PIC X(5)V."},
      {"the whole as a tag", "==:PIC:== BY ==S9(4)==", "PIC :PIC: COMP.", "PIC S9(4) COMP."},
      {"with its word", "==PIC X== BY ==PIC 9==", "PIC X. PIC X(3).", "PIC 9. PIC 9(3)."},
      {"with what follows", "==PIC X(5).== BY ==PIC 9.==", "PIC X(5).", "PIC 9."},
      {"a name is no picture", "X BY Y", "X PIC X VALUE X. PIC X(5)", "Y PIC X VALUE Y. PIC X(5)"},
      {"IS before it", "==:LEN:== BY ==3==", "PICTURE IS X(:LEN:).", "PICTURE IS X(3)."},
  });
}

TEST(Replacing, APictureThatIsMadeIsOneToken) {
  const ExpandedProgram program({{"P.cbl", "COPY BOOK REPLACING ==:LEN:== BY ==10==."}, {"BOOK", "PIC X(:LEN:)."}});
  EXPECT_EQ(program.Find("X(10)").kind, TokenKind::Picture);
  EXPECT_EQ(program.PlaceOf("X(10)"), "BOOK:1:5 'X(:LEN:)'");
}

TEST(Replacing, PartialWords) {
  ExpectReplaced({
      {"leading", "LEADING ==AA== BY ==BB==", "AA-X XAA AA AA1", "BB-X XAA BB BB1"},
      {"leading with hyphen", "LEADING ==AA-== BY ==B-C-==", "AA-X AA", "B-C-X AA"},
      {"trailing", "TRAILING ==-AA== BY ==-BB==", "X-AA AA-X", "X-BB AA-X"},
      {"leading removed", "LEADING ==AA-== BY ====", "AA-X Y", "X Y"},
      {"trailing removed", "TRAILING ==-AA== BY ====", "X-AA. Y", "X. Y"},
      {"the whole removed", "LEADING ==AA== BY ====", "X AA. Y", "X . Y"},
      {"without case", "LEADING ==aa== BY ==bb==", "AA-X", "bb-X"},
      {"among others", "==AA-X== BY ==1== LEADING ==AA== BY ==BB== ==AA-Y== BY ==2==", "AA-X AA-Y AA-Z", "1 BB-Y BB-Z"},
      {"a word called LEADING", "LEADING BY TRAILING", "LEADING AA", "TRAILING AA"},
      {"in a reference", "LEADING ==AA== BY ==BB==", "AA-X(AA-I:1)", "BB-X(BB-I:1)"},
  });
}

TEST(Replacing, AppliesToWhatTheCopybookCopies) {
  ExpectReplaced({
      {"no REPLACING within", "X BY 1", "X COPY INNER. X", "1 1 Y 1"},
      {"the inner one first", "X BY 1 Z BY 2", "COPY INNER REPLACING Y BY Z.", "1 2"},
      {"the inner name too", "==:B:== BY ==INNER==", "COPY :B:. A", "X Y A"},
      {"a part of the inner name", "==:B:== BY ==NER==", "COPY IN:B:.", "X Y"},
  });
}

TEST(Replacing, AReplacedTokenStandsWhereTheReplacedTextStands) {
  const ExpandedProgram program(
      {{"P.cbl", "COPY BOOK REPLACING ==A B== BY ==C D== ==:T:== BY ==PM==."}, {"BOOK", "X\n  A\n  B Y :T:-NO"}});
  EXPECT_EQ(program.Words(), "X C D Y PM-NO");
  EXPECT_EQ(program.PlaceOf("C"), "BOOK:2:3 'A\n  B'");
  EXPECT_EQ(program.PlaceOf("D"), "BOOK:2:3 'A\n  B'");
  EXPECT_EQ(program.PlaceOf("PM-NO"), "BOOK:3:7 ':T:-NO'");
  EXPECT_EQ(program.PlaceOf("Y"), "BOOK:3:5 'Y'");
  EXPECT_TRUE(program.Find("C").Has(kReplaced));
  EXPECT_TRUE(program.Find("C").Has(kFirstOnRow));
  EXPECT_FALSE(program.Find("D").Has(kFirstOnRow));
  EXPECT_TRUE(program.Find("PM-NO").Has(kReplaced));
  EXPECT_FALSE(program.Find("Y").Has(kReplaced));
  EXPECT_EQ(program.Find("PM-NO").symbol, program.Symbols().Find("PM-NO"));
}

TEST(Replacing, ManyPairsAreTriedInTheirOrder) {
  std::string pairs, copybook, words;
  for (int number = 0; number < 200; ++number) {
    const std::string text = std::to_string(number);
    pairs += " ==A" + text + "== BY ==B" + text + "== ==A" + text + " X== BY ==NONE==";
    copybook += "A" + text + " X ";
    words += "B" + text + " X ";
  }
  words.pop_back();
  ExpectReplaced({{"many", pairs, copybook, words}});
}

}  // namespace
}  // namespace qmrules::test
