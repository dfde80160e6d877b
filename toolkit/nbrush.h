#pragma once

#include "foundation/windows_lean.h"

#include <cstdint>

// A brush, and its selection into a device context, which must outlive it.
class NBrush {
public:
    NBrush() = default;
    NBrush(const NBrush&) = delete;
    NBrush& operator=(const NBrush&) = delete;
    ~NBrush() { Release(); }

    // Puts the earlier brush back, and deletes this one unless it is the
    // system's. May be called again.
    void Release();

    // The system's brush for a COLOR_ index, which is never deleted. Both make
    // a brush in place of the earlier one, and select it into `target` unless
    // that is null.
    bool Stock(int colourIndex, HDC target = nullptr);
    // `style` is a BS_ and `hatch` an HS_ value; `colour` is 0x00BBGGRR.
    bool Solid(COLORREF colour, HDC target = nullptr, UINT style = BS_SOLID, ULONG_PTR hatch = 0);

    HGDIOBJ previous = nullptr; // displaced from `dc`
    HDC dc = nullptr;           // null unless selected
    int32_t isStock = 0;
    HBRUSH handle = nullptr;

private:
    void SelectInto(HDC target);
};
