#include "audiopage/page_text.h"

#include "toolkit/dpi.h"

void SelectPageFont(NFont& font, HDC dc, int height, COLORREF colour, bool italic) {
    font.Create(dc, nullptr, ScaleToLines(height), colour, 0, false, italic);
    font.Select(dc);
}
