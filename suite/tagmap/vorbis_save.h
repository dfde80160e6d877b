#pragma once

#include <tbytevector.h>
#include <xiphcomment.h>

#include <optional>
#include <vector>

// A Vorbis comment as it stands in the file (Vorbis I specification, section 5;
// RFC 7845, section 5.2), beside what the library makes of it.
namespace tagmap {

struct VorbisList {
    TagLib::ByteVector Vendor;
    std::vector<TagLib::ByteVector> Entries; // KEY=value
    TagLib::ByteVector Behind;               // what follows the last entry
};

// `bytes` begins with the length of the vendor string. Nothing if the list
// claims more than there is.
std::optional<VorbisList> ParseVorbisList(const TagLib::ByteVector& bytes);

// False if the library, which read `comment` from the list, would not write
// each entry again: it drops those with an invalid key, those whose value is no
// UTF-8, and pictures that it can't parse. Keys in upper case, a COVERART that
// becomes METADATA_BLOCK_PICTURE, and the loss of an entry without a value
// ("KEY="), which says nothing, are no damage.
bool VorbisSurvivesSave(const VorbisList& list, TagLib::Ogg::XiphComment& comment);

} // namespace tagmap
