#pragma once

#include "codec/tag_record.h"
#include "suite/tagmap/audio_file.h"

namespace decoder {

// The kinds of tags that the file has, and the number of the pictures in
// `tags`, which is the record of them all: "ID3v2.3 tag, ID3v1 tag, 2
// pictures". Empty if there is neither.
NString ContentsOf(tagmap::AudioFile& file, clTagRecord& tags);

} // namespace decoder
