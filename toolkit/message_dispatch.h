#pragma once

#include "foundation/windows_lean.h"

class NWindow;

struct WindowMessage {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

// Brings a message of the object's window to its virtual operations, and gives
// it default processing if they leave it. Returns what the window procedure or
// the dialog procedure is to return; 0 for an unbound object. On the window's
// thread.
LRESULT DispatchToObject(NWindow& object, const WindowMessage& message);
