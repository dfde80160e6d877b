#include "suite/tagmap/mp4_bounds.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <string_view>
#include <vector>

using namespace std::literals;

namespace tagmap {

namespace {
using TagLib::ByteVector;

// Sound has them eight deep.
constexpr size_t DeepestBox = 32;
// Eleven hours in fragments of a second, with seven boxes each.
constexpr int MostBoxes = 300000;

constexpr int64_t ShortHeader = 8;
constexpr int64_t LongHeader = 16;

// Those that the library looks into, sound or not.
constexpr std::string_view Containers[] = {"moov"sv, "udta"sv, "mdia"sv, "meta"sv,
                                           "ilst"sv, "stbl"sv, "minf"sv, "moof"sv,
                                           "traf"sv, "trak"sv, "stsd"sv};
// A "meta" that begins with one of these has no version and flags.
constexpr std::string_view FirstInMeta[] = {"hdlr"sv, "ilst"sv, "mhdr"sv, "ctry"sv, "lang"sv};

template <size_t Count>
bool IsOneOf(const ByteVector& name, const std::string_view (&names)[Count]) {
    return std::find(std::begin(names), std::end(names),
                     std::string_view(name.data(), name.size())) != std::end(names);
}

// Goes over the boxes in the library's order. It goes on wherever a box ends,
// even behind the end of the one around it, and at a malformed box it stops.
class LibrarysWay {
public:
    explicit LibrarysWay(TagLib::IOStream& stream) : stream_(stream), length_(stream.length()) {}

    bool IsBounded() {
        while (!stopped_ && (!ends_.empty() || at_ + ShortHeader <= length_)) {
            if (!ends_.empty() && at_ >= ends_.back())
                ends_.pop_back();
            else if (++boxes_ > MostBoxes || ends_.size() > DeepestBox || !PassBox())
                return false;
        }
        return true;
    }

private:
    ByteVector BytesAt(int64_t offset, int64_t count) {
        stream_.seek(static_cast<long>(offset), TagLib::IOStream::Beginning);
        return stream_.readBlock(static_cast<unsigned long>(count));
    }

    // False if the box's end is beyond what the library can count.
    bool PassBox() {
        const ByteVector header = BytesAt(at_, LongHeader);
        if (header.size() < ShortHeader) {
            stopped_ = true;
            return true;
        }
        int64_t size = header.toUInt(0U);
        int64_t content = at_ + ShortHeader;
        if (size == 0) {
            size = length_ - at_;
        } else if (size == 1) {
            size = header.mid(ShortHeader).toLongLong();
            content = at_ + LongHeader;
        }
        if (size < ShortHeader || size > LONG_MAX) {
            stopped_ = true;
            return true;
        }
        if (size > LONG_MAX - at_)
            return false;
        const ByteVector name = header.mid(4, 4);
        if (IsOneOf(name, Containers))
            Enter(name, content, at_ + size);
        else
            at_ += size;
        return true;
    }

    void Enter(const ByteVector& name, int64_t content, int64_t end) {
        constexpr int64_t versionAndFlags = 4;
        constexpr int64_t versionFlagsAndCount = 8;
        at_ = content;
        if (name == "meta" && !IsOneOf(BytesAt(content, ShortHeader).mid(4, 4), FirstInMeta))
            at_ += versionAndFlags;
        else if (name == "stsd")
            at_ += versionFlagsAndCount;
        ends_.push_back(end);
    }

    TagLib::IOStream& stream_;
    const int64_t length_;
    int64_t at_ = 0;
    int boxes_ = 0;
    bool stopped_ = false;
    std::vector<int64_t> ends_; // of the boxes around
};

} // namespace

bool Mp4BoxesAreBounded(TagLib::IOStream& stream) {
    return LibrarysWay(stream).IsBounded();
}

} // namespace tagmap
