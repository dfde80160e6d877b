#include "toolkit/text_element.h"

#include "toolkit/fit_text.h"

namespace {
constexpr int DefaultFontSize = 13;
}

bool SelectFontOf(const NDrawList::Text& element, HDC dc, NFont& font) {
    NString face = element.fontFace; // ToNarrow writes it
    const int size = element.fontSize ? element.fontSize : DefaultFontSize;
    if (!font.Create(dc, face.ToNarrow(), size, element.colour, 0, element.bold, element.italic,
                     element.underline))
        return false;
    font.Select(dc);
    return font.selected;
}

SIZE SizeOfText(const NDrawList::Text& element, NFont& font, const NString& text) {
    // Tabs are measured from the offset alone, wherever it counts from. This
    // is wanted.
    const int tabOffset = static_cast<int>(element.x & OffsetBits);
    return {font.TextWidth(text, true, tabOffset), font.TextHeight(text, true)};
}

NString FittedText(const NDrawList::Text& element, NFont& font) {
    NString text = element.text;
    if (element.maxWidth)
        FitText(font, element.maxWidth, text);
    return text;
}
