#pragma once

#include <tiostream.h>

#include <cstdint>

namespace decoder {

// Where the audio of a file without a container lies: behind the ID3v2 tags
// (section 3.1 of the format's description), and before an APE tag (its footer
// of 32 bytes) and an ID3v1 tag (the last 128 bytes).
struct AudioExtent {
    int64_t Begin = 0;
    int64_t End = 0;
    int64_t Size() const { return End - Begin; }
};

AudioExtent ExtentOfAudio(TagLib::IOStream& stream);

} // namespace decoder
