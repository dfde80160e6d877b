#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <infotag.h>

// The INFO list of a RIFF file, after the registered entries of Microsoft's
// "Multimedia Programming Interface and Data Specifications" and the ones that
// the well-known taggers add (ITRK, IPUB, IRTD).
//
// - Several values are one text, with "; " between them.
// - `_riff_<id>` is an entry that the table does not name; the id has four
//   characters of printable ASCII.
// - Other names and pictures have no entry, and are refused.
namespace tagmap {

void ReadRiffInfo(const TagLib::RIFF::Info::Tag& tag, clTagRecord& record);
void SetRiffInfo(TagLib::RIFF::Info::Tag& tag, clTagRecord& changes, Refusals& refused);
// An empty list stands for all entries.
void DeleteRiffInfo(TagLib::RIFF::Info::Tag& tag, const NStringList& names);

} // namespace tagmap
