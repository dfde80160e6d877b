#include "tests/codec/plugins/recording_script.h"

#include "foundation/windows_lean.h"

#include <algorithm>

RecordingScript::RecordingScript() {
    PluginScript* script = this;
    std::wstring address = std::to_wstring(reinterpret_cast<uintptr_t>(script));
    SetEnvironmentVariableW(Variable, address.c_str());
}

RecordingScript::~RecordingScript() {
    SetEnvironmentVariableW(Variable, nullptr);
}

int RecordingScript::Count(const std::wstring& call) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
}

void RecordingScript::Note(const wchar_t* plugin, const std::wstring& call) {
    calls.push_back(std::wstring(plugin) + L" " + call);
}

void RecordingScript::Loaded(const wchar_t* plugin) {
    Note(plugin, L"load");
}

void RecordingScript::Unloaded(const wchar_t* plugin) {
    Note(plugin, L"unload");
}

void* RecordingScript::Create(const wchar_t* plugin, void* context) {
    Note(plugin, L"create");
    logContext = context;
    // Instances are told apart by their numbers; nobody looks behind them.
    return create ? create() : reinterpret_cast<void*>(++instancesMade_);
}

void RecordingScript::Destroy(const wchar_t* plugin, void* dropped) {
    Note(plugin, L"destroy");
    instance = dropped;
}

int32_t RecordingScript::Get(const wchar_t* plugin, void* asked, const wchar_t* item,
                             void* wanted) {
    clDecodesInfo& info = *static_cast<clDecodesInfo*>(wanted);
    Note(plugin, L"get " + std::to_wstring(info.Index));
    instance = asked;
    what = item;
    const uint8_t* bytes = static_cast<const uint8_t*>(wanted);
    record.assign(bytes, bytes + sizeof(info));
    // The caller must not lean on what the plug-in leaves in the record.
    uint32_t index = info.Index;
    info.Index = 0xFFFF;
    if (get)
        return get(info);
    const std::vector<std::wstring>& extensions = claims[plugin];
    info.Extension = index < extensions.size() ? extensions[index].c_str() : nullptr;
    return 1;
}

int32_t RecordingScript::Open(const wchar_t* plugin, void* asked, clAudioInfo* info) {
    Note(plugin, L"open");
    instance = asked;
    const uint8_t* bytes = reinterpret_cast<const uint8_t*>(info);
    record.assign(bytes, bytes + sizeof(*info));
    return open ? open(*info) : 0;
}

void RecordingScript::Misused(const wchar_t* plugin) {
    Note(plugin, L"misuse");
}
