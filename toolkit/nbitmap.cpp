#include "toolkit/nbitmap.h"

#include "foundation/com_owners.h"
#include "foundation/nfile.h"
#include "toolkit/bitmap_facts.h"
#include "toolkit/device_contexts.h"
#include "toolkit/gdi_owners.h"
#include "toolkit/picture_decoding.h"

#include <cstring>
#include <limits>
#include <utility>

static_assert(sizeof(NBitmap) == sizeof(HBITMAP));

namespace {
constexpr uint32_t SmallestPicture = 8; // bytes
constexpr int64_t LargestPicture = std::numeric_limits<LONG>::max();

// A bitmap of its size and colours, or none.
UniqueBitmap Duplicate(HBITMAP source) {
    const SIZE size = BitmapSize(source);
    NBitmap copy;
    if (!copy.CreateCompatible(nullptr, size.cx, size.cy))
        return UniqueBitmap();
    NMemoryDC from;
    NMemoryDC to;
    ScopedSelection selectedFrom(from.dc, source);
    ScopedSelection selectedTo(to.dc, copy.handle);
    if (!selectedFrom || !selectedTo ||
        !BitBlt(to.dc, 0, 0, size.cx, size.cy, from.dc, 0, 0, SRCCOPY))
        return UniqueBitmap();
    return UniqueBitmap(std::exchange(copy.handle, nullptr));
}
} // namespace

void NBitmap::Release() {
    if (handle)
        DeleteObject(handle);
    handle = nullptr;
}

bool NBitmap::LoadResource(int id, HINSTANCE module, bool mapColours) {
    Release();
    handle = static_cast<HBITMAP>(
        LoadImageW(module ? module : GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_BITMAP,
                   0, 0, mapColours ? LR_LOADMAP3DCOLORS | LR_LOADTRANSPARENT : 0));
    return handle != nullptr;
}

bool NBitmap::CreateCompatible(HDC dc, int width, int height) {
    Release();
    if (width <= 0 || height <= 0)
        return false;
    NWindowDC screen;
    handle = CreateCompatibleBitmap(dc ? dc : screen.dc, width, height);
    return handle != nullptr;
}

bool NBitmap::CopyFrom(HBITMAP other) {
    // Before the release, for a copy of itself.
    UniqueBitmap copy = Duplicate(other);
    Release();
    handle = copy.Release();
    return handle != nullptr;
}

bool NBitmap::LoadMemory(const void* data, uint32_t size, bool transparent) {
    Release();
    if (!data || size < SmallestPicture)
        return false;
    UniqueGlobalMemory memory = PictureMemory(size);
    {
        GlobalMemoryLock lock(memory.Get());
        if (!lock)
            return false;
        memcpy(lock.Bytes(), data, size);
    }
    return DecodePicture(memory.Get(), size, transparent, PlatformPictureTools(), *this);
}

bool NBitmap::LoadFile(const NString& path, bool transparent) {
    Release();
    NFile file(path, GENERIC_READ, OPEN_EXISTING, false, true);
    bool failed = false;
    const int64_t fileSize = file.GetSize(failed);
    if (failed || fileSize <= 0 || fileSize > LargestPicture)
        return false;
    const auto size = static_cast<uint32_t>(fileSize);
    UniqueGlobalMemory memory = ReadPictureFile(file, size);
    return memory && DecodePicture(memory.Get(), size, transparent, PlatformPictureTools(), *this);
}

int NBitmap::Width() const {
    return BitmapSize(handle).cx;
}

int NBitmap::Height() const {
    return BitmapSize(handle).cy;
}

uint64_t NBitmap::Colours() const {
    BITMAP facts = {};
    if (handle)
        GetObjectW(handle, sizeof(facts), &facts);
    return uint64_t{1} << facts.bmBitsPixel;
}
