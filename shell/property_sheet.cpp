#include "shell/property_sheet.h"

#include "audiopage/audio_prop_page.h"
#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "shell/page_counters.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/page_procedures.h"

#include <cstddef>
#include <memory>

namespace {
// The structure without what later versions of the platform added to it.
constexpr DWORD SheetPageSize = offsetof(PROPSHEETPAGEW, hActCtx);
static_assert(SheetPageSize == 88);

constexpr DWORD SheetPageFlags = PSP_USEICONID | PSP_USETITLE | PSP_USEREFPARENT | PSP_USECALLBACK;
static_assert(SheetPageFlags == 204);

constexpr UINT CallbackDone = 1;

clAudioPropPage* PageOf(HWND hwnd) {
    return reinterpret_cast<clAudioPropPage*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
}

void InitPage(HWND hwnd, const PROPSHEETPAGEW& sheetPage) {
    auto* page = reinterpret_cast<clAudioPropPage*>(sheetPage.lParam);
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, sheetPage.lParam);
    page->Hwnd = hwnd;
    page->OnInit();
}

INT_PTR HandleMessage(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
    // 1. and 2.
    if (clAudioPropPage* page = PageOf(hwnd)) {
        int32_t handled = 0;
        const LRESULT result = page->OnMessage(hwnd, message, wParam, lParam, &handled);
        if (handled) {
            SetWindowLongPtrW(hwnd, DWLP_MSGRESULT, result);
            return handled;
        }
    }
    // 3. and 4.
    switch (message) {
    case WM_INITDIALOG:
        InitPage(hwnd, *reinterpret_cast<const PROPSHEETPAGEW*>(lParam));
        return 0;
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
    default:
        return 0;
    }
}

PROPSHEETPAGEW DescribePage(int dialog, int icon) {
    PROPSHEETPAGEW sheetPage = {};
    sheetPage.dwSize = SheetPageSize;
    sheetPage.dwFlags = SheetPageFlags;
    sheetPage.hInstance = NModuleInstance();
    sheetPage.pszTemplate = MAKEINTRESOURCEW(dialog);
    sheetPage.pszIcon = MAKEINTRESOURCEW(icon);
    return sheetPage;
}

PROPSHEETPAGEW DescribeAudioPage(clAudioPropPage* page) {
    PROPSHEETPAGEW sheetPage = DescribePage(IDD_AUDIO_PAGE, IDI_AUDIO_PAGE);
    sheetPage.pszTitle = L"Audio Properties";
    sheetPage.pfnDlgProc = AudioPageProc;
    sheetPage.lParam = reinterpret_cast<LPARAM>(page);
    sheetPage.pfnCallback = AudioPageCallback;
    sheetPage.pcRefParent = &audioPageReferences;
    return sheetPage;
}

PROPSHEETPAGEW DescribeTagPage(clIDTagPage* page) {
    PROPSHEETPAGEW sheetPage = DescribePage(IDD_TAG_PAGE, IDI_TAG_PAGE);
    sheetPage.pszTitle = L"ID-Tag";
    sheetPage.pfnDlgProc = PageDlgProc;
    sheetPage.lParam = reinterpret_cast<LPARAM>(page);
    sheetPage.pfnCallback = PageRelease;
    sheetPage.pcRefParent = &idTagPageReferences;
    return sheetPage;
}

void TakeSorted(NStringList& files, const NStringList& selection) {
    files.CopyFrom(selection);
    files.SortByText(true);
}

void OfferPage(const PROPSHEETPAGEW& sheetPage, LPFNADDPROPSHEETPAGE addPage, LPARAM parameter) {
    HPROPSHEETPAGE handle = CreatePropertySheetPageW(&sheetPage);
    if (handle && !addPage(handle, parameter))
        DestroyPropertySheetPage(handle);
}
} // namespace

void AddPropertyPages(const NStringList& selection, LPFNADDPROPSHEETPAGE addPage,
                      LPARAM parameter) {
    // 1.
    if (selection.Count == 0 || !addPage)
        return;
    // 2.
    auto audioPage = std::make_unique<clAudioPropPage>();
    TakeSorted(*audioPage, selection);
    // 3.
    auto tagPage = std::make_unique<clIDTagPage>();
    TakeSorted(tagPage->Files, selection);
    // 4. The sheet owns the pages from here on. Without a handle no callback
    // comes to free the object: wanted.
    OfferPage(DescribeAudioPage(audioPage.release()), addPage, parameter);
    // 5.
    OfferPage(DescribeTagPage(tagPage.release()), addPage, parameter);
}

INT_PTR CALLBACK AudioPageProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        return HandleMessage(hwnd, message, wParam, lParam);
    } catch (...) {
        // Nothing but a lack of memory throws here.
        return 0;
    }
}

UINT CALLBACK AudioPageCallback(HWND hwnd, UINT message, PROPSHEETPAGEW* page) noexcept {
    if (message != PSPCB_RELEASE)
        return CallbackDone;
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    if (auto* released = reinterpret_cast<clAudioPropPage*>(page->lParam))
        released->Release();
    return CallbackDone;
}
