#pragma once

#include "tests/tagmap/file_to_save.h"
#include "tests/tagmap/vorbis_bytes.h"

#include <string>
#include <vector>

// FLAC files of the test's own blocks.
namespace tagmap {

enum FlacBlockType : unsigned {
    Application = 2,
    SeekTable = 3,
    Comment = 4,
    CueSheet = 5,
    PictureBlock = 6,
    Reserved = 77
};

struct FlacBlock {
    FlacBlockType Type;
    std::string Data;
};

inline constexpr size_t LastBlock = 0x80;

inline std::string BlockBytes(const FlacBlock& block) {
    return BigEndian((static_cast<size_t>(block.Type) << 24) | block.Data.size()) + block.Data;
}

// The sample's stream information, these blocks, and the sample's audio.
inline std::string FlacWith(const std::vector<FlacBlock>& blocks) {
    constexpr size_t StreamInfoEnd = 4 + 4 + 34;
    const std::string sample = SampleContent("sample.flac");
    size_t audio = 4;
    for (bool isLast = false; !isLast;) {
        isLast = (static_cast<unsigned char>(sample[audio]) & LastBlock) != 0;
        audio += 4 + VectorOf(sample.substr(audio, 4)).toUInt(1U, 3U);
    }
    std::string file = sample.substr(0, StreamInfoEnd);
    for (const FlacBlock& block : blocks)
        file += BlockBytes(block);
    constexpr char LastPadding[] = "\x81\0\0\0";
    return file + std::string(LastPadding, 4) + sample.substr(audio);
}

} // namespace tagmap
