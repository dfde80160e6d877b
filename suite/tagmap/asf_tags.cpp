#include "suite/tagmap/asf_tags.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/rating.h"

#include <asfattribute.h>
#include <asfpicture.h>
#include <tpropertymap.h>

#include <algorithm>
#include <vector>

namespace tagmap {

namespace {

using TagLib::String;
using TagLib::StringList;
using TagLib::ASF::Attribute;
using TagLib::ASF::AttributeList;
using TagLib::ASF::Picture;
using TagLib::ASF::Tag;

constexpr wchar_t PictureField[] = L"WM/Picture";
constexpr wchar_t CdTocField[] = L"WM/MCDI";
constexpr wchar_t RatingField[] = L"WM/SharedUserRating";
// Lengths of texts in the content description, and of names, have 16 bits.
constexpr unsigned ShortTextMost = 0xFFFF / sizeof(wchar_t) - 1;

// Attributes that say how the audio was coded or is to be decoded.
constexpr const wchar_t* CodingFields[] = {L"IsVBR", L"DeviceConformanceTemplate", L"WMFSDKVersion",
                                           L"WMFSDKNeeded", L"MediaFoundationVersion"};
constexpr wchar_t DynamicRangePrefix[] = L"WM/WMADRC";

// The content description's texts.
struct DescriptionField {
    const wchar_t* Name;
    String (Tag::*Get)() const;
    void (Tag::*Set)(const String&);
};
constexpr DescriptionField DescriptionFields[] = {
    {L"Title", &Tag::title, &Tag::setTitle},
    {L"Author", &Tag::artist, &Tag::setArtist},
    {L"Copyright", &Tag::copyright, &Tag::setCopyright},
    {L"Description", &Tag::comment, &Tag::setComment},
};

const DescriptionField* DescriptionFieldOf(NameView field) {
    for (const DescriptionField& candidate : DescriptionFields)
        if (SameName(field, candidate.Name))
            return &candidate;
    return nullptr;
}

bool IsCodingField(const String& field) {
    for (const wchar_t* coding : CodingFields)
        if (SameName(field, coding))
            return true;
    return BeginsWithName(field, DynamicRangePrefix);
}

// Pictures have numbers of their own.
bool IsWritable(const String& field) {
    return !IsCodingField(field) && !SameName(field, PictureField) && field.size() <= ShortTextMost;
}

bool IsTableField(const String& field) {
    for (const clMappingRow& row : MappingRows())
        if (SameName(row.Asf, field))
            return true;
    return false;
}

// The library's own names for attributes that the table lacks ("LYRICS"). It
// knows them through a tag's properties alone, so an empty tag is asked.
String PropertyOf(const String& field) {
    Tag scratch;
    scratch.setAttribute(field, Attribute(String("0")));
    const TagLib::PropertyMap properties = scratch.properties();
    return properties.isEmpty() ? String() : properties.begin()->first;
}

String FieldOfProperty(const String& name) {
    TagLib::PropertyMap properties;
    properties.insert(name, StringList(String("0")));
    Tag scratch;
    scratch.setProperties(properties);
    const auto& attributes = scratch.attributeListMap();
    return attributes.isEmpty() ? String() : attributes.begin()->first;
}

String FieldOf(const NString& element) {
    if (element.Compare(CdTocName, 0, true) == 0)
        return CdTocField;
    if (const clMappingRow* row = FindMappingRow(element))
        return row->Asf;
    const String name = ToTagLib(element);
    const String field = FieldOfProperty(name);
    return field.isEmpty() || IsTableField(field) ? name : field;
}

NString ElementOf(const String& field) {
    const String property = PropertyOf(field);
    return property.isEmpty() ? ToNString(field) : LowerName(property);
}

// The spelling of the name that the tag has already.
String SpellingOf(const Tag& tag, const String& field) {
    if (tag.attributeListMap().contains(field))
        return field;
    for (const auto& [name, attributes] : tag.attributeListMap())
        if (SameName(name, field))
            return name;
    return field;
}

// With `ofStreams` the attributes of single streams, without it the others.
AttributeList Attributes(const Tag& tag, const String& field, bool ofStreams = false) {
    AttributeList list;
    for (const Attribute& attribute : tag.attributeListMap().value(SpellingOf(tag, field)))
        if ((attribute.stream() != 0) == ofStreams)
            list.append(attribute);
    return list;
}

void PutAttributes(Tag& tag, const String& field, const AttributeList& attributes) {
    AttributeList all = Attributes(tag, field, true);
    for (const Attribute& attribute : attributes)
        all.append(attribute);
    const String spelling = SpellingOf(tag, field);
    if (all.isEmpty())
        tag.removeItem(spelling);
    else
        tag.setAttribute(spelling, all);
}

// Empty for bytes and GUIDs.
NString TextOf(const Attribute& attribute) {
    switch (attribute.type()) {
    case Attribute::UnicodeType:
        return ToNString(attribute.toString());
    case Attribute::BoolType:
        return NString::FromUInt(attribute.toBool());
    case Attribute::WordType:
        return NString::FromUInt(attribute.toUShort());
    case Attribute::DWordType:
        return NString::FromUInt(attribute.toUInt());
    case Attribute::QWordType:
        return NString::FromUInt(attribute.toULongLong());
    default:
        return NString();
    }
}

StringList TextsOf(const AttributeList& attributes) {
    StringList texts;
    for (const Attribute& attribute : attributes) {
        const NString text = TextOf(attribute);
        if (!text.IsEmpty())
            texts.append(ToTagLib(text));
    }
    return texts;
}

// The number that the text is the usual form of, up to `most`.
bool IsNumber(const String& text, uint64_t most, uint64_t& number) {
    const NString value = ToNString(text);
    return ParseWholeNumber(value, most, number) && value == NString::FromUInt(number);
}

// An attribute of the type that `old` has, if the text fits it.
Attribute MakeAttribute(const AttributeList& old, const String& text) {
    const auto type = old.isEmpty() ? Attribute::UnicodeType : old.front().type();
    uint64_t number = 0;
    if (type == Attribute::BoolType && IsNumber(text, 1, number))
        return Attribute(number != 0);
    if (type == Attribute::WordType && IsNumber(text, UINT16_MAX, number))
        return Attribute(static_cast<unsigned short>(number));
    if (type == Attribute::DWordType && IsNumber(text, UINT32_MAX, number))
        return Attribute(static_cast<unsigned int>(number));
    if (type == Attribute::QWordType && IsNumber(text, UINT64_MAX, number))
        return Attribute(static_cast<unsigned long long>(number));
    return Attribute(text);
}

StringList ReadField(const Tag& tag, const String& field) {
    const StringList texts = TextsOf(Attributes(tag, field));
    const DescriptionField* description = DescriptionFieldOf(field);
    const String text = description ? (tag.*description->Get)() : String();
    if (text.isEmpty())
        return texts;
    StringList values(text);
    AppendMissing(values, texts);
    return values;
}

StringList ReadRating(const Tag& tag) {
    int halfSteps = 0;
    uint64_t native = 0;
    for (const String& text : ReadField(tag, RatingField))
        if (ParseWholeNumber(ToNString(text), INT32_MAX, native))
            return StringList(ToTagLib(RatingText(RatingFromAsf(static_cast<int>(native)))));
    for (const String& text : ReadField(tag, L"rating"))
        if (RatingFromPercent(ToNString(text), halfSteps))
            return StringList(ToTagLib(RatingText(halfSteps)));
    return StringList();
}

// An attribute of the element's own name stands in where the table's is
// missing, since other taggers write such names.
StringList ReadRow(const Tag& tag, const clMappingRow& row) {
    if (SameName(row.Asf, RatingField))
        return ReadRating(tag);
    const StringList values = ReadField(tag, row.Asf);
    return values.isEmpty() ? ReadField(tag, row.Element) : values;
}

// Most rows stand for attributes that a tag lacks, and the search for one is
// dear. The content description has no list to look into.
bool MayHaveRow(const Tag& tag, const clMappingRow& row) {
    const auto& fields = tag.attributeListMap();
    return DescriptionFieldOf(row.Asf) || DescriptionFieldOf(row.Element) ||
           std::any_of(fields.begin(), fields.end(), [&](const auto& field) {
               return SameName(field.first, row.Asf) || SameName(field.first, row.Element);
           });
}

void ReadCdToc(const Tag& tag, clTagRecord& record) {
    for (const Attribute& attribute : Attributes(tag, CdTocField)) {
        const TagLib::ByteVector bytes = attribute.toByteVector();
        if (!bytes.isEmpty())
            record.AddData(CdTocName, bytes.data(), static_cast<int>(bytes.size()));
        else
            AddValues(record, CdTocName, TextsOf(Attributes(tag, CdTocField)));
        return;
    }
}

bool IsPicture(const Attribute& attribute) {
    return attribute.toPicture().isValid();
}

void ReadPictures(const Tag& tag, clTagRecord& record) {
    int number = 1;
    for (const Attribute& attribute : Attributes(tag, PictureField)) {
        if (!IsPicture(attribute))
            continue;
        const Picture picture = attribute.toPicture();
        const TagLib::ByteVector data = picture.picture();
        AddArt(record, number++, DescriptionOf(picture.type(), ToNString(picture.description())),
               data.data(), data.size());
    }
}

TagLib::ByteVector BytesOf(const NBuffer& buffer) {
    return TagLib::ByteVector(reinterpret_cast<const char*>(buffer.Data), buffer.Size);
}

Attribute MakePicture(const Attribute* old, const clArtRequest& request) {
    const clArtLabel label =
        old ? LabelFor(request, old->toPicture().type(), ToNString(old->toPicture().description()))
            : LabelFor(request);
    Picture picture;
    picture.setType(static_cast<Picture::Type>(label.Type));
    picture.setDescription(ToTagLib(label.Description));
    picture.setMimeType(MimeTypeOf(request.Data->Data, request.Data->Size));
    picture.setPicture(BytesOf(*request.Data));
    return Attribute(picture);
}

// Gives `edit` the pictures as a list. An attribute of that name that is no
// picture stays as it is.
template <typename Edit>
void EditPictures(Tag& tag, Edit edit) {
    std::vector<Attribute> pictures;
    AttributeList others;
    for (const Attribute& attribute : Attributes(tag, PictureField)) {
        if (IsPicture(attribute))
            pictures.push_back(attribute);
        else
            others.append(attribute);
    }
    edit(pictures);
    AttributeList all;
    for (const Attribute& picture : pictures)
        all.append(picture);
    all.append(others);
    PutAttributes(tag, PictureField, all);
}

void ClearDescription(Tag& tag, const String& field) {
    if (const DescriptionField* description = DescriptionFieldOf(field))
        (tag.*description->Set)(String());
}

void RemoveElement(Tag& tag, const NString& element) {
    const String field = FieldOf(element);
    if (!IsWritable(field))
        return;
    ClearDescription(tag, field);
    PutAttributes(tag, field, AttributeList());
    if (FindMappingRow(element))
        PutAttributes(tag, ToTagLib(element), AttributeList());
}

bool WriteDescription(Tag& tag, const DescriptionField& field, const clTagElement& element) {
    const String text = JoinForSingleField(SplitValues(element.Value));
    if (text.size() > ShortTextMost)
        return false;
    RemoveElement(tag, element.Name);
    (tag.*field.Set)(text);
    return true;
}

bool WriteRating(Tag& tag, const clTagElement& element) {
    int halfSteps = 0;
    if (!ParseRating(element.Value, halfSteps))
        return false;
    RemoveElement(tag, element.Name);
    tag.setAttribute(RatingField, Attribute(static_cast<unsigned>(AsfFromRating(halfSteps))));
    return true;
}

bool WriteCdToc(Tag& tag, const clTagElement& element) {
    AttributeList attributes;
    if (element.Data.Size > 0)
        attributes.append(Attribute(BytesOf(element.Data)));
    else if (!element.Value.IsEmpty())
        attributes.append(Attribute(ToTagLib(element.Value)));
    PutAttributes(tag, CdTocField, attributes);
    return true;
}

void WriteTexts(Tag& tag, const String& field, const clTagElement& element) {
    const AttributeList old = Attributes(tag, field);
    const String spelling = SpellingOf(tag, field);
    AttributeList attributes;
    for (const String& value : SplitValues(element.Value))
        attributes.append(MakeAttribute(old, value));
    RemoveElement(tag, element.Name);
    PutAttributes(tag, spelling, attributes);
}

// False, with nothing changed, if ASF can't hold the element.
bool WriteElement(Tag& tag, const clTagElement& element) {
    const String field = FieldOf(element.Name);
    if (SameName(field, CdTocField))
        return WriteCdToc(tag, element);
    if (IsNoText(element) || !IsWritable(field))
        return false;
    if (AsksRemoval(element)) {
        RemoveElement(tag, element.Name);
        return true;
    }
    if (const DescriptionField* description = DescriptionFieldOf(field))
        return WriteDescription(tag, *description, element);
    if (SameName(field, RatingField))
        return WriteRating(tag, element);
    WriteTexts(tag, field, element);
    return true;
}

void RemoveAll(Tag& tag) {
    for (const DescriptionField& field : DescriptionFields)
        (tag.*field.Set)(String());
    tag.setRating(String());
    std::vector<String> fields;
    for (const auto& [field, attributes] : tag.attributeListMap())
        if (!IsCodingField(field))
            fields.push_back(field);
    for (const String& field : fields)
        PutAttributes(tag, field, AttributeList());
}

// The parts of an ASF file's header: a GUID, the size of the whole object, and
// its content.
constexpr unsigned GuidSize = 16;
constexpr unsigned ObjectHeaderSize = GuidSize + sizeof(uint64_t);
constexpr unsigned FileHeaderSize = 30; // what stands in front of the first object
const TagLib::ByteVector
    ExtendedDescriptionGuid("\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50",
                            GuidSize);
const TagLib::ByteVector
    HeaderExtensionGuid("\xB5\x03\xBF\x5F\x2E\xA9\xCF\x11\x8E\xE3\x00\xC0\x0C\x20\x53\x65",
                        GuidSize);

// Whether the header extension, with the metadata library in it, precedes the
// extended content description. The library appends those that are missing, in
// the order description, extension.
bool LibraryComesFirst(TagLib::ASF::File& file) {
    file.seek(GuidSize);
    const long long end =
        std::min<long long>(file.readBlock(sizeof(uint64_t)).toLongLong(false), file.length());
    long long position = FileHeaderSize;
    while (position + ObjectHeaderSize <= end) {
        file.seek(static_cast<long>(position));
        const TagLib::ByteVector header = file.readBlock(ObjectHeaderSize);
        const TagLib::ByteVector guid = header.mid(0, GuidSize);
        const long long size = header.mid(GuidSize).toLongLong(false);
        if (guid == ExtendedDescriptionGuid)
            return false;
        if (guid == HeaderExtensionGuid)
            return true;
        if (size < ObjectHeaderSize || size > end - position)
            return false;
        position += size;
    }
    return false;
}

// The extended content description takes the first such value of a name.
bool FitsDescription(const Attribute& attribute) {
    constexpr int DescriptionMost = 65535;
    return attribute.type() != Attribute::GuidType && attribute.dataSize() <= DescriptionMost &&
           attribute.language() == 0 && attribute.stream() == 0;
}

} // namespace

void ReadAsf(const Tag& tag, clTagRecord& record) {
    for (const clMappingRow& row : MappingRows())
        if (MayHaveRow(tag, row))
            AddValues(record, row.Element, ReadRow(tag, row));
    ReadCdToc(tag, record);
    for (const auto& [field, attributes] : tag.attributeListMap()) {
        if (!IsWritable(field) || IsTableField(field) || SameName(field, CdTocField))
            continue;
        const NString element = ElementOf(field);
        if (!FindMappingRow(element))
            AddValues(record, element, ReadField(tag, field));
    }
    ReadPictures(tag, record);
}

void SetAsf(Tag& tag, clTagRecord& changes, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& element = *changes[index];
        const bool isArt = IsArtName(element.Name);
        if (isArt ? IsUnusableArt(element) : !WriteElement(tag, element))
            refused.Add(element.Name);
    }
    const std::vector<clArtRequest> requests = ArtRequestsOf(changes);
    if (requests.empty())
        return;
    EditPictures(tag, [&](std::vector<Attribute>& pictures) {
        ApplyArtRequests(pictures, requests, MakePicture);
    });
}

void DeleteAsf(Tag& tag, const NStringList& names) {
    if (names.Count == 0)
        RemoveAll(tag);
    for (int index = 0; index < names.Count; ++index)
        if (!IsArtName(*names[index]))
            RemoveElement(tag, *names[index]);
    const std::vector<int> numbers = ArtNumbersOf(names);
    if (numbers.empty())
        return;
    EditPictures(tag,
                 [&](std::vector<Attribute>& pictures) { RemoveArtNumbers(pictures, numbers); });
}

void ArrangeAsfForSave(TagLib::ASF::File& file) {
    if (!LibraryComesFirst(file))
        return;
    for (auto& [field, attributes] : file.tag()->attributeListMap()) {
        if (attributes.size() < 2 || !FitsDescription(attributes.back()))
            continue;
        const Attribute last = attributes.back();
        attributes.erase(--attributes.end());
        attributes.prepend(last);
    }
}

} // namespace tagmap
