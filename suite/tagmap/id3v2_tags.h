#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <id3v1tag.h>
#include <id3v2tag.h>
#include <tfile.h>

// ID3v2 tags, after the format's documents on id3.org and the tables of the
// well-known taggers, and the ID3v1 tag that may stand beside them.
//
// - "comment" is the COMM frame without a description, of any language; other
//   COMM frames stay. "upc" reads TXXX:UPC too.
// - "rating" is the POPM frame, whose play counter stays; TXXX:RATING, which
//   stands for it in some taggers, reads when there is no POPM, and goes when a
//   rating is written.
// - Names that the table lacks are the frames that the library knows by that
//   name ("lyrics" is USLT), or TXXX frames. TXXX frames keep their spelling,
//   and so does a name of a form "lyrics:description".
// - `_cdtoc` is MCDI, with its bytes as data.
// - Frames that no element stands for (chapters, private data, unknown ones)
//   are neither read nor changed.
namespace tagmap {

inline constexpr int Id3v2OldVersion = 3; // ID3v2.3
inline constexpr int Id3v2NewVersion = 4; // ID3v2.4

// The version that a tag is to be saved in: its own, but 2.3 for 2.2 and for a
// tag that is yet to be made (null).
int Id3v2VersionToWrite(const TagLib::ID3v2::Tag* tag);
TagLib::ID3v2::Version LibraryVersion(int version);

// False if the tag has encrypted or grouped frames: the library saves them
// without the flags that say so, which makes them unreadable. And false for
// frames of ID3v2.2 that have no name in the later versions: it leaves them out.
// And false for more frames than any real tag has.
bool Id3v2SurvivesSave(const TagLib::ID3v2::Tag& tag);

void ReadId3v2(const TagLib::ID3v2::Tag& tag, clTagRecord& record);

// Does what `changes` says, pictures included, for a tag that is then prepared
// for a save in `version`. In ID3v2.3 several values are one text, with "; " between them,
// and texts are UTF-16. `refused` gets the names that can't be written.
void SetId3v2(TagLib::ID3v2::Tag& tag, clTagRecord& changes, int version, Refusals& refused);

// An empty list stands for all frames that ReadId3v2 reads.
void DeleteId3v2(TagLib::ID3v2::Tag& tag, const NStringList& names);

// The library's save in ID3v2.3 leaves out or cuts frames that it knows as
// those of 2.4, and those that it could not bring to 2.4 when it read the tag.
// This gives them a form that a save in `version` keeps. Once, before a save.
void PrepareId3v2Save(TagLib::ID3v2::Tag& tag, int version);

// Saves a FLAC or True Audio file, whose `tag` (or null) the library would write
// in ID3v2.4 alone, with the tag in `version`.
bool SaveInVersion(TagLib::File& file, TagLib::ID3v2::Tag* tag, int version);

// Seven elements in Latin-1, cut to the lengths of the fields. Genres are
// those of the format's list, and none for all others.
void ReadId3v1(const TagLib::ID3v1::Tag& tag, clTagRecord& record);
// Leaves out the texts that aren't ASCII: most are in the code page of whoever
// wrote them, which nothing tells. For a copy that others will believe.
void ReadSureId3v1(const TagLib::ID3v1::Tag& tag, clTagRecord& record);
void SetId3v1(TagLib::ID3v1::Tag& tag, clTagRecord& changes);
void DeleteId3v1(TagLib::ID3v1::Tag& tag, const NStringList& names);

} // namespace tagmap
