#include "toolkit/value_row_painting.h"

#include "toolkit/draw_list_walk.h"
#include "toolkit/nfont.h"
#include "toolkit/packed_coordinates.h"
#include "toolkit/value_row_scene.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {
constexpr COLORREF ReadOnlyColour = 0xC0C0C0;
constexpr int32_t CaptionGap = 7; // between a value and its row's button

SIZE SizeOf(const RECT& rect) {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

// All texts of a scene in one colour to the end of the scope.
class GreyTexts {
public:
    explicit GreyTexts(NDrawList& scene) : scene_(scene) {
        ForEachElement(scene.texts, [this](NDrawList::Text& text) {
            colours_.push_back(text.colour);
            text.colour = ReadOnlyColour;
        });
    }
    ~GreyTexts() {
        auto colour = colours_.cbegin();
        ForEachElement(scene_.texts, [&](NDrawList::Text& text) { text.colour = *colour++; });
    }
    GreyTexts(const GreyTexts&) = delete;
    GreyTexts& operator=(const GreyTexts&) = delete;

private:
    NDrawList& scene_;
    std::vector<COLORREF> colours_;
};

// A value of several lines shows its first one; one that begins with a
// carriage return shows "..." alone.
NString FirstLine(const NString& value) {
    const int end = value.FindChar(L'\r');
    if (!end)
        return value;
    NString line = value.Left(end - 1);
    line.Append(L"...");
    return line;
}

int32_t CaptionWidth(const NValueList& list, const NValueRow& row, HDC dc) {
    NFont font;
    font.Create(dc, nullptr, list.SizeInPixels(list.valueFontSize), 0);
    return font.TextWidth(ButtonCaption(row.buttonText));
}

int32_t ValueRoom(const NValueList& list, const NValueRow& row, const NDrawList::Text& value,
                  const DRAWITEMSTRUCT& item) {
    // In the row's own coordinates, wherever it is painted.
    const int32_t width = SizeOf(item.rcItem).cx;
    const int32_t room = width - ResolvePacked(value.x, width, 0, 0);
    if (row.buttonText.IsEmpty() || (item.itemState & ODS_SELECTED))
        return room;
    const int32_t taken = CaptionWidth(list, row, item.hDC) + CaptionGap;
    // Only here does the value's width count for what is painted: wanted.
    return (row.valueWidth ? row.valueWidth : room) - taken;
}

void PaintScene(NDrawList& scene, uint32_t mask, const DRAWITEMSTRUCT& item) {
    const SIZE size = SizeOf(item.rcItem);
    scene.stateMask = mask;
    scene.marginX = 0;
    scene.marginY = 0;
    scene.minWidth = size.cx;
    scene.minHeight = size.cy;
    scene.dirty = 1;
    scene.Paint(item.hDC, item.rcItem.left, item.rcItem.top);
}

bool GrowBackBuffer(NCanvas& buffer, HDC dc, SIZE size) {
    const int width = buffer.Width();
    const int height = buffer.Height();
    if (width < size.cx || height < size.cy)
        buffer.Resize(dc, std::max<int>(width, size.cx), std::max<int>(height, size.cy), true);
    return buffer.dc != nullptr;
}
} // namespace

uint32_t RowStateMask(const NValueList& list, int row, UINT itemState) {
    const NValueRow* record = list.RowAt(row);
    const bool inEdit = list.control.editRow == row;
    uint32_t mask = record && record->readOnly ? RowReadOnly : RowWritable;
    mask |= itemState & ODS_SELECTED ? RowSelected : RowNotSelected;
    mask |= itemState & ODS_FOCUS ? RowFocused : RowNotFocused;
    if (!inEdit || !list.control.nameMode)
        mask |= RowNameShown;
    if (!inEdit || list.control.nameMode)
        mask |= RowValueShown;
    return mask;
}

void PaintValueRow(const NValueList& list, const DRAWITEMSTRUCT& item) {
    // 1.
    const int index = static_cast<int>(item.itemID);
    NValueRow* row = list.RowAt(index);
    if (!row) {
        FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_WINDOW));
        return;
    }
    // 2.
    uint32_t mask = RowStateMask(list, index, item.itemState);
    // 3. and 9.
    std::optional<GreyTexts> grey;
    if (row->readOnly)
        grey.emplace(row->scene);
    // 4.
    const NPtrList& texts = row->scene.texts.Items;
    if (row->kind != Raw && texts.Count >= 2) {
        auto& name = *static_cast<NDrawList::Text*>(texts.At(0));
        auto& value = *static_cast<NDrawList::Text*>(texts.At(1));
        // 5. So the name of a row with a mark shows, too.
        name.text = row->name;
        if (row->kind == Check || row->kind == Radio)
            mask |= list.IsChecked(index) ? RowMarkOn : RowMarkOff;
        else
            // 6.
            value.text = FirstLine(row->value);
        // 7.
        value.maxWidth = ValueRoom(list, *row, value, item);
    }
    // 8.
    PaintScene(row->scene, mask, item);
}

void PaintValueItem(NValueList& list, const DRAWITEMSTRUCT& item) {
    // 1.
    const SIZE size = SizeOf(item.rcItem);
    if (!GrowBackBuffer(list.backBuffer, item.hDC, size))
        return;
    // 2.
    DRAWITEMSTRUCT copy = item;
    copy.hDC = list.backBuffer.dc;
    copy.rcItem = {0, 0, size.cx, size.cy};
    PaintValueRow(list, copy);
    // 3.
    list.backBuffer.Blit(item.hDC, item.rcItem.left, item.rcItem.top, size.cx, size.cy);
}
