#pragma once

#include "audiopage/audio_prop_page.h"
#include "foundation/module_instance.h"
#include "foundation/unique_handle.h"
#include "resources/resource_ids.h"
#include "shell/page_counters.h"
#include "shell/property_sheet.h"
#include "tagpage/id_tag_page.h"
#include "tagpage/page_procedures.h"
#include "tests/shell/loaded_module.h"
#include "tests/shell/sheet_calls.h"
#include "tests/support/private_app_data.h"
#include "tests/support/test_cursor.h"
#include "toolkit/message_pump.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <vector>

inline constexpr DWORD LongestMs = 60000;
inline constexpr LPARAM Parameter = 4711;

// What AddPages is told to hand its pages to.
class PageTaker {
public:
    PageTaker() { current = this; }
    ~PageTaker() {
        for (HPROPSHEETPAGE page : pages)
            DestroyPropertySheetPage(page);
        current = nullptr;
    }
    PageTaker(const PageTaker&) = delete;
    PageTaker& operator=(const PageTaker&) = delete;

    static BOOL CALLBACK Take(HPROPSHEETPAGE page, LPARAM parameter) {
        EXPECT_EQ(parameter, Parameter);
        ++current->calls;
        if (current->atTake)
            current->atTake();
        if (current->refuses || current->calls == current->refusedCall)
            return FALSE;
        current->pages.push_back(page);
        return TRUE;
    }
    std::vector<HPROPSHEETPAGE> GiveUp() {
        std::vector<HPROPSHEETPAGE> given;
        given.swap(pages);
        return given;
    }

    static inline PageTaker* current = nullptr;
    std::vector<HPROPSHEETPAGE> pages;
    std::function<void()> atTake; // called at each page
    bool refuses = false;
    int refusedCall = 0; // the one that is refused, from 1 on
    int calls = 0;
};

// The hand-over in this program, with the dialog, the pictures and the decoder
// plug-in of the module that was built.
class PageHandOver : public testing::Test {
protected:
    PageHandOver() {
        NSetModuleInstance(module_.Handle());
        SheetCalls::StartAnew();
        constexpr int farAway = 30000;
        TestCursor::MoveTo(farAway, farAway);
    }
    ~PageHandOver() override {
        NSetModuleInstance(nullptr);
        SheetCalls::StartAnew();
        audioPageReferences = idTagPageReferences = 0;
    }

    void Select(std::initializer_list<const wchar_t*> paths) {
        for (const wchar_t* path : paths)
            selection_.Add(path);
    }
    void SelectSample() {
        NString source(TONEWRIGHT_SOURCE_DIR "/build/samples/sample.flac");
        ASSERT_NE(GetFileAttributesW(source.Text), INVALID_FILE_ATTRIBUTES);
        selection_.Add(source);
    }
    void Offer(PageTaker& taker) {
        ASSERT_EQ(taker.calls, 0);
        AddPropertyPages(selection_, PageTaker::Take, Parameter);
    }
    static clAudioPropPage& PageMade() {
        return *reinterpret_cast<clAudioPropPage*>(SheetCalls::Made().at(0).lParam);
    }
    static clIDTagPage& TagPageMade() {
        return *reinterpret_cast<clIDTagPage*>(SheetCalls::Made().at(1).lParam);
    }

    LoadedModule module_;
    PrivateAppData appData_; // for the genres
    TestCursor cursor_;
    NStringList selection_;
};

struct SheetWindowTraits {
    using Handle = HWND;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyWindow(handle); }
};

// A sheet of the platform, without a loop of its own.
class Sheet {
public:
    explicit Sheet(std::vector<HPROPSHEETPAGE> pages) {
        PROPSHEETHEADERW header = {};
        header.dwSize = sizeof(header);
        header.dwFlags = PSH_MODELESS;
        header.pszCaption = L"sheet";
        header.nPages = static_cast<UINT>(pages.size());
        header.phpage = pages.data();
        window_.Reset(reinterpret_cast<HWND>(PropertySheetW(&header)));
    }

    HWND Window() const { return window_.Get(); }
    HWND Page() const {
        return reinterpret_cast<HWND>(SendMessageW(Window(), PSM_GETCURRENTPAGEHWND, 0, 0));
    }
    // By its place among the tabs; the page gets its window.
    void ShowPage(int index) {
        SendMessageW(Window(), PSM_SETCURSEL, static_cast<WPARAM>(index), 0);
    }
    void Close() { window_.Reset(); }
    bool Pump() {
        bool quit = false;
        return PumpPending(&quit, Window());
    }

private:
    UniqueHandle<SheetWindowTraits> window_;
};

// A page of nobody's, with an icon on its tab as the module's page has it.
inline HPROPSHEETPAGE PlainPage() {
    PROPSHEETPAGEW page = {};
    page.dwSize = sizeof(page);
    page.dwFlags = PSP_USETITLE | PSP_USEICONID;
    page.hInstance = NModuleInstance();
    page.pszTemplate = MAKEINTRESOURCEW(IDD_AUDIO_PAGE);
    page.pszIcon = MAKEINTRESOURCEW(IDI_AUDIO_PAGE);
    page.pszTitle = L"plain";
    page.pfnDlgProc = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; };
    return CreatePropertySheetPageW(&page);
}
