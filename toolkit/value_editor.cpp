#include "toolkit/value_editor.h"

#include "toolkit/device_contexts.h"
#include "toolkit/dpi.h"
#include "toolkit/nfont.h"
#include "toolkit/packed_coordinates.h"

namespace {
constexpr DWORD FieldStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL;
constexpr DWORD LinesStyle = ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL;
constexpr DWORD ComboStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL;
constexpr DWORD TypingComboStyle = ComboStyle | CBS_DROPDOWN | CBS_AUTOHSCROLL;
constexpr DWORD ChoiceComboStyle = ComboStyle | CBS_DROPDOWNLIST;
constexpr DWORD ButtonStyle = WS_CHILD | WS_VISIBLE;
static_assert(FieldStyle == 0x50010080 && LinesStyle == 0x201044);
static_assert(TypingComboStyle == 0x50210042 && ChoiceComboStyle == 0x50210003);
static_assert(ButtonStyle == 0x50000000);

constexpr int32_t ControlHeight = 21; // 96 dpi; pixels in a list that counts in these
// 96 dpi in any list, and the button's own text is in another font: wanted.
constexpr int32_t ButtonFontHeight = 12;
// Pixels on any screen: wanted.
constexpr int32_t DropHeight = 200;
constexpr int32_t ButtonRoom = 20;  // around its text
constexpr int32_t EditorOutset = 5; // to the left of where the value stands
constexpr int32_t NameGap = 3;      // between the editor of a name and the value
constexpr int32_t RightGap = 1;

const NValueRow& RowOf(const ValueEdit& edit) {
    return *edit.list.RowAt(edit.row);
}

RECT ItemRect(HWND listBox, int row) {
    RECT item = {};
    SendMessageW(listBox, LB_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return item;
}

int32_t HeightOfControls(const NValueList& list) {
    return list.pixelMode ? ControlHeight : ScaleToDpi(ControlHeight);
}

// The lines that the editor is high.
int32_t LinesOf(const NValueRow& row, bool forName) {
    return !forName && row.kind == Edit && row.editLines > 1 ? row.editLines : 1;
}

bool HasButton(const ValueEdit& edit) {
    const NValueRow& row = RowOf(edit);
    return !row.readOnly && !edit.forName && !row.buttonText.IsEmpty();
}

int32_t ButtonWidth(const ValueEdit& edit) {
    const NWindowDC dc(edit.listBox);
    NFont font;
    font.Create(dc.dc, nullptr, ScaleToDpi(ButtonFontHeight), 0);
    return font.TextWidth(RowOf(edit).buttonText) + ButtonRoom;
}

struct Span {
    int32_t left;
    int32_t width;
};

Span SpanOfName(const ValueEdit& edit, int32_t itemWidth) {
    const int32_t left = ResolvePacked(RowOf(edit).nameX, itemWidth, 0, 0);
    return {left, ResolvePacked(edit.defaultX, itemWidth, 0, 0) - left - NameGap};
}

Span SpanOfValue(const ValueEdit& edit, int32_t itemWidth) {
    const NValueRow& row = RowOf(edit);
    const uint32_t valueX = row.valueX ? row.valueX : edit.defaultX;
    const int32_t left = ResolvePacked(valueX, itemWidth, 0, 0) - EditorOutset;
    const int32_t width = row.valueWidth ? row.valueWidth : itemWidth - left - RightGap;
    return {left, HasButton(edit) ? width - ButtonWidth(edit) : width};
}

Span SpanOf(const ValueEdit& edit) {
    const RECT item = ItemRect(edit.listBox, edit.row);
    const int32_t width = item.right - item.left;
    return edit.forName ? SpanOfName(edit, width) : SpanOfValue(edit, width);
}

HWND MakeChild(const ValueEdit& edit, const wchar_t* windowClass, DWORD exStyle, DWORD style,
               const RECT& place, const NString& text) {
    HWND window = CreateWindowExW(exStyle, windowClass, text.Text, style, place.left, place.top,
                                  place.right - place.left, place.bottom - place.top, edit.listBox,
                                  nullptr, GetModuleHandleW(nullptr), nullptr);
    const LRESULT font = SendMessageW(GetParent(edit.listBox), WM_GETFONT, 0, 0);
    SendMessageW(window, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
    return window;
}

HWND MakeField(const ValueEdit& edit, const RECT& place, const NString& text) {
    const DWORD lines = LinesOf(RowOf(edit), edit.forName) > 1 ? LinesStyle : 0;
    HWND field = MakeChild(edit, L"EDIT", WS_EX_CLIENTEDGE, FieldStyle | lines, place, text);
    SendMessageW(field, EM_SETSEL, 0, -1);
    return field;
}

// The last entry that is the text, else the first.
int EntryToSelect(const NStringList& choices, const NString& text) {
    for (int index = choices.Count - 1; index > 0; --index)
        if (*choices[index] == text)
            return index;
    return 0;
}

HWND MakeCombo(const ValueEdit& edit, RECT place, const NString& text, const NStringList& choices,
               bool typing) {
    place.bottom = place.top + DropHeight;
    HWND combo = MakeChild(edit, L"COMBOBOX", 0, typing ? TypingComboStyle : ChoiceComboStyle,
                           place, NString());
    for (int index = 0; index < choices.Count; ++index)
        SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choices[index]->Text));
    if (typing)
        SetWindowTextW(combo, text.Text);
    else
        SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(EntryToSelect(choices, text)), 0);
    return combo;
}
} // namespace

ValueEditor EditorOf(const ValueEdit& edit) {
    const NValueRow& row = RowOf(edit);
    if (edit.forName && (!edit.choices || !edit.choices->Count))
        return ValueEditor::Field;
    if (edit.forName)
        return edit.typing ? ValueEditor::TypingCombo : ValueEditor::ChoiceCombo;
    if (row.readOnly)
        return ValueEditor::None;
    switch (row.kind) {
    case Edit:
        return ValueEditor::Field;
    case ComboEdit:
        return ValueEditor::TypingCombo;
    case DropList:
        return ValueEditor::ChoiceCombo;
    default:
        return ValueEditor::None;
    }
}

HWND MakeValueEditor(const ValueEdit& edit) {
    const ValueEditor kind = EditorOf(edit);
    if (kind == ValueEditor::None)
        return nullptr;
    const NValueRow& row = RowOf(edit);
    const Span span = SpanOf(edit);
    const int32_t top = EditorTop(edit.list, edit.listBox, edit.row, edit.forName);
    const int32_t height = HeightOfControls(edit.list) * LinesOf(row, edit.forName);
    const RECT place = {span.left, top, span.left + span.width, top + height};
    const NString& text = edit.forName ? row.name : row.value;
    if (kind == ValueEditor::Field)
        return MakeField(edit, place, text);
    return MakeCombo(edit, place, text, edit.forName ? *edit.choices : row.choices,
                     kind == ValueEditor::TypingCombo);
}

HWND MakeRowButton(const ValueEdit& edit) {
    if (!HasButton(edit))
        return nullptr;
    const NValueRow& row = RowOf(edit);
    const RECT item = ItemRect(edit.listBox, edit.row);
    const int32_t itemWidth = item.right - item.left;
    const int32_t width = ButtonWidth(edit);
    const int32_t end = row.valueWidth
                            ? ResolvePacked(row.valueX, itemWidth, item.left, 0) + row.valueWidth
                            : itemWidth;
    const int32_t top = EditorTop(edit.list, edit.listBox, edit.row, false);
    const RECT place = {end - width, top, end, top + HeightOfControls(edit.list)};
    return MakeChild(edit, L"BUTTON", 0, ButtonStyle, place, row.buttonText);
}

int32_t EditorTop(const NValueList& list, HWND listBox, int row, bool forName) {
    const RECT item = ItemRect(listBox, row);
    const int32_t height = HeightOfControls(list);
    const int32_t top = item.top + (item.bottom - item.top) / 2 - height / 2;
    const int32_t lines = LinesOf(*list.RowAt(row), forName);
    RECT client = {};
    GetClientRect(listBox, &client);
    return top + height * lines > client.bottom && lines > 1 ? top - height * (lines - 1) : top;
}
