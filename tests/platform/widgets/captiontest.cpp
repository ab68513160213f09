#include "platform/widgets/caption.h"

#include <gtest/gtest.h>

namespace qmrules::platform::widgets {
namespace {

TEST(Caption, TheLetterBehindTheSignIsTheMnemonicInAnyCase) {
  EXPECT_EQ(MnemonicOf("&Name:"), "n");
  EXPECT_EQ(MnemonicOf("Ne&w"), "w");
  EXPECT_TRUE(HasMnemonic("Business &Function:", "f"));
  EXPECT_TRUE(HasMnemonic("Business &Function:", "F"));
  EXPECT_FALSE(HasMnemonic("Business &Function:", "b"));
}

TEST(Caption, WithoutASignThereIsNoMnemonic) {
  EXPECT_EQ(MnemonicOf("OK"), std::nullopt);
  EXPECT_EQ(MnemonicOf(""), std::nullopt);
  EXPECT_EQ(MnemonicOf("Name&"), std::nullopt);
}

TEST(Caption, TwoSignsAreThePlainSign) {
  EXPECT_EQ(MnemonicOf("R&&D"), std::nullopt);
  EXPECT_EQ(MnemonicOf("R&&D &List"), "l");
  EXPECT_EQ(PlainCaption("R&&D &List"), "R&D List");
}

TEST(Caption, MnemonicsReachBeyondAscii) {
  EXPECT_EQ(MnemonicOf("&Имя"), "и");
  EXPECT_EQ(MnemonicOf("&𐐀"), "𐐨");
  EXPECT_EQ(PlainCaption("名前(&N)"), "名前(N)");
}

TEST(Caption, ASignAtTheEndIsNotReadAloud) {
  EXPECT_EQ(PlainCaption("Name&"), "Name");
}

}  // namespace
}  // namespace qmrules::platform::widgets
