#include "tests/support/picture_compare.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

namespace {
constexpr size_t BytesPerPixel = 3;

size_t RowBytes(int width) {
    return (static_cast<size_t>(width) * BytesPerPixel + 3) / 4 * 4;
}

int Part(uint32_t pixel, int shift) {
    return static_cast<int>(pixel >> shift & 0xFF);
}

// How far apart two pixels are, part by part, and brighter than it is.
uint32_t DifferencePixel(uint32_t a, uint32_t b) {
    constexpr int Brighter = 8;
    uint32_t result = 0;
    for (int shift : {0, 8, 16}) {
        int distance = std::abs(Part(a, shift) - Part(b, shift));
        result |= static_cast<uint32_t>(std::min(distance * Brighter, 255)) << shift;
    }
    return result;
}

Picture Difference(const Picture& a, const Picture& b) {
    Picture result = a;
    for (size_t index = 0; index < a.pixels.size(); ++index)
        result.pixels[index] = DifferencePixel(a.pixels[index], b.pixels[index]);
    return result;
}

struct Distances {
    int greatest = 0;
    int pixelsBeyond = 0; // further off than the tolerance
};

Distances Measure(const Picture& a, const Picture& b, int tolerance) {
    Distances distances;
    for (size_t index = 0; index < a.pixels.size(); ++index) {
        const int distance = PixelDistance(a.pixels[index], b.pixels[index]);
        distances.greatest = std::max(distances.greatest, distance);
        distances.pixelsBeyond += distance > tolerance;
    }
    return distances;
}
} // namespace

Picture ReadPicture(HDC dc, int width, int height) {
    Picture picture{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            COLORREF colour = GetPixel(dc, x, y);
            picture.pixels.push_back(static_cast<uint32_t>(
                GetRValue(colour) << 16 | GetGValue(colour) << 8 | GetBValue(colour)));
        }
    }
    return picture;
}

Picture PictureOf(HWND window) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT client = {};
    GetClientRect(window, &client);
    // A window's pixels are slow to ask for one by one.
    const HDC shown = GetDC(window);
    const HDC copy = CreateCompatibleDC(shown);
    const HBITMAP bitmap = CreateCompatibleBitmap(shown, client.right, client.bottom);
    const HGDIOBJ previous = SelectObject(copy, bitmap);
    BitBlt(copy, 0, 0, client.right, client.bottom, shown, 0, 0, SRCCOPY);
    const Picture picture = ReadPicture(copy, client.right, client.bottom);
    SelectObject(copy, previous);
    DeleteObject(bitmap);
    DeleteDC(copy);
    ReleaseDC(window, shown);
    return picture;
}

Picture LoadPicture(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    BITMAPFILEHEADER start = {};
    BITMAPINFOHEADER info = {};
    if (bytes.size() < sizeof(start) + sizeof(info))
        return {};
    memcpy(&start, bytes.data(), sizeof(start));
    memcpy(&info, bytes.data() + sizeof(start), sizeof(info));
    Picture picture{static_cast<int>(info.biWidth), static_cast<int>(info.biHeight), {}};
    if (info.biBitCount != 24 || picture.width <= 0 || picture.height <= 0 ||
        bytes.size() <
            start.bfOffBits + RowBytes(picture.width) * static_cast<size_t>(picture.height))
        return {};
    for (int y = 0; y < picture.height; ++y) {
        // The bottom row comes first.
        const char* pixel = bytes.data() + start.bfOffBits +
                            RowBytes(picture.width) * static_cast<size_t>(picture.height - 1 - y);
        for (int x = 0; x < picture.width; ++x, pixel += BytesPerPixel) {
            uint32_t colour = 0;
            memcpy(&colour, pixel, BytesPerPixel);
            picture.pixels.push_back(colour);
        }
    }
    return picture;
}

bool SavePicture(const std::filesystem::path& path, const Picture& picture) {
    size_t rowBytes = RowBytes(picture.width);
    size_t size = rowBytes * static_cast<size_t>(picture.height);
    BITMAPFILEHEADER start = {};
    BITMAPINFOHEADER info = {};
    start.bfType = 0x4D42; // "BM"
    start.bfOffBits = sizeof(start) + sizeof(info);
    start.bfSize = static_cast<DWORD>(start.bfOffBits + size);
    info.biSize = sizeof(info);
    info.biWidth = picture.width;
    info.biHeight = picture.height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    std::vector<char> rows(size);
    for (int y = 0; y < picture.height; ++y) {
        char* row = rows.data() + rowBytes * static_cast<size_t>(picture.height - 1 - y);
        for (int x = 0; x < picture.width; ++x) {
            uint32_t colour = picture.At(x, y);
            memcpy(row + static_cast<size_t>(x) * BytesPerPixel, &colour, BytesPerPixel);
        }
    }
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(&start), sizeof(start));
    file.write(reinterpret_cast<const char*>(&info), sizeof(info));
    file.write(rows.data(), static_cast<std::streamsize>(rows.size()));
    return file.good();
}

int PixelDistance(uint32_t a, uint32_t b) {
    int greatest = 0;
    for (int shift : {0, 8, 16})
        greatest = std::max(greatest, std::abs(Part(a, shift) - Part(b, shift)));
    return greatest;
}

testing::AssertionResult LooksLike(const Picture& picture, const std::filesystem::path& golden,
                                   const PictureTolerance& tolerance,
                                   const std::filesystem::path& outputFolder) {
    if (GetEnvironmentVariableW(L"TONEWRIGHT_NEW_PICTURES", nullptr, 0) != 0) {
        bool saved = SavePicture(golden, picture);
        return testing::AssertionFailure()
               << golden << (saved ? " was written: look at it" : " can't be written");
    }
    Picture expected = LoadPicture(golden);
    bool sameSize = expected.width == picture.width && expected.height == picture.height;
    Distances distances = sameSize ? Measure(picture, expected, tolerance.colour) : Distances();
    if (sameSize && distances.pixelsBeyond <= tolerance.pixels)
        return testing::AssertionSuccess();

    std::error_code ignored;
    std::filesystem::create_directories(outputFolder, ignored);
    std::filesystem::path output = outputFolder / golden.filename();
    auto beside = [&output](const char* ending) {
        std::filesystem::path path = output;
        return path += ending;
    };
    SavePicture(beside(".actual.bmp"), picture);
    if (!sameSize) {
        return testing::AssertionFailure()
               << picture.width << " x " << picture.height << " where " << golden << " is "
               << expected.width << " x " << expected.height;
    }
    SavePicture(beside(".difference.bmp"), Difference(picture, expected));
    return testing::AssertionFailure()
           << distances.pixelsBeyond << " pixels off " << golden << " by more than "
           << tolerance.colour << ", up to " << distances.greatest << ", where " << tolerance.pixels
           << " may be; see " << output << ".*";
}
