#include "suite/tagmap/field_rules.h"
#include "suite/tagmap/id3v2_tags.h"

#include <id3v1genres.h>

namespace tagmap {

namespace {

using TagLib::String;
using TagLib::StringList;
using TagLib::ID3v1::Tag;

constexpr unsigned NoGenre = 255;
constexpr uint64_t TrackMost = 255;
constexpr unsigned YearLength = 4;

// Every field takes values and gives a text; none and empty are the same.

String TrackText(const Tag& tag) {
    return tag.track() ? String::number(static_cast<int>(tag.track())) : String();
}

// The number of n/N.
void PutTrack(Tag& tag, const StringList& values) {
    uint64_t number = 0;
    const String text = JoinForSingleField(values);
    const NString first = ToNString(text.substr(0, static_cast<unsigned>(text.find("/"))));
    tag.setTrack(ParseWholeNumber(first, TrackMost, number) ? static_cast<unsigned>(number) : 0);
}

String YearText(const Tag& tag) {
    return tag.year() ? String::number(static_cast<int>(tag.year())) : String();
}

void PutYear(Tag& tag, const StringList& values) {
    constexpr uint64_t YearMost = 9999;
    uint64_t year = 0;
    const NString digits = ToNString(JoinForSingleField(values).substr(0, YearLength));
    tag.setYear(ParseWholeNumber(digits, YearMost, year) ? static_cast<unsigned>(year) : 0);
}

String GenreText(const Tag& tag) {
    return tag.genre();
}

// The first that the list has.
void PutGenre(Tag& tag, const StringList& values) {
    tag.setGenreNumber(NoGenre);
    for (const String& genre : values)
        if (tag.genreNumber() == NoGenre)
            tag.setGenre(genre);
}

// The library leaves the whole field empty for a text with one other unit.
String InLatin1(const String& text) {
    constexpr wchar_t Latin1Most = 0xFF;
    std::wstring units = text.toWString();
    for (wchar_t& unit : units)
        if (unit > Latin1Most)
            unit = L'?';
    return String(units);
}

template <void (Tag::*Put)(const String&)>
void PutLatin1(Tag& tag, const StringList& values) {
    (tag.*Put)(InLatin1(JoinForSingleField(values)));
}

struct Field {
    const wchar_t* Element;
    String (*Get)(const Tag&);
    void (*Put)(Tag&, const StringList&);
};
constexpr Field Fields[] = {
    {L"artist", [](const Tag& tag) { return tag.artist(); }, PutLatin1<&Tag::setArtist>},
    {L"title", [](const Tag& tag) { return tag.title(); }, PutLatin1<&Tag::setTitle>},
    {L"album", [](const Tag& tag) { return tag.album(); }, PutLatin1<&Tag::setAlbum>},
    {L"track", TrackText, PutTrack},
    {L"genre", GenreText, PutGenre},
    {L"year", YearText, PutYear},
    {L"comment", [](const Tag& tag) { return tag.comment(); }, PutLatin1<&Tag::setComment>},
};

const Field* FieldOf(const NString& element) {
    for (const Field& field : Fields)
        if (element.Compare(field.Element, 0, true) == 0)
            return &field;
    return nullptr;
}

} // namespace

void ReadId3v1(const Tag& tag, clTagRecord& record) {
    for (const Field& field : Fields)
        AddValues(record, field.Element, StringList(field.Get(tag).stripWhiteSpace()));
}

void ReadSureId3v1(const Tag& tag, clTagRecord& record) {
    for (const Field& field : Fields) {
        const String text = field.Get(tag).stripWhiteSpace();
        if (text.isAscii())
            AddValues(record, field.Element, StringList(text));
    }
}

void SetId3v1(Tag& tag, clTagRecord& changes) {
    for (int index = 0; index < changes.Count(); ++index) {
        const clTagElement& element = *changes[index];
        if (const Field* field = FieldOf(element.Name))
            field->Put(tag, SplitValues(element.Value));
    }
}

void DeleteId3v1(Tag& tag, const NStringList& names) {
    for (const Field& field : Fields)
        if (names.Count == 0 || names.Contains(field.Element, true))
            field.Put(tag, StringList());
}

} // namespace tagmap
