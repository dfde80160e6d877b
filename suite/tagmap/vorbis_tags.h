#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <xiphcomment.h>

// The texts of a Vorbis comment: those of Ogg files (pictures of the comment
// are apart, in flac_pictures.h) and of FLAC files. After the recommendations
// on the Xiph wiki and the tables of the well-known taggers.
//
// - "track" and "disc" are one text n/N, and two comments.
// - "encoder" reads as the vendor string unless there is a comment ENCODER;
//   only the comment is written or deleted.
// - "comment" reads DESCRIPTION too, "label" PUBLISHER; writing or deleting the
//   element takes these away, so that no second text is left behind.
// - WAVEFORMATEXTENSIBLE_CHANNEL_MASK says how the audio is to be played: it is
//   neither read nor changed.
namespace tagmap {

void ReadVorbis(const TagLib::Ogg::XiphComment& comment, clTagRecord& record);
// Does what `changes` says of texts: each element replaces its comments, an
// empty one removes them. `refused` gets the names that can't be written.
void SetVorbis(TagLib::Ogg::XiphComment& comment, clTagRecord& changes, Refusals& refused);
// An empty list stands for all texts.
void DeleteVorbis(TagLib::Ogg::XiphComment& comment, const NStringList& names);

} // namespace tagmap
