#include "suite/tagmap/id3v2_unsynch.h"

#include "suite/tagmap/id3v2_frames.h"
#include "suite/tagmap/id3v2_tags.h"

#include <id3v2synchdata.h>

namespace tagmap {

namespace {

namespace SynchData = TagLib::ID3v2::SynchData;
using TagLib::ByteVector;
using TagLib::ID3v2::Frame;
using TagLib::ID3v2::Header;

constexpr unsigned LengthSize = 4;

bool IsOfOldVersion(const Header& header) {
    return header.majorVersion() < static_cast<unsigned>(Id3v2NewVersion);
}

bool IsEncoded(const Header& header, const Frame& frame) {
    return !IsOfOldVersion(header) &&
           (header.unsynchronisation() || FrameAccess::IsUnsynchronised(frame));
}

// A zero is put in before such a byte.
bool AsksForAZero(char byte) {
    constexpr unsigned char Synch = 0xE0;
    return byte == 0 || static_cast<unsigned char>(byte) >= Synch;
}

// What follows a byte FF: the end, or a byte that asks for no zero, or a zero
// with a byte behind it that does.
bool MayFollow(ByteVector::ConstIterator at, ByteVector::ConstIterator end) {
    if (at == end || !AsksForAZero(*at))
        return true;
    return *at == 0 && (at + 1 == end || AsksForAZero(at[1]));
}

// An encoder can have made these bytes.
bool CanComeFromAnEncoder(const ByteVector& bytes) {
    constexpr char Full = '\xFF';
    for (auto at = bytes.begin(); at != bytes.end(); ++at) {
        if (*at == Full && !MayFollow(at + 1, bytes.end()))
            return false;
    }
    return true;
}

} // namespace

PlainBytes ContentOf(const Header& header, const ByteVector& bytes) {
    const ByteVector content = bytes.mid(Header::size());
    if (!header.unsynchronisation() || !IsOfOldVersion(header))
        return {content, false};
    const ByteVector plain = SynchData::decode(content);
    return {plain, plain.size() != content.size() && !CanComeFromAnEncoder(content)};
}

PlainBytes FieldsOf(const Header& header, const Frame& frame, const ByteVector& stored) {
    const bool hasLength = FrameAccess::HasLengthInFront(frame);
    const ByteVector fields = hasLength ? stored.mid(LengthSize) : stored;
    if (!IsEncoded(header, frame))
        return {fields, false};
    const ByteVector plain = SynchData::decode(fields);
    const bool isSame = plain.size() == fields.size();
    const bool lengthTells =
        hasLength && SynchData::toUInt(stored.mid(0, LengthSize)) == plain.size();
    const bool flagTells = FrameAccess::IsUnsynchronised(frame) && CanComeFromAnEncoder(fields);
    return {plain, !isSame && !lengthTells && !flagTells};
}

bool IsMisreadByLength(const Header& header, const Frame& frame, const ByteVector& stored,
                       const ByteVector& fields) {
    if (!FrameAccess::HasLengthInFront(frame))
        return false;
    // The library decodes the length too.
    const ByteVector plain = IsEncoded(header, frame) ? SynchData::decode(stored) : stored;
    return SynchData::toUInt(plain.mid(0, LengthSize)) != fields.size() ||
           plain.mid(LengthSize) != fields;
}

} // namespace tagmap
