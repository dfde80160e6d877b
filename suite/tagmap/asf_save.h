#pragma once

#include <tiostream.h>

namespace tagmap {

// False if a save would harm the file ("Advanced Systems Format Specification",
// Microsoft 2004: sections 3.1, 3.4, 3.10, 3.11, 4.7 and 4.8).
//
// The library writes a new header over as many bytes as the old one is said to
// have: a wrong number costs the audio. It also puts each object together again
// from what it has read, as far as it understood that. So all sizes must agree
// with each other, and all that the library reads must be what it writes.
bool AsfSurvivesSave(TagLib::IOStream& stream);

} // namespace tagmap
