#include "tests/support/nstring_printer.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/text_oracle.h"
#include "toolkit/tip_item.h"

#include <gtest/gtest.h>

namespace {
constexpr COLORREF White = RGB(255, 255, 255);
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);
constexpr COLORREF Blue = 0xFF0000;

// As a set tip has it.
void FillText(NToolTipItem& item, int32_t x, int32_t y, const wchar_t* text) {
    item.x = x;
    item.y = y;
    item.text = text;
    item.colour = Blue;
    item.fontSize = 14;
}

void FillIcon(NToolTipItem& item, int32_t x, int32_t y) {
    item.x = x;
    item.y = y;
    ASSERT_TRUE(item.iconNormal.Load(IDI_MARK, 16, 16));
    ASSERT_TRUE(item.iconHover.Load(IDI_MARK, 32, 32));
}

int CountOf(const TestSurface& surface, COLORREF colour) {
    int count = 0;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 120; ++x)
            count += surface.At(x, y) == colour;
    return count;
}

void ExpectSamePixels(const TestSurface& expected, const TestSurface& actual) {
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 120; ++x)
            ASSERT_EQ(expected.At(x, y), actual.At(x, y)) << x << " " << y;
}
} // namespace

TEST(TipItem, ItsFieldsStandInTheirOrder) {
    NToolTipItem item;
    const void* const fields[] = {
        &item.x,         &item.y,        &item.text,      &item.onClick,  &item.clickValue,
        &item.colour,    &item.fontFace, &item.bold,      &item.fontSize, &item.iconNormal,
        &item.iconHover, &item.iconDown, &item.iconState, &item.pressed};
    for (size_t i = 1; i < std::size(fields); ++i)
        EXPECT_LT(fields[i - 1], fields[i]) << i;
}

TEST(TipItem, AnEmptyTextMakesItAnIcon) {
    NToolTipItem item;
    EXPECT_TRUE(item.IsIcon());
    item.text = L"a";
    EXPECT_FALSE(item.IsIcon());
}

TEST(TipItem, ACopyHasAllFieldsAndTheDefaultsInPlace) {
    NKeyedList<NToolTipItem> items;
    NToolTipItem& item = *items.Add();
    int value = 0;
    FillIcon(item, 3, 4);
    ASSERT_TRUE(item.iconDown.Load(IDI_MARK, 16, 16));
    item.text = L"Text";
    item.onClick = [](void*, NToolTipItem*) {};
    item.clickValue = &value;
    item.fontFace = L"Arial";
    item.bold = true;
    item.colour = 0xFFFFFFFF;
    item.fontSize = 0;
    NKeyedList<NToolTipItem> copies;
    copies.Add();
    copies.Add();
    CopyTipItems(copies, items);
    ASSERT_EQ(1, copies.Count());
    const NToolTipItem& copy = *copies[0];
    EXPECT_EQ(3, copy.x);
    EXPECT_EQ(4, copy.y);
    EXPECT_EQ(L"Text", copy.text);
    EXPECT_EQ(item.onClick, copy.onClick);
    EXPECT_EQ(&value, copy.clickValue);
    EXPECT_EQ(L"Arial", copy.fontFace);
    EXPECT_TRUE(copy.bold);
    EXPECT_EQ(0xFF0000u, copy.colour);
    EXPECT_EQ(14, copy.fontSize);
    EXPECT_NE(item.iconNormal.handle, copy.iconNormal.handle);
    EXPECT_EQ(16, copy.iconNormal.Width());
    EXPECT_EQ(32, copy.iconHover.Width());
    EXPECT_EQ(16, copy.iconDown.Width());
    EXPECT_EQ(0, copy.iconState);
    EXPECT_FALSE(copy.pressed);
}

TEST(TipItem, ACopyKeepsItsOwnColourAndSize) {
    NKeyedList<NToolTipItem> items;
    items.Add()->colour = 0;
    items[0]->fontSize = 9;
    NKeyedList<NToolTipItem> copies;
    CopyTipItems(copies, items);
    EXPECT_EQ(0u, copies[0]->colour);
    EXPECT_EQ(9, copies[0]->fontSize);
}

TEST(TipItem, ItemsReachToTheRightMostAndTheLowest) {
    NKeyedList<NToolTipItem> items;
    EXPECT_EQ(0, ReachOfTipItems(items).cx);
    EXPECT_EQ(0, ReachOfTipItems(items).cy);
    FillIcon(*items.Add(), 300, 4);
    FillIcon(*items.Add(), 5, 200);
    EXPECT_EQ(316, ReachOfTipItems(items).cx);
    EXPECT_EQ(216, ReachOfTipItems(items).cy);
}

TEST(TipItem, ATextReachesOnePixelFurtherThanItIsWide) {
    const TextOracle font(14, L"Tahoma", false, false, true);
    NKeyedList<NToolTipItem> items;
    FillText(*items.Add(), 7, 9, L"Click here");
    EXPECT_EQ(7 + font.Width(L"Click here") + 1, ReachOfTipItems(items).cx);
    EXPECT_EQ(9 + font.LineHeight(), ReachOfTipItems(items).cy);
    items[0]->text = L"Click here\ror there";
    EXPECT_EQ(7 + font.Width(L"Click here") + 1, ReachOfTipItems(items).cx);
    EXPECT_EQ(9 + 2 * font.LineHeight(), ReachOfTipItems(items).cy);
}

TEST(TipItem, IsHitInItsBoxWithAllEdges) {
    struct Row {
        POINT point;
        bool hit;
    };
    NToolTipItem icon;
    FillIcon(icon, 10, 20);
    const Row rows[] = {{{10, 20}, true},  {{26, 36}, true},  {{9, 20}, false}, {{10, 19}, false},
                        {{27, 36}, false}, {{26, 37}, false}, {{18, 28}, true}};
    for (const Row& row : rows)
        EXPECT_EQ(row.hit, TipItemIsHit(icon, row.point)) << row.point.x << " " << row.point.y;
}

TEST(TipItem, ATextIsHitWhereItWouldStandAsOneLine) {
    const TextOracle font(14, L"Tahoma", false, false, true);
    NToolTipItem item;
    FillText(item, 10, 20, L"two\rlines");
    const LONG right = 10 + font.Width(L"two\rlines");
    const LONG bottom = 20 + font.LineHeight();
    ASSERT_GT(right, 10 + font.Width(L"lines"));
    EXPECT_TRUE(TipItemIsHit(item, {right, bottom}));
    EXPECT_FALSE(TipItemIsHit(item, {right + 1, bottom}));
    EXPECT_FALSE(TipItemIsHit(item, {right, bottom + 1}));
    // A point left of the tip comes unsigned.
    EXPECT_FALSE(TipItemIsHit(item, {65535, 25}));
}

TEST(TipItem, ATextIsDrawnUnderlinedAndTransparentInItsFont) {
    struct Row {
        const wchar_t* face;
        bool bold;
        int32_t size;
        COLORREF colour;
    };
    const Row rows[] = {{L"", false, 14, Blue},
                        {L"Arial", false, 14, Blue},
                        {L"", true, 14, Red},
                        {L"", false, 20, Red}};
    for (const Row& row : rows) {
        NToolTipItem item;
        FillText(item, 10, 12, L"Click");
        item.fontFace = row.face;
        item.bold = row.bold;
        item.fontSize = row.size;
        item.colour = row.colour;
        TestSurface surface(120, 60, Green);
        DrawTipItem(item, surface.Dc());
        const TextOracle font(row.size, row.face[0] ? row.face : L"Tahoma", row.bold, false, true);
        TestSurface expected(120, 60, Green);
        font.Draw(expected.Dc(), 10, 12, L"Click", row.colour);
        ASSERT_GT(CountOf(expected, row.colour), 0);
        ExpectSamePixels(expected, surface);
    }
}

TEST(TipItem, ATextIsDrawnInItsLines) {
    NToolTipItem item;
    FillText(item, 10, 12, L"one\rtwo");
    TestSurface surface(120, 60, White);
    DrawTipItem(item, surface.Dc());
    const TextOracle font(14, L"Tahoma", false, false, true);
    TestSurface expected(120, 60, White);
    font.Draw(expected.Dc(), 10, 12, L"one", Blue);
    font.Draw(expected.Dc(), 10, 12 + font.LineHeight(), L"two", Blue);
    ExpectSamePixels(expected, surface);
}

TEST(TipItem, AnIconIsDrawnAsItsStateSays) {
    NToolTipItem item;
    FillIcon(item, 30, 8); // red, and green under the cursor
    ASSERT_TRUE(item.iconDown.Load(IDI_MARK, 16, 16));
    struct Row {
        int32_t state;
        COLORREF colour;
        LONG size;
    };
    for (const Row& row : {Row{0, Red, 16}, Row{1, Green, 32}, Row{2, Red, 16}}) {
        item.iconState = row.state;
        TestSurface surface(120, 60, White);
        DrawTipItem(item, surface.Dc());
        const RECT ink = surface.Ink(White);
        EXPECT_EQ(30, ink.left);
        EXPECT_EQ(8, ink.top);
        EXPECT_EQ(30 + row.size, ink.right);
        EXPECT_EQ(8 + row.size, ink.bottom);
        EXPECT_EQ(row.colour, surface.At(38, 16));
    }
    item.iconState = 2;
    item.iconDown.Release();
    TestSurface surface(120, 60, White);
    DrawTipItem(item, surface.Dc());
    EXPECT_EQ(0, CountOf(surface, Red));
}
