#include "audiopage/row_painting.h"

#include "audiopage/page_text.h"
#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "toolkit/dpi.h"
#include "toolkit/fit_text.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nicon.h"

#include <cstdlib>

namespace {
constexpr COLORREF LabelColour = 0x646464;

constexpr wchar_t Dots[] = L"...";
constexpr int DotsLength = 3;
constexpr int IconSize = 16;
constexpr int IconGap = 2; // pixels behind the text

// The rows of the page are labelled without a colon, so that their rating is
// painted as a plain text. That is wanted, and so is this test.
constexpr wchar_t StarredLabel[] = L"Rating:";
constexpr int HalfStars = 10; // the best rating

constexpr COLORREF NotRatedColour = 0xA0A0A0;
constexpr int NotRatedHeight = 12; // pixels, on any screen
constexpr int NotRatedX = 40;      // of the text's middle
constexpr int NotRatedY = 2;

class RowPainter {
public:
    RowPainter(HDC dc, HWND page, const NCanvas& stars) : dc_(dc), page_(page), stars_(stars) {
        SelectPageFont(font_, dc);
    }

    void Paint(const clPropRow& row);

private:
    void PaintLabel(const clPropRow& row);
    bool PaintRating(const NString& value);
    void PaintStars(int64_t rating);
    void PaintNotRated();
    void PaintValue(const NString& value, int width);
    void PaintCutMark(int x);

    HDC dc_;
    HWND page_;
    const NCanvas& stars_;
    NFont font_;
    POINT place_ = {}; // of the present row's value
};

void RowPainter::Paint(const clPropRow& row) {
    // 1. and 2.
    PaintLabel(row);
    // 3.
    place_ = {DialogUnitsX(row.ValueX, page_), DialogUnitsY(row.Y, page_)};
    if (row.Label == StarredLabel && PaintRating(row.Value))
        return;
    // 4. to 7.
    PaintValue(row.Value, DialogUnitsX(row.ValueWidth, page_));
}

void RowPainter::PaintLabel(const clPropRow& row) {
    int x = DialogUnitsX(std::abs(row.LabelX), page_);
    if (row.LabelX < 0)
        x -= font_.TextWidth(row.Label);
    font_.SetColour(LabelColour);
    font_.DrawText(x, DialogUnitsY(row.Y, page_), row.Label);
    font_.SetColour(PageTextColour);
}

// True if the row is done.
bool RowPainter::PaintRating(const NString& value) {
    // 1.
    const int64_t rating = value.ToInt();
    // 2.
    if (rating != 0)
        PaintStars(rating);
    // 3. A text that is no number, or 0, shows nothing: wanted.
    if (!value.IsEmpty())
        return true;
    // 4.
    PaintNotRated();
    return false;
}

void RowPainter::PaintStars(int64_t rating) {
    const int half = stars_.Width() / 2;
    const int quarter = half / 2;
    int x = place_.x;
    for (int number = 1; number <= HalfStars; ++number, x += quarter) {
        const int star = rating < number ? half : 0;
        const int side = number % 2 == 0 ? quarter : 0;
        stars_.Blit(dc_, x, place_.y, quarter, stars_.Height(), star + side, 0);
    }
}

void RowPainter::PaintNotRated() {
    const NString text(L"Not Rated");
    NFont font;
    font.Create(dc_, nullptr, NotRatedHeight, NotRatedColour);
    font.Select(dc_);
    font.DrawText(place_.x - font.TextWidth(text) / 2 + NotRatedX, place_.y + NotRatedY, text);
}

void RowPainter::PaintValue(const NString& value, int width) {
    // 4.
    NStringList lines;
    lines.SplitLines(value.Text);
    if (lines.Count == 0)
        return;
    // 5.
    NString text = *lines[0];
    if (lines.Count > 1)
        text.Append(Dots);
    FitText(font_, width, text);
    // 6. Dots that are the value's own end it too: wanted.
    if (text.Right(DotsLength) == Dots) {
        text.RemoveRight(DotsLength);
        PaintCutMark(place_.x + font_.TextWidth(text) + IconGap);
    }
    // 7.
    font_.DrawText(place_.x, place_.y, text);
}

void RowPainter::PaintCutMark(int x) {
    NIcon mark;
    mark.Load(IDI_CUT_VALUE, IconSize, IconSize, NModuleInstance());
    mark.Draw(dc_, x, place_.y);
}
} // namespace

void PaintPropRows(NKeyedList<clPropRow>& rows, HDC dc, HWND page, const NCanvas& stars) {
    RowPainter painter(dc, page, stars);
    for (int index = 0; index < rows.Count(); ++index)
        painter.Paint(*rows[index]);
}

bool IsValueCut(NFont& font, const NString& value, int width) {
    NStringList lines;
    lines.SplitLines(value.Text);
    if (lines.Count > 1)
        return true;
    if (lines.Count == 0)
        return false;
    NString text = *lines[0];
    return FitText(font, width, text);
}
