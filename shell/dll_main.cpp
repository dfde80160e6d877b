#include "foundation/module_instance.h"
#include "resources/resource_ids.h"
#include "shell/com_module.h"
#include "shell/exports.h"
#include "shell/shell_object.h"

namespace {

constexpr ComObjectEntry ObjectTable[] = {
    {&CLSID_tNWIShell, &CtNWIShell::CreateInstance, IDR_REGISTRAR_SCRIPT},
};

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    NSetModuleInstance(instance);
    if (reason == DLL_PROCESS_ATTACH) {
        NComModule().Start(ObjectTable, LIBID_TNWSHELLLib);
        // Nothing is done per thread. The call fails for a module with static
        // thread storage, which is no harm.
        DisableThreadLibraryCalls(instance);
    } else if (reason == DLL_PROCESS_DETACH) {
        NComModule().End();
    }
    return TRUE;
}
