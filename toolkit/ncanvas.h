#pragma once

#include "toolkit/nbitmap.h"

// A bitmap to draw on: it stays selected into a memory device context, which
// is its own (`ownDC`) or the caller's. Drawing without a bitmap or without a
// device context does nothing.
class NCanvas : public NBitmap {
public:
    NCanvas() = default;
    ~NCanvas() { Release(); }

    // Deselects; then selects the bitmap, if there is one, into a new device
    // context that fits `dc`, or into `dc` itself.
    bool Select(HDC target, bool ownDC);
    // The bitmap stays. An own device context is deleted.
    void Deselect();
    // Deselects, and deletes the bitmap. May be called again.
    void Release();

    // Copies to (x, y) of `target`. A width or height of -1 is the bitmap's.
    bool Blit(HDC target, int x, int y, int width = -1, int height = -1, int sourceX = 0,
              int sourceY = 0, DWORD rop = SRCCOPY) const;
    // Fills the whole bitmap.
    bool Fill(HBRUSH brush);

    // Releases, makes a bitmap that fits `target`, and selects it. The bits
    // of the new bitmap are not defined.
    bool Resize(HDC target, int width, int height, bool ownDC);
    bool Resize(int width, int height) { return Resize(nullptr, width, height, true); }
    // As NBitmap's, and selected.
    bool LoadResource(HDC target, int id, HINSTANCE module, bool mapColours, bool ownDC);
    bool LoadResource(int id, HINSTANCE module = nullptr, bool mapColours = false) {
        return LoadResource(nullptr, id, module, mapColours, true);
    }
    // As NBitmap's CopyFrom and LoadMemory, and selected into a device context
    // of its own.
    bool LoadCopy(HBITMAP other);
    bool LoadMemory(const void* data, uint32_t size, bool transparent = false);

    HGDIOBJ previous = nullptr; // displaced from the device context
    HDC dc = nullptr;
    bool ownsDC = false;

private:
    // They would free a bitmap that is selected.
    using NBitmap::CopyFrom;
    using NBitmap::CreateCompatible;
    using NBitmap::LoadFile;
};
