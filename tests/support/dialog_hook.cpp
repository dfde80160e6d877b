#include "tests/support/dialog_hook.h"

#include <utility>

namespace {
thread_local DialogHook* current;
}

DialogHook::DialogHook(std::function<void(HWND)> opened) : opened_(std::move(opened)) {
    current = this;
    hook_.Reset(SetWindowsHookExW(WH_CALLWNDPROCRET, AfterMessage, nullptr, GetCurrentThreadId()));
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
