// A dialog of four buttons for a real pointer and keyboard, driven by
// button_pointer.sh. Tells on standard output where they are and what happens,
// a line each.
#include "tests/toolkit/button_resources.h"
#include "toolkit/nbuttonbar.h"

#include <cstdio>

namespace {
constexpr int32_t StageFlags =
    ButtonDefault | ButtonHover | ButtonFocus | ButtonDisabled | ButtonMasked;
const char* const names[] = {"first", "second", "third", "fourth"};
constexpr int ButtonCount = 4;
constexpr int WithMenu = 2;
constexpr int WithTip = 3;

void Tell(const char* subject, const char* what) {
    printf("%s %s\n", subject, what);
    fflush(stdout);
}

class StageButton : public NButton {
public:
    void OnClick(bool isRight) override {
        Tell(names[userValue], isRight ? "click right" : "click left");
    }

    int32_t told = ButtonIdle;
    bool tipTold = false;
};

struct Stage {
    void Open(HWND dialog);
    void Add(int index);
    void TellChanges();
    void TellTip(StageButton& button);

    HWND window = nullptr;
    NButtonBar bar;
    StageButton buttons[ButtonCount];
    HWND focus = nullptr;
};

Stage stage;

void Stage::Open(HWND dialog) {
    window = dialog;
    bar.Start(dialog);
    for (int index = 0; index < ButtonCount; ++index)
        Add(index);
}

void Stage::Add(int index) {
    NButtonSpec spec;
    spec.x = 50 + 60 * index;
    spec.y = 50;
    spec.flags = StageFlags;
    spec.menuId = index == WithMenu ? IDM_BUTTON : 0;
    spec.toolTipText = index == WithTip ? L"The fourth button" : nullptr;
    bar.Add(buttons[index], spec, IDB_STRIPS + (StageFlags & ~ButtonDefault), index, nullptr);
}

void Stage::TellChanges() {
    static const char* const states[] = {"idle", "pressed too", "hovered", "pressed"};
    for (StageButton& button : buttons) {
        if (button.state != button.told)
            Tell(names[button.userValue], states[button.state]);
        button.told = button.state;
        TellTip(button);
    }
    for (const StageButton& button : buttons)
        if (focus != GetFocus() && button.window == GetFocus())
            Tell(names[button.userValue], "focus");
    focus = GetFocus();
}

// The tip's window is another thread's; the bar's timer asks soon enough.
void Stage::TellTip(StageButton& button) {
    const bool isUp = button.toolTip.IsVisible();
    if (isUp != button.tipTold)
        Tell("tip", isUp ? "up" : "gone");
    button.tipTold = isUp;
}

INT_PTR OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    int32_t handled = 0;
    const LRESULT result = stage.bar.OnParentMessage(window, message, wParam, lParam, &handled);
    stage.TellChanges();
    if (handled) {
        SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
        return TRUE;
    }
    if (message == WM_INITMENUPOPUP)
        Tell("menu", "shown");
    if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL)
        DestroyWindow(window);
    else if (message == WM_COMMAND)
        Tell("command", LOWORD(wParam) == ID_MENU_ONE ? "one" : "other");
    if (message == WM_DESTROY) {
        stage.bar.Destroy();
        PostQuitMessage(0);
    }
    return FALSE;
}

INT_PTR CALLBACK StageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return OnMessage(window, message, wParam, lParam);
    } catch (...) {
        return FALSE;
    }
}

struct DialogTemplate {
    DLGTEMPLATE facts;
    WORD menu;
    WORD windowClass;
    WORD title;
};
} // namespace

int main() {
    const DialogTemplate layout = {{WS_POPUP, 0, 0, 0, 0, 10, 10}, 0, 0, 0};
    HWND window =
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &layout.facts, nullptr, StageProc, 0);
    SetWindowPos(window, HWND_TOP, 100, 100, 300, 200, SWP_SHOWWINDOW);
    stage.Open(window);
    SetForegroundWindow(window);
    Tell("stage", "open");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!IsDialogMessageW(window, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        stage.TellChanges();
    }
    Tell("stage", "closed");
    return 0;
}
