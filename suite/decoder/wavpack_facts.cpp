// WavPack 4 and 5 ("WavPack 4 & 5 Binary File / Block Format", wavpack.com).
#include "suite/decoder/audio_extent.h"
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"

#include <wavpackfile.h>
#include <wavpackproperties.h>

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr uint32_t BlockHeaderSize = 32;
constexpr uint32_t FlagsAt = 24;
constexpr uint32_t LargestSearched = 64 * 1024; // of the first block

enum BlockFlags : uint32_t { IsHybrid = 8, IsFloat = 0x80, IsDsd = 0x80000000 };
enum SubBlocks : uint32_t { ChannelInfo = 0x0D, Configuration = 0x25 };
enum ConfigurationFlags : uint32_t { Fast = 0x200, High = 0x800, VeryHigh = 0x1000 };

// The content of a sub-block of the first block, or empty.
ByteVector SubBlock(const ByteVector& block, uint32_t wanted) {
    constexpr uint32_t idBits = 0x3F;
    constexpr uint32_t isOdd = 0x40;
    constexpr uint32_t isLarge = 0x80;
    uint32_t at = BlockHeaderSize;
    while (at + 2 <= block.size()) {
        const uint32_t id = Byte(block, at);
        uint32_t size = Byte(block, at + 1) * 2;
        at += 2;
        if (id & isLarge) {
            size += Little16(block, at) << 9;
            at += 2;
        }
        if ((id & idBits) == wanted)
            return block.mid(at, size - (id & isOdd && size > 0 ? 1 : 0));
        at += size;
    }
    return {};
}

const char* ModeOf(const ByteVector& configuration) {
    const uint32_t flags = Byte(configuration, 0) << 8 | Byte(configuration, 1) << 16;
    if (flags & VeryHigh)
        return "Very High";
    if (flags & High)
        return "High";
    return flags & Fast ? "Fast" : "Normal";
}

// A number of channels, then the mask in as many bytes as it needs.
uint32_t MaskOf(const ByteVector& info) {
    uint32_t mask = 0;
    constexpr uint32_t most = 4;
    for (uint32_t index = 1; index < info.size() && index <= most; ++index)
        mask |= Byte(info, index) << 8 * (index - 1);
    return mask;
}
} // namespace

void WavPackFacts(AudioFile& file, AudioFacts& facts) {
    const TagLib::WavPack::Properties& audio = *file.As<TagLib::WavPack::File>().audioProperties();
    const AudioExtent extent = ExtentOfAudio(file.Stream());
    const ByteVector block = BytesAt(file.Stream(), extent.Begin, LargestSearched);
    const uint32_t flags = Little32(block, FlagsAt);
    facts.Channels = static_cast<uint32_t>(audio.channels());
    facts.SampleRate = static_cast<uint32_t>(audio.sampleRate());
    facts.BitsPerSample = static_cast<uint32_t>(audio.bitsPerSample());
    facts.IsFloat = (flags & IsFloat) != 0;
    facts.LengthMs = audio.lengthInMilliseconds();
    facts.BitRate = BitRateOf(extent.Size(), facts.LengthMs);
    facts.Encoder =
        Text("WavPack, stream version %d.%02d", audio.version() >> 8, audio.version() & 0xFF);
    const bool isHybrid = (flags & IsHybrid) != 0;
    facts.EncoderSettings = Text("%s%s%s", ModeOf(SubBlock(block, Configuration)),
                                 isHybrid ? ", hybrid" : "", flags & IsDsd ? ", DSD" : "");
    facts.Quality = isHybrid ? Lossy : Lossless;
    facts.ChannelMapping = ChannelsOfMask(MaskOf(SubBlock(block, ChannelInfo)), facts.Channels);
}

} // namespace decoder
