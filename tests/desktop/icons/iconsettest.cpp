#include "desktop/icons/iconset.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace qmrules::desktop {
namespace {

using Background = IconSet::Background;

// The image keys that the control and its tree ask for.
const char* const neededKeys[] = {"Properties",   "Delete",      "DoublePage", "Create",     "Find",       "Locate",
                                  "RedTick",      "Segment",     "Report",     "AutoDetect", "Emphasize",  "Validate",
                                  "Previous",     "Next",        "MoveDown",   "MoveUp",     "Change",     "CopyMove",
                                  "ExpImp",       "ActivityLog", "Selected",   "Workspace",  "ProjectBad", "Project",
                                  "BUSINESSFUNC", "RULESET",     "RULE",       "COBOL",      "NATURAL",    "PLI",
                                  "RPG",          "PROGRAM",     "JCL",        "App"};

QImage Drawn(const QIcon& icon, int size, QIcon::Mode mode = QIcon::Normal) {
  QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  icon.paint(&painter, image.rect(), Qt::AlignCenter, mode);
  return image;
}

int InkedPixels(const QImage& image) {
  int inked = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) inked += image.pixelColor(x, y).alpha() > 0 ? 1 : 0;
  }
  return inked;
}

int Strongest(const QImage& image) {
  int strongest = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) strongest = std::max(strongest, image.pixelColor(x, y).alpha());
  }
  return strongest;
}

std::set<QString> ColorsOf(const QByteArray& svg) {
  std::set<QString> colors;
  static const QRegularExpression color("#[0-9a-f]{6}");
  for (auto matches = color.globalMatch(QString::fromUtf8(svg)); matches.hasNext();) {
    colors.insert(matches.next().captured());
  }
  return colors;
}

double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const double first = Luminance(a) + 0.05;
  const double second = Luminance(b) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

TEST(IconSet, HasAPictureForEveryKeyThatIsAskedFor) {
  const auto keys = IconSet::Keys();
  for (const char* const key : neededKeys) EXPECT_NE(std::ranges::find(keys, key), keys.end()) << key;
}

TEST(IconSet, EveryPictureIsAValidDrawingThatFillsItsGrid) {
  for (const auto background : {Background::Light, Background::Dark}) {
    const IconSet icons(background);
    for (const std::string& key : IconSet::Keys()) {
      const QSvgRenderer drawing(icons.Svg(key));
      EXPECT_TRUE(drawing.isValid()) << key;
      EXPECT_EQ(drawing.viewBox().width(), drawing.viewBox().height()) << key;
      EXPECT_GT(InkedPixels(Drawn(icons.Icon(key), 24)), 50) << key;
    }
  }
}

TEST(IconSet, NoTwoPicturesLookAlike) {
  const IconSet icons(Background::Light);
  std::map<QByteArray, std::string> seen;
  for (const std::string& key : IconSet::Keys()) {
    const auto [other, isNew] = seen.try_emplace(icons.Svg(key), key);
    EXPECT_TRUE(isNew) << key << " and " << other->second;
  }
}

TEST(IconSet, EveryColourOfADrawingIsReplacedOnADarkBackground) {
  const IconSet light(Background::Light);
  const IconSet dark(Background::Dark);
  for (const std::string& key : IconSet::Keys()) {
    if (key == "App") continue;
    const auto onDark = ColorsOf(dark.Svg(key));
    for (const QString& color : ColorsOf(light.Svg(key))) {
      EXPECT_FALSE(onDark.contains(color)) << key << " " << color.toStdString();
    }
  }
}

TEST(IconSet, TheLinesStandOutFromTheBackground) {
  const QRegularExpression stroke("stroke=\"(#[0-9a-f]{6})\"");
  for (const auto& [background, ground] :
       {std::pair(Background::Light, QColor("#f5f5f5")), std::pair(Background::Dark, QColor("#2b2d30"))}) {
    const IconSet icons(background);
    for (const std::string& key : IconSet::Keys()) {
      if (key == "App") continue;
      for (auto lines = stroke.globalMatch(QString::fromUtf8(icons.Svg(key))); lines.hasNext();) {
        const QString color = lines.next().captured(1);
        EXPECT_GE(Contrast(QColor(color), ground), 3.0) << key << " " << color.toStdString();
      }
    }
  }
}

TEST(IconSet, TheBackgroundFollowsThePalette) {
  QPalette dark;
  dark.setColor(QPalette::Window, QColor("#202124"));
  dark.setColor(QPalette::WindowText, Qt::white);
  EXPECT_EQ(IconSet(dark).Svg("Find"), IconSet(Background::Dark).Svg("Find"));
  QPalette light;
  light.setColor(QPalette::Window, Qt::white);
  light.setColor(QPalette::WindowText, Qt::black);
  EXPECT_EQ(IconSet(light).Svg("Find"), IconSet(Background::Light).Svg("Find"));
}

TEST(IconSet, KeysAreFoundInAnyCase) {
  const IconSet icons(Background::Light);
  EXPECT_EQ(icons.Svg("businessfunc"), icons.Svg("BUSINESSFUNC"));
  EXPECT_FALSE(icons.Svg("businessfunc").isEmpty());
}

TEST(IconSet, AKeyWithoutAPictureShowsNothing) {
  const IconSet icons(Background::Light);
  EXPECT_TRUE(icons.Svg("NoSuchKey").isEmpty());
  EXPECT_TRUE(icons.Icon("NoSuchKey").isNull());
}

TEST(IconSet, ADisabledPictureIsPaler) {
  const QIcon icon = IconSet(Background::Light).Icon("Delete");
  EXPECT_LT(Strongest(Drawn(icon, 24, QIcon::Disabled)), Strongest(Drawn(icon, 24)) / 2);
}

TEST(IconSet, APictureOnASelectedRowStandsOutFromItsColour) {
  QPalette palette;
  palette.setColor(QPalette::Highlight, QColor("#2563c9"));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  QGuiApplication::setPalette(palette);
  for (const auto background : {Background::Light, Background::Dark}) {
    const QImage picture = Drawn(IconSet(background).Icon("RULE"), 48, QIcon::Selected);
    double best = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        const QColor color = picture.pixelColor(x, y);
        if (color.alpha() == 255) best = std::max(best, Contrast(color, QColor("#2563c9")));
      }
    }
    EXPECT_GE(best, 4.5);
  }
  QGuiApplication::setPalette(QPalette());
}

TEST(IconSet, APictureIsDrawnSharpAtEverySize) {
  const QIcon icon = IconSet(Background::Light).Icon("Create");
  const QPixmap large = icon.pixmap(96, 96);
  EXPECT_EQ(large.size(), QSize(96, 96));
  // A picture that was scaled up from a small one would be soft everywhere.
  EXPECT_EQ(Strongest(large.toImage()), 255);
}

class FilledList : public testing::Test {
 protected:
  platform::widgets::ImageList list_;
};

TEST_F(FilledList, GetsAPictureUnderEveryKey) {
  IconSet(Background::Light).Fill(list_);
  EXPECT_EQ(list_.Count(), IconSet::Keys().size());
  ASSERT_NE(list_.Find("RULE"), nullptr);
  EXPECT_EQ(list_.Find("RULE")->bytes, IconSet(Background::Light).Svg("RULE").toStdString());
}

TEST_F(FilledList, KeepsThePicturesOfTheWorkspace) {
  list_.Set("RULE", {.path = "Icons/Rule.png", .bytes = {}});
  IconSet(Background::Light).Fill(list_);
  EXPECT_EQ(list_.Find("RULE")->path, "Icons/Rule.png");
  EXPECT_EQ(list_.Find("RULE")->bytes, "");
}

TEST_F(FilledList, IsRenewedForAnotherBackground) {
  IconSet(Background::Light).Fill(list_);
  IconSet(Background::Dark).Fill(list_);
  EXPECT_EQ(list_.Find("RULE")->bytes, IconSet(Background::Dark).Svg("RULE").toStdString());
}

TEST_F(FilledList, ThatIsFilledAgainTellsOfNoChange) {
  IconSet(Background::Light).Fill(list_);
  int changes = 0;
  const auto subscription = list_.OnChanged.Subscribe([&] { ++changes; });
  IconSet(Background::Light).Fill(list_);
  EXPECT_EQ(changes, 0);
}

}  // namespace
}  // namespace qmrules::desktop
