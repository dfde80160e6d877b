#pragma once

#include "foundation/unique_handle.h"

#include <functional>

// Calls `opened` for each dialog of this thread, message boxes and the
// platform's own dialogs among them, when it is all set up and before it is
// shown. One at a time on a thread. What `opened` posts to the dialog reaches
// it in its own loop, so a dialog can be answered without a second thread. One
// that is still open half a minute on fails the test and is cancelled.
class DialogHook {
public:
    explicit DialogHook(std::function<void(HWND dialog)> opened);
    ~DialogHook();
    DialogHook(const DialogHook&) = delete;
    DialogHook& operator=(const DialogHook&) = delete;

private:
    static LRESULT CALLBACK AfterMessage(int code, WPARAM wParam, LPARAM lParam);
    static void CALLBACK GiveUp(HWND, UINT, UINT_PTR, DWORD);

    struct HookTraits {
        using Handle = HHOOK;
        static Handle None() { return nullptr; }
        static void Free(Handle handle) { UnhookWindowsHookEx(handle); }
    };

    struct TimerTraits {
        using Handle = UINT_PTR;
        static Handle None() { return 0; }
        static void Free(Handle handle) { KillTimer(nullptr, handle); }
    };

    std::function<void(HWND)> opened_;
    UniqueHandle<HookTraits> hook_;
    UniqueHandle<TimerTraits> limit_;
};
