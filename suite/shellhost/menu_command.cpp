#include "suite/shellhost/command.h"
#include "suite/shellhost/console.h"
#include "suite/shellhost/full_path.h"
#include "suite/shellhost/program.h"

#include <shlobj.h>

#include <cwchar>
#include <iterator>

namespace {
// The ids that a shell allots to one extension.
constexpr UINT FirstCommand = 1;
constexpr UINT LastCommand = 0x7FFF;
constexpr UINT LongestText = 200; // units

struct MenuTraits {
    using Handle = HMENU;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyMenu(handle); }
};
using UniqueMenu = UniqueHandle<MenuTraits>;

// One item as the menu holds it.
struct ShownItem {
    wchar_t text[LongestText] = {};
    UINT offset = 0;
    BITMAP picture = {}; // zero if there is none
};

ShownItem ItemAt(HMENU menu, int index) {
    ShownItem item;
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_STRING | MIIM_ID | MIIM_CHECKMARKS;
    info.dwTypeData = item.text;
    info.cch = LongestText;
    GetMenuItemInfoW(menu, static_cast<UINT>(index), TRUE, &info);
    item.offset = info.wID - FirstCommand;
    GetObjectW(info.hbmpUnchecked, sizeof(item.picture), &item.picture);
    return item;
}

NString CommandString(IContextMenu& menu, UINT offset, UINT type) {
    wchar_t text[LongestText] = {};
    if (FAILED(menu.GetCommandString(offset, type, nullptr, reinterpret_cast<CHAR*>(text),
                                     LongestText)))
        return L"(none)";
    return text;
}

NString PictureText(const BITMAP& picture) {
    if (picture.bmWidth == 0)
        return L"(none)";
    wchar_t text[64];
    swprintf(text, std::size(text), L"%ld x %ld", picture.bmWidth, picture.bmHeight);
    return text;
}

bool PrintDetail(const wchar_t* name, const NString& value) {
    NString line(L"  ");
    line.Append(name);
    line.Append(L": ");
    line.Append(value);
    return Console::Line(line);
}

bool PrintItem(IContextMenu& menu, const ShownItem& item) {
    NString title = NString::FromUInt(item.offset);
    title.Append(L" ");
    title.Append(item.text);
    return Console::Line(title) && PrintDetail(L"picture", PictureText(item.picture)) &&
           PrintDetail(L"verb", CommandString(menu, item.offset, GCS_VERBW)) &&
           PrintDetail(L"help", CommandString(menu, item.offset, GCS_HELPTEXTW));
}

int PrintMenu(IContextMenu& extension) {
    UniqueMenu menu(CreatePopupMenu());
    HRESULT result =
        extension.QueryContextMenu(menu.Get(), 0, FirstCommand, LastCommand, CMF_NORMAL);
    if (FAILED(result)) {
        Console::Error(L"shellhost: the module has no menu items");
        return ExitFailed;
    }
    for (int index = 0; index < GetMenuItemCount(menu.Get()); ++index) {
        if (!PrintItem(extension, ItemAt(menu.Get(), index))) {
            Console::Error(L"shellhost: the output can't be written");
            return ExitFailed;
        }
    }
    return ExitDone;
}
} // namespace

int RunMenuCommand(ModuleHost& module, const Arguments& arguments) {
    NStringList paths;
    for (int index = 0; index < arguments.count; ++index)
        paths.Add(FullPath(arguments[index]));
    ComPtr<IContextMenu> menu;
    if (!module.Select(paths) || !module.GetInterface(IID_IContextMenu, menu.PutVoid())) {
        Console::Error(module.Problem());
        return ExitFailed;
    }
    return PrintMenu(*menu.Get());
}
