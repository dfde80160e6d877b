// ASF (Microsoft's "Advanced Systems Format Specification", sections 3.2, 3.3
// and 9.1), with what WMA's codecs put behind the wave format.
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"
#include "suite/tagmap/tag_values.h"

#include <asffile.h>
#include <asfproperties.h>

#include <algorithm>

using namespace std::literals;

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr auto StreamProperties =
    "\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6\x00\xC0\x0C\x20\x53\x65"sv;
constexpr auto AudioMedia = "\x40\x9E\x69\xF8\x4D\x5B\xCF\x11\xA8\xFD\x00\x80\x5F\x5C\x44\x2B"sv;

constexpr uint32_t HeaderSize = 30; // of the header object; then come the others
constexpr uint32_t ObjectHeaderSize = 24;
constexpr uint32_t MostObjects = 1000;
constexpr uint32_t StreamSize = 256; // what is read of one
constexpr uint32_t WaveFormatAt = 78;

enum WaveFormats : uint32_t { WmaPro = 0x162, WmaLossless = 0x163 };

// The stream properties object of the first audio stream, or empty.
ByteVector AudioStream(TagLib::IOStream& stream) {
    const ByteVector header = BytesAt(stream, 0, HeaderSize);
    const uint32_t count = std::min(Little32(header, 24), MostObjects);
    int64_t at = HeaderSize;
    for (uint32_t index = 0; index < count; ++index) {
        const ByteVector object = BytesAt(stream, at, StreamSize);
        const uint64_t size = Little64(object, 16);
        if (HasMark(object, StreamProperties) && HasMark(object, AudioMedia, ObjectHeaderSize))
            return object;
        if (size < ObjectHeaderSize || size > static_cast<uint64_t>(stream.length() - at))
            break;
        at += static_cast<int64_t>(size);
    }
    return {};
}

const wchar_t* QualityOf(uint32_t format, const TagLib::String& description) {
    if (format == WmaLossless)
        return Lossless;
    if (description.find("CBR") >= 0)
        return LossyConstant;
    if (description.find("VBR") >= 0)
        return LossyVariable;
    return Lossy;
}
} // namespace

void AsfFacts(AudioFile& file, AudioFacts& facts) {
    const TagLib::ASF::Properties& audio = *file.As<TagLib::ASF::File>().audioProperties();
    const ByteVector stream = AudioStream(file.Stream());
    const uint32_t format = Little16(stream, WaveFormatAt);
    facts.Channels = Little16(stream, WaveFormatAt + 2);
    facts.SampleRate = Little32(stream, WaveFormatAt + 4);
    facts.BitRate = Little32(stream, WaveFormatAt + 8) * 8;
    facts.LengthMs = audio.lengthInMilliseconds();
    facts.ChannelMapping = PlainChannels(facts.Channels);
    if (format == WmaPro || format == WmaLossless) {
        facts.BitsPerSample = Little16(stream, WaveFormatAt + 18);
        facts.ChannelMapping = ChannelsOfMask(Little32(stream, WaveFormatAt + 20), facts.Channels);
    }
    facts.Encoder = tagmap::ToNString(audio.codecName());
    facts.EncoderSettings = tagmap::ToNString(audio.codecDescription());
    facts.Quality = QualityOf(format, audio.codecDescription());
}

} // namespace decoder
