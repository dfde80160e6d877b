#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <apetag.h>

// APE tags, version 2, after the format's pages on the Hydrogenaudio wiki.
//
// - Pictures are the binary items "Cover Art (<type>)", one of each type: a
//   file name or description, a zero byte, the bytes. They are numbered by
//   type, the front cover mostly being the first, since the library does not
//   keep the order of items. A description that is no type's is the text of a
//   picture of type "Other"; a second picture of one type is refused.
// - Keys have 2 to 255 characters of printable ASCII, and are matched without
//   regard to case; other names are refused.
// - Items of other binary data and of locations are neither read nor changed.
namespace tagmap {

void ReadApe(const TagLib::APE::Tag& tag, clTagRecord& record);
// `refused` gets the names that can't be written.
void SetApe(TagLib::APE::Tag& tag, clTagRecord& changes, Refusals& refused);
// An empty list stands for all items that ReadApe reads.
void DeleteApe(TagLib::APE::Tag& tag, const NStringList& names);

} // namespace tagmap
