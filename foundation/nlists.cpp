#include "foundation/nlists.h"

#include "foundation/codepage.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {
constexpr int32_t GrowLimit = 500000;
constexpr wchar_t EmptyItemText[] = L"[Empty]";
constexpr wchar_t CarriageReturn = 13;
constexpr wchar_t LineFeed = 10;

int StandsBeforeByText(void* first, void* second, intptr_t ignoreCase) {
    const NString& text = *static_cast<NString*>(first);
    return text.Compare(*static_cast<NString*>(second), 0, ignoreCase != 0) == -1;
}
} // namespace

// NPtrList

void NPtrList::InsertAt(int index, void* item) {
    if (index < -1)
        return;
    if (index == -1 || index > Count)
        index = Count;
    if (Count == Capacity)
        MakeRoom();
    std::copy_backward(Items + index, Items + Count, Items + Count + 1);
    Items[index] = item;
    ++Count;
}

void NPtrList::RemoveAt(int index) {
    if (index < 0 || index >= Count)
        return;
    std::copy(Items + index + 1, Items + Count, Items + index);
    --Count;
}

void NPtrList::Clear() {
    FreeArray();
    Items = nullptr;
    Count = 0;
    Capacity = 0;
}

void NPtrList::FreeArray() {
    if (Items != Inline)
        delete[] Items;
}

void NPtrList::MakeRoom() {
    void** larger = new void*[static_cast<size_t>(Capacity) + static_cast<size_t>(Grow)];
    std::copy(Items, Items + Count, larger);
    FreeArray();
    Items = larger;
    Capacity += Grow;
    Grow = std::min(Grow * 2, GrowLimit);
}

void NPtrList::Sort(CompareItems compare, intptr_t context, int first, int last) {
    first = first == -1 ? 0 : first;
    last = last == -1 ? Count - 1 : last;
    if (first >= 0 && last < Count && first < last)
        SortRange(compare, context, first, last);
}

void NPtrList::SortRange(CompareItems compare, intptr_t context, int first, int last) {
    while (first < last) {
        void* pivot = Items[first + (last - first) / 2];
        int low = first;
        int high = last;
        while (low <= high) {
            // The bounds keep a comparison that contradicts itself inside.
            while (low < last && compare(Items[low], pivot, context))
                ++low;
            while (high > first && compare(pivot, Items[high], context))
                --high;
            if (low > high)
                break;
            std::swap(Items[low], Items[high]);
            ++low;
            --high;
        }
        SortRange(compare, context, first, high);
        first = low;
    }
}

// NStringList

void NStringList::Add(const wchar_t* text, int64_t value) {
    InsertItem(-1, std::make_unique<NString>(text, value));
}

void NStringList::Add(const NString& text, int64_t value) {
    auto item = std::make_unique<NString>();
    item->Assign(text.Text, text.Length - 1);
    item->Value = value;
    InsertItem(-1, std::move(item));
}

void NStringList::Add(const char* text, int64_t value) {
    InsertItem(-1, std::make_unique<NString>(text, false, value));
}

void NStringList::InsertAt(int index, const wchar_t* text, int64_t value) {
    if (index >= -1)
        InsertItem(index, std::make_unique<NString>(text, value));
}

// The item is the list's only once it has room for it.
void NStringList::InsertItem(int index, std::unique_ptr<NString> item) {
    NPtrList::InsertAt(index, item.get());
    static_cast<void>(item.release());
}

void NStringList::RemoveAt(int index) {
    delete (*this)[index];
    NPtrList::RemoveAt(index);
}

void NStringList::Clear() {
    for (int index = 0; index < Count; ++index)
        delete (*this)[index];
    NPtrList::Clear();
}

bool NStringList::Contains(const wchar_t* text, bool ignoreCase) const {
    for (int index = 0; index < Count; ++index) {
        if ((*this)[index]->Compare(text, 0, ignoreCase) == 0)
            return true;
    }
    return false;
}

NString NStringList::Join(const wchar_t* separator) const {
    NString joined;
    if (!separator)
        return joined;
    for (int index = 0; index < Count; ++index) {
        if (index > 0)
            joined.Append(separator);
        joined.Append(*(*this)[index]);
    }
    return joined;
}

void NStringList::CopyFrom(const NStringList& list, bool allowDuplicates, bool ignoreCase) {
    int count = list.Count; // taken now, since `list` may be this one
    for (int index = 0; index < count; ++index) {
        const NString& item = *list[index];
        if (allowDuplicates || !Contains(item.Text, ignoreCase))
            Add(item, item.Value);
    }
}

void NStringList::SortByText(bool ignoreCase) {
    Sort(StandsBeforeByText, ignoreCase);
}

void NStringList::SplitLines(const wchar_t* text) {
    if (!text)
        return;
    const wchar_t* piece = text;
    const wchar_t* cursor = text;
    while (*cursor) {
        if (*cursor != CarriageReturn) {
            ++cursor;
            continue;
        }
        NString line;
        line.Assign(piece, static_cast<int>(cursor - piece));
        Add(line);
        ++cursor;
        while (*cursor == LineFeed)
            ++cursor;
        piece = cursor;
    }
    if (*piece)
        Add(piece);
}

namespace {
template <typename Unit>
void WriteBlock(NBuffer& output, const NStringList& list, const Unit* (*textOf)(NString&)) {
    uint64_t units = 1;
    NString empty(EmptyItemText);
    auto itemOrEmpty = [&](int index) -> const Unit* {
        NString* item = list[index];
        return textOf(item->IsEmpty() ? empty : *item);
    };
    auto countWithTerminator = [](const Unit* text) {
        uint32_t count = 1;
        while (text[count - 1])
            ++count;
        return count;
    };
    for (int index = 0; index < list.Count; ++index)
        units += countWithTerminator(itemOrEmpty(index));
    output.Free();
    uint64_t size = std::max<uint64_t>(units, 2) * sizeof(Unit);
    if (size > UINT32_MAX)
        return;
    output.Resize(static_cast<uint32_t>(size), false, true);
    uint8_t* cursor = output.Data;
    for (int index = 0; cursor && index < list.Count; ++index) {
        const Unit* text = itemOrEmpty(index);
        uint32_t bytes = countWithTerminator(text) * static_cast<uint32_t>(sizeof(Unit));
        memcpy(cursor, text, bytes);
        cursor += bytes;
    }
    output.Used = output.Size;
}

// Takes the pieces of a block; `Unit` is its character.
template <typename Unit>
void ReadBlock(NStringList& list, const uint8_t* bytes, uint32_t size, Unit separator) {
    uint32_t units = size / static_cast<uint32_t>(sizeof(Unit));
    if (units >= UINT32_MAX / sizeof(Unit)) // no room for the terminator
        return;
    NBuffer block;
    block.Resize((units + 1) * static_cast<uint32_t>(sizeof(Unit)), false, true);
    if (!block.Data)
        return;
    memcpy(block.Data, bytes, units * sizeof(Unit));
    Unit* text = reinterpret_cast<Unit*>(block.Data);
    if (separator)
        std::replace(text, text + units, separator, Unit{0});
    while (*text) {
        list.Add(text);
        NString* item = list[list.Count - 1];
        if (item->Compare(EmptyItemText) == 0)
            *item = L"";
        while (*text)
            ++text;
        if (text < reinterpret_cast<Unit*>(block.Data) + units)
            ++text;
    }
}
} // namespace

void NStringList::ToMultiString(NBuffer& output, bool wide) const {
    if (wide)
        WriteBlock<wchar_t>(output, *this,
                            [](NString& text) -> const wchar_t* { return text.Text; });
    else
        WriteBlock<char>(output, *this, [](NString& text) { return text.ToNarrow(); });
}

void NStringList::FromMultiString(const void* bytes, uint32_t size, bool wide, wchar_t separator) {
    Clear();
    if (!bytes)
        return;
    const uint8_t* data = static_cast<const uint8_t*>(bytes);
    if (wide)
        ReadBlock<wchar_t>(*this, data, size, separator);
    else
        ReadBlock<char>(*this, data, size, static_cast<char>(separator));
}
