#pragma once

#include "codec/tag_record.h"
#include "suite/tagmap/tag_values.h"

#include <id3v2tag.h>

// The texts of an ID3v2 tag that the table of elements lacks.
namespace tagmap {

// True if the frame holds, or may hold, the text of a row of the table.
bool IsTableFrame(const TagLib::ID3v2::Frame& frame);

void ReadOtherTexts(const TagLib::ID3v2::Tag& tag, clTagRecord& record);
// Replaces the texts of that name; none removes them. False, with nothing
// changed, if no frame could be read under the name again.
bool WriteOtherTexts(TagLib::ID3v2::Tag& tag, const NString& name, const TagLib::StringList& values,
                     int version);
void RemoveOtherTexts(TagLib::ID3v2::Tag& tag);

} // namespace tagmap
