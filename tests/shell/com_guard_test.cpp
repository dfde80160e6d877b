#include "shell/com_guard.h"

#include <gtest/gtest.h>

#include <stdexcept>

TEST(ComGuard, PassesTheResultOn) {
    EXPECT_EQ(ComGuarded([] { return S_OK; }), S_OK);
    EXPECT_EQ(ComGuarded([]() -> HRESULT { return E_ACCESSDENIED; }), E_ACCESSDENIED);
}

TEST(ComGuard, TurnsAFailedAllocationIntoOutOfMemory) {
    EXPECT_EQ(ComGuarded([]() -> HRESULT { throw std::bad_alloc(); }), E_OUTOFMEMORY);
}

TEST(ComGuard, TurnsAnyOtherExceptionIntoUnexpected) {
    EXPECT_EQ(ComGuarded([]() -> HRESULT { throw std::runtime_error("x"); }), E_UNEXPECTED);
    EXPECT_EQ(ComGuarded([]() -> HRESULT { throw 1; }), E_UNEXPECTED);
}
