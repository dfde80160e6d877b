#include "tests/support/leak_counters.h"
#include "tests/support/nstring_printer.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/text_oracle.h"
#include "toolkit/nbrush.h"
#include "toolkit/ndrawlist.h"
#include "toolkit/nfont.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <initializer_list>

namespace {
constexpr COLORREF Red = RGB(255, 0, 0);
constexpr COLORREF Green = RGB(0, 255, 0);

// 4 by 3 pixels, red.
void FillBitmap(NDrawList::Bitmap& element) {
    ASSERT_TRUE(element.bitmap.Resize(4, 3));
    NBrush brush;
    ASSERT_TRUE(brush.Solid(Red));
    ASSERT_TRUE(element.bitmap.Fill(brush.handle));
}

// 16 by 16 pixels.
void FillIcon(NDrawList::Icon& element) {
    ASSERT_TRUE(element.icon.Load(IDI_MARK, 16, 16));
}

void AddOneOfEach(NDrawList& scene, uint32_t layer = 0) {
    NDrawList::Bitmap bitmap;
    FillBitmap(bitmap);
    NDrawList::Icon icon;
    FillIcon(icon);
    scene.AddText({.text = L"Ay"}, layer);
    scene.AddIcon(icon, layer);
    scene.AddBitmap(bitmap, layer);
    scene.AddLine({.x2 = 5}, layer);
    scene.AddFrame({.right = 5, .bottom = 5}, layer);
    scene.AddGradient({.right = 5, .bottom = 5}, layer);
    scene.AddBox({.right = 5, .bottom = 5}, layer);
    scene.AddFill({.right = 5, .bottom = 5}, layer);
}

int ElementCount(const NDrawList& scene) {
    return scene.fills.Count() + scene.boxes.Count() + scene.frames.Count() +
           scene.gradients.Count() + scene.bitmaps.Count() + scene.lines.Count() +
           scene.icons.Count() + scene.texts.Count();
}

void ExpectSize(LONG width, LONG height, SIZE size) {
    EXPECT_EQ(width, size.cx);
    EXPECT_EQ(height, size.cy);
}

// The first member stands at the start, each other one behind the one before it.
void ExpectInOrder(const void* start, std::initializer_list<const void*> members) {
    const void* earlier = start;
    EXPECT_EQ(start, *members.begin());
    for (const void* member : members) {
        EXPECT_LE(earlier, member);
        EXPECT_TRUE(member == *members.begin() || earlier < member);
        earlier = member;
    }
}
} // namespace

TEST(NDrawList, ItsMembersStandInTheirOrder) {
    NDrawList list;
    ExpectInOrder(&list, {&list.fills, &list.boxes, &list.frames, &list.gradients, &list.bitmaps,
                          &list.lines, &list.icons, &list.texts, &list.areaWidth, &list.areaHeight,
                          &list.dirty, &list.marginX, &list.marginY, &list.minWidth,
                          &list.minHeight, &list.layerCount, &list.stateMask});
    EXPECT_EQ(4u, sizeof(list.dirty));
}

TEST(NDrawList, TheFieldsOfItsElementsStandInTheirOrder) {
    const NDrawList::Fill fill;
    ExpectInOrder(&fill, {&fill.left, &fill.top, &fill.right, &fill.bottom, &fill.colour,
                          &fill.mask, &fill.layer});
    const NDrawList::Box box;
    ExpectInOrder(&box, {&box.left, &box.top, &box.right, &box.bottom, &box.fillColour,
                         &box.lineColour, &box.mask, &box.layer});
    const NDrawList::Gradient shade;
    ExpectInOrder(&shade, {&shade.left, &shade.top, &shade.right, &shade.bottom, &shade.topLeft,
                           &shade.topRight, &shade.bottomLeft, &shade.bottomRight, &shade.mask,
                           &shade.layer, &shade.cache, &shade.cachedWidth, &shade.cachedHeight});
    const NDrawList::Frame frame;
    ExpectInOrder(&frame, {&frame.left, &frame.top, &frame.right, &frame.bottom, &frame.colour,
                           &frame.dotted, &frame.mask, &frame.layer});
    const NDrawList::Line line;
    ExpectInOrder(&line,
                  {&line.colour, &line.x1, &line.y1, &line.x2, &line.y2, &line.mask, &line.layer});
    const NDrawList::Bitmap bitmap;
    ExpectInOrder(&bitmap,
                  {&bitmap.bitmap, &bitmap.x, &bitmap.y, &bitmap.rop, &bitmap.mask, &bitmap.layer});
    const NDrawList::Icon icon;
    ExpectInOrder(&icon, {&icon.icon, &icon.x, &icon.y, &icon.mask, &icon.layer});
    const NDrawList::Text text;
    ExpectInOrder(&text, {&text.x, &text.y, &text.text, &text.fontFace, &text.colour, &text.bold,
                          &text.italic, &text.underline, &text.fontSize, &text.maxWidth, &text.mask,
                          &text.layer});
    for (size_t size :
         {sizeof(frame.dotted), sizeof(text.bold), sizeof(text.italic), sizeof(text.underline)})
        EXPECT_EQ(1u, size);
}

TEST(NDrawList, ItStartsEmptyAndDirty) {
    NDrawList scene;
    EXPECT_EQ(0, ElementCount(scene));
    EXPECT_EQ(1, scene.dirty);
    EXPECT_EQ(0u, scene.layerCount);
    EXPECT_EQ(0u, scene.stateMask);
    EXPECT_EQ(0, scene.areaWidth);
    EXPECT_EQ(0, scene.areaHeight);
    ExpectSize(0, 0, scene.Measure());
}

TEST(NDrawList, ElementsAddedWithLayer0GetLayersOfTheirOwn) {
    NDrawList scene;
    AddOneOfEach(scene);
    EXPECT_EQ(0u, scene.texts[0]->layer);
    EXPECT_EQ(1u, scene.icons[0]->layer);
    EXPECT_EQ(2u, scene.bitmaps[0]->layer);
    EXPECT_EQ(3u, scene.lines[0]->layer);
    EXPECT_EQ(4u, scene.frames[0]->layer);
    EXPECT_EQ(5u, scene.gradients[0]->layer);
    EXPECT_EQ(6u, scene.boxes[0]->layer);
    EXPECT_EQ(7u, scene.fills[0]->layer);
    EXPECT_EQ(8u, scene.layerCount);
}

TEST(NDrawList, AnExplicitLayerRaisesTheCountToOneAboveItAndNeverLowersIt) {
    NDrawList scene;
    AddOneOfEach(scene, 5);
    for (uint32_t layer : {scene.texts[0]->layer, scene.icons[0]->layer, scene.bitmaps[0]->layer,
                           scene.lines[0]->layer, scene.frames[0]->layer, scene.gradients[0]->layer,
                           scene.boxes[0]->layer, scene.fills[0]->layer})
        EXPECT_EQ(5u, layer);
    EXPECT_EQ(6u, scene.layerCount);
    scene.AddFill({}, 2);
    EXPECT_EQ(2u, scene.fills[1]->layer);
    EXPECT_EQ(6u, scene.layerCount);
    scene.AddFill({});
    EXPECT_EQ(6u, scene.fills[2]->layer);
    EXPECT_EQ(7u, scene.layerCount);
}

TEST(NDrawList, TheLayerThatAnElementBringsIsNotTaken) {
    NDrawList scene;
    scene.AddFill({.layer = 9});
    scene.AddLine({.layer = 9}, 3);
    EXPECT_EQ(0u, scene.fills[0]->layer);
    EXPECT_EQ(3u, scene.lines[0]->layer);
    EXPECT_EQ(4u, scene.layerCount);
}

TEST(NDrawList, EveryAddMakesItDirty) {
    NDrawList::Bitmap bitmap;
    NDrawList::Icon icon;
    const std::function<void(NDrawList&)> adds[] = {
        [](NDrawList& scene) { scene.AddFill({}); },
        [](NDrawList& scene) { scene.AddBox({}); },
        [](NDrawList& scene) { scene.AddFrame({}); },
        [](NDrawList& scene) { scene.AddGradient({}); },
        [](NDrawList& scene) { scene.AddLine({}); },
        [&](NDrawList& scene) { scene.AddBitmap(bitmap); },
        [&](NDrawList& scene) { scene.AddIcon(icon, 4); },
        [](NDrawList& scene) { scene.AddText({}, 2); },
    };
    NDrawList scene;
    for (const auto& add : adds) {
        scene.dirty = 0;
        add(scene);
        EXPECT_EQ(1, scene.dirty);
    }
    EXPECT_EQ(8, ElementCount(scene));
}

TEST(NDrawList, AnAddedElementIsACopyOfAllItsFields) {
    NDrawList scene;
    scene.AddFill({1, 2, 3, 4, 5, 6});
    const NDrawList::Fill& fill = *scene.fills[0];
    EXPECT_EQ((std::array{1u, 2u, 3u, 4u, 6u}),
              (std::array{fill.left, fill.top, fill.right, fill.bottom, fill.mask}));
    EXPECT_EQ(5u, fill.colour);
    scene.AddGradient({.left = 1,
                       .top = 2,
                       .right = 3,
                       .bottom = 4,
                       .topLeft = 5,
                       .topRight = 6,
                       .bottomLeft = 7,
                       .bottomRight = 8,
                       .mask = 9});
    const NDrawList::Gradient& shade = *scene.gradients[0];
    EXPECT_EQ((std::array{1u, 2u, 3u, 4u, 9u}),
              (std::array{shade.left, shade.top, shade.right, shade.bottom, shade.mask}));
    EXPECT_EQ(5u, shade.topLeft);
    EXPECT_EQ(6u, shade.topRight);
    EXPECT_EQ(7u, shade.bottomLeft);
    EXPECT_EQ(8u, shade.bottomRight);
    scene.AddText({1, 2, L"text", L"face", 3, true, false, true, 4, 5, 6});
    const NDrawList::Text& text = *scene.texts[0];
    EXPECT_EQ((std::array{1u, 2u, 6u}), (std::array{text.x, text.y, text.mask}));
    EXPECT_EQ(NString(L"text"), text.text);
    EXPECT_EQ(NString(L"face"), text.fontFace);
    EXPECT_EQ(3u, text.colour);
    EXPECT_TRUE(text.bold);
    EXPECT_FALSE(text.italic);
    EXPECT_TRUE(text.underline);
    EXPECT_EQ(4, text.fontSize);
    EXPECT_EQ(5, text.maxWidth);
}

TEST(NDrawList, BitmapsAndIconsAreCopiesThatOutliveTheirSource) {
    NDrawList scene;
    {
        NDrawList::Bitmap bitmap;
        FillBitmap(bitmap);
        bitmap.x = 1;
        bitmap.y = 2;
        bitmap.rop = SRCAND;
        bitmap.mask = 3;
        scene.AddBitmap(bitmap); // selected, as canvases are
        bitmap.bitmap.Deselect();
        scene.AddBitmap(bitmap);
        NDrawList::Icon icon;
        FillIcon(icon);
        icon.x = 4;
        icon.y = 5;
        icon.mask = 6;
        scene.AddIcon(icon);
        EXPECT_NE(bitmap.bitmap.handle, scene.bitmaps[0]->bitmap.handle);
        EXPECT_NE(icon.icon.handle, scene.icons[0]->icon.handle);
    }
    for (int i = 0; i < 2; ++i) {
        const NDrawList::Bitmap& bitmap = *scene.bitmaps[i];
        EXPECT_EQ(4, bitmap.bitmap.Width());
        EXPECT_EQ(3, bitmap.bitmap.Height());
        EXPECT_EQ(Red, GetPixel(bitmap.bitmap.dc, 3, 2));
        EXPECT_EQ((std::array{1u, 2u, 3u}), (std::array{bitmap.x, bitmap.y, bitmap.mask}));
        EXPECT_EQ(SRCAND, bitmap.rop);
    }
    const NDrawList::Icon& icon = *scene.icons[0];
    EXPECT_EQ(16, icon.icon.Width());
    EXPECT_EQ((std::array{4u, 5u, 6u}), (std::array{icon.x, icon.y, icon.mask}));
}

TEST(NDrawList, ClearEmptiesAllButTheAreasSize) {
    NDrawList scene;
    AddOneOfEach(scene);
    scene.marginX = 1;
    scene.marginY = 2;
    scene.minWidth = 300;
    scene.minHeight = 200;
    scene.stateMask = 5;
    TestSurface surface(10, 10, Red);
    scene.Paint(surface.Dc(), 0, 0);
    ASSERT_EQ(0, scene.dirty);
    scene.Clear();
    EXPECT_EQ(0, ElementCount(scene));
    EXPECT_EQ(1, scene.dirty);
    EXPECT_EQ(0, scene.marginX);
    EXPECT_EQ(0, scene.marginY);
    EXPECT_EQ(0, scene.minWidth);
    EXPECT_EQ(0, scene.minHeight);
    EXPECT_EQ(0u, scene.layerCount);
    EXPECT_EQ(0u, scene.stateMask);
    EXPECT_EQ(300, scene.areaWidth);
    EXPECT_EQ(200, scene.areaHeight);
}

TEST(NDrawList, ACopyHasEachElementOneLayerHigherAndLayer0Empty) {
    NDrawList original;
    AddOneOfEach(original);
    original.AddLine({.colour = Green, .mask = 7}, 20);
    NDrawList copy;
    copy.AddFill({});
    copy.AddFill({});
    copy.CopyFrom(original);
    EXPECT_EQ(9, ElementCount(copy));
    EXPECT_EQ(1u, copy.texts[0]->layer);
    EXPECT_EQ(2u, copy.icons[0]->layer);
    EXPECT_EQ(3u, copy.bitmaps[0]->layer);
    EXPECT_EQ(4u, copy.lines[0]->layer);
    EXPECT_EQ(5u, copy.frames[0]->layer);
    EXPECT_EQ(6u, copy.gradients[0]->layer);
    EXPECT_EQ(7u, copy.boxes[0]->layer);
    EXPECT_EQ(8u, copy.fills[0]->layer);
    EXPECT_EQ(21u, copy.lines[1]->layer);
    EXPECT_EQ(Green, copy.lines[1]->colour);
    EXPECT_EQ(7u, copy.lines[1]->mask);
    EXPECT_EQ(22u, copy.layerCount);
    EXPECT_EQ(NString(L"Ay"), copy.texts[0]->text);
    EXPECT_EQ(Red, GetPixel(copy.bitmaps[0]->bitmap.dc, 3, 2));
    EXPECT_EQ(16, copy.icons[0]->icon.Width());
    // The original is as it was.
    EXPECT_EQ(9, ElementCount(original));
    EXPECT_EQ(0u, original.texts[0]->layer);
}

TEST(NDrawList, ACopyOfACopyIsOneLayerHigherStill) {
    NDrawList original;
    original.AddFill({});
    NDrawList copy;
    copy.CopyFrom(original);
    NDrawList second;
    second.CopyFrom(copy);
    EXPECT_EQ(2u, second.fills[0]->layer);
    EXPECT_EQ(3u, second.layerCount);
}

TEST(NDrawList, ACopyTakesNoCacheNoMarginsNoSizesAndNoState) {
    NDrawList original;
    original.AddGradient({.right = 5, .bottom = 5});
    original.marginX = 1;
    original.marginY = 2;
    original.minWidth = 3;
    original.minHeight = 4;
    original.stateMask = 5;
    TestSurface surface(10, 10, Red);
    original.Paint(surface.Dc(), 0, 0);
    ASSERT_EQ(5, original.gradients[0]->cachedWidth);
    NDrawList copy;
    copy.dirty = 0;
    copy.CopyFrom(original);
    EXPECT_EQ(nullptr, copy.gradients[0]->cache.handle);
    EXPECT_EQ(0, copy.gradients[0]->cachedWidth);
    EXPECT_EQ(0, copy.gradients[0]->cachedHeight);
    EXPECT_EQ(0, copy.marginX + copy.marginY + copy.minWidth + copy.minHeight);
    EXPECT_EQ(0u, copy.stateMask);
    EXPECT_EQ(0, copy.areaWidth);
    EXPECT_EQ(1, copy.dirty);
}

// Wanted: it is cleared before anything is copied.
TEST(NDrawList, ACopyOfItselfIsEmpty) {
    NDrawList scene;
    AddOneOfEach(scene);
    scene.marginX = 1;
    scene.dirty = 0;
    scene.CopyFrom(scene);
    EXPECT_EQ(0, ElementCount(scene));
    EXPECT_EQ(0u, scene.layerCount);
    EXPECT_EQ(0, scene.marginX);
    EXPECT_EQ(1, scene.dirty);
}

TEST(NDrawList, CopyingAndPaintingLeaveTheListsCurrentRecords) {
    NDrawList scene;
    scene.AddFill({.right = 1, .bottom = 1});
    scene.AddFill({.right = 2, .bottom = 2});
    NDrawList::Fill* first = scene.fills[0];
    NDrawList copy;
    copy.CopyFrom(scene);
    TestSurface surface(4, 4, Red);
    scene.Paint(surface.Dc(), 0, 0);
    EXPECT_EQ(first, scene.fills.Current);
}

TEST(NDrawList, ResolveTakesTheWidthAcrossAndTheHeightDown) {
    NDrawList scene;
    scene.areaWidth = 100;
    scene.areaHeight = 40;
    EXPECT_EQ(66, scene.Resolve(0x160004, true, 0, 30));
    EXPECT_EQ(6, scene.Resolve(0x160004, false, 0, 30));
    EXPECT_EQ(71, scene.Resolve(0x160004, true, 5, 30));
}

TEST(NDrawListMeasure, RectanglesReachAsFarAsTheFurthestOfTheirEdges) {
    const std::function<void(NDrawList&, uint32_t, uint32_t, uint32_t, uint32_t)> adds[] = {
        [](NDrawList& scene, uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
            scene.AddFill({left, top, right, bottom});
        },
        [](NDrawList& scene, uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
            scene.AddBox({left, top, right, bottom});
        },
        [](NDrawList& scene, uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
            scene.AddFrame({left, top, right, bottom});
        },
        [](NDrawList& scene, uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
            scene.AddGradient({.left = left, .top = top, .right = right, .bottom = bottom});
        },
        [](NDrawList& scene, uint32_t left, uint32_t top, uint32_t right, uint32_t bottom) {
            scene.AddLine({0, left, top, right, bottom});
        },
    };
    struct Case {
        uint32_t left, top, right, bottom;
        LONG width, height;
    };
    const Case cases[] = {
        {3, 2, 20, 10, 20, 10},
        {20, 10, 3, 2, 20, 10}, // turned around
        {0, 0, 0x20000, 0x20000, 0, 0},
        {0, 0, 0x120002, 0x20003, 0, 3}, // before the area counts as 0
        {7, 0x10000, 0x120002, 0x10001, 7, 1},
        // The own size is what lies between the packed values, flags and all.
        {0x40004, 0, 20, 0, 4 + 0x40004 - 20, 0},
        {4, 0, 0x80014, 0, 4, 0},
    };
    for (const auto& add : adds)
        for (const Case& each : cases) {
            NDrawList scene;
            add(scene, each.left, each.top, each.right, each.bottom);
            ExpectSize(each.width, each.height, scene.Measure());
        }
}

TEST(NDrawListMeasure, BitmapsAndIconsReachTheirSizeBeyondTheirPlace) {
    struct Case {
        uint32_t x, y;
        SIZE bitmap, icon;
    };
    const Case cases[] = {
        {0, 0, {4, 3}, {16, 16}},
        {7, 5, {11, 8}, {23, 21}},
        {0x20000, 0x20000, {4, 3}, {16, 16}}, // the area has no size here
        {0x160004, 0x90000, {4, 3}, {16, 16}},
        {0x20003, 0x10002, {7, 5}, {19, 18}},
        {0x40000 + 40, 0x80000 + 40, {40, 42}, {40, 48}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(testing::Message() << std::hex << each.x << ", " << each.y);
        NDrawList withBitmap;
        NDrawList::Bitmap bitmap;
        FillBitmap(bitmap);
        bitmap.x = each.x;
        bitmap.y = each.y;
        withBitmap.AddBitmap(bitmap);
        ExpectSize(each.bitmap.cx, each.bitmap.cy, withBitmap.Measure());
        NDrawList withIcon;
        NDrawList::Icon icon;
        FillIcon(icon);
        icon.x = each.x;
        icon.y = each.y;
        withIcon.AddIcon(icon);
        ExpectSize(each.icon.cx, each.icon.cy, withIcon.Measure());
    }
}

TEST(NDrawListMeasure, ATextTakes4PixelsMoreAcrossAnd1MoreDown) {
    const TextOracle oracle(20);
    NDrawList scene;
    scene.AddText({.x = 7, .y = 5, .text = L"Overture", .fontSize = 20});
    ExpectSize(7 + oracle.Width(L"Overture") + 4, 5 + oracle.LineHeight() + 1, scene.Measure());
    scene.texts[0]->x = 0x160004;
    scene.texts[0]->y = 0x90000;
    ExpectSize(oracle.Width(L"Overture") + 4, oracle.LineHeight() + 1, scene.Measure());
}

TEST(NDrawListMeasure, ATextWithoutASizeHasOneOf13) {
    const TextOracle oracle(13);
    NDrawList scene;
    scene.AddText({.text = L"Overture"});
    ExpectSize(oracle.Width(L"Overture") + 4, oracle.LineHeight() + 1, scene.Measure());
}

TEST(NDrawListMeasure, ATextOfLinesIsAsWideAsTheWidestAndAsHighAsAll) {
    const TextOracle oracle(13);
    NDrawList scene;
    scene.AddText({.text = L"I\rOverture\rII"});
    ExpectSize(oracle.Width(L"Overture") + 4, 3 * oracle.LineHeight() + 1, scene.Measure());
}

TEST(NDrawListMeasure, TabsCountFromTheLowBitsOfATextsPlace) {
    NFont font;
    ASSERT_TRUE(font.Create(nullptr, nullptr, 13, 0));
    NMemoryDC memory;
    const int width = font.TextWidth(memory.dc, L"I\tI", true, 30);
    ASSERT_NE(width, font.TextWidth(memory.dc, L"I\tI", true, 0));
    NDrawList scene;
    scene.AddText({.x = 0x10000 + 30, .text = L"I\tI"});
    EXPECT_EQ(30 + width + 4, scene.Measure().cx);
}

TEST(NDrawListMeasure, ACutTextIsPlacedAsAWholeOneAndTakesTheWidthThatIsLeft) {
    const TextOracle oracle(13);
    NDrawList scene;
    const int room = oracle.Width(L"Ove...") + 1;
    scene.AddText({.x = 0x40000 + 500, .text = L"Overture", .maxWidth = room});
    ExpectSize(500 - oracle.Width(L"Overture") + oracle.Width(L"Ove...") + 4,
               oracle.LineHeight() + 1, scene.Measure());
    EXPECT_EQ(NString(L"Overture"), scene.texts[0]->text);
    // Cut to nothing it still has its height.
    scene.texts[0]->x = 10;
    scene.texts[0]->maxWidth = -1;
    ExpectSize(10 + 4, oracle.LineHeight() + 1, scene.Measure());
}

TEST(NDrawListMeasure, TheSizeIsThatOfTheFurthestElementHiddenOnesToo) {
    NDrawList scene;
    scene.AddFill({.right = 10, .bottom = 40});
    scene.AddLine({.x2 = 30, .y2 = 5, .mask = 4});
    ExpectSize(30, 40, scene.Measure());
}

TEST(NDrawListMeasure, MarginsAreAddedBeforeTheMinimumSizeIsLookedAt) {
    NDrawList scene;
    scene.AddFill({.right = 10, .bottom = 40});
    scene.marginX = 3;
    scene.marginY = 5;
    ExpectSize(13, 45, scene.Measure());
    scene.minWidth = 12;
    scene.minHeight = 44;
    ExpectSize(13, 45, scene.Measure());
    scene.minWidth = 14;
    scene.minHeight = 46;
    ExpectSize(14, 46, scene.Measure());
}

TEST(NDrawListMeasure, TheAreasSizeTakesNoPartAndStays) {
    NDrawList scene;
    scene.AddFill({.right = AnchorFar, .bottom = AnchorMiddle});
    scene.areaWidth = 100;
    scene.areaHeight = 50;
    scene.dirty = 0;
    ExpectSize(0, 0, scene.Measure());
    EXPECT_EQ(100, scene.areaWidth);
    EXPECT_EQ(50, scene.areaHeight);
    EXPECT_EQ(0, scene.dirty);
}

TEST(NDrawList, NothingItMakesOutlivesIt) {
    const auto useAll = [] {
        NDrawList scene;
        AddOneOfEach(scene);
        NDrawList copy;
        copy.CopyFrom(scene);
        copy.CopyFrom(scene);
        copy.Measure();
        scene.Clear();
        AddOneOfEach(scene);
    };
    useAll();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 50; ++i)
        useAll();
    EXPECT_EQ(before, CountPlatformObjects());
}
