#include "audiopage/page_text.h"

#include "toolkit/device_contexts.h"

namespace {
constexpr int UsualDpi = 96;
}

void SelectPageFont(NFont& font, HDC dc, int height, COLORREF colour, bool italic) {
    const int scaled = height * GetDeviceCaps(NWindowDC().dc, LOGPIXELSY) / UsualDpi;
    font.Create(dc, nullptr, scaled, colour, 0, false, italic);
    font.Select(dc);
}
