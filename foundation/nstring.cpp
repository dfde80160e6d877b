#include "foundation/nstring.h"

#include "foundation/codepage.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {
constexpr int InlineUnits = 128;
constexpr int ConcatMargin = 25;
constexpr int InsertMargin = 32;

// A text never grows past this; an operation that would make it longer does
// nothing, like any other that is out of range.
constexpr int64_t MaxUnits = INT32_MAX - 64;

int CountUnits(const wchar_t* text) {
    const wchar_t* end = text;
    while (*end)
        ++end;
    return static_cast<int>(end - text);
}

void CopyUnits(wchar_t* destination, const wchar_t* source, int count) {
    if (count > 0)
        memmove(destination, source, static_cast<size_t>(count) * sizeof(wchar_t));
}

bool SameUnits(const wchar_t* a, const wchar_t* b, int count) {
    return memcmp(a, b, static_cast<size_t>(count) * sizeof(wchar_t)) == 0;
}
} // namespace

NString::NString() : Text(Inline), Length(1), Value(0), Narrow(nullptr), Capacity(InlineUnits) {
    Inline[0] = 0;
}

NString::NString(const wchar_t* text, int64_t value) : NString() {
    Value = value;
    Assign(text);
}

NString::NString(const NString& other) : NString() {
    Value = other.Value;
    Assign(other.Text, other.Length - 1);
}

NString::NString(const char* text, bool utf8, int64_t value) : NString() {
    Value = value;
    if (!text || !*text)
        return;
    // No conversion makes more units than there are bytes.
    size_t bytes = strlen(text);
    if (bytes > static_cast<size_t>(MaxUnits))
        return;
    int capacity = static_cast<int>(bytes) + 3;
    auto units = std::make_unique<wchar_t[]>(static_cast<size_t>(capacity));
    if (utf8)
        NWideFromUtf8(text, units.get(), capacity);
    else
        NWideFromNarrow(text, units.get(), capacity);
    Assign(units.get());
}

NString::~NString() {
    DropHeapText();
    delete[] Narrow;
}

NString& NString::operator=(const NString& other) {
    if (this != &other)
        Assign(other.Text, other.Length - 1);
    return *this;
}

NString& NString::operator=(const wchar_t* text) {
    Assign(text);
    return *this;
}

void NString::Assign(const wchar_t* text, int length) {
    if (!text)
        length = 0;
    else if (length == NCountLength)
        length = CountUnits(text);
    length = std::max(length, 0);
    if (length > MaxUnits)
        return;
    if (Capacity >= length + 1) {
        CopyUnits(Text, text, length);
    } else {
        // The old buffer goes after the copy, since the text may lie in it.
        wchar_t* units = new wchar_t[static_cast<size_t>(length) + 1];
        CopyUnits(units, text, length);
        DropHeapText();
        Text = units;
        Capacity = length + 1;
    }
    Text[length] = 0;
    Length = length + 1;
}

wchar_t NString::At(int position) const {
    return position >= 1 && position < Length ? Text[position - 1] : L'\0';
}

int NString::Compare(const wchar_t* other, int count, bool ignoreCase) const {
    if (!other)
        return 1;
    for (int index = 0; count <= 0 || index < count; ++index) {
        wchar_t mine = ignoreCase ? NUpperUnit(Text[index]) : Text[index];
        wchar_t theirs = ignoreCase ? NUpperUnit(other[index]) : other[index];
        if (mine != theirs)
            return mine < theirs ? -1 : 1;
        if (mine == 0)
            return 0;
    }
    return 0;
}

int NString::Compare(const NString& other, int count, bool ignoreCase) const {
    return Compare(other.Text, count, ignoreCase);
}

int NString::Find(const wchar_t* text, int start) const {
    int units = text ? CountUnits(text) : 0;
    if (units == 0 || start < 1 || start >= Length)
        return 0;
    for (int position = start; position + units <= Length; ++position) {
        if (SameUnits(Text + position - 1, text, units))
            return position;
    }
    return 0;
}

int NString::FindChar(wchar_t character, int start) const {
    if (start < 1)
        return 0;
    for (int position = start; position < Length; ++position) {
        if (Text[position - 1] == character)
            return position;
    }
    return 0;
}

int NString::FindLastChar(wchar_t character, int start) const {
    int position = start == NFromLast ? Length - 1 : start;
    if (position >= Length)
        return 0;
    for (; position >= 1 && Text[position - 1] != 0; --position) {
        if (Text[position - 1] == character)
            return position;
    }
    return 0;
}

wchar_t NString::RemoveAt(int position) {
    if (position == NEnd)
        position = Length - 1;
    if (position < 1 || position >= Length)
        return 0;
    wchar_t removed = Text[position - 1];
    Delete(position, position);
    return removed;
}

void NString::Delete(int first, int last) {
    if (first < 1 || first >= Length || last < first)
        return;
    // Wanted: a range that runs past the end empties the string; it isn't cut
    // at `first`.
    if (last >= Length) {
        Text[0] = 0;
        Length = 1;
        return;
    }
    CopyUnits(Text + first - 1, Text + last, Length - last);
    Length -= last - first + 1;
}

void NString::RemoveRight(int count) {
    if (count > 0)
        SetLength(count >= Length - 1 ? 0 : Length - 1 - count, 0);
}

void NString::Insert(const wchar_t* text, int position) {
    if (!text)
        return;
    // A copy, since the text may lie behind the place of insertion.
    NString inserted(text);
    InsertUnits(inserted.Text, inserted.Length - 1, position);
}

void NString::InsertChar(wchar_t character, int position) {
    InsertUnits(&character, 1, position);
}

void NString::InsertUnits(const wchar_t* units, int count, int position) {
    if (position == NEnd)
        position = Length;
    if (position < 1 || position > Length || Length + static_cast<int64_t>(count) > MaxUnits)
        return;
    Reserve(Length + count, InsertMargin);
    CopyUnits(Text + position - 1 + count, Text + position - 1, Length - position + 1);
    CopyUnits(Text + position - 1, units, count);
    Length += count;
}

void NString::Append(const wchar_t* text, int length) {
    if (!text)
        return;
    int units = length == NCountLength ? CountUnits(text) : length;
    int64_t newLength = static_cast<int64_t>(Length) + units;
    if (units <= 0 || newLength > MaxUnits)
        return;
    if (newLength > Capacity && text >= Text && text < Text + Capacity) {
        NString copy;
        copy.Assign(text, units);
        Append(copy.Text, units);
        return;
    }
    Reserve(static_cast<int>(newLength), static_cast<int>(newLength / 3));
    CopyUnits(Text + Length - 1, text, units);
    Length += units;
    Text[Length - 1] = 0;
}

NString NString::Concat(const wchar_t* text) {
    int units = text ? CountUnits(text) : 0;
    if (units > 0 && static_cast<int64_t>(Length) + units <= MaxUnits) {
        NString appended(text);
        Reserve(Length + units, ConcatMargin);
        Append(appended.Text, units);
    }
    return *this;
}

NString NString::Mid(int first, int last) const {
    NString result;
    last = std::min(last, Length - 1);
    if (first >= 1 && first < Length && first <= last)
        result.Assign(Text + first - 1, last - first + 1);
    return result;
}

NString NString::Left(int count) const {
    return Mid(1, count);
}

NString NString::Right(int count) const {
    if (count <= 0)
        return NString();
    return From(count >= Length ? 1 : Length - count);
}

NString NString::From(int position) const {
    return Mid(position, Length - 1);
}

void NString::SetLength(int count, wchar_t fill) {
    count = std::max(count, 0);
    if (count >= MaxUnits)
        return;
    Reserve(count + 1, 0);
    for (int index = Length - 1; index < count; ++index)
        Text[index] = fill;
    Text[count] = 0;
    Length = count + 1;
}

void NString::TrimLeft() {
    int blanks = 0;
    while (Text[blanks] == L' ')
        ++blanks;
    if (blanks > 0)
        Delete(1, blanks);
}

NString NString::ToUpper() const {
    NString result;
    result.Assign(Text, Length - 1);
    std::transform(result.Text, result.Text + result.Length, result.Text, NUpperUnit);
    return result;
}

NString NString::ToLower() const {
    NString result;
    result.Assign(Text, Length - 1);
    std::transform(result.Text, result.Text + result.Length, result.Text, NLowerUnit);
    return result;
}

void NString::Replace(const wchar_t* find, const wchar_t* replacement, bool ignoreCase) {
    NString sought(find);
    if (sought.IsEmpty())
        return;
    NString haystack = ignoreCase ? ToUpper() : *this;
    if (ignoreCase)
        sought = sought.ToUpper();
    NString inserted(replacement);
    NString result;
    int copied = 0; // characters of this text that `result` has got
    for (int found; (found = haystack.Find(sought.Text, copied + 1)) != 0;) {
        result.Append(Text + copied, found - 1 - copied);
        result.Append(inserted);
        copied = found - 1 + sought.Length - 1;
    }
    if (copied == 0)
        return;
    result.Append(Text + copied, Length - 1 - copied);
    Assign(result.Text, result.Length - 1);
}

const char* NString::ToNarrow() {
    int size = std::max(NNarrowFromWide(Text, nullptr, 0), 1);
    char* narrow = new char[static_cast<size_t>(size)];
    narrow[0] = 0;
    NNarrowFromWide(Text, narrow, size);
    narrow[size - 1] = 0;
    delete[] Narrow;
    Narrow = narrow;
    return Narrow;
}

void NString::CopyToNarrow(char* destination) {
    const char* narrow = ToNarrow();
    memcpy(destination, narrow, strlen(narrow) + 1);
}

void NString::CopyToWide(wchar_t* destination) const {
    CopyUnits(destination, Text, Length);
}

void NString::Reserve(int units, int extra) {
    if (Capacity >= units)
        return;
    int capacity =
        static_cast<int>(std::min<int64_t>(static_cast<int64_t>(units) + extra, INT32_MAX));
    wchar_t* text = new wchar_t[static_cast<size_t>(capacity)];
    CopyUnits(text, Text, Length);
    DropHeapText();
    Text = text;
    Capacity = capacity;
}

void NString::DropHeapText() {
    if (Text != Inline)
        delete[] Text;
    Text = Inline;
    Capacity = InlineUnits;
}
