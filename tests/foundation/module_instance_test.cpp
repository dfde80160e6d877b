#include "foundation/module_instance.h"

#include <gtest/gtest.h>

TEST(ModuleInstance, IsTheProgramsOwnUntilItIsSet) {
    EXPECT_EQ(NModuleInstance(), GetModuleHandleW(nullptr));
}

TEST(ModuleInstance, IsTheOneThatWasSetLast) {
    NSetModuleInstance(reinterpret_cast<HINSTANCE>(uintptr_t{0x10000}));
    NSetModuleInstance(reinterpret_cast<HINSTANCE>(uintptr_t{0x20000}));
    EXPECT_EQ(NModuleInstance(), reinterpret_cast<HINSTANCE>(uintptr_t{0x20000}));
    NSetModuleInstance(nullptr);
    EXPECT_EQ(NModuleInstance(), GetModuleHandleW(nullptr));
}
