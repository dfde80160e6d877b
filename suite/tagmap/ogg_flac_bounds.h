#pragma once

#include <tiostream.h>

namespace tagmap {

// False for a FLAC stream in Ogg with more metadata blocks than any file has. The
// library looks for the last of them, and for each it goes over all pages from the
// first on. To be asked before the library opens the file.
bool OggFlacBlocksAreBounded(TagLib::IOStream& stream);

} // namespace tagmap
