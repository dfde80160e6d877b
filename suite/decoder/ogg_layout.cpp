#include "suite/decoder/ogg_layout.h"

#include "suite/decoder/byte_fields.h"

namespace decoder {

using TagLib::ByteVector;

namespace {
constexpr uint32_t PageHeaderSize = 27;
constexpr uint32_t SerialAt = 14;
constexpr uint32_t SegmentCountAt = 26;
constexpr uint32_t MostSegments = 255;
constexpr uint32_t WholeSegment = 255; // a packet goes on behind it

// Pages of 64 kB at most; larger headers than these hold no tag of use.
constexpr int MostHeaderPages = 4096;
constexpr int AudioPagesLookedAt = 8;

struct Page {
    uint32_t Serial = 0;
    uint32_t HeaderSize = 0; // 0 if there is none
    uint32_t PayloadSize = 0;
    ByteVector Segments;
};

Page PageAt(TagLib::IOStream& stream, int64_t at) {
    const ByteVector bytes = BytesAt(stream, at, PageHeaderSize + MostSegments);
    if (!HasMark(bytes, "OggS") || bytes.size() < PageHeaderSize)
        return {};
    Page page;
    const uint32_t count = Byte(bytes, SegmentCountAt);
    page.Serial = Little32(bytes, SerialAt);
    page.HeaderSize = PageHeaderSize + count;
    page.Segments = bytes.mid(PageHeaderSize, count);
    for (uint32_t index = 0; index < count; ++index)
        page.PayloadSize += Byte(page.Segments, index);
    return page;
}

// Counts the packets of the header, page by page.
class HeaderPackets {
public:
    HeaderPackets(TagLib::IOStream& stream, int wanted) : stream_(stream), wanted_(wanted) {}

    // Takes the packets that end in the page; true when all are there.
    bool Take(const Page& page, int64_t payloadAt) {
        for (uint32_t index = 0; index < page.Segments.size(); ++index) {
            if (begins_ && wanted_ == UntilMarkedLast)
                isLast_ = seen_ > 0 && IsMarkedLast(payloadAt);
            const uint32_t size = Byte(page.Segments, index);
            payloadAt += size;
            begins_ = size < WholeSegment;
            if (begins_ && (++seen_ == wanted_ || isLast_))
                return true;
        }
        return false;
    }

private:
    // The first packet is FLAC's mapping to Ogg, the others are metadata blocks.
    bool IsMarkedLast(int64_t at) {
        constexpr uint32_t lastBlock = 0x80;
        return (Byte(BytesAt(stream_, at, 1), 0) & lastBlock) != 0;
    }

    TagLib::IOStream& stream_;
    int wanted_;
    int seen_ = 0;
    bool begins_ = true; // the next segment begins a packet
    bool isLast_ = false;
};

void LookAtAudio(TagLib::IOStream& stream, uint32_t serial, OggLayout& layout) {
    int64_t at = layout.AudioBegin;
    uint32_t packet = 0;
    for (int count = 0; count < AudioPagesLookedAt; ++count) {
        const Page page = PageAt(stream, at);
        if (page.HeaderSize == 0)
            return;
        at += page.HeaderSize + page.PayloadSize;
        layout.PageBytes += page.HeaderSize + page.PayloadSize;
        if (page.Serial != serial)
            continue;
        layout.PayloadBytes += page.PayloadSize;
        for (uint32_t index = 0; index < page.Segments.size(); ++index) {
            const uint32_t size = Byte(page.Segments, index);
            packet += size;
            if (size == WholeSegment)
                continue;
            layout.Packets.push_back(packet);
            packet = 0;
        }
    }
}
} // namespace

OggLayout ReadOggLayout(TagLib::IOStream& stream, int headerPackets) {
    OggLayout layout;
    HeaderPackets header(stream, headerPackets);
    const uint32_t serial = PageAt(stream, 0).Serial;
    int64_t at = 0;
    for (int count = 0; count < MostHeaderPages; ++count) {
        const Page page = PageAt(stream, at);
        if (page.HeaderSize == 0)
            break;
        const int64_t payloadAt = at + page.HeaderSize;
        at = payloadAt + page.PayloadSize;
        if (page.Serial == serial && header.Take(page, payloadAt)) {
            layout.AudioBegin = at;
            LookAtAudio(stream, serial, layout);
            break;
        }
    }
    return layout;
}

int64_t OggAudioBytes(const OggLayout& layout, int64_t fileSize) {
    if (layout.AudioBegin == 0 || layout.PageBytes == 0)
        return 0;
    const double share =
        static_cast<double>(layout.PayloadBytes) / static_cast<double>(layout.PageBytes);
    return static_cast<int64_t>(static_cast<double>(fileSize - layout.AudioBegin) * share);
}

} // namespace decoder
