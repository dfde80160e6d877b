#include "toolkit/filter_turn.h"
#include "toolkit/nvaluelist.h"
#include "toolkit/value_row_painting.h"

#include <shellapi.h>

#include <algorithm>

namespace {
// Wanted: one flag for all lists of the process, on whatever thread.
constinit std::atomic<bool> filterRuns = false;

POINT CursorIn(HWND window) {
    POINT cursor = {};
    GetCursorPos(&cursor);
    ScreenToClient(window, &cursor);
    return cursor;
}

// The least number has no opposite, and stays.
int64_t Opposite(int64_t number) {
    return static_cast<int64_t>(0 - static_cast<uint64_t>(number));
}
} // namespace

LRESULT NValueList::OnParentMessage(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                    int32_t* handled) {
    *handled = 0;
    if (!listBox && message != WM_MEASUREITEM)
        return 0;
    FilterTurn turn(filterRuns);
    // Rows are drawn also while the owner works on a change.
    if (!turn.IsTaken() && message != WM_DRAWITEM)
        return 0;
    return Filter(message, wParam, lParam, handled);
}

LRESULT NValueList::Filter(UINT message, WPARAM wParam, LPARAM lParam, int32_t* handled) {
    switch (message) {
    case WM_MEASUREITEM: {
        auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        if (item.CtlID != static_cast<UINT>(controlId) || item.CtlType != ODT_LISTBOX)
            return 0;
        item.itemHeight = static_cast<UINT>(rowHeight);
        *handled = 1;
        return 1;
    }
    case WM_DRAWITEM: {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        if (item.hwndItem != listBox)
            return 0;
        PaintValueItem(*this, item);
        *handled = 1;
        return 1;
    }
    case WM_COMMAND:
        return reinterpret_cast<HWND>(lParam) == listBox ? OnListNotification(HIWORD(wParam)) : 0;
    case WM_PARENTNOTIFY:
        if (LOWORD(wParam) == WM_LBUTTONDOWN)
            OnClickBeforeFocus();
        return 0;
    default:
        return 0;
    }
}

LRESULT NValueList::OnListNotification(UINT code) {
    if (code == LBN_SELCHANGE) {
        EditSelection();
        if (listBox)
            OnSelChange();
        return 0;
    }
    const NValueRow* row = RowAt(GetSelection());
    if (code != LBN_DBLCLK || !row || row->kind != Link)
        return 0;
    const NString target = row->value; // the row may go while the shell works
    ShellExecuteW(listBox, nullptr, target.Text, nullptr, nullptr, SW_SHOWNORMAL);
    MessageBeep(MB_OK);
    return 1; // and yet not handled: wanted
}

// The list box gets the press only after this, so the row that was selected
// before is selected still.
void NValueList::OnClickBeforeFocus() {
    // A press on whatever else stands on the dialog is held to the rows, too.
    // This is wanted.
    const int index = GetRowAtCursor();
    const NValueRow* row = RowAt(index);
    if (!row || row->readOnly || (row->kind != Check && row->kind != Radio))
        return;
    const bool wholeRowCounts = index == GetSelection() && row->buttonText.IsEmpty();
    if (!wholeRowCounts && !IsOnMark(*row))
        return;
    const NValueRowCallback onChange = row->onChange;
    SetChecked(index, row->kind == Radio || !IsChecked(index));
    if (onChange)
        onChange(*this);
}

// In x alone; the mark's right edge counts.
bool NValueList::IsOnMark(const NValueRow& row) const {
    const int width = row.kind == Check ? checkOn.Width() : radioOn.Width();
    const int left = row.scene.Resolve(row.markX, true, 0, width);
    const LONG x = CursorIn(listBox).x;
    return x >= left && x <= left + width;
}

int NValueList::GetRowAtCursor() const {
    if (!listBox)
        return -1;
    auto height = static_cast<int>(SendMessageW(listBox, LB_GETITEMHEIGHT, 0, 0));
    if (height <= 0)
        height = std::max(rowHeight, 1);
    const int top = static_cast<int>(SendMessageW(listBox, LB_GETTOPINDEX, 0, 0));
    const int row = CursorIn(listBox).y / height + top;
    return std::min(std::max(row, 0), rows.Count() - 1);
}

bool NValueList::IsChecked(int row) const {
    const NValueRow* record = RowAt(row);
    if (!record)
        return false;
    const int64_t number = record->value.ToInt();
    return (record->kind == Check && number != 0) || (record->kind == Radio && number < 0);
}

void NValueList::SetChecked(int row, bool on) {
    NValueRow* record = RowAt(row);
    if (!record)
        return;
    if (record->kind == Check)
        record->value = on ? L"1" : L"";
    else if (record->kind == Radio && on)
        TurnRadioOn(*record);
    else if (record->kind == Radio && record->value.ToInt() < 0)
        record->value = NString::FromInt(Opposite(record->value.ToInt()));
    Invalidate();
}

void NValueList::TurnRadioOn(NValueRow& row) {
    const int64_t number = row.value.ToInt();
    const int64_t whenOn = number < 0 ? number : Opposite(number);
    // The row itself too, if it is on; it is turned back then.
    for (int index = 0; index < rows.Count(); ++index) {
        NValueRow& other = *RowAt(index);
        if (other.kind == Radio && other.value.ToInt() == whenOn)
            other.value = NString::FromInt(Opposite(whenOn));
    }
    row.value = NString::FromInt(Opposite(row.value.ToInt()));
}
