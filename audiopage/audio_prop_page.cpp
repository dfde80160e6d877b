#include "audiopage/audio_prop_page.h"

#include "audiopage/cover_view.h"
#include "audiopage/page_text.h"
#include "audiopage/row_painting.h"
#include "audiopage/rows_clipboard.h"
#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "toolkit/device_contexts.h"
#include "toolkit/dpi.h"
#include "toolkit/wait_cursor.h"

#include <windowsx.h>

namespace {
constexpr UINT_PTR TickTimer = 1;
constexpr UINT TickMs = 250;

// On the reader's thread.
void ReadAllFiles(NEvent& stop, void* argument) {
    auto& page = *static_cast<clAudioPropPage*>(argument);
    BuildPropRows(page, &stop, page.PageRowsAll, nullptr);
}
} // namespace

// The use of the lists to the end of the scope. If the page was closed by then,
// they are emptied.
class clAudioPropPage::ListsTurn {
public:
    explicit ListsTurn(clAudioPropPage& page) : page_(page) { page_.listsInUse_ = true; }
    ListsTurn(const ListsTurn&) = delete;
    ListsTurn& operator=(const ListsTurn&) = delete;
    ~ListsTurn() {
        if (page_.isClosed_)
            page_.EmptyLists();
        page_.listsInUse_ = false;
    }

private:
    clAudioPropPage& page_;
};

clAudioPropPage::clAudioPropPage()
    : calls_(this, [](void* page) { delete static_cast<clAudioPropPage*>(page); }) {}

// The reader writes into lists that would be destroyed before it.
clAudioPropPage::~clAudioPropPage() {
    Reader.Close();
}

void clAudioPropPage::OnInit() {
    const NCallCount::Call call(&calls_);
    isClosed_ = false;
    // 1.
    FileIndex = 0;
    ArtIndex = 0;
    Buttons.Start(Hwnd);
    // 2. Their tips may wait, and the window go meanwhile.
    MakeButtons();
    if (isClosed_) {
        Buttons.Destroy();
        return;
    }
    // 3.
    StarBitmap.LoadResource(IDB_STARS, NModuleInstance());
    // 4.
    if (!IsReading() && PageRowsAll.Count() == 0)
        StartReading();
    // 5. The timer goes with the window.
    SetTimer(Hwnd, TickTimer, TickMs, nullptr);
}

bool clAudioPropPage::IsReading() const {
    return Reader.handle && WaitForSingleObject(Reader.handle, 0) != WAIT_OBJECT_0;
}

void clAudioPropPage::StartReading() {
    Reader.Start(ReadAllFiles, this);
    Reader.SetPriority(THREAD_PRIORITY_BELOW_NORMAL);
}

LRESULT clAudioPropPage::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   int32_t* handled) {
    const NCallCount::Call call(&calls_);
    const LRESULT result = Buttons.OnParentMessage(window, message, wParam, lParam, handled);
    if (*handled)
        return result;
    switch (message) {
    case WM_DESTROY:
        OnDestroy();
        break;
    case WM_PAINT:
        OnPaint();
        *handled = 1;
        break;
    case WM_COMMAND:
        // A closed page has no rows, and they would take the clipboard's place.
        if (LOWORD(wParam) == IDC_COPY_ROWS && !isClosed_) {
            CopyRowsToClipboard(ChosenRows(), ClipTip);
            *handled = 1;
        }
        break;
    case WM_TIMER:
        OnTick();
        break;
    case WM_LBUTTONUP:
        ClickCover(AlbumArtList, ArtIndex, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}, Hwnd);
        break;
    default:
        break;
    }
    return 0;
}

void clAudioPropPage::OnTick() {
    const NCallCount::Call call(&calls_);
    // 1.
    if (ReadingDone)
        return;
    // 2. Without a thread there is nothing to wait for.
    if (IsReading())
        return;
    // 3.
    Redraw();
    ReadingDone = 1;
    RefreshView();
    cmdOptMenu.Enable();
}

void clAudioPropPage::RefreshView() {
    const NCallCount::Call call(&calls_);
    if (isClosed_)
        return;
    refreshAgain_ = true;
    if (listsInUse_)
        return;
    const ListsTurn turn(*this);
    while (refreshAgain_ && !isClosed_) {
        refreshAgain_ = false;
        RefreshOnce();
    }
}

void clAudioPropPage::RefreshOnce() {
    // 1.
    if (ShowsOneFile())
        ReadOneFile();
    // 2.
    SetButtonStates();
    // 3.
    SetRowTips();
    // 4.
    Redraw();
}

// One file of a selection is read here a second time: covers come no other way.
void clAudioPropPage::ReadOneFile() {
    const WaitCursor waiting;
    NStringList one;
    if (const NString* path = (*this)[FileIndex])
        one.Add(*path);
    BuildPropRows(one, nullptr, PageRowsOne, &AlbumArtList);
    ArtIndex = 0;
}

// For one file these are the tips of `PageRowsAll`, as the clipboard takes that
// list, where the paint takes `PageRowsOne`. That is wanted.
void clAudioPropPage::SetRowTips() {
    RowTips.Clear();
    NWindowDC window(Hwnd);
    NFont font;
    SelectPageFont(font, window.dc);
    const int textHeight = font.TextHeight(L"Ay");
    NKeyedList<clPropRow>& rows = ChosenRows();
    for (int index = 0; index < rows.Count() && !refreshAgain_ && !isClosed_; ++index) {
        const clPropRow& row = *rows[index];
        if (IsValueCut(font, row.Value, DialogUnitsX(row.ValueWidth, Hwnd)))
            AddRowTip(row, textHeight);
    }
}

void clAudioPropPage::AddRowTip(const clPropRow& row, int textHeight) {
    NToolTipText tip;
    tip.toolRect.left = DialogUnitsX(row.ValueX, Hwnd);
    tip.toolRect.top = DialogUnitsY(row.Y, Hwnd);
    tip.toolRect.right = tip.toolRect.left + DialogUnitsX(row.ValueWidth, Hwnd);
    tip.toolRect.bottom = tip.toolRect.top + textHeight;
    tip.rectOwner = Hwnd;
    tip.text = row.Value;
    RowTips.Add()->SetText(tip);
}

void clAudioPropPage::Redraw() {
    InvalidateRect(Hwnd, nullptr, TRUE);
}

void clAudioPropPage::OnDestroy() {
    isClosed_ = true;
    Reader.Stop(true);
    // Who uses the lists at this moment empties them in the end.
    if (!listsInUse_)
        const ListsTurn emptied(*this);
    Buttons.Destroy();
    Clear();
}

void clAudioPropPage::EmptyLists() {
    PageRowsAll.Clear();
    PageRowsOne.Clear();
    AlbumArtList.Clear();
    RowTips.Clear();
}
