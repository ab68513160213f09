#include "platform/widgets/imagelist.h"

#include <gtest/gtest.h>

namespace qmrules::platform::widgets {
namespace {

TEST(ImageList, FindsPicturesInAnyCase) {
  ImageList images;
  images.Set("RULE", {"rule.png", {}});
  ASSERT_NE(images.Find("rule"), nullptr);
  EXPECT_EQ(images.Find("rule")->path, "rule.png");
  EXPECT_EQ(images.Find("RULESET"), nullptr);
}

TEST(ImageList, ANewPictureTakesTheOldOnesPlace) {
  ImageList images;
  int told = 0;
  const auto changes = images.OnChanged.Subscribe([&] { ++told; });
  images.Set("RULE", {"old.png", {}});
  images.Set("Rule", {{}, "bytes"});
  EXPECT_EQ(images.Count(), 1U);
  EXPECT_EQ(images.Find("RULE")->bytes, "bytes");
  EXPECT_EQ(images.Find("RULE")->path, "");
  EXPECT_EQ(told, 2);
}

}  // namespace
}  // namespace qmrules::platform::widgets
