#include "suite/tagmap/tag_values.h"

#include <algorithm>

namespace tagmap {

namespace {
constexpr wchar_t ValueSeparator = L'\r';
constexpr wchar_t SingleFieldSeparator[] = L"; ";

// A line end inside a value must not look like the end of a part.
NString WithoutCarriageReturns(const TagLib::String& value) {
    NString text = ToNString(value);
    if (!text.FindChar(ValueSeparator))
        return text;
    text.Replace(L"\r\n", L"\n");
    text.Replace(L"\r", L"\n");
    return text;
}
} // namespace

NString ToNString(const TagLib::String& text) {
    NString result;
    result.Assign(text.toCWString(), static_cast<int>(text.size()));
    return result;
}

TagLib::String ToTagLib(const NString& text) {
    return TagLib::String(std::wstring(text.c_str(), static_cast<size_t>(text.CharCount())));
}

std::wstring NameKey(const NString& name) {
    std::wstring key(name.c_str());
    std::transform(key.begin(), key.end(), key.begin(), NUpperUnit);
    return key;
}

TagLib::StringList SplitValues(const NString& text) {
    TagLib::StringList values;
    int from = 1;
    while (from < text.Length) {
        int separator = text.FindChar(ValueSeparator, from);
        int last = separator ? separator - 1 : text.CharCount();
        if (last >= from)
            values.append(ToTagLib(text.Mid(from, last)));
        from = last + 2;
    }
    return values;
}

NString JoinValues(const TagLib::StringList& values) {
    NString joined;
    for (const TagLib::String& value : values) {
        if (value.isEmpty())
            continue;
        if (!joined.IsEmpty())
            joined.Append(&ValueSeparator, 1);
        joined.Append(WithoutCarriageReturns(value));
    }
    return joined;
}

TagLib::String JoinForSingleField(const TagLib::StringList& values) {
    return values.toString(SingleFieldSeparator);
}

void Refusals::Add(const NString& name) {
    if (keys_.insert(NameKey(name)).second)
        names_.Add(name);
}

} // namespace tagmap
