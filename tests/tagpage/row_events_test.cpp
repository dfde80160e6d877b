// What the rows report, and what Add, Remove and Clear do to them.
#include "tagpage/combined_set.h"
#include "tests/tagpage/tag_page_fixture.h"

namespace {
constexpr wchar_t NoTags[] = L"  <Contains no ID-Tags>";

class RowEvents : public TagPageTest {
protected:
    void OpenOne(std::initializer_list<TagText> elements) {
        AddFile(A, elements);
        window_.OpenAndRead();
    }
    void OpenTwo(std::initializer_list<TagText> first, std::initializer_list<TagText> second) {
        AddFile(A, first);
        AddFile(B, second);
        window_.OpenAndRead();
    }
    void Select(const wchar_t* name) { List().Select(window_.RowOf(name)); }
    void Add() { Page().cmdAdd.OnClick(false); }
    void Remove(const wchar_t* name) {
        Select(name);
        Page().cmdRemove.OnClick(false);
    }
    void Clear() { Page().cmdClear.OnClick(false); }
    void SetOf(const wchar_t* name, clTagSet*& set) {
        for (int index = 0; index < Page().TagSets.Count(); ++index) {
            if (Page().TagSets[index]->Name == name)
                set = Page().TagSets[index];
        }
        ASSERT_NE(set, nullptr);
    }
    // The set's own deletions: "[all]" and the names.
    Texts Deletions(const wchar_t* name) {
        clTagSet* set = nullptr;
        SetOf(name, set);
        Texts texts;
        if (set->DeleteAll)
            texts.push_back(L"[all]");
        for (int index = 0; index < set->DeleteNames.Count; ++index)
            texts.push_back(set->DeleteNames[index]->Text);
        return texts;
    }
    std::wstring EditorText() {
        wchar_t text[100] = {};
        GetWindowTextW(List().control.editor, text, 100);
        return text;
    }
    HWND EditOfName() { return GetWindow(List().control.editor, GW_CHILD); }
    // As if the user had typed the name and pressed return.
    void NameNewRow(const wchar_t* name) {
        ASSERT_NE(List().control.nameMode, 0);
        window_.TypeInEditor(name);
        SendMessageW(EditOfName(), WM_KEYUP, VK_RETURN, 0);
    }
    // As if the user had clicked elsewhere.
    void LeaveList() { SetFocus(window_.Sheet()); }
};
} // namespace

// Add.

TEST_F(RowEvents, AddPutsARowAboveTheSpacerOfOneFile) {
    OpenOne({{L"mood", L"glad"}});
    Add();
    const int row = window_.RowOf(L"<edit>");
    EXPECT_EQ(row, window_.RowOf(L"mood") + 1);
    EXPECT_EQ(row, window_.RowOf(L"Album Art") - 2);
    const NValueRow& added = *List().rows[row];
    EXPECT_EQ(added.value, L"<edit>");
    EXPECT_EQ(added.kind, Edit);
    EXPECT_EQ(added.tag, RowTagText);
    EXPECT_EQ(added.nameX, 6u);
    EXPECT_NE(added.onChange, nullptr);
    EXPECT_EQ(List().GetSelection(), row);
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, AddPutsARowAtTheEndOfAllFiles) {
    OpenTwo({{L"mood", L"glad"}}, {});
    Add();
    EXPECT_EQ(window_.RowOf(L"<edit>"), List().rows.Count() - 1);
    EXPECT_EQ(List().GetSelection(), List().rows.Count() - 1);
}

TEST_F(RowEvents, AddTwiceLeavesOneRowAboveTheSpacer) {
    OpenOne({});
    Add();
    Add();
    EXPECT_EQ(window_.RowOf(L"<edit>"), window_.RowOf(L"Album Art") - 2);
    EXPECT_EQ(List().rows.Count(), 1 + 1 + 7 + 1 + 3);
    EXPECT_EQ(List().GetSelection(), window_.RowOf(L"<edit>"));
}

TEST_F(RowEvents, AHeadingOfAnElementsNameIsNone) {
    OpenTwo({{L"Album Art", L"x"}}, {{L"Album Art", L"x"}});
    Add();
    EXPECT_EQ(window_.RowOf(L"<edit>"), List().rows.Count() - 1);
}

TEST_F(RowEvents, AddOffersTheNamesAndSelectsTheWord) {
    OpenOne({});
    Add();
    ASSERT_NE(List().control.nameMode, 0);
    const HWND combo = List().control.editor;
    EXPECT_EQ(SendMessageW(combo, CB_GETCOUNT, 0, 0), 19);
    wchar_t name[40] = {};
    SendMessageW(combo, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(name));
    EXPECT_STREQ(name, L"Artist");
    SendMessageW(combo, CB_GETLBTEXT, 18, reinterpret_cast<LPARAM>(name));
    EXPECT_STREQ(name, L"Copyright");
    EXPECT_EQ(EditorText(), L"<edit>");
    DWORD from = 1;
    DWORD to = 0;
    SendMessageW(EditOfName(), EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 0u);
    EXPECT_EQ(to, 6u);
}

TEST_F(RowEvents, AnElementThatGetsANameIsAChangeAndItsValueIsEdited) {
    OpenOne({});
    Add();
    NameNewRow(L"Mood");
    EXPECT_EQ(window_.TakeChanges(), 1);
    EXPECT_EQ(window_.Row(L"Mood").value, L"<edit>");
    EXPECT_EQ(List().GetSelection(), window_.RowOf(L"Mood"));
    EXPECT_EQ(List().control.nameMode, 0);
    EXPECT_EQ(EditorText(), L"<edit>");
    DWORD from = 1;
    DWORD to = 0;
    SendMessageW(List().control.editor, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    EXPECT_EQ(from, 0u);
    EXPECT_EQ(to, 6u);
}

TEST_F(RowEvents, APickedNameIsTheRows) {
    OpenOne({});
    Add();
    const HWND combo = List().control.editor;
    SendMessageW(combo, CB_SETCURSEL, 16, 0);
    SendMessageW(EditOfName(), WM_KEYUP, VK_RETURN, 0);
    EXPECT_NE(window_.RowOf(L"Mood"), -1);
}

TEST_F(RowEvents, AnElementWithoutANameGoesAway) {
    OpenOne({});
    const Texts rows = window_.Rows();
    Add();
    LeaveList();
    EXPECT_EQ(window_.RowOf(L"<edit>"), -1);
    EXPECT_EQ(List().rows.Count(), static_cast<int>(rows.size()));
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, AnElementWhoseNameWasEmptiedGoesAway) {
    OpenTwo({{L"Title", L"One"}}, {});
    const Texts rows = window_.Rows();
    Add();
    window_.TypeInEditor(L"");
    LeaveList();
    EXPECT_EQ(window_.Rows(), rows);
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, TheWordInOtherCapitalsIsAName) {
    OpenOne({});
    Add();
    NameNewRow(L"<Edit>");
    EXPECT_NE(window_.RowOf(L"<Edit>"), -1);
    EXPECT_EQ(window_.TakeChanges(), 1);
}

TEST_F(RowEvents, ARowOutOfRangeIsNotEdited) {
    OpenOne({});
    const int rows = List().rows.Count();
    Page().OnRowEdited(-1);
    Page().OnRowEdited(rows);
    EXPECT_EQ(List().rows.Count(), rows);
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, AValueThatIsLeftAtTheWordIsStored) {
    OpenOne({});
    Add();
    NameNewRow(L"Mood");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Mood=<edit>"});
}

TEST_F(RowEvents, AnAddedGenreHasChoicesOnceTheRowsAreBuiltAnew) {
    OpenOne({{L"Genre", L"Pop"}});
    Add();
    NameNewRow(L"GENRE");
    EXPECT_EQ(window_.Row(L"GENRE").kind, Edit);
    Remove(L"Genre");
    Page().StoreEdits();
    Page().BuildRows();
    EXPECT_EQ(window_.Row(L"GENRE").kind, ComboEdit);
}

// The words of an empty tag.

TEST_F(RowEvents, TheFirstAddBlanksTheWords) {
    OpenOne({});
    ASSERT_EQ(window_.RowOf(NoTags), 1);
    Add();
    EXPECT_EQ(window_.RowOf(NoTags), -1);
    EXPECT_EQ(List().rows[1]->tag, RowTagNoTags);
    EXPECT_EQ(List().rows[1]->name, L"");
}

TEST_F(RowEvents, AValueAndAStepToAnotherRowBlankTheWords) {
    OpenOne({});
    window_.Type(L"Title", L"One");
    EXPECT_EQ(window_.RowOf(NoTags), 1);
    Select(L"Album");
    EXPECT_EQ(window_.RowOf(NoTags), -1);
    EXPECT_EQ(List().rows[1]->tag, RowTagNoTags);
}

TEST_F(RowEvents, AStepWithoutAValueLeavesTheWords) {
    OpenOne({});
    Select(L"Title");
    Select(L"Album");
    EXPECT_EQ(window_.RowOf(NoTags), 1);
}

TEST_F(RowEvents, ThatTheWordsAreBlankIsPainted) {
    OpenOne({});
    ValidateRect(List().listBox, nullptr);
    Page().BlankNoTagsRow();
    EXPECT_TRUE(GetUpdateRect(List().listBox, nullptr, FALSE));
}

// Typing.

TEST_F(RowEvents, ATypedValueIsAChange) {
    OpenOne({{L"Title", L"One"}});
    window_.Type(L"Title", L"One!");
    EXPECT_EQ(window_.TakeChanges(), 1);
    window_.TypeInEditor(L"One!!");
    EXPECT_EQ(window_.TakeChanges(), 1);
}

TEST_F(RowEvents, TheValueThatTheTagHasIsNoChange) {
    OpenOne({{L"Artist", L"One\rTwo"}});
    window_.Type(L"Artist", L"One; Two");
    EXPECT_EQ(window_.TakeChanges(), 0);
    window_.TypeInEditor(L"one; Two");
    EXPECT_EQ(window_.TakeChanges(), 1);
    // The sheet doesn't hear that it is typed away again.
    window_.TypeInEditor(L"One; Two");
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, AValueOfAnElementThatIsNotThereIsAChange) {
    OpenOne({});
    window_.Type(L"Title", L"");
    window_.TypeInEditor(L"x");
    EXPECT_GE(window_.TakeChanges(), 1);
}

TEST_F(RowEvents, APickedChoiceIsAChange) {
    OpenOne({});
    Select(L"Track");
    const HWND combo = List().control.editor;
    SendMessageW(combo, CB_SETCURSEL, 6, 0);
    SendMessageW(List().listBox, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(combo), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(combo));
    EXPECT_EQ(window_.TakeChanges(), 1);
    EXPECT_EQ(window_.Row(L"Track").value, L"7");
}

TEST_F(RowEvents, WithoutASelectionNothingHasChanged) {
    OpenOne({});
    clIDTagPage::OnRowValueChanged(List());
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, WhatIsTypedIsComparedWithWhatWasStoredLast) {
    OpenOne({{L"Title", L"One"}});
    window_.Type(L"Title", L"Two");
    Page().StoreEdits();
    window_.TakeChanges();
    window_.Type(L"Title", L"Two");
    EXPECT_EQ(window_.TakeChanges(), 0);
    window_.TypeInEditor(L"One");
    EXPECT_EQ(window_.TakeChanges(), 1);
}

// Remove.

TEST_F(RowEvents, RemoveInOneFileWaitsForTheCommit) {
    OpenTwo({{L"Album", L"Same"}}, {{L"Album", L"Same"}});
    ShowSingle();
    Remove(L"Album");
    EXPECT_EQ(window_.RowOf(L"Album"), -1);
    EXPECT_EQ(Deletions(A), Texts{L"Album"});
    EXPECT_EQ(Deletions(B), Texts());
    EXPECT_EQ(SetTexts(CombinedName), Texts{L"Album=<different>"});
    EXPECT_EQ(SetTexts(A), Texts{L"Album=Same"});
    EXPECT_EQ(window_.TakeChanges(), 1);
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts());
}

TEST_F(RowEvents, RemovedInOneFileReadsDifferentInAll) {
    OpenTwo({{L"Album", L"Same"}}, {{L"Album", L"Same"}});
    ShowSingle();
    Remove(L"Album");
    ShowSingle();
    EXPECT_EQ(window_.Row(L"Album").value, L"<different>");
    // And in its own file the fixed row is there again.
    ShowSingle();
    EXPECT_EQ(window_.Row(L"Album").value, L"");
}

TEST_F(RowEvents, RemoveInAllGoesToEachFile) {
    OpenTwo({{L"ALBUM", L"One"}, {L"Title", L"T"}}, {});
    Remove(L"ALBUM");
    EXPECT_EQ(Deletions(A), Texts{L"ALBUM"});
    EXPECT_EQ(Deletions(B), Texts{L"ALBUM"});
    EXPECT_EQ(Deletions(CombinedName), Texts{L"ALBUM"});
    EXPECT_EQ(SetTexts(A), Texts{L"Title=T"});
    EXPECT_EQ(SetTexts(CombinedName), Texts{L"Title=<different>"});
    EXPECT_EQ(window_.TakeChanges(), 1);
    for (int file = 0; file < 2; ++file) {
        ShowSingle();
        Page().cmdSkipNext.OnClick(false);
        EXPECT_EQ(window_.Row(L"Album").value, L"");
        ShowSingle();
    }
}

TEST_F(RowEvents, ANameIsListedForDeletionOnce) {
    OpenOne({{L"mood", L"glad"}, {L"mood", L"sad"}, {L"MOOD", L"so"}});
    Remove(L"mood");
    Remove(L"mood");
    EXPECT_EQ(Deletions(A), Texts{L"mood"});
    Remove(L"MOOD");
    EXPECT_EQ(Deletions(A), (Texts{L"mood", L"MOOD"}));
}

TEST_F(RowEvents, RemoveInAllTakesOneElementOfANameAtATime) {
    OpenTwo({{L"mood", L"glad"}, {L"mood", L"sad"}}, {});
    Remove(L"mood");
    EXPECT_EQ(SetTexts(A), Texts{L"mood=sad"});
}

TEST_F(RowEvents, RemoveSelectsTheRowThatFollows) {
    OpenOne({});
    const int row = window_.RowOf(L"Title");
    Remove(L"Title");
    EXPECT_EQ(List().GetSelection(), row);
    EXPECT_EQ(window_.Rows().at(static_cast<size_t>(row)), L"Album=");
    EXPECT_NE(List().control.editor, nullptr);
}

TEST_F(RowEvents, RemoveOfTheLastRowSelectsTheOneBefore) {
    OpenTwo({{L"mood", L"glad"}}, {});
    ASSERT_EQ(window_.RowOf(L"mood"), List().rows.Count() - 1);
    Remove(L"mood");
    EXPECT_EQ(List().GetSelection(), List().rows.Count() - 1);
    EXPECT_EQ(List().GetSelection(), window_.RowOf(L"Comment"));
}

TEST_F(RowEvents, RemoveOfTheOnlyRowLeavesNone) {
    OpenTwo({}, {});
    while (List().rows.Count() > 0) {
        List().Select(0);
        Page().cmdRemove.OnClick(false);
    }
    EXPECT_EQ(List().GetSelection(), -1);
}

TEST_F(RowEvents, RemoveWithoutASelectionDoesNothing) {
    OpenOne({{L"Title", L"One"}});
    const Texts rows = window_.Rows();
    Page().cmdRemove.OnClick(false);
    EXPECT_EQ(window_.Rows(), rows);
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, APictureIsNotRemoved) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1", "x", 1);
    AddFile(A, tag);
    window_.OpenAndRead();
    const Texts rows = window_.Rows();
    Remove(L"Art 1");
    EXPECT_EQ(window_.Rows(), rows);
    EXPECT_EQ(Deletions(A), Texts());
    EXPECT_EQ(SetTexts(A), Texts{L"_albumart_1=:x"});
    EXPECT_EQ(window_.TakeChanges(), 0);
}

TEST_F(RowEvents, TheButtonsOfPicturesDoNothing) {
    clTagRecord tag;
    tag.AddData(L"_albumart_1", "x", 1);
    AddFile(A, tag);
    window_.OpenAndRead();
    const Texts rows = window_.Rows();
    for (int row : {window_.RowOf(L"Art 1"), List().rows.Count() - 1}) {
        List().Select(row);
        const HWND button = List().control.button;
        ASSERT_NE(button, nullptr);
        SendMessageW(button, BM_CLICK, 0, 0);
        EXPECT_EQ(window_.Rows(), rows);
        EXPECT_EQ(SetTexts(A), Texts{L"_albumart_1=:x"});
    }
    EXPECT_EQ(window_.TakeChanges(), 0);
}

// Clear.

TEST_F(RowEvents, ClearInOneFileShowsAFileWithoutATag) {
    clTagRecord tag;
    FillTag(tag, {{L"Title", L"One"}, {L"mood", L"glad"}});
    tag.AddData(L"_albumart_1", "x", 1);
    AddFile(A, tag);
    window_.OpenAndRead();
    Remove(L"mood");
    window_.TakeChanges();
    Clear();
    EXPECT_EQ(window_.TakeChanges(), 1);
    EXPECT_EQ(Deletions(A), Texts{L"[all]"});
    EXPECT_EQ(SetTexts(A), Texts());
    EXPECT_EQ(window_.RowOf(NoTags), 1);
    EXPECT_EQ(List().rows.Count(), 1 + 1 + 7 + 3);
    EXPECT_EQ(List().GetSelection(), -1);
}

TEST_F(RowEvents, ClearInOneFileMakesWhatItHeldDifferent) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}, {L"mood", L"glad"}});
    ShowSingle();
    Clear();
    EXPECT_EQ(SetTexts(CombinedName), (Texts{L"Title=<different>", L"mood=<different>"}));
    EXPECT_EQ(SetTexts(B), (Texts{L"Title=Same", L"mood=glad"}));
    EXPECT_EQ(Deletions(B), Texts());
    EXPECT_EQ(Deletions(CombinedName), Texts());
}

TEST_F(RowEvents, ClearInOneFileLeavesWhatItDidNotHold) {
    OpenTwo({}, {});
    TagsOf(CombinedName).Add(L"mood", L"glad");
    TagsOf(CombinedName).Add(L"Title", L"One");
    TagsOf(A).Add(L"TITLE", L"One");
    Page().BuildRows();
    Page().cmdViewSingle.ToggleLatch();
    Page().BuildRows();
    Clear();
    EXPECT_EQ(SetTexts(CombinedName), (Texts{L"mood=glad", L"Title=<different>"}));
}

TEST_F(RowEvents, ClearInAllEmptiesEverySet) {
    OpenTwo({{L"Title", L"Same"}}, {{L"Title", L"Same"}});
    Remove(L"Album");
    window_.TakeChanges();
    Clear();
    EXPECT_EQ(window_.TakeChanges(), 1);
    for (const wchar_t* set : {CombinedName, A, B}) {
        EXPECT_EQ(Deletions(set), Texts{L"[all]"});
        EXPECT_EQ(SetTexts(set), Texts());
    }
    EXPECT_EQ(window_.RowOf(NoTags), 1);
    EXPECT_EQ(List().rows.Count(), 1 + 1 + 7);
    ShowSingle();
    EXPECT_EQ(window_.RowOf(NoTags), 1);
}

TEST_F(RowEvents, ClearOfNoElementRowsIsNoChange) {
    OpenOne({});
    for (int index = List().rows.Count() - 1; index >= 0; --index) {
        if (List().rows[index]->tag == RowTagText)
            List().DeleteRow(index);
    }
    Clear();
    EXPECT_EQ(window_.TakeChanges(), 0);
    EXPECT_EQ(List().rows.Count(), 1 + 1 + 3);
    EXPECT_EQ(Deletions(A), Texts{L"[all]"});
}

TEST_F(RowEvents, AValueTypedBehindAClearIsStored) {
    OpenOne({{L"Title", L"One"}, {L"Album", L"Two"}});
    Clear();
    window_.Type(L"Title", L"New");
    Page().StoreEdits();
    EXPECT_EQ(SetTexts(A), Texts{L"Title=New"});
    EXPECT_EQ(Deletions(A), Texts{L"[all]"});
}
