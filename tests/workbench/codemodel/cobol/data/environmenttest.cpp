#include <gtest/gtest.h>

#include "workbench/codemodel/cobol/data/headmodel.h"

namespace qmrules::test {
namespace {

using workbench::codemodel::Entity;
using Kind = workbench::codemodel::cobol::ProgramScope::SpecialKind;

std::string SpecialNames(std::string_view lines) {
  std::string text =
      "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. P.\n       ENVIRONMENT DIVISION.\n"
      "       CONFIGURATION SECTION.\n       SOURCE-COMPUTER. SOME-370 WITH DEBUGGING MODE.\n"
      "       OBJECT-COMPUTER. SOME-370 MEMORY SIZE 8 MODULES\n           PROGRAM COLLATING SEQUENCE IS ALF.\n"
      "       SPECIAL-NAMES.\n";
  return text + std::string(lines);
}

TEST(SpecialNames, DeclareMnemonicsSwitchesAlphabetsAndClasses) {
  const HeadModel model(SpecialNames(R"(           C01 IS TOP-OF-PAGE
           SYSIN IN-DEVICE
           UPSI-0 IS SW-1 ON STATUS IS SW-1-ON OFF STATUS SW-1-OFF
           UPSI-1 ON IS SW-2-ON
           ALPHABET ALF IS 'A' THRU 'Z' ALSO 'a'
           ALPHABET BET IS STANDARD-1
           CLASS VOWEL IS 'A' 'E' 'I' 'O' 'U'
           SYMBOLIC CHARACTERS BEEP-CHAR IS 8, NUL-CHAR ARE 1.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  const auto kind = [&](std::string_view name) { return model.Scope().Special(model.Symbol(name)); };
  EXPECT_EQ(kind("TOP-OF-PAGE"), Kind::Mnemonic);
  EXPECT_EQ(kind("IN-DEVICE"), Kind::Mnemonic);
  EXPECT_EQ(kind("SW-1"), Kind::Mnemonic);
  EXPECT_EQ(kind("SW-1-ON"), Kind::SwitchStatus);
  EXPECT_EQ(kind("SW-1-OFF"), Kind::SwitchStatus);
  EXPECT_EQ(kind("SW-2-ON"), Kind::SwitchStatus);
  EXPECT_EQ(kind("ALF"), Kind::Alphabet);
  EXPECT_EQ(kind("BET"), Kind::Alphabet);
  EXPECT_EQ(kind("VOWEL"), Kind::Class);
  EXPECT_EQ(kind("BEEP-CHAR"), Kind::SymbolicCharacter);
  EXPECT_EQ(kind("NUL-CHAR"), Kind::SymbolicCharacter);
  EXPECT_EQ(kind("C01"), Kind::None);
  EXPECT_EQ(model.Node(model.Scope().SpecialNode(model.Symbol("VOWEL"))).firstRow, 15U);
}

TEST(SpecialNames, CurrencySignAndDecimalPointHoldForPictures) {
  const HeadModel model(SpecialNames(R"(           CURRENCY SIGN IS 'F'
           DECIMAL-POINT IS COMMA.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC F.FF9,99.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Item("A").size, 8U);
  EXPECT_EQ(model.Item("A").scale, 2);
}

TEST(SpecialNames, ACurrencySignCanHaveAPictureSymbolOfItsOwn) {
  const HeadModel model(SpecialNames(R"(           CURRENCY SIGN IS 'EUR' WITH PICTURE SYMBOL 'U'.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC UU9.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Item("A").size, 3U);
}

TEST(SpecialNames, NumericSignHoldsForAllItems) {
  const HeadModel model(SpecialNames(R"(           NUMERIC SIGN IS TRAILING SEPARATE.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  A PIC S99.
       01  B PIC S99 SIGN LEADING.
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Layout(), "01 A 0+3\n01 B 0+2\n");
}

TEST(SpecialNames, CursorAndScreenStatusAreVariables) {
  const HeadModel model(SpecialNames(R"(           CURSOR IS CUR
           CRT STATUS IS STAT.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01  CUR PIC 9(4).
       01  STAT PIC 9(4).
)"));
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Tree(Entity::Environment), "REF ALF Other\nVAR CUR IN Status @13\nVAR STAT IN Status @14\n");
}

TEST(FileControl, NamesTheFileItsKeysAndItsStatus) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT OPTIONAL F ASSIGN TO DISK 'F.DAT'
               ORGANIZATION IS INDEXED ACCESS MODE IS DYNAMIC
               RECORD KEY IS K
               ALTERNATE RECORD KEY IS K2 OF R WITH DUPLICATES
               RESERVE 2 AREAS
               FILE STATUS IS ST ST2.
           SELECT G ASSIGN PRINTER.
           SELECT H ASSIGN TO X RELATIVE KEY IS RK
               ACCESS RANDOM.
       I-O-CONTROL.
           SAME RECORD AREA FOR F, G
           RERUN ON X EVERY 100 RECORDS OF H.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  R.
           05  K PIC X(3).
           05  K2 PIC X(3).
       FD  G.
       01  GR PIC X(80).
       FD  H.
       01  HR PIC X(80).
       WORKING-STORAGE SECTION.
       01  ST PIC XX.
       01  ST2 PIC X(6).
       01  RK PIC 9(4).
       01  K PIC X.
)");
  EXPECT_EQ(model.Diagnostics(), "");
  EXPECT_EQ(model.Tree(Entity::Environment),
            "REF F File @20\nVAR K OUT Key @22\nVAR K2 OUT Key @23\n  REF R Qualifier @21\nVAR ST IN Status @29\nVAR "
            "ST2 IN Status @30\n"
            "REF G File @24\nREF H File @26\nVAR RK INOUT Key @31\nREF F File @20\nREF G File @24\nREF H File @26\n");
  const auto file = model.File("F");
  EXPECT_EQ(model.Text(file.assign), "DISK 'F.DAT'");
  EXPECT_EQ(model.Text(file.organization), "INDEXED");
  EXPECT_EQ(model.Text(file.access), "DYNAMIC");
  EXPECT_EQ(file.status, model.Item("ST").node);
  EXPECT_EQ(model.Node(file.key).firstRow, 22U);
  EXPECT_EQ(file.firstRecord, model.Item("R").node);
  EXPECT_EQ(model.Node(file.select).firstRow, 6U);
  EXPECT_EQ(model.Text(model.File("H").organization), "RELATIVE");
  EXPECT_EQ(model.Text(model.File("H").access), "RANDOM");
}

TEST(FileControl, AnErrorCostsOneClause) {
  const HeadModel model(R"(
       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO A WIBBLE
               FILE STATUS IS.
           SELECT G ASSIGN TO B STATUS NOWHERE
           SELECT H ASSIGN TO C.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  R PIC X.
       FD  G.
       01  S PIC X.
)");
  EXPECT_EQ(model.Diagnostics(),
            "gap 7:30 The name of a data item is missing here.\n"
            "gap 9:12 The full stop of the SELECT before this is missing.\n"
            "gap 8:40 NOWHERE is not declared.\n"
            "gap 9:19 H is not declared.\n");
  EXPECT_EQ(model.Text(model.File("G").assign), "B");
}

}  // namespace
}  // namespace qmrules::test
