#include "tests/support/nstring_printer.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/text_oracle.h"
#include "toolkit/ntooltip.h"
#include "toolkit/tip_text_scene.h"

#include <gtest/gtest.h>

namespace {
constexpr COLORREF FlatColour = 0xCFFFFF;
constexpr COLORREF LeftColour = 0xFFFFFF;
constexpr COLORREF RightColour = 0xCDFFFF;
constexpr COLORREF Black = 0;
constexpr COLORREF Red = RGB(255, 0, 0);

// The scene as a tip of that size paints it.
void PaintScene(NDrawList& scene, TestSurface& surface, uint32_t state, SIZE size) {
    scene.stateMask = state;
    scene.minWidth = size.cx;
    scene.minHeight = size.cy;
    scene.dirty = 1;
    scene.Paint(surface.Dc(), 0, 0);
}

class TextScene : public testing::Test {
protected:
    TextScene() { record.text = L"Text"; }

    void Build(bool withIcon) {
        if (withIcon) {
            ASSERT_TRUE(icon.Load(IDI_MARK, 16, 16));
            record.icon = &icon;
        }
        BuildTipTextScene(scene, record);
    }

    NToolTipText record;
    NIcon icon;
    NDrawList scene;
};

template <typename Element>
void ExpectWholeArea(const Element& element) {
    EXPECT_EQ(0u, element.left);
    EXPECT_EQ(0u, element.top);
    EXPECT_EQ(0x20000u, element.right);
    EXPECT_EQ(0x20000u, element.bottom);
}
} // namespace

TEST_F(TextScene, HasItsGroundItsFrameAndItsText) {
    Build(false);
    ASSERT_EQ(1, scene.fills.Count());
    ExpectWholeArea(*scene.fills[0]);
    EXPECT_EQ(0xCFFFFFu, scene.fills[0]->colour);
    EXPECT_EQ(512u, scene.fills[0]->mask);
    ASSERT_EQ(1, scene.gradients.Count());
    ExpectWholeArea(*scene.gradients[0]);
    EXPECT_EQ(0xFFFFFFu, scene.gradients[0]->topLeft);
    EXPECT_EQ(0xFFFFFFu, scene.gradients[0]->bottomLeft);
    EXPECT_EQ(0xCDFFFFu, scene.gradients[0]->topRight);
    EXPECT_EQ(0xCDFFFFu, scene.gradients[0]->bottomRight);
    EXPECT_EQ(256u, scene.gradients[0]->mask);
    ASSERT_EQ(1, scene.frames.Count());
    ExpectWholeArea(*scene.frames[0]);
    EXPECT_EQ(0u, scene.frames[0]->colour);
    EXPECT_FALSE(scene.frames[0]->dotted);
    EXPECT_EQ(0u, scene.frames[0]->mask);
    EXPECT_EQ(0, scene.icons.Count());
    ASSERT_EQ(1, scene.texts.Count());
    EXPECT_EQ(5u, scene.texts[0]->x);
    EXPECT_EQ(0x90000u, scene.texts[0]->y);
    EXPECT_EQ(L"Text", scene.texts[0]->text);
    EXPECT_EQ(0u, scene.texts[0]->mask);
    // Each in a layer of its own, in this order.
    EXPECT_LT(scene.fills[0]->layer, scene.gradients[0]->layer);
    EXPECT_LT(scene.gradients[0]->layer, scene.frames[0]->layer);
    EXPECT_LT(scene.frames[0]->layer, scene.texts[0]->layer);
}

TEST_F(TextScene, AnIconStandsBeforeTheText) {
    Build(true);
    ASSERT_EQ(1, scene.icons.Count());
    EXPECT_EQ(4u, scene.icons[0]->x);
    EXPECT_EQ(0x90000u, scene.icons[0]->y);
    EXPECT_NE(icon.handle, scene.icons[0]->icon.handle); // the caller keeps its own
    EXPECT_EQ(16, scene.icons[0]->icon.Width());
    EXPECT_EQ(16u + 8, scene.texts[0]->x);
    EXPECT_EQ(0x90000u, scene.texts[0]->y);
}

TEST_F(TextScene, AnIconBesideSeveralLinesStandsAtTheTop) {
    record.text = L"one\rtwo";
    Build(true);
    EXPECT_EQ(4u, scene.icons[0]->x);
    EXPECT_EQ(1u, scene.icons[0]->y);
    EXPECT_EQ(0x90000u, scene.texts[0]->y);
}

TEST_F(TextScene, AWideOneIsPaintedFlat) {
    record.text = L"";
    Build(false);
    TestSurface surface(150, 30, Red);
    PaintScene(scene, surface, 512, {150, 30});
    for (int x : {1, 75, 148})
        EXPECT_EQ(FlatColour, surface.At(x, 15)) << x;
    EXPECT_EQ(FlatColour, surface.At(75, 1));
    EXPECT_EQ(FlatColour, surface.At(75, 28));
    for (int x : {0, 149})
        EXPECT_EQ(Black, surface.At(x, 15)) << x;
    for (int y : {0, 29})
        EXPECT_EQ(Black, surface.At(75, y)) << y;
}

TEST_F(TextScene, ANarrowOneIsShadedFromLeftToRight) {
    record.text = L"";
    Build(false);
    TestSurface surface(104, 30, Red);
    PaintScene(scene, surface, 256, {104, 30});
    const auto blueAt = [&](int x) { return GetBValue(surface.At(x, 15)); };
    EXPECT_GE(blueAt(1), GetBValue(LeftColour) - 1);
    EXPECT_LE(blueAt(102), GetBValue(RightColour) + 1);
    EXPECT_NEAR(blueAt(52), (GetBValue(LeftColour) + GetBValue(RightColour)) / 2, 2);
    for (int x = 2; x < 103; ++x) {
        EXPECT_LE(blueAt(x), blueAt(x - 1)) << x;
        EXPECT_EQ(RGB(255, 255, blueAt(x)), surface.At(x, 15)) << x;
        EXPECT_EQ(surface.At(x, 15), surface.At(x, 1)) << x;
    }
    EXPECT_EQ(Black, surface.At(0, 15));
    EXPECT_EQ(Black, surface.At(103, 15));
}

TEST_F(TextScene, ItsTextIsBlackAndCentredBetweenTopAndBottom) {
    record.text = L"H";
    Build(false);
    TestSurface surface(150, 40, Red);
    PaintScene(scene, surface, 512, {150, 40});
    const TextOracle font(13);
    TestSurface expected(150, 40, FlatColour);
    font.Draw(expected.Dc(), 5, 40 / 2 - font.LineHeight() / 2, L"H", Black);
    for (int y = 1; y < 39; ++y)
        for (int x = 1; x < 149; ++x)
            ASSERT_EQ(expected.At(x, y), surface.At(x, y)) << x << " " << y;
}

TEST_F(TextScene, ItsIconIsPaintedAtItsPlace) {
    record.text = L"H";
    Build(true);
    TestSurface surface(150, 40, FlatColour);
    PaintScene(scene, surface, 512, {150, 40});
    EXPECT_EQ(Red, surface.At(4, 12));
    EXPECT_EQ(Red, surface.At(19, 27));
    EXPECT_EQ(FlatColour, surface.At(3, 12));
    EXPECT_EQ(FlatColour, surface.At(4, 11));
    EXPECT_EQ(FlatColour, surface.At(20, 27));
    EXPECT_EQ(FlatColour, surface.At(19, 28));
}

TEST_F(TextScene, ItsRecordIsEmptyAtFirst) {
    const NToolTipText fresh;
    const RECT none = {};
    EXPECT_EQ(nullptr, fresh.target);
    EXPECT_EQ(0, memcmp(&none, &fresh.toolRect, sizeof none));
    EXPECT_EQ(nullptr, fresh.rectOwner);
    EXPECT_EQ(0, fresh.fixedX);
    EXPECT_EQ(0, fresh.fixedY);
    EXPECT_TRUE(fresh.text.IsEmpty());
    EXPECT_EQ(0u, fresh.delayMs);
    EXPECT_EQ(0u, fresh.durationMs);
    EXPECT_EQ(nullptr, fresh.icon);
    EXPECT_FALSE(fresh.noFade);
}
