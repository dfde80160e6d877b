#pragma once

#include "codec/audio_info.h"
#include "codec/tag_record.h"
#include "foundation/unique_handle.h"
#include "suite/decoder/exports.h"
#include "tests/querytrackdata/test_files.h"

#include <string>

// The plug-in as it ships, loaded, with its exports bound by name.
class PlugIn {
public:
    static PlugIn& Get();

    HMODULE Module() const { return module_.Get(); }

    decltype(&TonewrightDecoderCreate) Create;
    decltype(&TonewrightDecoderDestroy) Destroy;
    decltype(&TonewrightDecoderGet) GetRecord;
    decltype(&TonewrightDecoderSet) Set;
    decltype(&TonewrightDecoderOpen) Open;
    decltype(&TonewrightDecoderClose) Close;
    decltype(&TonewrightDecoderDecodeBlock) DecodeBlock;
    decltype(&TonewrightDecoderSetPosition) SetPosition;
    decltype(&TonewrightDecoderDeleteATag) DeleteATag;

private:
    PlugIn();
    template <typename Function>
    void Bind(Function& function, const char* name);

    UniqueModule module_;
};

// An instance of it.
class Instance {
public:
    Instance() : handle_(PlugIn::Get().Create(nullptr)) {}
    ~Instance() { PlugIn::Get().Destroy(handle_); }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    void* Handle() const { return handle_; }
    // As the module asks: zeroed, with the path and the request alone.
    bool Open(const std::wstring& path, clAudioInfo& info, uint32_t request = AudioInfoRequest);

private:
    void* handle_;
};

// One file, opened and read to the end of what the plug-in tells.
struct OpenedFile {
    explicit OpenedFile(const std::wstring& path);

    std::wstring Tag(const wchar_t* name) { return ValueOf(tags, name); }
    std::wstring Tech(const wchar_t* name) { return ValueOf(tech, name); }

    bool opened = false;
    clAudioInfo info = {};
    clTagRecord tags;
    clTagRecord tech;

private:
    // "-" if there is no element of that name.
    static std::wstring ValueOf(clTagRecord& record, const wchar_t* name);
};

std::wstring SamplePath(const std::string& name);      // in build/samples
std::wstring LibraryDataPath(const std::string& name); // of TagLib's own tests
