#pragma once

#include "foundation/windows_lean.h"

#include <utility>

// Owner of one platform handle: move-only, freed at the end of the scope. The
// traits give the handle's type, its value for "none", and its freeing call:
//
//     struct FileTraits {
//         using Handle = HANDLE;
//         static Handle None() { return INVALID_HANDLE_VALUE; }
//         static void Free(Handle handle) { CloseHandle(handle); }
//     };
//
// Used on one thread at a time, as the handle itself allows.
template <typename Traits>
class UniqueHandle {
public:
    using Handle = typename Traits::Handle;

    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    Handle Get() const { return handle_; }
    explicit operator bool() const { return handle_ != Traits::None(); }

    // Gives the handle up to the caller, who frees it.
    Handle Release() { return std::exchange(handle_, Traits::None()); }

    // Frees the handle, and takes another.
    void Reset(Handle handle = Traits::None()) {
        Handle old = std::exchange(handle_, handle);
        if (old != Traits::None())
            Traits::Free(old);
    }

    // For calls that hand a handle out through a pointer: frees the present
    // one first.
    Handle* Put() {
        Reset();
        return &handle_;
    }

private:
    Handle handle_ = Traits::None();
};

// Kernel objects whose "none" is null: processes, threads, mutexes, events.
struct KernelHandleTraits {
    using Handle = HANDLE;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { CloseHandle(handle); }
};
using UniqueKernelHandle = UniqueHandle<KernelHandleTraits>;

// Files and directories opened by CreateFileW.
struct FileHandleTraits {
    using Handle = HANDLE;
    static Handle None() { return INVALID_HANDLE_VALUE; }
    static void Free(Handle handle) { CloseHandle(handle); }
};
using UniqueFileHandle = UniqueHandle<FileHandleTraits>;

// Directory scans by FindFirstFileW and its kin.
struct FindHandleTraits {
    using Handle = HANDLE;
    static Handle None() { return INVALID_HANDLE_VALUE; }
    static void Free(Handle handle) { FindClose(handle); }
};
using UniqueFindHandle = UniqueHandle<FindHandleTraits>;

struct RegKeyTraits {
    using Handle = HKEY;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { RegCloseKey(handle); }
};
using UniqueRegKey = UniqueHandle<RegKeyTraits>;

struct ModuleTraits {
    using Handle = HMODULE;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { FreeLibrary(handle); }
};
using UniqueModule = UniqueHandle<ModuleTraits>;

struct LocalMemoryTraits {
    using Handle = HLOCAL;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { LocalFree(handle); }
};
using UniqueLocalMemory = UniqueHandle<LocalMemoryTraits>;

struct GlobalMemoryTraits {
    using Handle = HGLOBAL;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { GlobalFree(handle); }
};
using UniqueGlobalMemory = UniqueHandle<GlobalMemoryTraits>;
