#pragma once

#include <apetag.h>
#include <tfile.h>

namespace tagmap {

// Asked of a file with an APE tag at its end, that was opened and not changed;
// `hasId3v1` if the other tag stands behind it. False if the library would not
// write each item again byte for byte: it drops empty ones and those with
// invalid keys, keeps one of several with the same key, and loses flags that it
// doesn't know and texts that are no UTF-8. False too for a tag whose sizes
// don't fit together: a save would cut the audio, or leave a gap of megabytes.
bool ApeSurvivesSave(TagLib::File& file, const TagLib::APE::Tag& tag, bool hasId3v1);

} // namespace tagmap
