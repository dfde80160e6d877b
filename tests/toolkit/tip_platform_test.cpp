#include "toolkit/tip_platform.h"

#include <gtest/gtest.h>

TEST(TipClassStyle, HasAShadowOnSystemsThatDrawOne) {
    constexpr UINT Plain = 0x28;
    constexpr UINT Shadowed = 0x20028;
    EXPECT_EQ(Plain, TipClassStyle(4, 10));
    EXPECT_EQ(Plain, TipClassStyle(5, 0));
    EXPECT_EQ(Shadowed, TipClassStyle(5, 1));
    EXPECT_EQ(Plain, TipClassStyle(5, 2)); // wanted
    EXPECT_EQ(Shadowed, TipClassStyle(6, 0));
    EXPECT_EQ(Shadowed, TipClassStyle(6, 1));
    EXPECT_EQ(Shadowed, TipClassStyle(10, 0));
    EXPECT_EQ(Shadowed, TipClassStyleHere());
}

TEST(TipPlatform, IsTheRealWorldUnlessATestSaysOtherwise) {
    const DWORD before = GetTickCount();
    const DWORD ticks = tipPlatform.ticks();
    EXPECT_LE(ticks - before, GetTickCount() - before);
    EXPECT_EQ(&NProcessFade(), &tipPlatform.fade());
    EXPECT_EQ(&WaitServingSentMessages, tipPlatform.wait);
}
