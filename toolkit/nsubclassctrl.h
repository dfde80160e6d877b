#pragma once

#include "foundation/windows_lean.h"

#include <cstdint>

class NCallCount;

// Attaches an object to a window that somebody else registered, by standing in
// for its window procedure. An object belongs to its window's thread; a window
// has one object at most, whose address is in its GWLP_USERDATA.
//
// One process-wide lock is held through each message of each bound window,
// default processing included. So it is held, too, as long as a menu is open
// that a key of the window opened, and the bound windows of other threads wait.
// That is wanted. The lock is recursive on one thread: a handler may send
// messages, bind and unbind.
class NSubClassCtrl {
public:
    NSubClassCtrl() = default;
    NSubClassCtrl(const NSubClassCtrl&) = delete;
    NSubClassCtrl& operator=(const NSubClassCtrl&) = delete;
    virtual ~NSubClassCtrl() { Unbind(); }

    // Every message of the bound window comes here first. The window's own
    // procedure follows, and gives the result, unless `*handled` comes back
    // set. It follows an exception, too, which goes no further.
    virtual LRESULT OnSubclassMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      int32_t* handled);

    // Leaves an earlier window. With null, for a window that another object
    // has, or for one whose procedure can't be replaced (it is of another
    // process, or is none at all), `boundWindow` is null after it.
    void Bind(HWND window);
    // Gives the window its own procedure back. May be called again.
    void Unbind();

    WNDPROC previousProc = nullptr; // the procedure that was replaced
    HWND boundWindow = nullptr;
    NCallCount* calls = nullptr; // each message counts as a call there; null for none

private:
    static LRESULT CALLBACK SubclassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};
