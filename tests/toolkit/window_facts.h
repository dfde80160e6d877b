#pragma once

#include "foundation/nmutex.h"
#include "foundation/windows_lean.h"
#include "tests/toolkit/test_resources.h"
#include "toolkit/gdi_owners.h"

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

using Calls = std::vector<std::string>;

inline constexpr RECT Place = {100, 80, 400, 280}; // of a test's window

inline bool Contains(const Calls& calls, const std::string& call) {
    return std::find(calls.begin(), calls.end(), call) != calls.end();
}

// An icon of 16 by 16 for its caller to destroy.
inline HICON MakeIcon() {
    return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_MARK),
                                         IMAGE_ICON, 16, 16, LR_DEFAULTCOLOR));
}

inline bool IsIcon(HICON icon) {
    ICONINFO parts = {};
    if (!icon || !GetIconInfo(icon, &parts))
        return false;
    UniqueBitmap mask(parts.hbmMask);
    UniqueBitmap colour(parts.hbmColor);
    return true;
}

// Whether another thread could take it: a mutex lets its own thread in.
inline bool IsFree(NMutex& mutex) {
    bool taken = false;
    std::thread([&] {
        taken = mutex.TryLock();
        if (taken)
            mutex.Unlock();
    }).join();
    return taken;
}

inline bool operator==(const RECT& a, const RECT& b) {
    return EqualRect(&a, &b);
}
