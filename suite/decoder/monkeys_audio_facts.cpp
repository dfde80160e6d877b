// Monkey's Audio: the headers of its SDK (monkeysaudio.com, "APE_DESCRIPTOR",
// "APE_HEADER", and "APE_HEADER_OLD" before 3.98).
#include "suite/decoder/audio_extent.h"
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"

#include <apefile.h>
#include <apeproperties.h>

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr int FirstWithDescriptor = 3980;

struct Level {
    uint32_t Number;
    const wchar_t* Name;
};
constexpr Level Levels[] = {
    {1000, L"Fast"}, {2000, L"Normal"}, {3000, L"High"}, {4000, L"Extra High"}, {5000, L"Insane"},
};

uint32_t LevelOf(TagLib::IOStream& stream, int64_t at, int version) {
    constexpr uint32_t descriptorSizeAt = 8;
    constexpr uint32_t oldLevelAt = 6;
    const ByteVector head = BytesAt(stream, at, 16);
    if (version < FirstWithDescriptor)
        return Little16(head, oldLevelAt);
    return Little16(BytesAt(stream, at + Little32(head, descriptorSizeAt), 2), 0);
}
} // namespace

void MonkeysAudioFacts(AudioFile& file, AudioFacts& facts) {
    const TagLib::APE::Properties& audio = *file.As<TagLib::APE::File>().audioProperties();
    const AudioExtent extent = ExtentOfAudio(file.Stream());
    facts.Channels = static_cast<uint32_t>(audio.channels());
    facts.SampleRate = static_cast<uint32_t>(audio.sampleRate());
    facts.BitsPerSample = static_cast<uint32_t>(audio.bitsPerSample());
    facts.LengthMs = LengthMsOf(audio.sampleFrames(), facts.SampleRate);
    facts.BitRate = BitRateOf(extent.Size(), facts.LengthMs);
    facts.Encoder =
        Text("Monkey's Audio %d.%02d", audio.version() / 1000, audio.version() % 1000 / 10);
    const uint32_t found = LevelOf(file.Stream(), extent.Begin, audio.version());
    for (const Level& level : Levels) {
        if (level.Number == found)
            facts.EncoderSettings = level.Name;
    }
    facts.Quality = Lossless;
    facts.ChannelMapping = PlainChannels(facts.Channels);
}

} // namespace decoder
