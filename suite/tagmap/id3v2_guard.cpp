#include "suite/tagmap/id3v2_guard.h"

#include "suite/tagmap/id3v2_frames.h"

#include <id3v2synchdata.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace tagmap {

namespace {

namespace SynchData = TagLib::ID3v2::SynchData;
using TagLib::ByteVector;
using TagLib::ID3v2::Frame;
using TagLib::ID3v2::Header;

constexpr unsigned OldVersion = 3; // the last of whole tags that are unsynchronised
constexpr unsigned LengthInFrontSize = 4;
constexpr unsigned SmallestFrame = 7; // of ID3v2.2: a header of 6 bytes, and one more
// Frames may stand in chapters and in tables of them, which hold no chapters.
constexpr unsigned DeepestLevel = 16;
// Some writers' lengths are wrong, so that a frame is read with what follows it.
constexpr uint64_t SpareFrames = 1000;
constexpr uint64_t Rereads = 4;
constexpr uint64_t SpareBytes = 1024 * 1024;
// The library copies a genre anew behind each closing bracket of it.
constexpr uint64_t MostGenreBytes = 64 * 1024 * 1024;

bool IsName(const ByteVector& id) {
    return std::all_of(id.begin(), id.end(), [](char unit) {
        return (unit >= 'A' && unit <= 'Z') || (unit >= '0' && unit <= '9');
    });
}

// ID3v2.3 of some writers has the shorter names of 2.2, with a zero.
ByteVector NameOf(const FrameHead& head, unsigned version) {
    constexpr unsigned shortSize = 3;
    const ByteVector& id = head.Id;
    const bool isShort = version == OldVersion && id.size() > shortSize && id[shortSize] == 0;
    return isShort ? id.mid(0, shortSize) : id;
}

uint64_t CountOf(const ByteVector& bytes, char wanted) {
    return static_cast<uint64_t>(std::count(bytes.begin(), bytes.end(), wanted));
}

// Behind the text that ends with a zero; `at` itself if none does.
unsigned BehindText(const ByteVector& fields, unsigned at) {
    const int end = fields.find(ByteVector(1, '\0'), at);
    return end < 0 ? at : static_cast<unsigned>(end) + 1;
}

// A name, two times and two offsets.
unsigned FramesAtInChapter(const ByteVector& fields) {
    constexpr unsigned numbersSize = 4 * 4;
    return BehindText(fields, 0) + numbersSize;
}

// A name, flags, the count of the entries, and their names.
unsigned FramesAtInContents(const ByteVector& fields) {
    unsigned at = BehindText(fields, 0) + 1;
    const unsigned count = at < fields.size() ? static_cast<unsigned char>(fields.at(at)) : 0;
    ++at;
    for (unsigned entry = 0; entry < count; ++entry)
        at = BehindText(fields, at);
    return at;
}

// The library's way through a tag.
class LibrarysWay {
public:
    LibrarysWay(const Header& header, unsigned size)
        : header_(header), version_(header.majorVersion()),
          mostFrames_(size / SmallestFrame + SpareFrames), mostBytes_(Rereads * size + SpareBytes) {
    }

    // Over the frames that stand from `at` on.
    bool IsBounded(const ByteVector& bytes, unsigned at, unsigned level) {
        const unsigned headerSize = Frame::headerSize(version_);
        while (uint64_t{at} + headerSize < bytes.size()) {
            const unsigned size = GoOver(bytes.mid(at), level);
            if (!isBounded_ || size == 0)
                break;
            at += headerSize + size;
        }
        return isBounded_;
    }

private:
    // The size of the frame that `data` begins with, 0 if the library makes none.
    unsigned GoOver(const ByteVector& data, unsigned level) {
        const FrameHead head = FrameAccess::HeadOf(data, version_);
        const unsigned nameSize = version_ < OldVersion ? 3 : 4;
        const unsigned leastSize = head.HasLengthInFront ? LengthInFrontSize : 0;
        if (head.Id.size() != nameSize || !IsName(NameOf(head, version_)) ||
            head.Size <= leastSize || head.Size > data.size())
            return 0;
        ++frames_;
        isBounded_ = frames_ <= mostFrames_ && level <= DeepestLevel;
        if (isBounded_ && !head.IsPacked)
            LookInto(head, FieldsOf(head, data), level);
        return head.Size;
    }

    ByteVector FieldsOf(const FrameHead& head, const ByteVector& data) const {
        const unsigned headerSize = Frame::headerSize(version_);
        ByteVector following = data.mid(headerSize);
        if (version_ > OldVersion && (header_.unsynchronisation() || head.IsUnsynchronised))
            following = SynchData::decode(following.mid(0, head.Size));
        if (!head.HasLengthInFront)
            return following.mid(0, head.Size);
        const unsigned length = SynchData::toUInt(following.mid(0, LengthInFrontSize));
        return following.mid(LengthInFrontSize, length);
    }

    void LookInto(const FrameHead& head, const ByteVector& fields, unsigned level) {
        bytes_ += fields.size();
        if (IsGenre(head))
            genreBytes_ += uint64_t{fields.size()} * CountOf(fields, ')');
        isBounded_ = bytes_ <= mostBytes_ && genreBytes_ <= MostGenreBytes;
        if (!isBounded_)
            return;
        if (head.Id == "CHAP")
            IsBounded(fields, FramesAtInChapter(fields), level + 1);
        else if (head.Id == "CTOC")
            IsBounded(fields, FramesAtInContents(fields), level + 1);
    }

    bool IsGenre(const FrameHead& head) const {
        const ByteVector name = NameOf(head, version_);
        return name == GenreFrame || name == "TCO";
    }

    const Header& header_;
    const unsigned version_;
    const uint64_t mostFrames_;
    const uint64_t mostBytes_;
    uint64_t frames_ = 0;
    uint64_t bytes_ = 0;
    uint64_t genreBytes_ = 0;
    bool isBounded_ = true;
};

} // namespace

bool Id3v2FramesAreBounded(const Header& header, const ByteVector& content) {
    const bool isEncoded = header.unsynchronisation() && header.majorVersion() <= OldVersion;
    const ByteVector bytes = isEncoded ? SynchData::decode(content) : content;
    return LibrarysWay(header, bytes.size()).IsBounded(bytes, ExtendedHeaderSize(header, bytes), 0);
}

ByteVector GuardedStream::readBlock(unsigned long length) {
    const long at = tell();
    const ByteVector bytes = FileStream::readBlock(length);
    const ByteVector header = std::exchange(header_, ByteVector());
    if (!header.isEmpty() && at == contentAt_ && !Id3v2FramesAreBounded(Header(header), bytes)) {
        hasWithheldTag_ = true;
        return ByteVector(bytes.size(), 0);
    }
    if (bytes.size() == Header::size() && bytes.startsWith(Header::fileIdentifier())) {
        header_ = bytes;
        contentAt_ = tell();
    }
    return bytes;
}

} // namespace tagmap
