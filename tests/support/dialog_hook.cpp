#include "tests/support/dialog_hook.h"

#include <gtest/gtest.h>

#include <utility>

namespace {
constexpr UINT LongestMs = 30000;

thread_local DialogHook* current;

BOOL CALLBACK CancelDialog(HWND window, LPARAM) {
    constexpr ATOM dialogClass = 32770;
    if (GetClassLongPtrW(window, GCW_ATOM) == dialogClass)
        PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    return TRUE;
}
} // namespace

DialogHook::DialogHook(std::function<void(HWND)> opened) : opened_(std::move(opened)) {
    current = this;
    hook_.Reset(SetWindowsHookExW(WH_CALLWNDPROCRET, AfterMessage, nullptr, GetCurrentThreadId()));
    limit_.Reset(SetTimer(nullptr, 0, LongestMs, GiveUp));
}

DialogHook::~DialogHook() {
    current = nullptr;
}

LRESULT CALLBACK DialogHook::AfterMessage(int code, WPARAM wParam, LPARAM lParam) {
    auto* sent = reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    if (code == HC_ACTION && current && sent->message == WM_INITDIALOG)
        current->opened_(sent->hwnd);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void CALLBACK DialogHook::GiveUp(HWND, UINT, UINT_PTR, DWORD) {
    ADD_FAILURE() << "a dialog was not answered";
    EnumThreadWindows(GetCurrentThreadId(), CancelDialog, 0);
}
