#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

// In front of mp4file.h, whose forward declaration would make the File that its
// constructors take another one than the library was built with.
#include <mp4atom.h>
#include <mp4file.h>
#include <mp4tag.h>

// The item list of an MP4 file ("ilst" of Apple's QuickTime metadata), texts
// and covers.
//
// - Names that neither the table nor the library knows are free-form atoms of
//   com.apple.iTunes, in the spelling they were given; one that is there is
//   found whatever the case of its letters. An atom of another owner has its
//   whole name, `----:owner:name`, as the element's.
// - Track, disc and tempo are numbers: any other text is refused. "3/0" and
//   "03" are held as 3; a track or disc 0 is none, and refused.
// - A cover has neither type nor description: it reads as a number alone.
// - iTunSMPB says where the decoded audio begins and ends: it is neither read
//   nor changed.
namespace tagmap {

void ReadMp4(const TagLib::MP4::Tag& tag, clTagRecord& record);
// Does what `changes` says, pictures included: each element replaces its atom,
// an empty one removes it. `refused` gets the names that can't be written.
void SetMp4(TagLib::MP4::Tag& tag, clTagRecord& changes, Refusals& refused);
// An empty list stands for the whole item list.
void DeleteMp4(TagLib::MP4::Tag& tag, const NStringList& names);

} // namespace tagmap
