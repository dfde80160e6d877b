#include "tests/tagpage/tag_page_window.h"

#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "tagpage/page_procedures.h"
#include "toolkit/dpi.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace {
constexpr int SheetWidth = 420;
constexpr int SheetHeight = 480;
constexpr DWORD LongestMs = 60000;
constexpr UINT_PTR TickTimer = 1;

PROPSHEETPAGEW Description(clIDTagPage* page, const wchar_t* title) {
    PROPSHEETPAGEW description = {};
    description.pszTitle = title;
    description.lParam = reinterpret_cast<LPARAM>(page);
    return description;
}
} // namespace

TagPageWindow::TagPageWindow() {
    sheet_.Bind(CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"sheet", WS_POPUP | WS_VISIBLE, 0, 0,
                                SheetWidth, SheetHeight, nullptr, nullptr, nullptr, nullptr));
}

TagPageWindow::~TagPageWindow() {
    Close();
    const HWND sheet = Sheet();
    sheet_.Unbind();
    DestroyWindow(sheet);
}

LRESULT TagPageWindow::SheetStandIn::OnSubclassMessage(HWND, UINT message, WPARAM wParam, LPARAM,
                                                       int32_t*) {
    if (message != PSM_CHANGED)
        return 0;
    changedPages.push_back(reinterpret_cast<HWND>(wParam));
    if (auto act = std::exchange(window_.atChange, nullptr))
        act();
    return 0;
}

void TagPageWindow::Open(bool standAlone) {
    PROPSHEETPAGEW description = Description(page_.get(), standAlone ? nullptr : L"ID-Tag");
    dialog_ = CreateDialogParamW(NModuleInstance(), MAKEINTRESOURCEW(IDD_TAG_PAGE), Sheet(),
                                 PageDlgProc, reinterpret_cast<LPARAM>(&description));
    ASSERT_NE(dialog_, nullptr);
    ShowWindow(dialog_, SW_SHOW);
}

void TagPageWindow::Close() {
    if (dialog_)
        DestroyWindow(dialog_);
    dialog_ = nullptr;
}

void TagPageWindow::Release() {
    Close();
    PROPSHEETPAGEW description = Description(page_.release(), nullptr);
    PageRelease(nullptr, PSPCB_RELEASE, &description);
}

void TagPageWindow::Tick() {
    Send(WM_TIMER, TickTimer);
}

void TagPageWindow::WaitForReading() {
    ASSERT_NE(page_->ReadThread.handle, nullptr);
    ASSERT_EQ(WaitForSingleObject(page_->ReadThread.handle, LongestMs), WAIT_OBJECT_0);
}

void TagPageWindow::OpenAndRead(bool standAlone) {
    Open(standAlone);
    WaitForReading();
    Tick();
    ASSERT_EQ(page_->ControlsReady, 1);
}

int TagPageWindow::TakeChanges() {
    for (HWND page : sheet_.changedPages)
        EXPECT_EQ(page, dialog_);
    const int changes = static_cast<int>(sheet_.changedPages.size());
    sheet_.changedPages.clear();
    return changes;
}

int TagPageWindow::X(int units) const {
    return DialogUnitsX(units, dialog_);
}

int TagPageWindow::Y(int units) const {
    return DialogUnitsY(units, dialog_);
}

RECT TagPageWindow::PlaceOf(HWND child) const {
    RECT place = {};
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, dialog_, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

Picture TagPageWindow::Seen() {
    return PictureOf(dialog_);
}

LRESULT TagPageWindow::Send(UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageW(dialog_, message, wParam, lParam);
}

LRESULT TagPageWindow::Notify(UINT code) {
    NMHDR header = {};
    header.hwndFrom = Sheet();
    header.code = code;
    return Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header));
}

void TagPageWindow::Apply() {
    Notify(static_cast<UINT>(PSN_APPLY));
}

std::vector<std::wstring> TagPageWindow::Rows() {
    std::vector<std::wstring> rows;
    for (int index = 0; index < page_->ValueList.rows.Count(); ++index) {
        const NValueRow& row = *page_->ValueList.rows[index];
        rows.push_back(std::wstring(row.name.Text) + L"=" + row.value.Text);
    }
    return rows;
}

int TagPageWindow::RowOf(const wchar_t* name) {
    for (int index = 0; index < page_->ValueList.rows.Count(); ++index) {
        if (page_->ValueList.rows[index]->name == name)
            return index;
    }
    return -1;
}

NValueRow& TagPageWindow::Row(const wchar_t* name) {
    NValueRow* row = page_->ValueList.rows[RowOf(name)];
    if (!row)
        throw std::runtime_error("no such row");
    return *row;
}

void TagPageWindow::TypeInEditor(const wchar_t* text) {
    const HWND editor = page_->ValueList.control.editor;
    ASSERT_NE(editor, nullptr);
    SetWindowTextW(editor, text);
}

void TagPageWindow::Type(const wchar_t* name, const wchar_t* value) {
    ASSERT_NE(RowOf(name), -1);
    page_->ValueList.Select(RowOf(name));
    TypeInEditor(value);
}
