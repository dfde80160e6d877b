#pragma once

#include "foundation/nbuffer.h"
#include "foundation/nlists.h"
#include "foundation/nstring.h"

#include <cstdint>

// One element of a tag: a name, a text, and a block of binary data. Names are
// compared without regard to ASCII case. A name that begins with "_" is a
// special element: `_albumart_<n>[_<description>]`, "_cdtoc", `_riff_<name>`.
struct clTagElement {
    NString Name;
    NString Value; // one carriage return between the parts of a value
    NBuffer Data;  // its Size, not its Used, is the payload's length
};

// A tag in memory, whatever it came from: an ordered list of elements that the
// record owns. A record belongs to one thread, since even a read by index
// writes `Current`.
//
// Serialised form, little-endian, without padding:
//
//     4 bytes                Count, unsigned
//     Count blocks, each:
//       4 bytes              BlockSize, these 4 bytes included
//       2 * L1 bytes         Name, UTF-16 with terminator
//       2 * L2 bytes         Value, UTF-16 with terminator
//       the rest of it       Data
class clTagRecord {
public:
    // The flags of RemoveSpecial.
    enum KeepFlags : unsigned { KeepRiff = 2, KeepCdToc = 4, KeepAlbumArt = 8 };

    int Count() const { return Elements.Count(); }
    // The element last touched, as NKeyedList keeps it, or null. Not to be
    // held across an operation.
    clTagElement* Current() const { return Elements.Current; }
    // Sets `Current`; null when out of range.
    clTagElement* operator[](int index) { return Elements[index]; }

    // The first element of that name, or null. `Current` ends on the match, or
    // on the last element looked at.
    clTagElement* Find(const wchar_t* name);
    // The element's BlockSize in bytes, 0 when out of range. Sets `Current`.
    int GetElementSize(int index);
    // Resizes `output` to the exact size, and writes the form above. A record
    // of 2 GiB or more doesn't fit it: `output` is empty then.
    void Serialise(NBuffer& output);
    // Empties the record, reads as far as the data allows, and keeps what it
    // has read. Never reads outside `data` .. `data + size`: a text without a
    // terminator ends at the end of the data.
    void Deserialise(const void* data, int size);

    // Each appends an element, which becomes `Current`.
    void Add(const wchar_t* name, const wchar_t* value);
    // With a `data` of null the bytes are zero.
    void AddData(const wchar_t* name, const void* data, int length);
    void AddCopy(const clTagElement& element);

    // Takes over each element of `source` whose name this record lacks. One
    // that it has is replaced in its place with `overwrite`, or left. Of two
    // elements of one name in `source` the second meets the copy of the first.
    void Merge(clTagRecord& source, bool overwrite);
    void CopyFrom(clTagRecord& source);
    void Clear() { Elements.Clear(); }

    void RemoveAt(int index);
    // Removes the first element of that name; true if there was one.
    bool Remove(const wchar_t* name);
    // Removes the first element of that name and returns its value; empty
    // when there is none.
    NString TakeValue(const wchar_t* name);

    // The first element whose name begins with "_albumart_" and the number, or
    // null; `description` gets what follows the number's "_".
    clTagElement* FindAlbumArt(int number, NString& description);
    // Removes the special elements that no flag keeps.
    void RemoveSpecial(unsigned keepFlags);

    NKeyedList<clTagElement> Elements;
};
