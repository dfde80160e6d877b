#pragma once

#include "foundation/nstring.h"
#include "foundation/unique_handle.h"
#include "tests/support/temp_folder.h"

// A module in a folder of its own, with a `decoder` folder below it that the
// test fills:
//
//     PluginFolder folder;
//     folder.Add(L"first.dll");
//     handler.FindDecoder(path, decoder, &context, folder.Module());
class PluginFolder {
public:
    PluginFolder();

    HINSTANCE Module() const { return module_.Get(); }
    // Of a name in the `decoder` folder, in full.
    NString PathOf(const wchar_t* name) const;
    // Puts a copy of a built plug-in there; returns its path.
    NString Add(const wchar_t* name, const wchar_t* built = L"whole_plugin.dll");
    void AddPlainFile(const wchar_t* name);
    void AddFolder(const wchar_t* name);

private:
    TempFolder folder_; // in front of the module, so that it goes after it
    UniqueModule module_;
};
