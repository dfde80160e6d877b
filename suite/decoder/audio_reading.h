#pragma once

#include "codec/tag_record.h"
#include "suite/decoder/audio_facts.h"

#include <cstdint>

namespace decoder {

// What one reading of a file gives.
struct AudioReading {
    AudioFacts Facts;
    int64_t FileSize = 0;
    clTagRecord Tags;     // the elements of the file's tags
    clTagRecord TechInfo; // "encoder", "encoder settings", "audio quality", "contains",
                          // "channel mapping"; those that are known
};

// Opens the file once, for reading, shared for all that others may do, and has
// closed it at return. `path` is absolute, of any length. False, with `reading`
// undefined, if it can't be opened, or is no audio that can be told of.
bool ReadAudio(const wchar_t* path, AudioReading& reading);

} // namespace decoder
