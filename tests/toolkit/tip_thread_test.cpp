#include "tests/support/leak_counters.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/tip_owner_window.h"
#include "tests/toolkit/tip_thread_world.h"
#include "toolkit/ntooltip.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {
constexpr DWORD LongEnough = 30000;
constexpr POINT InArea = {650, 510};
constexpr POINT Outside = {10, 10};
constexpr UINT Posted = WM_APP + 7;

UniqueKernelHandle CopyOf(HANDLE thread) {
    UniqueKernelHandle copy;
    DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), copy.Put(), 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return copy;
}

bool HasClass(const NString& name) {
    WNDCLASSEXW record = {};
    record.cbSize = sizeof record;
    return GetClassInfoExW(GetModuleHandleW(nullptr), name.Text, &record) != FALSE;
}

bool HasEnded(HANDLE thread) {
    return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
}

class TipThread : public testing::Test {
protected:
    TipThread() { world.mouse = InArea; }

    void TearDown() override {
        EXPECT_EQ(0, tipList.Count);
        EXPECT_EQ(nullptr, tipThread.handle);
    }

    static NToolTipText TextOfArea() {
        NToolTipText record;
        record.toolRect = {600, 500, 700, 520};
        record.text = L"What it is";
        return record;
    }
    static NToolTipText FixedText() {
        NToolTipText record;
        record.fixedX = 200;
        record.fixedY = 300;
        record.text = L"Copied to Clipboard";
        record.durationMs = 1000000;
        return record;
    }

    TipThreadWorld world;
};

// A tip that is up and has a text to click, whose call asks the owner's window
// something and so holds the thread up until that is answered.
class BusyThread : public TipThread {
protected:
    void HoldUp() {
        NToolTipSpec spec;
        spec.fixedX = 200;
        spec.fixedY = 300;
        spec.durationMs = 1000000;
        NToolTipItem& item = *spec.items.Add();
        item.text = L"Click";
        item.clickValue = this;
        item.onClick = [](void* value, NToolTipItem*) {
            auto* self = static_cast<BusyThread*>(value);
            SetEvent(self->asks.Get());
            SendMessageW(self->owner.hwnd, TipOwnerWindow::Asked, 0, 0);
        };
        busy.Set(spec);
        ASSERT_TRUE(busy.IsVisible());
        PostMessageW(busy.hwnd, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
        ASSERT_EQ(WAIT_OBJECT_0, WaitForSingleObject(asks.Get(), LongEnough));
        ASSERT_EQ(0, owner.asked);
    }
    void TearDown() override {
        busy.Clear();
        TipThread::TearDown();
    }

    TipOwnerWindow owner;
    UniqueKernelHandle asks{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    NToolTip busy;
};
} // namespace

TEST_F(TipThread, RunsWhileAnyTipIsSet) {
    const int threads = CountThreads();
    NToolTip first;
    NToolTip second;
    EXPECT_EQ(nullptr, tipThread.handle);
    first.SetText(TextOfArea());
    ASSERT_NE(nullptr, tipThread.handle);
    const UniqueKernelHandle thread = CopyOf(tipThread.handle);
    EXPECT_FALSE(tipThread.suspended);
    EXPECT_EQ(0, tipThread.maxWaitMs);
    second.SetText(TextOfArea());
    EXPECT_EQ(threads + 1, CountThreads());
    first.Clear();
    ASSERT_TRUE(world.AwaitTurns(1));
    EXPECT_FALSE(HasEnded(thread.Get()));
    second.Clear();
    EXPECT_TRUE(HasEnded(thread.Get())); // it was waited for
    EXPECT_EQ(nullptr, tipThread.handle);
    EXPECT_EQ(threads, CountThreads());
}

TEST_F(TipThread, TheNextTipAfterTheLastStartsANewOne) {
    NToolTip tip;
    for (int round = 0; round < 3; ++round) {
        tip.SetText(TextOfArea());
        ASSERT_NE(nullptr, tipThread.handle);
        EXPECT_TRUE(world.Await([&] { return tip.IsVisible(); }));
        tip.Clear();
        EXPECT_EQ(nullptr, tipThread.handle);
    }
}

TEST_F(TipThread, SettingTheOnlyTipAgainGoesOnWithAnotherThread) {
    NToolTip tip;
    tip.SetText(TextOfArea());
    const UniqueKernelHandle former = CopyOf(tipThread.handle);
    tip.SetText(TextOfArea());
    EXPECT_TRUE(HasEnded(former.Get()));
    EXPECT_FALSE(HasEnded(tipThread.handle));
    EXPECT_TRUE(world.Await([&] { return tip.IsVisible(); }));
}

TEST_F(TipThread, LooksEveryFiftyMilliseconds) {
    NToolTip tip;
    tip.SetText(TextOfArea());
    ASSERT_TRUE(world.AwaitTurns(1));
    EXPECT_EQ(50u, world.slept);
}

TEST_F(TipThread, MakesTheWindowsOfTheTips) {
    NToolTip tip;
    tip.SetText(FixedText());
    ASSERT_TRUE(tip.IsVisible());
    ASSERT_TRUE(world.AwaitTurns(1));
    EXPECT_NE(GetCurrentThreadId(), world.workerId);
    EXPECT_EQ(world.workerId, GetWindowThreadProcessId(tip.hwnd, nullptr));
}

TEST_F(TipThread, SetOfAFixedTipWaitsUntilItIsUp) {
    NToolTip tip;
    tip.SetText(FixedText());
    EXPECT_TRUE(tip.IsVisible());
    EXPECT_GT(world.waits, 0);
}

TEST_F(TipThread, ShowsFadesAndTakesDownByTheCursorAlone) {
    NToolTip tip;
    NToolTipText record = TextOfArea();
    record.durationMs = 1000000;
    tip.SetText(record);
    ASSERT_TRUE(world.Await([&] { return tip.IsVisible(); }));
    ASSERT_TRUE(world.AwaitTurns(1));
    BYTE alpha = 0;
    EXPECT_TRUE(GetLayeredWindowAttributes(tip.hwnd, nullptr, &alpha, nullptr));
    EXPECT_EQ(255, alpha);
    EXPECT_FALSE(GetUpdateRect(tip.hwnd, nullptr, FALSE)); // it was painted
    world.mouse = Outside;
    EXPECT_TRUE(world.Await([&] { return !tip.hwnd; }));
}

TEST_F(TipThread, TakesADownTipOffWhenItsTimeIsOver) {
    NToolTip tip;
    NToolTipText record = FixedText();
    record.durationMs = 3000;
    tip.SetText(record);
    ASSERT_TRUE(tip.IsVisible());
    EXPECT_TRUE(world.Await([&] { return !tip.hwnd; }));
    ASSERT_TRUE(world.AwaitTurns(100));
    EXPECT_FALSE(tip.IsVisible());
}

TEST_F(TipThread, TwoTipsAreUpAtOnce) {
    NToolTip first;
    NToolTip second;
    first.SetText(TextOfArea());
    second.SetText(FixedText());
    EXPECT_TRUE(world.Await([&] { return first.IsVisible(); }));
    EXPECT_TRUE(second.IsVisible());
    first.Clear();
    EXPECT_TRUE(second.IsVisible());
}

TEST_F(TipThread, ClearHasItTakeTheWindowDown) {
    NToolTip tip;
    tip.SetText(FixedText());
    const HWND window = tip.hwnd;
    const NString name = tip.className;
    ASSERT_TRUE(IsWindow(window));
    tip.Clear();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_FALSE(HasClass(name));
}

TEST_F(TipThread, ATipMayBeClearedAtAnyMomentOfItsShow) {
    NToolTip tip;
    NToolTip other; // keeps the thread
    other.SetText(TextOfArea());
    NToolTipText record = TextOfArea();
    record.delayMs = 1;
    for (int moment = 0; moment < 60; ++moment) {
        tip.SetText(record);
        const int begin = world.turns;
        ASSERT_TRUE(world.Await([&] { return world.turns - begin >= moment % 4; }));
        for (int spin = 0; spin < moment * 200; ++spin)
            YieldProcessor();
        tip.Clear();
        EXPECT_EQ(nullptr, tip.hwnd);
        EXPECT_TRUE(tip.className.IsEmpty());
        EXPECT_EQ(1, tipList.Count);
    }
}

TEST_F(TipThread, NeverWaitsForTheLock) {
    NToolTip tip;
    tip.SetText(FixedText());
    tipLock.Lock();
    // There is much to do for it.
    InvalidateRect(tip.hwnd, nullptr, TRUE);
    PostMessageW(tip.hwnd, WM_LBUTTONDOWN, 0, MAKELPARAM(3, 3));
    tip.closeRequest = true;
    EXPECT_TRUE(world.AwaitTurns(10));
    EXPECT_TRUE(tip.IsVisible());
    EXPECT_TRUE(tip.closeRequest);
    tipLock.Unlock();
    EXPECT_TRUE(world.Await([&] { return !tip.hwnd; }));
}

TEST_F(TipThread, EndsWhileItsOwnerHoldsTheLock) {
    NToolTip tip;
    tip.SetText(FixedText());
    ASSERT_TRUE(tip.IsVisible());
    {
        const NMutexLock lock(tipLock);
        InvalidateRect(tip.hwnd, nullptr, TRUE);
        tipThread.Close();
    }
    EXPECT_EQ(nullptr, tipThread.handle);
}

TEST_F(TipThread, WhatATurnThrowsEndsTheTurnAlone) {
    tipPlatform.fade = []() -> const NUserDLLFade& {
        throw std::runtime_error("not for the thread");
    };
    NToolTip tip;
    tip.SetText(FixedText());
    EXPECT_TRUE(world.AwaitTurns(5));
    EXPECT_FALSE(HasEnded(tipThread.handle));
    tip.Clear();
    EXPECT_EQ(nullptr, tip.hwnd);
}

TEST_F(TipThread, OneThatCouldNotBeStartedIsStartedWithTheNextTip) {
    NToolTip tip;
    {
        const NoThreads none;
        tip.SetText(TextOfArea());
    }
    EXPECT_EQ(nullptr, tipThread.handle);
    EXPECT_EQ(1, tipList.Count);
    NToolTip next;
    next.SetText(FixedText());
    EXPECT_TRUE(world.Await([&] { return tip.IsVisible() && next.IsVisible(); }));
}

TEST_F(TipThread, AWindowMayBeDestroyedWithItsTipUp) {
    NToolTip tip;
    TipOwnerWindow owner;
    NToolTipText record = TextOfArea();
    record.toolRect = {0, 0, 200, 100};
    record.rectOwner = owner.hwnd;
    world.mouse = POINT{400, 350};
    tip.SetText(record);
    ASSERT_TRUE(world.Await([&] { return tip.IsVisible(); }));
    const HWND window = tip.hwnd;
    owner.child.Destroy();
    owner.Destroy();
    EXPECT_TRUE(world.Await([&] { return !IsWindow(window); }));
    tip.Clear();
    EXPECT_EQ(nullptr, tip.hwnd);
    EXPECT_TRUE(tip.className.IsEmpty());
}

TEST_F(TipThread, OwnersOnSeveralThreadsDoNotDisturbEachOther) {
    // Time stands still for the owners, who wait for as long as it takes.
    static thread_local bool isOwner = false;
    tipPlatform.ticks = [] { return isOwner ? TipThreadWorld::Start : TipThreadWorld::now.load(); };
    const auto own = [] {
        isOwner = true;
        for (int round = 0; round < 8; ++round) {
            NToolTip armed;
            NToolTip shown;
            armed.SetText(TextOfArea());
            shown.SetText(FixedText());
            EXPECT_TRUE(shown.IsVisible());
            shown.Clear();
            EXPECT_EQ(nullptr, shown.hwnd);
        }
    };
    std::vector<std::thread> owners;
    for (int i = 0; i < 4; ++i)
        owners.emplace_back(own);
    for (std::thread& owner : owners)
        owner.join();
}

TEST_F(BusyThread, ClearAnswersTheCallOfATipThatIsUp) {
    HoldUp();
    busy.Clear();
    EXPECT_EQ(1, owner.asked);
    EXPECT_EQ(nullptr, busy.hwnd);
}

TEST_F(BusyThread, ClearOutlastsACallThatIsNotAnsweredWithinTheFiveSeconds) {
    constexpr int WaitsOfFiveSeconds = 5000 / 50;
    NToolTip keeper; // of the thread
    world.mouse = Outside;
    keeper.SetText(TextOfArea());
    HoldUp();
    const HWND window = busy.hwnd;
    const NString name = busy.className;
    // Only the wait for the lock answers, after all others.
    world.waits = 0;
    tipPlatform.wait = [](DWORD ms) {
        TipThreadWorld::now += ms;
        if (++TipThreadWorld::waits > WaitsOfFiveSeconds)
            WaitServingSentMessages(1);
    };
    owner.onAsked = [&] {
        EXPECT_EQ(WaitsOfFiveSeconds, world.waits);
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_EQ(window, busy.hwnd);
        EXPECT_EQ(name, busy.className);
    };
    busy.Clear();
    EXPECT_EQ(1, owner.asked);
    EXPECT_EQ(nullptr, busy.hwnd);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(busy.className.IsEmpty());
    EXPECT_FALSE(HasClass(name));
    EXPECT_EQ(1, tipList.Count);
    EXPECT_TRUE(world.AwaitTurns(1));
}

TEST_F(BusyThread, ClearOfATipThatIsNotUpAnswersTheCallToo) {
    NToolTip armed;
    world.mouse = Outside;
    armed.SetText(TextOfArea());
    HoldUp();
    armed.Clear();
    EXPECT_EQ(1, owner.asked);
    ASSERT_EQ(1, tipList.Count);
    EXPECT_EQ(&busy, tipList.At(0));
}

TEST_F(BusyThread, SetAnswersTheCallToo) {
    NToolTip armed;
    HoldUp();
    armed.SetText(TextOfArea());
    EXPECT_EQ(1, owner.asked);
    EXPECT_TRUE(world.Await([&] { return armed.IsVisible(); }));
}

TEST_F(BusyThread, ClearDispatchesThePostedMessagesMeanwhile) {
    struct Window : NWindow {
        Window() { Create(L"", {0, 0, 10, 10}, WS_POPUP); }
        ~Window() override { Destroy(); }
        LRESULT OnMessage(HWND, UINT message, WPARAM, LPARAM, int32_t*) override {
            got += message == Posted;
            return 0;
        }
        int got = 0;
    } window;
    HoldUp();
    PostMessageW(window.hwnd, Posted, 0, 0);
    {
        const TipOwnerLock lock(TipOwnerLock::SentOnly);
        EXPECT_EQ(1, owner.asked);
        EXPECT_EQ(0, window.got);
    }
    owner.asked = 0;
    HoldUp();
    NToolTip idle;
    idle.Clear();
    EXPECT_EQ(1, owner.asked);
    EXPECT_EQ(1, window.got);
}

TEST_F(BusyThread, ClearLeavesTheEndOfTheMessageLoopInTheQueue) {
    constexpr int ExitCode = 7;
    HoldUp();
    PostQuitMessage(ExitCode);
    NToolTip idle;
    idle.Clear();
    EXPECT_EQ(1, owner.asked);
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(static_cast<WPARAM>(ExitCode), message.wParam);
}

// A message that is answered while a tip waits for the lock may set that tip.
TEST_F(TipThread, ATipThatIsRegisteredTwiceIsOnTheListOnce) {
    NToolTip tip;
    tip.SetText(TextOfArea());
    {
        const TipOwnerLock lock(TipOwnerLock::SentOnly);
        RegisterTip(&tip);
    }
    EXPECT_EQ(1, tipList.Count);
}

TEST_F(TipThread, ManyTipsLeaveOnlyTheEventsOfTheirThreads) {
    constexpr int Tips = 30;
    NIcon icon;
    ASSERT_TRUE(icon.Load(IDI_MARK, 16, 16));
    const auto showAndClear = [&] {
        NToolTip tip;
        NToolTipText record = FixedText();
        record.icon = &icon;
        tip.SetText(record);
        EXPECT_TRUE(tip.IsVisible());
        EXPECT_TRUE(world.AwaitTurns(1));
        tip.Clear();
    };
    for (int warmUp = 0; warmUp < 5; ++warmUp)
        showAndClear();
    CountPlatformObjects(); // what counting makes once
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < Tips; ++i)
        showAndClear();
    PlatformObjects expected = before;
    expected.kernel += Tips; // each thread's second event stays: wanted
    EXPECT_EQ(expected, CountPlatformObjects());
}

TEST_F(TipThread, ManyShowsOnOneThreadLeaveNothing) {
    NToolTip keeper;
    world.mouse = Outside; // it is never shown
    keeper.SetText(TextOfArea());
    NToolTip tip;
    const auto showAndClear = [&] {
        tip.SetText(FixedText());
        EXPECT_TRUE(tip.IsVisible());
        EXPECT_TRUE(world.AwaitTurns(1));
        tip.Clear();
    };
    for (int warmUp = 0; warmUp < 5; ++warmUp)
        showAndClear();
    CountPlatformObjects();
    const PlatformObjects before = CountPlatformObjects();
    for (int i = 0; i < 30; ++i)
        showAndClear();
    EXPECT_EQ(before, CountPlatformObjects());
}
