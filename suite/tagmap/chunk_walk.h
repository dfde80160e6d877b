#pragma once

#include <cstdint>

namespace tagmap {

// The library has walked over all chunks of a RIFF or AIFF file, and one of that
// name, with the sound, is among them. It stops at a chunk that reaches beyond
// the file (a recorder that was cut off leaves the largest number as the size)
// or has no valid name; a save would then put its own chunks over what follows,
// and change the size of the whole to end there. Less than a chunk's head may
// follow the last. And there are no more than any file has: for each that goes a
// save moves all that follows.
template <typename ChunkedFile>
bool WasWalkedToItsEnd(ChunkedFile& file, const char* soundChunk) {
    constexpr int64_t headSize = 8;
    constexpr unsigned mostChunks = 256;
    const unsigned count = file.chunkCount();
    bool hasSound = false;
    for (unsigned index = 0; index < count; ++index)
        hasSound = hasSound || file.chunkName(index) == soundChunk;
    if (!hasSound || count > mostChunks)
        return false;
    const unsigned last = count - 1;
    const int64_t end =
        int64_t{file.chunkOffset(last)} + file.chunkDataSize(last) + file.chunkPadding(last);
    return file.length() - end < headSize;
}

} // namespace tagmap
