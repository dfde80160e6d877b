#pragma once

#include <id3v2tag.h>
#include <tfile.h>

#include <algorithm>
#include <functional>
#include <unordered_map>

namespace tagmap {

// A tag beside its bytes in the file, header included (ID3v2.2 to 2.4, section
// 3.1 of each; the tag must not have been changed since it was read).
//
// The library stops at a frame of no length or with a malformed name, passes
// over a second tag behind the first, and drops what stands in brackets before
// a genre unless it is a number. Genres are given back to the tag, as the text
// that the file has; the rest can't be, and would be lost by a save. So would
// bytes that the library takes out as unsynchronisation, and may not be any.
// Frames that it misreads, by a wrong length in front of them, are read anew.
//
// Tag and file live at least as long, and are not changed before Remember.
class Id3v2Source {
public:
    Id3v2Source() = default;
    // Gives at most so many of the tag's bytes, from a place in it on.
    using BytesOf = std::function<TagLib::ByteVector(unsigned at, unsigned count)>;

    // `tag` may be null. The bytes are asked for when they are needed: for
    // genres with brackets and frames with a length in front at once, for all
    // else, which a file that is only read can do without, by the calls below.
    Id3v2Source(TagLib::ID3v2::Tag* tag, const BytesOf& bytesOf);
    Id3v2Source(TagLib::ID3v2::Tag* tag, const TagLib::ByteVector& bytes);
    // The tag that begins at that place of the file.
    Id3v2Source(TagLib::ID3v2::Tag* tag, TagLib::File& file, long offset);

    // A save would keep all frames, as Id3v2SurvivesSave says too.
    bool SurvivesSave();

    // Notes what the frames hold, before the tag is changed.
    void Remember(TagLib::ID3v2::Tag& tag);
    // Gets the tag ready for a save in `version`. A frame that is as it was when
    // it was remembered goes back into the file with the bytes that it has
    // there, if the tag keeps its version: the library reads some with a loss.
    // Once. False if the tag would be larger than the format allows, 256 MB.
    bool PrepareSave(TagLib::ID3v2::Tag& tag, int version);

private:
    struct SourceFrame {
        TagLib::ByteVector Id;
        TagLib::ByteVector Fields;
        TagLib::ByteVector Rendered; // by the library, before a change
    };

    bool MayHaveMisreadFrame() const;
    bool MayHaveBracketedGenre() const;
    // Goes over all bytes, unless that is done.
    void LookAtBytes();
    void Walk(TagLib::ID3v2::Tag& tag, const TagLib::ByteVector& content);
    TagLib::ID3v2::Frame* TakeFields(const TagLib::ID3v2::Header& header,
                                     TagLib::ID3v2::Frame* frame, const TagLib::ByteVector& id,
                                     const TagLib::ByteVector& stored);
    const SourceFrame* SourceOf(TagLib::ID3v2::Frame* frame,
                                const TagLib::ByteVector& rendered) const;

    TagLib::ID3v2::Tag* tag_ = nullptr; // null once its bytes are looked at
    BytesOf bytesOf_;
    bool survives_ = true;
    int version_ = 0; // in the file; 0 if there is no tag
    unsigned end_ = 0;
    std::unordered_map<TagLib::ID3v2::Frame*, SourceFrame> frames_;
};

// The same for a RIFF or AIFF file, whose tag stands in a chunk. A save removes
// all chunks of that name, so there must not be a second one.
template <typename ChunkedFile>
Id3v2Source Id3v2SourceInChunks(TagLib::ID3v2::Tag* tag, ChunkedFile& file) {
    int chunks = 0;
    long offset = 0;
    unsigned size = 0;
    for (unsigned index = 0; tag && index < file.chunkCount(); ++index) {
        if (file.chunkName(index) == "ID3 " || file.chunkName(index) == "id3 ") {
            offset = static_cast<long>(file.chunkOffset(index));
            size = file.chunkDataSize(index);
            ++chunks;
        }
    }
    size = chunks == 1 ? size : 0;
    return Id3v2Source(tag, [&file, offset, size](unsigned at, unsigned count) {
        const unsigned begin = std::min(at, size);
        file.seek(offset + static_cast<long>(begin));
        return file.readBlock(std::min(count, size - begin));
    });
}

} // namespace tagmap
