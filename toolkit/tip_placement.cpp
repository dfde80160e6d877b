#include "toolkit/tip_placement.h"

namespace {
constexpr int32_t GapAbove = 2;
constexpr int32_t FarthestFromCursor = 50;
} // namespace

POINT PlaceTip(SIZE tip, const TipAnchor& anchor, POINT cursor, int32_t screenRight) {
    POINT place = {anchor.x, anchor.top - tip.cy - GapAbove};
    const LONG aboveCursor = cursor.y - tip.cy;
    if (!anchor.fixed && aboveCursor - place.y > FarthestFromCursor)
        place.y = aboveCursor - FarthestFromCursor;
    if (place.y < 0) {
        // Wanted: here a fixed place follows the cursor too.
        place.y = anchor.bottom + 1;
        if (place.y - cursor.y > FarthestFromCursor)
            place.y = cursor.y + FarthestFromCursor;
    }
    // Wanted: there is no test on the left.
    if (place.x + tip.cx > screenRight)
        place.x = screenRight - tip.cx;
    return place;
}
