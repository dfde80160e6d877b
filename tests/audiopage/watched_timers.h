#pragma once

#include "foundation/windows_lean.h"

#include <map>

// The timers that this program's own code has set on a window, with their
// periods in milliseconds. A program that uses it is linked with
// --wrap=__imp_SetTimer.
std::map<UINT_PTR, UINT> TimersSetOn(HWND window);
