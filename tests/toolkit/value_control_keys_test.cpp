#include "tests/support/nstring_printer.h"
#include "tests/toolkit/list_dialog.h"

#include <gtest/gtest.h>

namespace {
struct Answer {
    LRESULT result;
    bool consumed;
    bool operator==(const Answer&) const = default;
};

constexpr Answer Consumed = {0, true};
constexpr Answer Left = {0, false};

// Three rows; the one in the middle is in edit.
class ValueControlKeys : public testing::Test {
protected:
    ValueControlKeys() { init.value = L"Value"; }

    void Begin(int32_t kind) {
        dialog.Add(Plain, L"above");
        init.kind = kind;
        init.choices.Add(L"Value");
        init.choices.Add(L"Other");
        dialog.Add(init);
        dialog.Add(Plain, L"below");
        dialog.list.Select(1);
        ASSERT_TRUE(Control().editor);
        HandlePosted();
    }
    // A field of three lines with the caret at the start of `line`.
    void BeginLines(int line) {
        init.value = L"ab\r\ncd\r\nef";
        init.editLines = 3;
        Begin(Edit);
        PutCaret(line * 4);
    }
    void PutCaret(int first, int last = -2) {
        SendMessageW(Control().boundWindow, EM_SETSEL, static_cast<WPARAM>(first),
                     last == -2 ? first : last);
    }
    Answer Tell(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        int32_t handled = 0;
        const LRESULT result =
            Control().OnSubclassMessage(Control().boundWindow, message, wParam, lParam, &handled);
        return {result, handled != 0};
    }
    NValueList::clValueControl& Control() { return dialog.list.control; }
    std::wstring Value() { return dialog.list.rows[1]->value.Text; }
    bool TakePosted(UINT message, WPARAM wParam, LPARAM lParam) {
        MSG posted = {};
        return PeekMessageW(&posted, dialog.list.listBox, message, message, PM_REMOVE) &&
               posted.wParam == wParam && posted.lParam == lParam;
    }

    ListDialog dialog;
    NValueRowInit init;
};

TEST_F(ValueControlKeys, TheEditorWantsAllKeys) {
    for (int32_t kind : {Edit, ComboEdit, DropList}) {
        dialog.list.Clear();
        Begin(kind);
        EXPECT_EQ(Tell(WM_GETDLGCODE), (Answer{4, true}));
        EXPECT_EQ(SendMessageW(Control().boundWindow, WM_GETDLGCODE, 0, 0), 4);
    }
}

TEST_F(ValueControlKeys, TheFocusThatLeavesTheListEndsTheEdit) {
    for (int32_t kind : {Edit, ComboEdit, DropList}) {
        dialog.list.Clear();
        Begin(kind);
        SetFocus(dialog.Button());
        EXPECT_FALSE(Control().editor) << kind;
        EXPECT_EQ(dialog.list.GetSelection(), 1);
    }
}

TEST_F(ValueControlKeys, TheFocusMayGoToListBoxAndButton) {
    init.buttonText = L"View";
    Begin(Edit);
    const HWND editor = Control().editor;
    for (HWND own : {Control().button, dialog.list.listBox, editor}) {
        EXPECT_EQ(Tell(WM_KILLFOCUS, reinterpret_cast<WPARAM>(own)), Left);
        EXPECT_EQ(Control().editor, editor);
    }
    SetFocus(Control().button);
    SetFocus(dialog.list.listBox);
    EXPECT_EQ(Control().editor, editor);
}

// As it does when the user goes to another program.
TEST_F(ValueControlKeys, TheFocusMayGoNowhereUnlessTheRowHasAButton) {
    Begin(Edit);
    const HWND editor = Control().editor;
    EXPECT_EQ(Tell(WM_KILLFOCUS, 0), Left);
    EXPECT_EQ(Control().editor, editor);

    init.buttonText = L"View";
    dialog.list.Clear();
    Begin(Edit);
    EXPECT_EQ(Tell(WM_KILLFOCUS, 0), Left);
    EXPECT_FALSE(Control().editor);
}

TEST_F(ValueControlKeys, TheFocusThatGoesFromANameStartsTheValue) {
    Begin(Edit);
    dialog.list.EditSelectionName(nullptr, false);
    EXPECT_EQ(Tell(WM_KILLFOCUS, reinterpret_cast<WPARAM>(dialog.Button())), Left);
    EXPECT_EQ(dialog.list.edited, std::vector<int>({1}));
    EXPECT_TRUE(Control().editor);
    EXPECT_EQ(Control().nameMode, 0);
}

TEST_F(ValueControlKeys, AComboEditLosesASelectionThatBeginsBehindTheStart) {
    Begin(ComboEdit);
    PutCaret(2, 4); // also one that is nobody's completion; wanted
    SetFocus(dialog.Button());
    EXPECT_EQ(Value(), L"Vae");
}

TEST_F(ValueControlKeys, AComboEditKeepsASelectionFromTheStart) {
    Begin(ComboEdit);
    PutCaret(0, 4);
    SetFocus(dialog.Button());
    EXPECT_EQ(Value(), L"Value");
}

TEST_F(ValueControlKeys, AComboEditWithoutASelectionKeepsItsText) {
    Begin(ComboEdit);
    PutCaret(5);
    SetFocus(dialog.Button());
    EXPECT_EQ(Value(), L"Value");
}

TEST_F(ValueControlKeys, AFieldKeepsItsSelection) {
    Begin(Edit);
    PutCaret(2, 4);
    SetFocus(dialog.Button());
    EXPECT_EQ(Value(), L"Value");
}

TEST_F(ValueControlKeys, UpAndDownLeaveARowOfOneLine) {
    for (int32_t kind : {Edit, ComboEdit, DropList})
        for (WPARAM key : {VK_UP, VK_DOWN}) {
            dialog.list.Clear();
            Begin(kind); // its text is selected, and that doesn't matter
            EXPECT_EQ(Tell(WM_KEYDOWN, key), Consumed);
            EXPECT_EQ(dialog.list.GetSelection(), key == VK_UP ? 0 : 2);
        }
}

TEST_F(ValueControlKeys, UpFromTheFirstRowSelectsNothing) {
    dialog.Add(Edit, L"a", L"b");
    dialog.list.Select(0);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_UP), Consumed);
    EXPECT_EQ(dialog.list.GetSelection(), -1);
    EXPECT_FALSE(Control().editor);
}

TEST_F(ValueControlKeys, DownFromTheLastRowStays) {
    dialog.Add(Edit, L"a", L"b");
    dialog.list.Select(0);
    const HWND editor = Control().editor;
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_DOWN), Consumed);
    EXPECT_EQ(dialog.list.GetSelection(), 0);
    EXPECT_EQ(Control().editor, editor);
}

TEST_F(ValueControlKeys, UpLeavesSeveralLinesFromTheFirstOnly) {
    BeginLines(2);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_UP), Left);
    PutCaret(4);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_UP), Left);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    PutCaret(1);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_UP), Consumed);
    EXPECT_EQ(dialog.list.GetSelection(), 0);
}

TEST_F(ValueControlKeys, DownLeavesSeveralLinesFromTheLastOnly) {
    BeginLines(0);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_DOWN), Left);
    PutCaret(4);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_DOWN), Left);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    PutCaret(9);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_DOWN), Consumed);
    EXPECT_EQ(dialog.list.GetSelection(), 2);
}

TEST_F(ValueControlKeys, ASelectionKeepsSeveralLinesFromBeingLeft) {
    BeginLines(0);
    PutCaret(0, 1);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_UP), Left);
    PutCaret(8, 10);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_DOWN), Left);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
}

TEST_F(ValueControlKeys, UpAndDownWalkInsideTheText) {
    BeginLines(0);
    SendMessageW(Control().editor, WM_KEYDOWN, VK_DOWN, 1);
    EXPECT_EQ(SendMessageW(Control().editor, EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0), 1);
    SendMessageW(Control().editor, WM_KEYDOWN, VK_UP, 1);
    EXPECT_EQ(SendMessageW(Control().editor, EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0), 0);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
}

TEST_F(ValueControlKeys, OneLineToldAsSuchHasTheKeysOfSeveral) {
    init.editLines = 1;
    Begin(Edit);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_UP), Left); // all of it is selected
    EXPECT_EQ(Tell(WM_KEYUP, VK_RETURN), Left);
    EXPECT_TRUE(Control().editor);
    PutCaret(2);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_DOWN), Consumed);
    EXPECT_EQ(dialog.list.GetSelection(), 2);
}

TEST_F(ValueControlKeys, ReturnCommitsAndKeepsTheSelection) {
    Begin(Edit);
    TypeInto(Control().editor, L"new");
    EXPECT_EQ(Tell(WM_KEYUP, VK_RETURN), Consumed);
    EXPECT_EQ(Value(), L"new");
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    EXPECT_FALSE(Control().editor);
    EXPECT_EQ(GetFocus(), dialog.list.listBox);
}

TEST_F(ValueControlKeys, ReturnBehindANameGoesOnWithTheValue) {
    Begin(Edit);
    NStringList names;
    names.Add(L"Artist");
    for (const NStringList* choices : {static_cast<NStringList*>(nullptr), &names}) {
        dialog.list.EditSelectionName(choices, true);
        SetWindowTextW(Control().editor, L"new");
        EXPECT_EQ(Tell(WM_KEYUP, VK_RETURN), Consumed);
        EXPECT_EQ(dialog.list.rows[1]->name, L"new");
        EXPECT_EQ(Control().editRow, 1);
        EXPECT_EQ(Control().nameMode, 0);
        EXPECT_EQ(GetFocus(), Control().editor);
    }
}

TEST_F(ValueControlKeys, ReturnActsWhenItIsLetGo) {
    Begin(Edit);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_RETURN), Left);
    EXPECT_TRUE(Control().editor);
}

TEST_F(ValueControlKeys, ReturnInsertsALineIntoSeveral) {
    BeginLines(1);
    SendMessageW(Control().editor, WM_KEYDOWN, VK_RETURN, 1);
    SendMessageW(Control().editor, WM_CHAR, L'\r', 1);
    SendMessageW(Control().editor, WM_KEYUP, VK_RETURN, 0xC0000001);
    ASSERT_TRUE(Control().editor);
    EXPECT_EQ(TextOf(Control().editor), L"ab\r\n\r\ncd\r\nef");
}

TEST_F(ValueControlKeys, TabGoesOnToTheListBox) {
    Begin(Edit);
    EXPECT_EQ(Tell(WM_KEYDOWN, VK_TAB, 5), Consumed);
    EXPECT_TRUE(TakePosted(WM_KEYDOWN, VK_TAB, 5));
    EXPECT_EQ(Tell(WM_KEYUP, VK_TAB, 6), Consumed);
    EXPECT_TRUE(TakePosted(WM_KEYUP, VK_TAB, 6));
    EXPECT_EQ(Tell(WM_CHAR, L'\t'), Consumed);
    EXPECT_EQ(Tell(WM_CHAR, L'a'), Left);
    EXPECT_EQ(Value(), L"Value");
}

TEST_F(ValueControlKeys, TheWheelGoesOnToTheListBox) {
    Begin(Edit);
    EXPECT_EQ(Tell(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 7), Consumed);
    EXPECT_TRUE(TakePosted(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 7));
}

TEST_F(ValueControlKeys, AKeyThatCompletesIsLeftToTheComboBoxToo) {
    init.choices.Add(L"Rock & Roll");
    Begin(ComboEdit);
    SetWindowTextW(Control().editor, L"r");
    EXPECT_EQ(Tell(WM_KEYUP, 'R'), Left);
    EXPECT_EQ(TextOf(Control().editor), L"rock & Roll");
    SetWindowTextW(Control().editor, L"rock ");
    EXPECT_EQ(Tell(WM_KEYUP, VK_SPACE), Left);
    EXPECT_EQ(TextOf(Control().editor), L"rock & Roll");
}

TEST_F(ValueControlKeys, OtherKeysAreLeftToTheEditor) {
    Begin(Edit);
    for (WPARAM key : {VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_DELETE, VK_ESCAPE})
        for (UINT message : {WM_KEYDOWN, WM_KEYUP})
            EXPECT_EQ(Tell(message, key), Left) << key;
    for (UINT message : {WM_PAINT, WM_LBUTTONDOWN, WM_SETFOCUS})
        EXPECT_EQ(Tell(message), Left);
}
} // namespace
