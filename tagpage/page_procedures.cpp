#include "tagpage/page_procedures.h"

#include "tagpage/id_tag_page.h"

namespace {
constexpr UINT CallbackDone = 1;

clIDTagPage* PageOf(HWND window) {
    return reinterpret_cast<clIDTagPage*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void InitPage(HWND window, const PROPSHEETPAGEW& description) {
    auto* page = reinterpret_cast<clIDTagPage*>(description.lParam);
    SetWindowLongPtrW(window, GWLP_USERDATA, description.lParam);
    page->PageWindow = window;
    page->CreateControls(description.pszTitle == nullptr);
}

bool AsksForBrush(UINT message) {
    return message == WM_CTLCOLORSTATIC || message == WM_CTLCOLORDLG;
}

INT_PTR HandleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // 1.
    if (clIDTagPage* page = PageOf(window)) {
        int32_t handled = 0;
        const LRESULT result = page->OnPageMessage(window, message, wParam, lParam, &handled);
        if (handled && AsksForBrush(message))
            return result;
        if (handled) {
            SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
            return handled;
        }
    }
    // 2. and 3.
    if (message == WM_INITDIALOG)
        InitPage(window, *reinterpret_cast<const PROPSHEETPAGEW*>(lParam));
    return 0;
}
} // namespace

INT_PTR CALLBACK PageDlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        return HandleMessage(window, message, wParam, lParam);
    } catch (...) {
        // Nothing but a lack of memory throws here.
        return 0;
    }
}

UINT CALLBACK PageRelease(HWND window, UINT code, PROPSHEETPAGEW* description) noexcept {
    if (code != PSPCB_RELEASE)
        return CallbackDone;
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    if (auto* released = reinterpret_cast<clIDTagPage*>(description->lParam))
        released->Release();
    return CallbackDone;
}
