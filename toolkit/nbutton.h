#pragma once

#include "toolkit/ncanvas.h"
#include "toolkit/nsubclassctrl.h"
#include "toolkit/ntooltip.h"

#include <cstdint>

// What a button's strip holds, and how the button behaves; 0 is taken as
// `ButtonFlagsIfNone`. The frames of a strip stand left to right: normal, down,
// hover, focus, disabled, hot down, the last four only if their flag says so.
enum ButtonFlags : int32_t {
    ButtonDefault = 1,  // means nothing to the code
    ButtonHover = 2,    // a frame for the cursor being over it
    ButtonFocus = 4,    // an overlay for the focus; the window is a tab stop
    ButtonDisabled = 8, // an overlay for the disabled window
    ButtonHotDown = 16, // a frame for the cursor being over a latched button
    ButtonMasked = 128, // the strip is twice as high: colours above, masks below
    ButtonFlagsIfNone = ButtonDefault | ButtonHover | ButtonFocus | ButtonMasked
};

enum ButtonState : int32_t {
    ButtonIdle = 0,
    ButtonPressedToo = 1, // counts as pressed wherever it is tested; nothing sets it
    ButtonHovered = 2,
    ButtonPressed = 3
};

// What an owner fills in to have a button made. All that it points to need
// live no longer than the call, but for the menu.
struct NButtonSpec {
    int32_t x = 0; // pixels, in the owner's client area
    int32_t y = 0;
    const wchar_t* text = nullptr;        // the window's title
    const wchar_t* toolTipText = nullptr; // null for no tip
    int32_t flags = 0;                    // ButtonFlags
    const NCanvas* background = nullptr;  // a picture of the owner's background, whose
                                          // (0, 0) is that of the client area; null for
                                          // plain COLOR_BTNFACE
    int32_t menuId = 0;                   // a menu of the module's, shown on a press
    HMENU menu = nullptr;                 // the owner's; goes before `menuId`
};

// A picture button. It is made by NButtonBar::Add, and gets its mouse and its
// timer from there; keys come to its own window. It is the owner's, and has to
// outlive the bar's use of it. All of it belongs to the owner window's thread.
// Without a window the operations do nothing but keep their flags.
class NButton : public NSubClassCtrl {
public:
    ~NButton() override { Destroy(); }

    LRESULT OnSubclassMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                              int32_t* handled) override;
    // The button was pressed and let go over it, with the right mouse button or
    // not; or by a key. May disable and latch buttons, and destroy the bar's.
    //
    // By the mouse it runs inside the bar's filter, with the bar's lock held; by
    // a key outside both, with the lock of all subclassed windows alone.
    virtual void OnClick(bool isRight);
    // At each tick of the bar's timer while the button shows as pressed. True
    // unless the left mouse button or a key holds it.
    virtual void OnRepeat(bool isRight);

    // What NButtonBar::Add does, once `strip` and `module` are set: cuts the
    // strip into frames, and makes the window on `ownerWindow`.
    void Create(const NButtonSpec& spec, int64_t value, HWND ownerWindow);

    void Enable();
    void Disable();
    // A latched button shows as held down.
    void Latch() { SetLatched(true); }
    void Unlatch() { SetLatched(false); }
    void ToggleLatch() { SetLatched(!latched); }

    // Takes the tip, the window and the pictures down, and ends a partnership
    // on both sides. May be called again.
    void Destroy();

    // Takes the state, and draws its look on `dc`, or on the window's own for
    // null. Nothing is drawn for the present state unless `force` is set or
    // there is a `dc`.
    void Paint(HDC dc, int32_t newState, bool force);

    // Shows the menu's first sub-menu below the button until it is closed; its
    // commands go to `ownerWindow`. False if there is no menu. A disabled
    // button shows nothing, and that counts as shown.
    bool ShowMenu(HWND ownerWindow);

    bool IsDown() const { return state == ButtonPressedToo || state == ButtonPressed; }
    bool IsHeld() const { return leftDown || rightDown || keyDown; }
    bool IsEnabled() const { return IsWindowEnabled(window) != FALSE; }
    // On both sides.
    void ClearPartner();

    int32_t state = ButtonIdle;
    bool leftDown = false; // the mouse button that went down over it is held
    bool rightDown = false;
    bool keyDown = false;       // also while the menu is open; stays when the focus goes: wanted
    NButton* partner = nullptr; // shares the hover look with this one; set after Add
    int64_t userValue = 0;      // the owner's
    int32_t flags = 0;
    int32_t menuId = 0;
    HMENU menu = nullptr; // not owned
    HWND window = nullptr;
    HWND owner = nullptr;
    HINSTANCE module = nullptr; // holds the strip and the menu; null for the host process
    NCanvas strip;
    NCanvas display;        // one frame in size: the look, as composed
    NCanvas backdrop;       // one frame in size: the background behind the button
    int32_t frameWidth = 0; // pixels
    int32_t frameHeight = 0;
    NToolTip toolTip;
    bool latched = false;

private:
    void SetLatched(bool value);
    void Repaint() { Paint(nullptr, state, true); }
    void MeasureFrames();
    void MakePictures(const NButtonSpec& spec);
    void MakeWindow(const NButtonSpec& spec);
    int32_t ShownState() const;
    int FrameOf(ButtonFlags optionalFrame) const;
    int FrameForState(int32_t shown) const;
    void Compose(int frame);
    void DrawMasked(int frame);
    bool HasMenu() const { return menu || menuId; }
    bool OpenMenu(HWND ownerWindow, bool byKey);
    void OnKeyDown(WPARAM key, int32_t* handled);
    void OnKeyUp(WPARAM key);
};
