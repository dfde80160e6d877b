#include "suite/tagmap/riff_info_tags.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/rating.h"

#include <string>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::RIFF::Info::StringHandler;
using TagLib::RIFF::Info::Tag;

constexpr wchar_t RatingEntry[] = L"IRTD";
constexpr unsigned IdLength = 4;

// In front of a text that is no UTF-8 in the file; no text has this unit.
constexpr wchar_t OtherEncodingMark = 0xFFFF;

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The length of a UTF-8 sequence by its first byte, 0 for no such byte.
unsigned SequenceLength(char byte) {
    const auto first = static_cast<unsigned char>(byte);
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first < 0xE0)
        return 2;
    if (first >= 0xE0 && first < 0xF0)
        return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

bool IsUtf8(const ByteVector& data) {
    for (unsigned index = 0; index < data.size();) {
        const unsigned length = SequenceLength(data[static_cast<int>(index)]);
        if (length == 0 || length > data.size() - index)
            return false;
        for (unsigned next = 1; next < length; ++next)
            if (!IsContinuation(data[static_cast<int>(index + next)]))
                return false;
        index += length;
    }
    return true;
}

// The entries have no encoding: ours is UTF-8, and older programs write that
// of their system. Such texts are taken as Latin-1, which has a character for
// every byte, and are written as they were.
class EntryTexts : public StringHandler {
public:
    String parse(const ByteVector& data) const override {
        if (IsUtf8(data))
            return String(data, String::UTF8);
        return String(std::wstring(1, OtherEncodingMark)) + String(data, String::Latin1);
    }
    ByteVector render(const String& text) const override {
        if (text[0] == OtherEncodingMark)
            return text.substr(1).data(String::Latin1);
        return text.data(String::UTF8);
    }
};

// The library has one handler for all lists, which it asks when it reads them:
// it has to be there before the first file is opened.
struct EntryTextsInstaller {
    EntryTextsInstaller() { Tag::setStringHandler(&Texts); }
    EntryTexts Texts;
};
const EntryTextsInstaller Installer;

String TextOf(const Tag& tag, const ByteVector& id) {
    const String text = tag.fieldText(id);
    return !text.isEmpty() && text[0] == OtherEncodingMark ? text.substr(1) : text;
}

ByteVector IdOf(const clMappingRow& row) {
    return String(row.RiffInfo).data(String::Latin1);
}

bool IsTableId(const String& id) {
    for (const clMappingRow& row : MappingRows())
        if (row.RiffInfo && SameName(id, row.RiffInfo))
            return true;
    return false;
}

bool IsRating(const clMappingRow& row) {
    return SameName(row.RiffInfo, RatingEntry);
}

StringList ReadRow(const Tag& tag, const clMappingRow& row) {
    const String text = TextOf(tag, IdOf(row));
    int halfSteps = 0;
    if (text.isEmpty() || !IsRating(row))
        return StringList(text);
    return RatingFromPercent(ToNString(text), halfSteps)
               ? StringList(ToTagLib(RatingText(halfSteps)))
               : StringList();
}

// False, with nothing changed, if the entry can't hold the value.
bool WriteRow(Tag& tag, const clMappingRow& row, const NString& value) {
    int halfSteps = 0;
    if (!IsRating(row) || value.IsEmpty()) {
        tag.setFieldText(IdOf(row), JoinForSingleField(SplitValues(value)));
        return true;
    }
    if (!ParseRating(value, halfSteps))
        return false;
    tag.setFieldText(IdOf(row), ToTagLib(PercentFromRating(halfSteps)));
    return true;
}

// The id behind the prefix, in the spelling that the tag has if it has it.
// False if the name is no entry's, or that of one that the table names.
bool EntryOf(const Tag& tag, const NString& name, ByteVector& id) {
    const String text = ToTagLib(name);
    if (!BeginsWithName(text, RiffPrefix))
        return false;
    const String found = text.substr(String(RiffPrefix).size());
    if (found.size() != IdLength || IsTableId(found))
        return false;
    for (const wchar_t unit : found)
        if (unit < L' ' || unit > L'~')
            return false;
    id = found.data(String::Latin1);
    for (const auto& [known, value] : tag.fieldListMap())
        if (SameName(String(known), found))
            id = known;
    return true;
}

bool WriteElement(Tag& tag, const clTagElement& element) {
    if (element.Data.Size > 0 && element.Value.IsEmpty())
        return false;
    ByteVector id;
    const clMappingRow* row = FindMappingRow(element.Name);
    if (row && row->RiffInfo)
        return WriteRow(tag, *row, element.Value);
    // What can't be there can be asked to go.
    if (!EntryOf(tag, element.Name, id))
        return AsksRemoval(element);
    tag.setFieldText(id, JoinForSingleField(SplitValues(element.Value)));
    return true;
}

void RemoveElement(Tag& tag, const NString& name) {
    ByteVector id;
    const clMappingRow* row = FindMappingRow(name);
    if (row && row->RiffInfo)
        tag.removeField(IdOf(*row));
    else if (EntryOf(tag, name, id))
        tag.removeField(id);
}

} // namespace

void ReadRiffInfo(const Tag& tag, clTagRecord& record) {
    for (const clMappingRow& row : MappingRows())
        if (row.RiffInfo)
            AddValues(record, row.Element, ReadRow(tag, row));
    for (const auto& [id, text] : tag.fieldListMap()) {
        NString name(RiffPrefix);
        name.Append(ToNString(String(id)));
        if (!IsTableId(String(id)))
            AddValues(record, name, StringList(TextOf(tag, id)));
    }
}

void SetRiffInfo(Tag& tag, clTagRecord& changes, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index)
        if (!WriteElement(tag, *changes[index]))
            refused.Add(changes[index]->Name);
}

void DeleteRiffInfo(Tag& tag, const NStringList& names) {
    if (names.Count == 0)
        for (const auto& [id, text] : tag.fieldListMap())
            tag.removeField(id);
    for (int index = 0; index < names.Count; ++index)
        RemoveElement(tag, *names[index]);
}

} // namespace tagmap
