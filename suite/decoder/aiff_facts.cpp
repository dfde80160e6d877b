// AIFF and AIFF-C ("Audio Interchange File Format", Apple 1989; "AIFF-C", Apple
// 1991).
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/chunks.h"
#include "suite/decoder/format_facts.h"

#include <aifffile.h>
#include <aiffproperties.h>

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr uint32_t CommonSize = 22; // with the compression of AIFF-C
constexpr uint32_t BitsAt = 6;
constexpr uint32_t CompressionAt = 18;
constexpr uint32_t SoundHeaderSize = 8; // in front of the samples

struct Compression {
    std::string_view Type;
    const char* Name;
    bool IsFloat;
    bool IsLossless;
    uint32_t SamplesPerFrame; // what one counted frame holds
};
constexpr Compression Compressions[] = {
    {"NONE", "PCM", false, true, 1},         {"sowt", "PCM", false, true, 1},
    {"twos", "PCM", false, true, 1},         {"raw ", "PCM", false, true, 1},
    {"in24", "PCM", false, true, 1},         {"in32", "PCM", false, true, 1},
    {"fl32", "PCM", true, true, 1},          {"FL32", "PCM", true, true, 1},
    {"fl64", "PCM", true, true, 1},          {"FL64", "PCM", true, true, 1},
    {"alaw", "A-law", false, false, 1},      {"ALAW", "A-law", false, false, 1},
    {"ulaw", "mu-law", false, false, 1},     {"ULAW", "mu-law", false, false, 1},
    {"ima4", "IMA ADPCM", false, false, 64},
};
constexpr Compression Unknown = {"", "", false, false, 1};

const Compression& CompressionOf(const ByteVector& common, bool isAiffC) {
    if (!isAiffC)
        return Compressions[0];
    for (const Compression& compression : Compressions) {
        if (HasMark(common, compression.Type, CompressionAt))
            return compression;
    }
    return Unknown;
}
} // namespace

void AiffFacts(AudioFile& file, AudioFacts& facts) {
    TagLib::IOStream& stream = file.Stream();
    const auto commonChunk = FindChunk(stream, "COMM", ByteOrder::Big);
    if (!commonChunk)
        return;
    const ByteVector common = BytesAt(stream, commonChunk->Begin, CommonSize);
    const bool isAiffC = HasMark(BytesAt(stream, 8, 4), "AIFC");
    const Compression& compression = CompressionOf(common, isAiffC);
    const auto& audio = *file.As<TagLib::RIFF::AIFF::File>().audioProperties();

    facts.Channels = Big16(common, 0);
    facts.SampleRate = static_cast<uint32_t>(audio.sampleRate());
    facts.IsFloat = compression.IsFloat;
    if (compression.IsLossless)
        facts.BitsPerSample = Big16(common, BitsAt);
    facts.LengthMs =
        LengthMsOf(uint64_t{Big32(common, 2)} * compression.SamplesPerFrame, facts.SampleRate);
    if (compression.IsLossless)
        facts.BitRate = BitRateOf(
            int64_t{facts.Channels} * ((facts.BitsPerSample + 7) / 8) * facts.SampleRate, 1000);
    else if (const auto sound = FindChunk(stream, "SSND", ByteOrder::Big))
        facts.BitRate = BitRateOf(sound->Size - SoundHeaderSize, facts.LengthMs);
    facts.EncoderSettings = AsciiText(compression.Name);
    facts.Quality = compression.IsLossless ? Lossless : LossyConstant;
    facts.ChannelMapping = PlainChannels(facts.Channels);
}

} // namespace decoder
