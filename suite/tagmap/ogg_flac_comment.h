#pragma once

#include <oggflacfile.h>

// The comment of a FLAC stream in Ogg: a VORBIS_COMMENT block in a packet of
// its own (RFC 9639, section 10.1).
namespace tagmap {

// Asked of a file that was opened and not changed. False if a save would lose
// an entry (vorbis_save.h), or if the comment isn't found.
bool OggFlacSurvivesSave(TagLib::Ogg::FLAC::File& file);

// In place of the library's save, which takes from a comment that is the last
// block the mark that says so: what follows is audio, and would be taken for
// one more block. False if the comment is too long for a block.
bool SaveOggFlac(TagLib::Ogg::FLAC::File& file);

} // namespace tagmap
