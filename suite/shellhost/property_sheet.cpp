#include "suite/shellhost/property_sheet.h"

#include "foundation/npath.h"
#include "foundation/unique_handle.h"
#include "suite/shellhost/png_file.h"
#include "toolkit/device_contexts.h"
#include "toolkit/message_pump.h"
#include "toolkit/ncanvas.h"

#include <new>

namespace {
// A page that reads enables one of these buttons of its own when it is done.
constexpr const wchar_t* LastButtons[] = {L"Options Menu", L"Clear"};

constexpr DWORD LookEveryMs = 50;
constexpr int MostLooks = 1200; // a minute's

struct WindowTraits {
    using Handle = HWND;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyWindow(handle); }
};
using UniqueWindow = UniqueHandle<WindowTraits>;

// Of the whole window, its frame included.
class WholeWindowDC {
public:
    explicit WholeWindowDC(HWND window) : window_(window), dc_(GetWindowDC(window)) {}
    ~WholeWindowDC() { ReleaseDC(window_, dc_); }
    WholeWindowDC(const WholeWindowDC&) = delete;
    WholeWindowDC& operator=(const WholeWindowDC&) = delete;

    HDC Get() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

HWND PageOf(HWND sheet) {
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

bool HasRead(HWND sheet) {
    for (const wchar_t* last : LastButtons) {
        HWND button = FindWindowExW(PageOf(sheet), nullptr, nullptr, last);
        if (button && IsWindowEnabled(button))
            return true;
    }
    return false;
}

bool WaitUntilRead(HWND sheet) {
    bool quit = false;
    for (int look = 0; look < MostLooks && PumpPending(&quit, nullptr); ++look) {
        if (HasRead(sheet))
            return true;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, LookEveryMs, QS_ALLINPUT);
    }
    return false;
}

bool WritePicture(HWND sheet, const NString& path) {
    RedrawWindow(PageOf(sheet), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT rect = {};
    GetWindowRect(sheet, &rect);
    NCanvas picture;
    if (!picture.Resize(rect.right - rect.left, rect.bottom - rect.top))
        return false;
    {
        const WholeWindowDC window(sheet);
        BitBlt(picture.dc, 0, 0, picture.Width(), picture.Height(), window.Get(), 0, 0, SRCCOPY);
    }
    picture.Deselect();
    return WritePng(picture.handle, path);
}
} // namespace

SheetPages::~SheetPages() {
    for (HPROPSHEETPAGE page : pages_)
        DestroyPropertySheetPage(page);
}

BOOL CALLBACK SheetPages::Add(HPROPSHEETPAGE page, LPARAM parameter) noexcept {
    try {
        reinterpret_cast<SheetPages*>(parameter)->pages_.push_back(page);
        return TRUE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

INT_PTR SheetPages::Open(const NString& title, int firstShown, DWORD flags) {
    std::vector<HPROPSHEETPAGE> pages;
    pages.swap(pages_);
    PROPSHEETHEADERW header = {};
    header.dwSize = sizeof(header);
    header.dwFlags = PSH_PROPTITLE | flags;
    header.pszCaption = title.c_str();
    header.nStartPage = static_cast<UINT>(firstShown);
    header.nPages = static_cast<UINT>(pages.size());
    header.phpage = pages.data();
    return PropertySheetW(&header);
}

NString SheetTitle(const NStringList& paths) {
    NString title = NGetFileName(*paths[0]);
    if (paths.Count > 1)
        title.Append(L", ...");
    return title;
}

bool ShowSheet(SheetPages& pages, const NString& title, int firstShown) {
    return pages.Open(title, firstShown, 0) >= 0;
}

const wchar_t* PictureSheet(SheetPages& pages, const NString& title, int shown,
                            const NString& path) {
    const INT_PTR opened = pages.Open(title, shown, PSH_MODELESS);
    if (opened == 0 || opened == -1)
        return L"shellhost: the sheet can't be shown";
    const UniqueWindow sheet(reinterpret_cast<HWND>(opened));
    if (!WaitUntilRead(sheet.Get()))
        return L"shellhost: the page hasn't read its files within a minute";
    return WritePicture(sheet.Get(), path) ? nullptr : L"shellhost: the picture can't be written";
}
