// A decoder plug-in that says about a file what the file tells it to. It
// refuses to be asked in another way than the page does.
#include "codec/audio_info.h"
#include "codec/trace.h"
#include "foundation/unique_handle.h"
#include "foundation/windows_lean.h"
#include "tests/audiopage/plugins/scripted_file.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#define PLUGIN_EXPORT extern "C" __declspec(dllexport)

namespace {
struct Instance {
    std::vector<uint8_t> bytes; // of the file last opened
};

std::vector<uint8_t> ReadWhole(const wchar_t* path) {
    UniqueFileHandle file(CreateFileW(path, GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
    if (!file)
        return {};
    std::vector<uint8_t> bytes(GetFileSize(file.Get(), nullptr));
    DWORD done = 0;
    ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &done, nullptr);
    bytes.resize(done);
    return bytes;
}

bool SwitchesLoggingOff(const void* logContext) {
    const NLogContext zeroed = {};
    return logContext && memcmp(logContext, &zeroed, sizeof(zeroed)) == 0;
}

bool AskedAsThePageDoes(const clAudioInfo& info) {
    clAudioInfo expected = {};
    expected.Path = info.Path;
    expected.Request = 28;
    return memcmp(&info, &expected, sizeof(info)) == 0;
}

void SetNamedEvent(const wchar_t* name) {
    UniqueKernelHandle event(OpenEventW(EVENT_MODIFY_STATE, FALSE, name));
    if (event)
        SetEvent(event.Get());
}

void AwaitNamedEvent(const wchar_t* name) {
    UniqueKernelHandle event(OpenEventW(SYNCHRONIZE, FALSE, name));
    if (event)
        WaitForSingleObject(event.Get(), INFINITE);
}

void Answer(const Instance& instance, const ScriptedFile& script, clAudioInfo& info) {
    const uint8_t* tags = instance.bytes.data() + sizeof(ScriptedFile);
    info.FormatTag = script.formatTag;
    info.Channels = script.channels;
    info.SampleRate = script.sampleRate;
    info.AvgBytesPerSec = script.avgBytesPerSec;
    info.BitsPerSample = script.bitsPerSample;
    info.BitRate = script.bitRate;
    info.LengthMs = script.lengthMs;
    info.FileSize = script.fileSize;
    info.Tags = script.tagsAreNull ? nullptr : tags;
    info.TagsSize = script.tagsSize;
    info.TechInfo = script.techInfoIsNull ? nullptr : tags + script.tagBytes;
    info.TechInfoSize = script.techInfoSize;
}
} // namespace

PLUGIN_EXPORT DecoderCreate Create;
PLUGIN_EXPORT DecoderDestroy Destroy;
PLUGIN_EXPORT DecoderGet Get;
PLUGIN_EXPORT DecoderOpen Open;
PLUGIN_EXPORT DecoderUncalled Set;
PLUGIN_EXPORT DecoderUncalled Close;
PLUGIN_EXPORT DecoderUncalled DecodeBlock;
PLUGIN_EXPORT DecoderUncalled SetPosition;
PLUGIN_EXPORT DecoderUncalled DeleteATag;

PLUGIN_EXPORT void* Create(void* logContext) {
    return SwitchesLoggingOff(logContext) ? new Instance : nullptr;
}

PLUGIN_EXPORT void Destroy(void* instance) {
    delete static_cast<Instance*>(instance);
}

PLUGIN_EXPORT int32_t Get(void*, const wchar_t*, void* record) {
    auto* decodes = static_cast<clDecodesInfo*>(record);
    decodes->Extension = decodes->Index == 0 ? L".scripted" : nullptr;
    return 1;
}

PLUGIN_EXPORT int32_t Open(void* instance, clAudioInfo* info) {
    auto& self = *static_cast<Instance*>(instance);
    self.bytes = ReadWhole(info->Path);
    if (!AskedAsThePageDoes(*info) || self.bytes.size() < sizeof(ScriptedFile))
        return 0;
    ScriptedFile script;
    memcpy(&script, self.bytes.data(), sizeof(script));
    SetNamedEvent(script.eventToSet);
    AwaitNamedEvent(script.eventToAwait);
    if (script.refuses)
        return 0;
    Answer(self, script, *info);
    return 1;
}

// The page calls none of these; a call ends the test.
PLUGIN_EXPORT void Set() {
    abort();
}

PLUGIN_EXPORT void Close() {
    abort();
}

PLUGIN_EXPORT void DecodeBlock() {
    abort();
}

PLUGIN_EXPORT void SetPosition() {
    abort();
}

PLUGIN_EXPORT void DeleteATag() {
    abort();
}
