#include "tests/audiopage/page_window.h"

#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "toolkit/device_contexts.h"
#include "toolkit/dpi.h"

namespace {
constexpr int SheetWidth = 420;
constexpr int SheetHeight = 480;
constexpr DWORD LongestMs = 60000;
constexpr UINT_PTR TickTimer = 1;
} // namespace

PageWindow::PageWindow()
    : sheet_(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"sheet", WS_POPUP | WS_VISIBLE, 0, 0,
                             SheetWidth, SheetHeight, nullptr, nullptr, nullptr, nullptr)) {}

PageWindow::~PageWindow() {
    Close();
    DestroyWindow(sheet_);
}

void PageWindow::Open() {
    dialog_ = CreateDialogParamW(NModuleInstance(), MAKEINTRESOURCEW(IDD_AUDIO_PAGE), sheet_,
                                 DialogProc, reinterpret_cast<LPARAM>(this));
    ASSERT_NE(dialog_, nullptr);
    ShowWindow(dialog_, SW_SHOW);
}

void PageWindow::Close() {
    if (dialog_)
        DestroyWindow(dialog_);
    dialog_ = nullptr;
}

INT_PTR CALLBACK PageWindow::DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* window = reinterpret_cast<PageWindow*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
    int32_t handled = 0;
    const LRESULT result =
        window ? window->Page().OnMessage(dialog, message, wParam, lParam, &handled) : 0;
    if (handled) {
        SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
        return TRUE;
    }
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, lParam);
        reinterpret_cast<PageWindow*>(lParam)->OnInitDialog(dialog);
    }
    if (window && message == WM_ERASEBKGND)
        ++window->timesErased_;
    return message == WM_CTLCOLORDLG ? reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW))
                                     : FALSE;
}

void PageWindow::OnInitDialog(HWND dialog) {
    page_->Hwnd = dialog;
    page_->OnInit();
}

void PageWindow::Tick() {
    Send(WM_TIMER, TickTimer);
}

void PageWindow::FinishReading() {
    ASSERT_NE(page_->Reader.handle, nullptr);
    ASSERT_EQ(WaitForSingleObject(page_->Reader.handle, LongestMs), WAIT_OBJECT_0);
    Tick();
}

int PageWindow::X(int units) const {
    return DialogUnitsX(units, dialog_);
}

int PageWindow::Y(int units) const {
    return DialogUnitsY(units, dialog_);
}

RECT PageWindow::PlaceOf(HWND child) const {
    RECT place = {};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

LRESULT PageWindow::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(dialog_, message, wParam, lParam);
}

bool PageWindow::WaitsForPaint() const {
    RECT client = {};
    RECT update = {};
    GetClientRect(dialog_, &client);
    return GetUpdateRect(dialog_, &update, FALSE) && EqualRect(&update, &client);
}

Picture PageWindow::Seen() {
    return PictureOf(dialog_);
}
