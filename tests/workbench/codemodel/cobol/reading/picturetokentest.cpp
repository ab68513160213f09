#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/reading/lexedtext.h"

namespace qmrules::workbench::codemodel::cobol {
namespace {

TEST(PictureToken, APictureGoesOnToABlank) {
  EXPECT_EQ(Free("PIC S9(7)V99 COMP-3"), "PIC {S9(7)V99} COMP-3");
  EXPECT_EQ(Free("PICTURE IS $$,$$9.99CR VALUE"), "PICTURE IS {$$,$$9.99CR} VALUE");
  EXPECT_EQ(Free("pic is +9(3)/XX0B* USAGE"), "pic is {+9(3)/XX0B*} USAGE");
  EXPECT_EQ(Free("PIC -9(9).9(9)."), "PIC {-9(9).9(9)} .");
  EXPECT_EQ(Free("PIC .99"), "PIC {.99}");
}

TEST(PictureToken, TheFullStopOfTheSentenceIsNoPartOfIt) {
  EXPECT_EQ(Free("PIC X.\nPIC 9(5).\nPIC ZZ9.99. 05"), "PIC {X} .|PIC {9(5)} .|PIC {ZZ9.99} . #05");
  EXPECT_EQ(Free("PIC X(5), VALUE\nPIC 9; VALUE"), "PIC {X(5)} VALUE|PIC {9} VALUE");
}

TEST(PictureToken, ATagIsPartOfIt) {
  EXPECT_EQ(Free("PIC X(:LEN:). PIC :TAG:. PIC S9(:A:)V9(:B:)"), "PIC {X(:LEN:)} . PIC {:TAG:} . PIC {S9(:A:)V9(:B:)}");
}

TEST(PictureToken, AClauseThatTouchesItIsAWordOfItsOwn) {
  EXPECT_EQ(Free("PIC S9(4)COMP-3. PIC X(3)VALUE'A' PIC 9(2).USAGE"),
            "PIC {S9(4)} COMP-3 . PIC {X(3)} VALUE 'A' PIC {9(2)} . USAGE");
  EXPECT_EQ(Free("PIC X(3)X(LEN)"), "PIC {X(3)X(LEN)}");
}

TEST(PictureToken, AMissingPictureTakesNothing) {
  EXPECT_EQ(Free("PIC.\nPIC VALUE 1\nPIC 'A'\nPICTURE (3)\nPIC == X"),
            "PIC .|PIC VALUE #1|PIC 'A'|PICTURE ( #3 )|PIC == X");
}

TEST(PictureToken, ThePictureSymbolOfACurrencyIsNoPicture) {
  EXPECT_EQ(Free("CURRENCY 'F' PICTURE SYMBOL 'F'"), "CURRENCY 'F' PICTURE SYMBOL 'F'");
}

TEST(PictureToken, CurrencySignsOfAnyKindArePictures) {
  EXPECT_EQ(Free("PIC WWW9.99 PIC \u00a3\u00a39.99 PIC <<9 PIC F(5)9"),
            "PIC {WWW9.99} PIC {\u00a3\u00a39.99} PIC {<<9} PIC {F(5)9}");
}

TEST(PictureToken, ItStandsOnTheNextLineOrBehindAComment) {
  EXPECT_EQ(Fixed("       PIC\n           X(5).\n       PIC *> text\n       IS\n      * c\n       99\n"),
            "PIC|{X(5)} .|PIC|IS|{99}");
}

TEST(PictureToken, NoneWithinExec) {
  EXPECT_EQ(Free("EXEC SQL SELECT PIC FROM T END-EXEC PIC X"), "EXEC SQL SELECT PIC FROM T END-EXEC PIC {X}");
}

}  // namespace
}  // namespace qmrules::workbench::codemodel::cobol
