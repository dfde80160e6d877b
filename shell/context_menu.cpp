#include "shell/context_menu.h"

#include "foundation/module_instance.h"
#include "foundation/nreg.h"
#include "foundation/nstring.h"
#include "resources/resource_ids.h"

#include <cstdint>
#include <iterator>

namespace {
struct MenuCommand {
    const wchar_t* text;
    int picture; // id of the bitmap
    const wchar_t* verb;
    const wchar_t* help;
};

// By offset.
constexpr MenuCommand Commands[] = {
    {L"Convert To", IDB_CONVERT_TO, L"Convert_To", L"Tonewright: Convert Selected File(s) to..."},
    {L"Edit ID-Tag", IDB_EDIT_ID_TAG, L"Edit_IDTag", L"Tonewright: Edit Audio ID Tag(s)"},
};

constexpr wchar_t SettingsKey[] = L"Software\\Quillmarsh\\Tonewright";
constexpr wchar_t NoEditTagSetting[] = L"tNWNoEditTag";

void InsertItem(HMENU menu, UINT index, UINT firstCommand, int offset) {
    const MenuCommand& command = Commands[offset];
    InsertMenuW(menu, index, MF_BYPOSITION, firstCommand + static_cast<UINT>(offset), command.text);
    // It isn't freed, and that is wanted: the menu draws with it for as long as
    // it is there, and nobody tells the module when that is over.
    HBITMAP picture = LoadBitmapW(NModuleInstance(), MAKEINTRESOURCEW(command.picture));
    if (picture)
        SetMenuItemBitmaps(menu, index, MF_BYPOSITION, picture, nullptr);
}

bool AsksForVerb(UINT type) {
    return type == GCS_VERBA || type == GCS_VERBW;
}
} // namespace

int NAddMenuItems(HMENU menu, UINT index, UINT firstCommand, UINT flags) {
    // 1.
    if (flags & CMF_DEFAULTONLY)
        return 0;
    // 2. and 3.
    InsertItem(menu, index, firstCommand, CommandConvert);
    // 4. Read anew for each menu.
    if (NRegReadDword(NoEditTagSetting, HKEY_CURRENT_USER, SettingsKey) != 0)
        return 1;
    // 5. and 6.
    InsertItem(menu, index + 1, firstCommand, CommandEditTag);
    // 7.
    return 2;
}

HRESULT NCommandText(UINT_PTR offset, UINT type, CHAR* name, UINT capacity) {
    // 1. Every type but the two for verbs gets the help text, the asking ones
    // too: nothing of it is copied for them.
    NString text;
    if (offset < std::size(Commands))
        text = AsksForVerb(type) ? Commands[offset].verb : Commands[offset].help;

    // 2.
    if (text.IsEmpty())
        return E_INVALIDARG;

    // 3. A capacity of 0 cuts nothing: wanted.
    if (capacity != 0 && static_cast<UINT>(text.CharCount()) >= capacity - 1)
        text = text.Left(static_cast<int>(capacity - 1));

    // 4.
    const bool narrow = type == GCS_VERBA || type == GCS_HELPTEXTA;
    const bool wide = type == GCS_VERBW || type == GCS_HELPTEXTW;
    if ((narrow || wide) && !name)
        return E_INVALIDARG;
    if (narrow)
        text.CopyToNarrow(name);
    if (wide)
        text.CopyToWide(reinterpret_cast<wchar_t*>(name));

    // 5.
    return S_OK;
}

int NCommandOf(const CHAR* verbOrIndex) {
    // 1.
    NString verb;
    int index = NoCommand;

    // 2. Bits 16 to 31 alone decide, in a pointer of 64 bits too: wanted. One
    // that has none of them set is taken for an index, and not read.
    const auto bits = reinterpret_cast<uintptr_t>(verbOrIndex);
    if (HIWORD(bits) != 0)
        verb = NString(verbOrIndex);
    else
        index = LOWORD(bits);

    // 3. to 5.
    if (verb == Commands[CommandConvert].verb || index == CommandConvert)
        return CommandConvert;
    if (verb == Commands[CommandEditTag].verb || index == CommandEditTag)
        return CommandEditTag;
    return NoCommand;
}
