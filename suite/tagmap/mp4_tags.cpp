#include "suite/tagmap/mp4_tags.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/rating.h"

#include <mp4coverart.h>
#include <mp4item.h>
#include <tpropertymap.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

namespace tagmap {

namespace {

using TagLib::String;
using TagLib::StringList;
using TagLib::MP4::CoverArt;
using TagLib::MP4::CoverArtList;
using TagLib::MP4::Item;
using TagLib::MP4::ItemMap;
using TagLib::MP4::Tag;

constexpr wchar_t FreeFormPrefix[] = L"----:"; // then the owner, ":" and the name
constexpr wchar_t OwnerPrefix[] = L"----:com.apple.iTunes:";
constexpr wchar_t GaplessItem[] = L"----:com.apple.iTunes:iTunSMPB";
constexpr wchar_t CdTocItem[] = L"----:com.apple.iTunes:CDTOC";
constexpr char CoverItem[] = "covr";
constexpr char RatingItem[] = "rate";
constexpr char TempoItem[] = "tmpo";
constexpr int ShortMost = 0xFFFF; // numbers are stored in 16 bits

String FreeFormKey(const String& name) {
    return String(OwnerPrefix) + name;
}

bool IsFreeForm(NameView key) {
    return key.Units().starts_with(FreeFormPrefix);
}

// The table names a free-form atom by "----:" and its name.
std::wstring_view TableName(const clMappingRow& row) {
    const size_t prefix = IsFreeForm(row.Mp4) ? std::size(FreeFormPrefix) - 1 : 0;
    return std::wstring_view(row.Mp4).substr(prefix);
}

// A key without the owner of the free-form atoms that the table names.
std::wstring_view WithoutOwner(NameView key) {
    const size_t prefix = BeginsWithName(key, OwnerPrefix) ? std::size(OwnerPrefix) - 1 : 0;
    return key.Units().substr(prefix);
}

String RowKey(const clMappingRow& row) {
    const String name(TableName(row).data());
    return IsFreeForm(row.Mp4) ? FreeFormKey(name) : name;
}

bool IsPair(const String& key) {
    return key == "trkn" || key == "disk";
}

bool IsTableKey(const String& key) {
    const bool isOwned = BeginsWithName(key, OwnerPrefix);
    const std::wstring_view name = WithoutOwner(key);
    for (const clMappingRow& row : MappingRows())
        if (IsFreeForm(row.Mp4) == isOwned && SameName(TableName(row), name))
            return true;
    return false;
}

// The library's own names for items that the table lacks ("LYRICS"). It knows
// them through a tag's properties alone, so an empty tag is asked.
String PropertyOf(const String& key, const Item& item) {
    Tag scratch;
    scratch.setItem(key, item);
    const TagLib::PropertyMap properties = scratch.properties();
    return properties.isEmpty() ? String() : properties.begin()->first;
}

String KeyOfProperty(const String& name) {
    TagLib::PropertyMap properties;
    properties.insert(name, StringList(String("0")));
    Tag scratch;
    scratch.setProperties(properties);
    return scratch.itemMap().isEmpty() ? String() : scratch.itemMap().begin()->first;
}

// The key of the item that holds the element. Empty if none can.
String KeyOf(const NString& element) {
    if (element.Compare(CdTocName, 0, true) == 0)
        return CdTocItem;
    if (const clMappingRow* row = FindMappingRow(element))
        return RowKey(*row);
    const String name = ToTagLib(element);
    if (IsFreeForm(name))
        return StringList::split(name, ":").size() == 3 ? name : String();
    const String property = KeyOfProperty(name);
    if (!property.isEmpty() && !IsTableKey(property))
        return property;
    return name.find(":") < 0 ? FreeFormKey(name) : String();
}

// The element that an item's own name stands for; empty for what isn't shown.
NString ElementOf(const String& key, const Item& item) {
    if (key == CoverItem || SameName(key, GaplessItem))
        return NString();
    if (SameName(key, CdTocItem))
        return CdTocName;
    const String property = PropertyOf(key, item);
    if (!property.isEmpty())
        return LowerName(property);
    if (BeginsWithName(key, OwnerPrefix))
        return ToNString(key.substr(String(OwnerPrefix).size()));
    return IsFreeForm(key) ? ToNString(key) : NString();
}

// The item, found whatever the case of a free-form name; invalid if there is
// none.
Item FindItem(const Tag& tag, const String& key) {
    const ItemMap& items = tag.itemMap();
    const auto found = items.find(key);
    if (found != items.end())
        return found->second;
    if (!IsFreeForm(key))
        return Item();
    for (const auto& [name, item] : items)
        if (SameName(name, key))
            return item;
    return Item();
}

// The spelling of the key that the tag has already.
String SpellingOf(const Tag& tag, const String& key) {
    for (const auto& [name, item] : tag.itemMap())
        if (IsFreeForm(key) && SameName(name, key))
            return name;
    return key;
}

void RemoveItem(Tag& tag, const String& key) {
    tag.removeItem(SpellingOf(tag, key));
}

StringList One(const NString& text) {
    return text.IsEmpty() ? StringList() : StringList(ToTagLib(text));
}

StringList PairValues(const Item& item) {
    const Item::IntPair pair = item.toIntPair();
    return One(FormatNumberPair({pair.first & ShortMost, pair.second & ShortMost}));
}

StringList RatingValues(const Item& item) {
    const StringList texts = item.toStringList();
    const NString percent =
        texts.isEmpty() ? NString::FromInt(item.toInt()) : ToNString(texts.front());
    int halfSteps = 0;
    return RatingFromPercent(percent, halfSteps) ? One(RatingText(halfSteps)) : StringList();
}

// Some items the library itself turns to text: numbers and flags.
StringList OtherValues(const String& key, const Item& item) {
    const StringList texts = item.toStringList();
    if (!texts.isEmpty() || IsFreeForm(key))
        return texts;
    Tag scratch;
    scratch.setItem(key, item);
    const TagLib::PropertyMap properties = scratch.properties();
    return properties.isEmpty() ? StringList() : properties.begin()->second;
}

StringList ValuesOf(const String& key, const Item& item) {
    if (!item.isValid())
        return StringList();
    if (IsPair(key))
        return PairValues(item);
    if (key == TempoItem)
        return One(NString::FromInt(item.toInt() & ShortMost));
    if (key == RatingItem)
        return RatingValues(item);
    return OtherValues(key, item);
}

// A free-form atom of the element's own name stands in where the table's item
// is missing: other taggers write `----:...:RATING`.
StringList ReadRow(const Tag& tag, const clMappingRow& row) {
    const String key = RowKey(row);
    const StringList values = ValuesOf(key, FindItem(tag, key));
    if (!values.isEmpty())
        return values;
    const Item own = FindItem(tag, FreeFormKey(row.Element));
    if (!own.isValid())
        return StringList();
    return key == RatingItem ? RatingValues(own) : own.toStringList();
}

// Most rows stand for items that a tag lacks, and the library's own search is
// dear. False if no item of these names, without their owner, is the row's.
bool MayHaveRow(const std::vector<std::wstring_view>& names, const clMappingRow& row) {
    return std::any_of(names.begin(), names.end(), [&](std::wstring_view name) {
        return SameName(name, TableName(row)) || SameName(name, row.Element);
    });
}

void ReadRows(const Tag& tag, clTagRecord& record) {
    std::vector<std::wstring_view> names;
    for (const auto& [key, item] : tag.itemMap())
        names.push_back(WithoutOwner(key));
    for (const clMappingRow& row : MappingRows())
        if (MayHaveRow(names, row))
            AddValues(record, row.Element, ReadRow(tag, row));
}

void ReadCovers(const Tag& tag, clTagRecord& record) {
    int number = 1;
    for (const CoverArt& cover : FindItem(tag, CoverItem).toCoverArtList()) {
        const TagLib::ByteVector data = cover.data();
        AddArt(record, number++, NString(), data.data(), data.size());
    }
}

std::optional<Item> MakeText(const StringList& values) {
    Item item(values);
    return item;
}

std::optional<Item> MakePair(const NString& value) {
    clNumberPair pair;
    if (!ParseNumberPair(value, ShortMost, pair) || FormatNumberPair(pair).IsEmpty())
        return std::nullopt;
    return Item(pair.Number, pair.Total);
}

std::optional<Item> MakeTempo(const NString& value) {
    uint64_t tempo = 0;
    if (!ParseWholeNumber(value, ShortMost, tempo))
        return std::nullopt;
    return Item(static_cast<int>(tempo));
}

std::optional<Item> MakeRating(const NString& value) {
    int halfSteps = 0;
    if (!ParseRating(value, halfSteps))
        return std::nullopt;
    return MakeText(One(PercentFromRating(halfSteps)));
}

// The library reads any text as some number or flag for the items that hold
// one; what comes back must be what was asked.
std::optional<Item> MakeProperty(const NString& element, const StringList& values) {
    TagLib::PropertyMap wanted;
    wanted.insert(ToTagLib(element), values);
    Tag scratch;
    scratch.setProperties(wanted);
    if (scratch.itemMap().isEmpty() || scratch.properties() != wanted)
        return std::nullopt;
    return scratch.itemMap().begin()->second;
}

std::optional<Item> MakeItem(const String& key, const clTagElement& element) {
    if (IsPair(key))
        return MakePair(element.Value);
    if (key == TempoItem)
        return MakeTempo(element.Value);
    if (key == RatingItem)
        return MakeRating(element.Value);
    const StringList values = SplitValues(element.Value);
    if (IsTableKey(key) || IsFreeForm(key))
        return MakeText(values);
    return MakeProperty(element.Name, values);
}

// Takes away the item, and the free-form atom of the element's own name too.
void RemoveElement(Tag& tag, const NString& element) {
    const String key = KeyOf(element);
    if (key.isEmpty() || SameName(key, GaplessItem))
        return;
    RemoveItem(tag, key);
    RemoveItem(tag, FreeFormKey(ToTagLib(element)));
}

// False, with nothing changed, if MP4 can't hold the element.
bool WriteElement(Tag& tag, const clTagElement& element) {
    const String key = IsNoText(element) ? String() : KeyOf(element.Name);
    if (key.isEmpty() || SameName(key, GaplessItem))
        return false;
    if (AsksRemoval(element)) {
        RemoveElement(tag, element.Name);
        return true;
    }
    const std::optional<Item> item = MakeItem(key, element);
    if (!item)
        return false;
    const String spelling = SpellingOf(tag, key);
    RemoveElement(tag, element.Name);
    tag.setItem(spelling, *item);
    return true;
}

CoverArt::Format FormatOf(const NBuffer& data) {
    const String mimeType(MimeTypeOf(data.Data, data.Size));
    if (mimeType == "image/jpeg")
        return CoverArt::JPEG;
    if (mimeType == "image/png")
        return CoverArt::PNG;
    if (mimeType == "image/gif")
        return CoverArt::GIF;
    return mimeType == "image/bmp" ? CoverArt::BMP : CoverArt::Unknown;
}

std::vector<CoverArt> CoversOf(const Tag& tag) {
    std::vector<CoverArt> covers;
    for (const CoverArt& cover : FindItem(tag, CoverItem).toCoverArtList())
        covers.push_back(cover);
    return covers;
}

void PutCovers(Tag& tag, const std::vector<CoverArt>& covers) {
    CoverArtList list;
    for (const CoverArt& cover : covers)
        list.append(cover);
    if (list.isEmpty())
        tag.removeItem(CoverItem);
    else
        tag.setItem(CoverItem, list);
}

void WriteCovers(Tag& tag, const std::vector<clArtRequest>& requests) {
    if (requests.empty())
        return;
    std::vector<CoverArt> covers = CoversOf(tag);
    ApplyArtRequests(covers, requests, [](const CoverArt*, const clArtRequest& request) {
        return CoverArt(FormatOf(*request.Data),
                        TagLib::ByteVector(reinterpret_cast<const char*>(request.Data->Data),
                                           request.Data->Size));
    });
    PutCovers(tag, covers);
}

void RemoveAll(Tag& tag) {
    std::vector<String> keys;
    for (const auto& [key, item] : tag.itemMap())
        if (!SameName(key, GaplessItem))
            keys.push_back(key);
    for (const String& key : keys)
        tag.removeItem(key);
}

} // namespace

void ReadMp4(const Tag& tag, clTagRecord& record) {
    ReadRows(tag, record);
    for (const auto& [key, item] : tag.itemMap()) {
        if (IsTableKey(key))
            continue;
        const NString element = ElementOf(key, item);
        if (element.IsEmpty() || FindMappingRow(element))
            continue;
        const String mainKey = KeyOf(element);
        if (SameName(mainKey, key) || !tag.itemMap().contains(mainKey))
            AddValues(record, element, ValuesOf(key, item));
    }
    ReadCovers(tag, record);
}

void SetMp4(Tag& tag, clTagRecord& changes, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& element = *changes[index];
        const bool isArt = IsArtName(element.Name);
        if (isArt ? IsUnusableArt(element) : !WriteElement(tag, element))
            refused.Add(element.Name);
    }
    WriteCovers(tag, ArtRequestsOf(changes));
}

void DeleteMp4(Tag& tag, const NStringList& names) {
    if (names.Count == 0)
        RemoveAll(tag);
    for (int index = 0; index < names.Count; ++index)
        if (!IsArtName(*names[index]))
            RemoveElement(tag, *names[index]);
    std::vector<CoverArt> covers = CoversOf(tag);
    RemoveArtNumbers(covers, ArtNumbersOf(names));
    PutCovers(tag, covers);
}

} // namespace tagmap
