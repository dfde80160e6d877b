#pragma once

// First: behind the others its "File" would be another class.
#include <mp4atom.h>
#include <mp4file.h>

namespace tagmap {

// True if a save finds the boxes as it needs them (ISO/IEC 14496-12, sections
// 4.2 and 8.7.5). The library believes the file's numbers: a wrong one costs
// gigabytes of memory, or hours; and where boxes change their size it mends the
// sizes around them and the tables of chunk offsets ("stco", "co64"), no more.
//
// - There is one movie. It and what leads to the item list say where they end,
//   within the box around them.
// - What the library puts its boxes into, or takes offsets from, has the short
//   kind of head.
// - Each table has room for the entries that it counts.
// - No other box holds places in the file ("saio", "iloc", a movie that is
//   compressed).
bool Mp4BoxesFit(TagLib::MP4::File& file);

} // namespace tagmap
