#include "toolkit/nicon.h"

#include "foundation/npath.h"
#include "toolkit/bitmap_facts.h"
#include "toolkit/gdi_owners.h"

#include <shellapi.h>

static_assert(sizeof(NIcon) == sizeof(HICON));

namespace {
// What ExtractIconW gives for a file that holds no icons by its nature.
HICON NotAnIcon() {
    return reinterpret_cast<HICON>(1);
}

bool HoldsIconsAsResources(const NString& path) {
    NString extension = NGetFileExt(path).ToUpper();
    return extension == L".EXE" || extension == L".DLL";
}

// The colour bitmap's size; nothing for a missing one.
SIZE ColourSize(HICON icon) {
    ICONINFO parts = {};
    if (!icon || !GetIconInfo(icon, &parts))
        return {};
    UniqueBitmap(parts.hbmMask).Reset();
    UniqueBitmap colour(parts.hbmColor);
    return BitmapSize(colour.Get());
}
} // namespace

void NIcon::Release() {
    if (handle)
        DestroyIcon(handle);
    handle = nullptr;
}

bool NIcon::Copy(const NIcon& other) {
    // Before the release, for a copy of itself.
    HICON copy = other.handle ? DuplicateIcon(nullptr, other.handle) : nullptr;
    Release();
    handle = copy;
    return handle != nullptr;
}

bool NIcon::Load(int id, int width, int height, HINSTANCE module) {
    Release();
    handle = static_cast<HICON>(LoadImageW(module ? module : GetModuleHandleW(nullptr),
                                           MAKEINTRESOURCEW(id), IMAGE_ICON, width, height, 0));
    return handle != nullptr;
}

bool NIcon::LoadFile(const NString& path, int width, int height) {
    Release();
    if (HoldsIconsAsResources(path)) {
        handle = ExtractIconW(nullptr, path.Text, 0);
        if (handle == NotAnIcon())
            handle = nullptr;
    } else {
        handle = static_cast<HICON>(
            LoadImageW(nullptr, path.Text, IMAGE_ICON, width, height, LR_LOADFROMFILE));
    }
    return handle != nullptr;
}

bool NIcon::Draw(HDC dc, int x, int y) const {
    // A size of 0 is the icon's own.
    return handle && DrawIconEx(dc, x, y, handle, 0, 0, 0, nullptr, DI_NORMAL);
}

int NIcon::Width() const {
    return ColourSize(handle).cx;
}

int NIcon::Height() const {
    return ColourSize(handle).cy;
}
