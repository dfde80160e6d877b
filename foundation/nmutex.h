#pragma once

#include "foundation/unique_handle.h"

// A mutex of the platform, recursive on one thread, and a flag that every
// taking through this object sets and every Unlock clears. Lock and Unlock are called on one
// thread; several threads may call them at a time.
class NMutex {
public:
    // Makes an unnamed mutex.
    NMutex();

    // Takes another mutex, named unless `name` is null; `alreadyExists` says
    // whether somebody else had made it. False if it couldn't be made.
    bool Create(const wchar_t* name, bool& alreadyExists);
    // Waits without limit. Takes nothing if Create couldn't make the mutex.
    void Lock();
    // Doesn't wait; true if the mutex is held now.
    bool TryLock();
    void Unlock();

    bool IsLocked() const { return locked_; }

private:
    UniqueKernelHandle handle_;
    bool locked_ = false; // written only while the mutex is held
};

// Holds a mutex to the end of a scope.
class NMutexLock {
public:
    explicit NMutexLock(NMutex& mutex) : mutex_(mutex) { mutex_.Lock(); }
    ~NMutexLock() { mutex_.Unlock(); }
    NMutexLock(const NMutexLock&) = delete;
    NMutexLock& operator=(const NMutexLock&) = delete;

private:
    NMutex& mutex_;
};
