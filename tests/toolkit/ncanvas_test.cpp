#include "tests/support/leak_counters.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_pictures.h"
#include "tests/toolkit/test_resources.h"
#include "toolkit/ncanvas.h"

#include <gtest/gtest.h>

namespace {
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Blue = RGB(0, 0, 255);

HBITMAP SelectedBitmap(HDC dc) {
    return static_cast<HBITMAP>(GetCurrentObject(dc, OBJ_BITMAP));
}

HBRUSH RedBrush() {
    static const HBRUSH brush = CreateSolidBrush(Red);
    return brush;
}

// A canvas of 4 by 3 pixels, all red.
void MakeRed(NCanvas& canvas) {
    ASSERT_TRUE(canvas.Resize(4, 3));
    ASSERT_TRUE(canvas.Fill(RedBrush()));
}

void ExpectEmpty(const NCanvas& canvas) {
    EXPECT_EQ(nullptr, canvas.handle);
    EXPECT_EQ(nullptr, canvas.dc);
    EXPECT_EQ(nullptr, canvas.previous);
    EXPECT_FALSE(canvas.ownsDC);
}
} // namespace

TEST(NCanvas, ItsMembersStandInTheirOrderBehindTheBitmap) {
    NCanvas canvas;
    const auto offset = [&](const void* member) {
        return static_cast<const char*>(member) - reinterpret_cast<const char*>(&canvas);
    };
    EXPECT_EQ(0, offset(&canvas.handle));
    EXPECT_EQ(8, offset(&canvas.previous));
    EXPECT_EQ(16, offset(&canvas.dc));
    EXPECT_EQ(24, offset(&canvas.ownsDC));
    EXPECT_EQ(1u, sizeof(canvas.ownsDC));
}

TEST(NCanvas, ResizeMakesABitmapSelectedIntoADeviceContextOfItsOwn) {
    NCanvas canvas;
    EXPECT_TRUE(canvas.Resize(4, 3));
    EXPECT_EQ(4, canvas.Width());
    EXPECT_EQ(3, canvas.Height());
    EXPECT_TRUE(canvas.ownsDC);
    EXPECT_EQ(canvas.handle, SelectedBitmap(canvas.dc));
    EXPECT_NE(nullptr, canvas.previous);
}

TEST(NCanvas, ResizeToASizeOfZeroEmptiesIt) {
    NCanvas canvas;
    canvas.Resize(4, 3);
    EXPECT_FALSE(canvas.Resize(0, 3));
    ExpectEmpty(canvas);
}

TEST(NCanvas, SelectTakesTheCallersDeviceContextWithoutOwningIt) {
    NMemoryDC memory;
    const HBITMAP before = SelectedBitmap(memory.dc);
    NCanvas canvas;
    canvas.Resize(4, 3);
    EXPECT_TRUE(canvas.Select(memory.dc, false));
    EXPECT_EQ(memory.dc, canvas.dc);
    EXPECT_FALSE(canvas.ownsDC);
    EXPECT_EQ(before, canvas.previous);
    EXPECT_EQ(canvas.handle, SelectedBitmap(memory.dc));
    canvas.Deselect();
    EXPECT_EQ(before, SelectedBitmap(memory.dc));
    EXPECT_EQ(nullptr, canvas.dc);
    EXPECT_NE(nullptr, canvas.handle);
    EXPECT_EQ(static_cast<DWORD>(OBJ_MEMDC), GetObjectType(memory.dc));
}

TEST(NCanvas, DeselectDeletesADeviceContextOfItsOwn) {
    NCanvas canvas;
    canvas.Resize(4, 3);
    const HDC own = canvas.dc;
    canvas.Deselect();
    EXPECT_EQ(0u, GetObjectType(own));
    EXPECT_NE(nullptr, canvas.handle);
    canvas.Deselect();
    EXPECT_TRUE(canvas.Select(nullptr, true));
    EXPECT_EQ(canvas.handle, SelectedBitmap(canvas.dc));
}

TEST(NCanvas, SelectWithoutABitmapDoesNothing) {
    NMemoryDC memory;
    NCanvas canvas;
    EXPECT_FALSE(canvas.Select(memory.dc, true));
    EXPECT_FALSE(canvas.Select(memory.dc, false));
    ExpectEmpty(canvas);
}

TEST(NCanvas, ADeviceContextThatTakesNoBitmapIsNotKept) {
    NWindowDC screen;
    NCanvas canvas;
    canvas.Resize(4, 3);
    EXPECT_FALSE(canvas.Select(screen.dc, false));
    EXPECT_EQ(nullptr, canvas.dc);
    EXPECT_FALSE(canvas.Select(nullptr, false));
    EXPECT_EQ(nullptr, canvas.dc);
    EXPECT_NE(nullptr, canvas.handle);
}

TEST(NCanvas, ReleaseFreesAllAndMayBeRepeated) {
    NCanvas canvas;
    canvas.Resize(4, 3);
    const HBITMAP bitmap = canvas.handle;
    const HDC dc = canvas.dc;
    canvas.Release();
    ExpectEmpty(canvas);
    EXPECT_EQ(0u, GetObjectType(bitmap));
    EXPECT_EQ(0u, GetObjectType(dc));
    canvas.Release();
    ExpectEmpty(canvas);
}

TEST(NCanvas, FillColoursTheWholeBitmap) {
    NCanvas canvas;
    MakeRed(canvas);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 4; ++x)
            EXPECT_EQ(Red, GetPixel(canvas.dc, x, y));
    canvas.Deselect();
    EXPECT_FALSE(canvas.Fill(RedBrush()));
}

TEST(NCanvas, BlitOfMinusOneCopiesTheFullWidthOrHeight) {
    struct Case {
        int width, height;
        RECT ink;
    };
    const Case cases[] = {
        {-1, -1, {2, 1, 6, 4}},
        {-1, 1, {2, 1, 6, 2}},
        {1, -1, {2, 1, 3, 4}},
        {2, 2, {2, 1, 4, 3}},
    };
    NCanvas canvas;
    MakeRed(canvas);
    for (const Case& each : cases) {
        TestSurface target(10, 10, White);
        EXPECT_TRUE(canvas.Blit(target.Dc(), 2, 1, each.width, each.height));
        const RECT ink = target.Ink(White);
        EXPECT_TRUE(EqualRect(&each.ink, &ink)) << ink.right << ", " << ink.bottom;
    }
}

TEST(NCanvas, BlitTakesTheSourcePointAndTheRasterOperation) {
    NCanvas canvas;
    MakeRed(canvas);
    SetPixelV(canvas.dc, 2, 1, Blue);
    TestSurface target(10, 10, White);
    EXPECT_TRUE(canvas.Blit(target.Dc(), 0, 0, 1, 1, 2, 1));
    EXPECT_EQ(Blue, target.At(0, 0));
    EXPECT_TRUE(canvas.Blit(target.Dc(), 5, 5, 1, 1, 2, 1, NOTSRCCOPY));
    EXPECT_EQ(RGB(255, 255, 0), target.At(5, 5));
}

TEST(NCanvas, BlitNeedsABitmapADeviceContextAndATarget) {
    TestSurface target(10, 10, White);
    NCanvas canvas;
    EXPECT_FALSE(canvas.Blit(target.Dc(), 0, 0));
    MakeRed(canvas);
    EXPECT_FALSE(canvas.Blit(nullptr, 0, 0));
    canvas.Deselect();
    EXPECT_FALSE(canvas.Blit(target.Dc(), 0, 0));
    const RECT ink = target.Ink(White);
    EXPECT_TRUE(IsRectEmpty(&ink));
}

TEST(NCanvas, AResourceIsLoadedAndSelected) {
    NCanvas canvas;
    EXPECT_TRUE(canvas.LoadResource(IDB_GREYS));
    EXPECT_TRUE(canvas.ownsDC);
    EXPECT_EQ(RGB(255, 0, 255), GetPixel(canvas.dc, 0, 0));
    EXPECT_TRUE(canvas.LoadResource(IDB_GREYS, nullptr, true));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), GetPixel(canvas.dc, 0, 0));
    NMemoryDC memory;
    EXPECT_TRUE(canvas.LoadResource(memory.dc, IDB_GREYS, nullptr, false, false));
    EXPECT_EQ(memory.dc, canvas.dc);
    EXPECT_FALSE(canvas.ownsDC);
    EXPECT_EQ(RGB(255, 0, 255), GetPixel(memory.dc, 0, 0));
    EXPECT_FALSE(canvas.LoadResource(999));
    ExpectEmpty(canvas);
}

TEST(NCanvas, ACopyIsSelectedIntoADeviceContextOfItsOwn) {
    NBitmap original;
    original.CreateCompatible(nullptr, 4, 3);
    SetPixelOf(original.handle, 3, 2, Red);
    NCanvas canvas;
    canvas.Resize(9, 9);
    EXPECT_TRUE(canvas.LoadCopy(original.handle));
    EXPECT_TRUE(canvas.ownsDC);
    EXPECT_EQ(4, canvas.Width());
    EXPECT_EQ(Red, GetPixel(canvas.dc, 3, 2));
    EXPECT_TRUE(canvas.LoadCopy(canvas.handle));
    EXPECT_EQ(Red, GetPixel(canvas.dc, 3, 2));
    EXPECT_FALSE(canvas.LoadCopy(nullptr));
    ExpectEmpty(canvas);
}

TEST(NCanvas, APictureIsDecodedAndSelected) {
    NCanvas canvas;
    canvas.Resize(9, 9);
    EXPECT_TRUE(canvas.LoadMemory(pngPicture, sizeof(pngPicture)));
    EXPECT_TRUE(canvas.ownsDC);
    EXPECT_EQ(4, canvas.Width());
    EXPECT_EQ(Red, GetPixel(canvas.dc, 3, 2));
    EXPECT_TRUE(canvas.LoadMemory(pngPicture, sizeof(pngPicture), true));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), GetPixel(canvas.dc, 3, 2));
    EXPECT_FALSE(canvas.LoadMemory(pngPicture, sizeof(pngPicture) / 2));
    ExpectEmpty(canvas);
}

TEST(NCanvas, NothingItMakesOutlivesIt) {
    const auto useAll = [] {
        NMemoryDC memory;
        NCanvas canvas;
        MakeRed(canvas);
        MakeRed(canvas);
        canvas.Select(memory.dc, false);
        canvas.LoadResource(IDB_GREYS);
        canvas.LoadMemory(pngPicture, sizeof(pngPicture), true);
        NCanvas copy;
        canvas.Deselect();
        copy.LoadCopy(canvas.handle);
        copy.Resize(nullptr, 2, 2, true);
        copy.LoadMemory(pngPicture, 30);
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 50; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
