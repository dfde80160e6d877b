#include "suite/tagmap/field_rules.h"

#include <algorithm>
#include <set>

namespace tagmap {

namespace {

constexpr bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

bool HasHalfSurrogatePair(const NString& text) {
    for (int position = 1; position <= text.CharCount(); ++position) {
        if (IsHighSurrogate(text.At(position)) && IsLowSurrogate(text.At(position + 1)))
            ++position;
        else if (IsHighSurrogate(text.At(position)) || IsLowSurrogate(text.At(position)))
            return true;
    }
    return false;
}

bool SameUnits(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t one, wchar_t other) {
        return NUpperUnit(one) == NUpperUnit(other);
    });
}

} // namespace

bool SameName(NameView a, NameView b) {
    return SameUnits(a.Units(), b.Units());
}

bool SameName(NameView a, const wchar_t* b) {
    for (const wchar_t unit : a.Units()) {
        if (*b == 0 || NUpperUnit(unit) != NUpperUnit(*b))
            return false;
        ++b;
    }
    return *b == 0;
}

bool BeginsWithName(NameView text, NameView beginning) {
    return SameUnits(text.Units().substr(0, beginning.Units().size()), beginning.Units());
}

bool AsksRemoval(const clTagElement& element) {
    return element.Value.IsEmpty() && element.Data.Size == 0;
}

bool IsNoText(const clTagElement& element) {
    if (element.Name.IsEmpty() || BeginsWithName(ToTagLib(element.Name), RiffPrefix))
        return true;
    if (HasHalfSurrogatePair(element.Name) || HasHalfSurrogatePair(element.Value))
        return true;
    return !AsksRemoval(element) && SplitValues(element.Value).isEmpty();
}

void AddValues(clTagRecord& record, const NString& name, const TagLib::StringList& values) {
    const NString text = JoinValues(values);
    if (!text.IsEmpty())
        record.Add(name.c_str(), text.c_str());
}

void AppendMissing(TagLib::StringList& list, const TagLib::StringList& values) {
    std::set<TagLib::String> known(list.begin(), list.end());
    for (const TagLib::String& value : values)
        if (known.insert(value).second)
            list.append(value);
}

NString LowerName(const TagLib::String& fieldName) {
    return ToNString(fieldName).ToLower();
}

bool ParseNumberPair(const NString& text, int most, clNumberPair& pair) {
    const int slash = text.FindChar(L'/');
    const NString first = slash ? text.Left(slash - 1) : text;
    const NString second = slash ? text.From(slash + 1) : NString();
    const auto limit = static_cast<uint64_t>(most);
    uint64_t number = 0;
    uint64_t total = 0;
    if (first.IsEmpty() && second.IsEmpty())
        return false;
    if (!first.IsEmpty() && !ParseWholeNumber(first, limit, number))
        return false;
    if (!second.IsEmpty() && !ParseWholeNumber(second, limit, total))
        return false;
    pair = {static_cast<int>(number), static_cast<int>(total)};
    return true;
}

NString FormatNumberPair(const clNumberPair& pair) {
    NString text;
    if (pair.Number > 0)
        text = NString::FromInt(pair.Number);
    if (pair.Total > 0) {
        text.Append(L"/");
        text.Append(NString::FromInt(pair.Total));
    }
    return text;
}

bool ParseWholeNumber(const NString& text, uint64_t most, uint64_t& number) {
    uint64_t value = 0;
    for (int position = 1; position <= text.CharCount(); ++position) {
        const wchar_t unit = text.At(position);
        if (unit < L'0' || unit > L'9')
            return false;
        const auto digit = static_cast<uint64_t>(unit - L'0');
        if (digit > most || value > (most - digit) / 10)
            return false;
        value = value * 10 + digit;
    }
    if (text.IsEmpty())
        return false;
    number = value;
    return true;
}

} // namespace tagmap
