#pragma once

#include "foundation/nlists.h"
#include "foundation/nmutex.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <cstdint>

// A timer of a window. Nothing here adds one: whoever derives sets the
// platform's timer and adds the entry under `timerLock`.
struct NTimerEntry {
    uint64_t id = 0;
    int64_t value = 0; // the owner's; handed to OnTimer
};

// Base of every window and dialog that the toolkit makes for itself: binds one
// object to one window, turns its messages into calls of the virtual
// operations, and owns what dies with the window.
//
// An object and its window belong to the thread that made the window; the
// operations are called on it. A handler may call Destroy or Create, but must
// not delete its object. While Destroy runs, which brings OnHide and OnDestroy,
// all three of Destroy, Create and ShowDialog do nothing. What a handler throws
// goes no further than the window procedure: the message gets default
// processing.
//
// The derived part is gone when this destructor runs: a class that needs its
// handlers during teardown calls Destroy in its own.
class NWindow {
public:
    NWindow() = default;
    NWindow(const NWindow&) = delete;
    NWindow& operator=(const NWindow&) = delete;

    // The order of the virtual operations is fixed: new ones don't go between.
    // Destroys the window, its class, the cursor and the icons.
    virtual ~NWindow();

    // The messages, in alphabetical order of the events. message_dispatch.cpp
    // has the table of which message calls which with what. `handled` is 1
    // when a handler is called; one that leaves it so has dealt with the
    // message, one that clears it lets default processing run.
    //
    // `x` and `y` of the mouse are client coordinates and come unsigned: left
    // of or above the client area they are large. That is wanted.
    virtual void OnActivate(HWND, int32_t /*minimised*/, int32_t /*state*/) { handled = 0; }
    virtual void OnClose(int32_t /*one*/) { handled = 0; }
    // Screen coordinates, unsigned too.
    virtual void OnContextMenu(HWND, int32_t /*x*/, int32_t /*y*/) { handled = 0; }
    // Default processing doesn't run unless this clears `handled`.
    virtual void OnCommand(int32_t /*id*/, HWND /*control*/, int32_t /*code*/) {}
    // WM_CREATE of a window, WM_INITDIALOG of a dialog.
    virtual void OnCreate(int32_t /*one*/) { handled = 0; }
    virtual void OnDestroy(int32_t /*one*/) { handled = 0; }
    virtual void OnDeactivate(HWND, int32_t /*minimised*/) { handled = 0; }
    virtual void OnDrawItem(HWND, uint32_t /*id*/, DRAWITEMSTRUCT*) { handled = 0; }
    virtual void OnEraseBackground(HDC) { handled = 0; }
    virtual void OnHide(int32_t /*status*/) { handled = 0; }
    virtual void OnKeyDown(uint32_t /*key*/, uint32_t /*flags*/) { handled = 0; }
    virtual void OnKeyUp(uint32_t /*key*/, uint32_t /*flags*/) { handled = 0; }
    virtual void OnChar(wchar_t) { handled = 0; }
    virtual void OnMouseDown(int32_t /*x*/, int32_t /*y*/, uint32_t /*message*/,
                             uint32_t /*keys*/) {
        handled = 0;
    }
    virtual void OnMouseUp(int32_t /*x*/, int32_t /*y*/, uint32_t /*message*/, uint32_t /*keys*/) {
        handled = 0;
    }
    virtual void OnMouseMove(int32_t /*x*/, int32_t /*y*/, uint32_t /*keys*/) { handled = 0; }
    // Screen coordinates, unsigned too.
    virtual void OnMouseWheel(int32_t /*x*/, int32_t /*y*/, int32_t /*delta*/, uint32_t /*keys*/) {
        handled = 0;
    }
    // Signed.
    virtual void OnMove(int32_t /*x*/, int32_t /*y*/) { handled = 0; }
    virtual void OnNotify(uint64_t /*id*/, uint32_t /*code*/, HWND /*sender*/) { handled = 0; }
    // Default processing follows whatever this does to `handled`.
    virtual void OnPaint(int32_t /*one*/) { handled = 0; }
    virtual void OnShow(int32_t /*status*/) { handled = 0; }
    virtual void OnSize(int32_t /*width*/, int32_t /*height*/, int32_t /*type*/) { handled = 0; }
    // An SC_ value. Default processing follows always.
    virtual void OnSysCommand(uint32_t /*command*/) {}
    // Called with `timerLock` held.
    virtual void OnTimer(uint64_t /*id*/, int64_t /*value*/) { handled = 0; }

    // The hook: runs first, for every message of the bound window. If it sets
    // *handled, nothing else runs, and its result is the message's.
    virtual LRESULT OnMessage(HWND, UINT, WPARAM, LPARAM, int32_t* /*handled*/) { return 0; }

    // The nine command buttons, called before OnCommand.
    virtual void OnAbort(int32_t /*one*/) {}
    virtual void OnCancel(int32_t /*one*/) {}
    virtual void OnCloseButton(int32_t /*one*/) {}
    virtual void OnHelp(int32_t /*one*/) {}
    virtual void OnIgnore(int32_t /*one*/) {}
    virtual void OnNo(int32_t /*one*/) {}
    virtual void OnOK(int32_t /*one*/) {}
    virtual void OnRetry(int32_t /*one*/) {}
    virtual void OnYes(int32_t /*one*/) {}

    // Destroys an earlier window, and makes a window whose outer edges are
    // `rect`. Without `ofClass` it gets a window class of its own, made with
    // `classStyle`. A window of another's class is bound to `hwnd`, but its
    // messages go to that class. The module is the host process's. `hwnd` is
    // null after it if there is no window.
    void Create(const wchar_t* title, const RECT& rect, DWORD style, DWORD exStyle = 0,
                HWND parent = nullptr, UINT classStyle = 0, const wchar_t* ofClass = nullptr,
                HMENU menu = nullptr);
    // Destroys an earlier window, and shows the dialog of that resource of
    // `module`, null for the host process. Modal: returns what the dialog was
    // ended with, or -1 if there is none; `hwnd` keeps the gone window until
    // Destroy. Otherwise 1, or 0 if there is no dialog.
    INT_PTR ShowDialog(uint16_t resourceId, HWND parent, bool modal, HINSTANCE module = nullptr);
    // Hides and destroys the window with its timers, then its class. May be
    // called again.
    void Destroy();

    // Helpers. Without a window they do nothing, and return 0 or an empty
    // rectangle.
    bool EndDialog(INT_PTR code);
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    // Null is all of the client area.
    void Invalidate(const RECT* rect, bool erase);
    void Hide();
    void Maximise();
    void Enable();
    bool IsZoomed() const;
    bool IsIconic() const;
    bool IsVisible() const;
    // Takes both icons, either of which may be null, and keeps copies for the
    // window's class; without a window they stay the caller's. The class of a
    // dialog is that of all dialogs of the process, and one that Create was
    // given is others' too: it still names the copies when this object's end
    // has destroyed them, and its windows are without them until somebody sets
    // others.
    void SetIcons(HICON big, HICON smallIconGiven);
    // An IDC_ value, for the window's class. Destroys `cursor`.
    void SetCursor(const wchar_t* systemId);
    // A COLOR_ value, for the window's class; 0 stands for COLOR_WINDOW.
    void SetBackground(int32_t colourIndex);
    HWND GetItem(int32_t id) const;
    // From screen to client coordinates.
    bool ToClient(POINT& point) const;
    RECT ClientRect() const;
    // Screen coordinates.
    RECT WindowRect() const;
    int32_t Width() const;
    int32_t Height() const;
    // Outer edges, in screen or parent coordinates. KeepPlace in any argument
    // keeps what the window has.
    void SetPos(int32_t x, int32_t y, int32_t width, int32_t height);
    void Centre();
    // `repaint` counts only when drawing is turned on.
    void SetRedraw(bool on, bool repaint = false);
    // Dialog units to pixels by the font of `window`, null for this one. What
    // isn't a dialog leaves the value as it is.
    int32_t DlgUnitsX(int32_t value, HWND window = nullptr) const;
    int32_t DlgUnitsY(int32_t value, HWND window = nullptr) const;

    static constexpr int32_t KeepPlace = -12345;

    // One for all messages: a message that is dealt with inside a handler, as
    // an effect of what the handler does, leaves its own value here. A handler
    // to which that matters sets it last.
    int32_t handled = 0;
    HWND hwnd = nullptr;  // owned
    uint8_t isDialog = 0; // served by the dialog procedure

private:
    bool isBeingDestroyed_ = false; // Destroy is at work

public:
    HCURSOR cursor = nullptr; // owned, as the icons are
    HICON bigIcon = nullptr;
    HICON smallIcon = nullptr;
    NString className; // the class that this object registered; empty for none
    NKeyedList<NTimerEntry> timers;
    NTimerEntry* currentTimer = nullptr; // the entry last looked at
    NMutex timerLock;                    // guards `timers`

private:
    bool RegisterOwnClass(UINT classStyle);
    void DestroyTimers();
};
