#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// The text of a window of this thread; empty if there is none.
NString TextOfWindow(HWND window);
// The text of one of a combo box's entries; empty out of range.
NString TextOfEntry(HWND combo, int entry);
