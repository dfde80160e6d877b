// A dialog with a list and a button for a real pointer and keyboard, driven by
// value_list_pointer.sh. Tells on standard output what became of the list, a
// line each.
#include "tests/toolkit/test_resources.h"
#include "toolkit/nvaluelist.h"

#include <cstdio>
#include <map>
#include <string>

namespace {
// Of pixels in the dialog, which stands at (100, 100); the script knows them.
constexpr int RowHeight = 21;
constexpr int NameX = 30;
constexpr int ValueX = 120;
constexpr int MarkX = 6;

// Line ends become visible, and all else is plain.
std::string Plainly(const NString& text) {
    std::string plain;
    for (int position = 1; position <= text.CharCount(); ++position) {
        const wchar_t unit = text.At(position);
        plain += unit == L'\r'   ? "\\r"
                 : unit == L'\n' ? "\\n"
                                 : std::string(1, static_cast<char>(unit));
    }
    return plain;
}

void Tell(const std::string& line) {
    printf("%s\n", line.c_str());
    fflush(stdout);
}

class StageList : public NValueList {
public:
    void OnRowRightClick(int x, int y) override {
        Tell("right " + std::to_string(GetSelection()) + " at " + std::to_string(x) + "," +
             std::to_string(y));
    }
    void OnRowEdited(int row) override { Tell("named " + std::to_string(row)); }
};

struct Stage {
    void Open(HWND dialog);
    void Add(int32_t kind, const wchar_t* name, const wchar_t* value, const wchar_t* button = L"",
             int32_t editLines = 0, bool readOnly = false);
    void TellChanges();
    void TellIfNew(const std::string& subject, const std::string& state);
    std::string DropPlace() const;

    HWND window = nullptr;
    HWND beside = nullptr;
    StageList list;
    std::map<std::string, std::string> told;
};

Stage stage;

void Stage::Open(HWND dialog) {
    window = dialog;
    beside = CreateWindowExW(0, L"BUTTON", L"Beside", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 320, 10,
                             60, 20, dialog, nullptr, GetModuleHandleW(nullptr), nullptr);
    list.Create(10, 10, 300, 250, dialog, NameX, ValueX, RowHeight, 13, 13, true);
    list.LoadMarks(IDI_MARKS, 16);
    Add(Plain, L"Top", L"row");
    Add(Edit, L"Field", L"old");
    Add(ComboEdit, L"Genre", L"");
    Add(DropList, L"Choice", L"Pop");
    Add(Check, L"Check", L"");
    Add(Radio, L"First", L"1");
    Add(Radio, L"Second", L"-1");
    Add(Plain, L"Button", L"", L"View");
    Add(Edit, L"Lines", L"ab", L"", 2);
    Add(Edit, L"Read only", L"grey", L"", 0, true);
    for (int row = 0; row < 30; ++row)
        Add(Plain, L"More", L"");
    TellChanges();
}

void Stage::Add(int32_t kind, const wchar_t* name, const wchar_t* value, const wchar_t* button,
                int32_t editLines, bool readOnly) {
    NValueRowInit init;
    init.kind = kind;
    init.name = name;
    init.value = value;
    init.markX = MarkX;
    init.buttonText = button;
    init.editLines = editLines;
    init.readOnly = readOnly;
    for (const wchar_t* choice : {L"Pop", L"Rock", L"Folk"})
        init.choices.Add(choice);
    init.onChange = [](NValueList&) {}; // so that a change is stored at once
    init.onButton = [](NValueList& sender) {
        Tell("button " + std::to_string(sender.GetSelection()));
    };
    list.AddRow(init);
}

// The second choice of the list that is open, on the screen.
std::string Stage::DropPlace() const {
    HWND combo = list.control.editor;
    if (!combo || !SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0))
        return "closed";
    RECT open = {};
    SendMessageW(combo, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&open));
    RECT closed = {};
    GetWindowRect(combo, &closed);
    const auto height = static_cast<int>(SendMessageW(combo, CB_GETITEMHEIGHT, 0, 0));
    return std::to_string(closed.left + 20) + " " + std::to_string(closed.bottom + height * 3 / 2);
}

void Stage::TellIfNew(const std::string& subject, const std::string& state) {
    std::string& last = told[subject];
    if (last != state)
        Tell(subject + " " + state);
    last = state;
}

void Stage::TellChanges() {
    for (int row = 0; row < list.rows.Count(); ++row)
        TellIfNew("value " + std::to_string(row), Plainly(list.RowAt(row)->value));
    TellIfNew("selected", std::to_string(list.GetSelection()));
    TellIfNew("edit", std::to_string(list.control.editRow));
    TellIfNew("choices", DropPlace());
    TellIfNew("top", std::to_string(SendMessageW(list.listBox, LB_GETTOPINDEX, 0, 0)));
    TellIfNew("beside", GetFocus() == beside ? "focus" : "none");
}

INT_PTR OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    int32_t handled = 0;
    const LRESULT result = stage.list.OnParentMessage(window, message, wParam, lParam, &handled);
    if (handled) {
        SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
        return TRUE;
    }
    // The result itself is the answer; 0 would select the first row.
    if (message == WM_VKEYTOITEM || message == WM_CHARTOITEM)
        return -1;
    if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL)
        DestroyWindow(window);
    if (message == WM_COMMAND && reinterpret_cast<HWND>(lParam) == stage.beside &&
        HIWORD(wParam) == BN_CLICKED)
        Tell("beside clicked");
    if (message == WM_DESTROY) {
        stage.list.Destroy();
        PostQuitMessage(0);
    }
    return FALSE;
}

INT_PTR CALLBACK StageProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    try {
        return OnMessage(window, message, wParam, lParam);
    } catch (...) {
        return FALSE;
    }
}

struct DialogTemplate {
    DLGTEMPLATE facts;
    WORD menu;
    WORD windowClass;
    WORD title;
};
} // namespace

int main() {
    const DialogTemplate layout = {{WS_POPUP, 0, 0, 0, 0, 10, 10}, 0, 0, 0};
    HWND window =
        CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &layout.facts, nullptr, StageProc, 0);
    SetWindowPos(window, HWND_TOP, 100, 100, 400, 300, SWP_SHOWWINDOW);
    stage.Open(window);
    SetForegroundWindow(window);
    Tell("stage open");
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!IsDialogMessageW(window, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (stage.list.listBox)
            stage.TellChanges();
    }
    Tell("stage closed");
    return 0;
}
