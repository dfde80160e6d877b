// MP4 files: AAC and other codecs (ISO/IEC 14496-12 and 14496-14), ALAC (Apple's
// "Apple Lossless Magic Cookie Description").
#include "suite/decoder/aac_config.h"
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"
#include "suite/decoder/mp4_track.h"

#include <algorithm>

namespace decoder {

using TagLib::ByteVector;

namespace {
// Places in a sample entry of sound, from its size on.
constexpr uint32_t TypeAt = 4;
constexpr uint32_t VersionAt = 16;
constexpr uint32_t ChannelsAt = 24;
constexpr uint32_t BitsAt = 26;
constexpr uint32_t RateAt = 32; // 16 bits before the point, which are those that count
constexpr uint32_t EntrySize = 36;
constexpr uint32_t SoundVersion1Size = 16; // what QuickTime's versions have more
constexpr uint32_t SoundVersion2Size = 36;

struct Codec {
    std::string_view Type;
    const char* Name;
    const wchar_t* Quality;
};
constexpr Codec Codecs[] = {
    {"alac", "ALAC", Lossless},      {"fLaC", "FLAC", Lossless}, {"lpcm", "PCM", Lossless},
    {"sowt", "PCM", Lossless},       {"twos", "PCM", Lossless},  {"Opus", "Opus", Lossy},
    {"ac-3", "AC-3", LossyConstant}, {"ec-3", "E-AC-3", Lossy},  {"samr", "AMR", Lossy},
    {"sawb", "AMR-WB", Lossy},       {".mp3", "MP3", Lossy},
};

// The content of the box of that type in a sample entry, or empty.
ByteVector ChildOf(const ByteVector& entry, std::string_view type) {
    const uint32_t version = Big16(entry, VersionAt);
    const uint32_t size = std::min(Big32(entry, 0), entry.size());
    uint32_t at = EntrySize + (version == 1   ? SoundVersion1Size
                               : version == 2 ? SoundVersion2Size
                                              : 0);
    while (at + 8 <= size) {
        const uint32_t childSize = Big32(entry, at);
        if (childSize < 8 || childSize > size - at)
            break;
        if (HasMark(entry, type, at + 4))
            return entry.mid(at + 8, childSize - 8);
        // QuickTime has them one box further in.
        at += HasMark(entry, "wave", at + 4) ? 8 : childSize;
    }
    return {};
}

// The descriptors of "esds" (ISO/IEC 14496-1, section 7.2.6).
class Descriptors {
public:
    explicit Descriptors(const ByteVector& esds) : bytes_(esds) {}

    // Steps into the descriptor of that tag, if it comes next.
    bool Enter(uint32_t tag) {
        if (Byte(bytes_, at_) != tag)
            return false;
        constexpr int mostSizeBytes = 4;
        ++at_;
        size_ = 0;
        for (int count = 0; count < mostSizeBytes; ++count) {
            const uint32_t part = Byte(bytes_, at_++);
            size_ = size_ << 7 | (part & 0x7F);
            if (!(part & 0x80))
                break;
        }
        return true;
    }
    uint32_t Take(uint32_t bytes) {
        uint32_t number = 0;
        for (; bytes > 0; --bytes)
            number = number << 8 | Byte(bytes_, at_++);
        return number;
    }
    ByteVector Rest() const { return bytes_.mid(at_, size_); }

private:
    const ByteVector& bytes_;
    uint32_t at_ = 4; // behind the version and the flags
    uint32_t size_ = 0;
};

void TakeAac(const ByteVector& specific, AudioFacts& facts) {
    const AacConfig config = ReadAacConfig(specific);
    if (config.SampleRate > 0)
        facts.SampleRate = config.SampleRate;
    constexpr uint32_t sevenPlusOne = 7;
    if (config.Configuration > 0 && config.Configuration <= sevenPlusOne)
        facts.Channels = config.Configuration == sevenPlusOne ? 8 : config.Configuration;
    facts.ChannelMapping = AacChannels(config.Configuration);
    if (config.HasPs && config.Configuration == 1) {
        facts.Channels = 2;
        facts.ChannelMapping = PlainChannels(2);
    }
    facts.EncoderSettings = AsciiText(AacName(config));
}

void TakeEsds(const ByteVector& esds, AudioFacts& facts) {
    enum Tags : uint32_t { Stream = 3, Decoder = 4, Specific = 5 };
    enum ObjectTypes : uint32_t { Aac = 0x40, Mpeg2Aac = 0x66, Mpeg2AacSsr = 0x68 };
    Descriptors reader(esds);
    if (!reader.Enter(Stream))
        return;
    reader.Take(2);
    constexpr uint32_t dependsOn = 0x80;
    constexpr uint32_t hasUrl = 0x40;
    constexpr uint32_t hasClock = 0x20;
    const uint32_t flags = reader.Take(1);
    if (flags & hasUrl)
        return;
    reader.Take((flags & dependsOn ? 2U : 0U) + (flags & hasClock ? 2U : 0U));
    if (!reader.Enter(Decoder))
        return;
    const uint32_t type = reader.Take(1);
    reader.Take(1 + 3); // kind of stream, size of buffer
    reader.Take(4);     // largest bit rate
    const uint32_t average = reader.Take(4);
    if (facts.BitRate == 0)
        facts.BitRate = average;
    const bool isAac = type == Aac || (type >= Mpeg2Aac && type <= Mpeg2AacSsr);
    if (isAac && reader.Enter(Specific))
        TakeAac(reader.Rest(), facts);
    else if (!isAac)
        facts.EncoderSettings = L"MP3";
}

void TakeAlac(const ByteVector& cookie, AudioFacts& facts) {
    constexpr uint32_t cookieSize = 28; // behind the version and the flags, too
    if (cookie.size() < cookieSize)
        return;
    facts.BitsPerSample = Byte(cookie, 9);
    facts.Channels = Byte(cookie, 13);
    facts.SampleRate = Big32(cookie, 24);
    facts.ChannelMapping = AlacChannels(facts.Channels);
}

// STREAMINFO in its box (github.com/xiph/flac, doc/isoflac.txt).
void TakeFlac(const ByteVector& box, AudioFacts& facts) {
    constexpr uint32_t rateAt = 18; // 20 bits of rate, 3 of channels, 5 of bits
    const uint32_t packed = Big32(box, rateAt);
    if (packed == 0)
        return;
    facts.SampleRate = packed >> 12;
    facts.Channels = (packed >> 9 & 7) + 1;
    facts.BitsPerSample = (packed >> 4 & 31) + 1;
    facts.ChannelMapping = FlacChannels(facts.Channels);
}

// "dac3" and "dec3" (ETSI TS 102 366, annex F): the sample entry itself always
// says two channels.
void TakeAc3(const ByteVector& box, uint32_t modeAt, AudioFacts& facts) {
    constexpr uint32_t channels[] = {2, 1, 2, 3, 3, 4, 4, 5};
    if (box.size() * 8 < modeAt + 4)
        return;
    const uint32_t bits = Big16(box + ByteVector(1, 0), modeAt / 8) >> (12 - modeAt % 8) & 15;
    facts.Channels = channels[bits >> 1] + (bits & 1);
    facts.ChannelMapping = PlainChannels(facts.Channels);
}

void TakeCodec(const ByteVector& entry, AudioFacts& facts) {
    if (HasMark(entry, "mp4a", TypeAt)) {
        facts.Quality = Lossy;
        TakeEsds(ChildOf(entry, "esds"), facts);
        return;
    }
    for (const Codec& codec : Codecs) {
        if (!HasMark(entry, codec.Type, TypeAt))
            continue;
        facts.Quality = codec.Quality;
        facts.EncoderSettings = AsciiText(codec.Name);
        if (facts.Quality == Lossless)
            facts.BitsPerSample = Big16(entry, BitsAt);
    }
    if (HasMark(entry, "alac", TypeAt))
        TakeAlac(ChildOf(entry, "alac"), facts);
    else if (HasMark(entry, "fLaC", TypeAt))
        TakeFlac(ChildOf(entry, "dfLa"), facts);
    else if (HasMark(entry, "ac-3", TypeAt))
        TakeAc3(ChildOf(entry, "dac3"), 10, facts);
    else if (HasMark(entry, "ec-3", TypeAt))
        TakeAc3(ChildOf(entry, "dec3"), 28, facts);
}
} // namespace

void Mp4Facts(AudioFile& file, AudioFacts& facts) {
    const std::optional<Mp4Track> track = ReadMp4Track(file.Stream());
    if (!track)
        return;
    facts.LengthMs = track->PlayedMs;
    const int64_t wholeMs = LengthMsOf(track->Duration, track->TimeScale);
    const uint32_t counted = BitRateOf(track->Bytes, wholeMs);
    // A table that counts more than the file has is not believed if the codec
    // says something else.
    if (track->Bytes <= file.Stream().length())
        facts.BitRate = counted;
    facts.Channels = Big16(track->SampleEntry, ChannelsAt);
    facts.SampleRate = Big16(track->SampleEntry, RateAt);
    facts.ChannelMapping = PlainChannels(facts.Channels);
    TakeCodec(track->SampleEntry, facts);
    if (facts.BitRate == 0)
        facts.BitRate = counted;
}

} // namespace decoder
