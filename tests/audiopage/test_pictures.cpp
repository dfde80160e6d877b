#include "tests/audiopage/test_pictures.h"

#include "foundation/windows_lean.h"

#include <cstring>

NBuffer BitmapFile(int width, int height, const std::function<uint32_t(int x, int y)>& colourAt) {
    constexpr size_t BytesPerPixel = 3;
    size_t rowBytes = (static_cast<size_t>(width) * BytesPerPixel + 3) / 4 * 4;
    size_t rows = rowBytes * static_cast<size_t>(height);
    BITMAPFILEHEADER start = {};
    BITMAPINFOHEADER info = {};
    start.bfType = 0x4D42; // "BM"
    start.bfOffBits = sizeof(start) + sizeof(info);
    start.bfSize = static_cast<DWORD>(start.bfOffBits + rows);
    info.biSize = sizeof(info);
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;

    NBuffer file;
    file.Resize(start.bfSize, false, true);
    memcpy(file.Data, &start, sizeof(start));
    memcpy(file.Data + sizeof(start), &info, sizeof(info));
    for (int y = 0; y < height; ++y) {
        uint8_t* row = file.Data + start.bfOffBits + rowBytes * static_cast<size_t>(height - 1 - y);
        for (int x = 0; x < width; ++x) {
            uint32_t colour = colourAt(x, y);
            memcpy(row + static_cast<size_t>(x) * BytesPerPixel, &colour, BytesPerPixel);
        }
    }
    return file;
}

NBuffer PlainBitmapFile(int width, int height, uint32_t colour) {
    return BitmapFile(width, height, [colour](int, int) { return colour; });
}
