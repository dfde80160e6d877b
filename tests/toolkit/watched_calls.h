#pragma once

#include "foundation/windows_lean.h"

// Calls of the platform that the linker has go through a pointer, so that a
// test can look on or step in. Each name here is named in CMakeLists.txt.
// A replacement holds until ResetWatchedCalls; the platform's own calls of
// these functions don't pass here.
extern "C" {
extern decltype(&DefWindowProcW) __wrap___imp_DefWindowProcW;
extern decltype(&GetMessageW) __wrap___imp_GetMessageW;
extern decltype(&KillTimer) __wrap___imp_KillTimer;
extern decltype(&DestroyWindow) __wrap___imp_DestroyWindow;
extern decltype(&UnregisterClassW) __wrap___imp_UnregisterClassW;
extern decltype(&RegisterClassExW) __wrap___imp_RegisterClassExW;

extern decltype(&DefWindowProcW) __real___imp_DefWindowProcW;
extern decltype(&GetMessageW) __real___imp_GetMessageW;
extern decltype(&KillTimer) __real___imp_KillTimer;
extern decltype(&DestroyWindow) __real___imp_DestroyWindow;
extern decltype(&UnregisterClassW) __real___imp_UnregisterClassW;
extern decltype(&RegisterClassExW) __real___imp_RegisterClassExW;
}

void ResetWatchedCalls();

struct WatchedCalls {
    WatchedCalls() = default;
    WatchedCalls(const WatchedCalls&) = delete;
    WatchedCalls& operator=(const WatchedCalls&) = delete;
    ~WatchedCalls() { ResetWatchedCalls(); }
};
