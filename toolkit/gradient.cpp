#include "toolkit/gradient.h"

#include "toolkit/nmsimg.h"
#include "toolkit/npen.h"

#include <algorithm>

namespace {
// A place between two ends: `at` steps of `count`.
struct Step {
    int64_t at;
    int64_t count;
};

Step StepOf(int first, int last, int position) {
    return {int64_t{position} - first, std::max<int64_t>(int64_t{last} - first, 1)};
}

BYTE MixChannel(int start, int end, Step step) {
    return static_cast<BYTE>(start + (end - start) * step.at / step.count);
}

COLORREF Mix(COLORREF start, COLORREF end, Step step) {
    return RGB(MixChannel(GetRValue(start), GetRValue(end), step),
               MixChannel(GetGValue(start), GetGValue(end), step),
               MixChannel(GetBValue(start), GetBValue(end), step));
}

// The end point isn't drawn.
void SolidLine(HDC dc, int x1, int y1, int x2, int y2, COLORREF colour) {
    NPen pen;
    if (!pen.Create(colour, dc))
        return;
    MoveToEx(dc, x1, y1, nullptr);
    LineTo(dc, x2, y2);
}

TRIVERTEX Vertex(int x, int y, COLORREF colour) {
    constexpr int To16Bits = 8;
    return {x,
            y,
            static_cast<COLOR16>(GetRValue(colour) << To16Bits),
            static_cast<COLOR16>(GetGValue(colour) << To16Bits),
            static_cast<COLOR16>(GetBValue(colour) << To16Bits),
            0};
}

void FillRow(GradientFillFunction fill, HDC dc, int left, int right, int y, COLORREF start,
             COLORREF end) {
    TRIVERTEX corners[] = {Vertex(left, y, start), Vertex(right + 1, y + 1, end)};
    GRADIENT_RECT both = {0, 1};
    fill(dc, corners, 2, &both, 1, GRADIENT_FILL_RECT_H);
}

void SetPixelsOfRow(HDC dc, int left, int right, int y, COLORREF start, COLORREF end) {
    for (int x = left; x <= right; ++x)
        SetPixelV(dc, x, y, Mix(start, end, StepOf(left, right, x)));
}

// What to draw on; null for nothing.
HDC TargetOf(const NCanvas* canvas, HDC dc) {
    if (!canvas || !canvas->dc)
        return nullptr;
    return dc ? dc : canvas->dc;
}
} // namespace

GradientFillFunction PlatformGradientFill() {
    return NProcessMsImg().gradientFill;
}

void GradientRect(NCanvas* canvas, HDC dc, const RECT* rect, COLORREF topLeft, COLORREF topRight,
                  COLORREF bottomLeft, COLORREF bottomRight, GradientFillSource source) {
    HDC target = TargetOf(canvas, dc);
    if (!target)
        return;
    // Right and bottom are included, so that a whole canvas's last column and
    // row fall outside of it. This is wanted.
    const RECT area = rect ? *rect : RECT{0, 0, canvas->Width(), canvas->Height()};
    if (topLeft == bottomLeft && topRight == bottomRight) {
        for (int x = area.left; x <= area.right; ++x)
            SolidLine(target, x, area.top, x, area.bottom + 1,
                      Mix(topLeft, topRight, StepOf(area.left, area.right, x)));
        return;
    }
    for (int y = area.top; y <= area.bottom; ++y) {
        const Step step = StepOf(area.top, area.bottom, y);
        GradientLine(canvas, target, area.left, area.right, y, Mix(topLeft, bottomLeft, step),
                     Mix(topRight, bottomRight, step), source);
    }
}

void GradientLine(NCanvas* canvas, HDC dc, int left, int right, int y, COLORREF startColour,
                  COLORREF endColour, GradientFillSource source) {
    HDC target = TargetOf(canvas, dc);
    if (!target)
        return;
    if (startColour == endColour) {
        SolidLine(target, left, y, right + 1, y, startColour);
        return;
    }
    if (const GradientFillFunction fill = source())
        FillRow(fill, target, left, right, y, startColour, endColour);
    else
        SetPixelsOfRow(target, left, right, y, startColour, endColour);
}
