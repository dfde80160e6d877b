#include "toolkit/dpi.h"

#include "toolkit/device_contexts.h"

namespace {
constexpr int32_t NotReadYet = -1;
constexpr int64_t UsualDpi = 96;
} // namespace

constinit std::atomic<int32_t> logPixelsX = NotReadYet;

int32_t ScaleToDpi(int32_t value) {
    int32_t pixels = logPixelsX;
    if (pixels == NotReadYet) {
        pixels = GetDeviceCaps(NWindowDC().dc, LOGPIXELSX);
        logPixelsX = pixels;
    }
    return static_cast<int32_t>(int64_t{value} * pixels / UsualDpi);
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
