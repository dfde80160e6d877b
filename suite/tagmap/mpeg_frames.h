#pragma once

#include "suite/tagmap/file_stream.h"

namespace tagmap {

// True if MPEG audio (ISO/IEC 11172-3 and 13818-3, layers I to III) begins
// within the first 64 kB from `offset` on: three frames in a row that agree in
// version, layer and sampling rate, or fewer if the file ends behind them and
// its extension is that of such a file.
bool HoldsMpegFrames(FileStream& stream, long offset);

} // namespace tagmap
