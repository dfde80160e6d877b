#include "suite/tagmap/vorbis_tags.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/rating.h"

#include <algorithm>
#include <vector>

namespace tagmap {

namespace {

using TagLib::String;
using TagLib::StringList;
using TagLib::Ogg::XiphComment;

constexpr wchar_t CdTocField[] = L"CDTOC";
constexpr wchar_t EncoderName[] = L"encoder";
constexpr wchar_t RatingField[] = L"RATING";
constexpr wchar_t RatingByPrefix[] = L"RATING:"; // followed by the rater's e-mail
constexpr wchar_t ChannelMaskField[] = L"WAVEFORMATEXTENSIBLE_CHANNEL_MASK";

// The library keeps these for its pictures; flac_pictures.h writes them.
constexpr const wchar_t* PictureFields[] = {L"METADATA_BLOCK_PICTURE", L"COVERART"};

// "n/N" as two comments. The first name of the total is the one written.
struct PairFields {
    const wchar_t* Element;
    const wchar_t* Number;
    const wchar_t* Totals[2];
};
constexpr PairFields Pairs[] = {
    {L"track", L"TRACKNUMBER", {L"TRACKTOTAL", L"TOTALTRACKS"}},
    {L"disc", L"DISCNUMBER", {L"DISCTOTAL", L"TOTALDISCS"}},
};

// Comments that hold an element's text under a second name.
struct SecondField {
    const wchar_t* Element;
    const wchar_t* Field;
};
constexpr SecondField SecondFields[] = {{L"comment", L"DESCRIPTION"}, {L"label", L"PUBLISHER"}};

const PairFields* PairOf(NameView element) {
    for (const PairFields& pair : Pairs)
        if (SameName(element, pair.Element))
            return &pair;
    return nullptr;
}

StringList FieldValues(const XiphComment& comment, const String& field) {
    return comment.fieldListMap().value(field.upper());
}

void PutField(XiphComment& comment, const String& field, const StringList& values) {
    comment.removeFields(field);
    for (const String& value : values)
        comment.addField(field, value, false);
}

StringList RatingByFields(const XiphComment& comment) {
    StringList fields;
    for (const auto& [field, values] : comment.fieldListMap())
        if (BeginsWithName(field, RatingByPrefix))
            fields.append(field);
    return fields;
}

// All comments that an element stands for. The element's own name is among
// them: taggers write YEAR or "ALBUM ARTIST" beside or in place of the names
// of the table.
StringList FieldsOf(const XiphComment& comment, const clMappingRow& row) {
    StringList fields(String(row.Vorbis));
    for (const SecondField& second : SecondFields)
        if (SameName(row.Element, second.Element))
            fields.append(second.Field);
    if (const PairFields* pair = PairOf(row.Element)) {
        fields.append(pair->Totals[0]);
        fields.append(pair->Totals[1]);
    }
    if (SameName(row.Vorbis, RatingField))
        fields.append(RatingByFields(comment));
    const String ownName = String(row.Element).upper();
    if (!fields.contains(ownName))
        fields.append(ownName);
    return fields;
}

// True if the comment is one of these.
bool IsFieldOf(const clMappingRow& row, const String& field) {
    if (SameName(field, row.Vorbis) || SameName(field, row.Element))
        return true;
    for (const SecondField& second : SecondFields)
        if (SameName(field, second.Field) && SameName(row.Element, second.Element))
            return true;
    if (const PairFields* pair = PairOf(row.Element))
        return SameName(field, pair->Totals[0]) || SameName(field, pair->Totals[1]);
    return SameName(row.Vorbis, RatingField) && BeginsWithName(field, RatingByPrefix);
}

StringList ReadPair(const XiphComment& comment, const PairFields& pair) {
    StringList numbers = FieldValues(comment, pair.Number);
    if (numbers.isEmpty())
        numbers = FieldValues(comment, pair.Element);
    StringList totals = FieldValues(comment, pair.Totals[0]);
    if (totals.isEmpty())
        totals = FieldValues(comment, pair.Totals[1]);
    // A number that has its total with it, and several numbers, stand as they are.
    if (totals.isEmpty() || numbers.size() > 1 ||
        (!numbers.isEmpty() && numbers.front().find("/") >= 0))
        return numbers;
    const String number = numbers.isEmpty() ? String() : numbers.front();
    return StringList(number + "/" + totals.front());
}

void WritePair(XiphComment& comment, const PairFields& pair, const StringList& values) {
    const int slash = values.size() == 1 ? values.front().find("/") : -1;
    const bool hasTotal = slash >= 0 && slash + 1 < static_cast<int>(values.front().size());
    if (!hasTotal) {
        PutField(comment, pair.Number, values);
        return;
    }
    PutField(comment, pair.Number, StringList(values.front().substr(0, slash)));
    PutField(comment, pair.Totals[0], StringList(values.front().substr(slash + 1)));
}

// RATING counts before the ratings by e-mail.
StringList ReadRating(const XiphComment& comment) {
    int halfSteps = 0;
    for (const String& value : FieldValues(comment, RatingField))
        if (RatingFromPercent(ToNString(value), halfSteps))
            return StringList(ToTagLib(RatingText(halfSteps)));
    for (const String& field : RatingByFields(comment))
        for (const String& value : FieldValues(comment, field))
            if (RatingFromFraction(ToNString(value), halfSteps))
                return StringList(ToTagLib(RatingText(halfSteps)));
    return StringList();
}

// Ratings by e-mail that are there follow, so that all programs see one rating.
void WriteRating(XiphComment& comment, const StringList& ratingBy, int halfSteps) {
    PutField(comment, RatingField, StringList(ToTagLib(PercentFromRating(halfSteps))));
    for (const String& field : ratingBy)
        PutField(comment, field, StringList(ToTagLib(FractionFromRating(halfSteps))));
}

StringList ReadTexts(const XiphComment& comment, const clMappingRow& row) {
    StringList values = FieldValues(comment, row.Vorbis);
    for (const SecondField& second : SecondFields)
        if (SameName(row.Element, second.Element))
            AppendMissing(values, FieldValues(comment, second.Field));
    if (values.isEmpty())
        values = FieldValues(comment, row.Element);
    if (values.isEmpty() && SameName(row.Element, EncoderName))
        values.append(comment.vendorID());
    return values;
}

StringList ReadRow(const XiphComment& comment, const clMappingRow& row) {
    if (const PairFields* pair = PairOf(row.Element))
        return ReadPair(comment, *pair);
    if (SameName(row.Vorbis, RatingField))
        return ReadRating(comment);
    return ReadTexts(comment, row);
}

void RemoveRow(XiphComment& comment, const clMappingRow& row) {
    for (const String& field : FieldsOf(comment, row))
        comment.removeFields(field);
}

// False, with nothing changed, if the field can't hold the value.
bool WriteRow(XiphComment& comment, const clMappingRow& row, const clTagElement& element) {
    int halfSteps = 0;
    const bool isRating = SameName(row.Vorbis, RatingField);
    if (isRating && !element.Value.IsEmpty() && !ParseRating(element.Value, halfSteps))
        return false;
    const StringList ratingBy = RatingByFields(comment);
    RemoveRow(comment, row);
    if (AsksRemoval(element))
        return true;
    if (isRating)
        WriteRating(comment, ratingBy, halfSteps);
    else if (const PairFields* pair = PairOf(row.Element))
        WritePair(comment, *pair, SplitValues(element.Value));
    else
        PutField(comment, row.Vorbis, SplitValues(element.Value));
    return true;
}

bool IsWritable(const String& field) {
    for (const wchar_t* pictures : PictureFields)
        if (SameName(field, pictures))
            return false;
    return XiphComment::checkKey(field) && !SameName(field, ChannelMaskField);
}

bool WriteElement(XiphComment& comment, const clTagElement& element) {
    if (IsNoText(element))
        return false;
    if (const clMappingRow* row = FindMappingRow(element.Name))
        return WriteRow(comment, *row, element);
    const String field =
        SameName(ToTagLib(element.Name), CdTocName) ? CdTocField : ToTagLib(element.Name);
    if (!IsWritable(field))
        return false;
    PutField(comment, field, SplitValues(element.Value));
    return true;
}

// The comments that the table's rows read.
bool IsTableField(const String& field) {
    const auto rows = MappingRows();
    return std::any_of(rows.begin(), rows.end(),
                       [&](const clMappingRow& row) { return IsFieldOf(row, field); });
}

// Most rows stand for comments that a file lacks, and the library's own search
// is dear. The encoder may stand in place of a comment.
bool MayHaveRow(const XiphComment& comment, const clMappingRow& row) {
    const auto& fields = comment.fieldListMap();
    return SameName(row.Element, EncoderName) ||
           std::any_of(fields.begin(), fields.end(),
                       [&](const auto& field) { return IsFieldOf(row, field.first); });
}

void RemoveAllTexts(XiphComment& comment) {
    const StringList channelMask = FieldValues(comment, ChannelMaskField);
    comment.removeAllFields();
    PutField(comment, ChannelMaskField, channelMask);
}

void RemoveElement(XiphComment& comment, const NString& name) {
    if (const clMappingRow* row = FindMappingRow(name))
        RemoveRow(comment, *row);
    else if (SameName(ToTagLib(name), CdTocName))
        comment.removeFields(CdTocField);
    else if (!SameName(ToTagLib(name), ChannelMaskField))
        comment.removeFields(ToTagLib(name));
}

} // namespace

void ReadVorbis(const XiphComment& comment, clTagRecord& record) {
    for (const clMappingRow& row : MappingRows())
        if (MayHaveRow(comment, row))
            AddValues(record, row.Element, ReadRow(comment, row));
    AddValues(record, CdTocName, FieldValues(comment, CdTocField));
    for (const auto& [field, values] : comment.fieldListMap())
        if (!IsTableField(field) && field != CdTocField && field != ChannelMaskField)
            AddValues(record, LowerName(field), values);
}

void SetVorbis(XiphComment& comment, clTagRecord& changes, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& element = *changes[index];
        if (!IsArtName(element.Name) && !WriteElement(comment, element))
            refused.Add(element.Name);
    }
}

void DeleteVorbis(XiphComment& comment, const NStringList& names) {
    if (names.Count == 0)
        RemoveAllTexts(comment);
    for (int index = 0; index < names.Count; ++index)
        RemoveElement(comment, *names[index]);
}

} // namespace tagmap
