#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"
#include "toolkit/nicon.h"

#include <cstdint>

inline constexpr COLORREF TipItemColour = static_cast<COLORREF>(-1); // stands for DefaultTipColour
inline constexpr COLORREF DefaultTipColour = 0xFF0000;
inline constexpr int32_t DefaultTipFontSize = 14;

// A part of a tip that can be clicked, drawn over the tip's scene: an
// underlined text, or an icon. Places and sizes are pixels.
struct NToolTipItem {
    int32_t x = 0; // in the tip
    int32_t y = 0;
    NString text; // empty makes it an icon
    // Runs on the thread of the tips, with their lock held. It must not set or
    // clear a tip, nor wait for an owner that does: it posts its message then.
    // Null closes the tip.
    void (*onClick)(void* clickValue, NToolTipItem* item) = nullptr;
    void* clickValue = nullptr;
    COLORREF colour = TipItemColour;
    NString fontFace; // empty for that of NFont
    bool bold = false;
    int32_t fontSize = 0; // 0 stands for DefaultTipFontSize
    NIcon iconNormal;
    NIcon iconHover;
    NIcon iconDown;
    int32_t iconState = 0; // TipIconNormal, TipIconHover or TipIconDown
    bool pressed = false;

    bool IsIcon() const { return text.IsEmpty(); }
};

inline constexpr int32_t TipIconNormal = 0;
inline constexpr int32_t TipIconHover = 1;
inline constexpr int32_t TipIconDown = 2;

// Replaces the items of `to` by copies, with their defaults filled in.
void CopyTipItems(NKeyedList<NToolTipItem>& to, const NKeyedList<NToolTipItem>& from);
// The right-most and the lowest point that an item reaches; (0, 0) for none.
SIZE ReachOfTipItems(const NKeyedList<NToolTipItem>& items);
// Whether the point lies in the item's box, all edges included. A text is
// measured as one line, however it is drawn.
bool TipItemIsHit(const NToolTipItem& item, POINT point);
void DrawTipItem(NToolTipItem& item, HDC dc);
