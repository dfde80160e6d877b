#include "foundation/nmutex.h"

namespace {
// True if the caller holds the mutex now. One whose owner ended without giving
// it back is held all the same.
bool Wait(HANDLE mutex, DWORD milliseconds) {
    DWORD result = WaitForSingleObject(mutex, milliseconds);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}
} // namespace

NMutex::NMutex() : handle_(CreateMutexW(nullptr, FALSE, nullptr)) {}

bool NMutex::Create(const wchar_t* name, bool& alreadyExists) {
    HANDLE mutex = CreateMutexW(nullptr, FALSE, name);
    alreadyExists = mutex && GetLastError() == ERROR_ALREADY_EXISTS;
    handle_.Reset(mutex);
    locked_ = false;
    return static_cast<bool>(handle_);
}

void NMutex::Lock() {
    if (Wait(handle_.Get(), INFINITE))
        locked_ = true;
}

bool NMutex::TryLock() {
    bool held = Wait(handle_.Get(), 0);
    if (held)
        locked_ = true;
    return held;
}

void NMutex::Unlock() {
    // Before the release, since after it the next holder writes the flag.
    locked_ = false;
    ReleaseMutex(handle_.Get());
}
