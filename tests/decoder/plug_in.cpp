#include "tests/decoder/plug_in.h"

#include <gtest/gtest.h>

PlugIn& PlugIn::Get() {
    static PlugIn plugIn;
    return plugIn;
}

PlugIn::PlugIn()
    : module_(
          LoadLibraryW(HostPath(TONEWRIGHT_SUITE_DIR "/decoder/TonewrightDecoder.dll").c_str())) {
    EXPECT_TRUE(module_) << "error " << GetLastError();
    Bind(Create, "Create");
    Bind(Destroy, "Destroy");
    Bind(GetRecord, "Get");
    Bind(Set, "Set");
    Bind(Open, "Open");
    Bind(Close, "Close");
    Bind(DecodeBlock, "DecodeBlock");
    Bind(SetPosition, "SetPosition");
    Bind(DeleteATag, "DeleteATag");
}

template <typename Function>
void PlugIn::Bind(Function& function, const char* name) {
    function = reinterpret_cast<Function>(GetProcAddress(module_.Get(), name));
    EXPECT_TRUE(function) << name;
}

bool Instance::Open(const std::wstring& path, clAudioInfo& info, uint32_t request) {
    info = {};
    info.Path = path.c_str();
    info.Request = request;
    return PlugIn::Get().Open(handle_, &info) != 0;
}

OpenedFile::OpenedFile(const std::wstring& path) {
    Instance instance;
    opened = instance.Open(path, info);
    tags.Deserialise(info.Tags, static_cast<int>(info.TagsSize));
    tech.Deserialise(info.TechInfo, static_cast<int>(info.TechInfoSize));
}

std::wstring OpenedFile::ValueOf(clTagRecord& record, const wchar_t* name) {
    const clTagElement* found = record.Find(name);
    return found ? found->Value.c_str() : L"-";
}

std::wstring SamplePath(const std::string& name) {
    return HostPath((TONEWRIGHT_SOURCE_DIR "/build/samples/" + name).c_str());
}

std::wstring LibraryDataPath(const std::string& name) {
    return HostPath((TONEWRIGHT_SOURCE_DIR "/build/taglib/source/tests/data/" + name).c_str());
}
