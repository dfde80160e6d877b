#include "suite/tagmap/aiff_text_chunks.h"

#include "suite/tagmap/field_rules.h"

#include <algorithm>
#include <vector>

namespace tagmap {

namespace {
struct TextChunk {
    const wchar_t* Element;
    const char* Name;
};
constexpr TextChunk TextChunks[] = {
    {L"title", "NAME"}, {L"artist", "AUTH"}, {L"copyright", "(c) "}, {L"comment", "ANNO"}};

struct Text {
    TagLib::String Value;
    bool IsSure = true; // UTF-8
};

Text TextOf(TagLib::ByteVector bytes) {
    // Some writers end the text with a zero, or pad it with several.
    while (!bytes.isEmpty() && bytes[bytes.size() - 1] == 0)
        bytes.resize(bytes.size() - 1);
    const TagLib::String text(bytes, TagLib::String::UTF8);
    if (!text.isEmpty() || bytes.isEmpty())
        return {text};
    return {TagLib::String(bytes, TagLib::String::Latin1), false};
}

std::vector<Text> TextsOf(AiffFile& file, const char* name) {
    std::vector<Text> texts;
    for (unsigned index = 0; index < file.chunkCount(); ++index) {
        if (file.chunkName(index) == name)
            texts.push_back(TextOf(file.chunkData(index)));
    }
    return texts;
}

bool AreSure(const std::vector<Text>& texts) {
    return std::all_of(texts.begin(), texts.end(), [](const Text& text) { return text.IsSure; });
}

void AddTexts(clTagRecord& record, const wchar_t* element, const std::vector<Text>& texts) {
    TagLib::StringList values;
    for (const Text& text : texts)
        values.append(text.Value);
    AddValues(record, element, values);
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
    for (const TextChunk& chunk : TextChunks)
        AddTexts(record, chunk.Element, TextsOf(file, chunk.Name));
}

void ReadSureAiffTexts(AiffFile& file, clTagRecord& record) {
    for (const TextChunk& chunk : TextChunks) {
        const std::vector<Text> texts = TextsOf(file, chunk.Name);
        if (AreSure(texts))
            AddTexts(record, chunk.Element, texts);
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
