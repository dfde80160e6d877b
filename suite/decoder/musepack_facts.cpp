// Musepack, stream versions 4 to 8 (trac.musepack.net, "SV7 Specification" and
// "SV8 Specification").
#include "suite/decoder/audio_extent.h"
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"

#include <mpcfile.h>
#include <mpcproperties.h>

#include <iterator>

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr uint32_t HeadSize = 4096; // the packets in front of the audio are short

// By the number of the profile.
constexpr const char* Profiles[] = {
    "",      "",      "",         "",        "",       "Quality 0", "Quality 1", "Telephone",
    "Thumb", "Radio", "Standard", "Extreme", "Insane", "BrainDead", "Quality 9", "Quality 10",
};

NString ProfileText(uint32_t profile) {
    return profile < std::size(Profiles) ? AsciiText(Profiles[profile]) : NString();
}

// A size of 7 bits a byte.
uint64_t TakeSize(const ByteVector& bytes, uint32_t& at) {
    constexpr int most = 9;
    uint64_t size = 0;
    for (int count = 0; count < most; ++count) {
        const uint32_t part = Byte(bytes, at++);
        size = size << 7 | (part & 0x7F);
        if (!(part & 0x80))
            break;
    }
    return size;
}

// "EI": 7 bits of profile in eighths, one of PNS, then three of version.
void TakeEncoderInfo(const ByteVector& head, uint32_t at, AudioFacts& facts) {
    facts.EncoderSettings = ProfileText(Byte(head, at) >> 4);
    facts.Encoder =
        Text("mppenc %u.%u.%u", Byte(head, at + 1), Byte(head, at + 2), Byte(head, at + 3));
}

void TakeStream8(const ByteVector& head, AudioFacts& facts) {
    constexpr uint32_t markSize = 4;
    for (uint32_t at = markSize; at < head.size();) {
        uint32_t content = at + 2;
        const uint64_t size = TakeSize(head, content); // with the packet's head
        if (HasMark(head, "EI", at))
            return TakeEncoderInfo(head, content, facts);
        if (HasMark(head, "AP", at) || size < 3 || size > head.size() - at)
            return;
        at += static_cast<uint32_t>(size);
    }
}

void TakeStream7(const ByteVector& head, AudioFacts& facts) {
    constexpr uint32_t profileAt = 10; // the high half of byte 10
    constexpr uint32_t versionAt = 27;
    facts.EncoderSettings = ProfileText(Byte(head, profileAt) >> 4);
    const uint32_t version = Byte(head, versionAt);
    if (version == 0)
        facts.Encoder = L"mppenc";
    else if (version % 10 == 0)
        facts.Encoder = Text("mppenc %u.%u", version / 100, version / 10 % 10);
    else
        facts.Encoder = Text("mppenc %u.%02u %s", version / 100, version % 100,
                             version % 2 == 0 ? "beta" : "alpha");
}
} // namespace

void MusepackFacts(AudioFile& file, AudioFacts& facts) {
    const TagLib::MPC::Properties& audio = *file.As<TagLib::MPC::File>().audioProperties();
    const AudioExtent extent = ExtentOfAudio(file.Stream());
    const ByteVector head = BytesAt(file.Stream(), extent.Begin, HeadSize);
    facts.Channels = static_cast<uint32_t>(audio.channels());
    facts.SampleRate = static_cast<uint32_t>(audio.sampleRate());
    facts.LengthMs = LengthMsOf(audio.sampleFrames(), facts.SampleRate);
    facts.BitRate = BitRateOf(extent.Size(), facts.LengthMs);
    facts.Quality = LossyVariable;
    facts.ChannelMapping = PlainChannels(facts.Channels);
    if (audio.mpcVersion() >= 8)
        TakeStream8(head, facts);
    else if (audio.mpcVersion() == 7)
        TakeStream7(head, facts);
}

} // namespace decoder
