#include "tests/support/leak_counters.h"
#include "tests/support/test_cursor.h"
#include "tests/toolkit/button_dialog.h"
#include "tests/toolkit/pixels.h"
#include "tests/toolkit/window_facts.h"

#include <gtest/gtest.h>

namespace {
constexpr COLORREF Normal = RGB(255, 0, 0); // of the strips' frames
constexpr COLORREF Focus = RGB(255, 255, 0);
constexpr COLORREF Untouched = RGB(1, 2, 3);

const std::vector<bool> LeftClick = {false};

class NButtonKeysTest : public testing::Test {
protected:
    NButtonKeysTest() { dialog.Add(button, 20, 20); }

    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam = 0) {
        return SendMessageW(button.window, message, wParam, lParam);
    }
    // As the button's own procedure sees it.
    int32_t Handles(UINT message, WPARAM wParam, LPARAM lParam = 0) {
        int32_t handled = 0;
        result = button.OnSubclassMessage(button.window, message, wParam, lParam, &handled);
        return handled;
    }
    void Spoil() { SetPixelV(button.display.dc, 3, 0, Untouched); }
    bool Repainted() { return GetPixel(button.display.dc, 3, 0) != Untouched; }
    // Of the button with the menu of the resources, in place of the other.
    void AddWithMenu(HMENU menu = nullptr, int menuId = IDM_BUTTON) {
        dialog.bar.Destroy();
        dialog.bar.Start(dialog.window);
        NButtonSpec spec;
        spec.x = 20;
        spec.y = 20;
        spec.menuId = menuId;
        spec.menu = menu;
        dialog.Add(button, spec);
    }
    void Press() {
        TestCursor::MoveTo(button.window, 1, 1);
        dialog.Filter(WM_LBUTTONDOWN);
    }

    TestCursor cursor;
    RecordingButton button;
    ButtonDialog dialog;
    LRESULT result = 0;
};

MSG KeyMessage(UINT message) {
    MSG key = {};
    key.message = message;
    key.wParam = VK_RETURN;
    return key;
}
} // namespace

TEST_F(NButtonKeysTest, SpaceAndReturnClickOnKeyUpNotOnKeyDown) {
    for (WPARAM key : {VK_SPACE, VK_RETURN}) {
        button.clicks.clear();
        Send(WM_KEYDOWN, key);
        EXPECT_TRUE(button.keyDown);
        EXPECT_TRUE(button.clicks.empty());
        Send(WM_KEYUP, key);
        EXPECT_FALSE(button.keyDown);
        EXPECT_EQ(LeftClick, button.clicks);
    }
}

// Each row of what keys and focus do, to a button as it is told.
TEST_F(NButtonKeysTest, KeysAndFocusRepaintAndSetTheFlag) {
    const struct {
        const char* what;
        UINT message;
        WPARAM key;
        bool disabled;
        bool keyDownBefore;
        bool keyDownAfter;
        size_t clicks;
        bool repaints;
    } rows[] = {
        {"focus", WM_SETFOCUS, 0, false, false, false, 0, true},
        // Wanted: a key that is held keeps its mark.
        {"focus lost", WM_KILLFOCUS, 0, false, true, true, 0, true},
        {"space", WM_KEYDOWN, VK_SPACE, false, false, true, 0, true},
        {"return", WM_KEYDOWN, VK_RETURN, false, false, true, 0, true},
        {"space, disabled", WM_KEYDOWN, VK_SPACE, true, true, false, 0, false},
        {"return, disabled", WM_KEYDOWN, VK_RETURN, true, true, false, 0, false},
        {"another key", WM_KEYDOWN, 'A', false, true, false, 0, true},
        {"space let go", WM_KEYUP, VK_SPACE, false, true, false, 1, true},
        {"return let go", WM_KEYUP, VK_RETURN, false, true, false, 1, true},
        // Wanted: what was disabled since then clicks too.
        {"space let go, disabled", WM_KEYUP, VK_SPACE, true, true, false, 1, true},
        {"return let go, disabled", WM_KEYUP, VK_RETURN, true, true, false, 1, true},
        {"space let go that was not down", WM_KEYUP, VK_SPACE, false, false, false, 0, true},
        {"another key let go", WM_KEYUP, 'A', false, true, true, 0, true},
        {"a character", WM_CHAR, ' ', false, true, true, 0, false},
        {"below the focus messages", WM_ACTIVATE, 1, false, true, true, 0, false}};
    for (const auto& row : rows) {
        EnableWindow(button.window, !row.disabled);
        button.keyDown = row.keyDownBefore;
        button.clicks.clear();
        Spoil();
        EXPECT_EQ(0, Handles(row.message, row.key)) << row.what;
        EXPECT_EQ(0, result) << row.what;
        EXPECT_EQ(row.keyDownAfter, button.keyDown) << row.what;
        EXPECT_EQ(row.clicks, button.clicks.size()) << row.what;
        EXPECT_EQ(row.repaints, Repainted()) << row.what;
        EXPECT_EQ(ButtonIdle, button.state) << row.what;
    }
}

TEST_F(NButtonKeysTest, TheFocusIsShownAsItComesAndGoes) {
    SetFocus(nullptr);
    SetFocus(button.window);
    EXPECT_EQ(Focus, GetPixel(button.display.dc, 2, 0));
    SetFocus(nullptr);
    EXPECT_EQ(Normal, GetPixel(button.display.dc, 2, 0));
}

TEST_F(NButtonKeysTest, AHeldKeyShowsAsPressedFromTheSecondTickOn) {
    Send(WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(ButtonIdle, button.state);
    dialog.Tick();
    dialog.Tick();
    EXPECT_EQ(ButtonPressed, button.state);
    dialog.Tick();
    EXPECT_EQ(std::vector<bool>{false}, button.repeats);
    Send(WM_KEYUP, VK_SPACE);
    dialog.Tick();
    EXPECT_EQ(ButtonIdle, button.state);
}

TEST_F(NButtonKeysTest, TheDialogLeavesTheReturnKeyToIt) {
    for (UINT message : {WM_KEYDOWN, WM_KEYUP}) {
        const MSG key = KeyMessage(message);
        EXPECT_EQ(1, Handles(WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&key)));
        EXPECT_EQ(4, result);
        EXPECT_EQ(4, Send(WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&key)));
    }
}

TEST_F(NButtonKeysTest, OtherKeysAreTheDialogs) {
    const MSG character = KeyMessage(WM_CHAR);
    const MSG down = KeyMessage(WM_KEYDOWN);
    EXPECT_EQ(0, Handles(WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&character)));
    EXPECT_EQ(0, Handles(WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&down)));
    EXPECT_EQ(0, Handles(WM_GETDLGCODE, VK_RETURN, 0));
    EXPECT_EQ(0, result);
    EXPECT_EQ(DLGC_STATIC, Send(WM_GETDLGCODE, 0) & DLGC_STATIC);
}

TEST_F(NButtonKeysTest, InADialogReturnClicksTheFocusedButton) {
    SetFocus(button.window);
    for (UINT message : {WM_KEYDOWN, WM_KEYUP}) {
        MSG key = KeyMessage(message);
        key.hwnd = button.window;
        if (!IsDialogMessageW(dialog.window, &key))
            DispatchMessageW(&key);
    }
    EXPECT_EQ(LeftClick, button.clicks);
    EXPECT_TRUE(dialog.commands.empty());
}

// By the mouse it is inside both.
TEST_F(NButtonKeysTest, AClickByKeyIsOutsideTheBarsLockAndFilter) {
    button.onClick = [&] {
        EXPECT_TRUE(IsFree(dialog.bar.lock));
        EXPECT_EQ((Filtered{0, 1}), dialog.Filter(WM_TIMER, dialog.bar.timerId));
    };
    Send(WM_KEYDOWN, VK_SPACE);
    Send(WM_KEYUP, VK_SPACE);
    EXPECT_EQ(LeftClick, button.clicks);
}

TEST_F(NButtonKeysTest, AClickByKeyMayDestroyTheButton) {
    button.onClick = [&] { dialog.bar.Destroy(); };
    Send(WM_KEYDOWN, VK_SPACE);
    Send(WM_KEYUP, VK_SPACE);
    EXPECT_EQ(nullptr, button.window);
}

TEST_F(NButtonKeysTest, APressOnAButtonWithAMenuShowsItAndNeverClicks) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_ESCAPE});
    keys.whileShown = [&] {
        EXPECT_TRUE(button.keyDown);
        EXPECT_TRUE(button.leftDown);
        EXPECT_EQ(ButtonPressed, button.state);
    };
    TestCursor::MoveTo(button.window, 1, 1);
    EXPECT_EQ((Filtered{0, 1}), dialog.Filter(WM_LBUTTONDOWN));
    EXPECT_EQ(1, keys.shown);
    EXPECT_FALSE(button.keyDown);
    EXPECT_FALSE(button.leftDown);
    EXPECT_EQ(ButtonHovered, button.state);
    EXPECT_EQ(nullptr, GetCapture());
    dialog.Filter(WM_LBUTTONUP);
    HandlePosted();
    EXPECT_TRUE(button.clicks.empty());
    EXPECT_TRUE(dialog.commands.empty());
}

TEST_F(NButtonKeysTest, ARightPressShowsTheMenuToo) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_ESCAPE});
    TestCursor::MoveTo(button.window, 1, 1);
    EXPECT_EQ((Filtered{0, 1}), dialog.Filter(WM_RBUTTONDOWN));
    EXPECT_EQ(1, keys.shown);
    EXPECT_FALSE(button.rightDown);
}

TEST_F(NButtonKeysTest, TheMenuStandsBelowTheButtonsLeftEdge) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_ESCAPE});
    RECT place = {};
    GetWindowRect(button.window, &place);
    Press();
    EXPECT_EQ(place.left, keys.place.left);
    EXPECT_EQ(place.bottom, keys.place.top);
}

TEST_F(NButtonKeysTest, TheMenusCommandsArriveAtTheOwner) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_DOWN, VK_DOWN, VK_RETURN});
    Press();
    HandlePosted();
    EXPECT_EQ(std::vector<UINT>{ID_MENU_TWO}, dialog.commands);
}

TEST_F(NButtonKeysTest, AKeyShowsTheMenuAndIsConsumed) {
    for (WPARAM key : {VK_SPACE, VK_RETURN}) {
        AddWithMenu();
        dialog.commands.clear();
        MenuKeys keys(dialog, {VK_DOWN, VK_RETURN});
        keys.whileShown = [&] { EXPECT_TRUE(button.keyDown); };
        EXPECT_EQ(1, Handles(WM_KEYDOWN, key));
        EXPECT_EQ(1, keys.shown);
        EXPECT_FALSE(button.keyDown);
        Send(WM_KEYUP, key);
        HandlePosted();
        EXPECT_TRUE(button.clicks.empty());
        EXPECT_EQ(std::vector<UINT>{ID_MENU_ONE}, dialog.commands);
    }
}

TEST_F(NButtonKeysTest, TheCharacterOfTheKeyDoesNotCloseTheMenu) {
    for (WPARAM key : {VK_SPACE, VK_RETURN}) {
        AddWithMenu();
        MenuKeys keys(dialog, {VK_ESCAPE});
        PostMessageW(button.window, WM_CHAR, key, 0); // as TranslateMessage does before
        Send(WM_KEYDOWN, key);
        EXPECT_EQ(1, keys.shown);
    }
}

TEST_F(NButtonKeysTest, WithoutAMenuTheCharacterOfTheKeyStays) {
    PostMessageW(button.window, WM_CHAR, VK_SPACE, 0);
    Send(WM_KEYDOWN, VK_SPACE);
    MSG character = {};
    EXPECT_TRUE(PeekMessageW(&character, button.window, WM_CHAR, WM_CHAR, PM_REMOVE));
}

TEST_F(NButtonKeysTest, WithAMenuThatCannotBeLoadedTheCharacterOfTheKeyStays) {
    constexpr int noMenu = 9999;
    AddWithMenu(nullptr, noMenu);
    PostMessageW(button.window, WM_CHAR, VK_SPACE, 0);
    Send(WM_KEYDOWN, VK_SPACE);
    EXPECT_TRUE(button.keyDown);
    MSG character = {};
    EXPECT_TRUE(PeekMessageW(&character, button.window, WM_CHAR, WM_CHAR, PM_REMOVE));
}

TEST_F(NButtonKeysTest, AMenuByTheMouseLeavesCharactersAlone) {
    AddWithMenu();
    MenuKeys keys(dialog, {});
    MSG character = {};
    bool waits = false;
    keys.whileShown = [&] {
        PostMessageW(button.window, WM_CHAR, VK_SPACE, 0);
        waits = PeekMessageW(&character, button.window, WM_CHAR, WM_CHAR, PM_REMOVE);
        EndMenu();
    };
    Press();
    EXPECT_TRUE(waits);
}

TEST_F(NButtonKeysTest, APressHasTheBarsLockWhileItsMenuStands) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_ESCAPE});
    keys.whileShown = [&] { EXPECT_FALSE(IsFree(dialog.bar.lock)); };
    Press();
    EXPECT_EQ(1, keys.shown);
    EXPECT_TRUE(IsFree(dialog.bar.lock));
}

TEST_F(NButtonKeysTest, TheBarMayBeDestroyedWhileAMenuStands) {
    for (bool byKey : {false, true}) {
        AddWithMenu();
        MenuKeys keys(dialog, {VK_ESCAPE});
        keys.whileShown = [&] { dialog.bar.Destroy(); };
        if (byKey)
            Send(WM_KEYDOWN, VK_SPACE);
        else
            Press();
        EXPECT_EQ(1, keys.shown) << byKey;
        EXPECT_EQ(nullptr, button.window);
        EXPECT_FALSE(button.leftDown);
        EXPECT_FALSE(button.keyDown);
        EXPECT_TRUE(IsFree(dialog.bar.lock));
    }
}

TEST_F(NButtonKeysTest, TheDialogMayBeDestroyedWhileAMenuStands) {
    for (bool byKey : {false, true}) {
        ButtonDialog another;
        RecordingButton one;
        NButtonSpec spec;
        spec.menuId = IDM_BUTTON;
        another.Add(one, spec);
        MenuKeys keys(another, {});
        keys.whileShown = [&] {
            DestroyWindow(another.window);
            EndMenu();
        };
        TestCursor::MoveTo(one.window, 1, 1);
        if (byKey)
            SendMessageW(one.window, WM_KEYDOWN, VK_SPACE, 0);
        else
            SendMessageW(another.window, WM_LBUTTONDOWN, 0, 0);
        EXPECT_EQ(1, keys.shown) << byKey;
        EXPECT_FALSE(IsWindow(another.window));
        EXPECT_EQ(nullptr, one.window);
        EXPECT_FALSE(one.leftDown);
        EXPECT_FALSE(one.keyDown);
        EXPECT_TRUE(IsFree(another.bar.lock));
    }
}

TEST_F(NButtonKeysTest, WhileAMenuOpenedByKeyStandsTheButtonShowsAsPressed) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_ESCAPE});
    keys.whileShown = [&] {
        dialog.Tick();
        dialog.Tick();
        EXPECT_EQ(ButtonPressed, button.state);
    };
    Send(WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(1, keys.shown);
}

TEST_F(NButtonKeysTest, ALiveMenuGoesBeforeTheOneOfTheResources) {
    HMENU live = CreateMenu();
    HMENU popup = CreatePopupMenu();
    AppendMenuW(popup, MF_STRING, 777, L"Live");
    AppendMenuW(live, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), L"First");
    HMENU second = CreatePopupMenu();
    AppendMenuW(second, MF_STRING, 778, L"Not this one");
    AppendMenuW(live, MF_POPUP, reinterpret_cast<UINT_PTR>(second), L"Second");
    AddWithMenu(live);
    MenuKeys keys(dialog, {VK_DOWN, VK_RETURN});
    Press();
    HandlePosted();
    EXPECT_EQ(std::vector<UINT>{777}, dialog.commands);
    EXPECT_TRUE(IsMenu(live)); // the owner's
    DestroyMenu(live);
}

TEST_F(NButtonKeysTest, ADisabledButtonShowsNoMenuAndTakesThePress) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_ESCAPE});
    button.Disable();
    EXPECT_TRUE(button.ShowMenu(dialog.window));
    TestCursor::MoveTo(button.window, 1, 1);
    EXPECT_EQ((Filtered{0, 1}), dialog.Filter(WM_LBUTTONDOWN));
    EXPECT_FALSE(button.leftDown);
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(0, keys.shown);
}

TEST_F(NButtonKeysTest, WithoutAMenuOrWithOneThatCannotBeLoadedThereIsNone) {
    EXPECT_FALSE(button.ShowMenu(dialog.window));
    constexpr int noMenu = 9999;
    AddWithMenu(nullptr, noMenu);
    EXPECT_FALSE(button.ShowMenu(dialog.window));
    EXPECT_FALSE(button.keyDown);
    // It is pressed as any button then.
    Press();
    dialog.Filter(WM_LBUTTONUP);
    EXPECT_EQ(LeftClick, button.clicks);
}

TEST_F(NButtonKeysTest, AMenuOfTheResourcesIsDestroyedAfterIt) {
    AddWithMenu();
    MenuKeys keys(dialog, {VK_ESCAPE});
    Press();
    const int before = CountUserObjects();
    for (int time = 0; time < 20; ++time)
        button.ShowMenu(dialog.window);
    EXPECT_EQ(21, keys.shown);
    EXPECT_EQ(before, CountUserObjects());
}
