#include "toolkit/fit_text.h"

#include "toolkit/gdi_owners.h"

#include <climits>

namespace {
constexpr wchar_t Ellipsis[] = L"...";

// Takes off what is beyond twice the width, by one measuring of the whole
// text: cutting long texts one by one would measure each rest of them. Twice,
// since letters that join are not as wide at an end as they are inside. False
// if nothing is beyond it.
bool CutCoarsely(const NFont& font, int maxWidth, NString& text) {
    if (!font.dc || !font.handle)
        return false;
    constexpr int WidthsFarEnough = 2;
    if (maxWidth > INT_MAX / WidthsFarEnough)
        return false;
    ScopedSelection selected(font.dc, font.handle);
    int fitting = 0;
    SIZE whole = {};
    if (!GetTextExtentExPointW(font.dc, text.Text, text.CharCount(), WidthsFarEnough * maxWidth,
                               &fitting, nullptr, &whole) ||
        fitting >= text.CharCount())
        return false;
    text.RemoveRight(text.CharCount() - fitting);
    return true;
}
} // namespace

bool FitText(NFont& font, int maxWidth, NString& text) {
    if (text.IsEmpty())
        return false;
    if (maxWidth <= 0) { // no text is narrower
        text = L"";
        return true;
    }
    // Most texts fit, and are measured once.
    if (font.TextWidth(text) < maxWidth)
        return false;
    if (!CutCoarsely(font, maxWidth, text))
        text.RemoveAt(NEnd);
    while (!text.IsEmpty()) {
        NString shown = text;
        shown.Append(Ellipsis);
        if (font.TextWidth(shown) < maxWidth) {
            text = shown;
            break;
        }
        text.RemoveAt(NEnd);
    }
    return true;
}
