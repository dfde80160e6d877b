#include "tests/support/leak_counters.h"
#include "tests/toolkit/pixels.h"
#include "toolkit/nbrush.h"
#include "toolkit/npen.h"

#include <gtest/gtest.h>

namespace {
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);

HGDIOBJ SelectedBrush(HDC dc) {
    return GetCurrentObject(dc, OBJ_BRUSH);
}

HGDIOBJ SelectedPen(HDC dc) {
    return GetCurrentObject(dc, OBJ_PEN);
}
} // namespace

TEST(NBrush, ASystemBrushIsUsedButNeverDeleted) {
    const HBRUSH face = GetSysColorBrush(COLOR_BTNFACE);
    NMemoryDC memory;
    const HGDIOBJ before = SelectedBrush(memory.dc);
    NBrush brush;
    EXPECT_TRUE(brush.Stock(COLOR_BTNFACE, memory.dc));
    EXPECT_EQ(face, brush.handle);
    EXPECT_EQ(1, brush.isStock);
    EXPECT_EQ(face, SelectedBrush(memory.dc));
    EXPECT_EQ(before, brush.previous);
    EXPECT_EQ(memory.dc, brush.dc);
    brush.Release();
    EXPECT_EQ(before, SelectedBrush(memory.dc));
    LOGBRUSH form = {};
    ASSERT_NE(0, GetObjectW(face, sizeof(form), &form));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), form.lbColor);
}

// The platform itself keeps its brushes from being deleted; another shows it.
TEST(NBrush, WhatIsMarkedAsStockIsNotDeleted) {
    NBrush brush;
    ASSERT_TRUE(brush.Solid(Red));
    const HBRUSH handle = brush.handle;
    brush.isStock = 1;
    brush.Release();
    EXPECT_EQ(nullptr, brush.handle);
    EXPECT_EQ(static_cast<DWORD>(OBJ_BRUSH), GetObjectType(handle));
    DeleteObject(handle);
}

TEST(NBrush, ASolidBrushIsDeletedWithItsObject) {
    NMemoryDC memory;
    const HGDIOBJ before = SelectedBrush(memory.dc);
    NBrush brush;
    EXPECT_TRUE(brush.Solid(Red, memory.dc));
    EXPECT_EQ(0, brush.isStock);
    EXPECT_EQ(brush.handle, SelectedBrush(memory.dc));
    const HBRUSH handle = brush.handle;
    brush.Release();
    EXPECT_EQ(before, SelectedBrush(memory.dc));
    EXPECT_EQ(0u, GetObjectType(handle));
    EXPECT_EQ(nullptr, brush.handle);
    EXPECT_EQ(nullptr, brush.dc);
    EXPECT_EQ(nullptr, brush.previous);
    brush.Release();
    EXPECT_EQ(before, SelectedBrush(memory.dc));
}

TEST(NBrush, WithoutADeviceContextItIsNotSelected) {
    NBrush brush;
    EXPECT_TRUE(brush.Solid(Red));
    EXPECT_NE(nullptr, brush.handle);
    EXPECT_EQ(nullptr, brush.dc);
    EXPECT_EQ(nullptr, brush.previous);
    EXPECT_TRUE(brush.Stock(COLOR_WINDOW));
    EXPECT_EQ(nullptr, brush.dc);
}

TEST(NBrush, HasTheColourTheStyleAndTheHatchAskedFor) {
    struct Case {
        UINT style;
        ULONG_PTR hatch;
    };
    for (const Case& each : {Case{BS_SOLID, 0}, Case{BS_HATCHED, HS_CROSS}, Case{BS_NULL, 0}}) {
        NBrush brush;
        ASSERT_TRUE(brush.Solid(Red, nullptr, each.style, each.hatch));
        LOGBRUSH form = {};
        ASSERT_NE(0, GetObjectW(brush.handle, sizeof(form), &form));
        EXPECT_EQ(each.style, form.lbStyle);
        if (each.style != BS_NULL) {
            EXPECT_EQ(Red, form.lbColor);
        }
        EXPECT_EQ(each.hatch, form.lbHatch);
    }
}

TEST(NBrush, AnotherTakesThePlaceOfTheFirst) {
    NMemoryDC memory;
    const HGDIOBJ before = SelectedBrush(memory.dc);
    NBrush brush;
    brush.Solid(Red, memory.dc);
    EXPECT_TRUE(brush.Stock(COLOR_BTNFACE, memory.dc));
    EXPECT_EQ(1, brush.isStock);
    EXPECT_EQ(before, brush.previous);
    EXPECT_TRUE(brush.Solid(White, memory.dc));
    EXPECT_EQ(0, brush.isStock);
    EXPECT_EQ(before, brush.previous);
}

TEST(NBrush, FillsWhatIsDrawnWithIt) {
    TestSurface surface(5, 5, White);
    NBrush brush;
    brush.Solid(Red, surface.Dc());
    PatBlt(surface.Dc(), 1, 1, 2, 2, PATCOPY);
    EXPECT_EQ(Red, surface.At(1, 1));
    EXPECT_EQ(White, surface.At(3, 3));
}

TEST(NPen, IsSelectedAndDeletedWithItsObject) {
    NMemoryDC memory;
    const HGDIOBJ before = SelectedPen(memory.dc);
    NPen pen;
    EXPECT_TRUE(pen.Create(Red, memory.dc));
    EXPECT_EQ(pen.handle, SelectedPen(memory.dc));
    EXPECT_EQ(before, pen.previous);
    EXPECT_EQ(memory.dc, pen.dc);
    const HPEN handle = pen.handle;
    pen.Release();
    EXPECT_EQ(before, SelectedPen(memory.dc));
    EXPECT_EQ(0u, GetObjectType(handle));
    EXPECT_EQ(nullptr, pen.handle);
    EXPECT_EQ(nullptr, pen.dc);
    EXPECT_EQ(nullptr, pen.previous);
    pen.Release();
    EXPECT_EQ(before, SelectedPen(memory.dc));
}

TEST(NPen, HasTheColourTheWidthAndTheStyleAskedFor) {
    NPen pen;
    EXPECT_TRUE(pen.Create(Red, nullptr, 3, PS_DASH));
    EXPECT_EQ(nullptr, pen.dc);
    LOGPEN form = {};
    ASSERT_NE(0, GetObjectW(pen.handle, sizeof(form), &form));
    EXPECT_EQ(Red, form.lopnColor);
    EXPECT_EQ(3, form.lopnWidth.x);
    EXPECT_EQ(static_cast<UINT>(PS_DASH), form.lopnStyle);
}

TEST(NPen, DrawsLines) {
    TestSurface surface(5, 5, White);
    NPen pen;
    pen.Create(Red, surface.Dc());
    MoveToEx(surface.Dc(), 0, 2, nullptr);
    LineTo(surface.Dc(), 5, 2);
    EXPECT_EQ(Red, surface.At(0, 2));
    EXPECT_EQ(Red, surface.At(4, 2));
    EXPECT_EQ(White, surface.At(0, 1));
}

TEST(BrushAndPen, NothingTheyMakeOutlivesThem) {
    const auto useAll = [] {
        NMemoryDC memory;
        NBrush brush;
        brush.Solid(Red, memory.dc);
        brush.Solid(White, memory.dc);
        brush.Stock(COLOR_BTNFACE, memory.dc);
        brush.Solid(White);
        NPen pen;
        pen.Create(Red, memory.dc);
        pen.Create(White, memory.dc);
        pen.Create(White);
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 50; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
