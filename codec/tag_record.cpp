#include "codec/tag_record.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr int BlockSizeField = 4; // bytes of a block's BlockSize
constexpr int UnitSize = 2;       // bytes of a UTF-16 unit
static_assert(sizeof(wchar_t) == UnitSize);

constexpr wchar_t RiffPrefix[] = L"_riff_";
constexpr wchar_t CdTocName[] = L"_cdtoc";
constexpr wchar_t AlbumArtPrefix[] = L"_albumart_";
constexpr int AlbumArtDescriptionFrom = 11; // 1-based; the length of "_albumart_x"

// Without the terminator.
template <size_t N>
constexpr int LengthOf(const wchar_t (&)[N]) {
    return static_cast<int>(N) - 1;
}

bool BeginsWith(const NString& name, const wchar_t* prefix, int length) {
    return name.CharCount() >= length && name.Compare(prefix, length, true) == 0;
}

int64_t SizeOfBlock(const clTagElement& element) {
    return BlockSizeField + UnitSize * (int64_t{element.Name.Length} + element.Value.Length) +
           element.Data.Size;
}

// A cursor over serialised bytes. It never reads outside them: what isn't
// there reads as zero, and a text ends at the end of the data at the latest.
class BlockReader {
public:
    BlockReader(const void* data, int size)
        : data_(static_cast<const uint8_t*>(data)), size_(size) {}

    int64_t Size() const { return size_; }

    uint32_t Number(int64_t offset) const {
        uint8_t bytes[4] = {};
        if (offset < size_)
            memcpy(bytes, data_ + offset,
                   static_cast<size_t>(std::min<int64_t>(4, size_ - offset)));
        return bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 |
               uint32_t{bytes[3]} << 24;
    }

    // Takes the text at `offset`; returns its length in units with terminator.
    int Text(int64_t offset, NString& text) const {
        int64_t end = offset;
        while (end + UnitSize <= size_ && (data_[end] || data_[end + 1]))
            end += UnitSize;
        int units = static_cast<int>((end - offset) / UnitSize);
        // The bytes may lie at an odd address, so they are copied, not cast.
        text.SetLength(units, L' ');
        memcpy(text.Text, data_ + std::min(offset, size_), static_cast<size_t>(units) * UnitSize);
        return units + 1;
    }

    const uint8_t* At(int64_t offset) const { return data_ + offset; }

private:
    const uint8_t* data_;
    int64_t size_;
};

class BlockWriter {
public:
    explicit BlockWriter(uint8_t* cursor) : cursor_(cursor) {}

    void Number(uint32_t number) {
        for (int shift = 0; shift < 32; shift += 8)
            *cursor_++ = static_cast<uint8_t>(number >> shift);
    }
    void Text(const NString& text) {
        Bytes(text.Text, static_cast<uint32_t>(text.Length) * UnitSize);
    }
    void Bytes(const void* bytes, uint32_t size) {
        if (size)
            memcpy(cursor_, bytes, size);
        cursor_ += size;
    }

private:
    uint8_t* cursor_;
};

void CopyElement(clTagElement& to, const clTagElement& from) {
    to.Name = from.Name;
    to.Value = from.Value;
    if (from.Data.Size)
        to.Data.CopyFrom(from.Data);
    else
        to.Data.Free();
}

bool IsKept(const NString& name, unsigned keepFlags) {
    if (keepFlags & clTagRecord::KeepRiff && BeginsWith(name, RiffPrefix, LengthOf(RiffPrefix)))
        return true;
    if (keepFlags & clTagRecord::KeepCdToc && name.Compare(CdTocName, 0, true) == 0)
        return true;
    return keepFlags & clTagRecord::KeepAlbumArt &&
           BeginsWith(name, AlbumArtPrefix, LengthOf(AlbumArtPrefix));
}
} // namespace

clTagElement* clTagRecord::Find(const wchar_t* name) {
    for (int index = 0; index < Count(); ++index) {
        clTagElement* element = Elements[index];
        if (element->Name.Compare(name, 0, true) == 0)
            return element;
    }
    return nullptr;
}

int clTagRecord::GetElementSize(int index) {
    const clTagElement* element = Elements[index];
    return element ? static_cast<int>(SizeOfBlock(*element)) : 0;
}

void clTagRecord::Serialise(NBuffer& output) {
    // 1. The total.
    int64_t total = BlockSizeField;
    for (int index = 0; index < Count(); ++index)
        total += SizeOfBlock(*Elements[index]);
    // 2. The room for it. The form's numbers can't say more than 31 bits.
    if (total > INT32_MAX) {
        output.Free();
        return;
    }
    output.Resize(static_cast<uint32_t>(total));
    if (!output.Data)
        return;
    // 3. Count and blocks.
    BlockWriter writer(output.Data);
    writer.Number(static_cast<uint32_t>(Count()));
    for (int index = 0; index < Count(); ++index) {
        const clTagElement& element = *Elements[index];
        writer.Number(static_cast<uint32_t>(SizeOfBlock(element)));
        writer.Text(element.Name);
        writer.Text(element.Value);
        writer.Bytes(element.Data.Data, element.Data.Size);
    }
}

void clTagRecord::Deserialise(const void* data, int size) {
    // 1.
    Clear();
    if (size < 1 || !data)
        return;
    // 2.
    BlockReader reader(data, size);
    uint32_t count = reader.Number(0);
    if (size <= BlockSizeField || count == 0)
        return;
    // 3.
    int64_t cursor = BlockSizeField;
    for (uint32_t i = 0;; ++i) {
        // 3.1. A BlockSize that the data's end cuts off is none.
        if (cursor + BlockSizeField > reader.Size())
            return;
        int32_t blockSize = static_cast<int32_t>(reader.Number(cursor));
        if (blockSize < 0 || cursor + blockSize > reader.Size())
            return;
        // 3.2.
        clTagElement* element = Elements.Add();
        int nameUnits = reader.Text(cursor + BlockSizeField, element->Name);
        // 3.3.
        int64_t rest = int64_t{blockSize} - BlockSizeField - int64_t{UnitSize} * nameUnits;
        if (rest < 1)
            return;
        // 3.4.
        int64_t valueAt = cursor + BlockSizeField + int64_t{UnitSize} * nameUnits;
        int valueUnits = reader.Text(valueAt, element->Value);
        // 3.5.
        rest -= int64_t{UnitSize} * valueUnits;
        if (rest < 0)
            return;
        // 3.6.
        if (rest > 0)
            element->Data.Set(reader.At(cursor + blockSize - rest), static_cast<uint32_t>(rest));
        // 3.7.
        cursor += blockSize;
        if (cursor >= reader.Size() || i + 1 >= count)
            return;
    }
}

void clTagRecord::Add(const wchar_t* name, const wchar_t* value) {
    clTagElement* element = Elements.Add();
    element->Name = name;
    element->Value = value;
}

void clTagRecord::AddData(const wchar_t* name, const void* data, int length) {
    clTagElement* element = Elements.Add();
    element->Name = name;
    if (length > 0)
        element->Data.Set(data, static_cast<uint32_t>(length));
}

void clTagRecord::AddCopy(const clTagElement& element) {
    CopyElement(*Elements.Add(), element);
}

void clTagRecord::Merge(clTagRecord& source, bool overwrite) {
    // The count is taken first, since the source may be this record.
    int count = source.Count();
    for (int index = 0; index < count; ++index) {
        clTagElement* theirs = source.Elements[index];
        clTagElement* mine = Find(theirs->Name.Text);
        if (!mine)
            AddCopy(*theirs);
        else if (overwrite && mine != theirs)
            CopyElement(*mine, *theirs);
    }
}

void clTagRecord::CopyFrom(clTagRecord& source) {
    if (this == &source)
        return;
    Clear();
    Merge(source, false);
}

void clTagRecord::RemoveAt(int index) {
    Elements.RemoveAt(index);
}

bool clTagRecord::Remove(const wchar_t* name) {
    for (int index = 0; index < Count(); ++index) {
        if (Elements[index]->Name.Compare(name, 0, true) == 0) {
            RemoveAt(index);
            return true;
        }
    }
    return false;
}

NString clTagRecord::TakeValue(const wchar_t* name) {
    NString value;
    if (const clTagElement* element = Find(name)) {
        value = element->Value;
        Remove(name);
    }
    return value;
}

clTagElement* clTagRecord::FindAlbumArt(int number, NString& description) {
    description = L"";
    NString prefix(AlbumArtPrefix);
    prefix.Append(NString::FromInt(number));
    for (int index = 0; index < Count(); ++index) {
        clTagElement* element = Elements[index];
        // Wanted: no look behind the number, so that 1 finds 10 as well if
        // that stands first.
        if (!BeginsWith(element->Name, prefix.Text, prefix.CharCount()))
            continue;
        int separator = element->Name.FindChar(L'_', AlbumArtDescriptionFrom);
        if (separator)
            description = element->Name.From(separator + 1);
        return element;
    }
    return nullptr;
}

void clTagRecord::RemoveSpecial(unsigned keepFlags) {
    for (int index = Count() - 1; index >= 0; --index) {
        const NString& name = Elements[index]->Name;
        if (name.At(1) == L'_' && !IsKept(name, keepFlags))
            RemoveAt(index);
    }
}
