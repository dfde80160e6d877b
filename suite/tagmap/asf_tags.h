#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <asffile.h>
#include <asftag.h>

// The tag of an ASF file (WMA): the content description and the attributes,
// texts and pictures. After Microsoft's list of Windows Media attributes.
//
// - Author, Title, Copyright and Description are single texts: several values
//   are joined with "; ". All others may repeat, and pictures too.
// - An attribute that is a number or a flag stays one if the new text is one.
// - Attributes about how the audio was coded, or of single streams, are
//   neither read nor changed.
namespace tagmap {

void ReadAsf(const TagLib::ASF::Tag& tag, clTagRecord& record);
// Does what `changes` says, pictures included: each element replaces its
// field, an empty one removes it. `refused` gets the names that can't be
// written.
void SetAsf(TagLib::ASF::Tag& tag, clTagRecord& changes, Refusals& refused);
// An empty list stands for the whole tag.
void DeleteAsf(TagLib::ASF::Tag& tag, const NStringList& names);

// To be called right before each save. A save puts the first of several values
// into one object of the header and the others into another, and a reader
// meets them in the order of these objects. This arranges the values so that
// their order lasts; only where values below and above 64 KB are mixed, one of
// the small ones comes first or last at the next read, and stays there.
void ArrangeAsfForSave(TagLib::ASF::File& file);

} // namespace tagmap
