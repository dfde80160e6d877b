#pragma once

#include "foundation/unique_handle.h"
#include "tests/toolkit/no_threads.h"
#include "toolkit/tip_platform.h"
#include "toolkit/tip_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>

// The world as the tips see it: its time and its cursor are what the test
// says. One at a time, and no tip outlives it.
class TipWorld {
public:
    static constexpr DWORD Start = 100000;

    TipWorld() {
        now = Start;
        mouse = POINT{};
        waits = 0;
        tipPlatform.ticks = [] { return now.load(); };
        tipPlatform.cursor = [] { return mouse.load(); };
    }
    ~TipWorld() {
        tipPlatform = former_;
        EXPECT_TRUE(LockIsFree());
    }
    TipWorld(const TipWorld&) = delete;
    TipWorld& operator=(const TipWorld&) = delete;

    // Another thread sees that, unlike the one that holds it. It is started by
    // the platform itself, for which a NoThreads is no matter.
    static bool LockIsFree() {
        bool isFree = false;
        const auto look = [](void* result) -> DWORD {
            const bool taken = tipLock.TryLock();
            if (taken)
                tipLock.Unlock();
            *static_cast<bool*>(result) = taken;
            return 0;
        };
        const UniqueKernelHandle thread(CreateThread(nullptr, 0, look, &isFree, 0, nullptr));
        WaitForSingleObject(thread.Get(), INFINITE);
        return isFree;
    }

    inline static std::atomic<DWORD> now;   // the tick count
    inline static std::atomic<POINT> mouse; // screen coordinates
    inline static std::atomic<int> waits;   // of owners, told so far

private:
    TipPlatform former_ = tipPlatform;
};

// A world in which the test takes the turns of the thread of the tips. When an
// owner waits, `whileWaiting` runs after its time has gone by.
class TipTurns : public TipWorld {
public:
    TipTurns() {
        whileWaiting = [] { TakeTurn(); };
        tipPlatform.wait = [](DWORD ms) {
            ++waits;
            now += ms;
            whileWaiting();
        };
    }

    static void TakeTurn() {
        UpdateTips();
        DispatchTipMessages();
    }
    // Lets the time go by, then takes a turn.
    static void Turn(DWORD ms = TipPollMs) {
        now += ms;
        TakeTurn();
    }

    inline static std::function<void()> whileWaiting;

private:
    NoThreads noThreads_;
};
