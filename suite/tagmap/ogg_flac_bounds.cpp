#include "suite/tagmap/ogg_flac_bounds.h"

#include <cstdint>

namespace tagmap {

namespace {
using TagLib::ByteVector;

constexpr int MostBlocks = 256;
constexpr unsigned char LastBlock = 0x80;

// A page (RFC 3533, section 6).
constexpr char PageMark[] = "OggS";
constexpr unsigned HeaderSize = 27;
constexpr unsigned SegmentCountAt = 26;
constexpr unsigned char WholeSegment = 255; // a packet goes on behind it

// Goes over the packets in the library's order: whatever their stream is, and
// whether or not a page says that its first packet was begun before.
class LibrarysWay {
public:
    explicit LibrarysWay(TagLib::IOStream& stream) : stream_(stream) {}

    bool IsBounded() {
        FindFirstPage();
        while (!isLast_ && packets_ <= MostBlocks && PassPage()) {
        }
        return packets_ <= MostBlocks;
    }

private:
    ByteVector BytesAt(int64_t offset, unsigned count) {
        stream_.seek(static_cast<long>(offset), TagLib::IOStream::Beginning);
        return stream_.readBlock(count);
    }

    // The first mark of a page, wherever it stands.
    void FindFirstPage() {
        constexpr unsigned blockSize = 64 * 1024;
        constexpr unsigned overlap = sizeof(PageMark) - 2;
        for (; at_ < stream_.length(); at_ += blockSize) {
            const int found = BytesAt(at_, blockSize + overlap).find(PageMark);
            if (found >= 0) {
                at_ += found;
                return;
            }
        }
    }

    // False where no page is.
    bool PassPage() {
        const ByteVector header = BytesAt(at_, HeaderSize);
        if (header.size() != HeaderSize || !header.startsWith(PageMark))
            return false;
        const auto count = static_cast<unsigned char>(header[SegmentCountAt]);
        const ByteVector segments = BytesAt(at_ + HeaderSize, count);
        if (count == 0 || segments.size() != count)
            return false;
        at_ += HeaderSize + count;
        for (const char segment : segments)
            PassSegment(static_cast<unsigned char>(segment));
        return true;
    }

    void PassSegment(unsigned char size) {
        if (begins_)
            TakePacket();
        begins_ = size < WholeSegment;
        at_ += size;
    }

    // The first packet is the mapping to Ogg, the others are metadata blocks.
    void TakePacket() {
        ++packets_;
        const ByteVector first = BytesAt(at_, 1);
        const bool isBlock = packets_ > 1 && !first.isEmpty();
        isLast_ = isLast_ || (isBlock && (static_cast<unsigned char>(first[0]) & LastBlock) != 0);
    }

    TagLib::IOStream& stream_;
    int64_t at_ = 0;
    int packets_ = 0;
    bool begins_ = true; // the next segment begins a packet
    bool isLast_ = false;
};

} // namespace

bool OggFlacBlocksAreBounded(TagLib::IOStream& stream) {
    return LibrarysWay(stream).IsBounded();
}

} // namespace tagmap
