#include "suite/decoder/mp4_track.h"

#include "suite/decoder/audio_facts.h"
#include "suite/decoder/byte_fields.h"

#include <algorithm>

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr uint32_t HeadSize = 64;            // of the small boxes, in full
constexpr uint32_t LargestEntry = 64 * 1024; // of "stsd"
constexpr int64_t LargestTable = 32 << 20;   // of "stsz": eight million samples
constexpr uint32_t LargestRun = 1024 * 1024; // of "trun"
constexpr uint32_t TableBlock = 64 * 1024;

ByteVector HeadOf(TagLib::IOStream& stream, const Mp4Box& box, uint32_t count = HeadSize) {
    return BytesAt(stream, box.Begin, static_cast<uint32_t>(std::min<int64_t>(count, box.Size())));
}

Mp4Box WholeOf(TagLib::IOStream& stream) {
    Mp4Box file;
    file.End = stream.length();
    return file;
}

bool IsSound(TagLib::IOStream& stream, const Mp4Box& track) {
    const auto handler = FindMp4Box(stream, track, "mdiahdlr");
    return handler && HasMark(HeadOf(stream, *handler), "soun", 8);
}

// "mdhd" and "mehd" hold 32-bit numbers in version 0 and 64-bit ones in 1.
void TakeTime(const ByteVector& mdhd, Mp4Track& track) {
    const bool isLong = Byte(mdhd, 0) == 1;
    track.TimeScale = Big32(mdhd, isLong ? 20 : 12);
    track.Duration = isLong ? Big64(mdhd, 24) : Big32(mdhd, 16);
    const bool isUnknown = track.Duration == (isLong ? UINT64_MAX : UINT32_MAX);
    if (isUnknown)
        track.Duration = 0;
}

// Sizes of all samples ("stsz", section 8.7.3.2).
int64_t SizeOfSamples(TagLib::IOStream& stream, const Mp4Box& box) {
    constexpr uint32_t headSize = 12;
    const ByteVector head = HeadOf(stream, box, headSize);
    const int64_t each = Big32(head, 4);
    const int64_t count = Big32(head, 8);
    if (each != 0)
        return each <= INT32_MAX && count <= INT32_MAX ? each * count : 0;
    const int64_t table = std::min(count * 4, box.Size() - headSize);
    if (table > LargestTable)
        return 0;
    int64_t sum = 0;
    for (int64_t done = 0; done < table; done += TableBlock) {
        const auto part = static_cast<uint32_t>(std::min<int64_t>(table - done, TableBlock));
        const ByteVector sizes = BytesAt(stream, box.Begin + headSize + done, part);
        for (uint32_t at = 0; at < sizes.size(); at += 4)
            sum += Big32(sizes, at);
    }
    return sum;
}

// Ticks of one run of samples ("trun", section 8.8.8) in a fragment.
uint64_t DurationOfRun(const ByteVector& run, uint32_t perSample) {
    enum RunFlags : uint32_t {
        HasOffset = 1,
        HasFirstFlags = 4,
        HasDurations = 0x100,
        HasSizes = 0x200,
        HasFlags = 0x400,
        HasCompositions = 0x800
    };
    const uint32_t flags = Big24(run, 1);
    const uint32_t count = Big32(run, 4);
    if (!(flags & HasDurations))
        return uint64_t{count} * perSample;
    uint32_t at = 8 + (flags & HasOffset ? 4 : 0) + (flags & HasFirstFlags ? 4 : 0);
    uint32_t step = 4;
    for (uint32_t flag : {HasSizes, HasFlags, HasCompositions})
        step += flags & flag ? 4 : 0;
    uint64_t sum = 0;
    for (uint32_t index = 0; index < count && at < run.size(); ++index, at += step)
        sum += Big32(run, at);
    return sum;
}

// What one fragment's header ("tfhd", section 8.8.7) says of a sample's ticks.
uint32_t TicksPerSample(const ByteVector& header, uint32_t byDefault) {
    enum HeaderFlags : uint32_t { HasBase = 1, HasDescription = 2, HasDuration = 8 };
    const uint32_t flags = Big24(header, 1);
    if (!(flags & HasDuration))
        return byDefault;
    return Big32(header, 8 + (flags & HasBase ? 8 : 0) + (flags & HasDescription ? 4 : 0));
}

// What the edit list ("elst", section 8.6.6) plays, in milliseconds of the
// movie's time; 0 if there is none, or it doesn't say.
int64_t PlayedMsOf(TagLib::IOStream& stream, const Mp4Box& movie, const Mp4Box& track) {
    constexpr uint32_t headSize = 8;
    constexpr uint32_t mostEdits = 1000;
    const auto movieHeader = FindMp4Box(stream, movie, "mvhd");
    const auto box = FindMp4Box(stream, track, "edtselst");
    if (!movieHeader || !box)
        return 0;
    const ByteVector header = HeadOf(stream, *movieHeader);
    const uint32_t timeScale = Big32(header, Byte(header, 0) == 1 ? 20 : 12);
    const ByteVector edits = HeadOf(stream, *box, LargestEntry);
    const bool isLong = Byte(edits, 0) == 1;
    const uint32_t count = std::min(Big32(edits, 4), mostEdits);
    const uint32_t step = isLong ? 20 : 12;
    uint64_t sum = 0;
    for (uint32_t index = 0; index < count; ++index) {
        const uint32_t at = headSize + index * step;
        const bool isEmpty =
            isLong ? Big64(edits, at + 8) == UINT64_MAX : Big32(edits, at + 4) == UINT32_MAX;
        if (!isEmpty)
            sum += isLong ? Big64(edits, at) : Big32(edits, at);
    }
    return LengthMsOf(sum, timeScale);
}

class Fragments {
public:
    Fragments(TagLib::IOStream& stream, const Mp4Box& movie, uint32_t trackId)
        : stream_(stream), trackId_(trackId) {
        const auto extends = FindMp4Box(stream, movie, "mvex");
        if (!extends)
            return;
        Mp4Walk walk(stream, *extends);
        while (const auto box = walk.Next("trex")) {
            const ByteVector defaults = HeadOf(stream, *box);
            if (Big32(defaults, 4) == trackId)
                perSample_ = Big32(defaults, 12);
        }
        Sum();
    }

    uint64_t Duration() const { return duration_; }
    int64_t Bytes() const { return bytes_; }

private:
    void Sum() {
        Mp4Walk walk(stream_, WholeOf(stream_));
        while (const auto box = walk.Next()) {
            if (box->Is("moof"))
                AddFragment(*box);
            else if (box->Is("mdat"))
                bytes_ += box->Size();
        }
    }

    void AddFragment(const Mp4Box& fragment) {
        Mp4Walk tracks(stream_, fragment);
        while (const auto track = tracks.Next("traf")) {
            const auto header = FindMp4Box(stream_, *track, "tfhd");
            if (!header || Big32(HeadOf(stream_, *header), 4) != trackId_)
                continue;
            const uint32_t perSample = TicksPerSample(HeadOf(stream_, *header), perSample_);
            Mp4Walk runs(stream_, *track);
            while (const auto run = runs.Next("trun"))
                duration_ += DurationOfRun(HeadOf(stream_, *run, LargestRun), perSample);
        }
    }

    TagLib::IOStream& stream_;
    uint32_t trackId_;
    uint32_t perSample_ = 0;
    uint64_t duration_ = 0;
    int64_t bytes_ = 0;
};

uint32_t IdOf(TagLib::IOStream& stream, const Mp4Box& track) {
    const auto header = FindMp4Box(stream, track, "tkhd");
    if (!header)
        return 0;
    const ByteVector head = HeadOf(stream, *header);
    return Big32(head, Byte(head, 0) == 1 ? 20 : 12);
}

void TakeSamples(TagLib::IOStream& stream, const Mp4Box& track, Mp4Track& facts) {
    constexpr uint32_t behindCount = 8;
    if (const auto box = FindMp4Box(stream, track, "mdiaminfstblstsd"))
        facts.SampleEntry = HeadOf(stream, *box, LargestEntry).mid(behindCount);
    if (const auto box = FindMp4Box(stream, track, "mdiaminfstblstsz"))
        facts.Bytes = SizeOfSamples(stream, *box);
}
} // namespace

std::optional<Mp4Track> ReadMp4Track(TagLib::IOStream& stream) {
    const auto movie = FindMp4Box(stream, WholeOf(stream), "moov");
    if (!movie)
        return std::nullopt;
    Mp4Walk walk(stream, *movie);
    std::optional<Mp4Box> box = walk.Next("trak");
    while (box && !IsSound(stream, *box))
        box = walk.Next("trak");
    const auto header = box ? FindMp4Box(stream, *box, "mdiamdhd") : std::nullopt;
    if (!header)
        return std::nullopt;
    Mp4Track track;
    TakeTime(HeadOf(stream, *header), track);
    TakeSamples(stream, *box, track);
    if (track.Duration == 0 || track.Bytes == 0) {
        const Fragments fragments(stream, *movie, IdOf(stream, *box));
        track.Duration += fragments.Duration();
        track.Bytes += fragments.Bytes();
    }
    // An edit list may repeat and stretch; it counts where it cuts.
    const int64_t whole = LengthMsOf(track.Duration, track.TimeScale);
    const int64_t played = PlayedMsOf(stream, *movie, *box);
    track.PlayedMs = played > 0 ? std::min(played, whole) : whole;
    return track;
}

} // namespace decoder
