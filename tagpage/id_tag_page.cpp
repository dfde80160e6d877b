#include "tagpage/id_tag_page.h"

#include "tagpage/combined_set.h"
#include "toolkit/device_contexts.h"
#include "toolkit/dpi.h"
#include "toolkit/nfont.h"

#include <prsht.h>

namespace {
constexpr UINT_PTR LookTimer = 1;
constexpr UINT LookMs = 250;

// The words that stand on the page meanwhile.
constexpr wchar_t ReadingText[] = L"<reading files>";
constexpr int ReadingY = 100;     // dialog units
constexpr int ReadingHeight = 25; // of a screen with 96 to the inch

void ReadAllFiles(NEvent& stop, void* page) {
    static_cast<clIDTagPage*>(page)->ReadFiles(stop);
}

void DrawReading(HDC dc, HWND page) {
    NFont font;
    font.Create(dc, nullptr, ScaleToLines(ReadingHeight), 0);
    font.Select(dc);
    RECT client = {};
    GetClientRect(page, &client);
    const int x = (client.right - font.TextWidth(ReadingText)) / 2;
    font.DrawText(x, DialogUnitsY(ReadingY, page), ReadingText);
}
} // namespace

clIDTagPage::clIDTagPage()
    : calls_(this, [](void* page) { delete static_cast<clIDTagPage*>(page); }) {}

// The thread writes into lists, and the controls count their calls, that would
// be destroyed before them.
clIDTagPage::~clIDTagPage() {
    isClosed_ = true;
    ReadThread.Close();
    ButtonGroup.Destroy();
    ValueList.Destroy();
}

void clIDTagPage::CreateControls(bool standAlone) {
    const NCallCount::Call call(&calls_);
    // 1.
    CurrentFile = 0;
    BackColour = standAlone ? COLOR_BTNFACE : COLOR_WINDOW;
    ValueList.Owner = this;
    ValueList.owner = this;
    ValueList.calls = &calls_;
    ValueList.control.calls = &calls_;
    // 2.
    ButtonGroup.Start(PageWindow);
    // 3., 4. and 6. Their tips may wait, and the window go meanwhile.
    MakeButtons();
    // 5. The timer goes with the window.
    if (isClosed_)
        return;
    if (!IsReading() && TagSets.Count() == 0)
        StartReading();
    SetTimer(PageWindow, LookTimer, LookMs, nullptr);
    hasStarted_ = true;
}

bool clIDTagPage::IsReading() const {
    return ReadThread.handle && WaitForSingleObject(ReadThread.handle, 0) != WAIT_OBJECT_0;
}

void clIDTagPage::StartReading() {
    ReadThread.Start(ReadAllFiles, this);
    ReadThread.SetPriority(THREAD_PRIORITY_BELOW_NORMAL);
}

LRESULT clIDTagPage::OnPageMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   int32_t* handled) {
    const NCallCount::Call call(&calls_);
    LRESULT result = ButtonGroup.OnParentMessage(window, message, wParam, lParam, handled);
    if (!*handled)
        result = ValueList.OnParentMessage(window, message, wParam, lParam, handled);
    if (*handled)
        return result;
    switch (message) {
    case WM_DESTROY:
        OnDestroy();
        return 0;
    case WM_SIZE:
        LayoutControls();
        return 0;
    case WM_PAINT:
        OnPaint();
        return 0;
    case WM_NOTIFY:
        return OnNotify(reinterpret_cast<const NMHDR*>(lParam)->code, handled);
    case WM_COMMAND:
        OnCommand(wParam, lParam);
        return 0;
    case WM_TIMER:
        OnTimer();
        return 0;
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
        *handled = 1;
        return reinterpret_cast<LRESULT>(GetSysColorBrush(BackColour));
    default:
        return 0;
    }
}

LRESULT clIDTagPage::OnNotify(UINT code, int32_t* handled) {
    if (code == PSN_APPLY)
        Commit();
    // The page may always be left. What was edited stays in the rows.
    if (code == PSN_KILLACTIVE)
        *handled = 1;
    return 0;
}

void clIDTagPage::OnCommand(WPARAM wParam, LPARAM lParam) {
    // The list box has any number for an id, also one that ends like this.
    const bool isOfList = lParam && reinterpret_cast<HWND>(lParam) == ValueList.listBox;
    if (LOWORD(wParam) == IDOK && !isOfList)
        Commit();
}

void clIDTagPage::OnPaint() {
    const NPaintDC painted(PageWindow);
    if (IsReading())
        DrawReading(painted.dc, PageWindow);
}

// Any timer will do.
void clIDTagPage::OnTimer() {
    // 1. Before the start there is no thread either.
    if (ControlsReady || isClosed_ || !hasStarted_)
        return;
    // 2.
    if (IsReading())
        return;
    // 3.
    InvalidateRect(PageWindow, nullptr, TRUE);
    ControlsReady = 1;
    // 4.
    CreateList();
    // 5.
    cmdAdd.Enable();
    cmdClear.Enable();
    // 6.
    RefreshView();
    // 7. Without a window this does nothing: wanted.
    cmdOptMenu.Enable();
    // 8.
    LayoutControls();
}

void clIDTagPage::OnDestroy() {
    isClosed_ = true;
    ReadThread.Stop(true);
    ButtonGroup.Destroy();
    ValueList.Destroy();
    TagSets.Clear();
    Files.Clear();
}

clTagSet& clIDTagPage::SetNamed(const wchar_t* name) {
    for (int index = 0; index < TagSets.Count(); ++index) {
        if (TagSets[index]->Name == name)
            return *TagSets.Current;
    }
    clTagSet* added = TagSets.Add();
    added->Name = name;
    return *added;
}

clTagRecord& clIDTagPage::CurrentTags() {
    const NString* path = SingleView() ? Files[CurrentFile] : nullptr;
    return SetNamed(path ? path->Text : CombinedName).Tags;
}

clTagSet& clIDTagPage::CurrentSet() {
    const clTagRecord* tags = &CurrentTags();
    int index = 0;
    while (&TagSets[index]->Tags != tags)
        ++index;
    return *TagSets[index];
}

clTagSet& clIDTagPage::CombinedSet() {
    return SetNamed(CombinedName);
}
