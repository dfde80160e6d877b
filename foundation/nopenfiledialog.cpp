#include "foundation/nopenfiledialog.h"

#include "foundation/npath.h"

#include <commdlg.h>

#include <algorithm>
#include <memory>

namespace {
constexpr wchar_t AllFiles[] = L" \r*.*";
constexpr wchar_t PartSeparator = L'\r';
constexpr uint32_t OneNameUnits = 1000;
constexpr uint32_t ManyNamesUnits = 50000;

static_assert(sizeof(OPENFILENAMEW) == 152);
} // namespace

bool NOpenFileDialog(NStringList& list, const wchar_t* title, DWORD flags,
                     const wchar_t* filterText, const NStringList* filterList,
                     const wchar_t* initialFolder, const wchar_t* initialFile, HWND owner) {
    // 1. and 2.
    NBuffer filter;
    NMakeFilterBlock(filter, filterText, filterList);
    list.Clear();
    // 3. A name that is too long is cut.
    bool multiSelect = flags & OFN_ALLOWMULTISELECT;
    uint32_t units = multiSelect ? ManyNamesUnits : OneNameUnits;
    auto names = std::make_unique<wchar_t[]>(units);
    NString firstName = NString(initialFile).Left(static_cast<int>(units) - 1);
    firstName.CopyToWide(names.get());
    // 4.
    OPENFILENAMEW dialog = {};
    dialog.lStructSize = sizeof(dialog);
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = reinterpret_cast<const wchar_t*>(filter.Data);
    dialog.lpstrFile = names.get();
    dialog.nMaxFile = units;
    dialog.lpstrInitialDir = initialFolder;
    dialog.lpstrTitle = title;
    dialog.Flags = flags | OFN_EXPLORER;
    // 5.
    if (!GetOpenFileNameW(&dialog))
        return false;
    // 6. to 8.
    NTakeDialogNames(list, names.get(), units, multiSelect);
    return true;
}

void NMakeFilterBlock(NBuffer& block, const wchar_t* filterText, const NStringList* filterList) {
    NStringList entries;
    if (filterList)
        entries.CopyFrom(*filterList);
    if (filterText && *filterText)
        entries.Add(filterText);
    if (entries.Count == 0)
        entries.Add(AllFiles);
    entries.ToMultiString(block, true);
    auto* units = reinterpret_cast<wchar_t*>(block.Data);
    std::replace(units, units + block.Size / sizeof(wchar_t), PartSeparator, L'\0');
}

void NTakeDialogNames(NStringList& list, const wchar_t* names, uint32_t units, bool multiSelect) {
    list.Clear();
    NStringList pieces;
    if (multiSelect)
        pieces.FromMultiString(names, units * sizeof(wchar_t), true);
    if (pieces.Count < 2) {
        list.Add(names);
        return;
    }
    NString folder = NAppendBackslash(*pieces[0]);
    for (int index = 1; index < pieces.Count; ++index) {
        NString path(folder);
        path.Append(*pieces[index]);
        list.Add(path);
    }
}
