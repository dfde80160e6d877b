#include "suite/tagmap/id3v2_tags.h"

#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/id3v2_fields.h"
#include "suite/tagmap/id3v2_frames.h"
#include "suite/tagmap/id3v2_names.h"
#include "suite/tagmap/id3v2_pictures.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/pictures.h"
#include "suite/tagmap/rating.h"

#include <unknownframe.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace tagmap {

namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::ID3v2::Tag;
using TagLib::ID3v2::UnknownFrame;

constexpr char DiscIdFrame[] = "MCDI";
constexpr char OldDateFrame[] = "TDAT";
constexpr char OldTimeFrame[] = "TIME";

// Which kind of frames a row of the table stands for.
enum class RowKind { Text, UserText, Comment, Date, Genre, Mood, Rating };

RowKind KindOf(const clMappingRow& row) {
    if (BeginsWithName(row.Id3v2, UserTextPrefix))
        return RowKind::UserText;
    struct KindOfFrame {
        const char* Id;
        RowKind Kind;
    };
    constexpr KindOfFrame Kinds[] = {{CommentFrame, RowKind::Comment},
                                     {DateFrame, RowKind::Date},
                                     {GenreFrame, RowKind::Genre},
                                     {MoodFrame, RowKind::Mood},
                                     {RatingFrame, RowKind::Rating}};
    for (const KindOfFrame& kind : Kinds)
        if (std::ranges::equal(std::wstring_view(row.Id3v2), std::string_view(kind.Id)))
            return kind.Kind;
    return RowKind::Text;
}

std::string FrameIdOf(const clMappingRow& row) {
    const std::wstring_view id(row.Id3v2);
    return std::string(id.begin(), id.end());
}

String DescriptionOfRow(const clMappingRow& row) {
    return String(row.Id3v2 + UserTextPrefix.size());
}

void RemoveFrames(Tag& tag, const char* id) {
    tag.removeFrames(ByteVector(id));
}

// Rows of the table.

// False if no frame of the tag can be read for the row.
bool MayHaveRow(const FrameNames& names, const clMappingRow& row) {
    if (names.HasUserText(row.Element))
        return true;
    switch (KindOf(row)) {
    case RowKind::UserText:
        return names.HasUserText(row.Id3v2 + UserTextPrefix.size());
    case RowKind::Date:
        return names.HasFrame(row.Id3v2) || names.HasFrame(OldYearFrame);
    default:
        return names.HasFrame(row.Id3v2);
    }
}

StringList ReadNative(const Tag& tag, const clMappingRow& row) {
    switch (KindOf(row)) {
    case RowKind::UserText:
        return UserTextsOf(tag, DescriptionOfRow(row));
    case RowKind::Comment:
        return ReadComments(tag);
    case RowKind::Genre:
        return ReadGenres(tag);
    case RowKind::Rating:
        return ReadRating(tag);
    case RowKind::Date: {
        const StringList dates = TextsOf(tag, DateFrame);
        return dates.isEmpty() ? TextsOf(tag, OldYearFrame) : dates;
    }
    case RowKind::Text:
    case RowKind::Mood:
        break;
    }
    return TextsOf(tag, FrameIdOf(row).c_str());
}

// A TXXX frame of the element's own name is what other taggers write ("UPC",
// "MOOD", "ALBUM ARTIST"), and counts when the row's own frame is missing.
StringList ReadRow(const Tag& tag, const clMappingRow& row) {
    StringList values = ReadNative(tag, row);
    if (values.isEmpty() && KindOf(row) != RowKind::Rating)
        values = UserTextsOf(tag, row.Element);
    return values;
}

// What ID3v2.3 has in place of one date.
void RemoveOldDate(Tag& tag) {
    for (const char* id : {OldYearFrame, OldDateFrame, OldTimeFrame})
        RemoveFrames(tag, id);
}

void RemoveRow(Tag& tag, const clMappingRow& row) {
    RemoveUserTexts(tag, row.Element);
    switch (KindOf(row)) {
    case RowKind::UserText:
        RemoveUserTexts(tag, DescriptionOfRow(row));
        return;
    case RowKind::Comment:
        RemoveComments(tag);
        return;
    case RowKind::Rating:
        RemoveRating(tag);
        return;
    case RowKind::Date:
        RemoveFrames(tag, DateFrame);
        RemoveOldDate(tag);
        return;
    case RowKind::Text:
    case RowKind::Genre:
    case RowKind::Mood:
        RemoveTexts(tag, FrameIdOf(row).c_str());
        return;
    }
}

// The row's text has a frame other than a TXXX of the element's own name.
bool HasFrameOfItsOwn(const clMappingRow& row, int version) {
    if (KindOf(row) == RowKind::Mood)
        return version != Id3v2OldVersion;
    return KindOf(row) != RowKind::UserText ||
           !SameName(DescriptionOfRow(row), String(row.Element));
}

void WriteTexts(Tag& tag, const clMappingRow& row, const StringList& values, int version) {
    if (HasFrameOfItsOwn(row, version))
        RemoveUserTexts(tag, row.Element);
    switch (KindOf(row)) {
    case RowKind::UserText:
        PutUserTexts(tag, DescriptionOfRow(row), values, version);
        return;
    case RowKind::Comment:
        WriteComments(tag, values, version);
        return;
    case RowKind::Mood:
        if (version == Id3v2OldVersion) {
            RemoveTexts(tag, MoodFrame);
            PutUserTexts(tag, String(row.Element).upper(), values, version);
            return;
        }
        break;
    case RowKind::Date:
        RemoveOldDate(tag);
        break;
    case RowKind::Text:
    case RowKind::Genre:
    case RowKind::Rating:
        break;
    }
    PutTexts(tag, FrameIdOf(row).c_str(), values, version);
}

// False, with nothing changed, if the frame can't hold the value.
bool WriteRow(Tag& tag, const clMappingRow& row, const NString& value, int version) {
    const StringList values = SplitValues(value);
    if (values.isEmpty()) {
        RemoveRow(tag, row);
        return true;
    }
    if (KindOf(row) == RowKind::Rating) {
        int halfSteps = 0;
        if (!ParseRating(value, halfSteps))
            return false;
        RemoveUserTexts(tag, row.Element);
        WriteRating(tag, halfSteps);
        return true;
    }
    if (KindOf(row) == RowKind::Genre && !CanBeGenres(values))
        return false;
    WriteTexts(tag, row, values, version);
    return true;
}

// The table of contents of the CD, in the form that the drive gives it.

void ReadDiscId(const Tag& tag, clTagRecord& record) {
    for (const UnknownFrame* frame : FramesAs<UnknownFrame>(tag, DiscIdFrame)) {
        const ByteVector bytes = frame->data();
        record.AddData(CdTocName, bytes.data(), static_cast<int>(bytes.size()));
        return;
    }
}

bool WriteDiscId(Tag& tag, const clTagElement& element) {
    if (element.Data.Size == 0 && !element.Value.IsEmpty())
        return false;
    RemoveFrames(tag, DiscIdFrame);
    if (element.Data.Size > 0)
        tag.addFrame(
            MakeBytesFrame(DiscIdFrame, ByteVector(reinterpret_cast<const char*>(element.Data.Data),
                                                   element.Data.Size)));
    return true;
}

bool IsDiscId(const NString& name) {
    return name.Compare(CdTocName, 0, true) == 0;
}

bool WriteElement(Tag& tag, const clTagElement& element, int version) {
    if (IsDiscId(element.Name))
        return WriteDiscId(tag, element);
    if (IsNoText(element))
        return false;
    if (const clMappingRow* row = FindMappingRow(element.Name))
        return WriteRow(tag, *row, element.Value, version);
    return WriteOtherTexts(tag, element.Name, SplitValues(element.Value), version);
}

void RemoveElement(Tag& tag, const NString& name) {
    if (IsDiscId(name))
        RemoveFrames(tag, DiscIdFrame);
    else if (const clMappingRow* row = FindMappingRow(name))
        RemoveRow(tag, *row);
    else
        WriteOtherTexts(tag, name, TagLib::StringList(), Id3v2NewVersion);
}

void RemoveAllElements(Tag& tag) {
    for (const clMappingRow& row : MappingRows())
        RemoveRow(tag, row);
    RemoveOtherTexts(tag);
    RemoveFrames(tag, DiscIdFrame);
}

} // namespace

void ReadId3v2(const Tag& tag, clTagRecord& record) {
    const FrameNames names(tag);
    for (const clMappingRow& row : MappingRows())
        if (MayHaveRow(names, row))
            AddValues(record, row.Element, ReadRow(tag, row));
    ReadOtherTexts(tag, record);
    if (names.HasFrame(DiscIdFrame))
        ReadDiscId(tag, record);
    ReadId3v2Pictures(tag, record);
}

void SetId3v2(Tag& tag, clTagRecord& changes, int version, Refusals& refused) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& element = *changes[index];
        if (!IsArtName(element.Name) && !WriteElement(tag, element, version))
            refused.Add(element.Name);
    }
    SetId3v2Pictures(tag, changes, version, refused);
}

void DeleteId3v2(Tag& tag, const NStringList& names) {
    if (names.Count == 0)
        RemoveAllElements(tag);
    for (int index = 0; index < names.Count; ++index)
        if (!IsArtName(*names[index]))
            RemoveElement(tag, *names[index]);
    DeleteId3v2Pictures(tag, names);
}

} // namespace tagmap
