#pragma once

#include "foundation/windows_lean.h"

// In pixels; nothing for no bitmap.
inline SIZE BitmapSize(HBITMAP bitmap) {
    BITMAP facts = {};
    if (!bitmap || !GetObjectW(bitmap, sizeof(facts), &facts))
        return {};
    return {facts.bmWidth, facts.bmHeight};
}
