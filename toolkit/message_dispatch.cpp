#include "toolkit/message_dispatch.h"

#include "toolkit/nwindow.h"

namespace {
constexpr WPARAM SysCommandBits = 0xFFF0; // the platform uses the other four itself

// Mouse positions come unsigned, which is wanted.
int32_t X(const WindowMessage& m) {
    return LOWORD(m.lParam);
}

int32_t Y(const WindowMessage& m) {
    return HIWORD(m.lParam);
}

int32_t Signed(WORD value) {
    return static_cast<int16_t>(value);
}

HWND WindowIn(LPARAM value) {
    return reinterpret_cast<HWND>(value);
}

template <typename T>
uint32_t Low32(T value) {
    return static_cast<uint32_t>(value);
}

using CommandButton = void (NWindow::*)(int32_t one);
constexpr struct {
    WORD id;
    CommandButton operation;
} CommandButtons[] = {
    {IDOK, &NWindow::OnOK},       {IDCANCEL, &NWindow::OnCancel},     {IDABORT, &NWindow::OnAbort},
    {IDRETRY, &NWindow::OnRetry}, {IDIGNORE, &NWindow::OnIgnore},     {IDYES, &NWindow::OnYes},
    {IDNO, &NWindow::OnNo},       {IDCLOSE, &NWindow::OnCloseButton}, {IDHELP, &NWindow::OnHelp},
};

using Message = const WindowMessage&;

void Activate(NWindow& w, Message m) {
    const int32_t state = LOWORD(m.wParam);
    const int32_t minimised = HIWORD(m.wParam);
    if (state != WA_INACTIVE)
        w.OnActivate(WindowIn(m.lParam), minimised, state);
    else
        w.OnDeactivate(WindowIn(m.lParam), minimised);
}

void Create(NWindow& w, Message) {
    w.OnCreate(1);
    w.handled = 1;
}

void Paint(NWindow& w, Message) {
    w.OnPaint(1);
    w.handled = 0; // default processing always follows
}

void Show(NWindow& w, Message m) {
    if (m.wParam)
        w.OnShow(static_cast<int32_t>(m.lParam));
    else
        w.OnHide(static_cast<int32_t>(m.lParam));
}

void DrawItem(NWindow& w, Message m) {
    auto* record = reinterpret_cast<DRAWITEMSTRUCT*>(m.lParam);
    if (record)
        w.OnDrawItem(record->hwndItem, record->CtlID, record);
    else
        w.handled = 0;
}

void Notify(NWindow& w, Message m) {
    const auto* sent = reinterpret_cast<const NMHDR*>(m.lParam);
    if (sent)
        w.OnNotify(sent->idFrom, sent->code, sent->hwndFrom);
    else
        w.handled = 0;
}

// `handled` stays as the handlers leave it.
void Command(NWindow& w, Message m) {
    const WORD id = LOWORD(m.wParam);
    const WORD code = HIWORD(m.wParam);
    for (const auto& button : CommandButtons)
        if (code == 0 && button.id == id)
            (w.*button.operation)(1);
    w.OnCommand(id, WindowIn(m.lParam), code);
}

void SysCommand(NWindow& w, Message m) {
    w.OnSysCommand(static_cast<uint32_t>(m.wParam & SysCommandBits));
    w.handled = 0;
}

// A timer that isn't in the list is ignored, and counts as handled.
void Timer(NWindow& w, Message m) {
    NMutexLock lock(w.timerLock);
    for (int i = 0; i < w.timers.Count(); ++i) {
        w.currentTimer = w.timers[i];
        if (w.currentTimer->id == m.wParam) {
            w.OnTimer(m.wParam, w.currentTimer->value);
            w.currentTimer = w.timers.Current; // the handler may have removed it
            break;
        }
    }
}

void MouseDown(NWindow& w, Message m) {
    w.OnMouseDown(X(m), Y(m), m.message, Low32(m.wParam));
}

void MouseUp(NWindow& w, Message m) {
    w.OnMouseUp(X(m), Y(m), m.message, Low32(m.wParam));
}

constexpr struct {
    UINT message;
    void (*act)(NWindow& w, Message m);
    LRESULT result = 0; // if `handled` is still set
} Rows[] = {
    {WM_CREATE, Create},
    {WM_INITDIALOG, Create},
    {WM_DESTROY, [](NWindow& w, Message) { w.OnDestroy(1); }},
    {WM_MOVE,
     [](NWindow& w, Message m) { w.OnMove(Signed(LOWORD(m.lParam)), Signed(HIWORD(m.lParam))); }},
    {WM_SIZE,
     [](NWindow& w, Message m) {
         w.OnSize(LOWORD(m.lParam), HIWORD(m.lParam), static_cast<int32_t>(m.wParam));
     }},
    {WM_ACTIVATE, Activate},
    {WM_PAINT, Paint},
    {WM_CLOSE, [](NWindow& w, Message) { w.OnClose(1); }},
    {WM_ERASEBKGND,
     [](NWindow& w, Message m) { w.OnEraseBackground(reinterpret_cast<HDC>(m.wParam)); }, 1},
    {WM_SHOWWINDOW, Show},
    {WM_DRAWITEM, DrawItem},
    {WM_NOTIFY, Notify},
    {WM_CONTEXTMENU,
     [](NWindow& w, Message m) { w.OnContextMenu(reinterpret_cast<HWND>(m.wParam), X(m), Y(m)); }},
    {WM_KEYDOWN, [](NWindow& w, Message m) { w.OnKeyDown(Low32(m.wParam), Low32(m.lParam)); }},
    {WM_KEYUP, [](NWindow& w, Message m) { w.OnKeyUp(Low32(m.wParam), Low32(m.lParam)); }},
    {WM_CHAR, [](NWindow& w, Message m) { w.OnChar(LOWORD(m.wParam)); }},
    {WM_COMMAND, Command},
    {WM_SYSCOMMAND, SysCommand},
    {WM_TIMER, Timer},
    {WM_MOUSEMOVE, [](NWindow& w, Message m) { w.OnMouseMove(X(m), Y(m), Low32(m.wParam)); }},
    {WM_LBUTTONDOWN, MouseDown},
    {WM_RBUTTONDOWN, MouseDown},
    {WM_MBUTTONDOWN, MouseDown},
    {WM_LBUTTONUP, MouseUp},
    {WM_RBUTTONUP, MouseUp},
    {WM_MBUTTONUP, MouseUp},
    {WM_MOUSEWHEEL,
     [](NWindow& w, Message m) {
         w.OnMouseWheel(X(m), Y(m), Signed(HIWORD(m.wParam)), LOWORD(m.wParam));
     }},
};

LRESULT Act(NWindow& w, Message m) {
    for (const auto& row : Rows) {
        if (row.message == m.message) {
            row.act(w, m);
            return w.handled ? row.result : 0;
        }
    }
    w.handled = 0;
    return 0;
}

// A dialog's results always travel through DWLP_MSGRESULT; its procedure
// returns `handled`.
LRESULT Answer(const NWindow& w, const WindowMessage& m, LRESULT result) {
    if (w.isDialog) {
        SetWindowLongPtrW(m.window, DWLP_MSGRESULT, result);
        return w.handled;
    }
    return w.handled ? result : DefWindowProcW(m.window, m.message, m.wParam, m.lParam);
}
} // namespace

LRESULT DispatchToObject(NWindow& object, const WindowMessage& message) {
    // 1. An unbound object gets nothing.
    object.handled = 0;
    if (!object.hwnd)
        return 0;
    // 2. The hook.
    LRESULT result = object.OnMessage(message.window, message.message, message.wParam,
                                      message.lParam, &object.handled);
    if (object.handled)
        return Answer(object, message, result);
    // 3. The table.
    object.handled = 1;
    result = Act(object, message);
    // 4. The result, or default processing.
    return Answer(object, message, result);
}
