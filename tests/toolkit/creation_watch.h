#pragma once

#include "foundation/windows_lean.h"
#include "tests/toolkit/list_dialog.h"

#include <string>
#include <vector>

// How a window was asked for.
struct Creation {
    std::wstring windowClass;
    std::wstring title;
    DWORD style = 0;
    DWORD exStyle = 0;
    RECT place = {};
    LONG_PTR id = 0; // while it is made
    HWND window = nullptr;
};

// Notes the windows that this thread makes in `parent`; those of the class
// `refused` can't be made. One at a time.
class CreationWatch {
public:
    explicit CreationWatch(HWND parent, std::wstring refused = {})
        : parent_(parent), refused_(std::move(refused)),
          hook_(SetWindowsHookExW(WH_CBT, OnHook, nullptr, GetCurrentThreadId())) {
        current_ = this;
    }
    ~CreationWatch() {
        UnhookWindowsHookEx(hook_);
        current_ = nullptr;
    }
    CreationWatch(const CreationWatch&) = delete;
    CreationWatch& operator=(const CreationWatch&) = delete;

    std::vector<Creation> made;

private:
    static LRESULT CALLBACK OnHook(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HCBT_CREATEWND &&
            current_->IsRefused(reinterpret_cast<HWND>(wParam),
                                *reinterpret_cast<const CBT_CREATEWNDW*>(lParam)->lpcs))
            return 1;
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    bool IsRefused(HWND window, const CREATESTRUCTW& record) {
        if (record.hwndParent != parent_)
            return false;
        made.push_back({ClassOf(window),
                        record.lpszName ? record.lpszName : L"",
                        static_cast<DWORD>(record.style),
                        record.dwExStyle & ~static_cast<DWORD>(WS_EX_NOPARENTNOTIFY),
                        {record.x, record.y, record.x + record.cx, record.y + record.cy},
                        GetWindowLongW(window, GWL_ID),
                        window});
        return made.back().windowClass == refused_;
    }

    static inline CreationWatch* current_ = nullptr;
    HWND parent_;
    std::wstring refused_;
    HHOOK hook_;
};
