#include "tests/e2e/desktop_sheet/shell_properties.h"

#include "foundation/com_owners.h"

#include <shlobj.h>

#include <stdexcept>

namespace {
struct ItemListTraits {
    using Handle = ITEMIDLIST*;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { CoTaskMemFree(handle); }
};
using UniqueItemList = UniqueHandle<ItemListTraits>;

struct MenuTraits {
    using Handle = HMENU;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { DestroyMenu(handle); }
};
using UniqueMenu = UniqueHandle<MenuTraits>;

void Require(HRESULT result, const char* what) {
    if (FAILED(result))
        throw std::runtime_error(std::string("the shell refuses ") + what);
}

ComPtr<IShellFolder> FolderOf(const std::wstring& file) {
    const std::wstring path = file.substr(0, file.rfind(L'\\') + 1);
    ComPtr<IShellFolder> desktop;
    Require(SHGetDesktopFolder(desktop.Put()), "its desktop");
    UniqueItemList list;
    Require(desktop->ParseDisplayName(nullptr, nullptr, const_cast<wchar_t*>(path.c_str()), nullptr,
                                      list.Put(), nullptr),
            "the folder's path");
    ComPtr<IShellFolder> folder;
    Require(desktop->BindToObject(list.Get(), nullptr, IID_IShellFolder, folder.PutVoid()),
            "the folder");
    return folder;
}

ComPtr<IContextMenu> MenuOf(const std::vector<std::wstring>& files) {
    const ComPtr<IShellFolder> folder = FolderOf(files.at(0));
    std::vector<UniqueItemList> items;
    std::vector<const ITEMIDLIST*> plain;
    for (const std::wstring& file : files) {
        std::wstring name = file.substr(file.rfind(L'\\') + 1);
        UniqueItemList item;
        Require(
            folder->ParseDisplayName(nullptr, nullptr, name.data(), nullptr, item.Put(), nullptr),
            "a file's name");
        plain.push_back(item.Get());
        items.push_back(std::move(item));
    }
    ComPtr<IContextMenu> menu;
    Require(folder->GetUIObjectOf(nullptr, static_cast<UINT>(plain.size()), plain.data(),
                                  IID_IContextMenu, nullptr, menu.PutVoid()),
            "the files' menu");
    return menu;
}
} // namespace

void ShowShellProperties(const std::vector<std::wstring>& files) {
    const ComPtr<IContextMenu> menu = MenuOf(files);
    const UniqueMenu shown(CreatePopupMenu());
    constexpr UINT firstCommand = 1;
    constexpr UINT lastCommand = 0x7FFF;
    Require(menu->QueryContextMenu(shown.Get(), 0, firstCommand, lastCommand, CMF_NORMAL),
            "to fill its menu");
    CMINVOKECOMMANDINFO command = {};
    command.cbSize = sizeof(command);
    command.lpVerb = "properties";
    command.nShow = SW_SHOWNORMAL;
    Require(menu->InvokeCommand(&command), "its command \"properties\"");
}
