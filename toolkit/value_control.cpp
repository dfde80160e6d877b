#include "toolkit/nvaluelist.h"
#include "toolkit/value_editor.h"
#include "toolkit/window_text.h"

#include <utility>

namespace {
constexpr int NoRow = -1;

void MoveTo(HWND window, int32_t top) {
    if (!window)
        return;
    RECT place = {};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    SetWindowPos(window, nullptr, place.left, top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
} // namespace

NValueList::clValueControl::~clValueControl() {
    Drop();
}

NValueRow* NValueList::clValueControl::RowInEdit() const {
    return list && editor ? list->RowAt(editRow) : nullptr;
}

void NValueList::clValueControl::StartEdit(int row, HWND listBox, uint32_t defaultX, bool forName,
                                           NValueList* owner, const NStringList* nameChoices,
                                           bool typing) {
    // 1.
    EndForGood();
    if (!owner || !owner->RowAt(row))
        return;
    // 2.
    list = owner;
    nameMode = forName;
    listWindow = listBox;
    rowNumber_ = owner->RowAt(row)->number;
    ValueEdit edit = {*owner, listBox, row, forName, defaultX, nameChoices, typing};
    // 3. and 4.
    if (HWND made = MakeValueEditor(edit)) {
        // 5.
        editor = made;
        editRow = row;
        SendMessageW(made, EM_SETSEL, 0, -1);
        const bool hasField = EditorOf(edit) == ValueEditor::TypingCombo;
        Bind(hasField ? GetWindow(made, GW_CHILD) : made);
        SetFocus(made);
        // Who lost the focus may have ended the edit, or begun another one.
        if (editor != made)
            return;
        edit.row = editRow; // rows above may have come or gone
    }
    // 6.
    button = MakeRowButton(edit);
    // 7.
    SetFocus(editor ? editor : listWindow);
}

void NValueList::clValueControl::EndEdit(bool restart) {
    // 1.
    const NValueRow* row = RowInEdit();
    const uint32_t number = row ? row->number : 0;
    NValueList* const owner = list;
    // 2. to 4. The windows go last: the focus moves with them, and whoever
    // hears of that finds no edit, and may begin one.
    const int committed = Commit();
    Drop();
    // 5.
    if (!owner || !committed)
        return;
    const int index = owner->IndexOf(number);
    if (index < 0)
        return;
    owner->OnRowEdited(index);
    if (restart)
        owner->EditSelection();
}

void NValueList::clValueControl::EndForGood() {
    EndEdit(false);
    Drop();
}

void NValueList::clValueControl::Drop() {
    HWND lastEditor = std::exchange(editor, nullptr);
    HWND lastButton = std::exchange(button, nullptr);
    editRow = NoRow;
    Unbind();
    list = nullptr;
    listWindow = nullptr;
    for (HWND last : {lastEditor, lastButton})
        if (last)
            DestroyWindow(last);
}

void NValueList::clValueControl::ShowChoice() {
    const NValueRow* row = RowInEdit();
    const auto entry = static_cast<int>(SendMessageW(editor, CB_GETCURSEL, 0, 0));
    if (row && row->kind == ComboEdit && entry != CB_ERR)
        SetWindowTextW(editor, TextOfEntry(editor, entry).Text);
}

bool NValueList::clValueControl::StandsOn(const NValueRow& row) const {
    return (editor || button) && rowNumber_ == row.number;
}

void NValueList::clValueControl::FollowRow() {
    const int row = list && (editor || button) ? list->IndexOf(rowNumber_) : NoRow;
    if (row == NoRow)
        return;
    if (editor)
        editRow = row;
    MoveTo(editor, EditorTop(*list, listWindow, row, nameMode));
    MoveTo(button, EditorTop(*list, listWindow, row, false));
}

int NValueList::clValueControl::Commit() {
    NValueRow* row = RowInEdit();
    if (!row)
        return 0;
    if (nameMode) {
        row->name = TextOfWindow(editor);
        return 1;
    }
    if (row->kind == Edit || row->kind == ComboEdit)
        row->value = TextOfWindow(editor);
    if (row->kind == DropList) {
        const auto entry = static_cast<int>(SendMessageW(editor, CB_GETCURSEL, 0, 0));
        if (entry != CB_ERR)
            row->value = TextOfEntry(editor, entry);
    }
    return 0;
}

bool NValueList::clValueControl::IsOwnWindow(HWND window) const {
    return window == editor || window == button;
}
