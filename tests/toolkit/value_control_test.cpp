#include "tests/support/nstring_printer.h"
#include "tests/toolkit/creation_watch.h"
#include "tests/toolkit/list_dialog.h"
#include "tests/toolkit/scoped_dpi.h"
#include "tests/toolkit/text_oracle.h"
#include "tests/toolkit/window_facts.h"

#include <gtest/gtest.h>

namespace {
constexpr DWORD FieldStyle = 0x50010080;
constexpr DWORD LinesStyle = 0x201044;
constexpr DWORD TypingStyle = 0x50210042;
constexpr DWORD ChoiceStyle = 0x50210003;
constexpr int ControlHeight = 21;
constexpr int DropHeight = 200;

struct Selected {
    DWORD start = 0;
    DWORD end = 0;
    bool operator==(const Selected&) const = default;
};

Selected SelectedIn(HWND field) {
    Selected selected;
    SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&selected.start),
                 reinterpret_cast<LPARAM>(&selected.end));
    return selected;
}

HFONT FontOf(HWND window) {
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

class ValueControl : public testing::Test {
protected:
    ValueControl() {
        init.name = L"Name";
        init.value = L"Value";
        init.nameX = 6;
        for (const wchar_t* name : {L"Artist", L"Name", L"Year", L"Name"})
            names.Add(name);
    }

    // Adds a row of the kind, selects it and tells of the windows that came.
    std::vector<Creation> SelectNew(int32_t kind) {
        init.kind = kind;
        const int row = dialog.Add(init);
        const CreationWatch watch(dialog.list.listBox);
        dialog.list.Select(row);
        return watch.made;
    }
    std::vector<Creation> EditName(const NStringList* choices, bool typing) {
        const CreationWatch watch(dialog.list.listBox);
        dialog.list.EditSelectionName(choices, typing);
        return watch.made;
    }
    NValueList::clValueControl& Control() { return dialog.list.control; }
    NValueRow& Row(int row) { return *dialog.list.rows[row]; }
    int ButtonWidth(const wchar_t* caption) { return TextOracle(12).Width(caption) + 20; }
    // As high as a control, over the row.
    RECT Over(int row, int left, int width, int height = ControlHeight) {
        const RECT item = dialog.ItemRect(row);
        const int top = item.top + (item.bottom - item.top) / 2 - ControlHeight / 2;
        return {left, top, left + width, top + height};
    }
    int ItemWidth() { return dialog.ItemRect(0).right - dialog.ItemRect(0).left; }

    ListDialog dialog;
    NValueRowInit init;
    NStringList names;
};

TEST_F(ValueControl, AnEditRowHasAField) {
    dialog.Add(Plain, L"first");
    const auto made = SelectNew(Edit);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0].windowClass, L"Edit");
    EXPECT_EQ(made[0].exStyle, static_cast<DWORD>(WS_EX_CLIENTEDGE));
    EXPECT_EQ(made[0].style, FieldStyle);
    EXPECT_EQ(made[0].place, Over(1, ValueX - 5, ItemWidth() - (ValueX - 5) - 1));
    EXPECT_EQ(TextOf(Control().editor), L"Value");
    EXPECT_EQ(SelectedIn(Control().editor), (Selected{0, 5}));
    EXPECT_EQ(FontOf(Control().editor), dialog.Font());
    EXPECT_EQ(Control().boundWindow, Control().editor);
    EXPECT_EQ(GetFocus(), Control().editor);
    EXPECT_EQ(Control().editRow, 1);
    EXPECT_EQ(Control().nameMode, 0);
    EXPECT_EQ(Control().list, &dialog.list);
    EXPECT_EQ(Control().listWindow, dialog.list.listBox);
    EXPECT_FALSE(Control().button);
}

TEST_F(ValueControl, AComboEditRowHasAComboBoxThatTakesTyping) {
    init.choices.Add(L"Pop");
    init.choices.Add(L"Rock");
    const auto made = SelectNew(ComboEdit);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0].windowClass, L"ComboBox");
    EXPECT_EQ(made[0].exStyle, 0u);
    EXPECT_EQ(made[0].style, TypingStyle);
    EXPECT_EQ(made[0].place, Over(0, ValueX - 5, ItemWidth() - (ValueX - 5) - 1, DropHeight));
    EXPECT_EQ(TextOf(Control().editor), L"Value");
    EXPECT_EQ(ChoicesOf(Control().editor), (std::vector<std::wstring>{L"Pop", L"Rock"}));
    EXPECT_EQ(FontOf(Control().editor), dialog.Font());
    const HWND field = GetWindow(Control().editor, GW_CHILD);
    EXPECT_EQ(ClassOf(field), L"Edit");
    EXPECT_EQ(Control().boundWindow, field);
    EXPECT_EQ(GetFocus(), field);
    EXPECT_EQ(SelectedIn(field), (Selected{0, 5}));
}

TEST_F(ValueControl, ADropListRowHasAComboBoxOfChoiceOnly) {
    for (const wchar_t* choice : {L"value", L"Value", L"x", L"Value", L"y"})
        init.choices.Add(choice);
    const auto made = SelectNew(DropList);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0].windowClass, L"ComboBox");
    EXPECT_EQ(made[0].exStyle, 0u);
    EXPECT_EQ(made[0].style, ChoiceStyle);
    EXPECT_EQ(made[0].place, Over(0, ValueX - 5, ItemWidth() - (ValueX - 5) - 1, DropHeight));
    EXPECT_EQ(SendMessageW(Control().editor, CB_GETCURSEL, 0, 0), 3); // the last that is equal
    EXPECT_EQ(FontOf(Control().editor), dialog.Font());
    EXPECT_EQ(Control().boundWindow, Control().editor);
    EXPECT_EQ(GetFocus(), Control().editor);
}

TEST_F(ValueControl, AValueThatIsNoneOfTheChoicesSelectsTheFirst) {
    for (const wchar_t* choice : {L"value", L"x"}) // capitals matter
        init.choices.Add(choice);
    SelectNew(DropList);
    EXPECT_EQ(SendMessageW(Control().editor, CB_GETCURSEL, 0, 0), 0);
}

TEST_F(ValueControl, OtherRowsHaveNoEditor) {
    for (int32_t kind : {Plain, Raw, Link, Heading, Title, Check, Radio}) {
        EXPECT_TRUE(SelectNew(kind).empty()) << "kind " << kind;
        EXPECT_FALSE(Control().editor);
        EXPECT_EQ(Control().editRow, -1);
        EXPECT_EQ(GetFocus(), dialog.list.listBox);
    }
}

TEST_F(ValueControl, AReadOnlyRowShowsNoEditorAndNoButton) {
    init.readOnly = true;
    init.buttonText = L"View";
    for (int32_t kind : {Edit, ComboEdit, DropList, Plain}) {
        EXPECT_TRUE(SelectNew(kind).empty()) << "kind " << kind;
        EXPECT_FALSE(Control().editor || Control().button);
        EXPECT_EQ(GetFocus(), dialog.list.listBox);
    }
}

TEST_F(ValueControl, ANameWithoutChoicesIsEditedInAField) {
    SelectNew(Plain);
    NStringList empty;
    for (NStringList* choices : {static_cast<NStringList*>(nullptr), &empty})
        for (bool typing : {false, true}) {
            const auto made = EditName(choices, typing);
            ASSERT_EQ(made.size(), 1u);
            EXPECT_EQ(made[0].windowClass, L"Edit");
            EXPECT_EQ(made[0].exStyle, static_cast<DWORD>(WS_EX_CLIENTEDGE));
            EXPECT_EQ(made[0].style, FieldStyle);
            EXPECT_EQ(made[0].place, Over(0, 6, ValueX - 6 - 3));
            EXPECT_EQ(TextOf(Control().editor), L"Name");
            EXPECT_EQ(SelectedIn(Control().editor), (Selected{0, 4}));
            EXPECT_EQ(FontOf(Control().editor), dialog.Font());
            EXPECT_EQ(Control().boundWindow, Control().editor);
            EXPECT_EQ(GetFocus(), Control().editor);
            EXPECT_NE(Control().nameMode, 0);
        }
}

TEST_F(ValueControl, ANameWithChoicesAndTypingIsEditedInAComboBoxThatTakesIt) {
    SelectNew(Edit);
    const auto made = EditName(&names, true);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0].windowClass, L"ComboBox");
    EXPECT_EQ(made[0].exStyle, 0u);
    EXPECT_EQ(made[0].style, TypingStyle);
    EXPECT_EQ(made[0].place, Over(0, 6, ValueX - 6 - 3, DropHeight));
    EXPECT_EQ(TextOf(Control().editor), L"Name");
    EXPECT_EQ(ChoicesOf(Control().editor).size(), 4u);
    const HWND field = GetWindow(Control().editor, GW_CHILD);
    EXPECT_EQ(Control().boundWindow, field);
    EXPECT_EQ(GetFocus(), field);
    EXPECT_EQ(SelectedIn(field), (Selected{0, 4}));
}

TEST_F(ValueControl, ANameWithChoicesAndNoTypingIsEditedInAComboBoxOfChoiceOnly) {
    SelectNew(Edit);
    const auto made = EditName(&names, false);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0].windowClass, L"ComboBox");
    EXPECT_EQ(made[0].exStyle, 0u);
    EXPECT_EQ(made[0].style, ChoiceStyle);
    EXPECT_EQ(made[0].place, Over(0, 6, ValueX - 6 - 3, DropHeight));
    EXPECT_EQ(SendMessageW(Control().editor, CB_GETCURSEL, 0, 0), 3);
    EXPECT_EQ(Control().boundWindow, Control().editor);
    EXPECT_EQ(GetFocus(), Control().editor);
}

TEST_F(ValueControl, ANameThatIsNoneOfTheChoicesSelectsTheFirst) {
    init.name = L"name";
    SelectNew(Edit);
    EditName(&names, false);
    EXPECT_EQ(SendMessageW(Control().editor, CB_GETCURSEL, 0, 0), 0);
}

TEST_F(ValueControl, AReadOnlyRowsNameCanBeEdited) {
    init.readOnly = true;
    SelectNew(Edit);
    EXPECT_EQ(EditName(nullptr, false).size(), 1u);
}

TEST_F(ValueControl, ARowsOwnPlaceAndWidthCount) {
    init.valueX = 60;
    init.valueWidth = 80;
    for (int32_t kind : {Edit, ComboEdit, DropList}) {
        const auto made = SelectNew(kind);
        ASSERT_EQ(made.size(), 1u);
        EXPECT_EQ(made[0].place.left, 55);
        EXPECT_EQ(made[0].place.right, 55 + 80);
    }
}

TEST_F(ValueControl, ARowWithoutAPlaceTakesTheOneThatIsGiven) {
    SelectNew(Edit);
    Row(0).valueX = 0;
    Control().StartEdit(0, dialog.list.listBox, 77, false, &dialog.list, nullptr, false);
    EXPECT_EQ(PlaceOf(Control().editor), Over(0, 72, ItemWidth() - 72 - 1));
    // For a name it is the one that is given in any case.
    Row(0).valueX = 200;
    Control().StartEdit(0, dialog.list.listBox, 77, true, &dialog.list, nullptr, false);
    EXPECT_EQ(PlaceOf(Control().editor), Over(0, 6, 77 - 6 - 3));
}

TEST_F(ValueControl, TheButtonTakesItsWidthOffTheEditor) {
    init.buttonText = L"View";
    const int button = ButtonWidth(L"View");
    for (int32_t kind : {Edit, ComboEdit, DropList}) {
        const auto made = SelectNew(kind);
        ASSERT_EQ(made.size(), 2u);
        EXPECT_EQ(made[0].place.left, ValueX - 5);
        EXPECT_EQ(made[0].place.right, ItemWidth() - 1 - button);
    }
    init.valueWidth = 150;
    EXPECT_EQ(SelectNew(Edit).at(0).place.right, ValueX - 5 + 150 - button);
}

TEST_F(ValueControl, TheButtonStandsAtTheRightEdge) {
    init.buttonText = L"View";
    const auto made = SelectNew(Edit);
    ASSERT_EQ(made.size(), 2u);
    const Creation& button = made[1];
    const int width = ButtonWidth(L"View");
    EXPECT_EQ(button.windowClass, L"Button");
    EXPECT_EQ(button.title, L"View");
    EXPECT_EQ(button.style, 0x50000000u);
    EXPECT_EQ(button.exStyle, 0u);
    EXPECT_EQ(button.place, Over(0, ItemWidth() - width, width));
    EXPECT_EQ(Control().button, button.window);
    EXPECT_EQ(FontOf(button.window), dialog.Font());
    EXPECT_EQ(GetFocus(), Control().editor);
}

TEST_F(ValueControl, WithAValueWidthTheButtonEndsThere) {
    init.buttonText = L"Add Album Art";
    init.valueX = 8;
    init.valueWidth = 100;
    SelectNew(Plain);
    ASSERT_TRUE(Control().button);
    const int width = ButtonWidth(L"Add Album Art");
    EXPECT_EQ(PlaceOf(Control().button), Over(0, 8 + 100 - width, width));
    // The focus that came to the list box may have made it anew.
    EXPECT_EQ(GetWindow(dialog.list.listBox, GW_CHILD), Control().button);
    EXPECT_FALSE(GetWindow(Control().button, GW_HWNDNEXT));
    // A row with a button alone is in no edit, and the list box has the focus.
    EXPECT_EQ(Control().editRow, -1);
    EXPECT_FALSE(Control().editor);
    EXPECT_EQ(GetFocus(), dialog.list.listBox);
}

TEST_F(ValueControl, WhileANameIsEditedThereIsNoButton) {
    init.buttonText = L"View";
    SelectNew(Edit);
    EXPECT_EQ(EditName(nullptr, false).size(), 1u);
    EXPECT_FALSE(Control().button);
}

TEST_F(ValueControl, AnEditorOfSeveralLinesIsAsManyTimesAsHigh) {
    init.editLines = 3;
    const auto made = SelectNew(Edit);
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0].style, FieldStyle | LinesStyle);
    EXPECT_EQ(made[0].place,
              Over(0, ValueX - 5, ItemWidth() - (ValueX - 5) - 1, 3 * ControlHeight));
}

TEST_F(ValueControl, AnEditorOfSeveralLinesThatWouldEndBelowTheListGoesUp) {
    for (int row = 0; row < 9; ++row)
        dialog.Add(Plain, L"x");
    init.editLines = 3;
    RECT client = {};
    GetClientRect(dialog.list.listBox, &client);
    ASSERT_LE(10 * RowHeight, client.bottom);
    ASSERT_GT(12 * RowHeight, client.bottom);
    const auto made = SelectNew(Edit);
    RECT expected = Over(9, ValueX - 5, ItemWidth() - (ValueX - 5) - 1, 3 * ControlHeight);
    OffsetRect(&expected, 0, -2 * ControlHeight);
    EXPECT_EQ(made.at(0).place, expected);
    EXPECT_EQ(expected.bottom, dialog.ItemRect(9).bottom);
}

TEST_F(ValueControl, TheButtonOfAnEditorThatWentUpStandsAtItsTop) {
    for (int row = 0; row < 9; ++row)
        dialog.Add(Plain, L"x");
    init.editLines = 3;
    init.buttonText = L"View";
    const auto made = SelectNew(Edit);
    ASSERT_EQ(made.size(), 2u);
    EXPECT_EQ(made[1].place.top, made[0].place.top);
    EXPECT_EQ(made[1].place.bottom - made[1].place.top, ControlHeight);
    EXPECT_LT(made[1].place.top, dialog.ItemRect(9).top);
}

TEST_F(ValueControl, OneLineToldAsSuchIsAPlainField) {
    for (int row = 0; row < 12; ++row)
        dialog.Add(Plain, L"x"); // the last one is cut off
    init.editLines = 1;
    const auto made = SelectNew(Edit);
    EXPECT_EQ(made.at(0).style, FieldStyle);
    EXPECT_EQ(made.at(0).place.bottom - made.at(0).place.top, ControlHeight);
}

TEST_F(ValueControl, ANameOfARowOfSeveralLinesHasAFieldOfOne) {
    init.editLines = 3;
    SelectNew(Edit);
    const auto made = EditName(nullptr, false);
    EXPECT_EQ(made.at(0).style, FieldStyle);
    EXPECT_EQ(made.at(0).place, Over(0, 6, ValueX - 6 - 3));
}

TEST_F(ValueControl, ControlsAreHigherOnAFinerScreen) {
    const ScopedDpi dpi(144);
    init.buttonText = L"View";
    const RECT inPixels = SelectNew(Edit).at(0).place;
    EXPECT_EQ(inPixels.bottom - inPixels.top, 21);
    dialog.CreateList(false);
    const auto made = SelectNew(Edit);
    ASSERT_EQ(made.size(), 2u);
    EXPECT_EQ(made[0].place.bottom - made[0].place.top, 31);
    EXPECT_EQ(made[0].place.left, 180 - 5);
    EXPECT_EQ(made[1].place.right - made[1].place.left, TextOracle(18).Width(L"View") + 20);
    EXPECT_EQ(EditName(nullptr, false).at(0).place.right, 180 - 3);
}

TEST_F(ValueControl, ComboBoxesDropAsFarOnAnyScreen) {
    const ScopedDpi dpi(144);
    dialog.CreateList(false);
    for (int32_t kind : {ComboEdit, DropList}) {
        const RECT place = SelectNew(kind).at(0).place;
        EXPECT_EQ(place.bottom - place.top, DropHeight) << kind;
    }
    for (bool typing : {false, true}) {
        const RECT place = EditName(&names, typing).at(0).place;
        EXPECT_EQ(place.bottom - place.top, DropHeight);
    }
}

TEST_F(ValueControl, ControlsStandInTheMiddleOfHighRows) {
    dialog.list.Create(0, 0, 300, 220, dialog.window, NameX, ValueX, 40, 13, 13, true);
    const auto made = SelectNew(Edit);
    EXPECT_EQ(made.at(0).place.top, 20 - 10);
}

TEST_F(ValueControl, RowsOutOfRangeAreNotEdited) {
    SelectNew(Edit);
    dialog.list.Select(-1);
    for (int row : {-1, 1, 100}) {
        Control().StartEdit(row, dialog.list.listBox, 50, false, &dialog.list, nullptr, false);
        EXPECT_FALSE(Control().editor);
        EXPECT_EQ(Control().editRow, -1);
    }
}

TEST_F(ValueControl, WithoutAWindowThereIsNoEditAndTheListBoxHasTheFocus) {
    init.kind = Edit;
    dialog.Add(init);
    SetFocus(dialog.Button());
    const CreationWatch watch(dialog.list.listBox, L"Edit");
    dialog.list.Select(0);
    EXPECT_FALSE(watch.made.empty());
    EXPECT_FALSE(Control().editor);
    EXPECT_EQ(Control().editRow, -1);
    EXPECT_EQ(GetFocus(), dialog.list.listBox);
    EXPECT_EQ(dialog.list.GetSelection(), 0);
    dialog.list.Select(-1);
    EXPECT_EQ(Row(0).value, L"Value");
}

// Null is the button that isn't there: wanted.
TEST_F(ValueControl, OwnWindowsAreEditorAndButton) {
    EXPECT_TRUE(Control().IsOwnWindow(nullptr));
    init.buttonText = L"View";
    SelectNew(ComboEdit);
    EXPECT_TRUE(Control().IsOwnWindow(Control().editor));
    EXPECT_TRUE(Control().IsOwnWindow(Control().button));
    EXPECT_FALSE(Control().IsOwnWindow(dialog.list.listBox));
    EXPECT_FALSE(Control().IsOwnWindow(nullptr));
}

TEST_F(ValueControl, AValuesEditEndsWithoutACall) {
    init.buttonText = L"View";
    SelectNew(Edit);
    const HWND editor = Control().editor;
    const HWND button = Control().button;
    SetWindowTextW(editor, L"New");
    dialog.list.EndEdit(true);
    EXPECT_EQ(Row(0).value, L"New");
    EXPECT_EQ(Row(0).name, L"Name");
    EXPECT_FALSE(IsWindow(editor) || IsWindow(button));
    EXPECT_FALSE(Control().editor || Control().button || Control().boundWindow);
    EXPECT_FALSE(Control().list || Control().listWindow);
    EXPECT_EQ(Control().editRow, -1);
    EXPECT_TRUE(dialog.list.edited.empty());
}

TEST_F(ValueControl, ANamesEditEndsWithACallAndTheValuesEdit) {
    SelectNew(Edit);
    EditName(nullptr, false);
    SetWindowTextW(Control().editor, L"New");
    bool wasFree = false;
    dialog.list.onRowEdited = [&](int row) {
        wasFree = !Control().editor && Control().editRow == -1 && !Control().list;
        EXPECT_EQ(Row(row).name, L"New");
    };
    dialog.list.EndEdit(true);
    EXPECT_EQ(dialog.list.edited, std::vector<int>({0}));
    EXPECT_TRUE(wasFree);
    EXPECT_EQ(Row(0).value, L"Value");
    EXPECT_EQ(Control().editRow, 0);
    EXPECT_EQ(Control().nameMode, 0);
    EXPECT_EQ(TextOf(Control().editor), L"Value");
}

TEST_F(ValueControl, WithoutARestartNothingIsEditedNext) {
    SelectNew(Edit);
    EditName(nullptr, false);
    dialog.list.EndEdit(false);
    EXPECT_EQ(dialog.list.edited, std::vector<int>({0}));
    EXPECT_FALSE(Control().editor);
}

TEST_F(ValueControl, AnEndOfNothingIsNone) {
    SelectNew(Plain);
    dialog.list.EndEdit(true);
    dialog.list.EndEdit(false);
    EXPECT_TRUE(dialog.list.edited.empty());
}

TEST_F(ValueControl, CommitStoresNameOrValueAndTellsWhich) {
    SelectNew(Edit);
    SetWindowTextW(Control().editor, L"One");
    EXPECT_EQ(Control().Commit(), 0);
    EXPECT_EQ(Row(0).value, L"One");
    EditName(nullptr, false);
    SetWindowTextW(Control().editor, L"Two");
    EXPECT_EQ(Control().Commit(), 1);
    EXPECT_EQ(Row(0).name, L"Two");
    EditName(&names, false);
    SendMessageW(Control().editor, CB_SETCURSEL, 2, 0);
    EXPECT_EQ(Control().Commit(), 1);
    EXPECT_EQ(Row(0).name, L"Year");
    EditName(&names, true);
    SetWindowTextW(Control().editor, L"Typed");
    EXPECT_EQ(Control().Commit(), 1);
    EXPECT_EQ(Row(0).name, L"Typed");
    dialog.list.Select(-1);
    EXPECT_EQ(Control().Commit(), 0);
}

TEST_F(ValueControl, AComboEditStoresItsText) {
    init.choices.Add(L"Pop");
    SelectNew(ComboEdit);
    SetWindowTextW(Control().editor, L"Other");
    EXPECT_EQ(Control().Commit(), 0);
    EXPECT_EQ(Row(0).value, L"Other");
}

TEST_F(ValueControl, ADropListStoresItsChoiceIfThereIsOne) {
    init.choices.Add(L"Pop");
    init.choices.Add(L"Rock");
    SelectNew(DropList);
    SendMessageW(Control().editor, CB_SETCURSEL, 1, 0);
    EXPECT_EQ(Control().Commit(), 0);
    EXPECT_EQ(Row(0).value, L"Rock");
    Row(0).value = L"kept";
    SendMessageW(Control().editor, CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    Control().Commit();
    EXPECT_EQ(Row(0).value, L"kept");
}

TEST_F(ValueControl, ADropListWithoutChoicesKeepsItsValue) {
    SelectNew(DropList);
    dialog.list.Select(-1);
    EXPECT_EQ(Row(0).value, L"Value");
}

TEST_F(ValueControl, LongTextsComeBackWhole) {
    const std::wstring text(20000, L'x');
    init.value = text.c_str();
    SelectNew(Edit);
    Row(0).value = L"";
    dialog.list.Select(-1);
    EXPECT_EQ(std::wstring(Row(0).value.Text), text);
}

TEST_F(ValueControl, WithNothingSelectedEditSelectionEndsTheEdit) {
    SelectNew(Edit);
    SetWindowTextW(Control().editor, L"New");
    SendMessageW(dialog.list.listBox, LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    dialog.list.EditSelection();
    EXPECT_FALSE(Control().editor);
    EXPECT_EQ(Row(0).value, L"New");
}

TEST_F(ValueControl, EditSelectionHasTheListPaintedAnew) {
    SelectNew(Plain);
    HandlePosted();
    ValidateRect(dialog.list.listBox, nullptr);
    dialog.list.EditSelection();
    RECT client = {};
    GetClientRect(dialog.list.listBox, &client);
    RECT update = {};
    EXPECT_TRUE(GetUpdateRect(dialog.list.listBox, &update, FALSE));
    EXPECT_EQ(update, client);
    // Also with nothing selected.
    dialog.list.Select(-1);
    ValidateRect(dialog.list.listBox, nullptr);
    dialog.list.EditSelection();
    EXPECT_TRUE(GetUpdateRect(dialog.list.listBox, &update, FALSE));
    EXPECT_EQ(update, client);
}

// What the owner does as the focus comes to the new editor.
TEST_F(ValueControl, AButtonIsThatOfItsRowThoughOneAboveGoesMeanwhile) {
    dialog.Add(Edit, L"first");
    init.buttonText = L"View";
    init.kind = Edit;
    dialog.Add(init);
    SetFocus(dialog.Button());
    dialog.beforeMessage = [&](UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_COMMAND && HIWORD(wParam) == BN_KILLFOCUS && dialog.ItemCount() == 2)
            dialog.list.DeleteRow(0);
    };
    SetWindowLongPtrW(dialog.Button(), GWL_STYLE,
                      GetWindowLongPtrW(dialog.Button(), GWL_STYLE) | BS_NOTIFY);
    dialog.list.Select(1);
    ASSERT_EQ(dialog.ItemCount(), 1);
    EXPECT_EQ(Control().editRow, 0);
    ASSERT_TRUE(Control().button);
    EXPECT_EQ(PlaceOf(Control().button).top, dialog.ItemRect(0).top);
}

TEST_F(ValueControl, TheOwnerHearsOfTheRowWhereItStandsAsTheEditEnds) {
    dialog.Add(Edit, L"first");
    SelectNew(Edit);
    EditName(nullptr, false);
    dialog.beforeMessage = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        const bool isOfList = reinterpret_cast<HWND>(lParam) == dialog.list.listBox;
        if (message == WM_COMMAND && isOfList && HIWORD(wParam) == LBN_SETFOCUS &&
            dialog.ItemCount() == 2)
            dialog.list.DeleteRow(0);
    };
    dialog.list.EndEdit(false);
    ASSERT_EQ(dialog.ItemCount(), 1);
    EXPECT_EQ(dialog.list.edited, std::vector<int>({0}));
}

TEST_F(ValueControl, SelectGoesFromOneEditToTheOther) {
    SelectNew(Edit);
    SelectNew(ComboEdit);
    EXPECT_EQ(Control().editRow, 1);
    const HWND combo = Control().editor;
    dialog.list.Select(0);
    EXPECT_FALSE(IsWindow(combo));
    EXPECT_EQ(Control().editRow, 0);
    EXPECT_EQ(dialog.list.selections, std::vector<int>({0, 1, 0}));
}
} // namespace
