#pragma once

// In front of mp4file.h, whose forward declaration would make the File that its
// constructors take another one than the library was built with.
#include <mp4atom.h>
#include <mp4file.h>
#include <tbytevector.h>

namespace tagmap {

// False if a save would harm the file: if its boxes don't fit (mp4_boxes.h), if
// its metadata is of another kind than the item list, or if the library would
// not keep the list as it is.
bool Mp4SurvivesSave(TagLib::MP4::File& file);

// What stands in the item list, tried out: the library reads and saves a file in
// memory with this list alone, and each item must come back with its values.
// Numbers may have other sizes, pairs of numbers other zeros behind them, and a
// genre by number may become one by name; fillers may go.
bool Mp4ItemsSurviveSave(const TagLib::ByteVector& items);

} // namespace tagmap
