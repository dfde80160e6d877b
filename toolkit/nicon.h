#pragma once

#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

// Owner of one icon of the platform. What makes an icon frees the earlier one;
// where it returns false there is none. Sizes are pixels.
class NIcon {
public:
    NIcon() = default;
    NIcon(const NIcon&) = delete;
    NIcon& operator=(const NIcon&) = delete;
    ~NIcon() { Release(); }

    // `handle` is null after it. May be called again.
    void Release();

    // An empty icon gives an empty one.
    bool Copy(const NIcon& other);
    // From the resources of `module`, null for those of the host process.
    bool Load(int id, int width, int height, HINSTANCE module = nullptr);
    // The first icon of a file ".exe" or ".dll", whatever the size asked for;
    // any other file is an icon file, and is read at that size.
    bool LoadFile(const NString& path, int width, int height);

    // At the icon's own size. Without an icon it does nothing.
    bool Draw(HDC dc, int x, int y) const;
    // 0 without an icon, and for one in black and white.
    int Width() const;
    int Height() const;

    HICON handle = nullptr;
};
