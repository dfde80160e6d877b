#include "tests/audiopage/watched_timers.h"

#include <mutex>

extern "C" {
extern decltype(&::SetTimer) __real___imp_SetTimer;
extern decltype(&::SetTimer) __wrap___imp_SetTimer;
}

namespace {
using Timers = std::map<HWND, std::map<UINT_PTR, UINT>>;

std::mutex timersLock;

Timers& Known() {
    static Timers timers;
    return timers;
}

UINT_PTR WINAPI NotedSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
    {
        std::lock_guard guard(timersLock);
        Known()[window][id] = period;
    }
    return __real___imp_SetTimer(window, id, period, procedure);
}
} // namespace

decltype(&::SetTimer) __wrap___imp_SetTimer = NotedSetTimer;

std::map<UINT_PTR, UINT> TimersSetOn(HWND window) {
    std::lock_guard guard(timersLock);
    return Known()[window];
}
