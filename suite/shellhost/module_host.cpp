#include "suite/shellhost/module_host.h"

#include "foundation/module_instance.h"
#include "foundation/nfolders.h"
#include "suite/shellhost/drop_data_object.h"
#include "suite/shellhost/full_path.h"

#include <shlobj.h>

#include <cwchar>
#include <iterator>

namespace {
// {7A1E4C10-93D2-4F6B-8C21-5E0B7D3FA911}: the module's class.
constexpr CLSID ShellClass = {
    0x7A1E4C10, 0x93D2, 0x4F6B, {0x8C, 0x21, 0x5E, 0x0B, 0x7D, 0x3F, 0xA9, 0x11}};
constexpr wchar_t ModuleName[] = L"tNWShell.DLL";

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

NString HexText(HRESULT result) {
    wchar_t digits[16];
    swprintf(digits, std::size(digits), L"0x%08lX", static_cast<unsigned long>(result));
    return digits;
}
} // namespace

// Nobody is to look for the suite beside a module that is gone.
ModuleHost::~ModuleHost() {
    NSetModuleInstance(nullptr);
}

bool ModuleHost::LoadRegistered() {
    HRESULT result = CoGetClassObject(ShellClass, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                      factory_.PutVoid());
    if (FAILED(result))
        return Fail(L"the module isn't registered, or can't be loaded", result);
    HMODULE module = GetModuleHandleW(ModuleName);
    if (!module)
        return Fail(L"the registered class isn't in tNWShell.DLL", E_UNEXPECTED);
    return Adopt(module);
}

bool ModuleHost::LoadFrom(const wchar_t* path) {
    NString full = FullPath(path);
    library_.Reset(LoadLibraryExW(full.Text, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
    if (!library_)
        return Fail(L"the module can't be loaded", HRESULT_FROM_WIN32(GetLastError()));
    auto getClass =
        reinterpret_cast<GetClassObject>(GetProcAddress(library_.Get(), "DllGetClassObject"));
    if (!getClass)
        return Fail(L"the module has no DllGetClassObject", E_NOINTERFACE);
    HRESULT result = getClass(ShellClass, IID_IClassFactory, factory_.PutVoid());
    if (FAILED(result))
        return Fail(L"the module has no such class", result);
    return Adopt(library_.Get());
}

bool ModuleHost::Adopt(HMODULE module) {
    NSetModuleInstance(module);
    path_ = NGetModulePath(module);
    return true;
}

bool ModuleHost::Select(const NStringList& paths) {
    object_.Reset();
    HRESULT result = factory_->CreateInstance(nullptr, IID_IUnknown, object_.PutVoid());
    if (FAILED(result))
        return Fail(L"the module's object can't be created", result);
    ComPtr<IShellExtInit> init;
    result = object_->QueryInterface(IID_IShellExtInit, init.PutVoid());
    if (FAILED(result))
        return Fail(L"the module's object has no IShellExtInit", result);
    ComPtr<IDataObject> data = MakeDropDataObject(paths);
    result = init->Initialize(nullptr, data.Get(), nullptr);
    if (FAILED(result))
        return Fail(L"the module refuses the selection", result);
    return true;
}

bool ModuleHost::GetInterface(REFIID iid, void** object) {
    HRESULT result = object_->QueryInterface(iid, object);
    return SUCCEEDED(result) || Fail(L"the module's object lacks an interface", result);
}

bool ModuleHost::Fail(const wchar_t* what, HRESULT result) {
    problem_ = L"shellhost: ";
    problem_.Append(what);
    problem_.Append(L" (");
    problem_.Append(HexText(result));
    problem_.Append(L")");
    return false;
}
