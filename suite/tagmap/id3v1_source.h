#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"

#include <tbytevector.h>
#include <tfile.h>

#include <bitset>

namespace tagmap {

// An ID3v1 tag beside its 128 bytes at the file's end. The library writes the
// whole tag anew, which cuts a comment of 30 characters to the 28 that leave
// room for a track, and takes blanks and what stands behind a zero off the
// texts. This puts back the fields that a request does not name.
class Id3v1Source {
public:
    explicit Id3v1Source(TagLib::File& file);

    // The request is going to be done to the tag.
    void Name(clTagRecord& changes);
    void Name(const NStringList& names);

    // Behind a save that left a tag.
    void PutBack(TagLib::File& file) const;

private:
    static constexpr unsigned TagSize = 128;
    void NameElement(const NString& element);

    TagLib::ByteVector bytes_; // empty if there is no tag
    std::bitset<TagSize> isNamed_;
};

// A save leaves a tag: the library takes an empty one off the file.
template <typename File>
bool HasId3v1(File& file) {
    return file.hasID3v1Tag() && file.ID3v1Tag() && !file.ID3v1Tag()->isEmpty();
}

} // namespace tagmap
