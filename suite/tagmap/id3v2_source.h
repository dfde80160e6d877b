#pragma once

#include <id3v2tag.h>
#include <tfile.h>

namespace tagmap {

// A tag beside its bytes in the file, header included (ID3v2.2 to 2.4, section
// 3.1 of each; the tag must not have been changed since it was read).
//
// The library stops at a frame of no length or with a malformed name, passes
// over a second tag behind the first, and drops what stands in brackets before
// a genre unless it is a number. Genres are given back to the tag, as the text
// that the file has; the rest can't be, and would be lost by a save.
class Id3v2Source {
public:
    Id3v2Source() = default;
    // `tag` may be null.
    Id3v2Source(TagLib::ID3v2::Tag* tag, const TagLib::ByteVector& bytes);
    // The tag that begins at that place of the file.
    Id3v2Source(TagLib::ID3v2::Tag* tag, TagLib::File& file, long offset);

    // A save would keep all frames, as Id3v2SurvivesSave says too.
    bool SurvivesSave() const { return survives_; }

private:
    bool survives_ = true;
};

// The same for a RIFF or AIFF file, whose tag stands in a chunk. A save removes
// all chunks of that name, so there must not be a second one.
template <typename ChunkedFile>
Id3v2Source Id3v2SourceInChunks(TagLib::ID3v2::Tag* tag, ChunkedFile& file) {
    TagLib::ByteVector bytes;
    int chunks = 0;
    for (unsigned index = 0; index < file.chunkCount(); ++index) {
        if (file.chunkName(index) == "ID3 " || file.chunkName(index) == "id3 ") {
            bytes = file.chunkData(index);
            ++chunks;
        }
    }
    return Id3v2Source(tag, chunks == 1 ? bytes : TagLib::ByteVector());
}

} // namespace tagmap
