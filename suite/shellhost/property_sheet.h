#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"
#include "foundation/windows_lean.h"

#include <prsht.h>

#include <vector>

// The pages that a shell extension offers, until a sheet takes them over.
class SheetPages {
public:
    SheetPages() = default;
    SheetPages(const SheetPages&) = delete;
    SheetPages& operator=(const SheetPages&) = delete;
    ~SheetPages();

    // What an extension's AddPages is called with.
    static BOOL CALLBACK Add(HPROPSHEETPAGE page, LPARAM parameter) noexcept;
    LPARAM Parameter() { return reinterpret_cast<LPARAM>(this); }

    int Count() const { return static_cast<int>(pages_.size()); }
    // Gives them up to a sheet of them, with these flags added, that shows the
    // page of this index first. The result is that of PropertySheetW.
    INT_PTR Open(const NString& title, int firstShown, DWORD flags);

private:
    std::vector<HPROPSHEETPAGE> pages_;
};

// What a desktop shell calls the sheet of these files, but for "Properties".
NString SheetTitle(const NStringList& paths);

// Shows the sheet, the page of this index first, until the user closes it.
// False if it can't be shown.
bool ShowSheet(SheetPages& pages, const NString& title, int firstShown);

// Shows the sheet, waits until the page of this index has read its files, writes
// a picture of the whole window to `path` (PNG), and closes it. Null, or what
// went wrong.
const wchar_t* PictureSheet(SheetPages& pages, const NString& title, int shown,
                            const NString& path);
