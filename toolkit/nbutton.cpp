#include "toolkit/nbutton.h"

#include "foundation/unique_handle.h"
#include "toolkit/device_contexts.h"

#include <bit>
#include <utility>

namespace {
constexpr int NormalFrame = 0;
constexpr int DownFrame = 1;
constexpr int FixedFrames = 2; // normal and down
// In the order of their frames, since a lower flag's frame stands further left.
constexpr int32_t OptionalFrames = ButtonHover | ButtonFocus | ButtonDisabled | ButtonHotDown;

struct MenuTraits {
    using Handle = HMENU;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyMenu(handle); }
};

int CountFrames(int32_t flags) {
    return std::popcount(static_cast<uint32_t>(flags & OptionalFrames));
}

bool IsReturnKey(WPARAM key, const MSG* message) {
    return key == VK_RETURN && message &&
           (message->message == WM_KEYDOWN || message->message == WM_KEYUP);
}

// Keeps the character of the key from the menu that the key opens, which would
// take it for a choice, and close.
void DropCharacter(HWND window) {
    MSG character;
    PeekMessageW(&character, window, WM_CHAR, WM_CHAR, PM_REMOVE);
}

bool IsPressingKey(WPARAM key) {
    return key == VK_SPACE || key == VK_RETURN;
}
} // namespace

void NButton::OnClick(bool) {}

void NButton::OnRepeat(bool) {}

void NButton::Create(const NButtonSpec& spec, int64_t value, HWND ownerWindow) {
    flags = spec.flags ? spec.flags : ButtonFlagsIfNone;
    menuId = spec.menuId;
    menu = spec.menu;
    userValue = value;
    owner = ownerWindow;
    state = ButtonIdle;
    leftDown = rightDown = keyDown = false;
    MeasureFrames();
    MakePictures(spec);
    MakeWindow(spec);
}

void NButton::MeasureFrames() {
    frameWidth = strip.Width() / (FixedFrames + CountFrames(flags));
    frameHeight = strip.Height() / (flags & ButtonMasked ? 2 : 1);
}

void NButton::MakePictures(const NButtonSpec& spec) {
    NWindowDC ownerDc(owner);
    display.Resize(ownerDc.dc, frameWidth, frameHeight, true);
    backdrop.Resize(ownerDc.dc, frameWidth, frameHeight, true);
    // Also what a background leaves open that doesn't reach so far.
    backdrop.Fill(GetSysColorBrush(COLOR_BTNFACE));
    if (spec.background)
        spec.background->Blit(backdrop.dc, 0, 0, frameWidth, frameHeight, spec.x, spec.y);
}

void NButton::MakeWindow(const NButtonSpec& spec) {
    const DWORD tabStop = flags & ButtonFocus ? WS_TABSTOP : 0;
    window =
        CreateWindowExW(0, L"STATIC", spec.text, WS_CHILD | WS_VISIBLE | SS_OWNERDRAW | tabStop,
                        spec.x, spec.y, frameWidth, frameHeight, owner, nullptr, module, nullptr);
    Bind(window);
    if (!window || !spec.toolTipText)
        return;
    NToolTipText tip;
    tip.target = window;
    tip.text = spec.toolTipText;
    toolTip.SetText(tip);
}

void NButton::Enable() {
    if (window)
        EnableWindow(window, TRUE);
    Repaint();
}

void NButton::Disable() {
    if (window)
        EnableWindow(window, FALSE);
    Repaint();
}

void NButton::SetLatched(bool value) {
    if (latched == value)
        return;
    latched = value;
    Repaint();
}

void NButton::ClearPartner() {
    NButton* other = std::exchange(partner, nullptr);
    if (other && other->partner == this)
        other->partner = nullptr;
}

void NButton::Destroy() {
    toolTip.Clear();
    Unbind();
    if (HWND old = std::exchange(window, nullptr))
        DestroyWindow(old);
    strip.Release();
    display.Release();
    backdrop.Release();
    ClearPartner();
}

void NButton::Paint(HDC dc, int32_t newState, bool force) {
    if (!window || (!force && newState == state && !dc))
        return;
    state = newState;
    // 1. The state as shown, 2. its frame, 4. and 5. the look of it.
    Compose(FrameForState(ShownState()));
    // 6. All of it at once; 3. on the window's own device context if there is
    // no other.
    if (dc) {
        display.Blit(dc, 0, 0);
        return;
    }
    NWindowDC windowDc(window);
    display.Blit(windowDc.dc, 0, 0);
}

int32_t NButton::ShownState() const {
    // Wanted: latched turns each look into its opposite, so that a latched
    // button that is pressed looks like one that is only hovered.
    constexpr int32_t Opposite = 1; // the bit in which pressed and not differ
    return latched ? state ^ Opposite : state;
}

int NButton::FrameForState(int32_t shown) const {
    switch (shown) {
    case ButtonPressedToo:
        return DownFrame;
    case ButtonHovered:
        return flags & ButtonHover ? FrameOf(ButtonHover) : NormalFrame;
    case ButtonPressed:
        return flags & ButtonHotDown ? FrameOf(ButtonHotDown) : DownFrame;
    default:
        return NormalFrame;
    }
}

int NButton::FrameOf(ButtonFlags optionalFrame) const {
    return FixedFrames + CountFrames(flags & (optionalFrame - 1));
}

void NButton::Compose(int frame) {
    if (!(flags & ButtonMasked)) {
        // Wanted: without masks there are no overlays either.
        strip.Blit(display.dc, 0, 0, frameWidth, frameHeight, frame * frameWidth, 0);
        return;
    }
    backdrop.Blit(display.dc, 0, 0);
    DrawMasked(frame);
    if (flags & ButtonDisabled && !IsEnabled())
        DrawMasked(FrameOf(ButtonDisabled));
    if (flags & ButtonFocus && GetFocus() == window)
        DrawMasked(FrameOf(ButtonFocus));
}

void NButton::DrawMasked(int frame) {
    const int x = frame * frameWidth;
    strip.Blit(display.dc, 0, 0, frameWidth, frameHeight, x, frameHeight, SRCAND);
    strip.Blit(display.dc, 0, 0, frameWidth, frameHeight, x, 0, SRCPAINT);
}

bool NButton::ShowMenu(HWND ownerWindow) {
    return OpenMenu(ownerWindow, false);
}

bool NButton::OpenMenu(HWND ownerWindow, bool byKey) {
    if (!HasMenu())
        return false;
    if (!IsEnabled())
        return true;
    UniqueHandle<MenuTraits> loaded;
    if (!menu)
        loaded.Reset(LoadMenuW(module, MAKEINTRESOURCEW(menuId)));
    HMENU shown = menu ? menu : loaded.Get();
    if (!shown)
        return false;
    if (byKey)
        DropCharacter(window);
    RECT place = {};
    GetWindowRect(window, &place);
    keyDown = true;
    TrackPopupMenu(GetSubMenu(shown, 0), TPM_RIGHTBUTTON, place.left, place.bottom, 0, ownerWindow,
                   nullptr);
    loaded.Reset();
    keyDown = false;
    return true;
}

LRESULT NButton::OnSubclassMessage(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                   int32_t* handled) {
    switch (message) {
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        Repaint();
        return 0;
    case WM_GETDLGCODE:
        if (!IsReturnKey(wParam, reinterpret_cast<const MSG*>(lParam)))
            return 0;
        *handled = 1;
        return DLGC_WANTMESSAGE;
    case WM_KEYDOWN:
        OnKeyDown(wParam, handled);
        return 0;
    case WM_KEYUP:
        OnKeyUp(wParam);
        return 0;
    default:
        return 0;
    }
}

void NButton::OnKeyDown(WPARAM key, int32_t* handled) {
    if (!IsPressingKey(key)) {
        keyDown = false;
        Repaint();
        return;
    }
    keyDown = IsEnabled();
    if (!keyDown)
        return;
    Repaint();
    if (OpenMenu(owner, true)) {
        keyDown = false;
        *handled = 1;
    }
}

// Wanted: a button that was disabled since the key went down clicks too.
void NButton::OnKeyUp(WPARAM key) {
    if (keyDown && IsPressingKey(key)) {
        keyDown = false;
        OnClick(false);
    }
    Repaint();
}
