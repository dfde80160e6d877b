// True Audio ("TTA lossless audio codec", section "Format header").
#include "suite/decoder/audio_extent.h"
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"

#include <trueaudiofile.h>
#include <trueaudioproperties.h>

namespace decoder {

void TrueAudioFacts(AudioFile& file, AudioFacts& facts) {
    constexpr uint32_t headSize = 22;
    constexpr uint32_t floatSamples = 3;
    const auto& audio = *file.As<TagLib::TrueAudio::File>().audioProperties();
    const AudioExtent extent = ExtentOfAudio(file.Stream());
    const TagLib::ByteVector head = BytesAt(file.Stream(), extent.Begin, headSize);
    facts.Channels = static_cast<uint32_t>(audio.channels());
    facts.SampleRate = static_cast<uint32_t>(audio.sampleRate());
    facts.BitsPerSample = static_cast<uint32_t>(audio.bitsPerSample());
    facts.IsFloat = Little16(head, 4) == floatSamples;
    facts.LengthMs = LengthMsOf(audio.sampleFrames(), facts.SampleRate);
    facts.BitRate = BitRateOf(extent.Size(), facts.LengthMs);
    facts.Encoder = Text("True Audio %d", audio.ttaVersion());
    facts.Quality = Lossless;
    facts.ChannelMapping = PlainChannels(facts.Channels);
}

} // namespace decoder
