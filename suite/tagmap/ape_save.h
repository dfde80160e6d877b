#pragma once

#include <apetag.h>
#include <tfile.h>

namespace tagmap {

// Asked of a file that was opened and not changed. `tag` is the library's APE
// tag, which may be null or stand for none; `hasId3v1` if the other tag stands
// at the file's end.
//
// False if the library would not write each item again byte for byte: it drops
// empty ones and those with invalid keys, keeps one of several with the same
// key, and loses flags that it doesn't know and texts that are no UTF-8. False
// too for a tag whose sizes don't fit together, for which the library need not
// say that there is one: a save would cut the audio, or leave a gap of megabytes.
// And false for more items than any real tag has.
bool ApeSurvivesSave(TagLib::File& file, const TagLib::APE::Tag* tag, bool hasId3v1);

} // namespace tagmap
