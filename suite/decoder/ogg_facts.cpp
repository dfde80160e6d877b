// The formats in Ogg: Vorbis (Vorbis I specification, section 4.2.2), Opus (RFC
// 7845, section 5.1), Speex (its manual, "Header"), FLAC (RFC 9639, section 10.1).
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"
#include "suite/decoder/ogg_layout.h"
#include "suite/decoder/xiph_comment.h"

#include <oggflacfile.h>
#include <oggpageheader.h>
#include <opusfile.h>
#include <speexfile.h>
#include <vorbisfile.h>

#include <algorithm>

namespace decoder {

namespace {
constexpr int VorbisHeaders = 3;
constexpr int CommentedHeaders = 2; // Opus and Speex: the head and the comment

template <typename Properties>
void TakeCommon(const Properties& audio, AudioFacts& facts) {
    facts.Channels = static_cast<uint32_t>(audio.channels());
    facts.SampleRate = static_cast<uint32_t>(audio.sampleRate());
    facts.LengthMs = audio.lengthInMilliseconds();
}

OggLayout TakeRate(AudioFile& file, int headerPackets, AudioFacts& facts) {
    OggLayout layout = ReadOggLayout(file.Stream(), headerPackets);
    facts.BitRate = BitRateOf(OggAudioBytes(layout, file.Stream().length()), facts.LengthMs);
    return layout;
}

// "VBR, nominal 112 kbps"
NString RateSettings(const char* mode, int nominal) {
    return nominal > 0 ? Text("%s, nominal %d kbps", mode, (nominal + 500) / 1000)
                       : AsciiText(mode);
}

void VorbisFacts(AudioFile& file, AudioFacts& facts) {
    auto& vorbis = file.As<TagLib::Vorbis::File>();
    const TagLib::Vorbis::Properties& audio = *vorbis.audioProperties();
    TakeCommon(audio, facts);
    TakeRate(file, VorbisHeaders, facts);
    const bool isConstant = audio.bitrateNominal() > 0 &&
                            audio.bitrateMinimum() == audio.bitrateNominal() &&
                            audio.bitrateMaximum() == audio.bitrateNominal();
    facts.Quality = isConstant ? LossyConstant : LossyVariable;
    facts.EncoderSettings = RateSettings(isConstant ? "CBR" : "VBR", audio.bitrateNominal());
    facts.ChannelMapping = VorbisChannels(facts.Channels);
    TakeXiphEncoder(*vorbis.tag(), facts);
}

// Packets of one size are what a constant rate is made of. The last packets may
// be shorter, but those aren't among the first ones.
bool AreOfOneSize(const std::vector<uint32_t>& packets) {
    constexpr size_t fewest = 4;
    return packets.size() >= fewest &&
           std::all_of(packets.begin(), packets.end() - 1,
                       [&](uint32_t size) { return size == packets[0]; });
}

void OpusFacts(AudioFile& file, AudioFacts& facts) {
    constexpr uint32_t familyAt = 18;
    auto& opus = file.As<TagLib::Ogg::Opus::File>();
    TakeCommon(*opus.audioProperties(), facts);
    const OggLayout layout = TakeRate(file, CommentedHeaders, facts);
    const bool isConstant = AreOfOneSize(layout.Packets);
    facts.Quality = isConstant ? LossyConstant : LossyVariable;
    facts.EncoderSettings = isConstant ? L"CBR" : L"VBR";
    const uint32_t family = Byte(opus.packet(0), familyAt);
    facts.ChannelMapping = family == 1   ? VorbisChannels(facts.Channels)
                           : family == 0 ? PlainChannels(facts.Channels)
                                         : NString();
    TakeXiphEncoder(*opus.tag(), facts);
}

void SpeexFacts(AudioFile& file, AudioFacts& facts) {
    constexpr uint32_t modeAt = 40;
    constexpr uint32_t variableAt = 60;
    constexpr const char* modes[] = {"Narrowband", "Wideband", "Ultra-wideband"};
    auto& speex = file.As<TagLib::Ogg::Speex::File>();
    const TagLib::Ogg::Speex::Properties& audio = *speex.audioProperties();
    TakeCommon(audio, facts);
    TakeRate(file, CommentedHeaders, facts);
    const TagLib::ByteVector header = speex.packet(0);
    const bool isVariable = Little32(header, variableAt) != 0;
    facts.Quality = isVariable ? LossyVariable : LossyConstant;
    const uint32_t mode = Little32(header, modeAt);
    facts.EncoderSettings = Text("%s%s%s", mode < std::size(modes) ? modes[mode] : "",
                                 mode < std::size(modes) ? ", " : "", isVariable ? "VBR" : "CBR");
    facts.ChannelMapping = PlainChannels(facts.Channels);
    TakeXiphEncoder(*speex.tag(), facts);
}

// For a header that was written before the number of samples was known.
int64_t LengthByLastPage(TagLib::Ogg::File& file, uint32_t sampleRate) {
    const TagLib::Ogg::PageHeader* last = file.lastPageHeader();
    const long long samples = last ? last->absoluteGranularPosition() : 0;
    return samples > 0 ? LengthMsOf(static_cast<uint64_t>(samples), sampleRate) : 0;
}

void OggFlacFacts(AudioFile& file, AudioFacts& facts) {
    auto& flac = file.As<TagLib::Ogg::FLAC::File>();
    const TagLib::FLAC::Properties& audio = *flac.audioProperties();
    TakeCommon(audio, facts);
    facts.BitsPerSample = static_cast<uint32_t>(audio.bitsPerSample());
    facts.LengthMs = audio.sampleFrames() > 0 ? LengthMsOf(audio.sampleFrames(), facts.SampleRate)
                                              : LengthByLastPage(flac, facts.SampleRate);
    TakeRate(file, UntilMarkedLast, facts);
    facts.Quality = Lossless;
    facts.ChannelMapping = FlacChannels(facts.Channels);
    if (flac.hasXiphComment())
        TakeFlacComment(*flac.tag(), facts);
}
} // namespace

void OggFacts(AudioFile& file, AudioFacts& facts) {
    switch (file.Kind()) {
    case tagmap::Format::OggVorbis:
        return VorbisFacts(file, facts);
    case tagmap::Format::OggOpus:
        return OpusFacts(file, facts);
    case tagmap::Format::OggSpeex:
        return SpeexFacts(file, facts);
    default:
        return OggFlacFacts(file, facts);
    }
}

} // namespace decoder
