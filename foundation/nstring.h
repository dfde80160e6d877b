#pragma once

#include <cstddef>
#include <cstdint>

// Sentinels that stand for a position or a length.
inline constexpr int NEnd = -12345;         // the last character (removal), or the end (insertion)
inline constexpr int NCountLength = -12345; // as a length: count it from the text
inline constexpr int NFromLast = 123456;    // the backward search starts at the last character

// The wide string of the whole system: UTF-16 units, always zero-terminated,
// with room for 127 characters before it takes heap memory.
//
// Positions are 1-based; a search result of 0 means not found. `Length` counts
// the terminator, so an empty string has `Length` 1. Case folding is ASCII
// only. No operation reports an error: a position out of range gives 0, an
// empty string, or no change. A null text counts as an empty one, except where
// an operation says otherwise. Texts handed in may lie inside the string
// itself.
//
// A string belongs to one thread at a time; ToNarrow writes the object.
class NString {
public:
    NString();
    NString(const wchar_t* text, int64_t value = 0);
    // Takes `Value` too.
    NString(const NString& other);
    // 8-bit text, in the system's narrow code page or in UTF-8.
    explicit NString(const char* text, bool utf8 = false, int64_t value = 0);
    explicit NString(int32_t number);
    explicit NString(int64_t number);
    ~NString();

    // `Value` stays as it is.
    NString& operator=(const NString& other);
    NString& operator=(const wchar_t* text);

    // Takes `length` units of `text`, which needs no terminator then, or all
    // up to the terminator with NCountLength. `Value` stays.
    void Assign(const wchar_t* text, int length = NCountLength);

    const wchar_t* c_str() const { return Text; }
    bool IsEmpty() const { return Length <= 1; }
    // Characters without the terminator.
    int CharCount() const { return Length - 1; }
    // The unit at a 1-based position, 0 when out of range.
    wchar_t At(int position) const;

    // The sign of this text against the other, unit by unit, unsigned: -1, 0
    // or 1. A null `other` gives 1. A `count` above 0 compares the first
    // `count` characters only.
    int Compare(const wchar_t* other, int count = 0, bool ignoreCase = false) const;
    int Compare(const NString& other, int count = 0, bool ignoreCase = false) const;

    // The position of the first occurrence at or after `start`, or 0. A
    // `start` below 1 or not below `Length` gives 0; so does an empty text.
    int Find(const wchar_t* text, int start = 1) const;
    int FindChar(wchar_t character, int start = 1) const;
    // Searches backward from `start` (NFromLast: from the last character), and
    // stops at a zero unit.
    int FindLastChar(wchar_t character, int start = NFromLast) const;

    // Removes the character at `position` (NEnd: the last) and returns it.
    wchar_t RemoveAt(int position);
    // Removes the inclusive range. A range that runs past the end empties the
    // string.
    void Delete(int first, int last);
    // Removes the last `count` characters; all of them if there are no more.
    void RemoveRight(int count);
    // Inserts before `position`; `Length` or NEnd appends.
    void Insert(const wchar_t* text, int position);
    void InsertChar(wchar_t character, int position = NEnd);
    void Append(const wchar_t* text, int length = NCountLength);
    void Append(const NString& text) { Append(text.Text, text.Length - 1); }
    // Appends, and returns a copy of the whole string.
    NString Concat(const wchar_t* text);

    // From `first` to `last`, inclusive; `last` is clamped to the last
    // character. Empty if `first` is below 1, not below `Length`, or above
    // `last`.
    NString Mid(int first, int last) const;
    NString Left(int count) const;
    NString Right(int count) const;
    NString From(int position) const;

    // Cuts or extends the text to `count` characters, filling with `fill`.
    // A negative count is taken as 0.
    void SetLength(int count, wchar_t fill);
    // Removes leading blanks; a blank is unit 32 alone.
    void TrimLeft();
    NString ToUpper() const;
    NString ToLower() const;
    // Replaces every occurrence, and goes on behind each insertion.
    void Replace(const wchar_t* find, const wchar_t* replacement, bool ignoreCase = false);

    // An optional "-", then digits up to the first other character. Overflow
    // wraps around.
    int64_t ToInt() const;
    static NString FromInt(int64_t number);
    static NString FromUInt(uint64_t number);
    // Fixed-point text with "." whatever the locale. Rounds up from 0.51 of
    // the last place only. `decimals` below 0 count as 0, and above 18 as 18;
    // a value that is not finite gives the text of the largest magnitude.
    static NString FormatDouble(double value, int decimals, bool keepZeros);
    // Leading blanks, an optional "-", digits, "." and a fraction. A fraction
    // with a character that isn't a digit counts from its last such one on.
    static double ParseDouble(const wchar_t* text);

    // The text in the system's narrow code page; valid until the next call or
    // the string's end.
    const char* ToNarrow();
    // Raw copies with terminator, without a bound: the destination must have
    // the room.
    void CopyToNarrow(char* destination);
    void CopyToWide(wchar_t* destination) const;

    wchar_t* Text;  // points to Inline or to heap memory
    int32_t Length; // units, terminator included
    int64_t Value;  // a caller's value that travels with the string
    wchar_t Inline[128];
    char* Narrow;     // cached narrow form, made on demand; owned
    int32_t Capacity; // units available in Text

private:
    void InsertUnits(const wchar_t* units, int count, int position);
    void Reserve(int units, int extra);
    void DropHeapText();
};

inline bool operator==(const NString& a, const wchar_t* b) {
    return a.Compare(b) == 0;
}
inline bool operator==(const NString& a, const NString& b) {
    return a.Compare(b) == 0;
}

// ASCII folding of one unit; all others are returned as they are.
constexpr wchar_t NUpperUnit(wchar_t unit) {
    return unit >= L'a' && unit <= L'z' ? static_cast<wchar_t>(unit - 32) : unit;
}
constexpr wchar_t NLowerUnit(wchar_t unit) {
    return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + 32) : unit;
}
