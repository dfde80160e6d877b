#include "toolkit/dpi.h"
#include "toolkit/nwindow.h"

#include <shellapi.h>

bool NWindow::EndDialog(INT_PTR code) {
    return hwnd && ::EndDialog(hwnd, code);
}

LRESULT NWindow::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    return hwnd ? SendMessageW(hwnd, message, wParam, lParam) : 0;
}

// A null window would stand for all windows of the screen.
void NWindow::Invalidate(const RECT* rect, bool erase) {
    if (hwnd)
        InvalidateRect(hwnd, rect, erase);
}

void NWindow::Hide() {
    if (hwnd)
        ShowWindow(hwnd, SW_HIDE);
}

void NWindow::Maximise() {
    if (hwnd)
        ShowWindow(hwnd, SW_MAXIMIZE);
}

void NWindow::Enable() {
    if (hwnd)
        EnableWindow(hwnd, TRUE);
}

bool NWindow::IsZoomed() const {
    return hwnd && ::IsZoomed(hwnd);
}

bool NWindow::IsIconic() const {
    return hwnd && ::IsIconic(hwnd);
}

bool NWindow::IsVisible() const {
    return hwnd && IsWindowVisible(hwnd);
}

void NWindow::SetIcons(HICON big, HICON smallIconGiven) {
    if (!hwnd)
        return;
    HICON earlierBig = bigIcon;
    HICON earlierSmall = smallIcon;
    bigIcon = DuplicateIcon(nullptr, big);
    smallIcon = DuplicateIcon(nullptr, smallIconGiven);
    SetClassLongPtrW(hwnd, GCLP_HICON, reinterpret_cast<LONG_PTR>(bigIcon));
    SetClassLongPtrW(hwnd, GCLP_HICONSM, reinterpret_cast<LONG_PTR>(smallIcon));
    DestroyIcon(big);
    DestroyIcon(smallIconGiven);
    // The class held them until now.
    DestroyIcon(earlierBig);
    DestroyIcon(earlierSmall);
}

// The new cursor is the system's, and isn't kept.
void NWindow::SetCursor(const wchar_t* systemId) {
    if (!hwnd)
        return;
    HCURSOR loaded = LoadCursorW(nullptr, systemId);
    SetClassLongPtrW(hwnd, GCLP_HCURSOR, reinterpret_cast<LONG_PTR>(loaded));
    DestroyCursor(cursor);
    cursor = nullptr;
}

void NWindow::SetBackground(int32_t colourIndex) {
    if (!hwnd)
        return;
    // 0 is COLOR_SCROLLBAR to the platform; that it means another is wanted.
    const LONG_PTR index = colourIndex ? colourIndex : COLOR_WINDOW;
    SetClassLongPtrW(hwnd, GCLP_HBRBACKGROUND, index + 1);
    Invalidate(nullptr, true);
}

HWND NWindow::GetItem(int32_t id) const {
    return hwnd ? GetDlgItem(hwnd, id) : nullptr;
}

bool NWindow::ToClient(POINT& point) const {
    return hwnd && ScreenToClient(hwnd, &point);
}

RECT NWindow::ClientRect() const {
    RECT rect = {};
    if (hwnd)
        GetClientRect(hwnd, &rect);
    return rect;
}

RECT NWindow::WindowRect() const {
    RECT rect = {};
    if (hwnd)
        GetWindowRect(hwnd, &rect);
    return rect;
}

int32_t NWindow::Width() const {
    const RECT rect = WindowRect();
    return rect.right - rect.left;
}

int32_t NWindow::Height() const {
    const RECT rect = WindowRect();
    return rect.bottom - rect.top;
}

void NWindow::SetPos(int32_t x, int32_t y, int32_t width, int32_t height) {
    if (!hwnd)
        return;
    // Where the window stands now; a child by its parent's coordinates.
    RECT present = WindowRect();
    const bool isChild = GetWindowLongPtrW(hwnd, GWL_STYLE) & WS_CHILD;
    if (isChild)
        MapWindowPoints(HWND_DESKTOP, GetParent(hwnd), reinterpret_cast<POINT*>(&present), 2);
    const auto orPresent = [](int32_t wanted, LONG kept) {
        return wanted == KeepPlace ? static_cast<int32_t>(kept) : wanted;
    };
    SetWindowPos(hwnd, nullptr, orPresent(x, present.left), orPresent(y, present.top),
                 orPresent(width, present.right - present.left),
                 orPresent(height, present.bottom - present.top),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

void NWindow::Centre() {
    RECT desktop = {};
    GetClientRect(GetDesktopWindow(), &desktop);
    SetPos(desktop.right / 2 - Width() / 2, desktop.bottom / 2 - Height() / 2, KeepPlace,
           KeepPlace);
}

void NWindow::SetRedraw(bool on, bool repaint) {
    Send(WM_SETREDRAW, on);
    if (on && repaint)
        Invalidate(nullptr, true);
}

int32_t NWindow::DlgUnitsX(int32_t value, HWND window) const {
    return hwnd ? DialogUnitsX(value, window ? window : hwnd) : 0;
}

int32_t NWindow::DlgUnitsY(int32_t value, HWND window) const {
    return hwnd ? DialogUnitsY(value, window ? window : hwnd) : 0;
}
