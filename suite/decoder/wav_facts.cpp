// WAV (Microsoft's "Multimedia Programming Interface and Data Specifications"
// and "Multiple Channel Audio Data and WAVE Files").
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/chunks.h"
#include "suite/decoder/format_facts.h"

namespace decoder {

using TagLib::ByteVector;

namespace {
enum WaveFormats : uint32_t {
    Pcm = 1,
    Adpcm = 2,
    Float = 3,
    ALaw = 6,
    MuLaw = 7,
    ImaAdpcm = 0x11,
    Gsm = 0x31,
    Mp3 = 0x55,
    Extensible = 0xFFFE
};

struct NamedFormat {
    uint32_t Format;
    const char* Name;
};
constexpr NamedFormat NamedFormats[] = {
    {Pcm, "PCM"},      {Adpcm, "Microsoft ADPCM"}, {Float, "PCM"},    {ALaw, "A-law"},
    {MuLaw, "mu-law"}, {ImaAdpcm, "IMA ADPCM"},    {Gsm, "GSM 6.10"}, {Mp3, "MP3"},
};

constexpr uint32_t FormatSize = 40; // of an extensible one
constexpr uint32_t MaskAt = 20;
constexpr uint32_t SubFormatAt = 24;

const char* NameOf(uint32_t format) {
    for (const NamedFormat& named : NamedFormats) {
        if (named.Format == format)
            return named.Name;
    }
    return "";
}

// A size of 0 was left by a program that never learned it.
int64_t SizeOfData(TagLib::IOStream& stream, const Chunk& data) {
    return data.Size > 0 ? data.Size : stream.length() - data.Begin;
}

// By the chunk "fact" where samples have no size of their own.
int64_t LengthOf(TagLib::IOStream& stream, int64_t dataSize, uint32_t bytesPerSecond,
                 uint32_t sampleRate) {
    if (const auto fact = FindChunk(stream, "fact", ByteOrder::Little)) {
        const uint32_t samples = Little32(BytesAt(stream, fact->Begin, 4), 0);
        if (samples > 0)
            return LengthMsOf(samples, sampleRate);
    }
    return LengthMsOf(static_cast<uint64_t>(dataSize), bytesPerSecond);
}
} // namespace

void WavFacts(AudioFile& file, AudioFacts& facts) {
    TagLib::IOStream& stream = file.Stream();
    const auto formatChunk = FindChunk(stream, "fmt ", ByteOrder::Little);
    const auto data = FindChunk(stream, "data", ByteOrder::Little);
    if (!formatChunk)
        return;
    const ByteVector bytes = BytesAt(stream, formatChunk->Begin, FormatSize);
    const bool isExtensible = Little16(bytes, 0) == Extensible;
    const uint32_t format = Little16(bytes, isExtensible ? SubFormatAt : 0);
    const uint32_t bytesPerSecond = Little32(bytes, 8);
    const uint32_t blockAlign = Little16(bytes, 12);
    const int64_t dataSize = data ? SizeOfData(stream, *data) : 0;
    const bool isLinear = format == Pcm || format == Float;

    facts.Channels = Little16(bytes, 2);
    facts.SampleRate = Little32(bytes, 4);
    facts.IsFloat = format == Float;
    if (isLinear)
        facts.BitsPerSample = Little16(bytes, 14);
    if (isLinear && blockAlign > 0)
        facts.LengthMs = LengthMsOf(static_cast<uint64_t>(dataSize) / blockAlign, facts.SampleRate);
    else
        facts.LengthMs = LengthOf(stream, dataSize, bytesPerSecond, facts.SampleRate);
    facts.BitRate =
        bytesPerSecond > 0 ? BitRateOf(bytesPerSecond, 1000) : BitRateOf(dataSize, facts.LengthMs);
    facts.EncoderSettings = AsciiText(NameOf(format));
    facts.Quality = isLinear ? Lossless : format == Mp3 ? Lossy : LossyConstant;
    facts.ChannelMapping = isExtensible ? ChannelsOfMask(Little32(bytes, MaskAt), facts.Channels)
                                        : PlainChannels(facts.Channels);
}

} // namespace decoder
