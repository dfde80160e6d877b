#include "foundation/module_instance.h"
#include "shell/com_module.h"
#include "shell/exports.h"
#include "shell/shell_ids.h"

#include <gtest/gtest.h>

namespace {

class DllMainCalls : public testing::Test {
protected:
    ~DllMainCalls() override {
        NComModule().End();
        NSetModuleInstance(nullptr);
    }

    static HINSTANCE Instance(uintptr_t number) {
        return reinterpret_cast<HINSTANCE>(number << 16);
    }
};

} // namespace

TEST_F(DllMainCalls, StoreTheInstanceWhateverTheReason) {
    constexpr DWORD NoSuchReason = 77;
    uintptr_t number = 0x1000;
    for (DWORD reason : {DWORD{DLL_PROCESS_ATTACH}, DWORD{DLL_THREAD_ATTACH},
                         DWORD{DLL_THREAD_DETACH}, DWORD{DLL_PROCESS_DETACH}, NoSuchReason}) {
        HINSTANCE instance = Instance(++number);
        EXPECT_EQ(DllMain(instance, reason, nullptr), TRUE);
        EXPECT_EQ(NModuleInstance(), instance);
    }
}

TEST_F(DllMainCalls, ServeTheClassFromAttachToDetach) {
    EXPECT_EQ(NComModule().Find(CLSID_tNWIShell), nullptr);

    DllMain(Instance(1), DLL_PROCESS_ATTACH, nullptr);
    EXPECT_NE(NComModule().Find(CLSID_tNWIShell), nullptr);
    EXPECT_EQ(*NComModule().Library(), LIBID_TNWSHELLLib);
    EXPECT_EQ(NComModule().Objects().size(), 1u);
    DllMain(Instance(1), DLL_THREAD_ATTACH, nullptr);
    DllMain(Instance(1), DLL_THREAD_DETACH, nullptr);
    EXPECT_NE(NComModule().Find(CLSID_tNWIShell), nullptr);

    DllMain(Instance(1), DLL_PROCESS_DETACH, nullptr);
    EXPECT_EQ(NComModule().Find(CLSID_tNWIShell), nullptr);
}
