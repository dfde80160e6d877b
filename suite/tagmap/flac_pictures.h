#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"

#include <flacfile.h>
#include <flacpicture.h>

// The PICTURE blocks of a FLAC file, and the pictures inside a Vorbis comment,
// which have the same layout. The format is that of RFC 9639, section 8.8.
namespace tagmap {

// Appends the pictures in the file's order, numbered from `firstNumber`.
// Returns the number after the last one.
int ReadFlacPictures(TagLib::FLAC::File& file, clTagRecord& record, int firstNumber = 1);
// Does what `changes` says of pictures.
void SetFlacPictures(TagLib::FLAC::File& file, clTagRecord& changes);
// Takes off the pictures that `names` holds, or all for an empty list.
void DeleteFlacPictures(TagLib::FLAC::File& file, const NStringList& names);

} // namespace tagmap
