#include "tests/support/leak_counters.h"
#include "tests/toolkit/pixels.h"
#include "toolkit/gradient.h"

#include <gtest/gtest.h>

#include <vector>

namespace {
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);
constexpr int Width = 12;
constexpr int Height = 10;

GradientFillFunction None() {
    return nullptr;
}

struct Filled {
    HDC dc;
    std::vector<TRIVERTEX> vertices;
    GRADIENT_RECT rect;
    ULONG rectCount;
    ULONG mode;
};
std::vector<Filled> filled;
int timesAsked;

WINBOOL WINAPI NoteFill(HDC dc, PTRIVERTEX vertices, ULONG count, PVOID mesh, ULONG meshCount,
                        ULONG mode) {
    filled.push_back(
        {dc, {vertices, vertices + count}, *static_cast<GRADIENT_RECT*>(mesh), meshCount, mode});
    return TRUE;
}

GradientFillFunction Noting() {
    ++timesAsked;
    return NoteFill;
}

void ExpectVertex(LONG x, LONG y, COLORREF colour, const TRIVERTEX& vertex) {
    EXPECT_EQ(x, vertex.x);
    EXPECT_EQ(y, vertex.y);
    EXPECT_EQ(GetRValue(colour) << 8, vertex.Red);
    EXPECT_EQ(GetGValue(colour) << 8, vertex.Green);
    EXPECT_EQ(GetBValue(colour) << 8, vertex.Blue);
    EXPECT_EQ(0, vertex.Alpha);
}

class GradientTest : public testing::Test {
protected:
    void SetUp() override {
        filled.clear();
        timesAsked = 0;
        ASSERT_TRUE(canvas_.Resize(Width, Height));
        const RECT all = {0, 0, Width, Height};
        FillRect(canvas_.dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }

    COLORREF At(int x, int y) const { return GetPixel(canvas_.dc, x, y); }

    // Pixels from `left` to `right` of each row from `top` to `bottom` have
    // the colour of their column; all others are white.
    void ExpectColumns(int left, int top, int bottom, const std::vector<COLORREF>& colours) {
        const int right = left + static_cast<int>(colours.size()) - 1;
        for (int y = 0; y < Height; ++y)
            for (int x = 0; x < Width; ++x) {
                const bool inside = x >= left && x <= right && y >= top && y <= bottom;
                const COLORREF expected = inside ? colours[static_cast<size_t>(x - left)] : White;
                EXPECT_EQ(expected, At(x, y)) << x << ", " << y;
            }
    }

    void ExpectWhite() { ExpectColumns(0, 0, -1, {}); }

    NCanvas canvas_;
};
} // namespace

TEST_F(GradientTest, UpperCornersLikeTheLowerOnesGiveColumnsUpToAndWithTheRightAndBottomEdges) {
    const RECT rect = {2, 3, 8, 6};
    const COLORREF left = RGB(0, 60, 200);
    const COLORREF right = RGB(60, 0, 200);
    GradientRect(&canvas_, nullptr, &rect, left, right, left, right, Noting);
    ExpectColumns(2, 3, 6,
                  {RGB(0, 60, 200), RGB(10, 50, 200), RGB(20, 40, 200), RGB(30, 30, 200),
                   RGB(40, 20, 200), RGB(50, 10, 200), RGB(60, 0, 200)});
    EXPECT_EQ(0, timesAsked);
}

TEST_F(GradientTest, ChannelsThatFallTruncateTowardsTheirStart) {
    const RECT rect = {0, 0, 3, 0};
    GradientRect(&canvas_, nullptr, &rect, RGB(10, 0, 0), RGB(0, 10, 0), RGB(10, 0, 0),
                 RGB(0, 10, 0));
    ExpectColumns(0, 0, 0, {RGB(10, 0, 0), RGB(7, 3, 0), RGB(4, 6, 0), RGB(0, 10, 0)});
}

TEST_F(GradientTest, AllCornersAlikeGiveOneColour) {
    const RECT rect = {1, 1, 3, 2};
    GradientRect(&canvas_, nullptr, &rect, Red, Red, Red, Red, Noting);
    ExpectColumns(1, 1, 2, {Red, Red, Red});
    EXPECT_EQ(0, timesAsked);
}

TEST_F(GradientTest, ARectangleOfOneColumnHasTheColoursOfTheStart) {
    const RECT rect = {4, 2, 4, 3};
    GradientRect(&canvas_, nullptr, &rect, Red, Green, Red, Green);
    ExpectColumns(4, 2, 3, {Red});
}

TEST_F(GradientTest, ARectangleOfOneRowHasTheColoursOfTheTop) {
    const RECT rect = {4, 2, 6, 2};
    GradientRect(&canvas_, nullptr, &rect, Red, Red, Green, Green);
    ExpectColumns(4, 2, 2, {Red, Red, Red});
}

TEST_F(GradientTest, ARectangleThatEndsBeforeItBeginsIsNotDrawn) {
    const RECT narrow = {4, 2, 3, 5};
    const RECT low = {4, 2, 6, 1};
    GradientRect(&canvas_, nullptr, &narrow, Red, Green, Red, Green);
    GradientRect(&canvas_, nullptr, &low, Red, Red, Green, Green);
    ExpectWhite();
}

TEST_F(GradientTest, EqualColoursInEachRowGivePlainLines) {
    const RECT rect = {1, 2, 3, 5};
    GradientRect(&canvas_, nullptr, &rect, RGB(0, 90, 7), RGB(0, 90, 7), RGB(30, 0, 7),
                 RGB(30, 0, 7), Noting);
    const COLORREF rows[] = {RGB(0, 90, 7), RGB(10, 60, 7), RGB(20, 30, 7), RGB(30, 0, 7)};
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x) {
            const bool inside = x >= 1 && x <= 3 && y >= 2 && y <= 5;
            EXPECT_EQ(inside ? rows[y - 2] : White, At(x, y)) << x << ", " << y;
        }
    EXPECT_EQ(0, timesAsked);
}

TEST_F(GradientTest, ACornerOfItsOwnGivesRowsBetweenTheSidesColours) {
    const RECT rect = {2, 1, 7, 3};
    GradientRect(&canvas_, nullptr, &rect, RGB(0, 0, 0), RGB(100, 0, 0), RGB(0, 40, 0),
                 RGB(200, 40, 80), Noting);
    const COLORREF starts[] = {RGB(0, 0, 0), RGB(0, 20, 0), RGB(0, 40, 0)};
    const COLORREF ends[] = {RGB(100, 0, 0), RGB(150, 20, 40), RGB(200, 40, 80)};
    ASSERT_EQ(3u, filled.size());
    for (int i = 0; i < 3; ++i) {
        const Filled& row = filled[static_cast<size_t>(i)];
        ASSERT_EQ(2u, row.vertices.size());
        ExpectVertex(2, 1 + i, starts[i], row.vertices[0]);
        ExpectVertex(8, 2 + i, ends[i], row.vertices[1]);
        EXPECT_EQ(canvas_.dc, row.dc);
        EXPECT_EQ(0u, row.rect.UpperLeft);
        EXPECT_EQ(1u, row.rect.LowerRight);
        EXPECT_EQ(1u, row.rectCount);
        EXPECT_EQ(static_cast<ULONG>(GRADIENT_FILL_RECT_H), row.mode);
    }
    ExpectWhite();
}

TEST_F(GradientTest, OnlyOneOfTheSidesMustDifferForRows) {
    const RECT rect = {0, 0, 2, 1};
    GradientRect(&canvas_, nullptr, &rect, Red, Green, Red, White, Noting);
    EXPECT_EQ(2u, filled.size());
    filled.clear();
    GradientRect(&canvas_, nullptr, &rect, Red, Green, White, Green, Noting);
    EXPECT_EQ(2u, filled.size());
}

TEST_F(GradientTest, WithoutThePlatformsFunctionEachPixelOfARowIsSet) {
    const RECT rect = {2, 1, 6, 2};
    GradientRect(&canvas_, nullptr, &rect, RGB(0, 10, 0), RGB(40, 0, 0), RGB(0, 10, 100),
                 RGB(40, 0, 100), None);
    for (int y = 0; y < Height; ++y)
        for (int x = 0; x < Width; ++x) {
            const COLORREF columns[] = {RGB(0, 10, 0), RGB(10, 8, 0), RGB(20, 5, 0), RGB(30, 3, 0),
                                        RGB(40, 0, 0)};
            const bool inside = x >= 2 && x <= 6 && y >= 1 && y <= 2;
            const COLORREF blue = y == 2 ? RGB(0, 0, 100) : 0;
            EXPECT_EQ(inside ? columns[x - 2] | blue : White, At(x, y)) << x << ", " << y;
        }
}

TEST_F(GradientTest, ThePlatformsFunctionShadesTheSameWithinRounding) {
    ASSERT_NE(nullptr, PlatformGradientFill());
    GradientLine(&canvas_, nullptr, 1, 9, 4, RGB(0, 160, 80), RGB(160, 0, 80));
    for (int x = 1; x <= 9; ++x) {
        EXPECT_NEAR(20 * (x - 1), GetRValue(At(x, 4)), 20) << x;
        EXPECT_NEAR(160 - 20 * (x - 1), GetGValue(At(x, 4)), 20) << x;
        EXPECT_NEAR(80, GetBValue(At(x, 4)), 1) << x;
    }
    for (int x = 2; x <= 9; ++x)
        EXPECT_LT(GetRValue(At(x - 1, 4)), GetRValue(At(x, 4))) << x;
    EXPECT_EQ(White, At(0, 4));
    EXPECT_EQ(White, At(10, 4));
    EXPECT_EQ(White, At(5, 3));
    EXPECT_EQ(White, At(5, 5));
}

TEST_F(GradientTest, ALineOfOneColourIsPlainUpToAndWithItsRightEnd) {
    GradientLine(&canvas_, nullptr, 3, 5, 7, Green, Green, Noting);
    ExpectColumns(3, 7, 7, {Green, Green, Green});
    EXPECT_EQ(0, timesAsked);
}

TEST_F(GradientTest, ALineOfTwoColoursAndOnePixelHasTheFirst) {
    GradientLine(&canvas_, nullptr, 3, 3, 7, Green, Red, None);
    ExpectColumns(3, 7, 7, {Green});
}

TEST_F(GradientTest, WithoutARectangleTheLastColumnAndRowLieOutsideOfTheCanvas) {
    const COLORREF right = RGB(120, 0, 0);
    GradientRect(&canvas_, nullptr, nullptr, 0, right, 0, right);
    std::vector<COLORREF> columns;
    for (int x = 0; x < Width; ++x)
        columns.push_back(RGB(10 * x, 0, 0));
    ExpectColumns(0, 0, Height - 1, columns);
    const COLORREF bottom = RGB(0, 100, 0);
    GradientRect(&canvas_, nullptr, nullptr, 0, 0, bottom, bottom);
    EXPECT_EQ(RGB(0, 0, 0), At(Width - 1, 0));
    EXPECT_EQ(RGB(0, 90, 0), At(0, Height - 1));
}

TEST_F(GradientTest, AnotherDeviceContextIsDrawnOnInsteadOfTheCanvas) {
    TestSurface surface(Width, Height, White);
    const RECT rect = {1, 1, 2, 2};
    GradientRect(&canvas_, surface.Dc(), &rect, Red, Red, Green, Green);
    EXPECT_EQ(Red, surface.At(1, 1));
    EXPECT_EQ(Green, surface.At(2, 2));
    GradientRect(&canvas_, surface.Dc(), &rect, Green, Red, Green, Red);
    EXPECT_EQ(Green, surface.At(1, 2));
    GradientLine(&canvas_, surface.Dc(), 4, 5, 6, Red, Red);
    EXPECT_EQ(Red, surface.At(5, 6));
    ExpectWhite();
}

TEST_F(GradientTest, WithoutACanvasThatHasADeviceContextNothingIsDrawn) {
    TestSurface surface(Width, Height, White);
    const RECT rect = {1, 1, 2, 2};
    canvas_.Deselect();
    for (NCanvas* canvas : {&canvas_, static_cast<NCanvas*>(nullptr)}) {
        GradientRect(canvas, surface.Dc(), &rect, Red, Red, Green, Green);
        GradientRect(canvas, surface.Dc(), &rect, Red, Green, Red, Green);
        GradientRect(canvas, nullptr, nullptr, Red, Green, Red, Green);
        GradientLine(canvas, surface.Dc(), 1, 2, 1, Red, Green, None);
        GradientLine(canvas, nullptr, 1, 2, 1, Red, Red);
    }
    const RECT ink = surface.Ink(White);
    EXPECT_TRUE(IsRectEmpty(&ink));
    canvas_.Select(nullptr, true);
    ExpectWhite();
}

TEST_F(GradientTest, NothingIsLeftBehind) {
    const auto drawAll = [this] {
        GradientRect(&canvas_, nullptr, nullptr, Red, Green, Red, Green);
        GradientRect(&canvas_, nullptr, nullptr, Red, Red, Green, Green);
        GradientRect(&canvas_, nullptr, nullptr, Red, Green, Green, Red);
        GradientRect(&canvas_, nullptr, nullptr, Red, Green, Green, Red, None);
    };
    drawAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 50; ++i)
        drawAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
