#pragma once

#include "foundation/windows_lean.h"

#include <unknwn.h>

#include <cstdint>
#include <span>

// One creatable class of the module.
struct ComObjectEntry {
    const CLSID* Clsid;
    // Makes an object, aggregated by `outer` unless that is null, and hands
    // out its interface `iid` as IClassFactory::CreateInstance does.
    HRESULT (*Create)(IUnknown* outer, REFIID iid, void** object);
    UINT RegistrarScript; // id of the resource of the type "REGISTRY"
};

// The COM support of the module: what it serves, and how much of it is in use.
//
// Start and End run in DllMain, under the loader's lock; between them the
// table and the ids don't change. The lock count may be moved on any thread:
// several apartments can hold objects of the module at once.
class ComModule {
public:
    constexpr ComModule() = default;
    ComModule(const ComModule&) = delete;
    ComModule& operator=(const ComModule&) = delete;

    // `objects` and `library` must outlive the module's use of them. The lock
    // count starts at 0.
    void Start(std::span<const ComObjectEntry> objects, const GUID& library);
    // No class is served from here on. The lock count stays as it is.
    void End();

    std::span<const ComObjectEntry> Objects() const { return objects_; }
    // The entry of a class, null if the module doesn't serve it.
    const ComObjectEntry* Find(REFCLSID clsid) const;
    // The LIBID of the module's type library, null outside Start and End.
    const GUID* Library() const { return library_; }

    void Lock() { InterlockedIncrement(&locks_); }
    void Unlock() { InterlockedDecrement(&locks_); }
    // Objects, class factories and LockServer calls that keep the module
    // loaded.
    int32_t LockCount() const { return locks_; }

private:
    std::span<const ComObjectEntry> objects_;
    const GUID* library_ = nullptr;
    volatile LONG locks_ = 0;
};

// The one of this module.
ComModule& NComModule();

// Holds the module loaded for as long as it exists.
class ComModuleLock {
public:
    ComModuleLock() { NComModule().Lock(); }
    ~ComModuleLock() { NComModule().Unlock(); }
    ComModuleLock(const ComModuleLock&) = delete;
    ComModuleLock& operator=(const ComModuleLock&) = delete;
};
