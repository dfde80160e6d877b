#include "toolkit/nbrush.h"

#include <cstddef>

static_assert(offsetof(NBrush, previous) == 0);
static_assert(offsetof(NBrush, dc) == 8);
static_assert(offsetof(NBrush, isStock) == 16);
static_assert(offsetof(NBrush, handle) == 24);

void NBrush::Release() {
    if (dc && previous)
        SelectObject(dc, previous);
    previous = nullptr;
    dc = nullptr;
    if (handle && !isStock)
        DeleteObject(handle);
    handle = nullptr;
    isStock = 0;
}

bool NBrush::Stock(int colourIndex, HDC target) {
    Release();
    handle = GetSysColorBrush(colourIndex);
    isStock = 1;
    SelectInto(target);
    return handle != nullptr;
}

bool NBrush::Solid(COLORREF colour, HDC target, UINT style, ULONG_PTR hatch) {
    Release();
    const LOGBRUSH form = {style, colour, hatch};
    handle = CreateBrushIndirect(&form);
    SelectInto(target);
    return handle != nullptr;
}

void NBrush::SelectInto(HDC target) {
    if (!target || !handle)
        return;
    dc = target;
    previous = SelectObject(target, handle);
}
