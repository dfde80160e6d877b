#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <flacfile.h>
#include <xiphcomment.h>

// The pictures of FLAC files and of Vorbis comments, which have one layout:
// that of RFC 9639, section 8.8, in a block of its own or as base64 in a
// comment METADATA_BLOCK_PICTURE. A COVERART comment, which holds a picture
// without further facts, is read too, and the library makes it one of those in
// any save, whatever was changed; a COVERARTMIME beside it stays.
namespace tagmap {

// A FLAC file's pictures: its blocks, then those of its comment. A write that
// names pictures makes all of them blocks. `refused` gets the names of
// pictures that no block can hold (16 MB), and of those that are malformed.
void ReadFlacPictures(TagLib::FLAC::File& file, clTagRecord& record);
void SetFlacPictures(TagLib::FLAC::File& file, clTagRecord& changes, Refusals& refused);
// An empty list stands for all pictures.
void DeleteFlacPictures(TagLib::FLAC::File& file, const NStringList& names);

// The same for a comment of an Ogg file.
void ReadVorbisPictures(TagLib::Ogg::XiphComment& comment, clTagRecord& record);
void SetVorbisPictures(TagLib::Ogg::XiphComment& comment, clTagRecord& changes, Refusals& refused);
void DeleteVorbisPictures(TagLib::Ogg::XiphComment& comment, const NStringList& names);

} // namespace tagmap
