#include "suite/tagmap/riff_info_tags.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/rating.h"

#include <set>
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

// RIFF asks for a zero byte behind a text, which some writers leave out, and
// others follow with more.
ByteVector WithoutZeros(ByteVector data) {
    unsigned size = data.size();
    while (size > 0 && data[static_cast<int>(size) - 1] == 0)
        --size;
    return data.resize(size);
}

// The entries have no encoding: ours is UTF-8, and older programs write that
// of their system. Such texts are taken as Latin-1, which has a character for
// every byte, and are written as they were.
class EntryTexts : public StringHandler {
public:
    // The decoder gives nothing for what is no UTF-8.
    String parse(const ByteVector& data) const override {
        const String text(data, String::UTF8);
        if (IsWhole(data, text))
            return text;
        return String(std::wstring(1, OtherEncodingMark)) + String(data, String::Latin1);
    }
    ByteVector render(const String& text) const override {
        if (text[0] == OtherEncodingMark)
            return text.substr(1).data(String::Latin1);
        return text.data(String::UTF8);
    }

private:
    static bool IsWhole(const ByteVector& data, const String& text) {
        return text.isEmpty() ? WithoutZeros(data).isEmpty() : text[0] != OtherEncodingMark;
    }
};

// The library has one handler for all lists, which it asks when it reads them:
// it has to be there before the first file is opened.
struct EntryTextsInstaller {
    EntryTextsInstaller() { Tag::setStringHandler(&Texts); }
    EntryTexts Texts;
};
const EntryTextsInstaller Installer;

bool IsInOtherEncoding(const String& text) {
    return !text.isEmpty() && text[0] == OtherEncodingMark;
}

String TextOf(const Tag& tag, const ByteVector& id) {
    const String text = tag.fieldText(id);
    return IsInOtherEncoding(text) ? text.substr(1) : text;
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

// Bytes without a text, carriage returns alone, half of a surrogate pair (the
// library writes nothing for such a text), or our mark.
bool IsNoEntryText(const clTagElement& element) {
    const String text = JoinForSingleField(SplitValues(element.Value));
    return text.data(String::UTF8).isEmpty() || text[0] == OtherEncodingMark;
}

bool WriteElement(Tag& tag, const clTagElement& element) {
    if (!AsksRemoval(element) && IsNoEntryText(element))
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

// An entry with nothing but zeros says nothing.
bool EntrySurvives(const Tag& tag, const ByteVector& id, const ByteVector& data) {
    const ByteVector text = WithoutZeros(data);
    return text.isEmpty() || Installer.Texts.render(tag.fieldText(id)) == text;
}

} // namespace

bool RiffInfoSurvivesSave(const ByteVector& list, const Tag& tag) {
    constexpr unsigned ListNameSize = 4;
    constexpr unsigned EntryHeaderSize = 8;
    std::set<std::string> ids;
    unsigned at = ListNameSize;
    while (at < list.size()) {
        if (list.size() - at < EntryHeaderSize)
            return WithoutZeros(list.mid(at)).isEmpty();
        const ByteVector id = list.mid(at, IdLength);
        const unsigned size = list.toUInt(at + IdLength, false);
        at += EntryHeaderSize;
        if (size > list.size() - at || !EntrySurvives(tag, id, list.mid(at, size)) ||
            !ids.emplace(id.data(), id.size()).second)
            return false;
        at += size + size % 2;
    }
    return true;
}

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

void ReadSureRiffInfo(const Tag& tag, clTagRecord& record) {
    Tag sure;
    for (const auto& [id, text] : tag.fieldListMap()) {
        if (!IsInOtherEncoding(text))
            sure.setFieldText(id, text);
    }
    ReadRiffInfo(sure, record);
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
