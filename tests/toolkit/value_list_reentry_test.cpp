// What an owner may do when the list calls it: nearly everything. After each of
// its doings list box, rows and editor have to agree.

#include "tests/support/nstring_printer.h"
#include "tests/toolkit/list_dialog.h"

#include <gtest/gtest.h>

#include <set>

namespace {
// What the owner does inside a call.
struct Doing {
    const char* name;
    void (*perform)(RecordingList& list);
};

void AddRowOf(NValueList& list, int32_t kind, int at) {
    NValueRowInit init;
    init.kind = kind;
    init.name = L"added";
    init.value = L"added";
    init.choices.Add(L"added");
    init.buttonText = L"Do";
    list.AddRow(init, nullptr, at);
}

void Rebuild(RecordingList& list) {
    list.Clear();
    for (int32_t kind : {Plain, Edit, ComboEdit})
        AddRowOf(list, kind, -1);
}

const Doing Doings[] = {
    {"Nothing", [](RecordingList&) {}},
    {"Clear", [](RecordingList& list) { list.Clear(); }},
    {"Destroy", [](RecordingList& list) { list.Destroy(); }},
    {"DestroyTheDialog", [](RecordingList& list) { DestroyWindow(list.parent); }},
    {"Rebuild", Rebuild},
    {"RebuildAndSelect",
     [](RecordingList& list) {
         Rebuild(list);
         list.Select(2);
     }},
    {"DeleteSelected", [](RecordingList& list) { list.DeleteRow(list.GetSelection()); }},
    {"DeleteFirst", [](RecordingList& list) { list.DeleteRow(0); }},
    {"DeleteLast", [](RecordingList& list) { list.DeleteRow(list.rows.Count() - 1); }},
    {"AddFirst", [](RecordingList& list) { AddRowOf(list, Edit, 0); }},
    {"AddLast", [](RecordingList& list) { AddRowOf(list, DropList, -1); }},
    {"SelectNone", [](RecordingList& list) { list.Select(-1); }},
    {"SelectFirst", [](RecordingList& list) { list.Select(0); }},
    {"SelectLast", [](RecordingList& list) { list.Select(list.rows.Count() - 1); }},
    {"EditName", [](RecordingList& list) { list.EditSelectionName(nullptr, true); }},
    {"EditValue", [](RecordingList& list) { list.EditSelection(); }},
    {"EndEdit", [](RecordingList& list) { list.EndEdit(true); }},
    {"CreateAnew",
     [](RecordingList& list) {
         list.Create(0, 0, 200, 100, list.parent, 5, 50, 20, 13, 13, true);
         AddRowOf(list, Edit, -1);
         list.Select(0);
     }},
    {"TakeTheFocus", [](RecordingList& list) { SetFocus(GetDlgItem(list.parent, IDOK)); }},
};

// Done once, or inside itself as far as `depth` allows.
struct Owner {
    RecordingList* list;
    const Doing* doing;
    int depth = 2;

    void Act() {
        if (depth <= 0)
            return;
        --depth;
        doing->perform(*list);
    }
};

void OnCallback(NValueList& list) {
    static_cast<Owner*>(list.owner)->Act();
}

// Where the list calls its owner.
struct Occasion {
    const char* name;
    void (*bring)(ListDialog& dialog);
};

void SelectRow(ListDialog& dialog, int row) {
    dialog.list.Select(row);
}

void TypeName(ListDialog& dialog) {
    dialog.list.EditSelectionName(nullptr, true);
    if (dialog.list.control.editor)
        SetWindowTextW(dialog.list.control.editor, L"named");
}

const Occasion Occasions[] = {
    {"TypingIntoAField", [](ListDialog& dialog) { TypeInto(dialog.list.control.editor, L"x"); }},
    {"AChoice",
     [](ListDialog& dialog) {
         SelectRow(dialog, 3);
         SendMessageW(dialog.list.listBox, WM_COMMAND, MAKEWPARAM(0, CBN_SELCHANGE),
                      reinterpret_cast<LPARAM>(dialog.list.control.editor));
     }},
    {"AButton",
     [](ListDialog& dialog) { SendMessageW(dialog.list.control.button, BM_CLICK, 0, 0); }},
    {"ASelectionByCode", [](ListDialog& dialog) { SelectRow(dialog, 2); }},
    {"ASelectionByTheMouse", [](ListDialog& dialog) { dialog.Click(2); }},
    {"ANameByReturn",
     [](ListDialog& dialog) {
         TypeName(dialog);
         PressKey(dialog.list.control.boundWindow, VK_RETURN);
     }},
    {"ANameByTheFocus",
     [](ListDialog& dialog) {
         TypeName(dialog);
         SetFocus(dialog.Button());
     }},
    {"ANameBySelect",
     [](ListDialog& dialog) {
         TypeName(dialog);
         SelectRow(dialog, 4);
     }},
    {"ANameByTheMouse",
     [](ListDialog& dialog) {
         TypeName(dialog);
         dialog.Click(4);
     }},
    {"ANameByUp",
     [](ListDialog& dialog) {
         TypeName(dialog);
         PressKey(dialog.list.control.boundWindow, VK_UP);
     }},
    {"ANameByAddRow",
     [](ListDialog& dialog) {
         TypeName(dialog);
         AddRowOf(dialog.list, Edit, 0);
     }},
    {"ANameByDeleteRow",
     [](ListDialog& dialog) {
         TypeName(dialog);
         dialog.list.DeleteRow(dialog.list.GetSelection());
     }},
    {"ANameByClear",
     [](ListDialog& dialog) {
         TypeName(dialog);
         dialog.list.Clear();
     }},
    {"ANameByDestroy",
     [](ListDialog& dialog) {
         TypeName(dialog);
         dialog.list.Destroy();
     }},
    {"ANameByTheDialogsEnd",
     [](ListDialog& dialog) {
         TypeName(dialog);
         DestroyWindow(dialog.window);
     }},
    {"AMarkByTheSpaceKey",
     [](ListDialog& dialog) {
         SelectRow(dialog, 5);
         PressKey(dialog.list.listBox, VK_SPACE);
     }},
};

// The dialog's button has a neighbour in the list box's notifications: the
// owner acts when the list box tells of the focus, too.
class ValueListReentry : public testing::TestWithParam<std::tuple<Occasion, Doing>> {};

std::set<HWND> ChildrenOf(HWND window) {
    std::set<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        children.insert(child);
    return children;
}

void ExpectAgreement(const ListDialog& dialog) {
    const NValueList& list = dialog.list;
    const auto& control = list.control;
    if (!list.listBox) {
        EXPECT_EQ(list.rows.Count(), 0);
        EXPECT_EQ(control.editRow, -1);
        EXPECT_FALSE(control.editor || control.button || control.boundWindow);
        return;
    }
    EXPECT_EQ(dialog.ItemCount(), list.rows.Count());
    std::set<HWND> expected;
    for (HWND own : {control.editor, control.button})
        if (own)
            expected.insert(own);
    EXPECT_EQ(ChildrenOf(list.listBox), expected); // none is left behind
    EXPECT_EQ(control.editor != nullptr, control.editRow >= 0);
    EXPECT_LT(control.editRow, list.rows.Count());
    if (control.editor) {
        EXPECT_EQ(control.editRow, list.GetSelection());
        EXPECT_EQ(control.list, &list);
        EXPECT_TRUE(control.boundWindow);
    }
}

TEST_P(ValueListReentry, ListBoxRowsAndEditorAgree) {
    const auto& [occasion, doing] = GetParam();
    ListDialog dialog;
    Owner owner = {&dialog.list, &doing};
    dialog.list.owner = &owner;
    NValueRowInit init;
    for (int32_t kind : {Plain, Edit, ComboEdit, DropList, Edit, Check, Radio}) {
        init.kind = kind;
        init.name = L"n";
        init.value = L"1";
        init.choices.Add(L"1");
        init.choices.Add(L"2");
        init.buttonText = kind == Check || kind == Radio ? L"" : L"Do";
        init.onButton = init.onChange = OnCallback;
        dialog.Add(init);
    }
    dialog.list.Select(1);
    dialog.list.onSelChange = [&] { owner.Act(); };
    dialog.list.onRowEdited = [&](int) { owner.Act(); };
    occasion.bring(dialog);
    EXPECT_LT(owner.depth, 2) << "the owner was never called";
    ExpectAgreement(dialog);
    // And it goes on.
    owner.depth = 0;
    HandlePosted();
    if (dialog.list.listBox) {
        AddRowOf(dialog.list, Edit, -1);
        dialog.list.Select(dialog.list.rows.Count() - 1);
        EXPECT_TRUE(dialog.list.control.editor);
        ExpectAgreement(dialog);
    }
}

std::string NameOf(const testing::TestParamInfo<std::tuple<Occasion, Doing>>& info) {
    return std::string(std::get<0>(info.param).name) + "_" + std::get<1>(info.param).name;
}

INSTANTIATE_TEST_SUITE_P(All, ValueListReentry,
                         testing::Combine(testing::ValuesIn(Occasions), testing::ValuesIn(Doings)),
                         NameOf);

// No value of an edit may end up in a neighbour.
TEST(ValueListOwner, AnEditThatIsBegunAtTheEndOfAnotherIsStoredInItsOwnRow) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(1);
    dialog.list.EditSelectionName(nullptr, true);
    dialog.list.onRowEdited = [&](int row) {
        dialog.list.onRowEdited = nullptr;
        dialog.list.DeleteRow(row); // as an unnamed row goes
    };
    dialog.list.Select(2);
    EXPECT_EQ(dialog.list.rows.Count(), 2);
    for (int row : {-1, 0, 1})
        dialog.list.Select(row);
    EXPECT_EQ(dialog.list.rows[0]->value, L"a");
    EXPECT_EQ(dialog.list.rows[1]->value, L"c");
}

TEST(ValueListOwner, ARowThatGoesAtTheEndOfItsNameLeavesTheClickedOneSelected) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(0);
    dialog.list.EditSelectionName(nullptr, true);
    dialog.list.onRowEdited = [&](int row) { dialog.list.DeleteRow(row); };
    dialog.Click(2);
    ASSERT_EQ(dialog.list.rows.Count(), 2);
    EXPECT_EQ(dialog.list.GetSelection(), 1);
    EXPECT_EQ(TextOf(dialog.list.control.editor), L"c");
}

TEST(ValueListOwner, ARowThatTheOwnerDeletesAtTheEndOfItsEditIsTheOnlyOneToGo) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(1);
    dialog.list.EditSelectionName(nullptr, true);
    dialog.list.onRowEdited = [&](int row) {
        dialog.list.onRowEdited = nullptr;
        dialog.list.DeleteRow(row);
    };
    dialog.list.DeleteRow(1);
    EXPECT_EQ(dialog.list.rows.Count(), 2);
    EXPECT_EQ(dialog.list.rows[1]->name, L"c");
}

TEST(ValueListOwner, NoEditOutlastsTheSelectionWhenTheLastRowGoes) {
    ListDialog dialog;
    for (const wchar_t* name : {L"a", L"b", L"c"})
        dialog.Add(Edit, name, name);
    dialog.list.Select(2);
    dialog.list.EditSelectionName(nullptr, true);
    dialog.list.onRowEdited = [&](int) {
        dialog.list.onRowEdited = nullptr;
        dialog.list.Select(0);
        SetWindowTextW(dialog.list.control.editor, L"new");
    };
    dialog.list.DeleteRow(2);
    ASSERT_EQ(dialog.list.rows.Count(), 2);
    EXPECT_EQ(dialog.list.GetSelection(), -1);
    ExpectAgreement(dialog);
    EXPECT_FALSE(dialog.list.control.editor);
    EXPECT_EQ(dialog.list.rows[0]->value, L"new");
}
} // namespace
