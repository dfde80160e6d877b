#pragma once

#include "foundation/unique_handle.h"

// Owners of what is needed for a call or two, and of what is selected for as
// long.

struct GdiBitmapTraits {
    using Handle = HBITMAP;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DeleteObject(handle); }
};
using UniqueBitmap = UniqueHandle<GdiBitmapTraits>;

// Selects an object to the end of the scope. The object and the device context
// must outlive it. Tests as false if the object can't be selected.
class ScopedSelection {
public:
    ScopedSelection(HDC dc, HGDIOBJ object) : dc_(dc), previous_(SelectObject(dc, object)) {}
    ScopedSelection(const ScopedSelection&) = delete;
    ScopedSelection& operator=(const ScopedSelection&) = delete;
    ~ScopedSelection() {
        if (previous_)
            SelectObject(dc_, previous_);
    }

    explicit operator bool() const { return previous_ != nullptr; }

private:
    HDC dc_;
    HGDIOBJ previous_;
};
