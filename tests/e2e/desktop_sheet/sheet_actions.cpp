#include "tests/e2e/desktop_sheet/sheet_actions.h"

#include "foundation/com_owners.h"
#include "resources/resource_ids.h"
#include "suite/shellhost/console.h"

#include <commctrl.h>
#include <prsht.h>

#include <algorithm>
#include <stdexcept>

namespace {
constexpr int ApplyButton = 0x3021; // of the platform's sheets
constexpr DWORD LongestMs = 60000;
constexpr DWORD StepMs = 20;

// Another thread's windows can't be waited for: they are looked at.
template <typename Look>
auto WaitFor(const char* what, Look look) {
    const DWORD start = GetTickCount();
    for (;;) {
        if (const auto found = look())
            return found;
        if (GetTickCount() - start > LongestMs)
            throw std::runtime_error(std::string("there is no ") + what);
        Sleep(StepMs);
    }
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, 64);
    return name;
}

std::wstring TextOf(HWND window) {
    wchar_t text[256] = L"";
    GetWindowTextW(window, text, 256);
    return text;
}

// The first shown window of those that `list` goes through which `isIt` takes.
template <typename List, typename IsIt>
HWND FindShown(List list, IsIt isIt) {
    struct Search {
        IsIt& isIt;
        HWND found;
    } search = {isIt, nullptr};
    list(
        [](HWND window, LPARAM context) -> BOOL {
            auto& one = *reinterpret_cast<Search*>(context);
            if (IsWindowVisible(window) && one.isIt(window))
                one.found = window;
            return one.found == nullptr;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

template <typename IsIt>
HWND FindChild(HWND parent, IsIt isIt) {
    return FindShown(
        [parent](WNDENUMPROC proc, LPARAM context) { EnumChildWindows(parent, proc, context); },
        isIt);
}

std::wstring ClipboardText() {
    if (!OpenClipboard(nullptr))
        return {};
    std::wstring text;
    {
        const GlobalMemoryLock block(GetClipboardData(CF_UNICODETEXT));
        if (block)
            text = static_cast<const wchar_t*>(block.Bytes());
    }
    CloseClipboard();
    return text;
}

void EmptyTheClipboard() {
    WaitFor("clipboard", [] { return OpenClipboard(nullptr); });
    EmptyClipboard();
    CloseClipboard();
}

void Print(const std::wstring& line) {
    if (!Console::Line(line.c_str()))
        throw std::runtime_error("nothing can be printed");
}

// Of lines with "\r\n" between them.
void PrintLines(const std::wstring& text) {
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find(L"\r\n", start), text.size());
        Print(text.substr(start, end - start));
        start = end + 2;
    }
}

INPUT Stroke(WORD key, WORD scanCode, DWORD flags) {
    INPUT stroke = {};
    stroke.type = INPUT_KEYBOARD;
    stroke.ki.wVk = key;
    stroke.ki.wScan = scanCode;
    stroke.ki.dwFlags = flags;
    return stroke;
}

void Send(std::vector<INPUT> strokes) {
    SendInput(static_cast<UINT>(strokes.size()), strokes.data(), sizeof(INPUT));
}

// A key down and up, as the keyboard brings it.
void Strike(WORD key) {
    Send({Stroke(key, 0, 0), Stroke(key, 0, KEYEVENTF_KEYUP)});
}

// The key of that letter, with shift for a capital; as text, if there is none.
void StrikeCharacter(wchar_t unit) {
    const SHORT found = VkKeyScanW(unit);
    const auto key = static_cast<WORD>(found & 0xFF);
    constexpr SHORT withShift = 0x100;
    if (found >= 0 && found < withShift)
        Strike(key);
    else if (found >= withShift && found < 2 * withShift)
        Send({Stroke(VK_SHIFT, 0, 0), Stroke(key, 0, 0), Stroke(key, 0, KEYEVENTF_KEYUP),
              Stroke(VK_SHIFT, 0, KEYEVENTF_KEYUP)});
    else
        Send({Stroke(0, unit, KEYEVENTF_UNICODE),
              Stroke(0, unit, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP)});
}

void Click(HWND window, POINT place) {
    const LPARAM position = MAKELPARAM(place.x, place.y);
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, position);
    SendMessageW(window, WM_LBUTTONUP, 0, position);
}
} // namespace

SheetActions::SheetActions(DWORD thread) {
    sheet_ = WaitFor("property sheet", [thread] {
        return FindShown(
            [thread](WNDENUMPROC proc, LPARAM context) {
                EnumThreadWindows(thread, proc, context);
            },
            [](HWND window) { return FindWindowExW(window, nullptr, WC_TABCONTROLW, nullptr); });
    });
    // Keys go to the window in front.
    SetForegroundWindow(sheet_);
    WaitFor("sheet in front", [this] { return GetForegroundWindow() == sheet_; });
}

SheetActions::Word SheetActions::Do(Word action, Word end) {
    const std::wstring name = *action++;
    const auto next = [&] {
        if (action == end)
            throw std::runtime_error("an action lacks a word");
        return *action++;
    };
    if (name == L"tabs")
        PrintTabs();
    else if (name == L"page")
        TurnTo(next());
    else if (name == L"rows")
        PrintRows();
    else if (name == L"select")
        SelectRow(std::stoi(next()));
    else if (name == L"type")
        Type(next());
    else if (name == L"pick")
        Pick(next());
    else if (name == L"key")
        StrikeKey(next());
    else if (name == L"press")
        Press(next());
    else if (name == L"apply")
        Apply();
    else if (name == L"unchanged")
        ExpectUnchanged();
    else if (name == L"ok")
        CloseBy(IDOK);
    else if (name == L"cancel")
        CloseBy(IDCANCEL);
    else
        throw std::runtime_error("no such action");
    return action;
}

HWND SheetActions::Tabs() const {
    return FindWindowExW(sheet_, nullptr, WC_TABCONTROLW, nullptr);
}

HWND SheetActions::Page() const {
    return reinterpret_cast<HWND>(SendMessageW(sheet_, PSM_GETCURRENTPAGEHWND, 0, 0));
}

std::wstring SheetActions::TitleOf(int tab) const {
    wchar_t text[128] = L"";
    TCITEMW item = {};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 128;
    SendMessageW(Tabs(), TCM_GETITEMW, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&item));
    return item.pszText;
}

void SheetActions::PrintTabs() {
    const auto count = static_cast<int>(SendMessageW(Tabs(), TCM_GETITEMCOUNT, 0, 0));
    for (int tab = 0; tab < count; ++tab)
        Print(TitleOf(tab));
}

void SheetActions::TurnTo(const std::wstring& title) {
    const auto count = static_cast<int>(SendMessageW(Tabs(), TCM_GETITEMCOUNT, 0, 0));
    for (int tab = 0; tab < count; ++tab) {
        if (TitleOf(tab) != title)
            continue;
        SendMessageW(sheet_, PSM_SETCURSEL, static_cast<WPARAM>(tab), 0);
        WaitFor("shown page", [this] { return IsWindowVisible(Page()); });
        return;
    }
    throw std::runtime_error("no page of that title");
}

HWND SheetActions::EnabledButton(const std::wstring& text) const {
    return WaitFor("enabled button", [&] {
        return FindChild(
            Page(), [&](HWND window) { return TextOf(window) == text && IsWindowEnabled(window); });
    });
}

// The button opens the menu within the press, so the menu's command goes to the
// page without it; not before the button is enabled.
void SheetActions::PrintRows() {
    EnabledButton(L"Options Menu");
    EmptyTheClipboard();
    SendMessageW(Page(), WM_COMMAND, IDC_COPY_ROWS, 0);
    PrintLines(ClipboardText());
}

void SheetActions::SelectRow(int row) {
    const HWND page = Page();
    const HWND list = WaitFor("list of rows", [page] {
        return FindChild(page, [](HWND window) { return ClassOf(window) == L"ListBox"; });
    });
    RECT place = {};
    if (SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&place)) == LB_ERR)
        throw std::runtime_error("no such row");
    Click(list, {place.left + 5, (place.top + place.bottom) / 2});
}

HWND SheetActions::FocusedEditor() const {
    return WaitFor("editor with the focus", [this] {
        GUITHREADINFO info = {};
        info.cbSize = sizeof(info);
        GetGUIThreadInfo(GetWindowThreadProcessId(sheet_, nullptr), &info);
        return ClassOf(info.hwndFocus) == L"Edit" ? info.hwndFocus : nullptr;
    });
}

// What completes it may put more behind it, selected; so the last key has come
// once nothing but that is selected.
void SheetActions::Type(const std::wstring& text) {
    const HWND editor = FocusedEditor();
    SendMessageW(editor, EM_SETSEL, 0, -1);
    for (wchar_t unit : text)
        StrikeCharacter(unit);
    WaitFor("typed text", [&] {
        DWORD start = 0;
        SendMessageW(editor, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
        return start == text.size() && TextOf(editor).compare(0, text.size(), text) == 0;
    });
}

// As the mouse does it: in the list that drops down.
void SheetActions::Pick(const std::wstring& choice) {
    HWND combo = GetParent(FocusedEditor());
    const LRESULT index = SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(choice.c_str()));
    if (index == CB_ERR)
        throw std::runtime_error("no such choice");
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    GetComboBoxInfo(combo, &info);
    SendMessageW(info.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
    RECT place = {};
    SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&place));
    const POINT middle = {place.left + 5, (place.top + place.bottom) / 2};
    SendMessageW(info.hwndList, WM_MOUSEMOVE, 0, MAKELPARAM(middle.x, middle.y));
    Click(info.hwndList, middle);
    WaitFor("picked text", [&] { return TextOf(combo) == choice; });
}

// When it has an effect on the editor, that is waited for by what follows.
void SheetActions::StrikeKey(const std::wstring& name) {
    constexpr struct {
        const wchar_t* name;
        WORD key;
    } keys[] = {{L"return", VK_RETURN}, {L"tab", VK_TAB}, {L"up", VK_UP}, {L"down", VK_DOWN}};
    for (const auto& one : keys) {
        if (name == one.name) {
            const HWND editor = FocusedEditor();
            Strike(one.key);
            WaitFor("end of the edit", [this, editor] { return !IsWindow(editor); });
            return;
        }
    }
    throw std::runtime_error("no such key");
}

void SheetActions::Press(const std::wstring& text) {
    const HWND button = EnabledButton(text);
    SendMessageW(button, WM_KEYDOWN, VK_SPACE, 1);
    SendMessageW(button, WM_KEYUP, VK_SPACE, 1);
}

void SheetActions::Apply() {
    const HWND button = GetDlgItem(sheet_, ApplyButton);
    WaitFor("enabled Apply", [button] { return IsWindowEnabled(button); });
    SendMessageW(button, BM_CLICK, 0, 0);
}

void SheetActions::ExpectUnchanged() {
    if (IsWindowEnabled(GetDlgItem(sheet_, ApplyButton)))
        throw std::runtime_error("Apply is enabled");
}

void SheetActions::CloseBy(int button) {
    SendMessageW(GetDlgItem(sheet_, button), BM_CLICK, 0, 0);
    WaitFor("end of the sheet", [this] { return !IsWindow(sheet_); });
}
