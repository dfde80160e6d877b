#include "tests/support/leak_counters.h"
#include "toolkit/device_contexts.h"

#include <gtest/gtest.h>

TEST(NWindowDC, WithoutAWindowItIsTheScreens) {
    NWindowDC screen(nullptr);
    EXPECT_EQ(nullptr, screen.window);
    ASSERT_NE(nullptr, screen.dc);
    EXPECT_EQ(static_cast<DWORD>(OBJ_DC), GetObjectType(screen.dc));
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), GetDeviceCaps(screen.dc, HORZRES));
}

TEST(NWindowDC, BelongsToItsWindow) {
    NWindowDC desktop(GetDesktopWindow());
    EXPECT_EQ(GetDesktopWindow(), desktop.window);
    EXPECT_EQ(GetDesktopWindow(), WindowFromDC(desktop.dc));
}

TEST(NMemoryDC, FitsTheScreenOrItsSource) {
    NMemoryDC ofScreen;
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), GetObjectType(ofScreen.dc));
    NMemoryDC ofSource(ofScreen.dc);
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), GetObjectType(ofSource.dc));
}

TEST(DeviceContexts, AreReleasedOnceHoweverOftenThatIsAsked) {
    NWindowDC screen;
    screen.Release();
    EXPECT_EQ(nullptr, screen.dc);
    screen.Release();
    EXPECT_EQ(nullptr, screen.dc);
    NMemoryDC memory;
    const HDC handle = memory.dc;
    memory.Release();
    EXPECT_EQ(nullptr, memory.dc);
    EXPECT_EQ(0u, GetObjectType(handle));
    memory.Release();
    EXPECT_EQ(nullptr, memory.dc);
}

TEST(DeviceContexts, NoneOutlivesItsOwner) {
    const auto useAll = [] {
        NWindowDC screen;
        NMemoryDC ofScreen(screen.dc);
        NMemoryDC plain;
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 100; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
