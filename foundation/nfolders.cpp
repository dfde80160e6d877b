#include "foundation/nfolders.h"

#include "foundation/npath.h"
#include "foundation/nreg.h"
#include "foundation/unique_handle.h"

#include <shlobj.h>

namespace {
constexpr DWORD TempFolderUnits = 260;
constexpr DWORD ModulePathUnits = 1000;

struct ItemIdListTraits {
    using Handle = PIDLIST_ABSOLUTE;
    static Handle None() { return nullptr; }
    static void Free(Handle handle) { CoTaskMemFree(handle); }
};
using UniqueItemIdList = UniqueHandle<ItemIdListTraits>;

// Where a folder stands in relation to another when the platform doesn't say.
struct DerivedFolder {
    int id;
    int base;
    bool besideBase; // in the folder that holds the base
    const wchar_t* name;
};
constexpr DerivedFolder derivedFolders[] = {
    {CSIDL_APPDATA, CSIDL_PERSONAL, true, L"Application Data\\"},
    {CSIDL_PROGRAM_FILES_COMMON, NFolderProgramFiles, false, L"Common\\"},
    {CSIDL_MYMUSIC, CSIDL_PERSONAL, false, L"My Music\\"},
    {CSIDL_MYPICTURES, CSIDL_PERSONAL, false, L"My Pictures\\"},
    {CSIDL_MYVIDEO, CSIDL_PERSONAL, false, L"My Video\\"},
    {CSIDL_COMMON_MUSIC, CSIDL_COMMON_DOCUMENTS, false, L"My Music\\"},
    {CSIDL_COMMON_PICTURES, CSIDL_COMMON_DOCUMENTS, false, L"My Pictures\\"},
    {CSIDL_COMMON_VIDEO, CSIDL_COMMON_DOCUMENTS, false, L"My Video\\"},
};

// The text of one of the calls that answer with a length, or with the length
// that they would need.
using FolderCall = UINT(WINAPI*)(wchar_t* buffer, UINT units);
NString TextOf(FolderCall call) {
    wchar_t text[TempFolderUnits] = {};
    UINT length = call(text, TempFolderUnits);
    return length < TempFolderUnits ? NString(text) : NString();
}

UINT WINAPI TempPath(wchar_t* buffer, UINT units) {
    return GetTempPathW(units, buffer);
}

NString ProgramFiles() {
    return NRegReadString(L"ProgramFilesDir", HKEY_LOCAL_MACHINE,
                          L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion");
}

NString ShellFolder(int id) {
    UniqueItemIdList items;
    wchar_t path[MAX_PATH] = {};
    if (FAILED(SHGetSpecialFolderLocation(nullptr, id, items.Put())) ||
        !SHGetPathFromIDListW(items.Get(), path))
        return NString();
    return NString(path);
}

NString Derived(NFolderLookup lookup, int id) {
    for (const DerivedFolder& derived : derivedFolders) {
        if (derived.id != id)
            continue;
        NString base = NRemoveBackslashes(lookup(derived.base));
        if (base.IsEmpty())
            break;
        NString folder = NAppendBackslash(derived.besideBase ? NGetFolder(base) : base);
        folder.Append(derived.name);
        return folder;
    }
    return NString();
}
} // namespace

NString NGetTempFolder() {
    return NGetTempFolderBy(NPlatformFolder);
}

NString NGetTempFolderBy(NFolderLookup lookup) {
    NString folder = lookup(NFolderTemp);
    return NAppendBackslash(folder.IsEmpty() ? NString(L"C:\\Temp") : folder);
}

NString NGetModulePath(HINSTANCE instance) {
    wchar_t path[ModulePathUnits + 1] = {};
    GetModuleFileNameW(instance, path, ModulePathUnits);
    return NUnquote(NString(path));
}

NString NGetModuleFolder(HINSTANCE instance) {
    return NGetFolder(NGetModulePath(instance));
}

NString NPlatformFolder(int id) {
    switch (id) {
    case NFolderProgramFiles:
        return ProgramFiles();
    case NFolderSystemRoot:
        return TextOf(GetWindowsDirectoryW);
    case NFolderSystem:
        return TextOf(GetSystemDirectoryW);
    case NFolderTemp:
        return TextOf(TempPath);
    default:
        return ShellFolder(id);
    }
}

NString NGetSpecialFolder(int id, const wchar_t* fallback) {
    return NGetSpecialFolderBy(NPlatformFolder, id, fallback);
}

NString NGetSpecialFolderBy(NFolderLookup lookup, int id, const wchar_t* fallback) {
    NString folder = lookup(id);
    if (folder.IsEmpty())
        folder = Derived(lookup, id);
    if (folder.IsEmpty())
        folder = fallback;
    if (folder.IsEmpty())
        folder = L"C:\\Error";
    return NAppendBackslash(folder);
}
