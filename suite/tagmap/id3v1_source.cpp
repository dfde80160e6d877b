#include "suite/tagmap/id3v1_source.h"

#include "suite/tagmap/tag_values.h"

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::File;

constexpr char Mark[] = "TAG";

// The fields of ID3v1.1. The comment ends where its zero byte and the track
// stand; in ID3v1.0 it has these two bytes as well.
struct Field {
    const wchar_t* Element;
    unsigned From;
    unsigned End;
};
constexpr unsigned TrackAt = 125;
constexpr Field Fields[] = {
    {L"title", 3, 33},         {L"artist", 33, 63},      {L"album", 63, 93},  {L"year", 93, 97},
    {L"comment", 97, TrackAt}, {L"track", TrackAt, 127}, {L"genre", 127, 128}};

ByteVector TagAtEnd(File& file, unsigned size) {
    if (file.length() < static_cast<long>(size))
        return ByteVector();
    file.seek(-static_cast<long>(size), File::End);
    const ByteVector bytes = file.readBlock(size);
    return bytes.size() == size && bytes.startsWith(Mark) ? bytes : ByteVector();
}

} // namespace

Id3v1Source::Id3v1Source(File& file) : bytes_(TagAtEnd(file, TagSize)) {}

void Id3v1Source::NameElement(const NString& element) {
    for (const Field& field : Fields) {
        if (element.Compare(field.Element, 0, true) != 0)
            continue;
        for (unsigned at = field.From; at < field.End; ++at)
            isNamed_.set(at);
        // A comment of the older form gives its end to the track, or is
        // replaced to its end.
        const bool isOlder = !bytes_.isEmpty() && bytes_[TrackAt] != 0;
        if (isOlder && field.End == TrackAt)
            NameElement(L"track");
    }
}

void Id3v1Source::Name(clTagRecord& changes) {
    for (int index = 0; index < changes.Count(); ++index)
        NameElement(changes[index]->Name);
}

void Id3v1Source::Name(const NStringList& names) {
    if (names.Count == 0)
        isNamed_.set();
    for (int index = 0; index < names.Count; ++index)
        NameElement(*names[index]);
}

void Id3v1Source::PutBack(File& file) const {
    ByteVector written = TagAtEnd(file, TagSize);
    if (bytes_.isEmpty() || written.isEmpty())
        return;
    for (unsigned at = 0; at < TagSize; ++at) {
        if (!isNamed_.test(at))
            written[static_cast<int>(at)] = bytes_[static_cast<int>(at)];
    }
    file.seek(-static_cast<long>(TagSize), File::End);
    file.writeBlock(written);
}

} // namespace tagmap
