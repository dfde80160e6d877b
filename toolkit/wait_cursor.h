#pragma once

#include "foundation/windows_lean.h"

// Shows the wait cursor, and the arrow at the end of the scope.
class WaitCursor {
public:
    WaitCursor() { SetCursor(LoadCursorW(nullptr, IDC_WAIT)); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { SetCursor(LoadCursorW(nullptr, IDC_ARROW)); }
};
