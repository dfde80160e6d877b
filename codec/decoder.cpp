#include "codec/decoder.h"

#include "foundation/nmemory.h"

namespace {
// The result of a call into a plug-in, or null or 0 if it lets an exception out.
template <typename Function, typename... Arguments>
auto Guarded(Function* function, Arguments... arguments) -> decltype(function(arguments...)) {
    try {
        return function(arguments...);
    } catch (...) {
        return decltype(function(arguments...))();
    }
}
} // namespace

cltNDecoder::cltNDecoder() {
    cltNDecoder::Load(nullptr);
}

cltNDecoder::~cltNDecoder() {
    Unload();
}

bool cltNDecoder::Load(const wchar_t* path) {
    // 1.
    if (Module)
        return Loaded;
    // 2.
    Loaded = true;
    if (path)
        Loaded = LoadModule(path);
    // 3. All are tried, whatever is missing before.
    const char* const* name = DecoderExportNames;
    Loaded &= Bind(*name++, Entry.Create);
    Loaded &= Bind(*name++, Entry.Destroy);
    Loaded &= Bind(*name++, Entry.Get);
    Loaded &= Bind(*name++, Entry.Set);
    Loaded &= Bind(*name++, Entry.Open);
    Loaded &= Bind(*name++, Entry.Close);
    Loaded &= Bind(*name++, Entry.DecodeBlock);
    Loaded &= Bind(*name++, Entry.SetPosition);
    Loaded &= Bind(*name++, Entry.DeleteATag);
    // 4.
    return Loaded;
}

bool cltNDecoder::LoadFor(const NString& path, const NString& extension) {
    // The arguments may be the members that Unload empties.
    NString newPath(path.Text);
    NString newExtension(extension.Text);
    Unload();
    if (!Load(newPath.Text))
        return false;
    Extension = newExtension;
    Path = newPath;
    return true;
}

void cltNDecoder::Unload() {
    DestroyInstance();
    UnloadModule();
    cltNDecoder::Load(nullptr);
    Extension = L"";
    Path = L"";
}

bool cltNDecoder::CreateInstance(NLogContext* logContext) {
    DestroyInstance();
    if (Entry.Create)
        Handle = Guarded(Entry.Create, static_cast<void*>(logContext));
    return Handle != nullptr;
}

void cltNDecoder::DestroyInstance() {
    if (Handle && Entry.Destroy)
        Guarded(Entry.Destroy, Handle);
    Handle = nullptr;
}

int32_t cltNDecoder::Get(const wchar_t* what, void* record) {
    return Handle && Entry.Get ? Guarded(Entry.Get, Handle, what, record) : 0;
}

int32_t cltNDecoder::Open(clAudioInfo* info) {
    return Handle && Entry.Open ? Guarded(Entry.Open, Handle, info) : 0;
}

void TakeDecoderRecord(const void* data, uint32_t size, clTagRecord& record) {
    size_t readable = size > INT32_MAX ? 0 : NReadableBytes(data, size);
    record.Deserialise(data, static_cast<int>(readable));
}
