#include "foundation/nmutex.h"

NMutex::NMutex() : handle_(CreateMutexW(nullptr, FALSE, nullptr)) {}

bool NMutex::Create(const wchar_t* name, bool& alreadyExists) {
    handle_.Reset(CreateMutexW(nullptr, FALSE, name));
    alreadyExists = handle_ && GetLastError() == ERROR_ALREADY_EXISTS;
    locked_ = false;
    return static_cast<bool>(handle_);
}

void NMutex::Lock() {
    WaitForSingleObject(handle_.Get(), INFINITE);
    locked_ = true;
}

bool NMutex::TryLock() {
    DWORD result = WaitForSingleObject(handle_.Get(), 0);
    // An abandoned mutex is held all the same.
    bool held = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
    if (held)
        locked_ = true;
    return held;
}

void NMutex::Unlock() {
    // Before the release, since after it the next holder writes the flag.
    locked_ = false;
    ReleaseMutex(handle_.Get());
}
