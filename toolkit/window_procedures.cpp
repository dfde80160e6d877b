#include "toolkit/window_procedures.h"

#include "toolkit/message_dispatch.h"
#include "toolkit/nwindow.h"
#include "toolkit/window_registry.h"

namespace {
void Bind(void* parameter, HWND window, bool isDialog) {
    auto* object = static_cast<NWindow*>(parameter);
    if (!object)
        return;
    object->hwnd = window;
    object->isDialog = isDialog;
    AddToRegistry(object);
}
} // namespace

LRESULT CALLBACK NWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (message == WM_CREATE && lParam)
            Bind(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams, window, false);
        if (NWindow* object = FindInRegistry(window))
            return DispatchToObject(*object, {window, message, wParam, lParam});
    } catch (...) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

INT_PTR CALLBACK NDialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        if (message == WM_INITDIALOG)
            Bind(reinterpret_cast<void*>(lParam), window, true);
        if (NWindow* object = FindInRegistry(window))
            return DispatchToObject(*object, {window, message, wParam, lParam});
    } catch (...) {
        return 0;
    }
    return 0;
}
