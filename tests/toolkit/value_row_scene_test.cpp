#include "tests/support/nstring_printer.h"
#include "tests/toolkit/list_dialog.h"
#include "tests/toolkit/scoped_dpi.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/text_oracle.h"
#include "toolkit/draw_list_walk.h"
#include "toolkit/value_row_scene.h"

#include <gtest/gtest.h>

namespace {
constexpr uint32_t Full = 0x20000;
constexpr uint32_t Mid = 0x90000;
constexpr uint32_t Right4 = 0x160004;

template <typename Element>
std::vector<Element*> All(const NKeyedList<Element>& list) {
    std::vector<Element*> all;
    ForEachElement(list, [&](Element& element) { all.push_back(&element); });
    return all;
}

// The elements' types in the order of their layers.
std::string Outline(const NDrawList& scene) {
    std::vector<std::string> layers(scene.layerCount);
    const auto note = [&](const auto& list, const char* name) {
        ForEachElement(list, [&](const auto& element) {
            std::string& layer = layers.at(element.layer);
            layer += layer.empty() ? name : std::string("+") + name;
        });
    };
    note(scene.fills, "fill");
    note(scene.boxes, "box");
    note(scene.frames, "frame");
    note(scene.gradients, "gradient");
    note(scene.bitmaps, "bitmap");
    note(scene.lines, "line");
    note(scene.icons, "icon");
    note(scene.texts, "text");
    std::string outline;
    for (const std::string& layer : layers)
        outline += (outline.empty() ? "" : " ") + layer;
    return outline;
}

class ValueRowScene : public testing::Test {
protected:
    ValueRowScene() { init.name = L"Name"; }

    NValueRow& Add() { return *dialog.list.rows[dialog.Add(init)]; }
    NDrawList& AddScene() { return Add().scene; }

    ListDialog dialog;
    NValueRowInit init;
    const COLORREF window = GetSysColor(COLOR_WINDOW);
};

TEST_F(ValueRowScene, APlainRowHasGroundBandNameValueAndFocus) {
    EXPECT_EQ(Outline(AddScene()), "fill box text text frame");
}

TEST_F(ValueRowScene, EachKindHasItsElementsInTheirOrder) {
    init.icon.Load(IDI_MARK, 16, 16);
    init.buttonText = L"View";
    dialog.list.LoadMarks(IDI_MARKS, 16);
    const std::string usual = "fill box icon text text text text frame";
    const std::string marked = "fill box icon text text text text icon icon icon icon frame";
    const std::pair<int32_t, std::string> cases[] = {
        {Plain, usual},     {Raw, usual},
        {Link, usual},      {Heading, "fill box icon text gradient text text text frame"},
        {Edit, usual},      {Title, "gradient box icon text text text text frame"},
        {ComboEdit, usual}, {DropList, usual},
        {Check, marked},    {Radio, marked}};
    for (const auto& [kind, outline] : cases) {
        init.kind = kind;
        EXPECT_EQ(Outline(AddScene()), outline) << "kind " << kind;
    }
}

TEST_F(ValueRowScene, TheGroundIsTheWindowColour) {
    const NDrawList::Fill& ground = *All(AddScene().fills).at(0);
    EXPECT_EQ(ground.left, 0u);
    EXPECT_EQ(ground.top, 0u);
    EXPECT_EQ(ground.right, Full);
    EXPECT_EQ(ground.bottom, Full);
    EXPECT_EQ(ground.colour, window);
    EXPECT_EQ(ground.mask, 0u);
}

TEST_F(ValueRowScene, ATitleStandsOnAGradient) {
    init.kind = Title;
    const NDrawList::Gradient& ground = *All(AddScene().gradients).at(0);
    EXPECT_EQ(ground.left, 0u);
    EXPECT_EQ(ground.top, 0u);
    EXPECT_EQ(ground.right, Full);
    EXPECT_EQ(ground.bottom, Full);
    EXPECT_EQ(ground.topLeft, window);
    EXPECT_EQ(ground.topRight, COLORREF{0xFFC8C8});
    EXPECT_EQ(ground.bottomLeft, window);
    EXPECT_EQ(ground.bottomRight, COLORREF{0xEFF8F8});
    EXPECT_EQ(ground.mask, 0u);
}

TEST_F(ValueRowScene, TheBandShowsWhileTheRowIsSelected) {
    const NDrawList::Box& band = *All(AddScene().boxes).at(0);
    EXPECT_EQ(band.left, 1u);
    EXPECT_EQ(band.top, 0u);
    EXPECT_EQ(band.right, Full);
    EXPECT_EQ(band.bottom, Full);
    EXPECT_EQ(band.fillColour, COLORREF{0xF9ECE5});
    EXPECT_EQ(band.lineColour, COLORREF{0xCC6633});
    EXPECT_EQ(band.mask, 4u);
}

TEST_F(ValueRowScene, TheIconStandsAtItsPlaceInTheMiddle) {
    init.icon.Load(IDI_MARK, 16, 16);
    init.iconX = 9;
    const NDrawList::Icon& icon = *All(AddScene().icons).at(0);
    EXPECT_EQ(icon.icon.Width(), 16);
    EXPECT_NE(icon.icon.handle, init.icon.handle);
    EXPECT_EQ(icon.x, 9u);
    EXPECT_EQ(icon.y, Mid);
    EXPECT_EQ(icon.mask, 0u);
}

TEST_F(ValueRowScene, TheNameHasTheRowsLook) {
    init.nameColour = 0x112233;
    init.nameBold = true;
    init.nameUnderline = true;
    init.nameX = 0x160004;
    init.nameFontSize = 17;
    const NDrawList::Text& name = *All(AddScene().texts).at(0);
    EXPECT_EQ(name.text, L"Name");
    EXPECT_EQ(name.x, 0x160004u);
    EXPECT_EQ(name.y, Mid);
    EXPECT_EQ(name.colour, COLORREF{0x112233});
    EXPECT_TRUE(name.bold);
    EXPECT_FALSE(name.italic);
    EXPECT_TRUE(name.underline);
    EXPECT_EQ(name.fontSize, 17);
    EXPECT_TRUE(name.fontFace.IsEmpty());
    EXPECT_EQ(name.mask, 256u);
    EXPECT_EQ(name.maxWidth, 0);
}

TEST_F(ValueRowScene, TheNamesFlagsAreEachTheirOwn) {
    init.nameItalic = true;
    const NDrawList::Text& name = *All(AddScene().texts).at(0);
    EXPECT_FALSE(name.bold);
    EXPECT_TRUE(name.italic);
    EXPECT_FALSE(name.underline);
    EXPECT_EQ(name.colour, COLORREF{0});
    EXPECT_EQ(name.x, static_cast<uint32_t>(NameX));
    EXPECT_EQ(name.fontSize, FontSize);
}

TEST_F(ValueRowScene, ANameBeforeAValueEndsWhereTheValueBegins) {
    init.value = L"v";
    init.valueX = 90;
    init.nameX = 6;
    EXPECT_EQ(All(AddScene().texts).at(0)->maxWidth, 84);
    init.kind = Check;
    EXPECT_EQ(All(AddScene().texts).at(0)->maxWidth, 0);
    init.kind = Radio;
    EXPECT_EQ(All(AddScene().texts).at(0)->maxWidth, 0);
}

TEST_F(ValueRowScene, AnAnchorMakesTheNamesRoomNoWidth) {
    init.value = L"v";
    init.nameX = 6;
    init.valueX = 0x160064;
    EXPECT_EQ(All(AddScene().texts).at(0)->maxWidth, 0x160064 - 6); // no limit
    init.nameX = 0x160064;
    init.valueX = 6;
    EXPECT_EQ(All(AddScene().texts).at(0)->maxWidth, 6 - 0x160064); // no room
}

TEST_F(ValueRowScene, FontsAreHigherOnAFinerScreenUnlessTheListIsInPixels) {
    const ScopedDpi dpi(144);
    init.buttonText = L"View";
    init.nameFontSize = 20;
    const auto sizes = [&] {
        std::vector<int32_t> all;
        for (const NDrawList::Text* text : All(AddScene().texts))
            all.push_back(text->fontSize);
        return all;
    };
    EXPECT_EQ(sizes(), (std::vector<int32_t>{20, 13, 13, 13}));
    // Sizes of their own, so that neither is taken for the other.
    dialog.list.Create(10, 10, 300, 220, dialog.window, NameX, ValueX, RowHeight, 14, 13, false);
    EXPECT_EQ(sizes(), (std::vector<int32_t>{30, 19, 19, 19})); // 13 * 1.5, cut
    init.nameFontSize = 0;
    EXPECT_EQ(sizes(), (std::vector<int32_t>{21, 19, 19, 19}));
    dialog.CreateList(false);
    EXPECT_EQ(sizes(), (std::vector<int32_t>{19, 19, 19, 19}));
}

TEST_F(ValueRowScene, TheValueHasItsColourAndNoOtherStyle) {
    init.value = L"v";
    init.valueColour = 0x445566;
    init.nameBold = init.nameItalic = init.nameUnderline = true;
    init.nameFontSize = 20;
    const NDrawList::Text& value = *All(AddScene().texts).at(1);
    EXPECT_EQ(value.text, L"v");
    EXPECT_EQ(value.x, static_cast<uint32_t>(ValueX));
    EXPECT_EQ(value.y, Mid);
    EXPECT_EQ(value.colour, COLORREF{0x445566});
    EXPECT_FALSE(value.bold || value.italic || value.underline);
    EXPECT_EQ(value.fontSize, FontSize);
    EXPECT_EQ(value.mask, 512u);
}

TEST_F(ValueRowScene, ALinkIsBlueAndUnderlinedWhateverItsColour) {
    init.kind = Link;
    init.value = L"http://example.com";
    init.valueColour = 0x0000FF;
    const NDrawList::Text& value = *All(AddScene().texts).at(1);
    EXPECT_EQ(value.colour, COLORREF{0xFF0000});
    EXPECT_TRUE(value.underline);
    EXPECT_FALSE(value.bold || value.italic);
}

TEST_F(ValueRowScene, ARowWithAMarkIsBuiltWithoutTexts) {
    init.value = L"1";
    for (int32_t kind : {Check, Radio}) {
        init.kind = kind;
        const auto texts = All(AddScene().texts);
        EXPECT_TRUE(texts.at(0)->text.IsEmpty());
        EXPECT_TRUE(texts.at(1)->text.IsEmpty());
    }
}

TEST_F(ValueRowScene, ARuleFollowsAHeadingsName) {
    init.kind = Heading;
    init.nameX = 6;
    const NDrawList::Gradient& rule = *All(AddScene().gradients).at(0);
    const int width = TextOracle(FontSize).Width(L"Name");
    EXPECT_EQ(rule.left, static_cast<uint32_t>(6 + width + 4));
    EXPECT_EQ(rule.top, 0x10000u);
    EXPECT_EQ(rule.right, 0x120004u);
    EXPECT_EQ(rule.bottom, 0x10001u);
    EXPECT_EQ(rule.topLeft, COLORREF{0x808080});
    EXPECT_EQ(rule.bottomLeft, COLORREF{0x808080});
    EXPECT_EQ(rule.topRight, window);
    EXPECT_EQ(rule.bottomRight, window);
    EXPECT_EQ(rule.mask, 0u);
}

TEST_F(ValueRowScene, ARuleIsMeasuredInTheListsSizeAndTheRowsWeight) {
    init.kind = Heading;
    init.nameX = 6;
    init.nameBold = true;
    init.nameFontSize = 30;
    const int width = TextOracle(FontSize, L"Tahoma", true).Width(L"Name");
    ASSERT_NE(width, TextOracle(FontSize).Width(L"Name"));
    EXPECT_EQ(All(AddScene().gradients).at(0)->left, static_cast<uint32_t>(6 + width + 4));
}

TEST_F(ValueRowScene, ARuleIsMeasuredInTheScaledSizeOnAFinerScreen) {
    const ScopedDpi dpi(144);
    init.kind = Heading;
    init.nameX = 6;
    init.nameFontSize = 20;
    dialog.CreateList(false);
    const int width = TextOracle(19).Width(L"Name");
    ASSERT_NE(width, TextOracle(FontSize).Width(L"Name"));
    EXPECT_EQ(All(AddScene().gradients).at(0)->left, static_cast<uint32_t>(9 + width + 4));
}

TEST_F(ValueRowScene, AButtonsCaptionStandsInSquareBracketsAtTheRight) {
    init.buttonText = L"View";
    const auto texts = All(AddScene().texts);
    ASSERT_EQ(texts.size(), 4u);
    for (size_t index : {2u, 3u}) {
        EXPECT_EQ(texts[index]->text, L"[ View ]");
        EXPECT_EQ(texts[index]->x, Right4);
        EXPECT_EQ(texts[index]->y, Mid);
        EXPECT_EQ(texts[index]->fontSize, FontSize);
    }
    EXPECT_EQ(texts[2]->colour, COLORREF{0x000080});
    EXPECT_EQ(texts[2]->mask, 9u);
    EXPECT_EQ(texts[3]->colour, COLORREF{0xC0C0C0});
    EXPECT_EQ(texts[3]->mask, 2u);
}

TEST_F(ValueRowScene, WithAValueWidthTheCaptionEndsThere) {
    init.buttonText = L"Add";
    init.valueX = 8;
    init.valueWidth = 100;
    const auto texts = All(AddScene().texts);
    EXPECT_EQ(texts.at(2)->x, 8u + 100u + 0x40000u);
    EXPECT_EQ(texts.at(3)->x, 8u + 100u + 0x40000u);
}

struct IconFacts {
    uint32_t x;
    uint32_t y;
    uint32_t mask;
    bool operator==(const IconFacts&) const = default;
};

std::vector<IconFacts> IconsOf(const NDrawList& scene) {
    std::vector<IconFacts> facts;
    ForEachElement(scene.icons, [&](const NDrawList::Icon& icon) {
        facts.push_back({icon.x, icon.y, icon.mask});
    });
    return facts;
}

TEST_F(ValueRowScene, MarksWithGreyOnesShowByWritingAndState) {
    dialog.list.LoadMarks(IDI_MARKS, 16);
    for (int32_t kind : {Check, Radio}) {
        init.kind = kind;
        init.markX = 3;
        EXPECT_EQ(IconsOf(AddScene()),
                  (std::vector<IconFacts>{{3, Mid, 33}, {3, Mid, 17}, {3, Mid, 34}, {3, Mid, 18}}));
    }
}

TEST_F(ValueRowScene, AMarkWithoutAGreyOneShowsInReadOnlyRowsToo) {
    dialog.list.LoadMarks(IDI_MARKS, 16);
    dialog.list.checkOnGrey.Release();
    dialog.list.radioOffGrey.Release();
    init.kind = Check;
    EXPECT_EQ(IconsOf(AddScene()),
              (std::vector<IconFacts>{{NameX, Mid, 32}, {NameX, Mid, 17}, {NameX, Mid, 18}}));
    init.kind = Radio;
    EXPECT_EQ(IconsOf(AddScene()),
              (std::vector<IconFacts>{{NameX, Mid, 33}, {NameX, Mid, 16}, {NameX, Mid, 34}}));
}

TEST_F(ValueRowScene, TheFocusIsADottedFrameWithinTheRow) {
    const NDrawList::Frame& focus = *All(AddScene().frames).at(0);
    EXPECT_EQ(focus.left, 3u);
    EXPECT_EQ(focus.top, 2u);
    EXPECT_EQ(focus.right, 0x120002u);
    EXPECT_EQ(focus.bottom, 0x120002u);
    EXPECT_TRUE(focus.dotted);
    EXPECT_EQ(focus.mask, 64u);
}

TEST_F(ValueRowScene, ACaptionHasItsBrackets) {
    EXPECT_EQ(ButtonCaption(L"View"), L"[ View ]");
    EXPECT_EQ(ButtonCaption(L""), L"[  ]");
}
} // namespace
