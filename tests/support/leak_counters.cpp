#include "tests/support/leak_counters.h"

#include "foundation/unique_handle.h"

#include <tlhelp32.h>
#include <winternl.h>

#include <cstdint>
#include <cstring>

namespace {
// The table of all GDI handles, which every process has mapped; the process
// environment block leads to it. The layout is that of 64-bit Windows.
constexpr size_t GdiTableInPeb = 0xF8;
constexpr int GdiTableEntries = 65536;
constexpr int FirstGdiEntry = 16;
constexpr uint8_t GdiKindBits = 0x1F;

struct GdiEntry {
    uint64_t object;
    uint16_t process; // its lowest bit says that the entry is locked
    uint16_t count;
    uint16_t generation;
    uint8_t kind;
    uint8_t flags;
    uint64_t userPointer;
};
static_assert(sizeof(GdiEntry) == 24);

const GdiEntry* GdiTable() {
    const auto* peb = reinterpret_cast<const uint8_t*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    const GdiEntry* table = nullptr;
    memcpy(&table, peb + GdiTableInPeb, sizeof(table));
    return table;
}

// User handles: the lower half names the object.
constexpr ULONG_PTR FirstUserHandle = 0x20;
constexpr ULONG_PTR UserHandleLimit = 0x10000;
constexpr ULONG_PTR UserHandleStep = 2;

// The platform adds an input method's window to a thread's first window.
bool IsOwnWindow(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t className[16] = {};
    GetClassNameW(window, className, 16);
    return process == GetCurrentProcessId() && wcscmp(className, L"IME") != 0;
}

BOOL CALLBACK AddIfOwn(HWND window, LPARAM count) {
    if (!IsOwnWindow(window))
        return TRUE;
    ++*reinterpret_cast<int*>(count);
    const auto addChild = [](HWND, LPARAM children) -> BOOL {
        ++*reinterpret_cast<int*>(children);
        return TRUE;
    };
    EnumChildWindows(window, addChild, count);
    return TRUE;
}

// A walk over all handles asks the server for each; these lists are quicker.
int CountWindows() {
    int count = 0;
    EnumWindows(AddIfOwn, reinterpret_cast<LPARAM>(&count));
    HWND window = nullptr;
    while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr)
        AddIfOwn(window, reinterpret_cast<LPARAM>(&count));
    return count;
}

struct BitmapTraits {
    using Handle = HBITMAP;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DeleteObject(handle); }
};

bool IsIcon(HICON icon) {
    ICONINFO parts = {};
    if (!GetIconInfo(icon, &parts))
        return false;
    UniqueHandle<BitmapTraits> mask(parts.hbmMask);
    UniqueHandle<BitmapTraits> colour(parts.hbmColor);
    return true;
}

// Handles are multiples of this; the lowest free one is given out first.
constexpr ULONG_PTR HandleStep = 4;
constexpr int LongestGap = 512; // of freed ones, between handles
} // namespace

int CountGdiObjects() {
    if (DWORD told = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return static_cast<int>(told);
    const GdiEntry* table = GdiTable();
    const auto own = static_cast<uint16_t>(GetCurrentProcessId() & 0xFFFE);
    int count = 0;
    for (int i = FirstGdiEntry; table && i < GdiTableEntries; ++i) {
        const auto process = static_cast<uint16_t>(table[i].process & 0xFFFE);
        if ((table[i].kind & GdiKindBits) && (process == 0 || process == own))
            ++count;
    }
    return count;
}

int CountUserObjects() {
    if (DWORD told = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS))
        return static_cast<int>(told);
    int count = CountWindows();
    for (ULONG_PTR i = FirstUserHandle; i < UserHandleLimit; i += UserHandleStep)
        if (IsMenu(reinterpret_cast<HMENU>(i)) || IsIcon(reinterpret_cast<HICON>(i)))
            ++count;
    return count;
}

int CountKernelHandles() {
    DWORD told = 0;
    if (GetProcessHandleCount(GetCurrentProcess(), &told) && told)
        return static_cast<int>(told);
    // One by one: Wine 8.0's server can crash over the list of all handles,
    // when a process ends meanwhile.
    int count = 0;
    int missing = 0;
    for (ULONG_PTR value = HandleStep; missing < LongestGap; value += HandleStep) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) {
            ++count;
            missing = 0;
        } else {
            ++missing;
        }
    }
    return count;
}

int CountThreads() {
    UniqueFileHandle list(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 thread = {};
    thread.dwSize = sizeof(thread);
    int count = 0;
    for (BOOL more = Thread32First(list.Get(), &thread); more;
         more = Thread32Next(list.Get(), &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId();
    return count;
}

PlatformObjects CountPlatformObjects() {
    PlatformObjects objects;
    objects.gdi = CountGdiObjects();
    objects.user = CountUserObjects();
    objects.kernel = CountKernelHandles();
    objects.threads = CountThreads();
    return objects;
}
