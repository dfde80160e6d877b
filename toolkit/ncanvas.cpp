#include "toolkit/ncanvas.h"

bool NCanvas::Select(HDC target, bool ownDC) {
    Deselect();
    if (!handle)
        return false;
    dc = ownDC ? CreateCompatibleDC(target) : target;
    ownsDC = ownDC;
    previous = SelectObject(dc, handle);
    if (!previous)
        Deselect();
    return previous != nullptr;
}

void NCanvas::Deselect() {
    if (previous)
        SelectObject(dc, previous);
    if (dc && ownsDC)
        DeleteDC(dc);
    previous = nullptr;
    dc = nullptr;
    ownsDC = false;
}

void NCanvas::Release() {
    Deselect();
    NBitmap::Release();
}

bool NCanvas::Blit(HDC target, int x, int y, int width, int height, int sourceX, int sourceY,
                   DWORD rop) const {
    constexpr int WholeBitmap = -1;
    if (!dc || !target || !handle)
        return false;
    return BitBlt(target, x, y, width == WholeBitmap ? Width() : width,
                  height == WholeBitmap ? Height() : height, dc, sourceX, sourceY, rop);
}

bool NCanvas::Fill(HBRUSH brush) {
    if (!dc)
        return false;
    const RECT all = {0, 0, Width(), Height()};
    return FillRect(dc, &all, brush);
}

bool NCanvas::Resize(HDC target, int width, int height, bool ownDC) {
    Release();
    return CreateCompatible(target, width, height) && Select(target, ownDC);
}

bool NCanvas::LoadResource(HDC target, int id, HINSTANCE module, bool mapColours, bool ownDC) {
    Release();
    return NBitmap::LoadResource(id, module, mapColours) && Select(target, ownDC);
}

bool NCanvas::LoadCopy(HBITMAP other) {
    // No release before it, for a copy of itself.
    Deselect();
    return CopyFrom(other) && Select(nullptr, true);
}

bool NCanvas::LoadMemory(const void* data, uint32_t size, bool transparent) {
    Release();
    bool loaded = NBitmap::LoadMemory(data, size, transparent);
    // Also the bitmap that a failure may leave behind.
    return Select(nullptr, true) && loaded;
}
