#pragma once

#include "foundation/nlists.h"
#include "foundation/nmutex.h"
#include "toolkit/nbutton.h"

#include <cstdint>

// The buttons of one dialog, and the timer that keeps their hover look true.
// The owner passes every message of its own to OnParentMessage, calls Start
// before the first Add, and Destroy at WM_DESTROY, while the window still
// stands. The buttons are the owner's. All of it belongs to the owner window's
// thread.
//
// A click, a repeat or a command of a menu may destroy the window and with it
// the bar's buttons. But bar and buttons themselves have to outlive
// OnParentMessage: it goes on with them.
class NButtonBar {
public:
    NButtonBar() = default;
    NButtonBar(const NButtonBar&) = delete;
    NButtonBar& operator=(const NButtonBar&) = delete;

    // Sets the timer on `ownerWindow`.
    void Start(HWND ownerWindow);
    // Loads the strip from the bitmap `bitmapId` of `module` (null for the host
    // process) and makes the button's window. A strip that can't be loaded makes
    // a button of no size, which shows nothing. Not for one that the bar has
    // already.
    void Add(NButton& button, const NButtonSpec& spec, int bitmapId, int64_t userValue,
             HINSTANCE module);
    // Stops the timer, ends partnerships, destroys the buttons and forgets
    // them. May be called again.
    void Destroy();

    // To be run for each message of the owner's before anything else is; when
    // `*handled` comes back set, the result is the message's, and nothing else
    // is to follow. While it runs, on whatever bar and thread of the process, all
    // messages but WM_DRAWITEM pass by unhandled. A release that does so is
    // lost: the button is held until the next one. That is wanted.
    LRESULT OnParentMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                            int32_t* handled);

    UINT_PTR timerId = 0; // 0 when not started
    uint32_t tick = 0;
    NPtrList buttons; // of NButton
    NMutex lock;      // guards `buttons`, and is held through OnClick and OnRepeat
    HWND owner = nullptr;

private:
    using HeldFlag = bool NButton::*;

    LRESULT Filter(UINT message, WPARAM wParam, LPARAM lParam, int32_t* handled);
    bool OnPress(HeldFlag held);
    void OnRelease(HeldFlag held, bool isRight);
    LRESULT OnDrawItem(const DRAWITEMSTRUCT& item, int32_t* handled);
    void OnTick();
    void UpdateStates();
    NButton* ButtonAt(int index) const { return static_cast<NButton*>(buttons.At(index)); }
    NButton* ButtonOf(HWND window) const;
    NButton* HoveredButton() const;
};
