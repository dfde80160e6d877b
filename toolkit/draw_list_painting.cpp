#include "toolkit/draw_list_walk.h"
#include "toolkit/gradient.h"
#include "toolkit/nbrush.h"
#include "toolkit/npen.h"
#include "toolkit/text_element.h"

void NDrawList::Paint(HDC dc, int x, int y) {
    if (dirty) {
        dirty = 0;
        const SIZE size = Measure();
        areaWidth = size.cx;
        areaHeight = size.cy;
    }
    for (uint32_t layer = 0; layer < layerCount; ++layer)
        PaintLayer(dc, x, y, layer);
}

void NDrawList::PaintLayer(HDC dc, int x, int y, uint32_t layer) {
    ForEachList(*this, [&](auto& list) {
        ForEachElement(list, [&](auto& element) {
            if (element.layer == layer && IsVisible(element.mask))
                PaintElement(dc, x, y, element);
        });
    });
}

template <typename Element>
RECT NDrawList::ResolveRect(const Element& element, int x, int y) const {
    // The differences of the packed values, whatever bits they hold.
    const auto width = static_cast<int32_t>(element.right - element.left);
    const auto height = static_cast<int32_t>(element.bottom - element.top);
    return {Resolve(element.left, true, x, width), Resolve(element.top, false, y, height),
            Resolve(element.right, true, x, width), Resolve(element.bottom, false, y, height)};
}

void NDrawList::PaintElement(HDC dc, int x, int y, const Fill& element) const {
    const RECT rect = ResolveRect(element, x, y);
    NBrush brush;
    if (brush.Solid(element.colour))
        FillRect(dc, &rect, brush.handle);
}

void NDrawList::PaintElement(HDC dc, int x, int y, const Box& element) const {
    const RECT rect = ResolveRect(element, x, y);
    NBrush brush;
    NPen pen;
    if (brush.Solid(element.fillColour, dc) && pen.Create(element.lineColour, dc))
        Rectangle(dc, rect.left, rect.top, rect.right, rect.bottom);
}

void NDrawList::PaintElement(HDC dc, int x, int y, Gradient& element) const {
    const RECT rect = ResolveRect(element, x, y);
    const int32_t width = rect.right - rect.left;
    const int32_t height = rect.bottom - rect.top;
    if (width != element.cachedWidth || height != element.cachedHeight) {
        const bool made = element.cache.Resize(width, height);
        // One that couldn't be made is tried again at the next paint.
        element.cachedWidth = made ? width : 0;
        element.cachedHeight = made ? height : 0;
        GradientRect(&element.cache, nullptr, nullptr, element.topLeft, element.topRight,
                     element.bottomLeft, element.bottomRight);
    }
    element.cache.Blit(dc, rect.left, rect.top);
}

void NDrawList::PaintElement(HDC dc, int x, int y, const Frame& element) const {
    const RECT rect = ResolveRect(element, x, y);
    if (element.dotted) {
        DrawFocusRect(dc, &rect);
        return;
    }
    NBrush brush;
    if (brush.Solid(element.colour))
        FrameRect(dc, &rect, brush.handle);
}

void NDrawList::PaintElement(HDC dc, int x, int y, const Line& element) const {
    const auto width = static_cast<int32_t>(element.x2 - element.x1);
    const auto height = static_cast<int32_t>(element.y2 - element.y1);
    NPen pen;
    if (!pen.Create(element.colour, dc))
        return;
    MoveToEx(dc, Resolve(element.x1, true, x, width), Resolve(element.y1, false, y, height),
             nullptr);
    LineTo(dc, Resolve(element.x2, true, x, width), Resolve(element.y2, false, y, height));
}

void NDrawList::PaintElement(HDC dc, int x, int y, const Bitmap& element) const {
    const NCanvas& bitmap = element.bitmap;
    constexpr int WholeSize = -1;
    bitmap.Blit(dc, Resolve(element.x, true, x, bitmap.Width()),
                Resolve(element.y, false, y, bitmap.Height()), WholeSize, WholeSize, 0, 0,
                element.rop ? element.rop : SRCCOPY);
}

void NDrawList::PaintElement(HDC dc, int x, int y, const Icon& element) const {
    const NIcon& icon = element.icon;
    icon.Draw(dc, Resolve(element.x, true, x, icon.Width()),
              Resolve(element.y, false, y, icon.Height()));
}

void NDrawList::PaintElement(HDC dc, int x, int y, const Text& element) const {
    NFont font;
    if (!SelectFontOf(element, dc, font))
        return;
    // Of the whole text, also when a shorter one is drawn. This is wanted.
    const SIZE size = SizeOfText(element, font, element.text);
    font.DrawText(Resolve(element.x, true, x, size.cx), Resolve(element.y, false, y, size.cy),
                  FittedText(element, font), nullptr, true);
}
