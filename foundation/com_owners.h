#pragma once

#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"

#include <objidl.h>
#include <ole2.h>

// Owner of one reference on a COM interface: `Get`, `Put`, `Release` and
// `Reset` as in UniqueHandle. (Release gives the reference up to the caller.)
template <typename Interface>
struct ComReferenceTraits {
    using Handle = Interface*;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { handle->Release(); }
};

template <typename Interface>
class ComPtr : public UniqueHandle<ComReferenceTraits<Interface>> {
public:
    using UniqueHandle<ComReferenceTraits<Interface>>::UniqueHandle;
    Interface* operator->() const { return this->Get(); }
    void** PutVoid() { return reinterpret_cast<void**>(this->Put()); }
};

// Owner of what IDataObject::GetData filled in.
class StorageMedium {
public:
    explicit StorageMedium(STGMEDIUM filled) : medium_(filled) {}
    ~StorageMedium() { ReleaseStgMedium(&medium_); }
    StorageMedium(const StorageMedium&) = delete;
    StorageMedium& operator=(const StorageMedium&) = delete;

    // The global handle, null if the medium is of another kind.
    HGLOBAL Global() const { return medium_.tymed == TYMED_HGLOBAL ? medium_.hGlobal : nullptr; }

private:
    STGMEDIUM medium_;
};

// Keeps a global memory block locked. Tests as false, and unlocks nothing, if
// the block can't be locked.
class GlobalMemoryLock {
public:
    explicit GlobalMemoryLock(HGLOBAL block) : block_(block), bytes_(GlobalLock(block)) {}
    ~GlobalMemoryLock() {
        if (bytes_)
            GlobalUnlock(block_);
    }
    GlobalMemoryLock(const GlobalMemoryLock&) = delete;
    GlobalMemoryLock& operator=(const GlobalMemoryLock&) = delete;

    explicit operator bool() const { return bytes_ != nullptr; }
    void* Bytes() const { return bytes_; }

private:
    HGLOBAL block_;
    void* bytes_;
};
