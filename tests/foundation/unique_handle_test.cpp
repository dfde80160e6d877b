#include "foundation/unique_handle.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>
#include <vector>

namespace {

std::vector<int> freed;

// Handles are plain numbers; none is -1.
struct NumberTraits {
    using Handle = int;
    static Handle None() { return -1; }
    static void Free(Handle handle) { freed.push_back(handle); }
};
using UniqueNumber = UniqueHandle<NumberTraits>;
using Numbers = std::vector<int>;

class UniqueHandleTest : public testing::Test {
protected:
    UniqueHandleTest() { freed.clear(); }
};

} // namespace

TEST_F(UniqueHandleTest, FreesItsHandleOnceAtTheEndOfTheScope) {
    {
        UniqueNumber handle(3);
        EXPECT_TRUE(handle);
        EXPECT_EQ(handle.Get(), 3);
        EXPECT_EQ(freed, Numbers{});
    }
    EXPECT_EQ(freed, Numbers{3});
}

TEST_F(UniqueHandleTest, WithoutAHandleFreesNothing) {
    {
        UniqueNumber handle;
        EXPECT_FALSE(handle);
        EXPECT_EQ(handle.Get(), -1);
        handle.Reset();
    }
    EXPECT_EQ(freed, Numbers{});
}

TEST_F(UniqueHandleTest, ZeroIsAHandleWhereTheTraitsSayAnotherValueForNone) {
    {
        UniqueNumber handle(0);
        EXPECT_TRUE(handle);
    }
    EXPECT_EQ(freed, Numbers{0});
}

TEST_F(UniqueHandleTest, AReleasedHandleIsTheCallers) {
    {
        UniqueNumber handle(3);
        EXPECT_EQ(handle.Release(), 3);
        EXPECT_FALSE(handle);
    }
    EXPECT_EQ(freed, Numbers{});
}

TEST_F(UniqueHandleTest, ResetFreesTheOldHandleAndTakesTheNewOne) {
    {
        UniqueNumber handle(3);
        handle.Reset(4);
        EXPECT_EQ(freed, Numbers{3});
        EXPECT_EQ(handle.Get(), 4);
        handle.Reset();
        EXPECT_EQ(freed, (Numbers{3, 4}));
    }
    EXPECT_EQ(freed, (Numbers{3, 4}));
}

TEST_F(UniqueHandleTest, PutFreesTheOldHandleAndOwnsWhatIsWrittenThere) {
    {
        UniqueNumber handle(3);
        int* place = handle.Put();
        EXPECT_EQ(freed, Numbers{3});
        EXPECT_EQ(*place, -1);
        *place = 4;
        EXPECT_EQ(handle.Get(), 4);
    }
    EXPECT_EQ(freed, (Numbers{3, 4}));
}

TEST_F(UniqueHandleTest, MovesAndIsNeverCopied) {
    static_assert(!std::is_copy_constructible_v<UniqueNumber>);
    static_assert(!std::is_copy_assignable_v<UniqueNumber>);
    {
        UniqueNumber first(3);
        UniqueNumber second(std::move(first));
        EXPECT_EQ(second.Get(), 3);
        UniqueNumber third(4);
        third = std::move(second);
        EXPECT_EQ(freed, Numbers{4});
        EXPECT_EQ(third.Get(), 3);
    }
    EXPECT_EQ(freed, (Numbers{4, 3}));
}

TEST_F(UniqueHandleTest, MovedToItselfKeepsItsHandle) {
    UniqueNumber handle(3);
    UniqueNumber& same = handle;
    handle = std::move(same);
    EXPECT_EQ(handle.Get(), 3);
    EXPECT_EQ(freed, Numbers{});
}
