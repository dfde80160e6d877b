#include "foundation/nmemory.h"
#include "tests/support/page_end.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {
const void* Address(uintptr_t number) {
    return reinterpret_cast<const void*>(number);
}
} // namespace

TEST(ReadableMemory, IsCountedUpToWhatIsWanted) {
    uint8_t bytes[100] = {};
    EXPECT_EQ(NReadableBytes(bytes, sizeof(bytes)), sizeof(bytes));
    EXPECT_EQ(NReadableBytes(bytes, 1), 1u);
    EXPECT_EQ(NReadableBytes(bytes, 0), 0u);
}

TEST(ReadableMemory, CanBeConstant) {
    static const char text[] = "constant";
    EXPECT_EQ(NReadableBytes(text, sizeof(text)), sizeof(text));
}

TEST(ReadableMemory, EndsWhereThePagesEnd) {
    PageEnd pages(2);
    EXPECT_EQ(NReadableBytes(pages.LastBytes(10), 10), 10u);
    EXPECT_EQ(NReadableBytes(pages.LastBytes(10), 11), 10u);
    EXPECT_EQ(NReadableBytes(pages.LastBytes(10), SIZE_MAX), 10u);
    EXPECT_EQ(NReadableBytes(pages.LastBytes(0), 1), 0u);
}

TEST(ReadableMemory, GoesOnThroughPagesOfOtherProtection) {
    PageEnd pages(2);
    pages.ProtectFirst(PAGE_READONLY);
    EXPECT_EQ(NReadableBytes(pages.First(), SIZE_MAX), pages.Size());
}

TEST(ReadableMemory, IsNoneInAGuardedPageAndLeavesTheGuard) {
    PageEnd pages(2);
    pages.ProtectFirst(PAGE_READWRITE | PAGE_GUARD);
    EXPECT_EQ(NReadableBytes(pages.First(), 1), 0u);
    EXPECT_EQ(NReadableBytes(pages.First(), 1), 0u);
}

TEST(ReadableMemory, IsNoneAtNullAndWhereNothingIs) {
    EXPECT_EQ(NReadableBytes(nullptr, 1), 0u);
    EXPECT_EQ(NReadableBytes(Address(1), 1), 0u);
    EXPECT_EQ(NReadableBytes(Address(0x8000000000000000), 1), 0u);
    EXPECT_EQ(NReadableBytes(Address(UINTPTR_MAX), SIZE_MAX), 0u);
}
