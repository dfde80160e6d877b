#include "toolkit/nvaluelist.h"

#include <algorithm>

LRESULT NValueList::OnSubclassMessage(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                      int32_t* handled) {
    const auto otherWindow = reinterpret_cast<HWND>(wParam);
    switch (message) {
    case WM_SETFOCUS:
        if (otherWindow && !IsChild(listBox, otherWindow))
            EditSelection();
        break;
    case WM_KILLFOCUS:
        if (!control.IsOwnWindow(otherWindow))
            control.EndEdit(true);
        break;
    case WM_KEYDOWN:
        *handled = OnListKeyDown(wParam, lParam);
        break;
    case WM_KEYUP:
        *handled = OnListKeyUp(wParam, lParam);
        break;
    case WM_COMMAND:
        OnEditorNotification(HIWORD(wParam), reinterpret_cast<HWND>(lParam));
        break;
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
        Invalidate();
        break;
    case WM_LBUTTONDOWN:
        // What a completion added goes with the focus. A list box whose edit
        // began when the focus came to it takes itself to have it still, and
        // wouldn't fetch it.
        if (IsChild(listBox, GetFocus()))
            SetFocus(listBox);
        break;
    case WM_RBUTTONDOWN:
        // So a right press selects, too, and before its release is told.
        PostMessageW(listBox, WM_LBUTTONDOWN, wParam, lParam);
        break;
    case WM_RBUTTONUP: {
        // The press that was posted has its release, too: a list box without
        // it keeps the mouse, and tells of no selection.
        PostMessageW(listBox, WM_LBUTTONUP, wParam, lParam);
        POINT cursor = {};
        GetCursorPos(&cursor);
        OnRowRightClick(cursor.x, cursor.y);
        break;
    }
    default:
        break;
    }
    return 0;
}

bool NValueList::OnListKeyDown(WPARAM key, LPARAM lParam) {
    switch (key) {
    case VK_TAB:
        PostMessageW(GetParent(listBox), WM_KEYDOWN, key, lParam);
        return false;
    case VK_SPACE:
        OnSpaceKey();
        return true;
    // From the first row up nothing is selected: wanted.
    case VK_UP:
        Select(GetSelection() - 1);
        return true;
    case VK_DOWN:
        Select(GetSelection() + 1);
        return true;
    case VK_SHIFT:
    case VK_CONTROL:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_END:
    case VK_HOME:
    case VK_NEXT:
    case VK_PRIOR:
        return true;
    default:
        return false;
    }
}

// These four act when the key is let go; that is wanted.
bool NValueList::OnListKeyUp(WPARAM key, LPARAM lParam) {
    const int last = rows.Count() - 1;
    switch (key) {
    case VK_TAB:
        PostMessageW(GetParent(listBox), WM_KEYUP, VK_TAB, lParam);
        return false;
    case VK_END:
        Select(last);
        return true;
    case VK_HOME:
        Select(0);
        return true;
    case VK_NEXT:
        Select(std::min(GetSelection() + PageStep(), last));
        return true;
    case VK_PRIOR:
        Select(std::max(GetSelection() - PageStep(), 0));
        return true;
    default:
        return false;
    }
}

void NValueList::OnSpaceKey() {
    const int index = GetSelection();
    const NValueRow* row = RowAt(index);
    if (!row || row->readOnly || (row->kind != Check && row->kind != Radio))
        return;
    const NValueRowCallback onChange = row->onChange;
    SetChecked(index, row->kind == Radio || !IsChecked(index));
    if (onChange)
        onChange(*this);
}

// From the bottom edge on the screen, and not the height: the further down the
// window stands, the further a page goes. This is wanted.
int NValueList::PageStep() const {
    RECT place = {};
    GetWindowRect(listBox, &place);
    return place.bottom / (rowHeight ? rowHeight : 1);
}

void NValueList::OnEditorNotification(UINT code, HWND sender) {
    const NValueRow* row = RowAt(GetSelection());
    if (!row || !sender || !control.IsOwnWindow(sender))
        return;
    // Whatever the button tells counts: wanted.
    const bool isChange = sender == control.editor && !control.nameMode &&
                          (code == EN_CHANGE || code == CBN_SELCHANGE);
    const NValueRowCallback callback = sender == control.button ? row->onButton
                                       : isChange               ? row->onChange
                                                                : nullptr;
    if (!callback)
        return;
    if (isChange && code == CBN_SELCHANGE)
        control.ShowChoice();
    control.Commit();
    callback(*this);
}
