#include "toolkit/nbuttonbar.h"

#include "toolkit/filter_turn.h"

namespace {
constexpr UINT_PTR BarTimerId = 7787;
constexpr UINT BarTimerMs = 50;

// Wanted: one flag for all bars of the process, on whatever thread.
constinit std::atomic<bool> filterRuns = false;
} // namespace

void NButtonBar::Start(HWND ownerWindow) {
    owner = ownerWindow;
    timerId = BarTimerId;
    SetTimer(owner, timerId, BarTimerMs, nullptr);
}

void NButtonBar::Add(NButton& button, const NButtonSpec& spec, int bitmapId, int64_t userValue,
                     HINSTANCE module) {
    button.Destroy();
    button.module = module;
    button.strip.LoadResource(bitmapId, module);
    button.Create(spec, userValue, owner);
    NMutexLock turn(lock);
    buttons.Add(&button);
}

void NButtonBar::Destroy() {
    if (timerId)
        KillTimer(owner, timerId);
    timerId = 0;
    NMutexLock turn(lock);
    for (int index = 0; index < buttons.Count; ++index)
        ButtonAt(index)->ClearPartner();
    for (int index = 0; index < buttons.Count; ++index)
        ButtonAt(index)->Destroy();
    buttons.Clear();
}

LRESULT NButtonBar::OnParentMessage(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                    int32_t* handled) {
    *handled = 0;
    FilterTurn turn(filterRuns);
    // Buttons are drawn also while one of them runs its click.
    if (!turn.IsTaken() && message != WM_DRAWITEM)
        return 0;
    return Filter(message, wParam, lParam, handled);
}

LRESULT NButtonBar::Filter(UINT message, WPARAM wParam, LPARAM lParam, int32_t* handled) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        *handled = OnPress(&NButton::leftDown);
        return 0;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
        *handled = OnPress(&NButton::rightDown);
        return 0;
    case WM_LBUTTONUP:
        OnRelease(&NButton::leftDown, false);
        return 0;
    case WM_RBUTTONUP:
        OnRelease(&NButton::rightDown, true);
        return 0;
    case WM_DRAWITEM:
        return OnDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam), handled);
    case WM_TIMER:
        if (timerId && wParam == timerId) {
            *handled = 1;
            OnTick();
        }
        return 0;
    case WM_MOUSEMOVE:
        UpdateStates();
        return 0;
    default:
        return 0;
    }
}

bool NButtonBar::OnPress(HeldFlag held) {
    NMutexLock turn(lock);
    NButton* button = HoveredButton();
    if (!button)
        return false;
    button->*held = true;
    UpdateStates();
    if (button->ShowMenu(owner)) {
        button->*held = false;
    } else {
        SetFocus(button->window);
        SetCapture(owner);
    }
    UpdateStates();
    return true;
}

void NButtonBar::OnRelease(HeldFlag held, bool isRight) {
    ReleaseCapture();
    NMutexLock turn(lock);
    // The count is read anew each time: a click may destroy the bar's buttons.
    for (int index = 0; index < buttons.Count; ++index) {
        NButton& button = *ButtonAt(index);
        if (!(button.*held))
            continue;
        button.*held = false;
        if (button.IsDown())
            button.OnClick(isRight);
    }
    UpdateStates();
}

LRESULT NButtonBar::OnDrawItem(const DRAWITEMSTRUCT& item, int32_t* handled) {
    NMutexLock turn(lock);
    NButton* button = ButtonOf(item.hwndItem);
    if (!button)
        return 0;
    button->Paint(item.hDC, button->state, true);
    *handled = 1;
    return 1;
}

void NButtonBar::OnTick() {
    NMutexLock turn(lock);
    for (int index = 0; index < buttons.Count; ++index) {
        NButton& button = *ButtonAt(index);
        if (button.IsDown())
            button.OnRepeat(!button.leftDown && !button.keyDown);
    }
    ++tick;
    if (tick % 2 == 0)
        UpdateStates();
}

void NButtonBar::UpdateStates() {
    NMutexLock turn(lock);
    const NButton* hovered = HoveredButton();
    for (int index = 0; index < buttons.Count; ++index) {
        NButton& button = *ButtonAt(index);
        const bool active =
            button.keyDown || (hovered && (hovered == &button || hovered == button.partner));
        int32_t state = ButtonIdle;
        if (active && button.IsEnabled())
            state = button.IsHeld() ? ButtonPressed : ButtonHovered;
        button.Paint(nullptr, state, false);
    }
}

NButton* NButtonBar::ButtonOf(HWND window) const {
    // A button without a window is not the one that was asked for.
    for (int index = 0; window && index < buttons.Count; ++index)
        if (ButtonAt(index)->window == window)
            return ButtonAt(index);
    return nullptr;
}

NButton* NButtonBar::HoveredButton() const {
    POINT cursor = {};
    if (!GetCursorPos(&cursor) || !ScreenToClient(owner, &cursor))
        return nullptr;
    NButton* button = ButtonOf(ChildWindowFromPointEx(owner, cursor, CWP_SKIPINVISIBLE));
    return button && IsWindowVisible(button->window) ? button : nullptr;
}
