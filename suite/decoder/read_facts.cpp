#include "suite/decoder/format_facts.h"

#include <algorithm>

namespace decoder {

namespace {
using tagmap::Format;

struct Reader {
    Format Kind;
    void (*Read)(AudioFile& file, AudioFacts& facts);
};
constexpr Reader Readers[] = {
    {Format::Mpeg, MpegFacts},
    {Format::Flac, FlacFacts},
    {Format::OggVorbis, OggFacts},
    {Format::OggOpus, OggFacts},
    {Format::OggSpeex, OggFacts},
    {Format::OggFlac, OggFacts},
    {Format::Mp4, Mp4Facts},
    {Format::Asf, AsfFacts},
    {Format::Wav, WavFacts},
    {Format::Aiff, AiffFacts},
    {Format::MonkeysAudio, MonkeysAudioFacts},
    {Format::WavPack, WavPackFacts},
    {Format::Musepack, MusepackFacts},
    {Format::TrueAudio, TrueAudioFacts},
    {Format::ImpulseTracker, ModuleFacts},
    {Format::ScreamTracker, ModuleFacts},
    {Format::FastTracker, ModuleFacts},
    {Format::Module, ModuleFacts},
};
// Beyond these are numbers of damaged headers alone: channels of the largest
// formats, samples of double precision, and four times the rate of DSD512.
bool ArePlausible(const AudioFacts& facts) {
    constexpr uint32_t mostChannels = 255;
    constexpr uint32_t mostBits = 64;
    constexpr uint32_t mostRate = 100'000'000;
    return facts.Channels > 0 && facts.Channels <= mostChannels && facts.BitsPerSample > 0 &&
           facts.BitsPerSample <= mostBits && facts.SampleRate <= mostRate;
}
} // namespace

bool ReadFacts(AudioFile& file, AudioFacts& facts) {
    if (!file.IsValid() || !file.File().audioProperties())
        return false;
    for (const Reader& reader : Readers) {
        if (reader.Kind != file.Kind())
            continue;
        reader.Read(file, facts);
        // The library counts milliseconds in 32 bits; a damaged header overflows.
        facts.LengthMs = std::max<int64_t>(facts.LengthMs, 0);
        return ArePlausible(facts) && (facts.SampleRate > 0 || reader.Read == ModuleFacts);
    }
    return false;
}

} // namespace decoder
