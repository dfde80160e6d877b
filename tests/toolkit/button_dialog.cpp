#include "tests/toolkit/button_dialog.h"

#include <utility>

namespace {
struct DialogTemplate {
    DLGTEMPLATE facts;
    WORD menu;
    WORD windowClass;
    WORD title;
};

HWND MakeDialog(DLGPROC proc, void* object) {
    const DialogTemplate layout = {{WS_POPUP, 0, 0, 0, 0, 10, 10}, 0, 0, 0};
    return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &layout.facts, nullptr, proc,
                                      reinterpret_cast<LPARAM>(object));
}
} // namespace

ButtonDialog::ButtonDialog() {
    window = MakeDialog(DialogProc, this);
    SetWindowPos(window, nullptr, 100, 100, 300, 200, SWP_NOZORDER | SWP_SHOWWINDOW);
    bar.Start(window);
}

ButtonDialog::~ButtonDialog() {
    DestroyWindow(window);
}

void ButtonDialog::Add(NButton& button, int x, int y, int32_t flags) {
    NButtonSpec spec;
    spec.x = x;
    spec.y = y;
    spec.flags = flags;
    Add(button, spec);
}

void ButtonDialog::Add(NButton& button, NButtonSpec spec) {
    if (!spec.flags)
        spec.flags = AllButtonFlags;
    bar.Add(button, spec, IDB_STRIPS + (spec.flags & ~ButtonDefault), 0, nullptr);
}

Filtered ButtonDialog::Filter(UINT message, WPARAM wParam, LPARAM lParam) {
    Filtered filtered = {-1, -1};
    filtered.result = bar.OnParentMessage(window, message, wParam, lParam, &filtered.handled);
    return filtered;
}

Filtered ButtonDialog::Draw(const NButton& button, HDC dc) {
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_STATIC;
    item.hwndItem = button.window;
    item.hDC = dc;
    return Filter(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&item));
}

INT_PTR CALLBACK ButtonDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG)
        SetWindowLongPtrW(window, DWLP_USER, lParam);
    auto* dialog = reinterpret_cast<ButtonDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    return dialog && dialog->window ? dialog->OnMessage(message, wParam, lParam) : FALSE;
}

INT_PTR ButtonDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    // When the display's focus goes to another program, Wine would end the menu
    // that a test has open.
    if (message == WM_CANCELMODE)
        return TRUE;
    if (beforeMessage)
        beforeMessage(message, wParam, lParam);
    const Filtered filtered = Filter(message, wParam, lParam);
    if (filtered.handled) {
        SetWindowLongPtrW(window, DWLP_MSGRESULT, filtered.result);
        return TRUE;
    }
    if (message == WM_COMMAND)
        commands.push_back(LOWORD(wParam));
    if (message == WM_DESTROY)
        bar.Destroy();
    return FALSE;
}

MenuKeys::MenuKeys(ButtonDialog& dialog, std::vector<WPARAM> keys)
    : dialog_(dialog), keys_(std::move(keys)) {
    dialog.beforeMessage = [this](UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_ENTERIDLE && wParam == MSGF_MENU)
            OnIdle(reinterpret_cast<HWND>(lParam));
        if (message == WM_UNINITMENUPOPUP)
            seen_ = nullptr;
    };
}

void MenuKeys::OnIdle(HWND menuWindow) {
    if (menuWindow == seen_)
        return;
    seen_ = menuWindow;
    ++shown;
    GetWindowRect(menuWindow, &place);
    if (whileShown)
        whileShown();
    for (WPARAM key : keys_)
        PostMessageW(dialog_.window, WM_KEYDOWN, key, 0);
}

void HandlePosted() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}
