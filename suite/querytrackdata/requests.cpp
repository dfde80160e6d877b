#include "suite/querytrackdata/requests.h"

#include "codec/tag_wire.h"
#include "suite/querytrackdata/byte_reader.h"

namespace {

constexpr uint32_t BlockSizeSize = 4;

// All that the reader still holds, as text. Fails on an odd byte, and on a
// zero unit, which would end the text too early.
bool ReadTextToEnd(ByteReader& reader, NString& text) {
    if (reader.HasFailed() || reader.Remaining() % 2 != 0)
        return false;
    int units = static_cast<int>(reader.Remaining() / 2);
    text.SetLength(units, L' ');
    for (int index = 0; index < units; ++index) {
        text.Text[index] = static_cast<wchar_t>(reader.ReadUInt16());
        if (text.Text[index] == 0)
            return false;
    }
    return true;
}

bool IsPathLength(const NString& path) {
    return !path.IsEmpty() && static_cast<uint32_t>(path.CharCount()) <= MaxPathUnits;
}

bool BlockIsWhole(ByteReader& record) {
    uint32_t blockSize = record.ReadUInt32();
    if (blockSize < BlockSizeSize)
        return false;
    const uint8_t* content = record.Take(blockSize - BlockSizeSize);
    if (!content)
        return false;
    ByteReader block(content, blockSize - BlockSizeSize);
    block.SkipText();
    block.SkipText();
    return !block.HasFailed();
}

// Bytes behind the last block are no fault: readers of a record ignore them.
bool RecordIsWhole(const uint8_t* bytes, uint32_t size) {
    ByteReader record(bytes, size);
    uint32_t count = record.ReadUInt32();
    if (record.HasFailed() || count > MaxElements)
        return false;
    for (uint32_t index = 0; index < count; ++index) {
        if (!BlockIsWhole(record))
            return false;
    }
    return true;
}

void RemoveNameless(clTagRecord& record) {
    for (int index = record.Count() - 1; index >= 0; --index) {
        if (record[index]->Name.IsEmpty())
            record.RemoveAt(index);
    }
}

void SplitNames(const NString& text, NStringList& names) {
    const NString separator(TagNameSeparator);
    int start = 1;
    while (start < text.Length) {
        int found = text.Find(TagNameSeparator, start);
        int last = found != 0 ? found - 1 : text.CharCount();
        if (last >= start)
            names.Add(text.Mid(start, last));
        start = last + 1 + separator.CharCount();
    }
}

} // namespace

bool ParseReadRequest(const NBuffer& request, NString& audioFile) {
    ByteReader reader(request);
    return ReadTextToEnd(reader, audioFile) && IsPathLength(audioFile);
}

bool ParseSetRequest(const NBuffer& request, NString& audioFile, clTagRecord& changes) {
    ByteReader reader(request);
    uint32_t size = reader.ReadUInt32();
    const uint8_t* record = reader.Take(size);
    if (reader.ReadUInt32() != TagRequestMarker || !ReadTextToEnd(reader, audioFile) ||
        !IsPathLength(audioFile) || !RecordIsWhole(record, size))
        return false;
    changes.Deserialise(record, static_cast<int>(size));
    RemoveNameless(changes);
    return true;
}

bool ParseDeleteRequest(const NBuffer& request, NString& audioFile, NStringList& names) {
    ByteReader reader(request);
    NString text;
    if (!ReadTextToEnd(reader, text))
        return false;
    int lineEnd = text.Find(L"\r\n");
    if (lineEnd == 0)
        return false;
    audioFile = text.Left(lineEnd - 1);
    if (!IsPathLength(audioFile))
        return false;
    NString asked = text.From(lineEnd + 2);
    names.Clear();
    if (asked == TagDeleteAll)
        return true;
    SplitNames(asked, names);
    // An empty list would mean the whole tag.
    return names.Count > 0 && static_cast<uint32_t>(names.Count) <= MaxElements;
}
