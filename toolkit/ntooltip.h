#pragma once

#include "toolkit/ndrawlist.h"
#include "toolkit/nwindow.h"
#include "toolkit/tip_item.h"
#include "toolkit/tip_placement.h"

#include <atomic>
#include <cstdint>

// As a duration. Only a tip without a fade is seen then: the others show
// nothing until their first opacity is set, and this one is never faded. That
// is wanted.
inline constexpr uint32_t TipForEver = 0xFFFFFFFF;

// A tip in full. What it watches is told by `target`, else by the fixed
// position, else by `toolRect`.
struct NToolTipSpec {
    int32_t mode = 0;      // 1 gives the window a dialog frame and wider margins
    HWND target = nullptr; // the child window to watch
    RECT toolRect = {};    // the area to watch
    // `toolRect` is in its client coordinates; null for screen coordinates.
    HWND rectOwner = nullptr;
    // Screen coordinates of the tip, whatever the cursor; both 0 for none.
    int32_t fixedX = 0;
    int32_t fixedY = 0;
    uint32_t delayMs = 0;    // 0 is 1000
    uint32_t durationMs = 0; // 0 is 10000; TipForEver
    bool noFade = false;
    NDrawList scene;
    NKeyedList<NToolTipItem> items;
};

// A tip of one text.
struct NToolTipText {
    HWND target = nullptr;
    RECT toolRect = {};
    HWND rectOwner = nullptr;
    int32_t fixedX = 0;
    int32_t fixedY = 0;
    NString text = {}; // a carriage return between lines
    uint32_t delayMs = 0;
    uint32_t durationMs = 0;
    const NIcon* icon = nullptr; // the caller's; copied
    bool noFade = false;
};

// A tip: shows a scene near what it describes, once the cursor has rested
// there for a while, and fades out at the end of its time. One that went away
// at its time comes back only after the cursor has left.
//
// The windows of all tips are made, painted and destroyed on one thread, which
// polls the cursor and exists while any tip is set. Nothing is asked of the
// watched window.
//
// An owner calls Set, SetText and Clear alone, on its own thread, never from a
// handler of a tip. They may answer messages that other threads send to
// windows of the calling thread; Clear may also take messages out of its
// queue, if the thread of the tips is at work just then. So what owns the tip
// must not be freed by such a message.
//
// While they wait they read `hwnd` without the lock, which the thread of the
// tips writes meanwhile. That is relied on: it is an aligned word, read anew
// each time, and what they do by it they decide with the lock held.
class NToolTip : public NWindow {
public:
    NToolTip() = default;
    // Clears.
    ~NToolTip() override;

    void OnMouseDown(int32_t x, int32_t y, uint32_t message, uint32_t keys) override;
    void OnMouseUp(int32_t x, int32_t y, uint32_t message, uint32_t keys) override;
    void OnMouseMove(int32_t x, int32_t y, uint32_t keys) override;
    void OnPaint(int32_t one) override;

    // Clears, and sets a tip of this text: flat if it is wide, else shaded.
    void SetText(const NToolTipText& record);
    // Clears, and sets a tip of at least this size in pixels. One with a fixed
    // position and no `target` is up when this returns, unless it doesn't get
    // up within 10 seconds.
    void Set(const NToolTipSpec& spec, int32_t leastWidth = 0, int32_t leastHeight = 0);
    // Takes the tip down and forgets it. With the last tip the thread ends. May
    // be called again.
    void Clear();

    // For the thread of the tips, under `tipLock`: shows, fades or takes down
    // the window as it has to be with the mouse there, in screen coordinates.
    void Update(POINT mouse);

    int32_t mode = 0;
    NDrawList scene;
    NKeyedList<NToolTipItem> items;
    HWND target = nullptr;
    HWND targetParent = nullptr; // the parent of `target` when it was set
    RECT toolRect = {};
    HWND rectOwner = nullptr;
    int32_t fixedX = 0;
    int32_t fixedY = 0;
    int32_t minWidth = 0;
    int32_t minHeight = 0;
    uint32_t delayMs = 0;
    uint32_t durationMs = 0;
    bool noFade = false;
    // Set by the owner without the lock: the thread is to take the window down.
    std::atomic<bool> closeRequest = false;
    DWORD delayStart = 0; // a tick count; 0 while nothing is counted
    DWORD shownAt = 0;
    // No new show until the cursor leaves. Set by the owner without the lock.
    std::atomic<int32_t> suppressed = 0;
    int32_t alpha = 0; // the last one set; -1 after the show

private:
    bool HasFixedPosition() const { return fixedX != 0 || fixedY != 0; }
    RECT ToolRectOnScreen() const;
    bool IsInside(POINT mouse) const;
    void UpdateHidden(POINT mouse, bool inside);
    void UpdateShown(bool inside);
    void Fade(DWORD elapsed);
    void Show(POINT mouse);
    TipAnchor Anchor(POINT mouse) const;
    SIZE MeasureScene();
    RECT Place(POINT mouse);
    void CopyFields(const NToolTipSpec& spec, int32_t leastWidth, int32_t leastHeight);
    void WaitUntilUp() const;
    void WaitUntilDown() const;
    void AskDown();
    bool IsUpElsewhere() const;
    void Forget();
    void UpdateIcons(POINT point);
    void Click(NToolTipItem& item);
};
