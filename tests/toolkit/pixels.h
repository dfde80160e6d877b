#pragma once

#include "toolkit/device_contexts.h"
#include "toolkit/gdi_owners.h"

// The colour of one pixel; CLR_INVALID outside the bitmap, and for one that
// is selected elsewhere.
inline COLORREF PixelOf(HBITMAP bitmap, int x, int y) {
    NMemoryDC dc;
    ScopedSelection selected(dc.dc, bitmap);
    return selected ? GetPixel(dc.dc, x, y) : CLR_INVALID;
}

inline void SetPixelOf(HBITMAP bitmap, int x, int y, COLORREF colour) {
    NMemoryDC dc;
    ScopedSelection selected(dc.dc, bitmap);
    SetPixelV(dc.dc, x, y, colour);
}

// A screen-compatible bitmap, all of one colour, to draw on.
class TestSurface {
public:
    TestSurface(int width, int height, COLORREF colour)
        : bitmap_(CreateCompatibleBitmap(NWindowDC().dc, width, height)),
          selected_(memory_.dc, bitmap_.Get()), width_(width), height_(height) {
        Clear(colour);
    }

    HDC Dc() const { return memory_.dc; }
    COLORREF At(int x, int y) const { return GetPixel(memory_.dc, x, y); }

    void Clear(COLORREF colour) {
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x)
                SetPixelV(memory_.dc, x, y, colour);
    }

    // The smallest rectangle that holds all pixels not of `colour`; empty if
    // there are none.
    RECT Ink(COLORREF colour) const {
        RECT ink = {width_, height_, 0, 0};
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x)
                if (At(x, y) != colour)
                    ink = {ink.left < x ? ink.left : x, ink.top < y ? ink.top : y,
                           ink.right > x ? ink.right : x + 1, ink.bottom > y ? ink.bottom : y + 1};
        return ink.right ? ink : RECT{};
    }

private:
    NMemoryDC memory_;
    UniqueBitmap bitmap_;
    ScopedSelection selected_;
    int width_;
    int height_;
};
