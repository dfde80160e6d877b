#include "toolkit/nwindow.h"

#include "toolkit/window_procedures.h"
#include "toolkit/window_registry.h"

namespace {
// The module of the host process, which windows and classes belong to.
HINSTANCE HostModule() {
    return GetModuleHandleW(nullptr);
}

// Wraps around, so that CW_USEDEFAULT is a left or top edge like any other.
int Extent(LONG first, LONG last) {
    return static_cast<int>(static_cast<uint32_t>(last) - static_cast<uint32_t>(first));
}
} // namespace

NWindow::~NWindow() {
    Destroy();
    DestroyCursor(cursor);
    cursor = nullptr;
    DestroyIcon(bigIcon);
    bigIcon = nullptr;
    DestroyIcon(smallIcon);
    smallIcon = nullptr;
}

void NWindow::Create(const wchar_t* title, const RECT& rect, DWORD style, DWORD exStyle,
                     HWND parent, UINT classStyle, const wchar_t* ofClass, HMENU menu) {
    Destroy();
    if (isBeingDestroyed_ || (!ofClass && !RegisterOwnClass(classStyle)))
        return;
    HWND window = CreateWindowExW(exStyle, ofClass ? ofClass : className.Text, title, style,
                                  rect.left, rect.top, Extent(rect.left, rect.right),
                                  Extent(rect.top, rect.bottom), parent, menu, HostModule(), this);
    // The window procedure has bound the object by now, and a handler may have
    // destroyed the window again, or made another; a class that isn't the
    // toolkit's has done nothing of that.
    if (!hwnd && IsWindow(window)) {
        hwnd = window;
        isDialog = 0;
    }
    // A creation that was refused after binding.
    if (hwnd && !IsWindow(hwnd)) {
        RemoveFromRegistry(this);
        hwnd = nullptr;
    }
}

// A class for one window, so that its icons, cursor and background are those
// of this window alone.
bool NWindow::RegisterOwnClass(UINT classStyle) {
    NString name = NString(L"NWnd").Concat(NString::FromUInt(NextClassNumber()).Text);
    WNDCLASSEXW record = {};
    record.cbSize = sizeof(record);
    record.style = classStyle;
    record.lpfnWndProc = NWindowProc;
    record.hInstance = HostModule();
    record.hIcon = LoadIconW(nullptr, IDI_APPLICATION);
    record.lpszClassName = name.Text;
    if (!RegisterClassExW(&record))
        return false;
    className = name;
    return true;
}

INT_PTR NWindow::ShowDialog(uint16_t resourceId, HWND parent, bool modal, HINSTANCE module) {
    Destroy();
    if (isBeingDestroyed_)
        return modal ? -1 : 0;
    if (!module)
        module = HostModule();
    const wchar_t* resource = MAKEINTRESOURCEW(resourceId);
    const auto self = reinterpret_cast<LPARAM>(this);
    if (modal)
        return DialogBoxParamW(module, resource, parent, NDialogProc, self);
    return CreateDialogParamW(module, resource, parent, NDialogProc, self) ? 1 : 0;
}

void NWindow::Destroy() {
    // A handler of step 1 that comes here again would come for ever.
    if (isBeingDestroyed_)
        return;
    isBeingDestroyed_ = true;
    // 1. The window with its timers. OnDestroy runs, still in the registry.
    if (hwnd) {
        Hide();
        DestroyTimers();
        DestroyWindow(hwnd);
    }
    // 2. The class.
    if (!className.IsEmpty()) {
        UnregisterClassW(className.Text, HostModule());
        className = L"";
    }
    // 3. The registry.
    RemoveFromRegistry(this);
    // 4. Unbound.
    hwnd = nullptr;
    isBeingDestroyed_ = false;
}

void NWindow::DestroyTimers() {
    NMutexLock lock(timerLock);
    for (int i = 0; i < timers.Count(); ++i)
        KillTimer(hwnd, timers[i]->id);
    timers.Clear();
    currentTimer = nullptr;
}
