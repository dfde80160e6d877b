#include "toolkit/packed_coordinates.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
struct Case {
    const char* name;
    uint32_t value;
    int32_t expected; // 30 pixels of an element in an area of 100
};

const Case cases[] = {
    {"the near edge", 0, 0},
    {"an offset", 12, 12},
    {"the largest offset", 0xFFFF, 65535},
    {"the middle", 0x10000, 50},
    {"beyond the middle", 0x10001, 51},
    {"the far edge", 0x20000, 100},
    {"beyond the far edge", 0x20005, 105},
    {"middle and far edge add up", 0x30000, 150},
    {"the own size before the near edge", 0x40000, -30},
    {"an offset less the own size", 0x40000 + 80, 50},
    {"half of the own size before the near edge", 0x80000, -15},
    {"both of the own sizes", 0xC0000, -45},
    {"centred in the area", 0x90000, 35},
    {"centred, beyond the middle", 0x90002, 37},
    {"less an offset", 0x100007, -7},
    {"less the largest offset", 0x10FFFF, -65535},
    {"less an offset of 0", 0x100000, 0},
    {"before the middle", 0x110004, 46},
    {"2 pixels before the far edge", 0x120002, 98},
    {"the far side 4 pixels before the far edge", 0x160004, 66},
    {"centred, 1 pixel towards the near edge", 0x190001, 34},
    {"all flags", 0x1F0001, 104},
};

template <typename T>
constexpr T Lowest = std::numeric_limits<T>::lowest();
template <typename T>
constexpr T Highest = std::numeric_limits<T>::max();
} // namespace

TEST(PackedCoordinates, EachFlagCountsFromItsPlace) {
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(each.expected, ResolvePacked(each.value, 100, 0, 30));
        EXPECT_EQ(each.expected + 7, ResolvePacked(each.value, 100, 7, 30));
        EXPECT_EQ(each.expected - 9, ResolvePacked(each.value, 100, -9, 30));
    }
}

TEST(PackedCoordinates, HalvesTruncateTowardsZero) {
    EXPECT_EQ(49, ResolvePacked(AnchorMiddle, 99, 0, 0));
    EXPECT_EQ(-49, ResolvePacked(AnchorMiddle, -99, 0, 0));
    EXPECT_EQ(-15, ResolvePacked(MinusHalf, 0, 0, 31));
    EXPECT_EQ(15, ResolvePacked(MinusHalf, 0, 0, -31));
    // Each half by itself.
    EXPECT_EQ(34, ResolvePacked(AnchorMiddle | MinusHalf, 99, 0, 31));
}

TEST(PackedCoordinates, TheFlagsHaveTheirBits) {
    EXPECT_EQ(0x10000u, AnchorMiddle);
    EXPECT_EQ(0x20000u, AnchorFar);
    EXPECT_EQ(0x40000u, MinusSize);
    EXPECT_EQ(0x80000u, MinusHalf);
    EXPECT_EQ(0x100000u, Negative);
}

TEST(PackedCoordinates, WhatLeaves32BitsWrapsAround) {
    // As constants, which no undefined arithmetic can be.
    static_assert(ResolvePacked(AnchorFar, Highest<int32_t>, 1, 0) == Lowest<int32_t>);
    static_assert(ResolvePacked(MinusSize, 0, 0, Lowest<int32_t>) == Lowest<int32_t>);
    static_assert(ResolvePacked(AnchorFar | AnchorMiddle, Highest<int32_t>, 0, 0) == -1073741826);
    static_assert(ResolvePacked(0xFFE00000, 0, 0, 0) == -0x200000);
}
