#pragma once

#include "toolkit/nwindow.h"

#include <functional>

// A window that tips belong to, shown at (300, 300), 200 by 100 pixels, with a
// child of 50 by 30 at (10, 10). It is above those of other programs, for tips
// ask what is under the cursor. `onAsked` runs at each message Asked.
class TipOwnerWindow : public NWindow {
public:
    static constexpr UINT Asked = WM_APP + 1;

    TipOwnerWindow() {
        Create(L"", {300, 300, 500, 400}, WS_POPUP | WS_VISIBLE, WS_EX_TOOLWINDOW | WS_EX_TOPMOST);
        child.Create(L"", {10, 10, 60, 40}, WS_CHILD | WS_VISIBLE, 0, hwnd);
    }
    ~TipOwnerWindow() override {
        child.Destroy();
        Destroy();
    }

    LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t* isHandled) override {
        if (message != Asked)
            return 0;
        ++asked;
        if (onAsked)
            onAsked();
        *isHandled = 1;
        return 1;
    }

    NWindow child;
    int asked = 0; // how often it got the message
    std::function<void()> onAsked;
};
