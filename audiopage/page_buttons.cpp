#include "audiopage/audio_prop_page.h"
#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "toolkit/dpi.h"
#include "toolkit/nbrush.h"

namespace {
// The page in dialog units.
constexpr int PageWidth = 234;
constexpr int PageHeight = 250;
constexpr int ButtonsY = 238;

constexpr int32_t StripFlags = ButtonDefault | ButtonHover | ButtonDisabled | ButtonMasked;

struct PageButtonForm {
    clAudioPropPage::PageButton& button;
    int x; // dialog units
    const wchar_t* text;
    const wchar_t* toolTipText;
    int bitmap;
    int menu;
};

void MakeBackground(NCanvas& background, HWND page) {
    background.Resize(DialogUnitsX(PageWidth, page), DialogUnitsY(PageHeight, page));
    NBrush paper;
    paper.Stock(COLOR_WINDOW);
    background.Fill(paper.handle);
}

void AddButton(clAudioPropPage& page, const PageButtonForm& form, const NCanvas& background) {
    NButtonSpec spec;
    spec.x = DialogUnitsX(form.x, page.Hwnd);
    spec.y = DialogUnitsY(ButtonsY, page.Hwnd);
    spec.text = form.text;
    spec.toolTipText = form.toolTipText;
    spec.flags = StripFlags;
    spec.background = &background;
    spec.menuId = form.menu;
    form.button.Page = &page;
    page.Buttons.Add(form.button, spec, form.bitmap, 0, NModuleInstance());
    form.button.Disable();
}

void EnableIf(NButton& button, bool condition) {
    if (condition)
        button.Enable();
    else
        button.Disable();
}
} // namespace

void clAudioPropPage::MakeButtons() {
    const PageButtonForm forms[] = {
        {cmdSkipFirst, 7, L"First", nullptr, IDB_SKIP_FIRST, 0},
        {cmdSkipPrev, 19, L"Previous", nullptr, IDB_SKIP_PREVIOUS, 0},
        {cmdViewSingle, 31, L"View Single", L"View Single / Multiple files", IDB_VIEW_SINGLE, 0},
        {cmdSkipNext, 72, L"Next", nullptr, IDB_SKIP_NEXT, 0},
        {cmdSkipLast, 84, L"Last", nullptr, IDB_SKIP_LAST, 0},
        {cmdOptMenu, 218, L"Options Menu", L"Options Menu", IDB_OPTIONS_MENU,
         IDM_AUDIO_PAGE_OPTIONS},
    };
    NCanvas background;
    MakeBackground(background, Hwnd);
    for (const PageButtonForm& form : forms) {
        // A key's click or menu is a call on the page, too.
        form.button.calls = &calls_;
        AddButton(*this, form, background);
        if (isClosed_)
            break;
    }
}

void clAudioPropPage::SetButtonStates() {
    const bool many = Count >= 2;
    const bool stepping = many && IsViewSingle();
    EnableIf(cmdViewSingle, many);
    EnableIf(cmdSkipFirst, stepping && FileIndex != 0);
    EnableIf(cmdSkipPrev, stepping && FileIndex != 0);
    EnableIf(cmdSkipNext, stepping && FileIndex != Count - 1);
    EnableIf(cmdSkipLast, stepping && FileIndex != Count - 1);
}

// A click may have been on its way before its button was disabled.
void clAudioPropPage::ShowFile(int32_t index) {
    if (index < 0 || index >= Count)
        return;
    FileIndex = index;
    RefreshView();
}

void clAudioPropPage::_cmdSkipFirst::OnClick(bool) {
    Page->ShowFile(0);
}

void clAudioPropPage::_cmdSkipPrev::OnClick(bool) {
    Page->ShowFile(Page->FileIndex - 1);
}

// The file stays the same one when the view of all files is left again.
void clAudioPropPage::_cmdViewSingle::OnClick(bool) {
    ToggleLatch();
    Page->RefreshView();
}

void clAudioPropPage::_cmdSkipNext::OnClick(bool) {
    Page->ShowFile(Page->FileIndex + 1);
}

void clAudioPropPage::_cmdSkipLast::OnClick(bool) {
    Page->ShowFile(Page->Count - 1);
}
