#pragma once

#include "suite/tagmap/file_stream.h"

#include <id3v2header.h>

// A bound to what the library makes of an ID3v2 tag. It reads a frame up to the
// length in front of its fields, which may reach over all that follows, and it
// reads the frames within a chapter (ID3v2 Chapter Frame Addendum 1.0) the same
// way: thirty frames would be read a billion times, and chapters within
// chapters until the stack is full.
namespace tagmap {

// `content` is what follows the header. False where the library would make more
// frames than there is room for, read the same bytes over and over, or look
// into chapters many levels deep.
bool Id3v2FramesAreBounded(const TagLib::ID3v2::Header& header, const TagLib::ByteVector& content);

// A file's stream that keeps such tags from the library, wherever in the file
// it finds them. It reads a tag's header, and then the content at once.
class GuardedStream : public FileStream {
public:
    using FileStream::FileStream;

    // A tag was asked for, and zeros were given in its place. Never cleared.
    bool HasWithheldTag() const { return hasWithheldTag_; }

    TagLib::ByteVector readBlock(unsigned long length) override;

private:
    TagLib::ByteVector header_; // read by the call before; empty if that read none
    long contentAt_ = 0;
    bool hasWithheldTag_ = false;
};

} // namespace tagmap
