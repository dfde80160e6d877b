#include "tests/toolkit/watched_calls.h"

// Passes on, since the real pointers aren't known before the program is loaded.
extern "C" {
decltype(&DefWindowProcW) __wrap___imp_DefWindowProcW = [](HWND window, UINT message, WPARAM wParam,
                                                           LPARAM lParam) {
    return __real___imp_DefWindowProcW(window, message, wParam, lParam);
};
decltype(&GetMessageW) __wrap___imp_GetMessageW = [](MSG* message, HWND window, UINT first,
                                                     UINT last) {
    return __real___imp_GetMessageW(message, window, first, last);
};
decltype(&KillTimer) __wrap___imp_KillTimer = [](HWND window, UINT_PTR id) {
    return __real___imp_KillTimer(window, id);
};
decltype(&DestroyWindow) __wrap___imp_DestroyWindow = [](HWND window) {
    return __real___imp_DestroyWindow(window);
};
decltype(&UnregisterClassW) __wrap___imp_UnregisterClassW = [](const wchar_t* name,
                                                               HINSTANCE module) {
    return __real___imp_UnregisterClassW(name, module);
};
decltype(&RegisterClassExW) __wrap___imp_RegisterClassExW = [](const WNDCLASSEXW* record) {
    return __real___imp_RegisterClassExW(record);
};
}

void ResetWatchedCalls() {
    __wrap___imp_DefWindowProcW = __real___imp_DefWindowProcW;
    __wrap___imp_GetMessageW = __real___imp_GetMessageW;
    __wrap___imp_KillTimer = __real___imp_KillTimer;
    __wrap___imp_DestroyWindow = __real___imp_DestroyWindow;
    __wrap___imp_UnregisterClassW = __real___imp_UnregisterClassW;
    __wrap___imp_RegisterClassExW = __real___imp_RegisterClassExW;
}
