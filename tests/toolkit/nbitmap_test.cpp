#include "tests/support/leak_counters.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "toolkit/nbitmap.h"

#include <gtest/gtest.h>

TEST(NBitmap, AnEmptyOneHasNoSizeAndOneColour) {
    NBitmap bitmap;
    EXPECT_EQ(nullptr, bitmap.handle);
    EXPECT_EQ(0, bitmap.Width());
    EXPECT_EQ(0, bitmap.Height());
    EXPECT_EQ(1u, bitmap.Colours());
}

TEST(NBitmap, IsMadeForADeviceContextOrTheScreen) {
    NBitmap bitmap;
    EXPECT_TRUE(bitmap.CreateCompatible(nullptr, 7, 5));
    EXPECT_EQ(7, bitmap.Width());
    EXPECT_EQ(5, bitmap.Height());
    EXPECT_EQ(uint64_t{1} << GetDeviceCaps(NWindowDC().dc, BITSPIXEL), bitmap.Colours());
    // A new memory device context has black and white alone.
    NMemoryDC memory;
    EXPECT_TRUE(bitmap.CreateCompatible(memory.dc, 3, 2));
    EXPECT_EQ(3, bitmap.Width());
    EXPECT_EQ(2u, bitmap.Colours());
}

TEST(NBitmap, NothingIsMadeOfASizeOfZero) {
    const SIZE sizes[] = {{0, 5}, {5, 0}, {0, 0}, {-1, 5}, {5, -1}};
    for (const SIZE& size : sizes) {
        NBitmap bitmap;
        bitmap.CreateCompatible(nullptr, 2, 2);
        EXPECT_FALSE(bitmap.CreateCompatible(nullptr, size.cx, size.cy));
        EXPECT_EQ(nullptr, bitmap.handle);
    }
}

TEST(NBitmap, ACopyHasTheSamePixelsAndIsAnother) {
    NBitmap original;
    original.CreateCompatible(nullptr, 3, 2);
    SetPixelOf(original.handle, 2, 1, 0x123456);
    NBitmap copy;
    EXPECT_TRUE(copy.CopyFrom(original.handle));
    EXPECT_NE(original.handle, copy.handle);
    EXPECT_EQ(3, copy.Width());
    EXPECT_EQ(2, copy.Height());
    EXPECT_EQ(0x123456u, PixelOf(copy.handle, 2, 1));
    SetPixelOf(original.handle, 2, 1, 0);
    EXPECT_EQ(0x123456u, PixelOf(copy.handle, 2, 1));
}

TEST(NBitmap, ItCanBecomeACopyOfItself) {
    NBitmap bitmap;
    bitmap.CreateCompatible(nullptr, 3, 2);
    SetPixelOf(bitmap.handle, 1, 1, 0x123456);
    EXPECT_TRUE(bitmap.CopyFrom(bitmap.handle));
    EXPECT_EQ(0x123456u, PixelOf(bitmap.handle, 1, 1));
}

TEST(NBitmap, ACopyOfNothingIsEmpty) {
    NBitmap bitmap;
    bitmap.CreateCompatible(nullptr, 3, 2);
    EXPECT_FALSE(bitmap.CopyFrom(nullptr));
    EXPECT_EQ(nullptr, bitmap.handle);
}

TEST(NBitmap, OneThatIsSelectedElsewhereIsNotCopied) {
    NBitmap original;
    original.CreateCompatible(nullptr, 3, 2);
    NMemoryDC dc;
    ScopedSelection selected(dc.dc, original.handle);
    NBitmap copy;
    EXPECT_FALSE(copy.CopyFrom(original.handle));
    EXPECT_EQ(nullptr, copy.handle);
}

TEST(NBitmap, IsLoadedFromTheResourcesOfTheHostProcessOrAModule) {
    for (HINSTANCE module : {HINSTANCE(nullptr), GetModuleHandleW(nullptr)}) {
        NBitmap bitmap;
        EXPECT_TRUE(bitmap.LoadResource(IDB_GREYS, module));
        EXPECT_EQ(4, bitmap.Width());
        EXPECT_EQ(2, bitmap.Height());
        EXPECT_EQ(RGB(255, 0, 255), PixelOf(bitmap.handle, 0, 0));
        EXPECT_EQ(RGB(192, 192, 192), PixelOf(bitmap.handle, 1, 0));
        EXPECT_EQ(RGB(0, 0, 255), PixelOf(bitmap.handle, 3, 1));
    }
}

TEST(NBitmap, WithMappedColoursTheFirstPixelsColourIsThatOfTheFace) {
    NBitmap bitmap;
    EXPECT_TRUE(bitmap.LoadResource(IDB_GREYS, nullptr, true));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), PixelOf(bitmap.handle, 0, 0));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), PixelOf(bitmap.handle, 0, 1));
    EXPECT_EQ(RGB(0, 0, 255), PixelOf(bitmap.handle, 3, 1));
}

TEST(NBitmap, AResourceThatIsNotThereLeavesItEmpty) {
    NBitmap bitmap;
    bitmap.CreateCompatible(nullptr, 2, 2);
    EXPECT_FALSE(bitmap.LoadResource(999));
    EXPECT_EQ(nullptr, bitmap.handle);
    // Nor is it in a module that has none.
    EXPECT_FALSE(bitmap.LoadResource(IDB_GREYS, GetModuleHandleW(L"ntdll.dll")));
}

TEST(NBitmap, IsReleasedOnceHoweverOftenThatIsAsked) {
    NBitmap bitmap;
    bitmap.CreateCompatible(nullptr, 2, 2);
    const HBITMAP handle = bitmap.handle;
    bitmap.Release();
    EXPECT_EQ(nullptr, bitmap.handle);
    EXPECT_EQ(0u, GetObjectType(handle));
    bitmap.Release();
    EXPECT_EQ(nullptr, bitmap.handle);
}

TEST(NBitmap, NothingItMakesOutlivesIt) {
    const auto useAll = [] {
        NBitmap bitmap;
        bitmap.CreateCompatible(nullptr, 5, 5);
        bitmap.CreateCompatible(nullptr, 6, 6);
        NBitmap other;
        other.CopyFrom(bitmap.handle);
        other.LoadResource(IDB_GREYS);
        other.LoadResource(IDB_GREYS, nullptr, true);
        other.CopyFrom(nullptr);
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 50; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
