#include "foundation/unique_handle.h"
#include "tests/support/leak_counters.h"

#include <gtest/gtest.h>

#include <functional>

namespace {
// Makes one object, which stays, and returns what frees it.
struct Leak {
    const char* name;
    int (*count)();
    std::function<std::function<void()>()> plant;
};

const BYTE onePlane[32] = {};

const Leak leaks[] = {
    {"a brush", CountGdiObjects,
     [] {
         HBRUSH brush = CreateSolidBrush(0x123456);
         return [brush] { DeleteObject(brush); };
     }},
    {"a pen", CountGdiObjects,
     [] {
         HPEN pen = CreatePen(PS_SOLID, 1, 0x123456);
         return [pen] { DeleteObject(pen); };
     }},
    {"a bitmap", CountGdiObjects,
     [] {
         HBITMAP bitmap = CreateBitmap(8, 8, 1, 32, nullptr);
         return [bitmap] { DeleteObject(bitmap); };
     }},
    {"a font", CountGdiObjects,
     [] {
         HFONT font = CreateFontW(10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, L"Tahoma");
         return [font] { DeleteObject(font); };
     }},
    {"a memory device context", CountGdiObjects,
     [] {
         HDC dc = CreateCompatibleDC(nullptr);
         return [dc] { DeleteDC(dc); };
     }},
    {"a menu", CountUserObjects,
     [] {
         HMENU menu = CreatePopupMenu();
         return [menu] { DestroyMenu(menu); };
     }},
    {"an icon", CountUserObjects,
     [] {
         HICON icon = CreateIcon(nullptr, 16, 16, 1, 1, onePlane, onePlane);
         return [icon] { DestroyIcon(icon); };
     }},
    {"a window", CountUserObjects,
     [] {
         HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                       nullptr, nullptr);
         return [window] { DestroyWindow(window); };
     }},
    {"a message window", CountUserObjects,
     [] {
         HWND window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                       nullptr, nullptr);
         return [window] { DestroyWindow(window); };
     }},
    {"an event", CountKernelHandles,
     [] {
         HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
         return [event] { CloseHandle(event); };
     }},
    {"a thread that has ended", CountKernelHandles,
     [] {
         HANDLE thread = CreateThread(
             nullptr, 0, [](void*) -> DWORD { return 0; }, nullptr, 0, nullptr);
         WaitForSingleObject(thread, INFINITE);
         return [thread] { CloseHandle(thread); };
     }},
    {"a thread that nobody waits for", CountThreads,
     [] {
         HANDLE thread = CreateThread(
             nullptr, 0, [](void*) -> DWORD { return 0; }, nullptr, CREATE_SUSPENDED, nullptr);
         return [thread] {
             ResumeThread(thread);
             WaitForSingleObject(thread, INFINITE);
             CloseHandle(thread);
         };
     }},
};
} // namespace

TEST(LeakCounters, EachPlantedLeakIsCaughtAndGoesWhenItIsFreed) {
    for (const Leak& leak : leaks) {
        SCOPED_TRACE(leak.name);
        leak.plant()(); // what the platform makes once
        const int before = leak.count();
        std::function<void()> free = leak.plant();
        EXPECT_EQ(before + 1, leak.count());
        free();
        EXPECT_EQ(before, leak.count());
    }
}

TEST(LeakCounters, NothingMadeCountsAsNothing) {
    CountPlatformObjects();
    const PlatformObjects before = CountPlatformObjects();
    EXPECT_EQ(before, CountPlatformObjects());
    EXPECT_GT(before.kernel, 0);
}

TEST(LeakCounters, AChildWindowCountsBesideItsParent) {
    const int before = CountUserObjects();
    HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                                  nullptr, nullptr);
    CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 9, 9, parent, nullptr, nullptr, nullptr);
    EXPECT_EQ(before + 2, CountUserObjects());
    DestroyWindow(parent);
    EXPECT_EQ(before, CountUserObjects());
}

TEST(LeakCounters, CountsAllKindsAtOnce) {
    CountPlatformObjects();
    const PlatformObjects before = CountPlatformObjects();
    HBRUSH brush = CreateSolidBrush(0);
    HMENU menu = CreatePopupMenu();
    HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const PlatformObjects with = CountPlatformObjects();
    EXPECT_EQ(before.gdi + 1, with.gdi);
    EXPECT_EQ(before.user + 1, with.user);
    EXPECT_EQ(before.kernel + 1, with.kernel);
    CloseHandle(event);
    DestroyMenu(menu);
    DeleteObject(brush);
    EXPECT_EQ(before, CountPlatformObjects());
}
