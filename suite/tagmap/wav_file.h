#pragma once

#include <wavfile.h>

namespace tagmap {

// A WAV file with a way to its chunks, which the library keeps to itself.
class WavFile : public TagLib::RIFF::WAV::File {
public:
    using File::chunkCount;
    using File::chunkData;
    using File::chunkDataSize;
    using File::chunkName;
    using File::chunkOffset;
    using File::chunkPadding;
    using File::File;
};

} // namespace tagmap
