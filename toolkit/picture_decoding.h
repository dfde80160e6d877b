#pragma once

#include "foundation/windows_lean.h"
#include "toolkit/nbitmap.h"

#include <cstdint>

// What decoding takes from outside.
struct PictureTools {
    // Null where the platform lacks it; pixels are replaced one by one then.
    decltype(&::TransparentBlt) transparentBlt;
    // As NBitmap::CreateCompatible.
    bool (*makeBitmap)(NBitmap& bitmap, HDC dc, int width, int height);
};

// The platform's own.
PictureTools PlatformPictureTools();

// Decodes the picture in `memory` into `bitmap`, as NBitmap::LoadMemory says.
// The memory stays the caller's, unlocked.
bool DecodePicture(HGLOBAL memory, uint32_t size, bool transparent, const PictureTools& tools,
                   NBitmap& bitmap);
