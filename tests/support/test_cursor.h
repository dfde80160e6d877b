#pragma once

#include "foundation/windows_lean.h"

// Puts the cursor where the test wants it, for all code of the program that
// asks where it is, on any thread; the real one stays where it is. Without a
// TestCursor the real one counts. A program that uses it is linked with
// --wrap=__imp_GetCursorPos.
class TestCursor {
public:
    TestCursor() { MoveTo(0, 0); }
    ~TestCursor();
    TestCursor(const TestCursor&) = delete;
    TestCursor& operator=(const TestCursor&) = delete;

    // In pixels of the screen, and of a window's client area.
    static void MoveTo(int x, int y);
    static void MoveTo(HWND window, int x, int y);
    // Until the next MoveTo the cursor can't be asked.
    static void Hide();
};
