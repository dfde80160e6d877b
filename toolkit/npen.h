#pragma once

#include "foundation/windows_lean.h"

// A pen, and its selection into a device context, which must outlive it.
class NPen {
public:
    NPen() = default;
    NPen(const NPen&) = delete;
    NPen& operator=(const NPen&) = delete;
    ~NPen() { Release(); }

    // Puts the earlier pen back, and deletes this one. May be called again.
    void Release();

    // Makes a pen in place of the earlier one, and selects it into `target`
    // unless that is null. `colour` is 0x00BBGGRR, `style` a PS_ value.
    bool Create(COLORREF colour, HDC target = nullptr, int width = 1, int style = PS_SOLID);

    HGDIOBJ previous = nullptr; // displaced from `dc`
    HDC dc = nullptr;           // null unless selected
    HPEN handle = nullptr;
};
