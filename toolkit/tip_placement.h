#pragma once

#include "foundation/windows_lean.h"

#include <cstdint>

inline constexpr int32_t TipFlat = 512;   // state of a wide tip's scene
inline constexpr int32_t TipShaded = 256; // and of a narrow one's

// Pixels of a tip's window that its scene doesn't reach.
struct TipMargins {
    int32_t across;
    int32_t down;
};
constexpr TipMargins MarginsOfTip(int32_t mode) {
    return mode == 1 ? TipMargins{8, 10} : TipMargins{2, 4};
}

constexpr uint32_t TipStateOfWidth(int32_t width) {
    constexpr int32_t WidestShaded = 130;
    return width > WidestShaded ? TipFlat : TipShaded;
}

// What a tip describes, in screen coordinates.
struct TipAnchor {
    int32_t top = 0;
    int32_t bottom = 0;
    int32_t x = 0;      // the tip's left edge
    bool fixed = false; // the place is told, and doesn't follow the cursor
};

constexpr TipAnchor FixedTipAnchor(int32_t x, int32_t y) {
    return {y, y + 1, x, true};
}

// The top left of a tip of this size, on a screen whose right edge is
// `screenRight`: above its anchor, or under it where there is no room above,
// at the cursor's height within 50 pixels. A tip that is too far to the right
// moves left, and may leave the screen there.
POINT PlaceTip(SIZE tip, const TipAnchor& anchor, POINT cursor, int32_t screenRight);
