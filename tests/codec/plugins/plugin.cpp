// A decoder plug-in that does what the loading program's PluginScript says.
// PLUGIN_LACKS_<export> builds one without that export.
#include "foundation/windows_lean.h"
#include "tests/codec/plugins/plugin_script.h"

#include <cstdlib>

namespace {
HINSTANCE thisModule;
constexpr DWORD LongestNumber = 24;
constexpr DWORD LongestPath = 1000;

PluginScript* Script() {
    wchar_t address[LongestNumber];
    DWORD length = GetEnvironmentVariableW(PluginScript::Variable, address, LongestNumber);
    if (length == 0 || length >= LongestNumber)
        return nullptr;
    return reinterpret_cast<PluginScript*>(_wcstoui64(address, nullptr, 10));
}

// The script, for a call that may be told to throw.
PluginScript* ScriptOfCall() {
    PluginScript* script = Script();
    if (script && script->Throws())
        throw 1;
    return script;
}

class ThisPlugin {
public:
    ThisPlugin() {
        GetModuleFileNameW(thisModule, path_, LongestPath);
        for (const wchar_t* unit = path_; *unit; ++unit) {
            if (*unit == L'\\')
                name_ = unit + 1;
        }
    }
    const wchar_t* Name() const { return name_; }

private:
    wchar_t path_[LongestPath] = {};
    const wchar_t* name_ = path_;
};

void TellMisuse() {
    if (PluginScript* script = Script())
        script->Misused(ThisPlugin().Name());
}
} // namespace

#define PLUGIN_EXPORT extern "C" __declspec(dllexport)

#ifndef PLUGIN_LACKS_Create
PLUGIN_EXPORT void* Create(void* logContext);
void* Create(void* logContext) {
    PluginScript* script = ScriptOfCall();
    return script ? script->Create(ThisPlugin().Name(), logContext) : nullptr;
}
#endif

#ifndef PLUGIN_LACKS_Destroy
PLUGIN_EXPORT void Destroy(void* instance);
void Destroy(void* instance) {
    if (PluginScript* script = ScriptOfCall())
        script->Destroy(ThisPlugin().Name(), instance);
}
#endif

#ifndef PLUGIN_LACKS_Get
PLUGIN_EXPORT int32_t Get(void* instance, const wchar_t* what, void* record);
int32_t Get(void* instance, const wchar_t* what, void* record) {
    PluginScript* script = ScriptOfCall();
    return script ? script->Get(ThisPlugin().Name(), instance, what, record) : 0;
}
#endif

#ifndef PLUGIN_LACKS_Open
PLUGIN_EXPORT int32_t Open(void* instance, clAudioInfo* info);
int32_t Open(void* instance, clAudioInfo* info) {
    PluginScript* script = ScriptOfCall();
    return script ? script->Open(ThisPlugin().Name(), instance, info) : 0;
}
#endif

#define UNCALLED_EXPORT(name)                                                                      \
    PLUGIN_EXPORT void name();                                                                     \
    void name() {                                                                                  \
        TellMisuse();                                                                              \
    }

#ifndef PLUGIN_LACKS_Set
UNCALLED_EXPORT(Set)
#endif
#ifndef PLUGIN_LACKS_Close
UNCALLED_EXPORT(Close)
#endif
#ifndef PLUGIN_LACKS_DecodeBlock
UNCALLED_EXPORT(DecodeBlock)
#endif
#ifndef PLUGIN_LACKS_SetPosition
UNCALLED_EXPORT(SetPosition)
#endif
#ifndef PLUGIN_LACKS_DeleteATag
UNCALLED_EXPORT(DeleteATag)
#endif

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*);
BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    thisModule = instance;
    PluginScript* script = Script();
    if (script && reason == DLL_PROCESS_ATTACH)
        script->Loaded(ThisPlugin().Name());
    if (script && reason == DLL_PROCESS_DETACH)
        script->Unloaded(ThisPlugin().Name());
    return TRUE;
}
