#pragma once

#include "foundation/unique_handle.h"
#include "toolkit/device_contexts.h"
#include "toolkit/gdi_owners.h"

#include <cwchar>

// The platform's own measures and drawing of a font, apart from NFont.
class TextOracle {
public:
    explicit TextOracle(int height, const wchar_t* face = L"Tahoma", bool bold = false,
                        bool italic = false, bool underline = false)
        : font_(CreateFontW(height, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, italic, underline, FALSE,
                            0, 0, 0, 0, 0, face)),
          selected_(memory_.dc, font_.Get()) {}

    SIZE SizeOf(const wchar_t* line) const {
        SIZE size = {};
        GetTextExtentPoint32W(memory_.dc, line, Length(line), &size);
        return size;
    }
    int Width(const wchar_t* line) const { return SizeOf(line).cx; }
    int LineHeight() const { return SizeOf(L"Ay").cy; }

    // One line with its top left at (x, y), transparent.
    void Draw(HDC dc, int x, int y, const wchar_t* line, COLORREF colour) const {
        ScopedSelection font(dc, font_.Get());
        SetTextColor(dc, colour);
        SetBkMode(dc, TRANSPARENT);
        ExtTextOutW(dc, x, y, 0, nullptr, line, static_cast<UINT>(Length(line)), nullptr);
    }

private:
    struct FontTraits {
        using Handle = HFONT;
        static Handle None() { return nullptr; }
        static void Free(Handle handle) { DeleteObject(handle); }
    };

    static int Length(const wchar_t* line) { return static_cast<int>(wcslen(line)); }

    NMemoryDC memory_;
    UniqueHandle<FontTraits> font_;
    ScopedSelection selected_;
};
