#pragma once

#include "codec/tag_record.h"
#include "suite/tagmap/tag_values.h"

#include <string_view>

// What Vorbis comments, MP4 and ASF have in common in the way that an element
// becomes fields and comes back.
namespace tagmap {

inline constexpr wchar_t CdTocName[] = L"_cdtoc";
inline constexpr wchar_t RiffPrefix[] = L"_riff_";

// A name for the two calls below, without a copy: a file takes hundreds of them.
class NameView {
public:
    NameView(const TagLib::String& name) : units_(name.toCWString(), name.size()) {}
    NameView(const wchar_t* name) : units_(name) {}
    NameView(std::wstring_view name) : units_(name) {}
    std::wstring_view Units() const { return units_; }

private:
    std::wstring_view units_;
};

// Compares without regard to ASCII case.
bool SameName(NameView a, NameView b);
// Without a look for the end of `b`, which is mostly another name.
bool SameName(NameView a, const wchar_t* b);
bool BeginsWithName(NameView text, NameView beginning);

// Nothing in it: the field is to go.
bool AsksRemoval(const clTagElement& element);
// An element that a format of texts can't hold: bytes and no text, carriage
// returns alone, half of a surrogate pair (the library writes nothing for such
// a text), an entry of a RIFF container, or no name.
bool IsNoText(const clTagElement& element);

// Appends an element with the values, unless there are none.
void AddValues(clTagRecord& record, const NString& name, const TagLib::StringList& values);
// Appends the values that `list` lacks.
void AppendMissing(TagLib::StringList& list, const TagLib::StringList& values);

// The element's name for a field's own name that no table has.
NString LowerName(const TagLib::String& fieldName);

// A text n, n/N or /N as two numbers from 0 to `most`, 0 standing for none.
// False for any other text.
struct clNumberPair {
    int Number = 0;
    int Total = 0;
};
bool ParseNumberPair(const NString& text, int most, clNumberPair& pair);
// Empty when both are 0.
NString FormatNumberPair(const clNumberPair& pair);

// Decimal digits alone, up to `most`.
bool ParseWholeNumber(const NString& text, uint64_t most, uint64_t& number);

} // namespace tagmap
