#include "suite/decoder/format_facts.h"

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
} // namespace

bool ReadFacts(AudioFile& file, AudioFacts& facts) {
    if (!file.IsValid() || !file.File().audioProperties())
        return false;
    for (const Reader& reader : Readers) {
        if (reader.Kind != file.Kind())
            continue;
        reader.Read(file, facts);
        return facts.Channels > 0 && (facts.SampleRate > 0 || reader.Read == ModuleFacts);
    }
    return false;
}

} // namespace decoder
