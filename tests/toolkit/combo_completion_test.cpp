#include "tests/support/nstring_printer.h"
#include "tests/toolkit/list_dialog.h"
#include "toolkit/combo_completion.h"
#include "toolkit/window_text.h"

#include <gtest/gtest.h>

namespace {
struct Shown {
    std::wstring text;
    DWORD start = 0;
    DWORD end = 0;
    bool operator==(const Shown&) const = default;
};

// A ComboEdit row of genres, in edit.
class ComboCompletion : public testing::Test {
protected:
    ComboCompletion() {
        dialog.AddWithChoices(
            ComboEdit, L"Genre", L"",
            {L"Pop", L"Rock", L"Rock & Roll", L"R&B", L"50's", L"Ärger", L"Hip Hop", L"Hip"});
        dialog.Add(Plain, L"below");
        dialog.list.Select(0);
    }

    HWND Combo() const { return dialog.list.control.editor; }
    HWND Field() const { return GetWindow(Combo(), GW_CHILD); }
    // Each character with its key, as the keyboard does.
    void Type(const wchar_t* text) {
        for (; *text; ++text) {
            const WPARAM key = static_cast<WPARAM>(VkKeyScanW(*text) & 0xFF);
            SendMessageW(Field(), WM_CHAR, *text, 1);
            SendMessageW(Field(), WM_KEYUP, key, 0xC0000001);
        }
    }
    Shown Completed(const wchar_t* typed) {
        SetWindowTextW(Combo(), typed);
        CompleteCombo(Combo());
        return Now();
    }
    Shown Now() {
        Shown shown = {TextOf(Combo())};
        SendMessageW(Field(), EM_GETSEL, reinterpret_cast<WPARAM>(&shown.start),
                     reinterpret_cast<LPARAM>(&shown.end));
        return shown;
    }
    std::wstring Value() { return dialog.list.rows[0]->value.Text; }

    ListDialog dialog;
};

TEST_F(ComboCompletion, TheFirstEntryThatBeginsSoIsTaken) {
    EXPECT_EQ(Completed(L"ro"), (Shown{L"rock", 2, 4}));
    EXPECT_EQ(Completed(L"rock "), (Shown{L"rock & Roll", 5, 11}));
    EXPECT_EQ(Completed(L"Hip"), (Shown{L"Hip Hop", 3, 7}));
    EXPECT_EQ(Completed(L"5"), (Shown{L"50's", 1, 4}));
}

TEST_F(ComboCompletion, TheHeadStaysAsTypedAndTheTailAsListed) {
    EXPECT_EQ(Completed(L"rOCK & r"), (Shown{L"rOCK & roll", 8, 11}));
    EXPECT_EQ(Completed(L"RO"), (Shown{L"ROck", 2, 4}));
}

TEST_F(ComboCompletion, OnlyTheCapitalsOfAsciiDoNotMatter) {
    EXPECT_EQ(Completed(L"Är"), (Shown{L"Ärger", 2, 5}));
    EXPECT_EQ(Completed(L"är").text, L"är");
}

TEST_F(ComboCompletion, WithoutAMatchNothingChanges) {
    SetWindowTextW(Combo(), L"Rx");
    SendMessageW(Combo(), CB_SETEDITSEL, 0, MAKELPARAM(1, 2));
    CompleteCombo(Combo());
    EXPECT_EQ(Now(), (Shown{L"Rx", 1, 2}));
    EXPECT_EQ(Completed(L"Rock & Rolls").text, L"Rock & Rolls");
}

TEST_F(ComboCompletion, NothingTypedIsNotCompleted) {
    EXPECT_EQ(Completed(L""), (Shown{L"", 0, 0}));
}

TEST_F(ComboCompletion, AWholeEntryIsLeftWithNothingSelected) {
    EXPECT_EQ(Completed(L"POP"), (Shown{L"POP", 3, 3}));
}

TEST_F(ComboCompletion, AnEntryOutOfRangeIsEmpty) {
    EXPECT_EQ(TextOfEntry(Combo(), 7), L"Hip");
    for (const int entry : {8, 99, -1})
        EXPECT_TRUE(TextOfEntry(Combo(), entry).IsEmpty()) << entry;
}

TEST_F(ComboCompletion, LettersDigitsAndTheSpaceComplete) {
    for (const int key : {0 + 'A', 0 + 'M', 0 + 'Z', 0 + '0', 0 + '5', 0 + '9', VK_SPACE})
        EXPECT_TRUE(IsCompletedKey(static_cast<WPARAM>(key))) << key;
    for (const WPARAM key : {VK_BACK, VK_DELETE, VK_RETURN, VK_TAB, VK_LEFT, VK_SHIFT, VK_F1,
                             VK_OEM_1, VK_OEM_COMMA, VK_NUMPAD0})
        EXPECT_FALSE(IsCompletedKey(key)) << key;
    EXPECT_FALSE(IsCompletedKey('A' - 1));
    EXPECT_FALSE(IsCompletedKey('Z' + 1));
    EXPECT_FALSE(IsCompletedKey('0' - 1));
    EXPECT_FALSE(IsCompletedKey('9' + 1));
}

TEST_F(ComboCompletion, TypedLettersAreCompletedAsTheyCome) {
    Type(L"r");
    EXPECT_EQ(Now(), (Shown{L"rock", 1, 4}));
    Type(L"o");
    EXPECT_EQ(Now(), (Shown{L"rock", 2, 4}));
    EXPECT_EQ(Value(), L"");
}

TEST_F(ComboCompletion, KeysThatTypeNothingOfItDoNotComplete) {
    SetWindowTextW(Combo(), L"ro");
    for (const WPARAM key : {VK_BACK, VK_DELETE, VK_LEFT})
        SendMessageW(Field(), WM_KEYUP, key, 0xC0000001);
    EXPECT_EQ(Now().text, L"ro");
}

TEST_F(ComboCompletion, ReturnCommitsWhatWasCompleted) {
    Type(L"ro");
    PressKey(Field(), VK_RETURN);
    EXPECT_EQ(Value(), L"rock");
    EXPECT_EQ(dialog.list.GetSelection(), 0);
    EXPECT_FALSE(Combo());
    EXPECT_EQ(GetFocus(), dialog.list.listBox);
}

TEST_F(ComboCompletion, LeavingByTheMouseRemovesWhatWasCompleted) {
    Type(L"ro");
    dialog.Click(1);
    EXPECT_EQ(Value(), L"ro");
    EXPECT_EQ(dialog.list.GetSelection(), 1);
}

TEST_F(ComboCompletion, LeavingByTheMouseDoesSoAlsoWhenTheEditBeganWithTheFocus) {
    SetFocus(dialog.Button());
    SetFocus(dialog.list.listBox);
    Type(L"ro");
    dialog.Click(1);
    EXPECT_EQ(Value(), L"ro");
    EXPECT_EQ(dialog.list.GetSelection(), 1);
}

TEST_F(ComboCompletion, LeavingByTabRemovesWhatWasCompleted) {
    Type(L"ro");
    PostMessageW(Field(), WM_KEYDOWN, VK_TAB, 1);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        if (!IsDialogMessageW(dialog.window, &message))
            DispatchMessageW(&message);
    EXPECT_EQ(GetFocus(), dialog.Button());
    EXPECT_EQ(Value(), L"ro");
    EXPECT_FALSE(Combo());
}

TEST_F(ComboCompletion, LeavingToAnotherControlRemovesWhatWasCompleted) {
    Type(L"ro");
    SetFocus(dialog.Button());
    EXPECT_EQ(Value(), L"ro");
    EXPECT_FALSE(Combo());
}

TEST_F(ComboCompletion, OtherRowsAreNotCompleted) {
    dialog.AddWithChoices(Edit, L"n", L"", {L"Rock"});
    dialog.list.Select(2);
    const HWND field = dialog.list.control.editor;
    SendMessageW(field, WM_CHAR, 'r', 1);
    SendMessageW(field, WM_KEYUP, 'R', 0xC0000001);
    EXPECT_EQ(TextOf(field), L"r");
}
} // namespace
