#pragma once

#include "foundation/nlists.h"
#include "foundation/nstring.h"

#include <tstring.h>
#include <tstringlist.h>

#include <set>
#include <string>

// Texts between the library and the record. Both hold UTF-16 units, surrogates
// included, so nothing is lost either way.
namespace tagmap {

NString ToNString(const TagLib::String& text);
TagLib::String ToTagLib(const NString& text);

// The same for all names that differ in nothing but ASCII case: a damaged file can
// have a million names, too many to compare each with all others.
std::wstring NameKey(const NString& name);

// An element with several values holds one carriage return between them.
// Empty parts are left out; a text without any gives an empty list.
TagLib::StringList SplitValues(const NString& text);
NString JoinValues(const TagLib::StringList& values);
// The values as one text, for a field that can hold no more: "; " between them.
TagLib::String JoinForSingleField(const TagLib::StringList& values);

// The names of the elements that a format can't hold as they were asked for.
// The others are written all the same.
class Refusals {
public:
    // Each name once.
    void Add(const NString& name);
    bool Contains(const NString& name) const { return keys_.contains(NameKey(name)); }
    const NStringList& Names() const { return names_; }

private:
    NStringList names_;
    std::set<std::wstring> keys_;
};

} // namespace tagmap
