#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <id3v2tag.h>

// The APIC frames of an ID3v2 tag, numbered in their order. Links to pictures,
// and frames without a picture, are neither read nor changed.
namespace tagmap {

void ReadId3v2Pictures(const TagLib::ID3v2::Tag& tag, clTagRecord& record);
void SetId3v2Pictures(TagLib::ID3v2::Tag& tag, clTagRecord& changes, int version,
                      Refusals& refused);
// An empty list stands for all pictures.
void DeleteId3v2Pictures(TagLib::ID3v2::Tag& tag, const NStringList& names);

} // namespace tagmap
