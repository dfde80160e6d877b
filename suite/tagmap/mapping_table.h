#pragma once

#include "foundation/nstring.h"

#include <span>

// The one table of how an element of a tag record stands in each format. It
// follows what the well-known taggers publish (MusicBrainz Picard's tag map,
// Kid3's, the Hydrogenaudio pages), so that the players people use read what
// is written here, and the other way round.
//
// How a field is filled, where that takes more than a text (numbers, pairs,
// ratings, second names that are read too), stands in the files of the formats.
namespace tagmap {

struct clMappingRow {
    const wchar_t* Element;  // lower case
    const wchar_t* Id3v2;    // a frame of four letters, or "TXXX:" and a description
    const wchar_t* Vorbis;   // a comment's name
    const wchar_t* Mp4;      // an atom; "----:" and a name is one of com.apple.iTunes
    const wchar_t* Asf;      // an attribute's name
    const wchar_t* Ape;      // an item's key
    const wchar_t* RiffInfo; // an entry of the INFO list, or null if it has none
};

std::span<const clMappingRow> MappingRows();

// The row of an element, found without regard to ASCII case, or null.
const clMappingRow* FindMappingRow(const NString& element);

} // namespace tagmap
