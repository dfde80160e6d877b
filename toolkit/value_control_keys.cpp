#include "toolkit/combo_completion.h"
#include "toolkit/nvaluelist.h"

namespace {
struct Selection {
    DWORD start = 0;
    DWORD end = 0;
};

Selection SelectionOf(HWND field) {
    Selection selection;
    SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&selection.start),
                 reinterpret_cast<LPARAM>(&selection.end));
    return selection;
}
} // namespace

// They are those of the EDIT, of a DropList's combo box, or of the EDIT in
// another combo box.
LRESULT NValueList::clValueControl::OnSubclassMessage(HWND window, UINT message, WPARAM wParam,
                                                      LPARAM lParam, int32_t* handled) {
    switch (message) {
    case WM_GETDLGCODE:
        *handled = 1;
        return DLGC_WANTALLKEYS;
    case WM_KILLFOCUS:
        OnFocusLost(window, reinterpret_cast<HWND>(wParam));
        break;
    case WM_KEYDOWN:
        *handled = OnKeyDown(window, wParam, lParam);
        break;
    case WM_KEYUP:
        *handled = OnKeyUp(wParam, lParam);
        break;
    case WM_CHAR:
        *handled = wParam == VK_TAB;
        break;
    case WM_MOUSEWHEEL:
        PostMessageW(listWindow, message, wParam, lParam);
        *handled = 1;
        break;
    default:
        break;
    }
    return 0;
}

// By the keys' rules; a row of one line told as such is one, too, and each is
// also while its name is edited in a field of one line. This is wanted.
bool NValueList::clValueControl::IsMultiLineRow() const {
    const NValueRow* row = RowInEdit();
    return row && row->editLines != 0;
}

void NValueList::clValueControl::OnFocusLost(HWND window, HWND newFocus) {
    const NValueRow* row = RowInEdit();
    // What completion added and nobody took; but any other selection that
    // doesn't begin at the start goes as well. This is wanted.
    if (row && row->kind == ComboEdit && SelectionOf(window).start > 0)
        SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
    // The field inside a combo box is no own window: wanted.
    if (!IsOwnWindow(newFocus) && newFocus != listWindow)
        EndEdit(true);
}

bool NValueList::clValueControl::OnKeyDown(HWND window, WPARAM key, LPARAM lParam) {
    switch (key) {
    case VK_UP:
    case VK_DOWN:
        return OnUpOrDown(window, key);
    case VK_TAB:
        PostMessageW(listWindow, WM_KEYDOWN, key, lParam);
        return true;
    default:
        return false;
    }
}

bool NValueList::clValueControl::OnUpOrDown(HWND window, WPARAM key) {
    if (!list)
        return false;
    if (IsMultiLineRow()) {
        const Selection selection = SelectionOf(window);
        const LRESULT line = SendMessageW(window, EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0);
        const LRESULT last = SendMessageW(window, EM_GETLINECOUNT, 0, 0) - 1;
        if (selection.start != selection.end || line != (key == VK_UP ? 0 : last))
            return false;
    }
    list->Select(key == VK_UP ? editRow - 1 : editRow + 1);
    return true;
}

bool NValueList::clValueControl::OnKeyUp(WPARAM key, LPARAM lParam) {
    if (key == VK_TAB) {
        PostMessageW(listWindow, WM_KEYUP, key, lParam);
        return true;
    }
    const NValueRow* row = RowInEdit();
    if (key == VK_RETURN && row && !IsMultiLineRow()) {
        OnReturn();
        return true;
    }
    if (row && row->kind == ComboEdit && IsCompletedKey(key))
        CompleteCombo(editor);
    return false;
}

void NValueList::clValueControl::OnReturn() {
    const bool wasName = nameMode && editor;
    HWND listBefore = listWindow;
    EndEdit(true);
    // The end of a name's edit has given the focus to that of the value.
    if (!wasName)
        SetFocus(listBefore);
}
