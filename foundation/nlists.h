#pragma once

#include "foundation/nbuffer.h"
#include "foundation/nstring.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

// A growable array of pointers with room for 16 before it takes heap memory.
// It doesn't own what the pointers lead to. Indexes are 0-based; one that is
// out of range does nothing, or reads as null. No lock: a list belongs to one
// thread at a time.
class NPtrList {
public:
    // Non-zero if `first` is to stand before `second`.
    using CompareItems = int (*)(void* first, void* second, intptr_t context);

    NPtrList() = default;
    NPtrList(const NPtrList&) = delete;
    NPtrList& operator=(const NPtrList&) = delete;
    ~NPtrList() { FreeArray(); }

    void Add(void* item) { InsertAt(-1, item); }
    // An index of -1 or above `Count` appends.
    void InsertAt(int index, void* item);
    // Closes the gap. The item itself isn't freed.
    void RemoveAt(int index);
    // Frees a heap array, and leaves no room at all; Add works again after it.
    // `Grow` stays as it is.
    void Clear();
    void* At(int index) const { return index >= 0 && index < Count ? Items[index] : nullptr; }
    // Quicksort of the items from index `first` to `last`, -1 for the first and
    // the final one. Not stable.
    void Sort(CompareItems compare, intptr_t context, int first = -1, int last = -1);

    int32_t Count = 0;
    void** Items = Inline; // points to Inline or to heap memory; null after Clear
    int32_t Capacity = 16;
    int32_t Grow = 32; // slots that the next growth adds; doubles, up to 500000
    void* Inline[16];

private:
    void FreeArray();
    void MakeRoom();
    void SortRange(CompareItems compare, intptr_t context, int first, int last);
};

// A list of strings that it owns, each with the 64-bit `Value` of NString.
class NStringList : public NPtrList {
public:
    NStringList() = default;
    ~NStringList() { Clear(); }

    void Add(const wchar_t* text, int64_t value = 0);
    // Copies the text; the new item's `Value` is `value`, not that of `text`.
    void Add(const NString& text, int64_t value = 0);
    void Add(const char* text, int64_t value = 0);
    // Puts a copy of `text` (empty for null) at `index`, as NPtrList::InsertAt.
    void InsertAt(int index, const wchar_t* text, int64_t value = 0);
    void RemoveAt(int index);
    void Clear();

    // Null when out of range.
    NString* operator[](int index) const { return static_cast<NString*>(At(index)); }

    bool Contains(const wchar_t* text, bool ignoreCase = false) const;
    // All items with `separator` between them; empty for an empty list or a
    // null separator.
    NString Join(const wchar_t* separator) const;
    // Appends each item of `list` with its value. With `allowDuplicates` off
    // an item that the list contains by then is skipped.
    void CopyFrom(const NStringList& list, bool allowDuplicates = true, bool ignoreCase = false);
    void SortByText(bool ignoreCase);
    // Appends each piece of `text`, which is split at units 13; a run of units
    // 10 behind a 13 is skipped. What stands behind the last 13 is a piece
    // unless it is empty.
    void SplitLines(const wchar_t* text);

    // Writes each item with a zero terminator, and one further zero at the
    // end, in 8-bit or wide form. An empty item is written as "[Empty]", since
    // an empty piece would end the block. A block of 4 GiB or more doesn't fit
    // `output`, which is empty then.
    void ToMultiString(NBuffer& output, bool wide) const;
    // The reverse: empties the list, then takes each zero-terminated piece up
    // to the first empty one or to `size` bytes. A non-zero `separator` counts
    // as a zero. "[Empty]" becomes an empty item. A `size` that leaves no room
    // for one more unit within 32 bits yields an empty list.
    void FromMultiString(const void* bytes, uint32_t size, bool wide, wchar_t separator = 0);

private:
    void InsertItem(int index, std::unique_ptr<NString> item);
};

// A list of records that it owns, each with a key string at the same index.
// `Current` is the record last touched: each indexed read and each Add sets
// it, so that even a read is a write.
template <typename T>
class NKeyedList {
public:
    NKeyedList() = default;
    NKeyedList(const NKeyedList&) = delete;
    NKeyedList& operator=(const NKeyedList&) = delete;
    ~NKeyedList() { Clear(); }

    int Count() const { return Items.Count; }

    // Makes a T, inserts it at `position` (-1: at the end) with its key (empty
    // for null), and returns it as `Current`. `zeroFill` wipes the new record;
    // it has no effect on a T that can't be wiped byte by byte.
    T* Add(const wchar_t* key = nullptr, bool zeroFill = false, int position = -1) {
        T* record = new T();
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (zeroFill)
                memset(static_cast<void*>(record), 0, sizeof(T));
        }
        Current = record;
        position = position < 0 ? -1 : position;
        Items.InsertAt(position, record);
        Keys.InsertAt(position, key);
        return record;
    }

    // The record, which becomes `Current`; null when out of range, and then
    // `Current` stays.
    T* operator[](int index) {
        T* record = static_cast<T*>(Items.At(index));
        if (record)
            Current = record;
        return record;
    }

    // Removes the record's entry and its key, and destroys it: its destructor
    // finds the list without it. `Current` is null after it if it was that
    // record.
    void RemoveAt(int index) {
        T* record = static_cast<T*>(Items.At(index));
        if (!record)
            return;
        if (Current == record)
            Current = nullptr;
        Items.RemoveAt(index);
        Keys.RemoveAt(index);
        delete record;
    }

    // Removes from the last record to the first.
    void Clear() {
        for (int index = Items.Count - 1; index >= 0; --index)
            RemoveAt(index);
        Items.Clear();
        Keys.Clear();
    }

    NPtrList Items; // of T
    NStringList Keys;
    T* Current = nullptr;
};
