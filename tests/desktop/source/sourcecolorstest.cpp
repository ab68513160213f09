#include "desktop/source/sourcecolors.h"

#include <gtest/gtest.h>

#include <QPalette>

namespace qmrules::desktop {
namespace {

QPalette PaletteOf(const char* base, const char* text) {
  QPalette palette;
  palette.setColor(QPalette::Base, QColor(QLatin1String(base)));
  palette.setColor(QPalette::Text, QColor(QLatin1String(text)));
  return palette;
}

TEST(SourceColors, ContrastIsThatOfTheGuidelines) {
  EXPECT_NEAR(Contrast(Qt::white, Qt::black), 21, 0.001);
  EXPECT_NEAR(Contrast(Qt::black, Qt::black), 1, 0.001);
  EXPECT_NEAR(Contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

class EveryPalette : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(EveryPalette, EveryClassCanBeReadOnAllThatIsBehindIt) {
  const SourceColors colors(PaletteOf(GetParam().first, GetParam().second));
  for (const QColor& background : colors.Backgrounds()) {
    EXPECT_GE(Contrast(colors.text, background), kReadableContrast);
    for (std::size_t kind = 0; kind < colors.classes.size(); ++kind) {
      EXPECT_GE(Contrast(colors.classes[kind], background), kReadableContrast)
          << "class " << kind << " on " << background.name().toStdString();
    }
  }
  EXPECT_GE(Contrast(colors.rowNumber, colors.margin), kReadableContrast);
  EXPECT_GE(Contrast(colors.currentRowNumber, colors.margin), kReadableContrast);
}

TEST_P(EveryPalette, BarsStandOutFromTheMargin) {
  const SourceColors colors(PaletteOf(GetParam().first, GetParam().second));
  for (const QColor& lane : colors.lanes) EXPECT_GE(Contrast(lane, colors.margin), 1.5);
}

INSTANTIATE_TEST_SUITE_P(SourceColors, EveryPalette,
                         testing::Values(std::pair("#ffffff", "#000000"), std::pair("#fdf6e3", "#586e75"),
                                         std::pair("#1e1f22", "#dfe1e5"), std::pair("#000000", "#ffffff"),
                                         std::pair("#002b36", "#93a1a1")));

TEST(SourceColors, AColorThatCanBeReadStays) {
  EXPECT_EQ(ReadableOn({Qt::white}, QColor(0x00, 0x4F, 0xA8)), QColor(0x00, 0x4F, 0xA8));
}

TEST(SourceColors, WhereNothingCanBeReadTheBestIsTaken) {
  EXPECT_EQ(ReadableOn({Qt::white, Qt::black, QColor(0xF0, 0xF0, 0xF0)}, Qt::red), QColor(Qt::white));
}

}  // namespace
}  // namespace qmrules::desktop
