#include "toolkit/npen.h"

#include <cstddef>

static_assert(offsetof(NPen, previous) == 0);
static_assert(offsetof(NPen, dc) == 8);
static_assert(offsetof(NPen, handle) == 16);

void NPen::Release() {
    if (dc && previous)
        SelectObject(dc, previous);
    previous = nullptr;
    dc = nullptr;
    if (handle)
        DeleteObject(handle);
    handle = nullptr;
}

bool NPen::Create(COLORREF colour, HDC target, int width, int style) {
    Release();
    handle = CreatePen(style, width, colour);
    if (target && handle) {
        dc = target;
        previous = SelectObject(target, handle);
    }
    return handle != nullptr;
}
