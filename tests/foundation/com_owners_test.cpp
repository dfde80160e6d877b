#include "foundation/com_owners.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace {

class CountedObject final : public IUnknown {
public:
    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++Count; }
    STDMETHODIMP_(ULONG) Release() override { return --Count; }

    ULONG Count = 1;
};

STGMEDIUM MediumOf(DWORD kind, HGLOBAL block, IUnknown* owner) {
    STGMEDIUM medium = {};
    medium.tymed = kind;
    medium.hGlobal = block;
    medium.pUnkForRelease = owner;
    return medium;
}

} // namespace

TEST(ComPtr, GivesItsReferenceBackOnce) {
    CountedObject object;
    {
        ComPtr<IUnknown> first(&object);
        ComPtr<IUnknown> second(std::move(first));
        EXPECT_EQ(object.Count, 1u);
        EXPECT_EQ(second->AddRef(), 2u);
    }
    EXPECT_EQ(object.Count, 1u);
}

TEST(ComPtr, OwnsWhatACallWritesThroughItsPlace) {
    CountedObject object;
    {
        ComPtr<IUnknown> owner;
        *owner.PutVoid() = static_cast<IUnknown*>(&object);
        EXPECT_EQ(owner.Get(), &object);
    }
    EXPECT_EQ(object.Count, 0u);
}

TEST(StorageMedium, IsReleasedAtTheEndOfTheScope) {
    CountedObject owner;
    HGLOBAL block = GlobalAlloc(GHND, 4);
    {
        StorageMedium medium(MediumOf(TYMED_HGLOBAL, block, &owner));
        EXPECT_EQ(medium.Global(), block);
        EXPECT_EQ(owner.Count, 1u);
    }
    EXPECT_EQ(owner.Count, 0u);
    EXPECT_EQ(GlobalFree(block), nullptr) << "a block with an owner was freed";
}

TEST(StorageMedium, HasAGlobalHandleOnlyIfItIsOfThatKind) {
    CountedObject owner;
    StorageMedium medium(MediumOf(TYMED_NULL, &owner, nullptr));
    EXPECT_EQ(medium.Global(), nullptr);
}

TEST(GlobalMemoryLock, HoldsTheBlockLockedForItsScope) {
    HGLOBAL block = GlobalAlloc(GHND, 4);
    {
        GlobalMemoryLock lock(block);
        EXPECT_TRUE(lock);
        EXPECT_EQ(GlobalFlags(block) & GMEM_LOCKCOUNT, 1u);
        memcpy(lock.Bytes(), "abc", 4);
    }
    EXPECT_EQ(GlobalFlags(block) & GMEM_LOCKCOUNT, 0u);
    EXPECT_STREQ(static_cast<char*>(GlobalMemoryLock(block).Bytes()), "abc");
    GlobalFree(block);
}

TEST(GlobalMemoryLock, OfABlockThatCantBeLockedIsFalse) {
    GlobalMemoryLock none(nullptr);
    EXPECT_FALSE(none);
    EXPECT_EQ(none.Bytes(), nullptr);
}
