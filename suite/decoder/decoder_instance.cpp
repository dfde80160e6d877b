#include "suite/decoder/decoder_instance.h"

#include "foundation/nstring.h"
#include "suite/decoder/audio_reading.h"
#include "suite/decoder/extensions.h"

#include <algorithm>

namespace decoder {

namespace {
constexpr uint16_t FormatPcm = 1;

uint16_t Clamped16(uint32_t number) {
    return static_cast<uint16_t>(std::min<uint32_t>(number, UINT16_MAX));
}

void FillNumbers(const AudioReading& reading, clAudioInfo& info) {
    const AudioFacts& facts = reading.Facts;
    const uint64_t frameSize = uint64_t{facts.Channels} * ((facts.BitsPerSample + 7) / 8);
    info.FormatTag = facts.IsFloat ? FormatFloat : FormatPcm;
    info.Channels = Clamped16(facts.Channels);
    info.SampleRate = facts.SampleRate;
    info.BlockAlign = Clamped16(static_cast<uint32_t>(std::min<uint64_t>(frameSize, UINT32_MAX)));
    info.AvgBytesPerSec = static_cast<uint32_t>(
        std::min<uint64_t>(uint64_t{facts.SampleRate} * info.BlockAlign, UINT32_MAX));
    info.BitsPerSample = Clamped16(facts.BitsPerSample);
    info.BitRate = facts.BitRate;
    info.LengthMs = facts.LengthMs;
    info.FileSize = reading.FileSize;
}

// A record without an element has no blob.
void FillBlob(clTagRecord& record, NBuffer& blob) {
    blob.Free();
    if (record.Count() > 0)
        record.Serialise(blob);
}
} // namespace

bool DecoderInstance::Get(const wchar_t* what, void* record) {
    Close();
    if (!what || !record || NString(what).Compare(DecoderGetDecodes) != 0)
        return false;
    auto& decodes = *static_cast<clDecodesInfo*>(record);
    decodes.Extension = ExtensionAt(decodes.Index);
    return decodes.Extension != nullptr;
}

bool DecoderInstance::Open(clAudioInfo& info) {
    Close();
    AudioReading reading;
    if (!info.Path || !ReadAudio(info.Path, reading))
        return false;
    FillNumbers(reading, info);
    if (info.Request & RequestTags)
        FillBlob(reading.Tags, tags_);
    if (info.Request & RequestTechInfo)
        FillBlob(reading.TechInfo, techInfo_);
    info.Tags = tags_.Data;
    info.TagsSize = tags_.Size;
    info.TechInfo = techInfo_.Data;
    info.TechInfoSize = techInfo_.Size;
    return true;
}

void DecoderInstance::Close() {
    tags_.Free();
    techInfo_.Free();
}

} // namespace decoder
