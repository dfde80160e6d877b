#pragma once

#include "suite/tagmap/audio_file.h"
#include "suite/tagmap/format_tags.h"

#include <memory>

// The tags of the formats whose ID3v2 tag counts first. Null if the file lacks
// the tag objects that its format has. They live no longer than the file.
namespace tagmap {

std::unique_ptr<FormatTags> MakeMpegTags(AudioFile& file);
std::unique_ptr<FormatTags> MakeAiffTags(AudioFile& file);
std::unique_ptr<FormatTags> MakeTrueAudioTags(AudioFile& file);

} // namespace tagmap
