#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <apetag.h>

// The items "Cover Art (<type>)" of an APE tag; ape_tags.h has their rules.
namespace tagmap {

// True for the key of a picture, of a type known or not.
bool IsApePictureKey(const TagLib::String& key);

void ReadApePictures(const TagLib::APE::Tag& tag, clTagRecord& record);
void SetApePictures(TagLib::APE::Tag& tag, clTagRecord& changes, Refusals& refused);
// An empty list stands for all pictures.
void DeleteApePictures(TagLib::APE::Tag& tag, const NStringList& names);

} // namespace tagmap
