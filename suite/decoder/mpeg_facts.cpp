// MPEG audio, layers I to III (ISO/IEC 11172-3 and 13818-3).
#include "suite/decoder/audio_extent.h"
#include "suite/decoder/byte_fields.h"
#include "suite/decoder/channel_names.h"
#include "suite/decoder/format_facts.h"
#include "suite/decoder/xing_header.h"

#include <mpegfile.h>
#include <mpegheader.h>
#include <mpegproperties.h>

namespace decoder {

using TagLib::MPEG::Header;

namespace {
constexpr uint32_t LargestFrame = 4096;

// Frames that are looked at where no header says how the rate goes: 13 seconds.
constexpr int FramesLookedAt = 500;

// The first frames of a file, one behind the other.
struct FirstFrames {
    BitRateMode Mode = BitRateMode::Unknown;
    int Count = 0;
    int64_t Bytes = 0;
};

FirstFrames LookAtFrames(TagLib::MPEG::File& file, int64_t at) {
    FirstFrames frames;
    int first = 0;
    while (frames.Count < FramesLookedAt && at + frames.Bytes < INT32_MAX) {
        const Header header(&file, static_cast<long>(at + frames.Bytes), false);
        if (!header.isValid() || header.frameLength() <= 0)
            break;
        if (frames.Count == 0)
            first = header.bitrate();
        if (header.bitrate() != first)
            frames.Mode = BitRateMode::Variable;
        ++frames.Count;
        frames.Bytes += header.frameLength();
    }
    if (frames.Count > 0 && frames.Mode == BitRateMode::Unknown)
        frames.Mode = BitRateMode::Constant;
    return frames;
}

const wchar_t* QualityOf(BitRateMode mode) {
    switch (mode) {
    case BitRateMode::Constant:
        return LossyConstant;
    case BitRateMode::Average:
        return LossyAverage;
    case BitRateMode::Variable:
        return LossyVariable;
    case BitRateMode::Unknown:
        break;
    }
    return Lossy;
}

// "CBR 128 kbps", "ABR 192 kbps", "VBR V2 (preset standard)", "VBR".
NString SettingsOf(BitRateMode mode, uint32_t kilobits, const NString& preset) {
    if (mode == BitRateMode::Unknown)
        return {};
    if (mode == BitRateMode::Variable)
        return preset.IsEmpty() ? NString(L"VBR") : NString(L"VBR ").Concat(preset.c_str());
    const char* name = mode == BitRateMode::Constant ? "CBR" : "ABR";
    return kilobits > 0 ? Text("%s %u kbps", name, kilobits) : AsciiText(name);
}

// The rate of the audio alone: a header's frame is none.
uint32_t AverageRate(const XingFacts& xing, const AudioExtent& extent, int64_t headerAt,
                     uint32_t headerSize, int64_t lengthMs) {
    const int64_t bytes = xing.Bytes > 0 ? int64_t{xing.Bytes} : extent.End - headerAt;
    return BitRateOf(bytes - headerSize, lengthMs);
}
// As if all frames were of the mean size of the first ones.
void EstimateLength(const Header& header, const FirstFrames& frames, int64_t bytes,
                    AudioFacts& facts) {
    const double perFrame = static_cast<double>(frames.Bytes) / frames.Count;
    const double count = static_cast<double>(bytes) / perFrame;
    facts.LengthMs =
        static_cast<int64_t>(count * header.samplesPerFrame() * 1000 / header.sampleRate());
    facts.BitRate = BitRateOf(bytes, facts.LengthMs);
}
} // namespace

void MpegFacts(AudioFile& file, AudioFacts& facts) {
    auto& mpeg = file.As<TagLib::MPEG::File>();
    const int64_t at = mpeg.firstFrameOffset();
    if (at < 0)
        return;
    const Header header(&mpeg, static_cast<long>(at), false);
    if (!header.isValid() || header.sampleRate() <= 0)
        return;
    const auto frameSize = static_cast<uint32_t>(header.frameLength());
    const XingFacts xing = ReadXingHeader(BytesAt(file.Stream(), at, LargestFrame));

    facts.SampleRate = static_cast<uint32_t>(header.sampleRate());
    facts.Channels = header.channelMode() == Header::SingleChannel ? 1 : 2;
    if (header.channelMode() != Header::DualChannel)
        facts.ChannelMapping = PlainChannels(facts.Channels);

    BitRateMode mode = xing.Mode;
    uint32_t kilobits = xing.Kilobits;
    if (xing.IsThere && xing.Frames > 0) {
        const auto samples = static_cast<uint64_t>(header.samplesPerFrame());
        facts.LengthMs = LengthMsOf(samples * xing.Frames, facts.SampleRate);
        facts.BitRate =
            AverageRate(xing, ExtentOfAudio(file.Stream()), at, frameSize, facts.LengthMs);
    } else {
        facts.LengthMs = mpeg.audioProperties()->lengthInMilliseconds();
        facts.BitRate = static_cast<uint32_t>(header.bitrate()) * 1000;
        const FirstFrames frames = LookAtFrames(mpeg, at);
        if (!xing.IsThere)
            mode = frames.Mode;
        if (frames.Mode == BitRateMode::Variable)
            EstimateLength(header, frames, ExtentOfAudio(file.Stream()).End - at, facts);
    }
    if (mode == BitRateMode::Constant && kilobits == 0)
        kilobits = static_cast<uint32_t>(
            Header(&mpeg, static_cast<long>(at + (xing.IsThere ? frameSize : 0)), false).bitrate());
    facts.Encoder = xing.Encoder;
    facts.EncoderSettings = SettingsOf(mode, kilobits, xing.Preset);
    facts.Quality = QualityOf(mode);
}

} // namespace decoder
