// FLAC (RFC 9639).
#include "suite/decoder/audio_extent.h"
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"
#include "suite/decoder/xiph_comment.h"

#include <flacfile.h>
#include <flacproperties.h>

namespace decoder {

namespace {
constexpr uint32_t MarkSize = 4;
constexpr uint32_t BlockHeaderSize = 4;
constexpr uint32_t LastBlock = 0x80;

// Where the frames begin, behind the metadata blocks (section 8.1).
int64_t BeginOfFrames(TagLib::IOStream& stream, int64_t at) {
    at += MarkSize;
    for (;;) {
        const TagLib::ByteVector header = BytesAt(stream, at, BlockHeaderSize);
        if (header.size() < BlockHeaderSize)
            return at;
        at += BlockHeaderSize + Big24(header, 1);
        if (Byte(header, 0) & LastBlock)
            return at;
    }
}
} // namespace

void FlacFacts(AudioFile& file, AudioFacts& facts) {
    auto& flac = file.As<TagLib::FLAC::File>();
    const TagLib::FLAC::Properties& audio = *flac.audioProperties();
    facts.Channels = static_cast<uint32_t>(audio.channels());
    facts.SampleRate = static_cast<uint32_t>(audio.sampleRate());
    facts.BitsPerSample = static_cast<uint32_t>(audio.bitsPerSample());
    facts.LengthMs = LengthMsOf(audio.sampleFrames(), facts.SampleRate);
    const AudioExtent extent = ExtentOfAudio(file.Stream());
    facts.BitRate =
        BitRateOf(extent.End - BeginOfFrames(file.Stream(), extent.Begin), facts.LengthMs);
    facts.Quality = Lossless;
    facts.ChannelMapping = FlacChannels(facts.Channels);
    if (flac.hasXiphComment())
        TakeFlacComment(*flac.xiphComment(), facts);
}

} // namespace decoder
