#include "audiopage/audio_prop_page.h"
#include "audiopage/cover_view.h"
#include "audiopage/page_text.h"
#include "audiopage/row_painting.h"
#include "toolkit/device_contexts.h"
#include "toolkit/dpi.h"

namespace {
// Dialog units.
constexpr POINT ReadingPlace = {117, 100}; // the middle of the text's upper edge
constexpr POINT ViewingPlace = {101, 239};
constexpr POINT NamePlace = {175, 239};

constexpr int ReadingHeight = 25;
constexpr COLORREF NameColour = 0xFF0000;

void DrawAt(NFont& font, POINT place, const NString& text, HWND page) {
    font.DrawText(DialogUnitsX(place.x, page), DialogUnitsY(place.y, page), text);
}

NString ViewingFileText(int32_t index, int32_t count) {
    NString text(L"Viewing File ");
    text.Append(NString::FromInt(int64_t{index} + 1));
    text.Append(L" of ");
    text.Append(NString::FromInt(count));
    return text;
}

// The blank at its end is wanted.
NString ViewingFilesText(int32_t count) {
    NString text(L"Viewing ");
    text.Append(NString::FromInt(count));
    text.Append(L" Files ");
    return text;
}
} // namespace

void clAudioPropPage::OnPaint() {
    const NPaintDC painted(Hwnd);
    // 1.
    if (IsReading())
        PaintReading(painted.dc);
    else
        PaintView(painted.dc);
}

void clAudioPropPage::PaintReading(HDC dc) {
    const NString text(L"<reading files>");
    NFont font;
    SelectPageFont(font, dc, ReadingHeight, PageTextColour, true);
    const int x = DialogUnitsX(ReadingPlace.x, Hwnd) - font.TextWidth(text) / 2;
    font.DrawText(x, DialogUnitsY(ReadingPlace.y, Hwnd), text);
}

void clAudioPropPage::PaintView(HDC dc) {
    // 2. One file is painted from `PageRowsOne` in either view: wanted.
    const bool one = ShowsOneFile();
    PaintPropRows(one ? PageRowsOne : PageRowsAll, dc, Hwnd, StarBitmap);
    if (one)
        PaintCover(AlbumArtList, ArtIndex, dc, Hwnd);
    NFont font;
    SelectPageFont(font, dc);
    if (Count > 1)
        DrawAt(font, ViewingPlace,
               one ? ViewingFileText(FileIndex, Count) : ViewingFilesText(Count), Hwnd);
    // 3.
    font.SetColour(NameColour);
    DrawAt(font, NamePlace, L"Tonewright", Hwnd);
}
