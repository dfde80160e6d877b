#pragma once

#include "foundation/windows_lean.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <vector>

// A picture in memory, rows from the top, pixels 0x00RRGGBB.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;

    uint32_t At(int x, int y) const {
        return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
};

// What stands on a device context.
Picture ReadPicture(HDC dc, int width, int height);

// What all of the window's client area shows once it is painted.
Picture PictureOf(HWND window);

// Bitmap files of 24 bits. One that can't be read gives an empty picture.
Picture LoadPicture(const std::filesystem::path& path);
bool SavePicture(const std::filesystem::path& path, const Picture& picture);

// The greatest distance of two pixels in red, green or blue.
int PixelDistance(uint32_t a, uint32_t b);

// What may differ between two pictures that look the same.
struct PictureTolerance {
    int colour = 0; // how far off each colour of a pixel may be
    int pixels = 0; // how many pixels may be further off than that
};

// Compares with the picture in the file `golden`. On failure the picture and
// the difference, of which black means none, are written into `outputFolder`,
// as "<name of golden>.actual.bmp" and "<name of golden>.difference.bmp".
//
// With TONEWRIGHT_NEW_PICTURES set in the environment the golden picture is
// written instead, and the comparison fails: look at it, and run again without.
testing::AssertionResult LooksLike(const Picture& picture, const std::filesystem::path& golden,
                                   const PictureTolerance& tolerance,
                                   const std::filesystem::path& outputFolder);
