#include "toolkit/device_contexts.h"
#include "toolkit/draw_list_walk.h"
#include "toolkit/text_element.h"

#include <algorithm>

namespace {
// What a text leaves free at its right and below.
constexpr LONG TextRoomRight = 4;
constexpr LONG TextRoomBelow = 1;

SIZE Larger(SIZE a, SIZE b) {
    return {std::max(a.cx, b.cx), std::max(a.cy, b.cy)};
}

// What lies before the area takes no room in it.
LONG NotNegative(LONG place) {
    return std::max<LONG>(place, 0);
}
} // namespace

SIZE NDrawList::Measure() {
    const int32_t width = areaWidth;
    const int32_t height = areaHeight;
    areaWidth = 0;
    areaHeight = 0;
    SIZE size = {};
    ForEachList(*this, [&](auto& list) {
        ForEachElement(list, [&](const auto& element) { size = Larger(size, ReachOf(element)); });
    });
    areaWidth = width;
    areaHeight = height;
    return Larger({size.cx + marginX, size.cy + marginY}, {minWidth, minHeight});
}

// One that is resolved with the size between two packed values.
LONG NDrawList::ReachOfPair(uint32_t first, uint32_t second, bool horizontal) const {
    const auto ownSize = static_cast<int32_t>(second - first);
    return NotNegative(
        std::max(Resolve(first, horizontal, 0, ownSize), Resolve(second, horizontal, 0, ownSize)));
}

template <typename Element>
SIZE NDrawList::ReachOf(const Element& element) const {
    return {ReachOfPair(element.left, element.right, true),
            ReachOfPair(element.top, element.bottom, false)};
}

SIZE NDrawList::ReachOf(const Line& element) const {
    return {ReachOfPair(element.x1, element.x2, true), ReachOfPair(element.y1, element.y2, false)};
}

SIZE NDrawList::ReachOfObject(uint32_t x, uint32_t y, SIZE size) const {
    return {NotNegative(Resolve(x, true, 0, size.cx)) + size.cx,
            NotNegative(Resolve(y, false, 0, size.cy)) + size.cy};
}

SIZE NDrawList::ReachOf(const Bitmap& element) const {
    return ReachOfObject(element.x, element.y, {element.bitmap.Width(), element.bitmap.Height()});
}

SIZE NDrawList::ReachOf(const Icon& element) const {
    return ReachOfObject(element.x, element.y, {element.icon.Width(), element.icon.Height()});
}

SIZE NDrawList::ReachOf(const Text& element) const {
    const NWindowDC screen;
    NFont font;
    if (!SelectFontOf(element, screen.dc, font))
        return {};
    const SIZE whole = SizeOfText(element, font, element.text);
    const SIZE shown = SizeOfText(element, font, FittedText(element, font));
    return {NotNegative(Resolve(element.x, true, 0, whole.cx)) + shown.cx + TextRoomRight,
            NotNegative(Resolve(element.y, false, 0, whole.cy)) + whole.cy + TextRoomBelow};
}
