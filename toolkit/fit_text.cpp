#include "toolkit/fit_text.h"

namespace {
constexpr wchar_t Ellipsis[] = L"...";
}

bool FitText(NFont& font, int maxWidth, NString& text) {
    if (text.IsEmpty())
        return false;
    bool cut = false;
    for (;;) {
        NString shown = text;
        if (cut)
            shown.Append(Ellipsis);
        if (font.TextWidth(shown) < maxWidth)
            break;
        text.RemoveAt(NEnd);
        cut = true;
        if (text.IsEmpty())
            return true;
    }
    if (cut)
        text.Append(Ellipsis);
    return cut;
}
