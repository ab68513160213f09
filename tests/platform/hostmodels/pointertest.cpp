#include "platform/pointer.h"

#include <gtest/gtest.h>

namespace qmrules::platform {
namespace {

TEST(Pointer, IsBusyToTheEndOfTheScope) {
  MemoryPointer pointer;
  {
    const BusyCursor busy(pointer);
    EXPECT_TRUE(pointer.IsBusy());
    {
      const BusyCursor again(pointer);
      EXPECT_TRUE(pointer.IsBusy());
    }
    EXPECT_TRUE(pointer.IsBusy());
  }
  EXPECT_FALSE(pointer.IsBusy());
}

TEST(Pointer, IsNormalAroundADialogAmidWork) {
  MemoryPointer pointer;
  const BusyCursor busy(pointer);
  {
    const NormalCursor normal(pointer);
    EXPECT_FALSE(pointer.IsBusy());
  }
  EXPECT_TRUE(pointer.IsBusy());
}

}  // namespace
}  // namespace qmrules::platform
