#include "toolkit/nvaluelist.h"

#include "toolkit/dpi.h"
#include "toolkit/packed_coordinates.h"
#include "toolkit/value_row_scene.h"

#include <algorithm>
#include <utility>

namespace {
constexpr DWORD ListStyle = WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY |
                            LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT |
                            LBS_WANTKEYBOARDINPUT;
static_assert(ListStyle == 0x50210551);

uint32_t Given(uint32_t value, uint32_t ifNone) {
    return value ? value : ifNone;
}

// The row's own fields, with defaults applied, in pixels.
void FillRow(const NValueList& list, const NValueRowInit& init, NValueRow& row) {
    row.kind = init.kind;
    row.name = init.name;
    row.nameX = list.InPixels(Given(init.nameX, list.defaultNameX));
    row.valueX = list.InPixels(Given(init.valueX, list.defaultValueX));
    row.value = init.value;
    row.readOnly = init.readOnly;
    row.choices.CopyFrom(init.choices);
    row.buttonText = init.buttonText;
    row.onButton = init.onButton;
    row.onChange = init.onChange;
    row.valueWidth = list.SizeInPixels(init.valueWidth);
    row.editLines = init.editLines;
    row.markX = list.InPixels(Given(init.markX, list.defaultNameX));
    row.iconX = list.InPixels(init.iconX);
    row.tag = init.tag;
}

// What the platform, and whoever asks it, sees of a row.
NString ListedText(const NValueRow& row) {
    NString text = row.name;
    if (!row.name.IsEmpty() && !row.value.IsEmpty())
        text.Append(L": ");
    text.Append(row.value);
    return text;
}
} // namespace

NValueList::~NValueList() {
    Destroy();
}

void NValueList::OnSelChange() {}

void NValueList::OnRowEdited(int) {}

void NValueList::OnRowRightClick(int, int) {}

uint32_t NValueList::InPixels(uint32_t packed) const {
    if (pixelMode)
        return packed;
    const int32_t offset = ScaleToDpi(static_cast<int32_t>(packed & OffsetBits));
    return (packed & ~OffsetBits) | std::min(static_cast<uint32_t>(offset), OffsetBits);
}

int32_t NValueList::SizeInPixels(int32_t size) const {
    return static_cast<int32_t>(InPixels(static_cast<uint32_t>(size)));
}

void NValueList::Create(int x, int y, int width, int height, HWND dialog, uint32_t nameX,
                        uint32_t valueX, uint32_t rowHeightGiven, int32_t nameFont,
                        int32_t valueFont, bool inPixels) {
    if (listBox)
        Destroy();
    parent = dialog;
    pixelMode = inPixels;
    defaultNameX = nameX;
    defaultValueX = valueX;
    nameFontSize = nameFont;
    valueFontSize = valueFont;
    rowHeight = static_cast<int32_t>(InPixels(rowHeightGiven));
    const auto across = [&](int value) { return inPixels ? value : DialogUnitsX(value, dialog); };
    const auto down = [&](int value) { return inPixels ? value : DialogUnitsY(value, dialog); };
    // The window's own id while it is made: WM_MEASUREITEM comes meanwhile.
    controlId = 0;
    listBox = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"", ListStyle, across(x), down(y),
                              across(width), down(height), parent, nullptr,
                              GetModuleHandleW(nullptr), nullptr);
    if (!listBox)
        return;
    controlId = static_cast<int32_t>(GetTickCount() +
                                     static_cast<uint32_t>(reinterpret_cast<uintptr_t>(listBox)));
    SetWindowLongW(listBox, GWL_ID, controlId);
    SendMessageW(listBox, WM_SETFONT, static_cast<WPARAM>(SendMessageW(parent, WM_GETFONT, 0, 0)),
                 FALSE);
    Bind(listBox);
}

void NValueList::Destroy() {
    control.EndForGood();
    Unbind();
    if (HWND window = std::exchange(listBox, nullptr))
        DestroyWindow(window);
    rows.Clear();
    backBuffer.Release();
    ForEachMark([](NIcon& mark) { mark.Release(); });
}

template <typename Action>
void NValueList::ForEachMark(Action action) {
    for (NIcon* mark : {&checkOn, &checkOff, &checkOnGrey, &checkOffGrey, &radioOn, &radioOff,
                        &radioOnGrey, &radioOffGrey})
        action(*mark);
}

void NValueList::LoadMarks(int firstId, int size, HINSTANCE module) {
    int id = firstId;
    ForEachMark([&](NIcon& mark) { mark.Load(id++, size, size, module); });
}

void NValueList::AddRow(const NValueRowInit& init, const wchar_t* key, int insertAt) {
    // 1.
    control.EndEdit(true);
    if (!listBox)
        return;
    // 2.
    const int index = insertAt < 0 ? rows.Count() : std::min(insertAt, rows.Count());
    NValueRow& row = *rows.Add(key, false, index);
    row.number = ++lastRowNumber_;
    FillRow(*this, init, row);
    // 3. to 11.
    BuildRowScene(*this, init, row);
    // 12.
    SendMessageW(listBox, LB_INSERTSTRING, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(ListedText(row).Text));
    // The restart of step 1 may have begun an edit further down.
    control.FollowRow();
}

void NValueList::DeleteRow(int row) {
    const NValueRow* doomed = RowAt(row);
    if (!listBox || !doomed)
        return;
    const uint32_t number = doomed->number;
    const bool wasSelected = row == GetSelection();
    if (wasSelected)
        control.EndEdit(false);
    // The owner may have heard of the end, and have changed the rows.
    doomed = RowAt(IndexOf(number));
    if (doomed && control.StandsOn(*doomed))
        control.Drop();
    row = IndexOf(number);
    if (!listBox || row < 0)
        return;
    SendMessageW(listBox, LB_DELETESTRING, static_cast<WPARAM>(row), 0);
    rows.RemoveAt(row);
    control.FollowRow();
    if (!wasSelected)
        return;
    // The owner may have begun another row's edit, which Select wouldn't end.
    if (row >= rows.Count())
        control.EndForGood();
    // The platform may leave a neighbour selected.
    SendMessageW(listBox, LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    Select(row);
}

void NValueList::Clear() {
    control.EndForGood();
    if (!listBox)
        return;
    SendMessageW(listBox, LB_RESETCONTENT, 0, 0);
    rows.Clear();
}

int NValueList::IndexOf(uint32_t rowNumber) const {
    for (int index = 0; index < rows.Count(); ++index) {
        if (RowAt(index)->number == rowNumber)
            return index;
    }
    return -1;
}

int NValueList::GetSelection() const {
    if (!listBox)
        return -1;
    const auto selection = static_cast<int>(SendMessageW(listBox, LB_GETCURSEL, 0, 0));
    return selection >= 0 && selection < rows.Count() ? selection : -1;
}

void NValueList::Select(int row) {
    const auto isAccepted = [&] { return listBox && row >= -1 && row < rows.Count(); };
    if (!isAccepted())
        return;
    control.EndEdit(true);
    if (!isAccepted())
        return;
    SendMessageW(listBox, LB_SETCURSEL, static_cast<WPARAM>(row), 0);
    EditSelection();
    if (listBox)
        OnSelChange();
}

void NValueList::EditSelection() {
    EditSelected(false, nullptr, false);
}

void NValueList::EditSelectionName(const NStringList* choices, bool typing) {
    EditSelected(true, choices, typing);
}

void NValueList::EditSelected(bool forName, const NStringList* nameChoices, bool typing) {
    if (GetSelection() < 0) {
        control.EndEdit(true);
    } else {
        // As StartEdit does. But here the row is looked for when the owner has
        // heard of the end, and moved what it wanted to.
        control.EndEdit(false);
        control.StartEdit(GetSelection(), listBox, InPixels(defaultValueX), forName, this,
                          nameChoices, typing);
    }
    Invalidate();
}

void NValueList::Invalidate() const {
    // Null would mean all windows of the screen.
    for (HWND window : {listBox, control.editor})
        if (window)
            InvalidateRect(window, nullptr, FALSE);
}
