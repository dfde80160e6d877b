#pragma once

#include "foundation/windows_lean.h"

#include <map>
#include <string>
#include <vector>

// What this program's own code has asked of the platform. A program that uses
// it is linked with --wrap for these functions.

// The timers that were set on a window, with their periods in milliseconds.
std::map<UINT_PTR, UINT> TimersSetOn(HWND window);

// The cursors that were shown since the last call, in turn.
std::vector<HCURSOR> TakeShownCursors();

// The texts that were drawn since the last call, in turn.
std::vector<std::wstring> TakeDrawnTexts();
