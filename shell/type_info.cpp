#include "shell/type_info.h"

#include "shell/module_path.h"

#include <oleauto.h>

HRESULT NLoadModuleTypeLibrary(ComPtr<ITypeLib>& library) {
    NString path = NRunningModulePath();
    return LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put());
}

HRESULT NLoadModuleTypeInfo(REFIID iid, ComPtr<ITypeInfo>& info) {
    ComPtr<ITypeLib> library;
    HRESULT result = NLoadModuleTypeLibrary(library);
    if (FAILED(result))
        return result;
    return library->GetTypeInfoOfGuid(iid, info.Put());
}
