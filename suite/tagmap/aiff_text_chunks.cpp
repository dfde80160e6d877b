#include "suite/tagmap/aiff_text_chunks.h"

#include "suite/tagmap/field_rules.h"

namespace tagmap {

namespace {
struct TextChunk {
    const wchar_t* Element;
    const char* Name;
};
constexpr TextChunk TextChunks[] = {
    {L"title", "NAME"}, {L"artist", "AUTH"}, {L"copyright", "(c) "}, {L"comment", "ANNO"}};

TagLib::String TextOf(TagLib::ByteVector bytes) {
    // Some writers end the text with a zero, or pad it with several.
    while (!bytes.isEmpty() && bytes[bytes.size() - 1] == 0)
        bytes.resize(bytes.size() - 1);
    const TagLib::String text(bytes, TagLib::String::UTF8);
    return text.isEmpty() ? TagLib::String(bytes, TagLib::String::Latin1) : text;
}

bool HasChunk(AiffFile& file, const TagLib::ByteVector& name) {
    for (unsigned index = 0; index < file.chunkCount(); ++index) {
        if (file.chunkName(index) == name)
            return true;
    }
    return false;
}
} // namespace

void ReadAiffTexts(AiffFile& file, clTagRecord& record) {
    for (const TextChunk& chunk : TextChunks) {
        TagLib::StringList values;
        for (unsigned index = 0; index < file.chunkCount(); ++index) {
            if (file.chunkName(index) == chunk.Name)
                values.append(TextOf(file.chunkData(index)));
        }
        AddValues(record, chunk.Element, values);
    }
}

void SetAiffTexts(AiffFile& file, clTagRecord& changes) {
    for (const TextChunk& chunk : TextChunks) {
        const clTagElement* element = changes.Find(chunk.Element);
        if (!element || !HasChunk(file, chunk.Name))
            continue;
        file.removeChunk(chunk.Name);
        const TagLib::StringList values = SplitValues(element->Value);
        if (!values.isEmpty())
            file.setChunkData(chunk.Name, JoinForSingleField(values).data(TagLib::String::UTF8));
    }
}

void DeleteAiffTexts(AiffFile& file, const NStringList& names) {
    for (const TextChunk& chunk : TextChunks) {
        if ((names.Count == 0 || names.Contains(chunk.Element, true)) && HasChunk(file, chunk.Name))
            file.removeChunk(chunk.Name);
    }
}

} // namespace tagmap
