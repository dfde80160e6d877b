#pragma once

#include "toolkit/nfont.h"

// The writing of the Audio Properties page, in the toolkit's usual face.

// Of all texts but one, in pixels of a screen with 96 to the inch.
inline constexpr int PageTextHeight = 13;

inline constexpr COLORREF PageTextColour = 0x000000;

// Makes the font at `height`, scaled to the screen's pixels per inch and cut
// off, and selects it into `dc`, which must outlive it.
void SelectPageFont(NFont& font, HDC dc, int height = PageTextHeight,
                    COLORREF colour = PageTextColour, bool italic = false);
