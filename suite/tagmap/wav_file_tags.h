#pragma once

#include "suite/tagmap/audio_file.h"
#include "suite/tagmap/format_tags.h"

#include <memory>

// The tags of a WAV file, which live no longer than the file.
namespace tagmap {

std::unique_ptr<FormatTags> MakeWavTags(AudioFile& file);

} // namespace tagmap
