// Feeds bytes, as a file, to the decoder plug-in: the format is found, the tags
// are read by the library, and the facts by our own readers. What comes out must
// be within the bounds that callers rely on.
#include "codec/tag_record.h"
#include "suite/decoder/decoder_instance.h"
#include "suite/tagmap/file_stream.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {
void MustBe(bool isTrue) {
    if (!isTrue)
        abort();
}

void CheckBlob(const void* blob, uint32_t size) {
    MustBe((blob == nullptr) == (size == 0));
    clTagRecord record;
    record.Deserialise(blob, static_cast<int>(size));
    MustBe((record.Count() == 0) == (size == 0));
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    tagmap::TheFile = {reinterpret_cast<const char*>(data), static_cast<int64_t>(size)};
    decoder::DecoderInstance instance;
    clAudioInfo info = {};
    info.Path = L"C:\\fuzzed.mp3";
    info.Request = AudioInfoRequest;
    if (!instance.Open(info))
        return 0;
    MustBe(info.Channels > 0 && info.Channels <= 255 && info.BitsPerSample <= 64);
    MustBe(info.LengthMs >= 0 && info.FileSize == static_cast<int64_t>(size));
    CheckBlob(info.Tags, info.TagsSize);
    CheckBlob(info.TechInfo, info.TechInfoSize);
    return 0;
}
