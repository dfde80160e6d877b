#include "audiopage/cover_panel.h"

#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "toolkit/nbrush.h"

#include <algorithm>
#include <cstdint>

namespace {
// The case's opening, in pixels.
constexpr int OpeningSize = 88;
constexpr int OpeningX = 10;
constexpr int OpeningY = 1;
constexpr COLORREF OpeningGrey = 0xEEEEEE;

// Less can't be a picture.
constexpr uint32_t SmallestPicture = 9; // bytes

// A pixel is dark when each of its colours is below this.
constexpr int DarkLimit = 90;
constexpr int SmallestToTrim = 4; // pixels

// Where a picture of this measure starts to stand in the middle.
int Centred(double measure) {
    return std::max(OpeningSize / 2 - static_cast<int>(measure * 0.5), 0);
}

// Stretches the whole picture, as it stands after the trim.
void DrawScaled(NCanvas& picture, HDC target, double width, double height) {
    TrimDarkBorder(picture, width, height);
    double factor = std::max(width, height) / OpeningSize;
    if (factor == 0.0)
        factor = 1.0;
    double scaledWidth = std::max(width / factor, 1.0);
    double scaledHeight = std::max(height / factor, 1.0);
    SetStretchBltMode(target, HALFTONE);
    SetBrushOrgEx(target, 0, 0, nullptr);
    StretchBlt(target, Centred(scaledWidth), Centred(scaledHeight), static_cast<int>(scaledWidth),
               static_cast<int>(scaledHeight), picture.dc, 0, 0, picture.Width(), picture.Height(),
               SRCCOPY);
}

void DrawCover(NCanvas& picture, HDC target) {
    double width = picture.Width();
    double height = picture.Height();
    if (width == 0.0 || height == 0.0)
        return;
    if (width > OpeningSize || height > OpeningSize)
        DrawScaled(picture, target, width, height);
    else
        picture.Blit(target, Centred(width), Centred(height));
}

void FillGrey(NCanvas& canvas) {
    NBrush grey;
    grey.Solid(OpeningGrey);
    canvas.Fill(grey.handle);
}

NCanvas& AddFrame(NKeyedList<NCanvas>& list) {
    NCanvas& frame = *list.Add();
    frame.LoadResource(IDB_ART_FRAME, NModuleInstance());
    return frame;
}

void AddCover(NKeyedList<NCanvas>& list, const NBuffer& data) {
    // 3.
    NCanvas picture;
    picture.LoadMemory(data.Data, data.Size);
    NCanvas work;
    work.Resize(OpeningSize, OpeningSize);
    FillGrey(work);
    // 4. to 6.
    DrawCover(picture, work.dc);
    // 7.
    work.Blit(AddFrame(list).dc, OpeningX, OpeningY);
}

bool IsDark(HDC dc, int x, int y) {
    COLORREF colour = GetPixel(dc, x, y);
    return colour != CLR_INVALID && GetRValue(colour) < DarkLimit &&
           GetGValue(colour) < DarkLimit && GetBValue(colour) < DarkLimit;
}

bool HasDarkBorder(HDC dc, int width, int height) {
    for (int x = 0; x < width; ++x) {
        if (!IsDark(dc, x, 0) || !IsDark(dc, x, height - 1))
            return false;
    }
    for (int y = 0; y < height; ++y) {
        if (!IsDark(dc, 0, y) || !IsDark(dc, width - 1, y))
            return false;
    }
    return true;
}
} // namespace

void BuildAlbumArt(NKeyedList<NCanvas>& list, clTagRecord& tags) {
    // 1.
    list.Clear();
    NString description;
    for (int number = 1;; ++number) {
        const clTagElement* element = tags.FindAlbumArt(number, description);
        if (!element)
            break;
        // 2.
        if (element->Data.Size >= SmallestPicture)
            AddCover(list, element->Data);
    }
    // 8.
    if (list.Count() == 0)
        AddFrame(list);
}

void TrimDarkBorder(NCanvas& bitmap, double& width, double& height) {
    // 1.
    int fullWidth = static_cast<int>(width);
    int fullHeight = static_cast<int>(height);
    if (fullWidth < SmallestToTrim || fullHeight < SmallestToTrim)
        return;
    // 2.
    if (!HasDarkBorder(bitmap.dc, fullWidth, fullHeight))
        return;
    // 3.
    NCanvas scratch;
    if (!scratch.Resize(fullWidth, fullHeight))
        return;
    bitmap.Blit(scratch.dc, 0, 0);
    bitmap.Resize(fullWidth - 2, fullHeight - 2);
    scratch.Blit(bitmap.dc, 0, 0, fullWidth - 2, fullHeight - 2, 1, 1);
    width = fullWidth - 2;
    height = fullHeight - 2;
}
