#include "foundation/com_owners.h"
#include "shell/class_factory.h"
#include "shell/shell_object.h"
#include "tests/shell/counted_allocations.h"
#include "tests/shell/fake_data_object.h"

#include <gtest/gtest.h>

namespace {

constexpr ComObjectEntry Entry = {&CLSID_tNWIShell, &CtNWIShell::CreateInstance, 101};

class ClassFactorySupport : public testing::Test {
protected:
    ClassFactorySupport() : locksBefore(NComModule().LockCount()) {
        EXPECT_EQ(NMakeClassFactory(Entry, IID_IClassFactory, factory.PutVoid()), S_OK);
    }

    int32_t Locks() const { return NComModule().LockCount() - locksBefore; }

    int32_t locksBefore;
    ComPtr<IClassFactory> factory;
};

} // namespace

TEST_F(ClassFactorySupport, MakesTheClassOfItsEntry) {
    ComPtr<IShellExtInit> object;

    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IShellExtInit, object.PutVoid()), S_OK);
    EXPECT_TRUE(object);
}

TEST_F(ClassFactorySupport, PassesTheOuterObjectOn) {
    CountedUnknown outer;
    void* object = this;
    ComPtr<IUnknown> inner;

    EXPECT_EQ(factory->CreateInstance(&outer, IID_IShellExtInit, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->CreateInstance(&outer, IID_IUnknown, inner.PutVoid()), S_OK);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ClassFactorySupport, HoldsTheModuleUntilItIsGone) {
    EXPECT_EQ(Locks(), 1);
    factory.Reset();
    EXPECT_EQ(Locks(), 0);
}

TEST_F(ClassFactorySupport, ItsObjectsHoldTheModuleWithoutIt) {
    ComPtr<IUnknown> object;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.PutVoid()), S_OK);
    factory.Reset();
    EXPECT_EQ(Locks(), 1);
    object.Reset();
    EXPECT_EQ(Locks(), 0);
}

TEST_F(ClassFactorySupport, LocksAndUnlocksTheServer) {
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    EXPECT_EQ(Locks(), 3);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(factory->LockServer(FALSE), S_OK);
    EXPECT_EQ(Locks(), 1);
}

TEST_F(ClassFactorySupport, IsAClassFactoryAndNothingElse) {
    ComPtr<IUnknown> identity;
    ComPtr<IUnknown> again;
    void* object = this;

    EXPECT_EQ(factory->QueryInterface(IID_IUnknown, identity.PutVoid()), S_OK);
    EXPECT_EQ(identity->QueryInterface(IID_IClassFactory, again.PutVoid()), S_OK);
    EXPECT_EQ(again.Get(), identity.Get());
    EXPECT_EQ(factory->QueryInterface(IID_IShellExtInit, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

TEST_F(ClassFactorySupport, AFactoryThatCantBeMadeLeavesTheModuleFree) {
    factory.Reset();
    void* object = this;

    EXPECT_EQ(NMakeClassFactory(Entry, IID_IShellExtInit, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(NMakeClassFactory(Entry, IID_IUnknown, nullptr), E_POINTER);
    {
        FailingAllocations failing(0);
        EXPECT_EQ(NMakeClassFactory(Entry, IID_IUnknown, &object), E_OUTOFMEMORY);
    }
    EXPECT_EQ(Locks(), 0);
}
