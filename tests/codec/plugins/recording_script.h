#pragma once

#include "tests/codec/plugins/plugin_script.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

// The script of a test: notes all calls, and answers them as the test says. It
// is in force to the end of the scope; one at a time.
class RecordingScript : public PluginScript {
public:
    RecordingScript();
    ~RecordingScript() override;
    RecordingScript(const RecordingScript&) = delete;
    RecordingScript& operator=(const RecordingScript&) = delete;

    // What a plug-in claims to decode, by the name of its file; none by default.
    std::map<std::wstring, std::vector<std::wstring>> claims;
    // When set, they answer in place of an instance, of the claims, and of 0.
    std::function<void*()> create;
    std::function<int32_t(clDecodesInfo&)> get;
    std::function<int32_t(clAudioInfo&)> open;
    bool throws = false;

    // "<plug-in> <call>" each, in order: "load", "create", "get 0", "destroy",
    // "open", "unload", "misuse".
    std::vector<std::wstring> calls;
    int Count(const std::wstring& call) const;

    // What was handed over at the last call.
    void* logContext = nullptr;
    void* instance = nullptr;
    std::wstring what;
    std::vector<uint8_t> record; // of Get or Open, as it came in

    void Loaded(const wchar_t* plugin) override;
    void Unloaded(const wchar_t* plugin) override;
    void* Create(const wchar_t* plugin, void* logContext) override;
    void Destroy(const wchar_t* plugin, void* instance) override;
    int32_t Get(const wchar_t* plugin, void* instance, const wchar_t* what, void* record) override;
    int32_t Open(const wchar_t* plugin, void* instance, clAudioInfo* info) override;
    void Misused(const wchar_t* plugin) override;
    bool Throws() const override { return throws; }

private:
    void Note(const wchar_t* plugin, const std::wstring& call);

    uintptr_t instancesMade_ = 0;
};
