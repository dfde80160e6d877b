#pragma once

#include "foundation/nfile.h"
#include "foundation/unique_handle.h"
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

// The first `size` bytes of the file, or nothing if it doesn't hold as many.
UniqueGlobalMemory ReadPictureFile(NFile& file, uint32_t size);

// Room of `size` bytes to decode a picture from; null if there is none.
UniqueGlobalMemory PictureMemory(uint32_t size);

// Decodes the picture in `memory` into `bitmap`, as NBitmap::LoadMemory says.
// The memory stays the caller's, unlocked.
bool DecodePicture(HGLOBAL memory, uint32_t size, bool transparent, const PictureTools& tools,
                   NBitmap& bitmap);
