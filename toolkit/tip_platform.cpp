#include "toolkit/tip_platform.h"

namespace {
// Where the platform doesn't tell, as on a locked desktop, the cursor is off
// all that is watched.
constexpr POINT OffScreen = {-32768, -32768};

POINT CursorPlace() {
    POINT place;
    return GetCursorPos(&place) ? place : OffScreen;
}
} // namespace

TipPlatform tipPlatform = {GetTickCount, CursorPlace, Sleep, WaitServingSentMessages, NProcessFade};

void WaitServingSentMessages(DWORD ms) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, ms, QS_SENDMESSAGE);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

UINT TipClassStyleHere() {
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    GetVersionExW(&version);
    return TipClassStyle(version.dwMajorVersion, version.dwMinorVersion);
}
