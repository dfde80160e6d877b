#include "toolkit/dpi.h"

#include "toolkit/device_contexts.h"

namespace {
constexpr int32_t NotReadYet = -1;
constexpr int32_t UsualDpi = 96;

// Reads the screen's, and keeps it. Where it can't be read it is the usual one,
// for this once.
int32_t ReadLogPixelsX() {
    const int pixels = GetDeviceCaps(NWindowDC().dc, LOGPIXELSX);
    if (pixels <= 0)
        return UsualDpi;
    logPixelsX = pixels;
    return pixels;
}
} // namespace

constinit std::atomic<int32_t> logPixelsX = NotReadYet;

int32_t ScaleToDpi(int32_t value) {
    int32_t pixels = logPixelsX;
    if (pixels == NotReadYet)
        pixels = ReadLogPixelsX();
    return static_cast<int32_t>(int64_t{value} * pixels / UsualDpi);
}

int32_t ScaleToLines(int32_t value) {
    return value * GetDeviceCaps(NWindowDC().dc, LOGPIXELSY) / UsualDpi;
}

int32_t DialogUnitsX(int32_t value, HWND dialog) {
    RECT rect = {value, 1, 1, 1};
    MapDialogRect(dialog, &rect);
    return rect.left;
}

int32_t DialogUnitsY(int32_t value, HWND dialog) {
    RECT rect = {1, value, 1, 1};
    MapDialogRect(dialog, &rect);
    return rect.top;
}
