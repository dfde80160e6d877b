#include "tests/support/leak_counters.h"
#include "tests/support/nstring_printer.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/text_oracle.h"
#include "tests/toolkit/watched_calls.h"
#include "toolkit/nbrush.h"
#include "toolkit/ndrawlist.h"
#include "toolkit/nfont.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);
constexpr COLORREF Blue = RGB(0, 0, 255);
constexpr COLORREF Grey = RGB(90, 90, 90);
constexpr int Width = 70;
constexpr int Height = 40;

// Paints on a surface of its own, white and 70 by 40, with an area of 50 by 20
// whose top left is at (6, 5).
class Painting : public testing::Test {
protected:
    static constexpr int Left = 6;
    static constexpr int Top = 5;

    Painting() {
        scene_.minWidth = 50;
        scene_.minHeight = 20;
    }

    void Paint() { scene_.Paint(surface_.Dc(), Left, Top); }

    COLORREF At(int x, int y) const { return surface_.At(Left + x, Top + y); }

    // All pixels of the surface, told as places in the area.
    void ExpectPixels(const std::function<COLORREF(int x, int y)>& expected) {
        for (int y = -Top; y < Height - Top; ++y)
            for (int x = -Left; x < Width - Left; ++x)
                ASSERT_EQ(expected(x, y), At(x, y)) << "at " << x << ", " << y;
    }
    void ExpectInk(LONG left, LONG top, LONG right, LONG bottom) {
        const RECT ink = surface_.Ink(White);
        EXPECT_EQ(Left + left, ink.left);
        EXPECT_EQ(Top + top, ink.top);
        EXPECT_EQ(Left + right, ink.right);
        EXPECT_EQ(Top + bottom, ink.bottom);
    }
    void ExpectNothing() {
        const RECT ink = surface_.Ink(White);
        EXPECT_TRUE(IsRectEmpty(&ink));
    }
    void ExpectSameAs(const TestSurface& other) {
        ExpectPixels([&](int x, int y) { return other.At(Left + x, Top + y); });
    }

    NDrawList scene_;
    TestSurface surface_{Width, Height, White};
};

void NoBrushes() {
    __wrap___imp_CreateBrushIndirect = [](const LOGBRUSH*) -> HBRUSH { return nullptr; };
}
void NoPens() {
    __wrap___imp_CreatePen = [](int, int, COLORREF) -> HPEN { return nullptr; };
}
void NoFonts() {
    __wrap___imp_CreateFontIndirectW = [](const LOGFONTW*) -> HFONT { return nullptr; };
}
void NoBitmaps() {
    __wrap___imp_CreateCompatibleBitmap = [](HDC, int, int) -> HBITMAP { return nullptr; };
}

bool IsWithin(const RECT& rect, int x, int y) {
    const POINT point = {x, y};
    return PtInRect(&rect, point);
}

void FillBitmap(NDrawList::Bitmap& element, int width, int height, COLORREF colour) {
    ASSERT_TRUE(element.bitmap.Resize(width, height));
    NBrush brush;
    ASSERT_TRUE(brush.Solid(colour));
    ASSERT_TRUE(element.bitmap.Fill(brush.handle));
}

// 16 by 16 pixels, red.
void FillIcon(NDrawList::Icon& element) {
    ASSERT_TRUE(element.icon.Load(IDI_MARK, 16, 16));
}
} // namespace

TEST_F(Painting, AFillColoursItsRectangle) {
    scene_.AddFill({.left = 2, .top = 1, .right = 0x120003, .bottom = 0x10000, .colour = Red});
    Paint();
    ExpectPixels([](int x, int y) { return IsWithin({2, 1, 47, 10}, x, y) ? Red : White; });
}

TEST_F(Painting, ABoxIsOutlinedInsideItsRectangle) {
    scene_.AddBox({.left = 1,
                   .top = 0,
                   .right = 0x20000,
                   .bottom = 0x20000,
                   .fillColour = Green,
                   .lineColour = Blue});
    Paint();
    ExpectPixels([](int x, int y) {
        if (!IsWithin({1, 0, 50, 20}, x, y))
            return White;
        return IsWithin({2, 1, 49, 19}, x, y) ? Green : Blue;
    });
}

TEST_F(Painting, AGradientsColumnsLeadFromItsLeftColourTowardsItsRightOne) {
    scene_.AddGradient({.left = 5,
                        .top = 0x10000,
                        .right = 25,
                        .bottom = 0x10002,
                        .topLeft = RGB(0, 0, 9),
                        .topRight = RGB(200, 0, 9),
                        .bottomLeft = RGB(0, 0, 9),
                        .bottomRight = RGB(200, 0, 9)});
    Paint();
    ExpectPixels([](int x, int y) {
        return IsWithin({5, 10, 25, 12}, x, y) ? RGB(static_cast<BYTE>(10 * (x - 5)), 0, 9) : White;
    });
}

TEST_F(Painting, AGradientsRowsLeadFromItsTopColourTowardsItsBottomOne) {
    scene_.AddGradient({.left = 5,
                        .top = 3,
                        .right = 9,
                        .bottom = 13,
                        .topLeft = RGB(0, 0, 9),
                        .topRight = RGB(0, 0, 9),
                        .bottomLeft = RGB(100, 0, 9),
                        .bottomRight = RGB(100, 0, 9)});
    Paint();
    ExpectPixels([](int x, int y) {
        return IsWithin({5, 3, 9, 13}, x, y) ? RGB(static_cast<BYTE>(10 * (y - 3)), 0, 9) : White;
    });
}

TEST_F(Painting, AGradientBetweenFourCornersIsShadedRowByRow) {
    scene_.AddGradient({.left = 0,
                        .top = 0,
                        .right = 0x20000,
                        .bottom = 0x20000,
                        .topLeft = Red,
                        .topRight = Green,
                        .bottomLeft = Blue,
                        .bottomRight = Red});
    Paint();
    const auto isNear = [](COLORREF wanted, COLORREF seen) {
        constexpr int Tolerance = 30; // the last colours stand just outside
        EXPECT_NEAR(GetRValue(wanted), GetRValue(seen), Tolerance);
        EXPECT_NEAR(GetGValue(wanted), GetGValue(seen), Tolerance);
        EXPECT_NEAR(GetBValue(wanted), GetBValue(seen), Tolerance);
    };
    isNear(Red, At(0, 0));
    isNear(Green, At(49, 0));
    isNear(Blue, At(0, 19));
    isNear(Red, At(49, 19));
    ExpectInk(0, 0, 50, 20);
}

TEST_F(Painting, AFrameIsOnePixelWide) {
    scene_.AddFrame({.left = 3, .top = 2, .right = 0x120002, .bottom = 0x120002, .colour = Blue});
    Paint();
    ExpectPixels([](int x, int y) {
        return IsWithin({3, 2, 48, 18}, x, y) && !IsWithin({4, 3, 47, 17}, x, y) ? Blue : White;
    });
}

TEST_F(Painting, ADottedFrameIsThatOfTheFocusWhateverItsColour) {
    scene_.AddFrame({.left = 3,
                     .top = 2,
                     .right = 0x120002,
                     .bottom = 0x120002,
                     .colour = Blue,
                     .dotted = true});
    Paint();
    TestSurface expected(Width, Height, White);
    const RECT rect = {Left + 3, Top + 2, Left + 48, Top + 18};
    DrawFocusRect(expected.Dc(), &rect);
    ExpectSameAs(expected);
    ExpectInk(3, 2, 48, 18);
    // Every second pixel.
    EXPECT_NE(At(3, 5), At(3, 6));
}

TEST_F(Painting, ALineEndsBeforeItsEndPoint) {
    scene_.AddLine({.colour = Red, .x1 = 2, .y1 = 0x120001, .x2 = 0x120002, .y2 = 0x120001});
    scene_.AddLine({.colour = Blue, .x1 = 0x10000, .y1 = 3, .x2 = 0x10000, .y2 = 8});
    Paint();
    ExpectPixels([](int x, int y) {
        if (IsWithin({2, 19, 48, 20}, x, y))
            return Red;
        return IsWithin({25, 3, 26, 8}, x, y) ? Blue : White;
    });
}

TEST_F(Painting, ALinesOwnSizeIsTheDifferenceOfItsPackedEnds) {
    // 10 across, half of which the flag takes off.
    scene_.AddLine({.colour = Red, .x1 = 0x80005, .y1 = 4, .x2 = 0x80005 + 10, .y2 = 4});
    Paint();
    ExpectInk(0, 4, 10, 5);
}

TEST_F(Painting, ALinesOwnHeightIsTheDifferenceOfItsPackedEnds) {
    scene_.AddLine({.colour = Red, .x1 = 4, .y1 = 0x80005, .x2 = 4, .y2 = 0x80005 + 10});
    Paint();
    ExpectInk(4, 0, 5, 10);
}

// 10 by 6, half of which the flags take off.
TEST_F(Painting, ARectanglesOwnSizeIsTheDifferenceOfItsPackedEdges) {
    constexpr uint32_t left = 0x80005;
    constexpr uint32_t top = 0x80004;
    constexpr uint32_t right = left + 10;
    constexpr uint32_t bottom = top + 6;
    const auto paintsItIn = [&](COLORREF colour) {
        Paint();
        ExpectInk(0, 1, 10, 7);
        EXPECT_EQ(colour, At(0, 1));
        EXPECT_EQ(colour, At(9, 6));
        scene_.Clear();
    };
    scene_.AddFill({left, top, right, bottom, Red});
    paintsItIn(Red);
    scene_.AddBox({left, top, right, bottom, Red, Blue});
    paintsItIn(Blue);
    scene_.AddFrame({left, top, right, bottom, Red});
    paintsItIn(Red);
    scene_.AddGradient({left, top, right, bottom, Blue, Blue, Blue, Blue});
    paintsItIn(Blue);
}

TEST_F(Painting, ABitmapIsCopiedAtItsFullSize) {
    NDrawList::Bitmap bitmap;
    FillBitmap(bitmap, 9, 7, Red);
    SetPixelV(bitmap.bitmap.dc, 8, 6, Blue);
    bitmap.x = 0x160004;
    bitmap.y = 0x90000;
    scene_.AddBitmap(bitmap);
    Paint();
    ExpectPixels([](int x, int y) {
        if (x == 45 && y == 13)
            return Blue;
        return IsWithin({37, 7, 46, 14}, x, y) ? Red : White;
    });
}

TEST_F(Painting, ABitmapsRasterOperationIsCopyingUnlessItHasOne) {
    const struct {
        DWORD rop;
        COLORREF expected;
    } cases[] = {
        {0, RGB(255, 0, 0)},          {SRCCOPY, RGB(255, 0, 0)},     {NOTSRCCOPY, RGB(0, 255, 255)},
        {SRCPAINT, RGB(255, 255, 0)}, {SRCINVERT, RGB(255, 255, 0)}, {SRCAND, RGB(0, 0, 0)},
    };
    for (const auto& each : cases) {
        NDrawList scene;
        NDrawList::Bitmap bitmap;
        FillBitmap(bitmap, 2, 2, Red);
        bitmap.rop = each.rop;
        scene.AddBitmap(bitmap);
        TestSurface surface(4, 4, Green);
        scene.Paint(surface.Dc(), 1, 1);
        EXPECT_EQ(each.expected, surface.At(1, 1)) << std::hex << each.rop;
        EXPECT_EQ(each.expected, surface.At(2, 2)) << std::hex << each.rop;
        EXPECT_EQ(Green, surface.At(3, 3));
    }
}

TEST_F(Painting, AnIconIsDrawnAtItsOwnSize) {
    NDrawList::Icon icon;
    FillIcon(icon);
    icon.x = 0x160004;
    icon.y = 0x90000;
    scene_.AddIcon(icon);
    Paint();
    ExpectPixels([](int x, int y) { return IsWithin({30, 2, 46, 18}, x, y) ? Red : White; });
}

TEST_F(Painting, ATextIsDrawnWithItsFaceSizeStyleAndColour) {
    const NDrawList::Text cases[] = {
        {.x = 2, .y = 1, .text = L"Ay", .colour = Red},
        {.x = 2, .y = 1, .text = L"Ay", .colour = Blue, .bold = true},
        {.x = 2, .y = 1, .text = L"Ay", .italic = true},
        {.x = 2, .y = 1, .text = L"Ay", .underline = true},
        {.x = 2, .y = 1, .text = L"Ay", .fontSize = 18},
        {.x = 2, .y = 1, .text = L"Ay", .fontSize = -11},
        {.x = 2, .y = 1, .text = L"Ay", .fontFace = L"Courier", .fontSize = 18},
        {.x = 2,
         .y = 1,
         .text = L"Ay",
         .fontFace = L"A face whose name has thirty-two u",
         .fontSize = 18},
    };
    for (const NDrawList::Text& each : cases) {
        scene_.Clear();
        surface_.Clear(White);
        scene_.AddText(each);
        Paint();
        const bool hasFace = !each.fontFace.IsEmpty() && each.fontFace.CharCount() < 32;
        const TextOracle oracle(each.fontSize ? each.fontSize : 13,
                                hasFace ? each.fontFace.Text : L"Tahoma", each.bold, each.italic,
                                each.underline);
        TestSurface expected(Width, Height, White);
        oracle.Draw(expected.Dc(), Left + 2, Top + 1, L"Ay", each.colour);
        ExpectSameAs(expected);
        const RECT ink = surface_.Ink(White);
        EXPECT_FALSE(IsRectEmpty(&ink));
    }
}

TEST_F(Painting, TheFacesOfThatTestAreTwo) {
    EXPECT_NE(TextOracle(18, L"Courier").Width(L"Ay"), TextOracle(18, L"Tahoma").Width(L"Ay"));
}

TEST_F(Painting, ATextIsPlacedByItsOwnSize) {
    const TextOracle oracle(13);
    scene_.AddText({.x = 0x160004, .y = 0x90000, .text = L"Text", .colour = Blue});
    Paint();
    TestSurface expected(Width, Height, White);
    oracle.Draw(expected.Dc(), Left + 50 - oracle.Width(L"Text") - 4,
                Top + 10 - oracle.LineHeight() / 2, L"Text", Blue);
    ExpectSameAs(expected);
}

TEST_F(Painting, WhatIsBetweenATextsStrokesStays) {
    scene_.AddFill({.right = 0x20000, .bottom = 0x20000, .colour = Green});
    scene_.AddText({.x = 2, .y = 1, .text = L"l", .colour = Blue});
    Paint();
    EXPECT_EQ(Green, At(2, 1));
    EXPECT_EQ(Green, At(2, 14));
}

TEST_F(Painting, EachLineOfATextStandsBelowTheOther) {
    const TextOracle oracle(13);
    scene_.AddText({.x = 0x90000, .y = 1, .text = L"Ay\rWide\rI"});
    Paint();
    TestSurface expected(Width, Height, White);
    const int x = Left + 25 - oracle.Width(L"Wide") / 2;
    oracle.Draw(expected.Dc(), x, Top + 1, L"Ay", 0);
    oracle.Draw(expected.Dc(), x, Top + 1 + oracle.LineHeight(), L"Wide", 0);
    oracle.Draw(expected.Dc(), x, Top + 1 + 2 * oracle.LineHeight(), L"I", 0);
    ExpectSameAs(expected);
}

TEST_F(Painting, ATextWithTabsIsPlacedByTheStopsForTheLowBitsOfItsPlace) {
    scene_.AddText({.x = 0x80000 + 45, .y = 1, .text = L"I\tI"});
    Paint();
    NFont font;
    ASSERT_TRUE(font.Create(nullptr, nullptr, 13, 0));
    NMemoryDC memory;
    const int width = font.TextWidth(memory.dc, L"I\tI", true, 45);
    ASSERT_NE(width, font.TextWidth(memory.dc, L"I\tI", true, 0));
    TestSurface expected(Width, Height, White);
    font.Select(expected.Dc());
    font.DrawText(Left + 45 - width / 2, Top + 1, L"I\tI", nullptr, true);
    font.Deselect();
    ExpectSameAs(expected);
}

TEST_F(Painting, ACutTextStandsWhereTheWholeOneWould) {
    const TextOracle oracle(13);
    scene_.AddText(
        {.x = 0x160004, .y = 2, .text = L"Overture", .maxWidth = oracle.Width(L"Ove...") + 1});
    Paint();
    TestSurface expected(Width, Height, White);
    oracle.Draw(expected.Dc(), Left + 50 - 4 - oracle.Width(L"Overture"), Top + 2, L"Ove...", 0);
    ExpectSameAs(expected);
    EXPECT_EQ(NString(L"Overture"), scene_.texts[0]->text);
}

TEST_F(Painting, ATextThatFitsItsWidthIsWhole) {
    const TextOracle oracle(13);
    scene_.AddText({.x = 2, .y = 2, .text = L"Over", .maxWidth = oracle.Width(L"Over") + 1});
    Paint();
    TestSurface expected(Width, Height, White);
    oracle.Draw(expected.Dc(), Left + 2, Top + 2, L"Over", 0);
    ExpectSameAs(expected);
}

TEST_F(Painting, ATextWithoutRoomForTheDotsIsNotDrawn) {
    scene_.AddText({.x = 2, .y = 2, .text = L"Overture", .maxWidth = 1});
    Paint();
    ExpectNothing();
}

TEST_F(Painting, TextsMayBeChangedBetweenPaints) {
    const TextOracle oracle(13);
    scene_.AddText({.x = 2, .y = 2, .text = L"Over"});
    Paint();
    scene_.texts[0]->text = L"Under";
    scene_.texts[0]->colour = Red;
    scene_.texts[0]->maxWidth = oracle.Width(L"Un...") + 1;
    surface_.Clear(White);
    Paint();
    TestSurface expected(Width, Height, White);
    oracle.Draw(expected.Dc(), Left + 2, Top + 2,
                oracle.Width(L"Under") <= oracle.Width(L"Un...") ? L"Under" : L"Un...", Red);
    ExpectSameAs(expected);
}

TEST_F(Painting, EachPackedValuePlacesAnElement) {
    struct Case {
        uint32_t value;
        int x, y; // of 10 by 4 pixels in 50 by 20
    };
    const Case cases[] = {
        {0, 0, 0},          {7, 7, 7},          {0x10000, 25, 10}, {0x20000, 50, 20},
        {0x40005, -5, 1},   {0x80005, 0, 3},    {0x90000, 20, 8},  {0x60000, 40, 16},
        {0xE0000, 35, 14},  {0x100003, -3, -3}, {0x110002, 23, 8}, {0x120002, 48, 18},
        {0x160004, 36, 12}, {0x190001, 19, 7},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << each.value);
        scene_.Clear();
        scene_.minWidth = 50;
        scene_.minHeight = 20;
        surface_.Clear(White);
        NDrawList::Bitmap bitmap;
        FillBitmap(bitmap, 10, 4, Red);
        bitmap.x = each.value;
        bitmap.y = each.value;
        scene_.AddBitmap(bitmap);
        // What the element needs must not enlarge the area.
        scene_.areaWidth = 50;
        scene_.areaHeight = 20;
        scene_.dirty = 0;
        Paint();
        ExpectInk(each.x, each.y, each.x + 10, each.y + 4);
    }
}

TEST_F(Painting, AnElementShowsWithAllBitsOfItsMask) {
    const struct {
        uint32_t mask, state;
        bool shows;
    } cases[] = {
        {0, 0, true},
        {0, 0xFFFFFFFF, true},
        {1, 0, false},
        {1, 1, true},
        {1, 2, false},
        {1, 3, true},
        {9, 1, false},
        {9, 8, false},
        {9, 9, true},
        {9, 9 + 256, true},
        {9, 6, false},
        {0x80000001, 0x80000000, false},
        {0x80000001, 0x80000001, true},
        {0xFFFFFFFF, 0xFFFFFFFE, false},
        {0xFFFFFFFF, 0xFFFFFFFF, true},
    };
    for (const auto& each : cases) {
        scene_.Clear();
        surface_.Clear(White);
        scene_.AddFill({.right = 5, .bottom = 5, .colour = Red, .mask = each.mask});
        scene_.stateMask = each.state;
        Paint();
        EXPECT_EQ(each.shows ? Red : White, At(2, 2)) << each.mask << " in " << each.state;
    }
}

TEST_F(Painting, AChangedStateShowsAtTheNextPaint) {
    scene_.AddFill({.right = 5, .bottom = 5, .colour = Red, .mask = 4});
    scene_.AddFill({.right = 5, .bottom = 5, .colour = Blue, .mask = 8});
    scene_.stateMask = 4;
    Paint();
    EXPECT_EQ(Red, At(2, 2));
    scene_.stateMask = 8;
    EXPECT_EQ(0, scene_.dirty);
    Paint();
    EXPECT_EQ(Blue, At(2, 2));
}

namespace {
// Ways to give one pixel a colour that tells the type, in the order in which
// the types of one layer are painted.
struct Marker {
    const char* name;
    COLORREF colour;
    std::function<void(NDrawList&, POINT, uint32_t layer, uint32_t mask)> add;
};

const std::vector<Marker>& Markers() {
    constexpr uint32_t End = 60;
    static const std::vector<Marker> markers = {
        {"fill", RGB(1, 0, 0),
         [](NDrawList& scene, POINT, uint32_t layer, uint32_t mask) {
             scene.AddFill({0, 0, End, End, RGB(1, 0, 0), mask}, layer);
         }},
        {"box", RGB(2, 0, 0),
         [](NDrawList& scene, POINT, uint32_t layer, uint32_t mask) {
             scene.AddBox({0, 0, End, End, RGB(2, 0, 0), RGB(2, 9, 9), mask}, layer);
         }},
        {"gradient", RGB(3, 0, 0),
         [](NDrawList& scene, POINT, uint32_t layer, uint32_t mask) {
             scene.AddGradient({.right = End,
                                .bottom = End,
                                .topLeft = RGB(3, 0, 0),
                                .topRight = RGB(3, 0, 0),
                                .bottomLeft = RGB(3, 0, 0),
                                .bottomRight = RGB(3, 0, 0),
                                .mask = mask},
                               layer);
         }},
        {"frame", RGB(4, 0, 0),
         [](NDrawList& scene, POINT at, uint32_t layer, uint32_t mask) {
             scene.AddFrame({static_cast<uint32_t>(at.x), 0, End, End, RGB(4, 0, 0), false, mask},
                            layer);
         }},
        {"line", RGB(5, 0, 0),
         [](NDrawList& scene, POINT at, uint32_t layer, uint32_t mask) {
             const auto y = static_cast<uint32_t>(at.y);
             scene.AddLine({RGB(5, 0, 0), 0, y, End, y, mask}, layer);
         }},
        {"bitmap", RGB(6, 0, 0),
         [](NDrawList& scene, POINT, uint32_t layer, uint32_t mask) {
             NDrawList::Bitmap bitmap;
             FillBitmap(bitmap, End, End, RGB(6, 0, 0));
             bitmap.mask = mask;
             scene.AddBitmap(bitmap, layer);
         }},
        {"icon", Red,
         [](NDrawList& scene, POINT at, uint32_t layer, uint32_t mask) {
             NDrawList::Icon icon;
             FillIcon(icon);
             icon.x = static_cast<uint32_t>(at.x - 2);
             icon.y = static_cast<uint32_t>(at.y - 2);
             icon.mask = mask;
             scene.AddIcon(icon, layer);
         }},
        {"text", RGB(8, 0, 0),
         [](NDrawList& scene, POINT, uint32_t layer, uint32_t mask) {
             scene.AddText({.x = 4,
                            .y = 0,
                            .text = L"III",
                            .colour = RGB(8, 0, 0),
                            .bold = true,
                            .fontSize = 60,
                            .mask = mask},
                           layer);
         }},
    };
    return markers;
}

constexpr COLORREF TextColour = RGB(8, 0, 0);

COLORREF PaintedAt(NDrawList& scene, POINT at) {
    TestSurface surface(60, 60, White);
    scene.Paint(surface.Dc(), 0, 0);
    return surface.At(at.x, at.y);
}

// A pixel that the text covers entirely.
POINT CoveredByText() {
    NDrawList scene;
    Markers().back().add(scene, {}, 0, 0);
    TestSurface surface(60, 60, White);
    scene.Paint(surface.Dc(), 0, 0);
    for (int y = 10; y < 60; ++y)
        for (int x = 5; x < 60; ++x)
            if (surface.At(x, y) == TextColour)
                return {x, y};
    ADD_FAILURE() << "no pixel is all text";
    return {};
}
} // namespace

TEST(PaintingLayers, EachMarkerColoursItsPixelAloneAndHidesByItsMask) {
    const POINT at = CoveredByText();
    for (const Marker& each : Markers()) {
        SCOPED_TRACE(each.name);
        NDrawList scene;
        each.add(scene, at, 0, 9);
        EXPECT_EQ(White, PaintedAt(scene, at));
        scene.stateMask = 8;
        EXPECT_EQ(White, PaintedAt(scene, at));
        scene.stateMask = 1;
        EXPECT_EQ(White, PaintedAt(scene, at));
        scene.stateMask = 1 + 8 + 64;
        EXPECT_EQ(each.colour, PaintedAt(scene, at));
    }
}

TEST(PaintingLayers, ElementsAddedWithLayer0PaintInTheOrderOfAddingWhateverTheirTypes) {
    const POINT at = CoveredByText();
    for (const Marker& first : Markers())
        for (const Marker& second : Markers()) {
            NDrawList scene;
            first.add(scene, at, 0, 0);
            second.add(scene, at, 0, 0);
            EXPECT_EQ(second.colour, PaintedAt(scene, at)) << first.name << ", " << second.name;
            NDrawList copy;
            copy.CopyFrom(scene);
            EXPECT_EQ(second.colour, PaintedAt(copy, at)) << first.name << ", " << second.name;
        }
}

TEST(PaintingLayers, ElementsOfOneLayerPaintInTheOrderOfTheirTypes) {
    const POINT at = CoveredByText();
    for (size_t lower = 0; lower < Markers().size(); ++lower)
        for (size_t upper = lower + 1; upper < Markers().size(); ++upper) {
            const Marker& under = Markers()[lower];
            const Marker& over = Markers()[upper];
            for (bool overIsFirst : {false, true}) {
                NDrawList scene;
                (overIsFirst ? over : under).add(scene, at, 3, 0);
                (overIsFirst ? under : over).add(scene, at, 3, 0);
                EXPECT_EQ(over.colour, PaintedAt(scene, at)) << under.name << ", " << over.name;
                NDrawList copy;
                copy.CopyFrom(scene);
                EXPECT_EQ(over.colour, PaintedAt(copy, at)) << under.name << ", " << over.name;
            }
        }
}

TEST(PaintingLayers, ElementsOfOneTypeAndLayerPaintInTheOrderOfAdding) {
    NDrawList scene;
    scene.AddFill({.right = 9, .bottom = 9, .colour = Red}, 2);
    scene.AddFill({.right = 9, .bottom = 9, .colour = Blue}, 2);
    EXPECT_EQ(Blue, PaintedAt(scene, {3, 3}));
}

TEST(PaintingLayers, ALowerExplicitLayerIsPaintedFirstThoughItIsAddedLast) {
    const POINT at = CoveredByText();
    for (const Marker& lower : Markers())
        for (const Marker& upper : Markers()) {
            NDrawList scene;
            upper.add(scene, at, 4, 0);
            lower.add(scene, at, 3, 0);
            EXPECT_EQ(upper.colour, PaintedAt(scene, at)) << lower.name << ", " << upper.name;
        }
}

TEST_F(Painting, TheFirstPaintMeasuresAndOthersOnlyAfterAChange) {
    scene_.AddFill({.right = 0x20000, .bottom = 0x20000, .colour = Red});
    Paint();
    EXPECT_EQ(0, scene_.dirty);
    EXPECT_EQ(50, scene_.areaWidth);
    EXPECT_EQ(20, scene_.areaHeight);
    scene_.minWidth = 30;
    surface_.Clear(White);
    Paint();
    ExpectInk(0, 0, 50, 20);
    scene_.dirty = 1;
    surface_.Clear(White);
    Paint();
    ExpectInk(0, 0, 30, 20);
}

TEST_F(Painting, TheAreaIsAsLargeAsItsElementsNeedWithTheMargins) {
    scene_.minWidth = 0;
    scene_.minHeight = 0;
    scene_.marginX = 3;
    scene_.marginY = 2;
    scene_.AddFill({.right = 0x20000, .bottom = 0x20000, .colour = Red});
    scene_.AddFill({.right = 20, .bottom = 10, .colour = Blue});
    Paint();
    ExpectPixels([](int x, int y) {
        if (IsWithin({0, 0, 20, 10}, x, y))
            return Blue;
        return IsWithin({0, 0, 23, 12}, x, y) ? Red : White;
    });
}

namespace {
// A list of one gradient over its whole area, whose cache tells whether it was
// drawn anew.
class Cached : public Painting {
protected:
    void SetUp() override {
        scene_.AddGradient({.right = 0x20000,
                            .bottom = 0x20000,
                            .topLeft = Red,
                            .topRight = Red,
                            .bottomLeft = Red,
                            .bottomRight = Red});
        Paint();
        ASSERT_EQ(Red, At(1, 1));
        MarkCache();
    }

    NDrawList::Gradient& Shade() { return *scene_.gradients[0]; }

    void MarkCache() { SetPixelV(Shade().cache.dc, 1, 1, Green); }

    void PaintSized(int width, int height) {
        scene_.minWidth = width;
        scene_.minHeight = height;
        scene_.dirty = 1;
        surface_.Clear(White);
        Paint();
    }
};
} // namespace

TEST_F(Cached, AGradientOfTheSameSizeIsCopiedFromItsCache) {
    for (int i = 0; i < 3; ++i) {
        PaintSized(50, 20);
        EXPECT_EQ(Green, At(1, 1));
        EXPECT_EQ(Red, At(2, 1));
    }
    surface_.Clear(White);
    scene_.Paint(surface_.Dc(), 11, 17);
    EXPECT_EQ(Green, surface_.At(12, 18));
}

TEST_F(Cached, AGradientOfAnotherWidthOrHeightIsDrawnAnew) {
    const struct { int width, height; } sizes[] = {{51, 20}, {51, 21}, {30, 21}, {30, 4}, {4, 30}};
    for (const auto& size : sizes) {
        PaintSized(size.width, size.height);
        EXPECT_EQ(Red, At(1, 1));
        ExpectInk(0, 0, size.width, size.height);
        EXPECT_EQ(size.width, Shade().cachedWidth);
        EXPECT_EQ(size.height, Shade().cachedHeight);
        EXPECT_EQ(size.width, Shade().cache.Width());
        MarkCache();
        PaintSized(size.width, size.height);
        EXPECT_EQ(Green, At(1, 1));
    }
}

TEST_F(Cached, ChangedColoursShowOnlyAfterAnotherSize) {
    Shade().topLeft = Shade().topRight = Blue;
    Shade().bottomLeft = Shade().bottomRight = Blue;
    PaintSized(50, 20);
    EXPECT_EQ(Red, At(5, 5));
    PaintSized(49, 20);
    EXPECT_EQ(Blue, At(5, 5));
}

TEST_F(Cached, AGradientWhoseCacheCouldNotBeMadeIsNotDrawnAndIsTriedAgain) {
    {
        WatchedCalls watched;
        NoBitmaps();
        PaintSized(40, 20);
        ExpectNothing();
    }
    PaintSized(40, 20);
    ExpectInk(0, 0, 40, 20);
    EXPECT_EQ(Red, At(1, 1));
}

TEST_F(Cached, AGradientOfNoSizeIsNotDrawn) {
    Shade().right = 0;
    PaintSized(50, 20);
    ExpectNothing();
    Shade().right = 0x100005;
    PaintSized(50, 20);
    ExpectNothing();
    Shade().right = 0x20000;
    PaintSized(50, 20);
    EXPECT_EQ(Red, At(1, 1));
}

namespace {
void AddAllMarkers(NDrawList& scene) {
    for (const Marker& each : Markers())
        each.add(scene, {20, 20}, 0, 0);
    scene.AddFrame({.right = 9, .bottom = 9, .dotted = true});
    scene.AddText({.text = L"A text that is cut", .maxWidth = 40});
    scene.AddGradient({.right = 0x20000,
                       .bottom = 0x20000,
                       .topLeft = Red,
                       .topRight = Blue,
                       .bottomLeft = Green,
                       .bottomRight = Grey});
}
} // namespace

TEST(PaintingFailures, AnElementWhoseBrushPenFontOrBitmapCannotBeMadePaintsNothing) {
    const struct {
        const char* element;
        void (*fail)();
    } cases[] = {{"fill", NoBrushes},     {"box", NoBrushes},   {"box", NoPens},
                 {"gradient", NoBitmaps}, {"frame", NoBrushes}, {"line", NoPens},
                 {"text", NoFonts}};
    for (const auto& each : cases) {
        SCOPED_TRACE(each.element);
        NDrawList scene;
        for (const Marker& marker : Markers())
            if (marker.name == std::string(each.element))
                marker.add(scene, {20, 20}, 0, 0);
        TestSurface surface(60, 60, White);
        {
            WatchedCalls watched;
            each.fail();
            scene.Paint(surface.Dc(), 0, 0);
        }
        RECT ink = surface.Ink(White);
        EXPECT_TRUE(IsRectEmpty(&ink));
        scene.Paint(surface.Dc(), 0, 0);
        ink = surface.Ink(White);
        EXPECT_FALSE(IsRectEmpty(&ink));
    }
}

TEST_F(Painting, ABitmapThatCouldNotBeCopiedPaintsNothing) {
    NDrawList::Bitmap bitmap;
    FillBitmap(bitmap, 9, 7, Red);
    {
        WatchedCalls watched;
        NoBitmaps();
        scene_.AddBitmap(bitmap);
    }
    Paint();
    ExpectNothing();
}

TEST_F(Painting, EmptyBitmapsAndIconsPaintNothing) {
    scene_.AddBitmap({});
    scene_.AddIcon({});
    EXPECT_EQ(0, scene_.bitmaps[0]->bitmap.Width());
    Paint();
    ExpectNothing();
}

TEST_F(Painting, WithoutADeviceContextNothingHappens) {
    AddAllMarkers(scene_);
    scene_.Paint(nullptr, 0, 0);
    EXPECT_EQ(0, scene_.dirty);
}

TEST_F(Painting, TheDeviceContextIsAsItWasBefore) {
    const auto state = [this] {
        const HDC dc = surface_.Dc();
        return std::vector<const void*>{
            GetCurrentObject(dc, OBJ_PEN),
            GetCurrentObject(dc, OBJ_BRUSH),
            GetCurrentObject(dc, OBJ_FONT),
            GetCurrentObject(dc, OBJ_BITMAP),
            reinterpret_cast<const void*>(static_cast<uintptr_t>(GetTextColor(dc))),
            reinterpret_cast<const void*>(static_cast<uintptr_t>(GetBkMode(dc)))};
    };
    SetTextColor(surface_.Dc(), Grey);
    SetBkMode(surface_.Dc(), OPAQUE);
    const auto before = state();
    AddAllMarkers(scene_);
    Paint();
    EXPECT_EQ(before, state());
}

TEST_F(Painting, AThousandPaintsOfAllTypesLeaveNothingBehind) {
    AddAllMarkers(scene_);
    Paint();
    PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 1000; ++i) {
        // Some with a new size, for the caches.
        scene_.minWidth = 50 + i / 100;
        scene_.dirty = i % 10 == 0;
        Paint();
    }
    EXPECT_EQ(before, CountPlatformObjects());
    // The count would see what one paint of an element forgot.
    const HBRUSH forgotten = CreateSolidBrush(Red);
    EXPECT_EQ(before.gdi + 1, CountGdiObjects());
    DeleteObject(forgotten);
}
