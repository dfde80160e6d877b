#pragma once

#include "codec/tag_record.h"
#include "foundation/nlists.h"
#include "suite/tagmap/tag_values.h"

#include <aifffile.h>

namespace tagmap {

// An AIFF file with a way to its chunks, which the library keeps to itself.
class AiffFile : public TagLib::RIFF::AIFF::File {
public:
    using File::chunkCount;
    using File::chunkData;
    using File::chunkDataSize;
    using File::chunkName;
    using File::chunkOffset;
    using File::chunkPadding;
    using File::File;
    using File::removeChunk;
    using File::setChunkData;
};

// The text chunks of AIFF itself ("Audio Interchange File Format", Apple 1989:
// NAME, AUTH, "(c) " and ANNO) beside its ID3 chunk. They are kept in step
// where a file has them, and never made. Other programs write UTF-8 into them,
// so this does too; what isn't UTF-8 is read as Latin-1.
void ReadAiffTexts(AiffFile& file, clTagRecord& record);
// Without the elements that have a text which is no UTF-8: which code page it has
// is a guess.
void ReadSureAiffTexts(AiffFile& file, clTagRecord& record);
// Both change the file at once.
void SetAiffTexts(AiffFile& file, clTagRecord& changes);
// An empty list stands for all four.
void DeleteAiffTexts(AiffFile& file, const NStringList& names);

} // namespace tagmap
