#pragma once

#include "foundation/windows_lean.h"

// Gives this process a priority class for the time of a test.
class ScopedPriority {
public:
    explicit ScopedPriority(DWORD priority) : old_(GetPriorityClass(GetCurrentProcess())) {
        SetPriorityClass(GetCurrentProcess(), priority);
    }
    ~ScopedPriority() { SetPriorityClass(GetCurrentProcess(), old_); }
    ScopedPriority(const ScopedPriority&) = delete;
    ScopedPriority& operator=(const ScopedPriority&) = delete;

private:
    DWORD old_;
};
