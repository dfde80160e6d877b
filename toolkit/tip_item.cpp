#include "toolkit/tip_item.h"

#include "toolkit/device_contexts.h"
#include "toolkit/nfont.h"

#include <algorithm>

namespace {
constexpr LONG BesideText = 1; // pixel

const NToolTipItem* ItemAt(const NKeyedList<NToolTipItem>& items, int index) {
    return static_cast<const NToolTipItem*>(items.Items.At(index));
}

void CopyTipItem(NToolTipItem& to, const NToolTipItem& from) {
    to.x = from.x;
    to.y = from.y;
    to.text = from.text;
    to.onClick = from.onClick;
    to.clickValue = from.clickValue;
    to.colour = from.colour == TipItemColour ? DefaultTipColour : from.colour;
    to.fontFace = from.fontFace;
    to.bold = from.bold;
    to.fontSize = from.fontSize == 0 ? DefaultTipFontSize : from.fontSize;
    to.iconNormal.Copy(from.iconNormal);
    to.iconHover.Copy(from.iconHover);
    to.iconDown.Copy(from.iconDown);
    to.iconState = from.iconState;
    to.pressed = from.pressed;
}

bool MakeFont(const NToolTipItem& item, HDC dc, NFont& font) {
    constexpr bool Underline = true;
    NString face = item.fontFace;
    return font.Create(dc, face.ToNarrow(), item.fontSize, item.colour, 0, item.bold, false,
                       Underline);
}

SIZE SizeOfTipItem(const NToolTipItem& item, bool multiLine) {
    if (item.IsIcon())
        return {item.iconNormal.Width(), item.iconNormal.Height()};
    const NWindowDC screen;
    NFont font;
    MakeFont(item, screen.dc, font);
    return {font.TextWidth(item.text, multiLine), font.TextHeight(item.text, multiLine)};
}

const NIcon& IconOfState(const NToolTipItem& item) {
    if (item.iconState == TipIconHover)
        return item.iconHover;
    return item.iconState == TipIconDown ? item.iconDown : item.iconNormal;
}
} // namespace

void CopyTipItems(NKeyedList<NToolTipItem>& to, const NKeyedList<NToolTipItem>& from) {
    to.Clear();
    for (int i = 0; i < from.Count(); ++i)
        CopyTipItem(*to.Add(), *ItemAt(from, i));
}

SIZE ReachOfTipItems(const NKeyedList<NToolTipItem>& items) {
    SIZE reach = {};
    for (int i = 0; i < items.Count(); ++i) {
        const NToolTipItem& item = *ItemAt(items, i);
        const SIZE size = SizeOfTipItem(item, true);
        const LONG beside = item.IsIcon() ? 0 : BesideText;
        reach.cx = std::max(reach.cx, item.x + size.cx + beside);
        reach.cy = std::max(reach.cy, item.y + size.cy);
    }
    return reach;
}

bool TipItemIsHit(const NToolTipItem& item, POINT point) {
    const SIZE size = SizeOfTipItem(item, false);
    return point.x >= item.x && point.x <= item.x + size.cx && point.y >= item.y &&
           point.y <= item.y + size.cy;
}

void DrawTipItem(NToolTipItem& item, HDC dc) {
    if (item.IsIcon()) {
        IconOfState(item).Draw(dc, item.x, item.y);
        return;
    }
    NFont font;
    MakeFont(item, dc, font);
    font.DrawText(item.x, item.y, item.text, nullptr, true);
}
