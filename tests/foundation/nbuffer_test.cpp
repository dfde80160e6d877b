#include "foundation/nbuffer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace {
const uint8_t Digits[] = {'1', '2', '3', '4', '5', '6', '7', '8'};

bool AllBytesAre(const NBuffer& buffer, uint32_t from, uint32_t to, uint8_t value) {
    for (uint32_t index = from; index < to; ++index) {
        if (buffer.Data[index] != value)
            return false;
    }
    return true;
}
} // namespace

TEST(NBuffer, StartsEmpty) {
    NBuffer buffer;
    EXPECT_EQ(buffer.Data, nullptr);
    EXPECT_EQ(buffer.Size, 0u);
    EXPECT_EQ(buffer.Used, 0u);
}

TEST(NBuffer, LiesInMemoryInItsOrderOfFields) {
    EXPECT_LT(offsetof(NBuffer, Data), offsetof(NBuffer, Size));
    EXPECT_LT(offsetof(NBuffer, Size), offsetof(NBuffer, Used));
}

TEST(NBuffer, ResizeToASmallerSizeKeepsTheBlock) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    uint8_t* block = buffer.Data;
    buffer.Resize(3);
    EXPECT_EQ(buffer.Data, block);
    EXPECT_EQ(buffer.Size, 3u);
    EXPECT_EQ(memcmp(buffer.Data, "123", 3), 0);
}

TEST(NBuffer, ALargerResizeAfterASmallerOneAllocatesAnewAndKeepsOnlyTheSmallerPart) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    uintptr_t block = reinterpret_cast<uintptr_t>(buffer.Data);
    buffer.Resize(3);
    buffer.Resize(8, true, false);
    EXPECT_NE(reinterpret_cast<uintptr_t>(buffer.Data), block);
    EXPECT_EQ(buffer.Size, 8u);
    EXPECT_EQ(memcmp(buffer.Data, "123", 3), 0);
}

TEST(NBuffer, ResizeWithKeepCopiesTheOldBytes) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Resize(100, true);
    EXPECT_EQ(memcmp(buffer.Data, Digits, 8), 0);
}

TEST(NBuffer, ZeroOnANewBlockWipesTheKeptBytesToo) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Resize(16, true, true, 4);
    EXPECT_TRUE(AllBytesAre(buffer, 0, 20, 0));
}

TEST(NBuffer, ZeroOnTheOldBlockWipesOnlyTheNewSize) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Resize(4, false, true);
    EXPECT_TRUE(AllBytesAre(buffer, 0, 4, 0));
    EXPECT_EQ(buffer.Data[4], '5');
}

TEST(NBuffer, ExtraCountsAsSizeOfANewBlockOnly) {
    NBuffer buffer;
    buffer.Resize(10, false, true, 6);
    EXPECT_EQ(buffer.Size, 16u);
    buffer.Resize(10, false, true, 6);
    EXPECT_EQ(buffer.Size, 10u);
}

TEST(NBuffer, ResizeToItsOwnSizeKeepsTheBlockAndItsBytes) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    uintptr_t block = reinterpret_cast<uintptr_t>(buffer.Data);
    buffer.Resize(8, false, false, 1000);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(buffer.Data), block);
    EXPECT_EQ(buffer.Size, 8u);
    EXPECT_EQ(buffer.Used, 8u);
    EXPECT_EQ(memcmp(buffer.Data, Digits, 8), 0);
    buffer.Resize(9, true, false, 1000);
    EXPECT_EQ(buffer.Size, 1009u);
}

TEST(NBuffer, ResizeToNothingStillTakesABlock) {
    NBuffer buffer;
    buffer.Resize(0);
    EXPECT_NE(buffer.Data, nullptr);
    EXPECT_EQ(buffer.Size, 0u);
}

TEST(NBuffer, ResizeCutsUsedBackToSize) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Resize(5);
    EXPECT_EQ(buffer.Used, 5u);
    buffer.Resize(50);
    EXPECT_EQ(buffer.Used, 5u);
}

TEST(NBuffer, AFailedAllocationLeavesNothing) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Resize(UINT32_MAX, true, false, UINT32_MAX);
    EXPECT_EQ(buffer.Data, nullptr);
    EXPECT_EQ(buffer.Size, 0u);
    EXPECT_EQ(buffer.Used, 0u);
}

TEST(NBuffer, SetCopiesTheDataAndMarksItUsed) {
    NBuffer buffer;
    buffer.Set(Digits, 8, 4, true);
    EXPECT_EQ(buffer.Size, 12u);
    EXPECT_EQ(buffer.Used, 8u);
    EXPECT_EQ(memcmp(buffer.Data, Digits, 8), 0);
    EXPECT_TRUE(AllBytesAre(buffer, 8, 12, 0));
}

TEST(NBuffer, SetLeavesTheExtraBytesUnlessAsked) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Set(Digits, 2, 3);
    EXPECT_EQ(buffer.Size, 5u);
    EXPECT_EQ(memcmp(buffer.Data, Digits, 5), 0);
}

TEST(NBuffer, SetWithASumBeyondItsRangeLeavesNothing) {
    NBuffer buffer;
    buffer.Set(Digits, UINT32_MAX, 10);
    EXPECT_EQ(buffer.Data, nullptr);
    EXPECT_EQ(buffer.Size, 0u);
}

TEST(NBuffer, SetWithoutDataGivesZeros) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Set(nullptr, 6);
    EXPECT_EQ(buffer.Used, 6u);
    EXPECT_TRUE(AllBytesAre(buffer, 0, 6, 0));
}

TEST(NBuffer, SetTakesDataThatLiesInItself) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Set(buffer.Data + 2, 4);
    EXPECT_EQ(memcmp(buffer.Data, "3456", 4), 0);
    buffer.Set(buffer.Data + 1, 3, 1000);
    EXPECT_EQ(memcmp(buffer.Data, "456", 3), 0);
}

TEST(NBuffer, CopiesAreOfTheirOwn) {
    NBuffer first;
    first.Set(Digits, 8);
    NBuffer second(first);
    NBuffer third;
    third = second;
    second.Data[0] = 'x';
    EXPECT_EQ(first.Data[0], '1');
    EXPECT_EQ(third.Data[0], '1');
    EXPECT_EQ(third.Size, 8u);
}

TEST(NBuffer, CopyFromTakesSizeAsUsed) {
    NBuffer first;
    first.Set(Digits, 4, 4, true);
    NBuffer second;
    second.CopyFrom(first);
    EXPECT_EQ(second.Size, 8u);
    EXPECT_EQ(second.Used, 8u);
    second.CopyFrom(second);
    EXPECT_TRUE(second.Equals(first));
}

TEST(NBuffer, EqualsLooksAtSizeAndAllBytes) {
    NBuffer first;
    NBuffer second;
    EXPECT_TRUE(first.Equals(second));
    first.Set(Digits, 8);
    EXPECT_FALSE(first.Equals(second));
    second.Set(Digits, 8);
    EXPECT_TRUE(first.Equals(second));
    second.Data[7] = 'x';
    EXPECT_FALSE(first.Equals(second));
    second.Resize(7);
    EXPECT_FALSE(first.Equals(second));
}

TEST(NBuffer, FreeSetsAllFieldsToZero) {
    NBuffer buffer;
    buffer.Set(Digits, 8);
    buffer.Free();
    EXPECT_EQ(buffer.Data, nullptr);
    EXPECT_EQ(buffer.Size, 0u);
    EXPECT_EQ(buffer.Used, 0u);
}
