#pragma once

#include "suite/tagmap/audio_file.h"
#include "suite/tagmap/format_tags.h"

#include <memory>

// The tags of the formats that have a Vorbis comment. Null if the file lacks
// it where its format has one. They live no longer than the file.
namespace tagmap {

std::unique_ptr<FormatTags> MakeFlacTags(AudioFile& file);
std::unique_ptr<FormatTags> MakeOggVorbisTags(AudioFile& file);
std::unique_ptr<FormatTags> MakeOpusTags(AudioFile& file);
std::unique_ptr<FormatTags> MakeSpeexTags(AudioFile& file);
std::unique_ptr<FormatTags> MakeOggFlacTags(AudioFile& file);

} // namespace tagmap
