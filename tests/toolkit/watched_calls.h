#pragma once

#include "foundation/windows_lean.h"

#include <shellapi.h>

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
extern decltype(&IsDialogMessageW) __wrap___imp_IsDialogMessageW;
extern decltype(&GetDeviceCaps) __wrap___imp_GetDeviceCaps;
extern decltype(&CreateCompatibleBitmap) __wrap___imp_CreateCompatibleBitmap;
extern decltype(&CreateBrushIndirect) __wrap___imp_CreateBrushIndirect;
extern decltype(&CreatePen) __wrap___imp_CreatePen;
extern decltype(&CreateFontIndirectW) __wrap___imp_CreateFontIndirectW;
extern decltype(&ShellExecuteW) __wrap___imp_ShellExecuteW;
extern decltype(&MessageBeep) __wrap___imp_MessageBeep;

extern decltype(&DefWindowProcW) __real___imp_DefWindowProcW;
extern decltype(&GetMessageW) __real___imp_GetMessageW;
extern decltype(&KillTimer) __real___imp_KillTimer;
extern decltype(&DestroyWindow) __real___imp_DestroyWindow;
extern decltype(&UnregisterClassW) __real___imp_UnregisterClassW;
extern decltype(&RegisterClassExW) __real___imp_RegisterClassExW;
extern decltype(&IsDialogMessageW) __real___imp_IsDialogMessageW;
extern decltype(&GetDeviceCaps) __real___imp_GetDeviceCaps;
extern decltype(&CreateCompatibleBitmap) __real___imp_CreateCompatibleBitmap;
extern decltype(&CreateBrushIndirect) __real___imp_CreateBrushIndirect;
extern decltype(&CreatePen) __real___imp_CreatePen;
extern decltype(&CreateFontIndirectW) __real___imp_CreateFontIndirectW;
extern decltype(&ShellExecuteW) __real___imp_ShellExecuteW;
extern decltype(&MessageBeep) __real___imp_MessageBeep;
}

void ResetWatchedCalls();

struct WatchedCalls {
    WatchedCalls() = default;
    WatchedCalls(const WatchedCalls&) = delete;
    WatchedCalls& operator=(const WatchedCalls&) = delete;
    ~WatchedCalls() { ResetWatchedCalls(); }
};
