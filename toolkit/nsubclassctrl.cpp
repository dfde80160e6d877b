#include "toolkit/nsubclassctrl.h"

#include "foundation/nmutex.h"
#include "toolkit/ncall_count.h"

namespace {
NMutex subclassLock; // held while a window is bound, and through each message
} // namespace

LRESULT NSubClassCtrl::OnSubclassMessage(HWND, UINT, WPARAM, LPARAM, int32_t*) {
    return 0;
}

void NSubClassCtrl::Bind(HWND window) {
    Unbind();
    if (!window)
        return;
    NMutexLock turn(subclassLock);
    // Another object's window: its previous procedure would be this very one.
    if (GetWindowLongPtrW(window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(SubclassProc))
        return;
    boundWindow = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    previousProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassProc)));
    if (!previousProc) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        boundWindow = nullptr;
    }
}

void NSubClassCtrl::Unbind() {
    if (!boundWindow)
        return;
    NMutexLock turn(subclassLock);
    SetWindowLongPtrW(boundWindow, GWLP_USERDATA, 0);
    SetWindowLongPtrW(boundWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previousProc));
    boundWindow = nullptr;
}

LRESULT CALLBACK NSubClassCtrl::SubclassProc(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
    NMutexLock turn(subclassLock);
    auto* control = reinterpret_cast<NSubClassCtrl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    // Read before the handler, which may destroy the object.
    const WNDPROC previous = control ? control->previousProc : nullptr;
    if (!previous)
        return 0;
    const NCallCount::Call call(control->calls);
    int32_t handled = 0;
    LRESULT result = 0;
    // An exception that left the procedure would end the whole process. The
    // window still gets its message: one to paint would come for ever.
    try {
        result = control->OnSubclassMessage(window, message, wParam, lParam, &handled);
    } catch (...) {
        handled = 0;
    }
    return handled ? result : CallWindowProcW(previous, window, message, wParam, lParam);
}
