#pragma once

#include "foundation/nbuffer.h"

#include <cstdint>
#include <functional>

// The bytes of a bitmap file of 24 bits. `colourAt` gives a pixel as 0x00RRGGBB,
// from the upper left corner.
NBuffer BitmapFile(int width, int height, const std::function<uint32_t(int x, int y)>& colourAt);
NBuffer PlainBitmapFile(int width, int height, uint32_t colour);
