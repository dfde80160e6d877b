#include "toolkit/ntooltip.h"

#include "toolkit/device_contexts.h"
#include "toolkit/tip_fade.h"
#include "toolkit/tip_platform.h"
#include "toolkit/tip_text_scene.h"
#include "toolkit/tip_thread.h"

#include <algorithm>

namespace {
constexpr uint32_t DefaultDelayMs = 1000;
constexpr uint32_t DefaultDurationMs = 10000;
constexpr uint32_t FixedTipDelayMs = 1;
constexpr DWORD LongestWaitUntilUpMs = 10000;
constexpr DWORD LongestWaitUntilDownMs = 5000;

constexpr DWORD PlainStyle = WS_POPUP | WS_DISABLED;
constexpr DWORD FramedStyle = PlainStyle | WS_DLGFRAME;
constexpr DWORD SolidExStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW;
constexpr DWORD FadingExStyle = SolidExStyle | WS_EX_LAYERED;

// All four edges included.
bool Holds(const RECT& rect, POINT point) {
    return point.x >= rect.left && point.x <= rect.right && point.y >= rect.top &&
           point.y <= rect.bottom;
}

RECT RectOf(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

bool Passed(DWORD begin, DWORD limit) {
    return tipPlatform.ticks() - begin >= limit;
}
} // namespace

NToolTip::~NToolTip() {
    Clear();
}

void NToolTip::SetText(const NToolTipText& record) {
    NToolTipSpec spec;
    BuildTipTextScene(spec.scene, record);
    spec.target = record.target;
    spec.toolRect = record.toolRect;
    spec.rectOwner = record.rectOwner;
    spec.fixedX = record.fixedX;
    spec.fixedY = record.fixedY;
    spec.delayMs = record.delayMs;
    spec.durationMs = record.durationMs;
    spec.noFade = record.noFade;
    Set(spec);
}

void NToolTip::Set(const NToolTipSpec& spec, int32_t leastWidth, int32_t leastHeight) {
    // 1.
    Clear();
    {
        const TipOwnerLock lock(TipOwnerLock::SentOnly);
        // 2. and 3.
        CopyFields(spec, leastWidth, leastHeight);
        // 4. and 5.
        RegisterTip(this);
    }
    // 6.
    if (HasFixedPosition() && !target)
        WaitUntilUp();
}

void NToolTip::CopyFields(const NToolTipSpec& spec, int32_t leastWidth, int32_t leastHeight) {
    mode = spec.mode;
    target = spec.target;
    targetParent = GetParent(target);
    toolRect = spec.toolRect;
    rectOwner = spec.rectOwner;
    fixedX = spec.fixedX;
    fixedY = spec.fixedY;
    minWidth = leastWidth;
    minHeight = leastHeight;
    delayMs = HasFixedPosition() ? FixedTipDelayMs : spec.delayMs;
    durationMs = spec.durationMs;
    noFade = spec.noFade;
    scene.CopyFrom(spec.scene);
    CopyTipItems(items, spec.items);
}

void NToolTip::WaitUntilUp() const {
    const DWORD begin = tipPlatform.ticks();
    while (!IsVisible() && !Passed(begin, LongestWaitUntilUpMs))
        tipPlatform.wait(TipPollMs);
}

void NToolTip::Clear() {
    for (;;) {
        // 1.
        AskDown();
        // 2.
        const TipOwnerLock lock(TipOwnerLock::PostedToo);
        // The thread has shown the tip just before it gave the lock up, or it
        // was held up for longer than the wait. It takes no message of ours
        // while the lock is held, so that it is asked once more.
        if (IsUpElsewhere())
            continue;
        // The end of 1., with the lock, since the thread may have been at work
        // on the same window before. A window that couldn't be made has left
        // its class.
        Destroy();
        // 3. and 4. The lock is held until the thread has ended, so that no
        // other owner counts on it meanwhile.
        UnregisterTip(this);
        // 5.
        Forget();
        return;
    }
}

// A window that is hidden, as it is with its owner minimised, has to go too.
void NToolTip::AskDown() {
    if (!hwnd)
        return;
    closeRequest = true;
    WaitUntilDown();
    suppressed = 1;
}

void NToolTip::WaitUntilDown() const {
    const DWORD begin = tipPlatform.ticks();
    while (hwnd && !Passed(begin, LongestWaitUntilDownMs))
        tipPlatform.wait(TipPollMs);
}

// Whether there is a window that another thread alone can destroy.
bool NToolTip::IsUpElsewhere() const {
    const DWORD thread = GetWindowThreadProcessId(hwnd, nullptr);
    return thread && thread != GetCurrentThreadId();
}

void NToolTip::Forget() {
    scene.Clear();
    items.Clear();
    target = nullptr;
    targetParent = nullptr;
    toolRect = {};
    rectOwner = nullptr;
    delayStart = 0;
    fixedX = 0;
    fixedY = 0;
    suppressed = 0;
    closeRequest = false;
}

void NToolTip::Update(POINT mouse) {
    // 1.
    if (closeRequest.exchange(false)) {
        Destroy();
        return;
    }
    // 2.
    const bool inside = IsInside(mouse);
    // 3.
    if (!inside) {
        delayStart = 0;
        suppressed = 0;
    }
    // 4.
    if (!IsVisible())
        UpdateHidden(mouse, inside);
    else
        UpdateShown(inside);
}

RECT NToolTip::ToolRectOnScreen() const {
    RECT rect = toolRect;
    if (rectOwner)
        MapWindowPoints(rectOwner, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
}

// Wanted: a target without a parent is not watched.
bool NToolTip::IsInside(POINT mouse) const {
    if (target && targetParent)
        return WindowFromPoint(mouse) == target;
    return HasFixedPosition() || Holds(ToolRectOnScreen(), mouse);
}

void NToolTip::UpdateHidden(POINT mouse, bool inside) {
    if (!inside || suppressed)
        return;
    const DWORD now = tipPlatform.ticks();
    if (delayStart == 0)
        delayStart = now;
    if (delayMs == 0)
        delayMs = DefaultDelayMs;
    if (durationMs == 0)
        durationMs = DefaultDurationMs;
    if (now - delayStart <= delayMs)
        return;
    delayStart = 0;
    shownAt = now;
    Show(mouse);
}

void NToolTip::UpdateShown(bool inside) {
    // 5.
    if (!inside) {
        Destroy();
        return;
    }
    // 6.
    const DWORD elapsed = tipPlatform.ticks() - shownAt;
    if (durationMs != TipForEver && elapsed > durationMs) {
        Destroy();
        suppressed = 1;
        return;
    }
    // 7. and 8.
    Fade(elapsed);
}

void NToolTip::Fade(DWORD elapsed) {
    if (durationMs == 0 || durationMs == TipForEver || noFade)
        return;
    const int32_t wanted = TipAlpha(elapsed, durationMs);
    if (wanted == alpha)
        return;
    alpha = wanted;
    tipPlatform.fade().SetAlpha(hwnd, alpha);
}

void NToolTip::Show(POINT mouse) {
    Create(L"", Place(mouse), mode == 1 ? FramedStyle : PlainStyle,
           noFade ? SolidExStyle : FadingExStyle, target ? target : rectOwner, TipClassStyleHere());
    // A tip that isn't up is tried again after the next delay.
    if (!hwnd)
        return;
    // The tip doesn't become the active window, by which a menu or a list
    // would close.
    ShowWindow(hwnd, SW_SHOWNA);
    alpha = NoTipAlpha;
    suppressed = 1;
    Enable();
}

TipAnchor NToolTip::Anchor(POINT mouse) const {
    if (HasFixedPosition())
        return FixedTipAnchor(fixedX, fixedY);
    const RECT described = target ? RectOf(target) : ToolRectOnScreen();
    return {described.top, described.bottom, mouse.x};
}

SIZE NToolTip::MeasureScene() {
    const SIZE reach = ReachOfTipItems(items);
    const TipMargins margins = MarginsOfTip(mode);
    scene.marginX = margins.across;
    scene.marginY = margins.down;
    scene.minWidth = std::max<int32_t>(minWidth, margins.across + reach.cx);
    scene.minHeight = std::max<int32_t>(minHeight, margins.down + reach.cy);
    return scene.Measure();
}

RECT NToolTip::Place(POINT mouse) {
    const NMutexLock lock(tipLock);
    // 1. and 2.
    const SIZE size = MeasureScene();
    // 3.
    scene.stateMask = TipStateOfWidth(size.cx);
    scene.dirty = 1;
    // 4. to 8.
    const POINT place = PlaceTip(size, Anchor(mouse), mouse, RectOf(GetDesktopWindow()).right);
    return {place.x, place.y, place.x + size.cx, place.y + size.cy};
}

void NToolTip::OnPaint(int32_t) {
    const NMutexLock lock(tipLock);
    const NWindowDC dc(hwnd);
    scene.Paint(dc.dc, 0, 0);
    for (int i = 0; i < items.Count(); ++i)
        DrawTipItem(*items[i], dc.dc);
}

void NToolTip::OnMouseDown(int32_t x, int32_t y, uint32_t, uint32_t) {
    const NMutexLock lock(tipLock);
    for (int i = 0; i < items.Count(); ++i)
        if (TipItemIsHit(*items[i], {x, y}))
            items[i]->pressed = true;
    UpdateIcons({x, y});
}

void NToolTip::OnMouseMove(int32_t x, int32_t y, uint32_t) {
    const NMutexLock lock(tipLock);
    UpdateIcons({x, y});
}

void NToolTip::OnMouseUp(int32_t x, int32_t y, uint32_t, uint32_t) {
    const NMutexLock lock(tipLock);
    for (int i = 0; i < items.Count(); ++i) {
        NToolTipItem& item = *items[i];
        // Wanted: a text needs no press on it before.
        if (item.IsIcon() ? item.iconState == TipIconDown : TipItemIsHit(item, {x, y}))
            Click(item);
        item.pressed = false;
    }
    UpdateIcons({x, y});
}

void NToolTip::Click(NToolTipItem& item) {
    if (item.onClick) {
        item.onClick(item.clickValue, &item);
        return;
    }
    Destroy();
    suppressed = 1;
}

void NToolTip::UpdateIcons(POINT point) {
    for (int i = 0; i < items.Count(); ++i) {
        NToolTipItem& item = *items[i];
        if (!item.IsIcon())
            continue;
        const int32_t hitState = item.pressed ? TipIconDown : TipIconHover;
        const int32_t state = TipItemIsHit(item, point) ? hitState : TipIconNormal;
        if (state == item.iconState)
            continue;
        item.iconState = state;
        Invalidate(nullptr, true);
    }
}
