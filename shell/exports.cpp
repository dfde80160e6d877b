#include "shell/exports.h"

#include "shell/class_factory.h"
#include "shell/com_guard.h"
#include "shell/com_module.h"
#include "shell/registration.h"

STDAPI DllCanUnloadNow() {
    return NComModule().LockCount() == 0 ? S_OK : S_FALSE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** factory) {
    if (!factory)
        return E_POINTER;
    *factory = nullptr;
    const ComObjectEntry* entry = NComModule().Find(clsid);
    return entry ? NMakeClassFactory(*entry, iid, factory) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllRegisterServer() {
    return ComGuarded([] { return NRegisterModule(); });
}

STDAPI DllUnregisterServer() {
    return ComGuarded([] { return NUnregisterModule(); });
}
