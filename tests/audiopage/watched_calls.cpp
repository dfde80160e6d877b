#include "tests/audiopage/watched_calls.h"

#include <mutex>
#include <utility>

extern "C" {
extern decltype(&::SetTimer) __real___imp_SetTimer;
extern decltype(&::SetTimer) __wrap___imp_SetTimer;
extern decltype(&::SetCursor) __real___imp_SetCursor;
extern decltype(&::SetCursor) __wrap___imp_SetCursor;
extern decltype(&::ExtTextOutW) __real___imp_ExtTextOutW;
extern decltype(&::ExtTextOutW) __wrap___imp_ExtTextOutW;
}

namespace {
using Timers = std::map<HWND, std::map<UINT_PTR, UINT>>;

std::mutex callsLock;

Timers& Known() {
    static Timers timers;
    return timers;
}

UINT_PTR WINAPI NotedSetTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
    {
        std::lock_guard guard(callsLock);
        Known()[window][id] = period;
    }
    return __real___imp_SetTimer(window, id, period, procedure);
}

std::vector<HCURSOR>& Shown() {
    static std::vector<HCURSOR> cursors;
    return cursors;
}

HCURSOR WINAPI NotedSetCursor(HCURSOR cursor) {
    {
        std::lock_guard guard(callsLock);
        Shown().push_back(cursor);
    }
    return __real___imp_SetCursor(cursor);
}

std::vector<std::wstring>& Drawn() {
    static std::vector<std::wstring> texts;
    return texts;
}

BOOL WINAPI NotedExtTextOut(HDC dc, int x, int y, UINT options, const RECT* rect,
                            const wchar_t* text, UINT length, const INT* distances) {
    {
        std::lock_guard guard(callsLock);
        Drawn().emplace_back(text, length);
    }
    return __real___imp_ExtTextOutW(dc, x, y, options, rect, text, length, distances);
}
} // namespace

decltype(&::SetTimer) __wrap___imp_SetTimer = NotedSetTimer;
decltype(&::SetCursor) __wrap___imp_SetCursor = NotedSetCursor;
decltype(&::ExtTextOutW) __wrap___imp_ExtTextOutW = NotedExtTextOut;

std::map<UINT_PTR, UINT> TimersSetOn(HWND window) {
    std::lock_guard guard(callsLock);
    return Known()[window];
}

std::vector<HCURSOR> TakeShownCursors() {
    std::lock_guard guard(callsLock);
    std::vector<HCURSOR> taken = Shown();
    Shown().clear(); // its room stays, for when there is no memory
    return taken;
}

std::vector<std::wstring> TakeDrawnTexts() {
    std::lock_guard guard(callsLock);
    return std::exchange(Drawn(), {});
}
