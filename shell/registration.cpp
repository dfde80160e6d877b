#include "shell/registration.h"

#include "foundation/nstring.h"
#include "resources/resource_ids.h"
#include "shell/com_module.h"
#include "shell/module_path.h"
#include "shell/registrar.h"
#include "shell/type_info.h"

#include <oleauto.h>

#include <iterator>

namespace {

constexpr wchar_t ScriptType[] = L"REGISTRY";
constexpr WORD LibraryMajor = 1;
constexpr WORD LibraryMinor = 0;

enum class Direction { Register, Unregister };

HRESULT RunScript(UINT script, Direction direction) {
    ComPtr<IPlatformRegistrar> registrar;
    HRESULT result = CoCreateInstance(CLSID_PlatformRegistrar, nullptr, CLSCTX_INPROC_SERVER,
                                      IID_IPlatformRegistrar, registrar.PutVoid());
    if (FAILED(result))
        return result;

    NString file = NRunningModulePath();
    // The path lands between single quotes in the script, where a quote of
    // its own has to be doubled: a single one would end the text, and a cut
    // path would be registered without an error.
    NString quoted = file;
    quoted.Replace(L"'", L"''");
    result = registrar->AddReplacement(L"MODULE", quoted.c_str());
    if (FAILED(result))
        return result;
    return direction == Direction::Register
               ? registrar->ResourceRegister(file.c_str(), script, ScriptType)
               : registrar->ResourceUnregister(file.c_str(), script, ScriptType);
}

// The class's key goes whole. A registrar that takes back only what its script
// names, like Wine's, leaves it as soon as it holds anything else.
HRESULT RemoveClassKey(const CLSID& clsid) {
    wchar_t key[] = L"CLSID\\{00000000-0000-0000-0000-000000000000}";
    constexpr int IdRoom = 39;
    wchar_t* id = key + std::size(key) - IdRoom;
    if (!StringFromGUID2(clsid, id, IdRoom))
        return E_UNEXPECTED;
    LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key);
    return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

HRESULT RegisterClasses() {
    HRESULT result = S_OK;
    for (const ComObjectEntry& entry : NComModule().Objects())
        if (SUCCEEDED(result))
            result = RunScript(entry.RegistrarScript, Direction::Register);
    return result;
}

HRESULT UnregisterClasses() {
    HRESULT result = S_OK;
    for (const ComObjectEntry& entry : NComModule().Objects()) {
        if (SUCCEEDED(result))
            result = RunScript(entry.RegistrarScript, Direction::Unregister);
        if (SUCCEEDED(result))
            result = RemoveClassKey(*entry.Clsid);
    }
    return result;
}

HRESULT RegisterLibrary() {
    ComPtr<ITypeLib> library;
    HRESULT result = NLoadModuleTypeLibrary(library);
    if (FAILED(result))
        return result;
    NString path = NRunningModulePath();
    return RegisterTypeLib(library.Get(), path.Text, nullptr);
}

HRESULT UnregisterLibrary() {
    const GUID* library = NComModule().Library();
    if (!library)
        return E_UNEXPECTED;
    return UnRegisterTypeLib(*library, LibraryMajor, LibraryMinor, LOCALE_NEUTRAL, SYS_WIN64);
}

} // namespace

HRESULT NRegisterModule() {
    HRESULT result = RegisterClasses();
    return FAILED(result) ? result : RegisterLibrary();
}

HRESULT NUnregisterModule() {
    HRESULT result = UnregisterClasses();
    return FAILED(result) ? result : UnregisterLibrary();
}
