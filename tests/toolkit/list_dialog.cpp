#include "tests/toolkit/list_dialog.h"

#include "tests/toolkit/test_resources.h"

ListDialog::ListDialog() {
    window = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PLAIN), nullptr,
                                DialogProc, reinterpret_cast<LPARAM>(this));
    SetWindowPos(window, nullptr, 100, 100, 400, 300, SWP_NOZORDER | SWP_SHOWWINDOW);
    SetWindowPos(Button(), nullptr, 320, 10, 50, 20, SWP_NOZORDER);
    SetForegroundWindow(window);
    CreateList();
}

ListDialog::~ListDialog() {
    if (window)
        DestroyWindow(window);
}

void ListDialog::CreateList(bool inPixels) {
    list.Create(ListPlace.left, ListPlace.top, ListPlace.right - ListPlace.left,
                ListPlace.bottom - ListPlace.top, window, NameX, ValueX, RowHeight, FontSize,
                FontSize, inPixels);
}

int ListDialog::Add(int32_t kind, const wchar_t* name, const wchar_t* value) {
    return AddWithChoices(kind, name, value, {});
}

int ListDialog::Add(const NValueRowInit& init) {
    list.AddRow(init);
    return list.rows.Count() - 1;
}

int ListDialog::AddWithChoices(int32_t kind, const wchar_t* name, const wchar_t* value,
                               const std::vector<const wchar_t*>& choices) {
    NValueRowInit init;
    init.kind = kind;
    init.name = name;
    init.value = value;
    for (const wchar_t* choice : choices)
        init.choices.Add(choice);
    return Add(init);
}

Filtered ListDialog::Filter(UINT message, WPARAM wParam, LPARAM lParam) {
    Filtered filtered = {-1, -1};
    filtered.result = list.OnParentMessage(window, message, wParam, lParam, &filtered.handled);
    return filtered;
}

Filtered ListDialog::Notify(UINT code) {
    return Filter(WM_COMMAND, MAKEWPARAM(list.controlId, code),
                  reinterpret_cast<LPARAM>(list.listBox));
}

void ListDialog::Click(int row, int x) {
    const RECT item = ItemRect(row);
    const LPARAM place = MAKELPARAM(x, (item.top + item.bottom) / 2);
    SendMessageW(list.listBox, WM_LBUTTONDOWN, MK_LBUTTON, place);
    SendMessageW(list.listBox, WM_LBUTTONUP, 0, place);
}

RECT ListDialog::ItemRect(int row) const {
    RECT item = {};
    SendMessageW(list.listBox, LB_GETITEMRECT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(&item));
    return item;
}

int ListDialog::ItemCount() const {
    return static_cast<int>(SendMessageW(list.listBox, LB_GETCOUNT, 0, 0));
}

std::wstring ListDialog::ItemText(int row) const {
    const LRESULT length = SendMessageW(list.listBox, LB_GETTEXTLEN, static_cast<WPARAM>(row), 0);
    if (length < 0)
        return L"(none)";
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    SendMessageW(list.listBox, LB_GETTEXT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(length));
    return text;
}

HFONT ListDialog::Font() const {
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

INT_PTR CALLBACK ListDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG)
        SetWindowLongPtrW(window, DWLP_USER, lParam);
    auto* dialog = reinterpret_cast<ListDialog*>(GetWindowLongPtrW(window, DWLP_USER));
    return dialog && dialog->window ? dialog->OnMessage(message, wParam, lParam) : FALSE;
}

INT_PTR ListDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (beforeMessage)
        beforeMessage(message, wParam, lParam);
    const Filtered filtered = Filter(message, wParam, lParam);
    if (filtered.handled) {
        SetWindowLongPtrW(window, DWLP_MSGRESULT, filtered.result);
        return TRUE;
    }
    if (message == WM_DESTROY) {
        ++destroyed;
        list.Destroy();
        window = nullptr;
    }
    return FALSE;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    text.resize(static_cast<size_t>(length));
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

RECT PlaceOf(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

std::vector<std::wstring> ChoicesOf(HWND combo) {
    std::vector<std::wstring> choices;
    const LRESULT count = SendMessageW(combo, CB_GETCOUNT, 0, 0);
    for (LRESULT index = 0; index < count; ++index) {
        wchar_t text[256] = {};
        SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(text));
        choices.emplace_back(text);
    }
    return choices;
}

void TypeInto(HWND field, const wchar_t* text) {
    for (; *text; ++text)
        SendMessageW(field, WM_CHAR, *text, 1);
}

void PressKey(HWND window, WPARAM key) {
    SendMessageW(window, WM_KEYDOWN, key, 1);
    SendMessageW(window, WM_KEYUP, key, 0xC0000001);
}
