#include "toolkit/nfont.h"

#include "foundation/nlists.h"
#include "toolkit/gdi_owners.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <vector>

static_assert(offsetof(NFont, selected) == 0);
static_assert(offsetof(NFont, dc) == 8);
static_assert(offsetof(NFont, previousFont) == 16);
static_assert(offsetof(NFont, previousColour) == 24);
static_assert(offsetof(NFont, previousBkMode) == 28);
static_assert(offsetof(NFont, transparent) == 32);
static_assert(offsetof(NFont, handle) == 40);
static_assert(offsetof(NFont, logFont) == 48);
static_assert(offsetof(NFont, textColour) == 48 + sizeof(LOGFONTW));
static_assert(offsetof(NFont, lineGap) == 48 + sizeof(LOGFONTW) + 4);

namespace {
constexpr wchar_t DefaultFace[] = L"Tahoma";
constexpr wchar_t LineOfFullHeight[] = L"Ay";
constexpr wchar_t AverageText[] = L"abcdefABCDEF";
constexpr int CharsPerTab = 8;
constexpr int SpareTabs = 10;
constexpr int FurthestLeft = -0xFFFF; // what is further away, no extent tells

// One item, or one for each line.
void SplitText(const NString& text, bool multiLine, NStringList& lines) {
    if (multiLine)
        lines.SplitLines(text.Text);
    else
        lines.Add(text);
}

SIZE Extent(HDC dc, const NString& text) {
    SIZE extent = {};
    GetTextExtentPoint32W(dc, text.Text, text.CharCount(), &extent);
    return extent;
}

int DesktopWidth() {
    RECT client = {};
    GetClientRect(GetDesktopWindow(), &client);
    return client.right;
}

// In pixels from the start of a text that begins at `tabOffset`.
std::vector<int> TabStops(HDC dc, int tabOffset) {
    // 1.
    const int charCount = static_cast<int>(wcslen(AverageText));
    const int average = std::max(1, static_cast<int>(Extent(dc, AverageText).cx) / charCount);
    // 2.
    std::vector<int> stops(static_cast<size_t>(DesktopWidth() / average + SpareTabs));
    // 3. Down to the interval itself, not to 0: the first stop may stand at 0.
    const int interval = CharsPerTab * average;
    int offset = std::max(tabOffset, FurthestLeft);
    if (offset > interval)
        offset = (offset - 1) % interval + 1;
    // 4.
    int stop = interval - offset;
    for (int& position : stops) {
        position = stop;
        stop += interval;
    }
    return stops;
}

int TabbedWidth(HDC dc, const NString& line, const std::vector<int>& stops) {
    DWORD extent = GetTabbedTextExtentW(dc, line.Text, line.CharCount(),
                                        static_cast<int>(stops.size()), stops.data());
    return LOWORD(extent);
}

int LineHeight(HDC dc) {
    return Extent(dc, LineOfFullHeight).cy;
}

// The font for what is measured; a selection costs as much as a measuring, so
// that a font which is there already isn't selected again.
class MeasuringSelection {
public:
    MeasuringSelection(HDC dc, HGDIOBJ font) {
        if (GetCurrentObject(dc, OBJ_FONT) != font)
            selection_.emplace(dc, font);
    }

private:
    std::optional<ScopedSelection> selection_;
};
} // namespace

void NFont::Release() {
    Deselect();
    if (handle)
        DeleteObject(handle);
    handle = nullptr;
    dc = nullptr;
}

bool NFont::Create(HDC target, const char* face, int height, COLORREF colour, int width, bool bold,
                   bool italic, bool underline, bool isTransparent, int escapement, int gap) {
    Release();
    logFont = {};
    logFont.lfHeight = height;
    logFont.lfWidth = width;
    logFont.lfEscapement = escapement;
    logFont.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    logFont.lfItalic = italic;
    logFont.lfUnderline = underline;
    const bool isFace = face && *face && strlen(face) < LF_FACESIZE;
    const NString name = isFace ? NString(face) : NString(DefaultFace);
    name.CopyToWide(logFont.lfFaceName);
    dc = target;
    transparent = isTransparent;
    textColour = colour;
    lineGap = gap;
    handle = CreateFontIndirectW(&logFont);
    return handle != nullptr;
}

void NFont::Select(HDC target) {
    Deselect();
    dc = target;
    if (!dc || !handle)
        return;
    previousFont = SelectObject(dc, handle);
    previousColour = SetTextColor(dc, textColour);
    previousBkMode = SetBkMode(dc, transparent ? TRANSPARENT : OPAQUE);
    selected = true;
}

void NFont::Deselect() {
    if (!selected)
        return;
    SelectObject(dc, previousFont);
    SetTextColor(dc, previousColour);
    SetBkMode(dc, previousBkMode);
    previousFont = nullptr;
    selected = false;
}

void NFont::SetColour(COLORREF colour) {
    textColour = colour;
    if (!selected)
        return;
    // A selection costs much more than a colour.
    if (GetCurrentObject(dc, OBJ_FONT) == handle &&
        GetBkMode(dc) == (transparent ? TRANSPARENT : OPAQUE))
        SetTextColor(dc, colour);
    else
        Select(dc);
}

int NFont::TextWidth(const NString& text, bool multiLine, int tabOffset) {
    return TextWidth(dc, text, multiLine, tabOffset);
}

int NFont::TextWidth(HDC target, const NString& text, bool multiLine, int tabOffset) {
    if (!target || !handle)
        return 0;
    const MeasuringSelection font(target, handle);
    if (!multiLine)
        return Extent(target, text).cx;
    std::vector<int> stops;
    if (tabOffset != 0)
        stops = TabStops(target, tabOffset);
    NStringList lines;
    SplitText(text, true, lines);
    int widest = 0;
    for (int i = 0; i < lines.Count; ++i)
        widest = std::max(widest, TabbedWidth(target, *lines[i], stops));
    return widest;
}

int NFont::TextHeight(const NString& text, bool multiLine) {
    return TextHeight(dc, text, multiLine);
}

int NFont::TextHeight(HDC target, const NString& text, bool multiLine) {
    if (!target || !handle)
        return 0;
    NStringList lines;
    SplitText(text, multiLine, lines);
    if (lines.Count == 0)
        return 0;
    const MeasuringSelection font(target, handle);
    return lines.Count * LineHeight(target) + (lines.Count - 1) * lineGap;
}

void NFont::DrawText(int x, int y, const NString& text, const RECT* clip, bool multiLine) {
    if (!dc || !handle)
        return;
    const bool wasSelected = selected;
    if (!wasSelected)
        Select(dc);
    if (multiLine)
        DrawLines(x, y, text);
    else
        DrawLine(x, y, text, clip);
    if (!wasSelected)
        Deselect();
}

void NFont::DrawLine(int x, int y, const NString& text, const RECT* clip) {
    const UINT flags = (transparent ? 0 : ETO_OPAQUE) | (clip ? ETO_CLIPPED : 0);
    ExtTextOutW(dc, x, y, flags, clip, text.Text, static_cast<UINT>(text.CharCount()), nullptr);
}

void NFont::DrawLines(int x, int y, const NString& text) {
    NStringList lines;
    SplitText(text, true, lines);
    const int step = LineHeight(dc) + lineGap;
    for (int i = 0; i < lines.Count; ++i) {
        // Tabs count from the left edge, as TextWidth takes them.
        TabbedTextOutW(dc, x, y, lines[i]->Text, lines[i]->CharCount(), 0, nullptr, 0);
        y += step;
    }
}
