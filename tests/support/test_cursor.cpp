#include "tests/support/test_cursor.h"

#include <mutex>

extern "C" {
extern decltype(&::GetCursorPos) __real___imp_GetCursorPos;
extern decltype(&::GetCursorPos) __wrap___imp_GetCursorPos;
}

namespace {
enum class Cursor { Real, Placed, Hidden };

struct State {
    std::mutex lock;
    Cursor cursor = Cursor::Real;
    POINT place = {};
};

State& Current() {
    static State state;
    return state;
}

void Set(Cursor cursor, POINT place) {
    std::lock_guard guard(Current().lock);
    Current().cursor = cursor;
    Current().place = place;
}

BOOL WINAPI CursorAsSet(POINT* place) {
    std::unique_lock guard(Current().lock);
    const Cursor cursor = Current().cursor;
    if (cursor == Cursor::Placed)
        *place = Current().place;
    guard.unlock();
    return cursor == Cursor::Real ? __real___imp_GetCursorPos(place) : cursor == Cursor::Placed;
}
} // namespace

decltype(&::GetCursorPos) __wrap___imp_GetCursorPos = CursorAsSet;

TestCursor::~TestCursor() {
    Set(Cursor::Real, {});
}

void TestCursor::MoveTo(int x, int y) {
    Set(Cursor::Placed, {x, y});
}

void TestCursor::MoveTo(HWND window, int x, int y) {
    POINT place = {x, y};
    ClientToScreen(window, &place);
    Set(Cursor::Placed, place);
}

void TestCursor::Hide() {
    Set(Cursor::Hidden, {});
}
