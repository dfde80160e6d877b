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
decltype(&IsDialogMessageW) __wrap___imp_IsDialogMessageW = [](HWND dialog, MSG* message) {
    return __real___imp_IsDialogMessageW(dialog, message);
};
decltype(&GetDeviceCaps) __wrap___imp_GetDeviceCaps = [](HDC dc, int index) {
    return __real___imp_GetDeviceCaps(dc, index);
};
decltype(&CreateCompatibleBitmap) __wrap___imp_CreateCompatibleBitmap = [](HDC dc, int width,
                                                                           int height) {
    return __real___imp_CreateCompatibleBitmap(dc, width, height);
};
decltype(&CreateBrushIndirect) __wrap___imp_CreateBrushIndirect = [](const LOGBRUSH* form) {
    return __real___imp_CreateBrushIndirect(form);
};
decltype(&CreatePen) __wrap___imp_CreatePen = [](int style, int width, COLORREF colour) {
    return __real___imp_CreatePen(style, width, colour);
};
decltype(&CreateFontIndirectW) __wrap___imp_CreateFontIndirectW = [](const LOGFONTW* form) {
    return __real___imp_CreateFontIndirectW(form);
};
decltype(&ShellExecuteW) __wrap___imp_ShellExecuteW =
    [](HWND window, const wchar_t* verb, const wchar_t* file, const wchar_t* arguments,
       const wchar_t* folder, int show) {
        return __real___imp_ShellExecuteW(window, verb, file, arguments, folder, show);
    };
decltype(&MessageBeep) __wrap___imp_MessageBeep = [](UINT kind) {
    return __real___imp_MessageBeep(kind);
};
}

void ResetWatchedCalls() {
    __wrap___imp_DefWindowProcW = __real___imp_DefWindowProcW;
    __wrap___imp_GetMessageW = __real___imp_GetMessageW;
    __wrap___imp_KillTimer = __real___imp_KillTimer;
    __wrap___imp_DestroyWindow = __real___imp_DestroyWindow;
    __wrap___imp_UnregisterClassW = __real___imp_UnregisterClassW;
    __wrap___imp_RegisterClassExW = __real___imp_RegisterClassExW;
    __wrap___imp_IsDialogMessageW = __real___imp_IsDialogMessageW;
    __wrap___imp_GetDeviceCaps = __real___imp_GetDeviceCaps;
    __wrap___imp_CreateCompatibleBitmap = __real___imp_CreateCompatibleBitmap;
    __wrap___imp_CreateBrushIndirect = __real___imp_CreateBrushIndirect;
    __wrap___imp_CreatePen = __real___imp_CreatePen;
    __wrap___imp_CreateFontIndirectW = __real___imp_CreateFontIndirectW;
    __wrap___imp_ShellExecuteW = __real___imp_ShellExecuteW;
    __wrap___imp_MessageBeep = __real___imp_MessageBeep;
}
