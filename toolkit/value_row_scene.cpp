#include "toolkit/value_row_scene.h"

#include "toolkit/device_contexts.h"
#include "toolkit/nfont.h"
#include "toolkit/packed_coordinates.h"

namespace {
constexpr COLORREF TitleTopRight = 0xFFC8C8;
constexpr COLORREF TitleBottomRight = 0xEFF8F8;
constexpr COLORREF BandFill = 0xF9ECE5;
constexpr COLORREF BandLine = 0xCC6633;
constexpr COLORREF RuleColour = 0x808080;
constexpr COLORREF LinkColour = 0xFF0000;
constexpr COLORREF CaptionColour = 0x000080;
constexpr COLORREF CaptionColourReadOnly = 0xC0C0C0;

constexpr uint32_t Full = AnchorFar;
constexpr uint32_t Mid = AnchorMiddle | MinusHalf;
constexpr uint32_t Right2 = AnchorFar | Negative | 2;
constexpr uint32_t Right4 = AnchorFar | MinusSize | Negative | 4;
static_assert(Mid == 0x90000 && Right2 == 0x120002 && Right4 == 0x160004);

// A heading's rule.
constexpr uint32_t RuleGap = 4; // behind the name
constexpr uint32_t RuleTop = AnchorMiddle;
constexpr uint32_t RuleBottom = AnchorMiddle | 1;
constexpr uint32_t RuleRight = AnchorFar | Negative | 4;

struct Marks {
    const NIcon& on;
    const NIcon& off;
    const NIcon& onGrey;
    const NIcon& offGrey;
};

bool HasMark(const NValueRowInit& init) {
    return init.kind == Check || init.kind == Radio;
}

void AddBackground(NDrawList& scene, int32_t kind) {
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    if (kind == Title)
        scene.AddGradient({.right = Full,
                           .bottom = Full,
                           .topLeft = window,
                           .topRight = TitleTopRight,
                           .bottomLeft = window,
                           .bottomRight = TitleBottomRight});
    else
        scene.AddFill({.right = Full, .bottom = Full, .colour = window});
}

void AddSelectionBand(NDrawList& scene) {
    scene.AddBox({.left = 1,
                  .right = Full,
                  .bottom = Full,
                  .fillColour = BandFill,
                  .lineColour = BandLine,
                  .mask = RowSelected});
}

void AddIconAt(NDrawList& scene, const NIcon& icon, uint32_t x, uint32_t mask) {
    NDrawList::Icon element;
    element.icon.Copy(icon);
    element.x = x;
    element.y = Mid;
    element.mask = mask;
    scene.AddIcon(element);
}

int32_t NameFontOf(const NValueList& list, const NValueRowInit& init) {
    return list.SizeInPixels(init.nameFontSize ? init.nameFontSize : list.nameFontSize);
}

void AddName(NDrawList& scene, const NValueList& list, const NValueRowInit& init,
             const NValueRow& row) {
    NDrawList::Text element;
    element.x = row.nameX;
    element.y = Mid;
    element.colour = init.nameColour;
    element.bold = init.nameBold;
    element.italic = init.nameItalic;
    element.underline = init.nameUnderline;
    element.fontSize = NameFontOf(list, init);
    element.mask = RowNameShown;
    if (!HasMark(init)) {
        element.text = row.name;
        // As packed values: in the value's place an anchor limits nothing, in
        // the name's alone nothing of the name is left. Wanted.
        if (!row.value.IsEmpty())
            element.maxWidth = static_cast<int32_t>(row.valueX - row.nameX);
    }
    scene.AddText(element);
}

void AddRule(NDrawList& scene, const NValueList& list, const NValueRowInit& init,
             const NValueRow& row) {
    const NWindowDC screen;
    NFont font;
    // In the list's size, also where the row has one of its own. This is
    // wanted.
    font.Create(screen.dc, nullptr, list.SizeInPixels(list.nameFontSize), 0, 0, init.nameBold);
    const auto width = static_cast<uint32_t>(font.TextWidth(row.name));
    const COLORREF window = GetSysColor(COLOR_WINDOW);
    scene.AddGradient({.left = row.nameX + width + RuleGap,
                       .top = RuleTop,
                       .right = RuleRight,
                       .bottom = RuleBottom,
                       .topLeft = RuleColour,
                       .topRight = window,
                       .bottomLeft = RuleColour,
                       .bottomRight = window});
}

void AddValue(NDrawList& scene, const NValueList& list, const NValueRowInit& init,
              const NValueRow& row) {
    NDrawList::Text element;
    element.x = row.valueX;
    element.y = Mid;
    if (!HasMark(init))
        element.text = row.value;
    element.colour = init.kind == Link ? LinkColour : init.valueColour;
    element.underline = init.kind == Link;
    element.fontSize = list.SizeInPixels(list.valueFontSize);
    element.mask = RowValueShown;
    scene.AddText(element);
}

void AddButtonCaptions(NDrawList& scene, const NValueList& list, const NValueRow& row) {
    NDrawList::Text element;
    element.x =
        row.valueWidth ? row.valueX + static_cast<uint32_t>(row.valueWidth) + MinusSize : Right4;
    element.y = Mid;
    element.text = ButtonCaption(row.buttonText);
    element.fontSize = list.SizeInPixels(list.valueFontSize);
    element.colour = CaptionColour;
    element.mask = RowWritable | RowNotSelected;
    scene.AddText(element);
    element.colour = CaptionColourReadOnly;
    element.mask = RowReadOnly;
    scene.AddText(element);
}

// The grey marks are for read-only rows. Where one is missing, the other one
// serves these too.
void AddMarks(NDrawList& scene, const Marks& marks, uint32_t x) {
    AddIconAt(scene, marks.on, x, RowMarkOn | (marks.onGrey.handle ? RowWritable : 0));
    AddIconAt(scene, marks.off, x, RowMarkOff | (marks.offGrey.handle ? RowWritable : 0));
    if (marks.onGrey.handle)
        AddIconAt(scene, marks.onGrey, x, RowMarkOn | RowReadOnly);
    if (marks.offGrey.handle)
        AddIconAt(scene, marks.offGrey, x, RowMarkOff | RowReadOnly);
}

void AddFocus(NDrawList& scene) {
    scene.AddFrame({.left = 3,
                    .top = 2,
                    .right = Right2,
                    .bottom = Right2,
                    .dotted = true,
                    .mask = RowFocused});
}
} // namespace

void BuildRowScene(const NValueList& list, const NValueRowInit& init, NValueRow& row) {
    NDrawList& scene = row.scene;
    // 3. (1., 2. and 12. are AddRow's.)
    AddBackground(scene, init.kind);
    // 4.
    AddSelectionBand(scene);
    // 5.
    if (init.icon.handle)
        AddIconAt(scene, init.icon, row.iconX, 0);
    // 6.
    AddName(scene, list, init, row);
    // 7.
    if (init.kind == Heading)
        AddRule(scene, list, init, row);
    // 8.
    AddValue(scene, list, init, row);
    // 9.
    if (!row.buttonText.IsEmpty())
        AddButtonCaptions(scene, list, row);
    // 10.
    if (init.kind == Check)
        AddMarks(scene, {list.checkOn, list.checkOff, list.checkOnGrey, list.checkOffGrey},
                 row.markX);
    if (init.kind == Radio)
        AddMarks(scene, {list.radioOn, list.radioOff, list.radioOnGrey, list.radioOffGrey},
                 row.markX);
    // 11.
    AddFocus(scene);
}

NString ButtonCaption(const NString& buttonText) {
    NString caption(L"[ ");
    caption.Append(buttonText);
    caption.Append(L" ]");
    return caption;
}
