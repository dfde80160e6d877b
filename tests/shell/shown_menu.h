#pragma once

#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"

#include <cstdint>
#include <string>
#include <vector>

struct BitmapTraits {
    using Handle = HBITMAP;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DeleteObject(handle); }
};

// A menu of the shell's, and what an extension has put into it. It owns the
// menu, and not the pictures.
class ShownMenu {
public:
    HMENU Handle() const { return menu_.Get(); }
    int Count() const { return GetMenuItemCount(menu_.Get()); }
    void Append(const wchar_t* text, UINT id) { AppendMenuW(menu_.Get(), MF_STRING, id, text); }

    std::wstring Text(int index) const {
        wchar_t text[100] = {};
        GetMenuStringW(menu_.Get(), static_cast<UINT>(index), text, 100, MF_BYPOSITION);
        return text;
    }
    UINT Id(int index) const { return GetMenuItemID(menu_.Get(), index); }
    HBITMAP Picture(int index) const { return Item(index).hbmpUnchecked; }
    HBITMAP CheckedPicture(int index) const { return Item(index).hbmpChecked; }

private:
    struct MenuTraits {
        using Handle = HMENU;
        static Handle None() { return nullptr; }
        static void Free(Handle handle) { DestroyMenu(handle); }
    };

    MENUITEMINFOW Item(int index) const {
        MENUITEMINFOW item = {};
        item.cbSize = sizeof(item);
        item.fMask = MIIM_CHECKMARKS;
        GetMenuItemInfoW(menu_.Get(), static_cast<UINT>(index), TRUE, &item);
        return item;
    }

    UniqueHandle<MenuTraits> menu_{CreatePopupMenu()};
};

// The pixels as 0x00RRGGBB, row by row.
inline std::vector<uint32_t> PixelsOf(HBITMAP bitmap) {
    BITMAP size = {};
    GetObjectW(bitmap, sizeof(size), &size);
    BITMAPINFO format = {};
    format.bmiHeader.biSize = sizeof(format.bmiHeader);
    format.bmiHeader.biWidth = size.bmWidth;
    format.bmiHeader.biHeight = -size.bmHeight;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    std::vector<uint32_t> pixels(static_cast<size_t>(size.bmWidth) *
                                 static_cast<size_t>(size.bmHeight));
    HDC screen = GetDC(nullptr);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(size.bmHeight), pixels.data(), &format,
              DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    for (uint32_t& pixel : pixels)
        pixel &= 0xFFFFFF;
    return pixels;
}
