#pragma once

#include <cstdint>

// A coordinate of a display list's element in one 32-bit value: the low 16
// bits are an offset in pixels, the bits above say where it counts from. An
// offset of more than 0xFFFF can't be told.

inline constexpr uint32_t AnchorMiddle = 0x10000; // from the middle of the area
inline constexpr uint32_t AnchorFar = 0x20000;    // from its right or bottom edge
inline constexpr uint32_t MinusSize = 0x40000;    // less the element's own size
inline constexpr uint32_t MinusHalf = 0x80000;    // less half of it
inline constexpr uint32_t Negative = 0x100000;    // the offset is subtracted
inline constexpr uint32_t OffsetBits = 0xFFFF;

// The pixel that `value` means along one direction of an area of `areaSize`
// pixels whose near edge is at `origin`, for an element of `ownSize` pixels.
// Halves truncate towards zero. A result of more than 32 bits wraps around.
constexpr int32_t ResolvePacked(uint32_t value, int32_t areaSize, int32_t origin, int32_t ownSize) {
    // 1. In unsigned steps, which may wrap.
    uint32_t result = 0;
    const auto takeOff = [&value](uint32_t flag) {
        const bool isSet = (value & flag) != 0;
        value &= ~flag;
        return isSet;
    };
    if (takeOff(AnchorMiddle))
        result += static_cast<uint32_t>(areaSize / 2);
    if (takeOff(AnchorFar))
        result += static_cast<uint32_t>(areaSize);
    if (takeOff(MinusHalf))
        result -= static_cast<uint32_t>(ownSize / 2);
    if (takeOff(MinusSize))
        result -= static_cast<uint32_t>(ownSize);
    // 2. The flag is still a part of the value, and goes out with it.
    result += (value & Negative) ? Negative - value : value;
    // 3.
    return static_cast<int32_t>(result + static_cast<uint32_t>(origin));
}
