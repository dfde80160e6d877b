#include "toolkit/picture_decoding.h"

#include "foundation/com_owners.h"
#include "toolkit/device_contexts.h"
#include "toolkit/gdi_owners.h"
#include "toolkit/nmsimg.h"

#include <ocidl.h>
#include <olectl.h>

#include <limits>

namespace {
constexpr int HimetricPerInch = 2540;

enum class Outcome {
    Drawn,
    NoSecondBitmap, // the first one stays behind
    Failed,
};

struct PictureSize {
    OLE_XSIZE_HIMETRIC himetricWidth = 0;
    OLE_YSIZE_HIMETRIC himetricHeight = 0;
    int width = 0; // pixels
    int height = 0;
};

bool LoadPicture(HGLOBAL memory, uint32_t size, ComPtr<IPicture>& picture) {
    if (size > static_cast<uint32_t>(std::numeric_limits<LONG>::max()))
        return false;
    // 1.
    ComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(memory, FALSE, stream.Put())))
        return false;
    // 2.
    HRESULT result = OleLoadPicture(stream.Get(), static_cast<LONG>(size), FALSE, IID_IPicture,
                                    picture.PutVoid());
    return SUCCEEDED(result) && picture;
}

bool ReadSize(const ComPtr<IPicture>& picture, HDC screen, PictureSize& size) {
    if (FAILED(picture->get_Width(&size.himetricWidth)) ||
        FAILED(picture->get_Height(&size.himetricHeight)))
        return false;
    size.width = MulDiv(size.himetricWidth, GetDeviceCaps(screen, LOGPIXELSX), HimetricPerInch);
    size.height = MulDiv(size.himetricHeight, GetDeviceCaps(screen, LOGPIXELSY), HimetricPerInch);
    return true;
}

// The picture's y runs upward.
Outcome Render(const ComPtr<IPicture>& picture, const PictureSize& size, HDC target) {
    HRESULT result = picture->Render(target, 0, 0, size.width, size.height, 0, size.himetricHeight,
                                     size.himetricWidth, -size.himetricHeight, nullptr);
    return SUCCEEDED(result) ? Outcome::Drawn : Outcome::Failed;
}

// The key is the top left pixel's colour, also where that is the subject's.
Outcome RenderByTransparentBlt(const ComPtr<IPicture>& picture, const PictureSize& size, HDC target,
                               const PictureTools& tools) {
    const RECT all = {0, 0, size.width, size.height};
    FillRect(target, &all, GetSysColorBrush(COLOR_BTNFACE));
    NBitmap second;
    if (!tools.makeBitmap(second, target, size.width, size.height))
        return Outcome::NoSecondBitmap;
    NMemoryDC source(target);
    ScopedSelection selected(source.dc, second.handle);
    if (!selected || Render(picture, size, source.dc) != Outcome::Drawn)
        return Outcome::Failed;
    const COLORREF key = GetPixel(source.dc, 0, 0);
    tools.transparentBlt(target, 0, 0, size.width, size.height, source.dc, 0, 0, size.width,
                         size.height, key);
    return Outcome::Drawn;
}

void ReplaceColour(HDC dc, const PictureSize& size, COLORREF key, COLORREF replacement) {
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            if (GetPixel(dc, x, y) == key)
                SetPixelV(dc, x, y, replacement);
}

Outcome RenderAndReplacePixels(const ComPtr<IPicture>& picture, const PictureSize& size,
                               HDC target) {
    Outcome outcome = Render(picture, size, target);
    if (outcome == Outcome::Drawn)
        ReplaceColour(target, size, GetPixel(target, 0, 0), GetSysColor(COLOR_BTNFACE));
    return outcome;
}

Outcome DrawPicture(const ComPtr<IPicture>& picture, const PictureSize& size, bool transparent,
                    const PictureTools& tools, HBITMAP bitmap) {
    NMemoryDC dc;
    ScopedSelection selected(dc.dc, bitmap);
    if (!selected)
        return Outcome::Failed;
    // 5.
    if (!transparent)
        return Render(picture, size, dc.dc);
    // 6.
    if (tools.transparentBlt)
        return RenderByTransparentBlt(picture, size, dc.dc, tools);
    // 7.
    return RenderAndReplacePixels(picture, size, dc.dc);
}
} // namespace

PictureTools PlatformPictureTools() {
    return {NProcessMsImg().transparentBlt, [](NBitmap& bitmap, HDC dc, int width, int height) {
                return bitmap.CreateCompatible(dc, width, height);
            }};
}

UniqueGlobalMemory PictureMemory(uint32_t size) {
    return UniqueGlobalMemory(GlobalAlloc(GMEM_MOVEABLE | GMEM_NODISCARD, size));
}

UniqueGlobalMemory ReadPictureFile(NFile& file, uint32_t size) {
    UniqueGlobalMemory memory = PictureMemory(size);
    GlobalMemoryLock lock(memory.Get());
    bool failed = false;
    if (!lock || file.Read(lock.Bytes(), size, NFile::FromStart, failed) != size || failed)
        return UniqueGlobalMemory();
    return memory;
}

bool DecodePicture(HGLOBAL memory, uint32_t size, bool transparent, const PictureTools& tools,
                   NBitmap& bitmap) {
    bitmap.Release();
    // 1. and 2.
    ComPtr<IPicture> picture;
    if (!LoadPicture(memory, size, picture))
        return false;
    // 3.
    NWindowDC screen;
    PictureSize pictureSize;
    if (!ReadSize(picture, screen.dc, pictureSize))
        return false;
    // 4.
    if (!tools.makeBitmap(bitmap, screen.dc, pictureSize.width, pictureSize.height))
        return false;
    // 5. to 8.
    Outcome outcome = DrawPicture(picture, pictureSize, transparent, tools, bitmap.handle);
    if (outcome == Outcome::Failed)
        bitmap.Release();
    return outcome == Outcome::Drawn;
}
