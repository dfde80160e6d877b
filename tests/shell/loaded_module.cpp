#include "tests/shell/loaded_module.h"

#include <objbase.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

std::wstring WindowsPath(const char* path) {
    // The build's paths are those of the system beneath Wine, its drive Z:.
    NString text(path, true);
    text.Replace(L"/", L"\\");
    std::wstring plain = StdText(text);
    return plain.starts_with(L"\\") ? L"Z:" + plain : plain;
}

std::wstring UniqueName() {
    static std::atomic<int> count = 0;
    return L"tonewright-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
           std::to_wstring(GetTickCount64()) + L"-" + std::to_wstring(++count);
}

void Require(bool done, const char* what) {
    if (!done)
        throw std::runtime_error(what);
}

} // namespace

std::wstring BuiltModulePath() {
    return WindowsPath(TONEWRIGHT_SUITE_DIR) + L"\\tNWShell.DLL";
}

TemporaryFolder::TemporaryFolder(const std::wstring& name)
    : parent_((fs::temp_directory_path() / UniqueName()).wstring()), path_(parent_ + L"\\" + name) {
    fs::create_directories(path_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(parent_, ignored);
}

std::wstring TemporaryFolder::CopyModule() const {
    std::wstring copy = path_ + L"\\tNWShell.DLL";
    Require(CopyFileW(BuiltModulePath().c_str(), copy.c_str(), TRUE), "the module is not built");
    return copy;
}

// The name stands, with its length before it, in the resource section, which
// comes last in the file. (EndUpdateResource can't be used: Wine's leaves a
// resource that was to be removed.)
void HideResource(const std::wstring& module, const std::wstring& type) {
    std::fstream file(fs::path(module), std::ios::in | std::ios::out | std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    std::wstring entry = static_cast<wchar_t>(type.size()) + type;
    size_t at = bytes.rfind(
        std::string(reinterpret_cast<const char*>(entry.data()), entry.size() * sizeof(wchar_t)));
    Require(at != std::string::npos, "no such resource");
    // Behind the length and the first letter, so that the names stay in order.
    file.clear();
    file.seekp(static_cast<std::streamoff>(at + 2 * sizeof(wchar_t)));
    file.put('~');
    file.close();
    Require(!file.fail(), "the resource can't be hidden");
}

LoadedModule::LoadedModule(const std::wstring& path) : module_(LoadLibraryW(path.c_str())) {
    Require(bool(module_), "the module can't be loaded");
}

HRESULT LoadedModule::GetClassObject(REFCLSID clsid, REFIID iid, void** factory) const {
    using Entry = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    Entry entry = reinterpret_cast<Entry>(Export("DllGetClassObject"));
    Require(entry != nullptr, "no export DllGetClassObject");
    return entry(clsid, iid, factory);
}

HRESULT LoadedModule::Call(const char* name) const {
    using Entry = HRESULT(WINAPI*)();
    Entry entry = reinterpret_cast<Entry>(Export(name));
    Require(entry != nullptr, name);
    return entry();
}

Apartment::Apartment() {
    Require(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)), "CoInitializeEx");
}

Apartment::~Apartment() {
    CoUninitialize();
}
