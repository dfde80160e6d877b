#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "tagpage/id_tag_page.h"
#include "toolkit/dpi.h"
#include "toolkit/nbrush.h"

#include <prsht.h>

namespace {
// The page in dialog units.
constexpr int PageWidth = 234;
constexpr int PageHeight = 250;
constexpr int ButtonsY = 238; // until they are laid out
constexpr int ListX = 7;
constexpr int ListY = 6;
constexpr int ListWidth = 220;
constexpr int ListHeight = 230;
// Its columns and its rows, 96 to the inch.
constexpr uint32_t NameX = 28;
constexpr uint32_t NarrowValueX = 80;
constexpr uint32_t WideValueX = 150;
constexpr int WidePage = 501; // pixels
constexpr uint32_t RowHeight = 21;
constexpr int TextHeight = 13;

// Pixels above the page's lower edge.
constexpr int ButtonsHeight = 20;
constexpr int ListGap = 23;

constexpr int32_t StripFlags = ButtonDefault | ButtonHover | ButtonDisabled | ButtonMasked;
static_assert(StripFlags == 139);

constexpr UINT MoveFlags = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;

struct PageButtonForm {
    clIDTagPage::PageButton& button;
    const wchar_t* text;
    const wchar_t* toolTipText;
    int x; // dialog units
    int bitmap;
};

void MakeBackground(NCanvas& background, const clIDTagPage& page) {
    background.Resize(DialogUnitsX(PageWidth, page.PageWindow),
                      DialogUnitsY(PageHeight, page.PageWindow));
    NBrush paper;
    paper.Stock(page.BackColour);
    background.Fill(paper.handle);
}

void AddButton(clIDTagPage& page, const PageButtonForm& form, const NCanvas& background) {
    NButtonSpec spec;
    spec.x = DialogUnitsX(form.x, page.PageWindow);
    spec.y = DialogUnitsY(ButtonsY, page.PageWindow);
    spec.text = form.text;
    spec.toolTipText = form.toolTipText;
    spec.flags = StripFlags;
    spec.background = &background;
    form.button.Owner = &page;
    page.ButtonGroup.Add(form.button, spec, form.bitmap, 0, NModuleInstance());
    form.button.Disable();
}

void MoveToY(HWND window, HWND page, int y) {
    RECT place = {};
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&place), 2);
    SetWindowPos(window, nullptr, place.left, y, place.right - place.left, place.bottom - place.top,
                 MoveFlags);
}
} // namespace

void clIDTagPage::MakeButtons() {
    const PageButtonForm forms[] = {
        {cmdSkipFirst, L"First", nullptr, 7, IDB_SKIP_FIRST},
        {cmdSkipPrev, L"Previous", nullptr, 19, IDB_SKIP_PREVIOUS},
        {cmdViewSingle, L"Edit Single", L"Edit Single / Multiple ID-Tags", 31, IDB_EDIT_SINGLE},
        {cmdSkipNext, L"Next", nullptr, 72, IDB_SKIP_NEXT},
        {cmdSkipLast, L"Last", nullptr, 84, IDB_SKIP_LAST},
        {cmdAdd, L"Add", L"Add New Tag Element", 98, IDB_ADD_ELEMENT},
        {cmdRemove, L"Remove", L"Remove Selected Tag Element", 136, IDB_REMOVE_ELEMENT},
        {cmdClear, L"Clear", L"Clear all ID-Tags", 175, IDB_CLEAR_TAGS},
    };
    // 3.
    NCanvas background;
    MakeBackground(background, *this);
    // 4.
    for (const PageButtonForm& form : forms) {
        // A key's click is a call on the page, too.
        form.button.calls = &calls_;
        AddButton(*this, form, background);
        if (isClosed_) {
            form.button.Destroy();
            ButtonGroup.Destroy();
            return;
        }
    }
}

std::array<NButton*, 9> clIDTagPage::Buttons() {
    return {&cmdSkipFirst, &cmdSkipPrev, &cmdViewSingle, &cmdSkipNext, &cmdSkipLast,
            &cmdAdd,       &cmdRemove,   &cmdClear,      &cmdOptMenu};
}

void clIDTagPage::CreateList() {
    RECT client = {};
    GetClientRect(PageWindow, &client);
    const uint32_t valueX = client.right < WidePage ? NarrowValueX : WideValueX;
    ValueList.Create(ListX, ListY, ListWidth, ListHeight, PageWindow, NameX, valueX, RowHeight,
                     TextHeight, TextHeight, false);
}

void clIDTagPage::LayoutControls() {
    RECT client = {};
    GetClientRect(PageWindow, &client);
    // 1.
    const int x = DialogUnitsX(ListX, PageWindow);
    const int y = DialogUnitsY(ListY, PageWindow);
    if (ValueList.listBox)
        SetWindowPos(ValueList.listBox, nullptr, x, y,
                     client.right - DialogUnitsX(2 * ListX, PageWindow),
                     client.bottom - y - ListGap, MoveFlags);
    // 2.
    for (const NButton* button : Buttons()) {
        if (button->window)
            MoveToY(button->window, PageWindow, client.bottom - ButtonsHeight);
    }
}

void clIDTagPage::NotifyChanged() {
    SendMessageW(GetParent(PageWindow), PSM_CHANGED, reinterpret_cast<WPARAM>(PageWindow), 0);
}

// A click may have been on its way before its button was disabled.
void clIDTagPage::ShowFile(int32_t index) {
    if (!IsInUse())
        return;
    StoreEdits();
    if (index >= 0 && index < Files.Count)
        CurrentFile = index;
    RefreshView();
}

void clIDTagPage::ToggleView() {
    if (!IsInUse())
        return;
    StoreEdits();
    cmdViewSingle.ToggleLatch();
    RefreshView();
}

void clIDTagPage::_cmdSkipFirst::OnClick(bool) {
    Owner->ShowFile(0);
}

void clIDTagPage::_cmdSkipPrev::OnClick(bool) {
    Owner->ShowFile(Owner->CurrentFile - 1);
}

void clIDTagPage::_cmdViewSingle::OnClick(bool) {
    Owner->ToggleView();
}

void clIDTagPage::_cmdSkipNext::OnClick(bool) {
    Owner->ShowFile(Owner->CurrentFile + 1);
}

void clIDTagPage::_cmdSkipLast::OnClick(bool) {
    Owner->ShowFile(Owner->Files.Count - 1);
}

void clIDTagPage::_cmdAdd::OnClick(bool) {
    Owner->AddElementRow();
}

void clIDTagPage::_cmdRemove::OnClick(bool) {
    Owner->RemoveSelected();
}

void clIDTagPage::_cmdClear::OnClick(bool) {
    Owner->ClearTags();
}
