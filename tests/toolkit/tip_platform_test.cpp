#include "tests/support/test_cursor.h"
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
    const DWORD beginOfSleep = GetTickCount();
    tipPlatform.sleep(100);
    EXPECT_GE(GetTickCount() - beginOfSleep, 50u); // as coarse as the count may be
}

TEST(TipPlatform, TheCursorIsWhereItIsElseOffTheScreen) {
    TestCursor cursor;
    cursor.MoveTo(123, 45);
    EXPECT_EQ(123, tipPlatform.cursor().x);
    EXPECT_EQ(45, tipPlatform.cursor().y);
    cursor.Hide();
    EXPECT_EQ(-32768, tipPlatform.cursor().x);
    EXPECT_EQ(-32768, tipPlatform.cursor().y);
}
