#include "suite/tagmap/ape_tags.h"

#include "suite/tagmap/ape_pictures.h"
#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/rating.h"

#include <algorithm>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::APE::Item;
using TagLib::APE::Tag;

constexpr wchar_t CdTocKey[] = L"CDTOC";
constexpr wchar_t RatingKey[] = L"RATING";
constexpr wchar_t RatingByPrefix[] = L"RATING:"; // followed by the rater's e-mail

// Keys that have another name in the formats besides.
struct Renaming {
    const wchar_t* Element;
    const wchar_t* Key;
};
constexpr Renaming Renamings[] = {{L"remixer", L"MixArtist"},
                                  {L"releasestatus", L"MUSICBRAINZ_ALBUMSTATUS"},
                                  {L"releasetype", L"MUSICBRAINZ_ALBUMTYPE"}};

bool IsRating(const clMappingRow& row) {
    return SameName(row.Ape, RatingKey);
}

bool IsCdToc(const NString& name) {
    return name.Compare(CdTocName, 0, true) == 0;
}

const Item* FindItem(const Tag& tag, const String& key) {
    const auto& items = tag.itemListMap();
    const auto found = items.find(key.upper());
    return found == items.end() ? nullptr : &found->second;
}

bool IsText(const Item& item) {
    return item.type() == Item::Text;
}

StringList TextsOf(const Tag& tag, const String& key) {
    const Item* item = FindItem(tag, key);
    return item && IsText(*item) ? item->values() : StringList();
}

// Keeps the spelling of a key that is there.
void PutTexts(Tag& tag, const String& key, const StringList& values) {
    const Item* old = FindItem(tag, key);
    const Item item(old ? old->key() : key, values);
    tag.setItem(key, item);
}

StringList RatingByKeys(const Tag& tag) {
    StringList keys;
    for (const auto& [key, item] : tag.itemListMap())
        if (BeginsWithName(key, RatingByPrefix) && IsText(item))
            keys.append(key);
    return keys;
}

// All keys that an element stands for. Its own name is among them: taggers
// write "UPC" in place of the key of the table.
StringList KeysOf(const Tag& tag, const clMappingRow& row) {
    StringList keys(String(row.Ape).upper());
    if (IsRating(row))
        keys.append(RatingByKeys(tag));
    const String ownName = String(row.Element).upper();
    if (!keys.contains(ownName))
        keys.append(ownName);
    return keys;
}

StringList KeysOfTable(const Tag& tag) {
    StringList keys(CdTocKey);
    for (const clMappingRow& row : MappingRows())
        keys.append(KeysOf(tag, row));
    return keys;
}

// True if an item of text with that key is one of these.
bool IsKeyOf(const clMappingRow& row, const String& key) {
    return SameName(key, row.Ape) || SameName(key, row.Element) ||
           (IsRating(row) && BeginsWithName(key, RatingByPrefix));
}

bool IsTableKey(const String& key) {
    const auto rows = MappingRows();
    return SameName(key, CdTocKey) ||
           std::any_of(rows.begin(), rows.end(),
                       [&](const clMappingRow& row) { return IsKeyOf(row, key); });
}

// Most rows stand for items that a tag lacks, and the library's own search is dear.
bool MayHaveRow(const Tag& tag, const clMappingRow& row) {
    const auto& items = tag.itemListMap();
    return std::any_of(items.begin(), items.end(),
                       [&](const auto& item) { return IsKeyOf(row, item.first); });
}

// RATING counts before the ratings by e-mail.
StringList ReadRating(const Tag& tag) {
    int halfSteps = 0;
    for (const String& value : TextsOf(tag, RatingKey))
        if (RatingFromPercent(ToNString(value), halfSteps))
            return StringList(ToTagLib(RatingText(halfSteps)));
    for (const String& key : RatingByKeys(tag))
        for (const String& value : TextsOf(tag, key))
            if (RatingFromFraction(ToNString(value), halfSteps))
                return StringList(ToTagLib(RatingText(halfSteps)));
    return StringList();
}

StringList ReadRow(const Tag& tag, const clMappingRow& row) {
    if (IsRating(row))
        return ReadRating(tag);
    const StringList values = TextsOf(tag, row.Ape);
    return values.isEmpty() ? TextsOf(tag, row.Element) : values;
}

// Ratings by e-mail that are there follow, so that all programs see one rating.
void WriteRating(Tag& tag, int halfSteps) {
    PutTexts(tag, RatingKey, StringList(ToTagLib(PercentFromRating(halfSteps))));
    for (const String& key : RatingByKeys(tag))
        PutTexts(tag, key, StringList(ToTagLib(FractionFromRating(halfSteps))));
}

void RemoveRow(Tag& tag, const clMappingRow& row) {
    for (const String& key : KeysOf(tag, row))
        tag.removeItem(key);
}

// False, with nothing changed, if the item can't hold the value.
bool WriteRow(Tag& tag, const clMappingRow& row, const NString& value) {
    const StringList values = SplitValues(value);
    int halfSteps = 0;
    if (values.isEmpty()) {
        RemoveRow(tag, row);
        return true;
    }
    if (IsRating(row) && !ParseRating(value, halfSteps))
        return false;
    if (IsRating(row)) {
        WriteRating(tag, halfSteps);
        return true;
    }
    if (!SameName(row.Ape, row.Element))
        tag.removeItem(row.Element);
    PutTexts(tag, row.Ape, values);
    return true;
}

// The table of contents of the CD, as text or as the drive's bytes.

void ReadCdToc(const Tag& tag, clTagRecord& record) {
    const Item* item = FindItem(tag, CdTocKey);
    if (item && item->type() == Item::Binary && !item->isEmpty()) {
        const ByteVector bytes = item->binaryData();
        record.AddData(CdTocName, bytes.data(), static_cast<int>(bytes.size()));
        return;
    }
    AddValues(record, CdTocName, TextsOf(tag, CdTocKey));
}

void WriteCdToc(Tag& tag, const clTagElement& element) {
    tag.removeItem(CdTocKey);
    if (element.Data.Size > 0)
        tag.setData(CdTocKey, ByteVector(reinterpret_cast<const char*>(element.Data.Data),
                                         element.Data.Size));
    else if (!element.Value.IsEmpty())
        PutTexts(tag, CdTocKey, SplitValues(element.Value));
}

// Other names.

NString ElementOf(const Item& item) {
    for (const Renaming& renaming : Renamings)
        if (SameName(item.key(), renaming.Key))
            return renaming.Element;
    return ToNString(item.key());
}

String KeyOf(const NString& element) {
    for (const Renaming& renaming : Renamings)
        if (element.Compare(renaming.Element, 0, true) == 0)
            return renaming.Key;
    return ToTagLib(element);
}

// An item that is no text belongs to something else; and an element of a key
// with another name would come back under that one.
bool IsWritable(const Tag& tag, const NString& name) {
    const String key = KeyOf(name);
    const Item* old = FindItem(tag, key);
    const bool comesBack = ElementOf(Item(key, StringList())).Compare(name, 0, true) == 0;
    return Tag::checkKey(key) && comesBack && !IsApePictureKey(key) && !SameName(key, CdTocKey) &&
           !BeginsWithName(key, RatingByPrefix) && (!old || IsText(*old));
}

bool WriteElement(Tag& tag, const clTagElement& element) {
    if (IsCdToc(element.Name)) {
        WriteCdToc(tag, element);
        return true;
    }
    if (IsNoText(element))
        return false;
    if (const clMappingRow* row = FindMappingRow(element.Name))
        return WriteRow(tag, *row, element.Value);
    if (!IsWritable(tag, element.Name))
        return AsksRemoval(element);
    const StringList values = SplitValues(element.Value);
    if (values.isEmpty())
        tag.removeItem(KeyOf(element.Name));
    else
        PutTexts(tag, KeyOf(element.Name), values);
    return true;
}

// Names of the items that ReadApe reads beside the table's.
bool IsOtherText(const Item& item) {
    return IsText(item) && !IsTableKey(item.key()) && !IsApePictureKey(item.key()) &&
           !IsArtName(ToNString(item.key()));
}

void RemoveElement(Tag& tag, const NString& name) {
    if (IsCdToc(name))
        tag.removeItem(CdTocKey);
    else if (const clMappingRow* row = FindMappingRow(name))
        RemoveRow(tag, *row);
    else if (IsWritable(tag, name))
        tag.removeItem(KeyOf(name));
}

void RemoveAllTexts(Tag& tag) {
    const StringList known = KeysOfTable(tag);
    StringList others;
    for (const auto& [key, item] : tag.itemListMap())
        if (IsOtherText(item))
            others.append(key);
    for (const String& key : known)
        tag.removeItem(key);
    for (const String& key : others)
        tag.removeItem(key);
}

} // namespace

void ReadApe(const Tag& tag, clTagRecord& record) {
    for (const clMappingRow& row : MappingRows())
        if (MayHaveRow(tag, row))
            AddValues(record, row.Element, ReadRow(tag, row));
    ReadCdToc(tag, record);
    for (const auto& [key, item] : tag.itemListMap())
        if (IsOtherText(item))
            AddValues(record, ElementOf(item), item.values());
    ReadApePictures(tag, record);
}

void SetApe(Tag& tag, clTagRecord& changes, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& element = *changes[index];
        if (!IsArtName(element.Name) && !WriteElement(tag, element))
            refused.Add(element.Name);
    }
    SetApePictures(tag, changes, refused);
}

void DeleteApe(Tag& tag, const NStringList& names) {
    if (names.Count == 0)
        RemoveAllTexts(tag);
    for (int index = 0; index < names.Count; ++index)
        if (!IsArtName(*names[index]))
            RemoveElement(tag, *names[index]);
    DeleteApePictures(tag, names);
}

} // namespace tagmap
