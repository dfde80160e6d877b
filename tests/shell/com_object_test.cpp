#include "foundation/com_owners.h"
#include "shell/com_object.h"
#include "tests/shell/counted_allocations.h"
#include "tests/shell/fake_data_object.h"

#include <gtest/gtest.h>

namespace {

int alive = 0;
int locksAtTheEnd = 0;

// A class with one interface, and with a look at its own end.
class Sample : public IPersist, public ComCounted, public ComCreatable<Sample> {
public:
    IUnknown* FindInterface(REFIID iid) {
        bool known = iid == IID_IUnknown || iid == IID_IPersist;
        return known ? static_cast<IPersist*>(this) : nullptr;
    }
    STDMETHODIMP GetClassID(CLSID*) override { return E_NOTIMPL; }

protected:
    Sample() { ++alive; }
    ~Sample() {
        --alive;
        locksAtTheEnd = NComModule().LockCount();
    }
};

class ComObjectSupport : public testing::Test {
protected:
    ComObjectSupport() : locksBefore(NComModule().LockCount()) { alive = 0; }

    int32_t Locks() const { return NComModule().LockCount() - locksBefore; }

    int32_t locksBefore;
};

} // namespace

TEST_F(ComObjectSupport, AnObjectLivesUntilItsLastReferenceGoes) {
    IPersist* object = nullptr;
    ASSERT_EQ(Sample::CreateInstance(nullptr, IID_IPersist, reinterpret_cast<void**>(&object)),
              S_OK);

    EXPECT_EQ(alive, 1);
    EXPECT_EQ(object->AddRef(), 2u);
    EXPECT_EQ(object->Release(), 1u);
    EXPECT_EQ(alive, 1);
    EXPECT_EQ(object->Release(), 0u);
    EXPECT_EQ(alive, 0);
}

TEST_F(ComObjectSupport, AnObjectHoldsTheModuleUntilItIsGone) {
    ComPtr<IPersist> object;
    ASSERT_EQ(Sample::CreateInstance(nullptr, IID_IPersist, object.PutVoid()), S_OK);
    EXPECT_EQ(Locks(), 1);

    object.Reset();
    EXPECT_EQ(Locks(), 0);
    EXPECT_EQ(locksAtTheEnd - locksBefore, 1) << "the lock went before the object";
}

TEST_F(ComObjectSupport, AnAggregatedObjectHoldsTheModuleUntilItIsGone) {
    CountedUnknown outer;
    ComPtr<IUnknown> inner;
    ASSERT_EQ(Sample::CreateInstance(&outer, IID_IUnknown, inner.PutVoid()), S_OK);
    EXPECT_EQ(Locks(), 1);

    inner.Reset();
    EXPECT_EQ(Locks(), 0);
    EXPECT_EQ(locksAtTheEnd - locksBefore, 1) << "the lock went before the object";
}

TEST_F(ComObjectSupport, AnObjectWithoutTheInterfaceAskedForIsNotLeftBehind) {
    void* object = this;

    EXPECT_EQ(Sample::CreateInstance(nullptr, IID_IStream, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(Locks(), 0);
}

TEST_F(ComObjectSupport, NothingIsMadeWithoutAPlaceForIt) {
    EXPECT_EQ(Sample::CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(alive, 0);
}

TEST_F(ComObjectSupport, AFailedAllocationIsOutOfMemoryAndLeavesTheModuleFree) {
    void* object = this;
    CountedUnknown outer;
    {
        FailingAllocations failing(0);
        EXPECT_EQ(Sample::CreateInstance(nullptr, IID_IUnknown, &object), E_OUTOFMEMORY);
        EXPECT_EQ(Sample::CreateInstance(&outer, IID_IUnknown, &object), E_OUTOFMEMORY);
    }

    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(Locks(), 0);
}

TEST_F(ComObjectSupport, AnOuterObjectMustAskForIUnknown) {
    CountedUnknown outer;
    void* object = this;

    EXPECT_EQ(Sample::CreateInstance(&outer, IID_IPersist, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(alive, 0);
}

TEST_F(ComObjectSupport, AnAggregatedInterfaceShowsTheIdentityAndTheCountOfTheOuterObject) {
    CountedUnknown outer;
    ComPtr<IUnknown> inner;
    ASSERT_EQ(Sample::CreateInstance(&outer, IID_IUnknown, inner.PutVoid()), S_OK);
    EXPECT_EQ(outer.Count, 1u) << "an inner object that holds its outer one never goes";
    EXPECT_NE(inner.Get(), &outer);

    ComPtr<IPersist> shown;
    ASSERT_EQ(inner->QueryInterface(IID_IPersist, shown.PutVoid()), S_OK);
    EXPECT_EQ(outer.Count, 2u);

    ComPtr<IUnknown> identity;
    ASSERT_EQ(shown->QueryInterface(IID_IUnknown, identity.PutVoid()), S_OK);
    EXPECT_EQ(identity.Get(), &outer);
    EXPECT_EQ(outer.Count, 3u);

    shown.Reset();
    identity.Reset();
    EXPECT_EQ(outer.Count, 1u);
    EXPECT_EQ(alive, 1);
    inner.Reset();
    EXPECT_EQ(alive, 0);
}

TEST_F(ComObjectSupport, TheInnerUnknownHasACountAndAnIdentityOfItsOwn) {
    CountedUnknown outer;
    ComPtr<IUnknown> inner;
    ASSERT_EQ(Sample::CreateInstance(&outer, IID_IUnknown, inner.PutVoid()), S_OK);

    ComPtr<IUnknown> again;
    EXPECT_EQ(inner->QueryInterface(IID_IUnknown, again.PutVoid()), S_OK);
    EXPECT_EQ(again.Get(), inner.Get());
    void* object = this;
    EXPECT_EQ(inner->QueryInterface(IID_IStream, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(outer.Count, 1u);
}
