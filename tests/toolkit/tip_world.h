#pragma once

#include "tests/toolkit/no_threads.h"
#include "toolkit/tip_platform.h"
#include "toolkit/tip_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

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

    inline static std::atomic<DWORD> now;   // the tick count
    inline static std::atomic<POINT> mouse; // screen coordinates
    inline static std::atomic<int> waits;   // of owners, told so far

private:
    // Another thread sees that, unlike the one that holds it.
    static bool LockIsFree() {
        bool isFree = false;
        std::thread([&] {
            isFree = tipLock.TryLock();
            if (isFree)
                tipLock.Unlock();
        }).join();
        return isFree;
    }

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
