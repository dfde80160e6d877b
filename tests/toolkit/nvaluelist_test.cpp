#include "tests/support/nstring_printer.h"
#include "tests/toolkit/creation_watch.h"
#include "tests/toolkit/list_dialog.h"
#include "tests/toolkit/scoped_dpi.h"
#include "tests/toolkit/test_resources.h"
#include "tests/toolkit/window_facts.h"

#include <gtest/gtest.h>

namespace {
const std::vector<NIcon NValueList::*> AllMarks = {
    &NValueList::checkOn,      &NValueList::checkOff,    &NValueList::checkOnGrey,
    &NValueList::checkOffGrey, &NValueList::radioOn,     &NValueList::radioOff,
    &NValueList::radioOnGrey,  &NValueList::radioOffGrey};

LONG StyleOf(HWND window) {
    return GetWindowLongW(window, GWL_STYLE);
}

TEST(ValueList, IsEmptyAndWithoutAWindowUntilItIsCreated) {
    NValueList list;
    EXPECT_FALSE(list.parent);
    EXPECT_FALSE(list.listBox);
    EXPECT_EQ(list.controlId, 0);
    EXPECT_FALSE(list.pixelMode);
    EXPECT_EQ(list.rowHeight, 0);
    EXPECT_EQ(list.defaultNameX, 0u);
    EXPECT_EQ(list.defaultValueX, 0u);
    EXPECT_EQ(list.nameFontSize, 0);
    EXPECT_EQ(list.valueFontSize, 0);
    EXPECT_FALSE(list.owner);
    EXPECT_FALSE(list.backBuffer.handle);
    for (NIcon NValueList::*mark : AllMarks)
        EXPECT_FALSE((list.*mark).handle);
    EXPECT_EQ(list.rows.Count(), 0);
    EXPECT_EQ(list.control.editRow, -1);
    EXPECT_EQ(list.control.nameMode, 0);
    EXPECT_FALSE(list.control.button);
    EXPECT_FALSE(list.control.editor);
    EXPECT_FALSE(list.control.listWindow);
    EXPECT_FALSE(list.control.list);
}

TEST(ValueList, WithoutAListBoxNothingHappens) {
    RecordingList list;
    NValueRowInit init;
    init.name = L"x";
    list.AddRow(init);
    EXPECT_EQ(list.rows.Count(), 0);
    list.Select(0);
    list.Select(-1);
    list.DeleteRow(0);
    list.Clear();
    list.EditSelection();
    list.EditSelectionName(nullptr, true);
    list.EndEdit(true);
    list.SetChecked(0, true);
    EXPECT_FALSE(list.IsChecked(0));
    EXPECT_EQ(list.GetSelection(), -1);
    EXPECT_EQ(list.GetRowAtCursor(), -1);
    EXPECT_TRUE(list.selections.empty());
    list.Destroy();
    list.Destroy();
}

TEST(ValueList, AnInitIsMadeEmpty) {
    NValueRowInit init;
    EXPECT_EQ(init.kind, 0);
    EXPECT_TRUE(init.name.IsEmpty() && init.value.IsEmpty() && init.buttonText.IsEmpty());
    EXPECT_EQ(init.nameX | init.valueX | init.iconX | init.markX, 0u);
    EXPECT_EQ(init.nameFontSize | init.valueWidth | init.editLines, 0);
    EXPECT_EQ(init.nameColour | init.valueColour, 0u);
    EXPECT_FALSE(init.nameBold || init.nameUnderline || init.readOnly || init.nameItalic);
    EXPECT_FALSE(init.icon.handle || init.onButton || init.onChange);
    EXPECT_EQ(init.choices.Count, 0);
    EXPECT_EQ(init.tag, 0);
}

TEST(ValueList, KindsHaveTheirNumbers) {
    const int kinds[] = {Plain, Raw, Link, Heading, Title, Edit, ComboEdit, DropList, Check, Radio};
    int number = 0;
    for (int kind : kinds)
        EXPECT_EQ(kind, number++);
}

TEST(ValueList, TheListBoxHasItsStyleAndNoTitle) {
    ListDialog dialog;
    const HWND box = dialog.list.listBox;
    ASSERT_TRUE(box);
    EXPECT_EQ(ClassOf(box), L"ListBox");
    EXPECT_EQ(TextOf(box), L"");
    // A list that needs no scroll bar has its bit taken away by the platform.
    EXPECT_EQ(StyleOf(box) & ~WS_VSCROLL, 0x50210551 & ~WS_VSCROLL);
    EXPECT_EQ(GetWindowLongW(box, GWL_EXSTYLE) & WS_EX_CLIENTEDGE, WS_EX_CLIENTEDGE);
    EXPECT_EQ(GetParent(box), dialog.window);
    EXPECT_EQ(dialog.list.parent, dialog.window);
    EXPECT_EQ(dialog.list.boundWindow, box);
}

TEST(ValueList, TheListBoxIsAskedForWithAllOfItsStyle) {
    ListDialog dialog;
    const CreationWatch watch(dialog.window);
    dialog.CreateList();
    ASSERT_EQ(watch.made.size(), 1u);
    const Creation& box = watch.made[0];
    EXPECT_EQ(box.windowClass, L"ListBox");
    EXPECT_EQ(box.title, L"");
    EXPECT_EQ(box.style, 0x50210551u);
    EXPECT_EQ(box.exStyle, static_cast<DWORD>(WS_EX_CLIENTEDGE));
    EXPECT_EQ(box.place, ListPlace);
    EXPECT_EQ(box.id, 0);
}

TEST(ValueList, TheControlIdIsSetAfterTheCreation) {
    const DWORD before = GetTickCount();
    ListDialog dialog;
    const DWORD after = GetTickCount();
    const auto handle = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(dialog.list.listBox));
    const uint32_t ticks = static_cast<uint32_t>(dialog.list.controlId) - handle;
    EXPECT_LE(ticks - before, after - before);
    EXPECT_EQ(GetWindowLongW(dialog.list.listBox, GWL_ID), dialog.list.controlId);
}

TEST(ValueList, RowsAreAsHighAsAskedThoughTheListBoxHasNoIdWhileItIsMade) {
    ListDialog dialog;
    EXPECT_EQ(dialog.list.rowHeight, RowHeight);
    EXPECT_EQ(SendMessageW(dialog.list.listBox, LB_GETITEMHEIGHT, 0, 0), RowHeight);
}

TEST(ValueList, TheListBoxHasTheDialogsFont) {
    ListDialog dialog;
    ASSERT_TRUE(dialog.Font());
    EXPECT_EQ(SendMessageW(dialog.list.listBox, WM_GETFONT, 0, 0),
              reinterpret_cast<LRESULT>(dialog.Font()));
}

TEST(ValueList, PixelsAreTakenAsTheyStand) {
    const ScopedDpi dpi(192);
    ListDialog dialog;
    EXPECT_EQ(PlaceOf(dialog.list.listBox), ListPlace);
    EXPECT_EQ(dialog.list.rowHeight, RowHeight);
    NValueRowInit init;
    init.nameX = 0x160004;
    init.valueX = 50;
    init.valueWidth = 30;
    init.markX = 7;
    init.iconX = 9;
    dialog.Add(init);
    const NValueRow& row = *dialog.list.rows[0];
    EXPECT_EQ(row.nameX, 0x160004u);
    EXPECT_EQ(row.valueX, 50u);
    EXPECT_EQ(row.valueWidth, 30);
    EXPECT_EQ(row.markX, 7u);
    EXPECT_EQ(row.iconX, 9u);
}

TEST(ValueList, OtherwisePlaceAndSizeAreDialogUnits) {
    ListDialog dialog;
    dialog.CreateList(false);
    RECT place = {10, 10, 310, 230};
    place.right -= place.left; // width and height are turned by themselves
    place.bottom -= place.top;
    MapDialogRect(dialog.window, &place);
    const RECT expected = {place.left, place.top, place.left + place.right,
                           place.top + place.bottom};
    EXPECT_EQ(PlaceOf(dialog.list.listBox), expected);
}

TEST(ValueList, OtherwiseRowsAreScaledButForTheFlagsOfTheirCoordinates) {
    const ScopedDpi dpi(144);
    ListDialog dialog;
    dialog.CreateList(false);
    EXPECT_EQ(dialog.list.rowHeight, 31); // 21 * 1.5, cut
    // The list's defaults stay as they were given, and are scaled with a row.
    EXPECT_EQ(dialog.list.defaultNameX, static_cast<uint32_t>(NameX));
    EXPECT_EQ(dialog.list.defaultValueX, static_cast<uint32_t>(ValueX));
    NValueRowInit init;
    init.nameX = 0x160004;
    init.valueX = 0x120003;
    init.valueWidth = 30;
    init.markX = 7;
    init.iconX = 0x20009;
    dialog.Add(init);
    const NValueRow& row = *dialog.list.rows[0];
    EXPECT_EQ(row.nameX, 0x160006u);
    EXPECT_EQ(row.valueX, 0x120004u);
    EXPECT_EQ(row.valueWidth, 45);
    EXPECT_EQ(row.markX, 10u);
    EXPECT_EQ(row.iconX, 0x2000Du);
    dialog.Add(NValueRowInit());
    const NValueRow& plain = *dialog.list.rows[1];
    EXPECT_EQ(plain.nameX, 42u);
    EXPECT_EQ(plain.valueX, 180u);
    EXPECT_EQ(plain.markX, 42u);
    EXPECT_EQ(plain.iconX, 0u);
    EXPECT_EQ(plain.valueWidth, 0);
}

TEST(ValueList, ARowCopiesWhatItNeedsOfItsInit) {
    ListDialog dialog;
    const NValueRowCallback button = [](NValueList&) {};
    const NValueRowCallback change = [](NValueList& list) { list.owner = nullptr; };
    {
        NValueRowInit init;
        init.kind = DropList;
        init.name = L"Genre";
        init.value = L"Rock";
        init.readOnly = true;
        init.editLines = 3;
        init.choices.Add(L"Pop");
        init.choices.Add(L"Rock");
        init.buttonText = L"View";
        init.onButton = button;
        init.onChange = change;
        init.tag = int64_t{7} << 40;
        dialog.Add(init);
    }
    const NValueRow& row = *dialog.list.rows[0];
    EXPECT_EQ(row.kind, DropList);
    EXPECT_EQ(row.name, L"Genre");
    EXPECT_EQ(row.value, L"Rock");
    EXPECT_TRUE(row.readOnly);
    EXPECT_EQ(row.editLines, 3);
    ASSERT_EQ(row.choices.Count, 2);
    EXPECT_EQ(*row.choices[1], L"Rock");
    EXPECT_EQ(row.buttonText, L"View");
    EXPECT_EQ(row.onButton, button);
    EXPECT_EQ(row.onChange, change);
    EXPECT_EQ(row.tag, int64_t{7} << 40);
}

TEST(ValueList, ThePlatformSeesNameAndValueWithAColonBetween) {
    ListDialog dialog;
    dialog.Add(Plain, L"Artist", L"Björk");
    dialog.Add(Plain, L"Artist", L"");
    dialog.Add(Plain, L"", L"Björk");
    dialog.Add(Plain, L"", L"");
    EXPECT_EQ(dialog.ItemText(0), L"Artist: Björk");
    EXPECT_EQ(dialog.ItemText(1), L"Artist");
    EXPECT_EQ(dialog.ItemText(2), L"Björk");
    EXPECT_EQ(dialog.ItemText(3), L"");
}

TEST(ValueList, RowsStandWhereTheyAreInserted) {
    ListDialog dialog;
    NValueRowInit init;
    const auto insert = [&](const wchar_t* name, int at) {
        init.name = name;
        dialog.list.AddRow(init, nullptr, at);
    };
    insert(L"b", -1);
    insert(L"a", 0);
    insert(L"d", 99); // past the end is the end
    insert(L"c", 2);
    insert(L"e", 4);
    ASSERT_EQ(dialog.list.rows.Count(), 5);
    for (int row = 0; row < 5; ++row) {
        const wchar_t expected[] = {static_cast<wchar_t>(L'a' + row), 0};
        EXPECT_EQ(dialog.list.rows[row]->name, expected);
        EXPECT_EQ(dialog.ItemText(row), expected);
    }
}

TEST(ValueList, AKeyStandsInTheKeyedList) {
    ListDialog dialog;
    dialog.list.AddRow(NValueRowInit(), L"first");
    dialog.list.AddRow(NValueRowInit());
    EXPECT_EQ(*dialog.list.rows.Keys[0], L"first");
    EXPECT_EQ(*dialog.list.rows.Keys[1], L"");
}

TEST(ValueList, TheListBoxHasAsManyItemsAsThereAreRows) {
    ListDialog dialog;
    const auto agree = [&] { return dialog.ItemCount() == dialog.list.rows.Count(); };
    for (int row = 0; row < 5; ++row) {
        dialog.Add(Edit, L"n", L"v");
        EXPECT_TRUE(agree());
    }
    dialog.list.Select(2);
    for (int row : {2, 0, 7, -1, 2}) {
        dialog.list.DeleteRow(row);
        EXPECT_TRUE(agree());
    }
    EXPECT_EQ(dialog.ItemCount(), 2);
    dialog.list.Clear();
    EXPECT_TRUE(agree());
    EXPECT_EQ(dialog.ItemCount(), 0);
}

TEST(ValueList, DeletingTheSelectedRowSelectsTheNextOne) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(1);
    dialog.list.selections.clear();
    dialog.list.DeleteRow(1);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    EXPECT_EQ(dialog.list.rows[1]->name, L"c");
    EXPECT_EQ(dialog.list.control.editRow, 1);
    EXPECT_EQ(TextOf(dialog.list.control.editor), L"c");
    EXPECT_EQ(dialog.list.selections, std::vector<int>({1}));
}

TEST(ValueList, DeletingTheSelectedLastRowSelectsNothing) {
    ListDialog dialog;
    dialog.Add(Edit, L"a");
    dialog.Add(Edit, L"b");
    dialog.list.Select(1);
    dialog.list.selections.clear();
    dialog.list.DeleteRow(1);
    EXPECT_EQ(dialog.list.GetSelection(), -1);
    EXPECT_FALSE(dialog.list.control.editor);
    EXPECT_TRUE(dialog.list.selections.empty());
}

TEST(ValueList, DeletingAnotherRowLeavesSelectionAndEdit) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(1);
    dialog.list.selections.clear();
    const HWND editor = dialog.list.control.editor;
    dialog.list.DeleteRow(2);
    EXPECT_EQ(dialog.list.control.editor, editor);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    EXPECT_TRUE(dialog.list.selections.empty());
}

TEST(ValueList, ARowThatGoesAboveTheEditedOneTakesItsEditUp) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(2);
    const RECT before = PlaceOf(dialog.list.control.editor);
    TypeInto(dialog.list.control.editor, L"new");
    dialog.list.DeleteRow(0);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    EXPECT_EQ(dialog.list.control.editRow, 1);
    EXPECT_EQ(PlaceOf(dialog.list.control.editor).top, before.top - RowHeight);
    EXPECT_EQ(PlaceOf(dialog.list.control.editor).left, before.left);
    dialog.list.Select(-1);
    EXPECT_EQ(dialog.list.rows[1]->value, L"new");
    EXPECT_EQ(dialog.list.rows[0]->value, L"b");
}

TEST(ValueList, AButtonWithoutAnEditorFollowsItsRow) {
    ListDialog dialog;
    dialog.Add(Plain, L"a");
    NValueRowInit init;
    init.buttonText = L"Add";
    dialog.Add(init);
    dialog.list.Select(1);
    const HWND button = dialog.list.control.button;
    ASSERT_TRUE(button);
    dialog.list.DeleteRow(0);
    EXPECT_EQ(dialog.list.control.button, button);
    EXPECT_EQ(dialog.list.control.editRow, -1);
    EXPECT_EQ(PlaceOf(button).top, dialog.ItemRect(0).top);
}

TEST(ValueList, ARowGoesThoughTheOwnerChangesOthersAsItsEditEnds) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(2);
    dialog.list.EditSelectionName(nullptr, false);
    dialog.list.onRowEdited = [&](int) { dialog.list.DeleteRow(0); };
    dialog.list.DeleteRow(2);
    ASSERT_EQ(dialog.ItemCount(), 1);
    EXPECT_EQ(dialog.list.rows[0]->name, L"b");
}

TEST(ValueList, ARowThatTheOwnerDeletesAsItsEditEndsTakesNoOtherWithIt) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(1);
    dialog.list.EditSelectionName(nullptr, false);
    dialog.list.onRowEdited = [&](int row) {
        dialog.list.onRowEdited = nullptr;
        dialog.list.DeleteRow(row);
        dialog.Add(Edit, L"d"); // perhaps where the one that went was
    };
    dialog.list.DeleteRow(1);
    ASSERT_EQ(dialog.ItemCount(), 3);
    EXPECT_EQ(dialog.list.rows[1]->name, L"c");
    EXPECT_EQ(dialog.list.rows[2]->name, L"d");
}

TEST(ValueList, AddingARowCommitsTheEditThatRuns) {
    ListDialog dialog;
    dialog.Add(Edit, L"a", L"old");
    dialog.list.Select(0);
    TypeInto(dialog.list.control.editor, L"new");
    dialog.Add(Plain, L"b");
    EXPECT_EQ(dialog.list.rows[0]->value, L"new");
    EXPECT_FALSE(dialog.list.control.editor);
}

TEST(ValueList, ARowThatComesAboveTheOneWhoseEditRestartedTakesItsEditDown) {
    ListDialog dialog;
    dialog.Add(Edit, L"a", L"1");
    dialog.Add(Edit, L"b", L"2");
    dialog.list.Select(1);
    dialog.list.EditSelectionName(nullptr, false);
    const int top = PlaceOf(dialog.list.control.editor).top;
    NValueRowInit init;
    init.kind = Edit;
    dialog.list.AddRow(init, nullptr, 0); // the value's edit restarts behind the name's
    EXPECT_EQ(dialog.list.edited, std::vector<int>({1}));
    ASSERT_TRUE(dialog.list.control.editor);
    EXPECT_EQ(dialog.list.control.editRow, 2);
    EXPECT_EQ(dialog.list.GetSelection(), 2);
    EXPECT_EQ(PlaceOf(dialog.list.control.editor).top, top + RowHeight);
    TypeInto(dialog.list.control.editor, L"new");
    dialog.list.Select(-1);
    EXPECT_EQ(dialog.list.rows[1]->value, L"1");
    EXPECT_EQ(dialog.list.rows[2]->value, L"new");
}

TEST(ValueList, ClearEndsTheEditAndTakesAllRows) {
    ListDialog dialog;
    dialog.Add(Edit, L"a", L"1");
    dialog.Add(Edit, L"b", L"2");
    dialog.list.Select(1);
    dialog.list.Clear();
    EXPECT_EQ(dialog.list.rows.Count(), 0);
    EXPECT_EQ(dialog.ItemCount(), 0);
    EXPECT_FALSE(dialog.list.control.editor);
    EXPECT_EQ(dialog.list.control.editRow, -1);
    EXPECT_EQ(dialog.list.GetSelection(), -1);
    EXPECT_TRUE(dialog.list.listBox);
}

TEST(ValueList, DestroyTakesWindowRowsBufferAndMarks) {
    ListDialog dialog;
    dialog.list.LoadMarks(IDI_MARKS, 16);
    dialog.Add(Edit, L"a", L"1");
    dialog.list.Select(0);
    const HWND box = dialog.list.listBox;
    const HWND editor = dialog.list.control.editor;
    UpdateWindow(box);
    EXPECT_TRUE(dialog.list.backBuffer.handle);
    dialog.list.Destroy();
    EXPECT_FALSE(IsWindow(box));
    EXPECT_FALSE(IsWindow(editor));
    EXPECT_FALSE(dialog.list.listBox);
    EXPECT_FALSE(dialog.list.boundWindow);
    EXPECT_EQ(dialog.list.rows.Count(), 0);
    EXPECT_EQ(dialog.list.rows.Keys.Count, 0);
    EXPECT_FALSE(dialog.list.backBuffer.handle);
    for (NIcon NValueList::*mark : AllMarks)
        EXPECT_FALSE((dialog.list.*mark).handle);
    dialog.list.Destroy();
}

TEST(ValueList, TheEndOfTheListTakesItsWindowDown) {
    ListDialog dialog;
    HWND box = nullptr;
    {
        NValueList list;
        list.Create(0, 0, 100, 100, dialog.window, NameX, ValueX, RowHeight, FontSize, FontSize,
                    true);
        list.AddRow(NValueRowInit());
        box = list.listBox;
        ASSERT_TRUE(IsWindow(box));
    }
    EXPECT_FALSE(IsWindow(box));
}

TEST(ValueList, ASecondCreateTakesTheFirstListDown) {
    ListDialog dialog;
    dialog.Add(Plain, L"a");
    const HWND first = dialog.list.listBox;
    dialog.CreateList();
    EXPECT_FALSE(IsWindow(first));
    EXPECT_TRUE(IsWindow(dialog.list.listBox));
    EXPECT_EQ(dialog.list.rows.Count(), 0);
    EXPECT_EQ(SendMessageW(dialog.list.listBox, LB_GETITEMHEIGHT, 0, 0), RowHeight);
}

TEST(ValueList, MarksAreLoadedInTheirOrder) {
    NValueList list;
    list.LoadMarks(IDI_MARKS, 16);
    for (NIcon NValueList::*mark : AllMarks)
        EXPECT_EQ((list.*mark).Width(), 16);
    list.LoadMarks(IDI_MARKS + 4, 16); // the last four aren't there
    for (size_t index = 0; index < AllMarks.size(); ++index)
        EXPECT_EQ((list.*AllMarks[index]).handle != nullptr, index < 4);
}

TEST(ValueList, ASelectionThatTheListBoxTellsBeyondTheRowsIsNone) {
    ListDialog dialog;
    dialog.Add(Plain, L"a");
    EXPECT_EQ(dialog.list.GetSelection(), -1);
    SendMessageW(dialog.list.listBox, LB_SETCURSEL, 0, 0);
    EXPECT_EQ(dialog.list.GetSelection(), 0);
    // A string that is none of the list's.
    SendMessageW(dialog.list.listBox, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"stray"));
    SendMessageW(dialog.list.listBox, LB_SETCURSEL, 1, 0);
    EXPECT_EQ(dialog.list.GetSelection(), -1);
}

TEST(ValueList, SelectTakesRowsThatThereAreAndNone) {
    ListDialog dialog;
    dialog.Add(Edit, L"a", L"1");
    dialog.Add(Edit, L"b", L"2");
    dialog.list.Select(1);
    dialog.list.Select(2);
    dialog.list.Select(-2);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    EXPECT_EQ(dialog.list.selections, std::vector<int>({1}));
    EXPECT_TRUE(dialog.list.control.editor);
    dialog.list.Select(-1);
    EXPECT_EQ(dialog.list.GetSelection(), -1);
    EXPECT_EQ(dialog.list.selections, std::vector<int>({1, -1}));
    EXPECT_FALSE(dialog.list.control.editor);
}
} // namespace
