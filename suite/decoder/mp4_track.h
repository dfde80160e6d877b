#pragma once

#include "suite/decoder/mp4_boxes.h"

#include <tbytevector.h>

#include <cstdint>
#include <optional>

namespace decoder {

// The first track of sound in an MP4 file (ISO/IEC 14496-12, sections 8.3 to
// 8.8), as its boxes tell of it.
struct Mp4Track {
    uint32_t TimeScale = 0; // ticks per second
    uint64_t Duration = 0;  // of its samples, in ticks
    // Of what is played, in milliseconds: without what the edit list cuts off,
    // such as the encoder's delay.
    int64_t PlayedMs = 0;
    int64_t Bytes = 0;              // of all samples; 0 if it isn't told
    TagLib::ByteVector SampleEntry; // the first one of "stsd", from its size on
};

std::optional<Mp4Track> ReadMp4Track(TagLib::IOStream& stream);

} // namespace decoder
