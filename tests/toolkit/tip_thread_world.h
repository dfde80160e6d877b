#pragma once

#include "foundation/unique_handle.h"
#include "tests/toolkit/tip_world.h"

#include <functional>

// A world in which the thread of the tips runs, and the time goes by with its
// turns: 50 milliseconds for each, however long it takes.
class TipThreadWorld : public TipWorld {
public:
    TipThreadWorld() {
        turns = 0;
        tipPlatform.sleep = [](DWORD ms) {
            workerId = GetCurrentThreadId();
            slept = ms;
            now += ms;
            ++turns;
            SetEvent(turned.Get());
            Sleep(1);
        };
        tipPlatform.wait = [](DWORD ms) {
            ++waits;
            if (!tipThread.handle)
                now += ms;
            WaitServingSentMessages(1);
        };
    }

    // Answers messages of other threads meanwhile. False if it doesn't come
    // true within very many turns.
    static bool Await(const std::function<bool()>& condition) {
        constexpr int VeryMany = 3000;
        constexpr DWORD LongestTurn = 30000;
        const int begin = turns;
        while (!condition()) {
            const HANDLE event = turned.Get();
            const DWORD result =
                MsgWaitForMultipleObjects(1, &event, FALSE, LongestTurn, QS_SENDMESSAGE);
            if (result == WAIT_TIMEOUT || turns - begin > VeryMany)
                return false;
            MSG message;
            PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
        }
        return true;
    }
    // Whole turns, of which the first begins after the call.
    static bool AwaitTurns(int count) {
        const int end = turns + count + 1;
        return Await([end] { return turns >= end; });
    }

    inline static std::atomic<int> turns;
    inline static std::atomic<DWORD> slept;    // asked for after the last turn
    inline static std::atomic<DWORD> workerId; // of the thread that took the last turn
    inline static UniqueKernelHandle turned{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
};
