#pragma once

#include <tiostream.h>

namespace tagmap {

// False if the library, which makes an object for each box of an MP4 file and
// goes into boxes within boxes by calling itself, would use up memory or stack:
// more boxes, or deeper ones, than any file of audio has. To be asked before the
// library opens the file.
bool Mp4BoxesAreBounded(TagLib::IOStream& stream);

} // namespace tagmap
