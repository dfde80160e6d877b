#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <cstdint>

// Owner of one bitmap of the platform. What makes a bitmap frees the earlier
// one; where it returns false there is none, unless it says otherwise. Sizes
// are pixels, colours 0x00BBGGRR.
class NBitmap {
public:
    NBitmap() = default;
    NBitmap(const NBitmap&) = delete;
    NBitmap& operator=(const NBitmap&) = delete;
    ~NBitmap() { Release(); }

    // `handle` is null after it. May be called again.
    void Release();

    // From the resources of `module`, null for those of the host process.
    // `mapColours` puts COLOR_BTNFACE in place of the first pixel's colour, in
    // a bitmap with a colour table.
    bool LoadResource(int id, HINSTANCE module = nullptr, bool mapColours = false);
    // One that fits `dc`, or the screen for null. Nothing is made if a size is
    // 0 or less.
    bool CreateCompatible(HDC dc, int width, int height);
    // A copy of the same size that fits the screen; `other` must not be
    // selected into a device context.
    bool CopyFrom(HBITMAP other);
    // Decodes what OleLoadPicture takes: PNG, JPEG, GIF, BMP and others.
    // `transparent` puts COLOR_BTNFACE in place of the colour of the top left
    // pixel. A block of less than 8 bytes is no picture. The one failure that
    // leaves a bitmap behind, filled with COLOR_BTNFACE, is that a transparent
    // picture has no memory for its second bitmap.
    bool LoadMemory(const void* data, uint32_t size, bool transparent = false);
    bool LoadFile(const NString& path, bool transparent = false);

    // 0 without a bitmap.
    int Width() const;
    int Height() const;
    // 2 to the power of the bits per pixel; 1 without a bitmap.
    uint64_t Colours() const;

    HBITMAP handle = nullptr;
};
