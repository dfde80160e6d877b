#pragma once

// First: behind the others its "File" would be another class.
#include <mp4atom.h>
#include <mp4file.h>

namespace tagmap {

// True if the boxes that a save moves by, the item list and the fillers beside
// it, end within the one around them, and each table of chunk offsets ("stco",
// "co64") has room for the entries that it counts (ISO/IEC 14496-12, sections
// 4.2 and 8.7.5). The library believes these numbers: a wrong one costs
// gigabytes of memory, or hours.
bool Mp4BoxesFit(TagLib::MP4::File& file);

} // namespace tagmap
