#include "tests/tagpage/watched_shell.h"

#include <shlobj.h>

#include <utility>

extern "C" {
extern decltype(&::SHChangeNotify) __real___imp_SHChangeNotify;
extern decltype(&::SHChangeNotify) __wrap___imp_SHChangeNotify;
extern decltype(&::MessageBoxW) __real___imp_MessageBoxW;
extern decltype(&::MessageBoxW) __wrap___imp_MessageBoxW;
}

namespace {
std::vector<ShellChange>& Changes() {
    static std::vector<ShellChange> changes;
    return changes;
}

void WINAPI NotedSHChangeNotify(LONG event, UINT flags, const void* first, const void* second) {
    Changes().push_back({event, flags, static_cast<const wchar_t*>(first), second});
    __real___imp_SHChangeNotify(event, flags, first, second);
}

std::vector<BoxCall>& Boxes() {
    static std::vector<BoxCall> boxes;
    return boxes;
}

int WINAPI NotedMessageBoxW(HWND owner, const wchar_t* text, const wchar_t* caption, UINT type) {
    Boxes().push_back({owner, type});
    return __real___imp_MessageBoxW(owner, text, caption, type);
}
} // namespace

decltype(&::SHChangeNotify) __wrap___imp_SHChangeNotify = NotedSHChangeNotify;
decltype(&::MessageBoxW) __wrap___imp_MessageBoxW = NotedMessageBoxW;

std::vector<ShellChange> TakeShellChanges() {
    return std::exchange(Changes(), {});
}

std::vector<BoxCall> TakeBoxCalls() {
    return std::exchange(Boxes(), {});
}
