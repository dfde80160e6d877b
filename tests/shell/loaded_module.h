#pragma once

#include "foundation/nstring.h"
#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"

#include <unknwn.h>

#include <string>

// The path of the module that the build made.
std::wstring BuiltModulePath();

// The text of an NString as the standard library's.
inline std::wstring StdText(const NString& text) {
    return text.c_str();
}

// A folder of its own that is removed, with what is in it, at the end.
class TemporaryFolder {
public:
    // `name` is part of the folder's name.
    explicit TemporaryFolder(const std::wstring& name = L"shell");
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Without a backslash at the end.
    const std::wstring& Path() const { return path_; }
    // Puts a copy of the built module there, and returns its path.
    std::wstring CopyModule() const;

private:
    std::wstring parent_;
    std::wstring path_;
};

// Gives a resource of the module's file a type that nobody asks for.
void HideResource(const std::wstring& module, const std::wstring& type);

// The module, loaded as the platform loads it, with its exports.
class LoadedModule {
public:
    explicit LoadedModule(const std::wstring& path = BuiltModulePath());

    HMODULE Handle() const { return module_.Get(); }
    HRESULT GetClassObject(REFCLSID clsid, REFIID iid, void** factory) const;
    HRESULT CanUnloadNow() const { return Call("DllCanUnloadNow"); }
    HRESULT RegisterServer() const { return Call("DllRegisterServer"); }
    HRESULT UnregisterServer() const { return Call("DllUnregisterServer"); }
    FARPROC Export(const char* name) const { return GetProcAddress(module_.Get(), name); }

private:
    HRESULT Call(const char* name) const;

    UniqueModule module_;
};

// COM on the test's thread, as an apartment.
class Apartment {
public:
    Apartment();
    ~Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};
