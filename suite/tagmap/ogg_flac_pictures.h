#pragma once

#include <oggflacfile.h>

namespace tagmap {

// The PICTURE blocks of a FLAC stream in Ogg (RFC 9639, sections 8.8 and 10.1)
// stand in packets of their own, which the library passes over. This moves them
// to the comment, in front of the pictures it has, as METADATA_BLOCK_PICTURE
// holds the same bytes; an empty PADDING block takes each one's place. Nothing
// reaches the disk before the file is saved.
void MovePictureBlocksToComment(TagLib::Ogg::FLAC::File& file);

} // namespace tagmap
