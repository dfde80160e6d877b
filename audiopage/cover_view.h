#pragma once

#include "foundation/nlists.h"
#include "foundation/windows_lean.h"

#include <cstdint>

class NCanvas;

// The cover on the page, and the arrows to step through several. `page` is the
// dialog, by whose font places in dialog units are measured.

// Paints the framed picture at `shown` and the arrows that lead on from it;
// nothing if there is no such picture.
void PaintCover(NKeyedList<NCanvas>& covers, int32_t shown, HDC dc, HWND page);

// Takes a click at `point` (client coordinates), steps `shown` if it met an
// arrow, and has the page painted anew.
void ClickCover(NKeyedList<NCanvas>& covers, int32_t& shown, POINT point, HWND page);
