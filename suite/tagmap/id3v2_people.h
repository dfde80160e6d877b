#pragma once

#include "suite/tagmap/tag_values.h"

#include <id3v2tag.h>

#include <deque>
#include <map>
#include <string>
#include <utility>

// The frames TIPL and TMCL: pairs of a role or an instrument and a name. Each
// pair is a value of an element: "producer" and the other roles that the
// library names, or "performer:" and the instrument.
namespace tagmap {

// Texts by their names, in the order in which the names came.
class NamedTexts {
public:
    // Appends to the texts of that name, in any case, or a new entry.
    void Add(const NString& name, const TagLib::StringList& values);

    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

private:
    std::deque<std::pair<NString, TagLib::StringList>> entries_;
    std::map<std::wstring, size_t> places_; // in `entries_`, by NameKey
};

bool IsPeopleFrame(const TagLib::ID3v2::Frame& frame);
bool IsPersonName(const NString& name);

void ReadPeople(const TagLib::ID3v2::Frame& frame, NamedTexts& texts);
// Replaces the pairs of that name; no values remove them.
void PutPeople(TagLib::ID3v2::Tag& tag, const NString& name, const TagLib::StringList& values,
               int version);
void RemovePeople(TagLib::ID3v2::Tag& tag);

} // namespace tagmap
