#include "toolkit/tip_thread.h"

#include "toolkit/ntooltip.h"
#include "toolkit/tip_platform.h"

NPtrList tipList;
NMutex tipLock;
NThread tipThread;

namespace {
constexpr DWORD BetweenTriesMs = 10;

// Holds the lock, if it was free, to the end of the scope.
class TipLockTry {
public:
    TipLockTry() : taken_(tipLock.TryLock()) {}
    TipLockTry(const TipLockTry&) = delete;
    TipLockTry& operator=(const TipLockTry&) = delete;
    ~TipLockTry() {
        if (taken_)
            tipLock.Unlock();
    }

    explicit operator bool() const { return taken_; }

private:
    bool taken_;
};

// What a part of the turn throws must not take all tips of the process with it.
void DoGuarded(void (*part)()) {
    try {
        part();
    } catch (...) {
        return;
    }
}

// Nor what one tip throws, those behind it.
void UpdateGuarded(NToolTip& tip, POINT cursor) {
    try {
        tip.Update(cursor);
    } catch (...) {
        return;
    }
}

void TipLoop(NEvent& stop, void*) {
    while (!stop.IsSet()) {
        DoGuarded(UpdateTips);          // 1. and 2.
        tipPlatform.sleep(TipPollMs);   // 3.
        DoGuarded(DispatchTipMessages); // 4.
    }
}

bool TipThreadRuns() {
    return tipThread.handle && WaitForSingleObject(tipThread.handle, 0) != WAIT_OBJECT_0;
}

int IndexOf(const NToolTip* tip) {
    for (int i = 0; i < tipList.Count; ++i)
        if (tipList.At(i) == tip)
            return i;
    return -1;
}

// False if there is none. The end of the caller's own message loop is put
// back for it.
bool DispatchOnePosted() {
    MSG message;
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        return false;
    if (message.message == WM_QUIT) {
        PostQuitMessage(static_cast<int>(message.wParam));
        return false;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}
} // namespace

TipOwnerLock::TipOwnerLock(Messages messages) {
    while (!tipLock.TryLock())
        if (messages == SentOnly || !DispatchOnePosted())
            WaitServingSentMessages(BetweenTriesMs);
}

void RegisterTip(NToolTip* tip) {
    if (!TipThreadRuns())
        tipThread.Start(TipLoop, nullptr);
    // A message that was answered on the way may have set the tip already.
    if (IndexOf(tip) < 0)
        tipList.Add(tip);
}

void UnregisterTip(NToolTip* tip) {
    tipList.RemoveAt(IndexOf(tip));
    if (tipList.Count == 0)
        tipThread.Close();
}

void UpdateTips() {
    const POINT cursor = tipPlatform.cursor();
    TipLockTry lock;
    if (!lock)
        return;
    for (int i = 0; i < tipList.Count; ++i)
        UpdateGuarded(*static_cast<NToolTip*>(tipList.At(i)), cursor);
}

void DispatchTipMessages() {
    // The handlers take the lock. Without it here they would wait for it, and
    // an owner that waits for the thread's end with the lock held would for
    // ever; and a tip could be freed while its handler runs.
    TipLockTry lock;
    if (!lock)
        return;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
