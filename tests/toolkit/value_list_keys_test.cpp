#include "tests/support/nstring_printer.h"
#include "tests/support/test_cursor.h"
#include "tests/toolkit/list_dialog.h"

#include <gtest/gtest.h>

#include <optional>

namespace {
// A message of the queue of this thread for the window, or none.
std::optional<MSG> TakePosted(HWND window, UINT message) {
    MSG posted = {};
    if (!PeekMessageW(&posted, window, message, message, PM_REMOVE))
        return std::nullopt;
    return posted;
}

class ValueListKeys : public testing::Test {
protected:
    ValueListKeys() { dialog.list.owner = &changes; }

    // Whether the list box's message was consumed.
    bool Tell(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        int32_t handled = 0;
        EXPECT_EQ(
            dialog.list.OnSubclassMessage(dialog.list.listBox, message, wParam, lParam, &handled),
            0);
        return handled != 0;
    }
    void AddRows(int count) {
        for (int row = 0; row < count; ++row)
            dialog.Add(Plain, L"n", L"v");
    }
    int AddCounting(int32_t kind, const wchar_t* value, bool readOnly = false) {
        NValueRowInit init;
        init.kind = kind;
        init.value = value;
        init.readOnly = readOnly;
        init.onChange = [](NValueList& list) { ++*static_cast<int*>(list.owner); };
        return dialog.Add(init);
    }
    std::wstring Value(int row) { return dialog.list.rows[row]->value.Text; }
    NValueList::clValueControl& Control() { return dialog.list.control; }

    ListDialog dialog;
    int changes = 0;
};

TEST_F(ValueListKeys, TheFocusFromOutsideStartsTheEdit) {
    dialog.Add(Edit, L"n", L"v");
    dialog.list.Select(0);
    SetFocus(dialog.Button());
    EXPECT_FALSE(Control().editor);
    SetFocus(dialog.list.listBox);
    EXPECT_TRUE(Control().editor);
    EXPECT_EQ(GetFocus(), Control().editor);
}

TEST_F(ValueListKeys, TheFocusFromNowhereOrFromAChildStartsNone) {
    dialog.AddWithChoices(ComboEdit, L"n", L"v", {L"v"});
    dialog.list.Select(0);
    const HWND editor = Control().editor;
    EXPECT_FALSE(Tell(WM_SETFOCUS, reinterpret_cast<WPARAM>(editor)));
    EXPECT_FALSE(Tell(WM_SETFOCUS, reinterpret_cast<WPARAM>(GetWindow(editor, GW_CHILD))));
    EXPECT_FALSE(Tell(WM_SETFOCUS, 0));
    EXPECT_EQ(Control().editor, editor);
    EXPECT_FALSE(Tell(WM_SETFOCUS, reinterpret_cast<WPARAM>(dialog.Button())));
    EXPECT_NE(Control().editor, editor); // a new one
    EXPECT_TRUE(Control().editor);
}

TEST_F(ValueListKeys, TheFocusThatGoesElsewhereEndsTheEdit) {
    NValueRowInit init;
    init.kind = Edit;
    init.value = L"old";
    init.buttonText = L"View";
    dialog.Add(init);
    dialog.list.Select(0);
    SetWindowTextW(Control().editor, L"new");
    for (HWND own : {Control().editor, Control().button}) {
        EXPECT_FALSE(Tell(WM_KILLFOCUS, reinterpret_cast<WPARAM>(own)));
        EXPECT_TRUE(Control().editor);
    }
    EXPECT_FALSE(Tell(WM_KILLFOCUS, reinterpret_cast<WPARAM>(dialog.Button())));
    EXPECT_FALSE(Control().editor);
    EXPECT_EQ(Value(0), L"new");
}

// As the mouse picks it: the list has the choice, and the text follows.
TEST_F(ValueListKeys, AChoiceIsStoredThoughItsTextIsNotThereYet) {
    const int row = dialog.AddWithChoices(ComboEdit, L"n", L"old", {L"Rock", L"Jazz"});
    static NString seen;
    seen = L"";
    dialog.list.rows[row]->onChange = [](NValueList& list) { seen = list.rows[0]->value; };
    dialog.list.Select(row);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    ASSERT_TRUE(GetComboBoxInfo(Control().editor, &info));
    SendMessageW(info.hwndList, LB_SETCURSEL, 1, 0);
    ASSERT_EQ(TextOf(Control().editor), L"old");
    SendMessageW(dialog.list.listBox, WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(Control().editor));
    EXPECT_EQ(seen, L"Jazz");
    EXPECT_EQ(Value(row), L"Jazz");
}

TEST_F(ValueListKeys, TheFocusThatGoesNowhereLeavesTheEdit) {
    dialog.Add(Edit, L"n", L"v");
    dialog.list.Select(0);
    const HWND editor = Control().editor;
    EXPECT_FALSE(Tell(WM_KILLFOCUS, 0));
    EXPECT_EQ(Control().editor, editor);
}

TEST_F(ValueListKeys, ACommandOfNoWindowIsNotTheButtons) {
    NValueRowInit init;
    static int presses;
    presses = 0;
    init.onButton = [](NValueList&) { ++presses; };
    dialog.Add(init);
    dialog.list.Select(0);
    ASSERT_EQ(Control().button, nullptr);
    SendMessageW(dialog.list.listBox, WM_COMMAND, 1, 0);
    EXPECT_EQ(presses, 0);
}

TEST_F(ValueListKeys, TheFocusThatGoesElsewhereEndsANamesEditAndItsValueGoesOn) {
    dialog.Add(Edit, L"n", L"v");
    dialog.list.Select(0);
    dialog.list.EditSelectionName(nullptr, false);
    Tell(WM_KILLFOCUS, reinterpret_cast<WPARAM>(dialog.Button()));
    EXPECT_EQ(dialog.list.edited, std::vector<int>({0}));
    EXPECT_TRUE(Control().editor);
    EXPECT_EQ(Control().nameMode, 0);
}

TEST_F(ValueListKeys, TabGoesOnToTheDialog) {
    HandlePosted();
    EXPECT_FALSE(Tell(WM_KEYDOWN, VK_TAB, 0x0F0001));
    const auto down = TakePosted(dialog.window, WM_KEYDOWN);
    ASSERT_TRUE(down);
    EXPECT_EQ(down->wParam, static_cast<WPARAM>(VK_TAB));
    EXPECT_EQ(down->lParam, 0x0F0001);
    EXPECT_FALSE(Tell(WM_KEYUP, VK_TAB));
    const auto up = TakePosted(dialog.window, WM_KEYUP);
    ASSERT_TRUE(up);
    EXPECT_EQ(up->wParam, WPARAM{9});
}

TEST_F(ValueListKeys, TheSpaceKeyTogglesAMark) {
    const int check = AddCounting(Check, L"");
    const int radio = AddCounting(Radio, L"1");
    dialog.list.Select(check);
    EXPECT_TRUE(Tell(WM_KEYDOWN, VK_SPACE));
    EXPECT_EQ(Value(check), L"1");
    EXPECT_TRUE(Tell(WM_KEYDOWN, VK_SPACE));
    EXPECT_EQ(Value(check), L"");
    EXPECT_EQ(changes, 2);
    dialog.list.Select(radio);
    EXPECT_TRUE(Tell(WM_KEYDOWN, VK_SPACE));
    EXPECT_TRUE(Tell(WM_KEYDOWN, VK_SPACE));
    EXPECT_EQ(Value(radio), L"-1");
    EXPECT_EQ(changes, 4);
}

TEST_F(ValueListKeys, TheSpaceKeyIsConsumedWhereItDoesNothing) {
    EXPECT_TRUE(Tell(WM_KEYDOWN, VK_SPACE)); // nothing is selected
    for (int32_t kind : {Plain, Raw, Link, Heading, Title, Edit, ComboEdit, DropList}) {
        dialog.list.Select(AddCounting(kind, L"1"));
        EXPECT_TRUE(Tell(WM_KEYDOWN, VK_SPACE));
    }
    const int readOnly = AddCounting(Check, L"", true);
    dialog.list.Select(readOnly);
    EXPECT_TRUE(Tell(WM_KEYDOWN, VK_SPACE));
    EXPECT_EQ(Value(readOnly), L"");
    EXPECT_EQ(changes, 0);
}

TEST_F(ValueListKeys, UpAndDownSelectTheNeighbours) {
    AddRows(3);
    EXPECT_TRUE(Tell(WM_KEYDOWN, VK_UP)); // from nothing: to none
    EXPECT_EQ(dialog.list.GetSelection(), -1);
    EXPECT_TRUE(dialog.list.selections.empty());
    for (int expected : {0, 1, 2, 2}) {
        EXPECT_TRUE(Tell(WM_KEYDOWN, VK_DOWN));
        EXPECT_EQ(dialog.list.GetSelection(), expected);
    }
    for (int expected : {1, 0, -1, -1}) { // above the first row is nothing: wanted
        EXPECT_TRUE(Tell(WM_KEYDOWN, VK_UP));
        EXPECT_EQ(dialog.list.GetSelection(), expected);
    }
    EXPECT_EQ(dialog.list.selections, std::vector<int>({0, 1, 2, 1, 0, -1}));
}

TEST_F(ValueListKeys, UpAndDownActWhenTheyArePressedOnly) {
    AddRows(3);
    dialog.list.Select(1);
    EXPECT_FALSE(Tell(WM_KEYUP, VK_UP));
    EXPECT_FALSE(Tell(WM_KEYUP, VK_DOWN));
    EXPECT_EQ(dialog.list.GetSelection(), 1);
}

TEST_F(ValueListKeys, OtherKeysOfTheListBoxAreConsumedWhenPressed) {
    AddRows(3);
    dialog.list.Select(1);
    for (WPARAM key : {VK_SHIFT, VK_CONTROL, VK_LEFT, VK_RIGHT, VK_END, VK_HOME, VK_NEXT, VK_PRIOR})
        EXPECT_TRUE(Tell(WM_KEYDOWN, key)) << key;
    for (WPARAM key : {VK_RETURN, VK_ESCAPE, VK_F1, VK_DELETE})
        EXPECT_FALSE(Tell(WM_KEYDOWN, key)) << key;
    for (WPARAM key : {VK_SHIFT, VK_CONTROL, VK_LEFT, VK_RIGHT, VK_SPACE, VK_RETURN})
        EXPECT_FALSE(Tell(WM_KEYUP, key)) << key;
    EXPECT_EQ(dialog.list.GetSelection(), 1);
}

TEST_F(ValueListKeys, HomeAndEndActWhenTheyAreLetGo) {
    AddRows(5);
    dialog.list.Select(2);
    EXPECT_TRUE(Tell(WM_KEYUP, VK_END));
    EXPECT_EQ(dialog.list.GetSelection(), 4);
    EXPECT_TRUE(Tell(WM_KEYUP, VK_HOME));
    EXPECT_EQ(dialog.list.GetSelection(), 0);
}

class ValueListPages : public ValueListKeys {
protected:
    ValueListPages() { AddRows(200); }

    void MoveTo(int y) {
        SetWindowPos(dialog.window, nullptr, 100, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    int BottomOnScreen() {
        RECT place = {};
        GetWindowRect(dialog.list.listBox, &place);
        return place.bottom;
    }
    int PageDownFrom(int row) {
        dialog.list.Select(row);
        EXPECT_TRUE(Tell(WM_KEYUP, VK_NEXT));
        return dialog.list.GetSelection() - row;
    }
};

TEST_F(ValueListPages, APageGoesAsFarAsTheListBoxReachesDownTheScreen) {
    for (int y : {0, 50, 400}) {
        MoveTo(y);
        const int page = BottomOnScreen() / RowHeight;
        EXPECT_EQ(PageDownFrom(0), page) << y;
        EXPECT_EQ(PageDownFrom(10), page) << y;
        dialog.list.Select(150);
        EXPECT_TRUE(Tell(WM_KEYUP, VK_PRIOR));
        EXPECT_EQ(dialog.list.GetSelection(), 150 - page);
    }
}

TEST_F(ValueListPages, APageNearTheTopOfTheScreenIsShorter) {
    MoveTo(0);
    const int high = PageDownFrom(0);
    MoveTo(400);
    EXPECT_GE(PageDownFrom(0), high + 400 / RowHeight);
}

TEST_F(ValueListPages, PagesAreHeldToTheRows) {
    EXPECT_EQ(PageDownFrom(195), 4);
    dialog.list.Select(3);
    EXPECT_TRUE(Tell(WM_KEYUP, VK_PRIOR));
    EXPECT_EQ(dialog.list.GetSelection(), 0);
    dialog.list.Select(-1);
    EXPECT_TRUE(Tell(WM_KEYUP, VK_PRIOR));
    EXPECT_EQ(dialog.list.GetSelection(), 0);
}

TEST_F(ValueListPages, RowsOfNoHeightCountAsOnePixel) {
    MoveTo(0);
    dialog.list.rowHeight = 0;
    EXPECT_EQ(PageDownFrom(0), std::min(BottomOnScreen(), 199));
}

TEST_F(ValueListKeys, KeysInAnEmptyListSelectNothing) {
    for (WPARAM key : {VK_UP, VK_DOWN})
        EXPECT_TRUE(Tell(WM_KEYDOWN, key));
    for (WPARAM key : {VK_HOME, VK_END, VK_NEXT, VK_PRIOR})
        EXPECT_TRUE(Tell(WM_KEYUP, key));
    EXPECT_EQ(dialog.list.GetSelection(), -1);
}

TEST_F(ValueListKeys, AKeyComesThroughTheWindow) {
    AddRows(3);
    PressKey(dialog.list.listBox, VK_DOWN);
    PressKey(dialog.list.listBox, VK_DOWN);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    PressKey(dialog.list.listBox, VK_END);
    EXPECT_EQ(dialog.list.GetSelection(), 2);
}

TEST_F(ValueListKeys, TheButtonIsToldOnceTheValueIsStored) {
    NValueRowInit init;
    init.kind = Edit;
    init.value = L"old";
    init.buttonText = L"View";
    init.onButton = [](NValueList& list) {
        *static_cast<std::wstring*>(list.owner) += list.rows[list.GetSelection()]->value.Text;
    };
    dialog.Add(init);
    std::wstring seen;
    dialog.list.owner = &seen;
    dialog.list.Select(0);
    SetWindowTextW(Control().editor, L"new");
    SendMessageW(Control().button, BM_CLICK, 0, 0);
    EXPECT_EQ(seen, L"new");
    EXPECT_TRUE(Control().editor); // the edit goes on
}

TEST_F(ValueListKeys, AButtonWithoutACallbackDoesNothing) {
    NValueRowInit init;
    init.kind = Edit;
    init.value = L"old";
    init.buttonText = L"View";
    dialog.Add(init);
    dialog.list.Select(0);
    SetWindowTextW(Control().editor, L"new");
    EXPECT_FALSE(
        Tell(WM_COMMAND, MAKEWPARAM(0, BN_CLICKED), reinterpret_cast<LPARAM>(Control().button)));
    EXPECT_EQ(Value(0), L"old");
}

TEST_F(ValueListKeys, AChangeIsToldAtEachKeyStrokeWithTheValueStored) {
    NValueRowInit init;
    init.kind = Edit;
    init.value = L"old";
    init.onChange = [](NValueList& list) {
        *static_cast<std::wstring*>(list.owner) +=
            std::wstring(list.rows[list.GetSelection()]->value.Text) + L"|";
    };
    dialog.Add(init);
    std::wstring seen;
    dialog.list.owner = &seen;
    dialog.list.Select(0);
    EXPECT_EQ(seen, L""); // the beginning of an edit is no change
    TypeInto(Control().editor, L"new");
    EXPECT_EQ(seen, L"n|ne|new|");
}

TEST_F(ValueListKeys, ANamesChangeIsNotToldWhileItIsTyped) {
    dialog.list.Select(AddCounting(Edit, L"v"));
    dialog.list.EditSelectionName(nullptr, false);
    TypeInto(Control().editor, L"new");
    EXPECT_EQ(changes, 0);
    dialog.list.Select(-1);
    EXPECT_EQ(changes, 0);
}

TEST_F(ValueListKeys, OfAnEditorOnlyItsChangeIsTold) {
    dialog.list.Select(AddCounting(Edit, L"v"));
    const auto editor = reinterpret_cast<LPARAM>(Control().editor);
    for (UINT code : {EN_SETFOCUS, EN_KILLFOCUS, EN_UPDATE, CBN_EDITCHANGE, CBN_DROPDOWN})
        EXPECT_FALSE(Tell(WM_COMMAND, MAKEWPARAM(0, code), editor));
    EXPECT_FALSE(
        Tell(WM_COMMAND, MAKEWPARAM(0, EN_CHANGE), reinterpret_cast<LPARAM>(dialog.Button())));
    EXPECT_FALSE(Tell(WM_COMMAND, MAKEWPARAM(0, EN_CHANGE), 0));
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(Tell(WM_COMMAND, MAKEWPARAM(0, EN_CHANGE), editor));
    EXPECT_EQ(changes, 1);
}

TEST_F(ValueListKeys, WithNothingSelectedNoChangeIsTold) {
    dialog.list.Select(AddCounting(Edit, L"v"));
    SendMessageW(dialog.list.listBox, LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    Tell(WM_COMMAND, MAKEWPARAM(0, EN_CHANGE), reinterpret_cast<LPARAM>(Control().editor));
    EXPECT_EQ(changes, 0);
}

TEST_F(ValueListKeys, AChoiceIsToldWithTheValueStored) {
    NValueRowInit init;
    init.kind = DropList;
    init.value = L"a";
    init.choices.Add(L"a");
    init.choices.Add(L"b");
    init.onChange = [](NValueList& list) { ++*static_cast<int*>(list.owner); };
    dialog.Add(init);
    dialog.list.Select(0);
    SendMessageW(Control().editor, CB_SETCURSEL, 1, 0);
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(
        Tell(WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE), reinterpret_cast<LPARAM>(Control().editor)));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Value(0), L"b");
}

TEST_F(ValueListKeys, WhatIsTypedInAComboEditReachesTheRowAtTheEnd) {
    dialog.list.Select(AddCounting(ComboEdit, L"old"));
    TypeInto(GetWindow(Control().editor, GW_CHILD), L"new");
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Value(0), L"old");
    dialog.list.Select(-1);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(Value(0), L"new");
}

TEST_F(ValueListKeys, ScrollingHasListAndEditorPaintedAnew) {
    AddCounting(Edit, L"v");
    dialog.list.Select(0);
    for (UINT message : {WM_VSCROLL, WM_MOUSEWHEEL}) {
        HandlePosted();
        ValidateRect(dialog.list.listBox, nullptr);
        ValidateRect(Control().editor, nullptr);
        EXPECT_FALSE(Tell(message));
        EXPECT_TRUE(GetUpdateRect(dialog.list.listBox, nullptr, FALSE));
        EXPECT_TRUE(GetUpdateRect(Control().editor, nullptr, FALSE));
    }
}

// Counts how often a window erases its ground while it stands.
class ErasedGround {
public:
    explicit ErasedGround(HWND window) : window_(window) {
        times = 0;
        former_ = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Count)));
    }
    ~ErasedGround() {
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(former_));
    }
    ErasedGround(const ErasedGround&) = delete;
    ErasedGround& operator=(const ErasedGround&) = delete;

    inline static int times = 0;

private:
    static LRESULT CALLBACK Count(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        times += message == WM_ERASEBKGND;
        return CallWindowProcW(former_, window, message, wParam, lParam);
    }

    HWND window_;
    inline static WNDPROC former_ = nullptr;
};

TEST_F(ValueListKeys, ScrollingErasesNothing) {
    AddCounting(Edit, L"v");
    HandlePosted();
    const HWND box = dialog.list.listBox;
    ValidateRect(box, nullptr);
    const ErasedGround ground(box);
    Tell(WM_MOUSEWHEEL);
    UpdateWindow(box);
    EXPECT_EQ(ground.times, 0);
    InvalidateRect(box, nullptr, TRUE);
    UpdateWindow(box);
    EXPECT_EQ(ground.times, 1);
}

TEST_F(ValueListKeys, TheEditorScrollsWithItsRow) {
    AddCounting(Edit, L"v");
    AddRows(40);
    dialog.list.Select(0);
    const int top = PlaceOf(Control().editor).top;
    SendMessageW(dialog.list.listBox, WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(SendMessageW(dialog.list.listBox, LB_GETTOPINDEX, 0, 0), 1);
    EXPECT_EQ(PlaceOf(Control().editor).top, top - RowHeight);
}

TEST_F(ValueListKeys, ARightPressIsAlsoALeftPress) {
    HandlePosted();
    EXPECT_FALSE(Tell(WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT, MAKELPARAM(7, 30)));
    const auto posted = TakePosted(dialog.list.listBox, WM_LBUTTONDOWN);
    ASSERT_TRUE(posted);
    EXPECT_EQ(posted->wParam, static_cast<WPARAM>(MK_RBUTTON | MK_SHIFT));
    EXPECT_EQ(posted->lParam, MAKELPARAM(7, 30));
}

TEST_F(ValueListKeys, TheRightButtonSelectsTheRowBeforeItsReleaseIsTold) {
    const TestCursor cursor;
    AddRows(3);
    dialog.list.Select(0);
    const LPARAM place = MAKELPARAM(7, RowHeight + 5);
    SendMessageW(dialog.list.listBox, WM_RBUTTONDOWN, MK_RBUTTON, place);
    HandlePosted();
    TestCursor::MoveTo(321, 123);
    SendMessageW(dialog.list.listBox, WM_RBUTTONUP, 0, place);
    ASSERT_EQ(dialog.list.rightClicks.size(), 1u);
    EXPECT_EQ(dialog.list.rightClicks[0].x, 321);
    EXPECT_EQ(dialog.list.rightClicks[0].y, 123);
    EXPECT_EQ(dialog.list.rightClicked, std::vector<int>({1}));
    HandlePosted();
    EXPECT_EQ(dialog.list.selections.back(), 1);
    EXPECT_FALSE(GetCapture()); // the next press is anybody's
}

TEST_F(ValueListKeys, ARightReleaseIsNotConsumed) {
    EXPECT_FALSE(Tell(WM_RBUTTONUP));
    EXPECT_EQ(dialog.list.rightClicks.size(), 1u);
}

TEST_F(ValueListKeys, OtherMessagesAreLeft) {
    for (UINT message : {WM_PAINT, WM_CHAR, WM_LBUTTONDOWN, WM_GETDLGCODE, WM_TIMER})
        EXPECT_FALSE(Tell(message));
}
} // namespace
