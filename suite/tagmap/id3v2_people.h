#pragma once

#include "suite/tagmap/tag_values.h"

#include <id3v2tag.h>

#include <utility>
#include <vector>

// The frames TIPL and TMCL: pairs of a role or an instrument and a name. Each
// pair is a value of an element: "producer" and the other roles that the
// library names, or "performer:" and the instrument.
namespace tagmap {

using NamedTexts = std::vector<std::pair<NString, TagLib::StringList>>;
// Appends to the texts of that name, in any case, or a new entry.
void AddNamedText(NamedTexts& texts, const NString& name, const TagLib::StringList& values);

bool IsPeopleFrame(const TagLib::ID3v2::Frame& frame);
bool IsPersonName(const NString& name);

void ReadPeople(const TagLib::ID3v2::Frame& frame, NamedTexts& texts);
// Replaces the pairs of that name; no values remove them.
void PutPeople(TagLib::ID3v2::Tag& tag, const NString& name, const TagLib::StringList& values,
               int version);
void RemovePeople(TagLib::ID3v2::Tag& tag);

} // namespace tagmap
