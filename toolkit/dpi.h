#pragma once

#include "foundation/windows_lean.h"

#include <atomic>
#include <cstdint>

// The screen's pixels per logical inch across; -1 until it has been read. It
// is read once in a process; a reading that fails is tried again.
extern std::atomic<int32_t> logPixelsX;

// A size of 96 to the inch in pixels, cut off toward zero. On any thread.
int32_t ScaleToDpi(int32_t value);
// The same by the screen's pixels per logical inch down, which are read each
// time: for the pages' own texts.
int32_t ScaleToLines(int32_t value);

// Dialog units in pixels by the font of `dialog`. What is no dialog leaves the
// value as it is.
int32_t DialogUnitsX(int32_t value, HWND dialog);
int32_t DialogUnitsY(int32_t value, HWND dialog);
