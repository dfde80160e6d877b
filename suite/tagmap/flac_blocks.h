#pragma once

#include <flacfile.h>

// The metadata blocks of a FLAC stream (RFC 9639, section 8) as they stand in
// the file, beside what the library makes of them.
namespace tagmap {

// False if the library, which reads the data of a PICTURE block, would not
// write the same bytes again.
bool FlacPictureSurvivesSave(const TagLib::ByteVector& data);

// Asked of a file that was opened and not changed. False if a save would lose
// something: the library drops a second VORBIS_COMMENT block, pictures that it
// can't parse, and entries of the comment (vorbis_save.h). Blocks of all other
// types but PADDING stay byte for byte. False too for more blocks than any real
// file has.
bool FlacSurvivesSave(TagLib::FLAC::File& file);

} // namespace tagmap
