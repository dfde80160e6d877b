#pragma once

#include "foundation/windows_lean.h"

// Owner of the device context of a window, or of the screen for null. Released
// on the thread that made it.
class NWindowDC {
public:
    explicit NWindowDC(HWND owner = nullptr) : window(owner), dc(GetDC(owner)) {}
    NWindowDC(const NWindowDC&) = delete;
    NWindowDC& operator=(const NWindowDC&) = delete;
    ~NWindowDC() { Release(); }

    // `dc` is null after it. May be called again.
    void Release();

    HWND window;
    HDC dc;
};

// Owner of a memory device context that fits `source`, or the screen for null.
class NMemoryDC {
public:
    explicit NMemoryDC(HDC source = nullptr) : dc(CreateCompatibleDC(source)) {}
    NMemoryDC(const NMemoryDC&) = delete;
    NMemoryDC& operator=(const NMemoryDC&) = delete;
    ~NMemoryDC() { Release(); }

    // `dc` is null after it. May be called again.
    void Release();

    HDC dc;
};

// Owner of the device context that a window's WM_PAINT draws on.
class NPaintDC {
public:
    explicit NPaintDC(HWND painted) : window(painted), dc(BeginPaint(painted, &paint)) {}
    NPaintDC(const NPaintDC&) = delete;
    NPaintDC& operator=(const NPaintDC&) = delete;
    ~NPaintDC() { EndPaint(window, &paint); }

    HWND window;
    PAINTSTRUCT paint = {};
    HDC dc; // from `paint`, so behind it
};
