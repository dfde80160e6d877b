#pragma once

#include <id3v2frame.h>
#include <id3v2header.h>
#include <tbytevector.h>

// Unsynchronisation (section 5 of ID3v2.3.0, 6.1 of 2.4.0, Main Structure): a
// zero stands behind each byte FF that a zero, or a byte from E0 on, follows.
// The flags that tell of it are not to be trusted: some programs set them and
// write the bytes as they are, where the zeros of "FF 00" are a JPEG's own.
namespace tagmap {

// Bytes as the library takes them.
struct PlainBytes {
    TagLib::ByteVector Bytes;
    // Zeros were taken out that may not have been put in.
    bool IsDoubtful = false;
};

// What stands between a tag's header and its end. `bytes` is the tag, header
// included. In the versions before 2.4 the tag as a whole is encoded.
PlainBytes ContentOf(const TagLib::ID3v2::Header& header, const TagLib::ByteVector& bytes);

// What follows a frame's header, without the length that may stand in front,
// which some writers get wrong. In 2.4 single frames are encoded. `stored` is
// the frame in what ContentOf gives.
PlainBytes FieldsOf(const TagLib::ID3v2::Header& header, const TagLib::ID3v2::Frame& frame,
                    const TagLib::ByteVector& stored);

// By a wrong length in front the library did not read what FieldsOf gives, but
// less of it, or what follows the frame as well.
bool IsMisreadByLength(const TagLib::ID3v2::Header& header, const TagLib::ID3v2::Frame& frame,
                       const TagLib::ByteVector& stored, const TagLib::ByteVector& fields);

} // namespace tagmap
