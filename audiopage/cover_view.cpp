#include "audiopage/cover_view.h"

#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "toolkit/dpi.h"
#include "toolkit/ncanvas.h"
#include "toolkit/nicon.h"

namespace {
// Dialog units.
constexpr int CoverX = 7;
constexpr int CoverY = 7;
constexpr int ArrowsY = 8;
constexpr int ClickX = 8; // one more than where the arrows are painted: wanted

// Pixels before the cover's right edge.
constexpr int LeftArrow = 20;
constexpr int RightArrow = 10;

constexpr int IconSize = 16;
constexpr int ClickHeight = 10; // pixels

void PaintArrow(int icon, HDC dc, int x, int y) {
    NIcon arrow;
    arrow.Load(icon, IconSize, IconSize, NModuleInstance());
    arrow.Draw(dc, x, y);
}

bool IsBetween(int value, int first, int last) {
    return value >= first && value <= last;
}
} // namespace

void PaintCover(NKeyedList<NCanvas>& covers, int32_t shown, HDC dc, HWND page) {
    const NCanvas* cover = covers[shown];
    if (!cover)
        return;
    // 1.
    const int left = DialogUnitsX(CoverX, page);
    cover->Blit(dc, left, DialogUnitsY(CoverY, page));
    // 2. and 3.
    const int right = left + cover->Width();
    const int top = DialogUnitsY(ArrowsY, page);
    if (shown != 0)
        PaintArrow(IDI_ARROW_LEFT, dc, right - LeftArrow, top);
    if (shown < covers.Count() - 1)
        PaintArrow(IDI_ARROW_RIGHT, dc, right - RightArrow, top);
}

// The view isn't looked at: in that of all files a click steps unseen. That is
// wanted.
void ClickCover(NKeyedList<NCanvas>& covers, int32_t& shown, POINT point, HWND page) {
    if (covers.Count() == 0)
        return;
    const int top = DialogUnitsY(ArrowsY, page);
    if (!IsBetween(point.y, top, top + ClickHeight))
        return;
    const int right = DialogUnitsX(ClickX, page) + covers[0]->Width();
    // 1.
    if (IsBetween(point.x, right - LeftArrow, right - RightArrow) && shown != 0) {
        --shown;
        InvalidateRect(page, nullptr, TRUE);
    }
    // 2. A click on the edge that the two share goes back and then on again:
    // wanted.
    if (IsBetween(point.x, right - RightArrow, right) && shown < covers.Count() - 1) {
        ++shown;
        InvalidateRect(page, nullptr, TRUE);
    }
}
