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
// - What is no UTF-8 reads as Latin-1, and stays byte for byte.
namespace tagmap {

// False if a save of `tag`, which was read from the list and not changed, would
// lose something: the library keeps one of several entries with the same id,
// cuts texts at a zero byte, and stops where an entry claims more than there
// is. `list` begins with its name, "INFO". An entry without a text is no loss.
bool RiffInfoSurvivesSave(const TagLib::ByteVector& list, const TagLib::RIFF::Info::Tag& tag);

void ReadRiffInfo(const TagLib::RIFF::Info::Tag& tag, clTagRecord& record);
// Without what is no UTF-8: which code page it has is a guess.
void ReadSureRiffInfo(const TagLib::RIFF::Info::Tag& tag, clTagRecord& record);
void SetRiffInfo(TagLib::RIFF::Info::Tag& tag, clTagRecord& changes, Refusals& refused);
// An empty list stands for all entries.
void DeleteRiffInfo(TagLib::RIFF::Info::Tag& tag, const NStringList& names);

} // namespace tagmap
