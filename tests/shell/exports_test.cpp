#include "foundation/com_owners.h"
#include "foundation/module_instance.h"
#include "shell/com_module.h"
#include "shell/exports.h"
#include "shell/page_counters.h"
#include "shell/shell_ids.h"
#include "tests/shell/counted_allocations.h"
#include "tests/shell/loaded_module.h"

#include <gtest/gtest.h>

#include <shlobj.h>

namespace {

class Exports : public testing::Test {
protected:
    Exports() { DllMain(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr); }
    ~Exports() override {
        DllMain(GetModuleHandleW(nullptr), DLL_PROCESS_DETACH, nullptr);
        NSetModuleInstance(nullptr);
        audioPageReferences = idTagPageReferences = 0;
    }
};

} // namespace

TEST_F(Exports, GiveAFactoryForTheOneClass) {
    ComPtr<IClassFactory> factory;

    EXPECT_EQ(DllGetClassObject(CLSID_tNWIShell, IID_IClassFactory, factory.PutVoid()), S_OK);
    EXPECT_TRUE(factory);
}

TEST_F(Exports, RefuseAnyOtherClass) {
    void* factory = this;

    EXPECT_EQ(DllGetClassObject(IID_ItNWIShell, IID_IClassFactory, &factory),
              CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(factory, nullptr);
}

TEST_F(Exports, RefuseAnInterfaceThatAFactoryHasNot) {
    void* factory = this;

    EXPECT_EQ(DllGetClassObject(CLSID_tNWIShell, IID_IShellExtInit, &factory), E_NOINTERFACE);
    EXPECT_EQ(factory, nullptr);
}

TEST_F(Exports, RefuseANullPlaceForTheFactory) {
    EXPECT_EQ(DllGetClassObject(CLSID_tNWIShell, IID_IClassFactory, nullptr), E_POINTER);
}

TEST_F(Exports, LetTheModuleGoOnlyWhenItsLockCountIsZero) {
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
    NComModule().Lock();
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    NComModule().Unlock();
    EXPECT_EQ(DllCanUnloadNow(), S_OK);
}

TEST_F(Exports, LetTheModuleGoWhateverThePageCountersHold) {
    static_assert(sizeof audioPageReferences == 4 && sizeof idTagPageReferences == 4);
    EXPECT_NE(&audioPageReferences, &idTagPageReferences);
    audioPageReferences = 3;
    idTagPageReferences = 1;

    EXPECT_EQ(DllCanUnloadNow(), S_OK);
    NComModule().Lock();
    audioPageReferences = idTagPageReferences = 0;
    EXPECT_EQ(DllCanUnloadNow(), S_FALSE);
    NComModule().Unlock();
}

TEST_F(Exports, RegistrationReportsAFailedAllocation) {
    Apartment apartment;
    FailingAllocations failing(0);

    EXPECT_EQ(DllRegisterServer(), E_OUTOFMEMORY);
    EXPECT_EQ(DllUnregisterServer(), E_OUTOFMEMORY);
}
