#include "toolkit/nvaluelist.h"
#include "toolkit/value_editor.h"
#include "toolkit/window_text.h"

#include <utility>

namespace {
constexpr int NoRow = -1;

void DestroyIfAny(HWND window) {
    if (window)
        DestroyWindow(window);
}

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
    // 1. Nothing is stored from an edit that the owner began when it heard of
    // the end.
    EndEdit(false);
    Drop();
    if (!owner || !owner->RowAt(row))
        return;
    // 2.
    list = owner;
    nameMode = forName;
    listWindow = listBox;
    const ValueEdit edit = {*owner, listBox, row, forName, defaultX, nameChoices, typing};
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
    }
    // 6.
    button = MakeRowButton(edit);
    // 7.
    SetFocus(editor ? editor : listWindow);
}

void NValueList::clValueControl::EndEdit(bool restart) {
    // 1.
    const int row = editRow;
    NValueList* const owner = list;
    // 2. to 4. The windows go last: the focus moves with them, and whoever
    // hears of that finds no edit, and may begin one.
    const int committed = Commit();
    Drop();
    // 5.
    if (!owner || !committed)
        return;
    owner->OnRowEdited(row);
    if (restart)
        owner->EditSelection();
}

void NValueList::clValueControl::Drop() {
    HWND lastEditor = std::exchange(editor, nullptr);
    HWND lastButton = std::exchange(button, nullptr);
    editRow = NoRow;
    Unbind();
    list = nullptr;
    listWindow = nullptr;
    DestroyIfAny(lastEditor);
    DestroyIfAny(lastButton);
}

void NValueList::clValueControl::FollowRow(int row) {
    editRow = row;
    if (!RowInEdit())
        return;
    MoveTo(editor, EditorTop(*list, listWindow, row, nameMode));
    MoveTo(button, RowButtonTop(*list, listWindow, row));
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
    return window && (window == editor || window == button);
}
