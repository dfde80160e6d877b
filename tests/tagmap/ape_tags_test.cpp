#include "suite/tagmap/ape_tags.h"
#include "suite/tagmap/mapping_table.h"
#include "suite/tagmap/rating.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

using TagLib::ByteVector;
using TagLib::String;
using TagLib::StringList;
using TagLib::APE::Item;
using TagLib::APE::Tag;

const std::string Png = "\x89PNG\r\n\x1a\n picture";
const std::string Jpeg = std::string("\xff\xd8\xff picture \0", 13);

enum ItemFlags : char { TextItem = 0, ReadOnlyTextItem = 1, BinaryItem = 2, LocatorItem = 4 };

std::string LittleEndian(size_t number) {
    std::string bytes;
    for (int place = 0; place < 4; ++place)
        bytes += static_cast<char>((number >> (8 * place)) & 0xFF);
    return bytes;
}

// An item as it stands in the file.
std::string ItemBytes(const std::string& key, const std::string& value, char flags = TextItem) {
    return LittleEndian(value.size()) + flags + std::string(3, '\0') + key + std::string(1, '\0') +
           value;
}

// The items between the tag's header and footer, of 32 bytes each.
std::string ItemsOf(const Tag& tag) {
    constexpr unsigned FooterSize = 32;
    const ByteVector bytes = tag.render();
    return std::string(bytes.data(), bytes.size())
        .substr(FooterSize, bytes.size() - 2 * FooterSize);
}

void AddItem(Tag& tag, const std::string& key, const std::string& value, char flags = TextItem) {
    const std::string bytes = ItemBytes(key, value, flags);
    Item item;
    item.parse(ByteVector(bytes.data(), static_cast<unsigned>(bytes.size())));
    tag.setItem(key, item);
}

std::wstring SetAll(Tag& tag, clTagRecord& changes) {
    Refusals refused;
    SetApe(tag, changes, refused);
    return RefusedNames(refused);
}

std::wstring Set(Tag& tag, const wchar_t* name, const wchar_t* value) {
    clTagRecord changes;
    changes.Add(name, value);
    return SetAll(tag, changes);
}

std::wstring SetBytes(Tag& tag, const wchar_t* name, const std::string& bytes) {
    clTagRecord changes;
    AddBytes(changes, name, bytes);
    return SetAll(tag, changes);
}

std::wstring Read(const Tag& tag, const wchar_t* name) {
    clTagRecord record;
    ReadApe(tag, record);
    return ValueOf(record, name);
}

std::wstring Names(const Tag& tag) {
    clTagRecord record;
    ReadApe(tag, record);
    return NamesOf(record);
}

std::string Data(const Tag& tag, const wchar_t* name) {
    clTagRecord record;
    ReadApe(tag, record);
    return DataOf(record, name);
}

void Delete(Tag& tag, const wchar_t* name) {
    NStringList names;
    names.Add(name);
    DeleteApe(tag, names);
}

struct Row {
    const wchar_t* Element;
    const wchar_t* Value;
    const char* Key;
    std::string Text;
};

std::vector<Row> AllRows() {
    return {
        {L"artist", L"A\rB", "Artist", std::string("A\0B", 3)},
        {L"title", L"\u00c4", "Title", "\xc3\x84"},
        {L"album", L"L", "Album", "L"},
        {L"track", L"3/12", "Track", "3/12"},
        {L"disc", L"1/2", "Disc", "1/2"},
        {L"genre", L"Rock\rPop", "Genre", std::string("Rock\0Pop", 8)},
        {L"year", L"2004", "Year", "2004"},
        {L"comment", L"C", "Comment", "C"},
        {L"album artist", L"AA", "Album Artist", "AA"},
        {L"band", L"B", "Band", "B"},
        {L"composer", L"Co", "Composer", "Co"},
        {L"conductor", L"Cn", "Conductor", "Cn"},
        {L"label", L"Lb", "Label", "Lb"},
        {L"isrc", L"DEA", "ISRC", "DEA"},
        {L"upc", L"0123", "Barcode", "0123"},
        {L"mood", L"M", "Mood", "M"},
        {L"style", L"S", "Style", "S"},
        {L"copyright", L"Cp", "Copyright", "Cp"},
        {L"tempo", L"120", "BPM", "120"},
        {L"rating", L"7", "RATING", "70"},
        {L"encoder", L"E", "Encoder", "E"},
    };
}

TEST(ApeTags, EveryElementOfTheTableStandsInItsOwnItem) {
    ASSERT_EQ(AllRows().size(), MappingRows().size());
    for (const Row& row : AllRows()) {
        Tag tag;
        EXPECT_EQ(Set(tag, row.Element, row.Value), L"") << row.Element;
        EXPECT_EQ(ItemsOf(tag), ItemBytes(row.Key, row.Text)) << row.Element;
        EXPECT_EQ(Names(tag), row.Element);
        EXPECT_EQ(Read(tag, row.Element), row.Value);
        EXPECT_EQ(Set(tag, row.Element, L""), L"");
        EXPECT_TRUE(tag.isEmpty()) << row.Element;
        AddItem(tag, row.Key, row.Text);
        Delete(tag, row.Element);
        EXPECT_TRUE(tag.isEmpty()) << row.Element;
    }
}

TEST(ApeTags, AKeyThatIsThereKeepsItsSpelling) {
    Tag tag;
    AddItem(tag, "ARTIST", "old");
    AddItem(tag, "my FIELD", "old");
    Set(tag, L"artist", L"new");
    Set(tag, L"My field", L"new");
    EXPECT_EQ(ItemsOf(tag), ItemBytes("ARTIST", "new") + ItemBytes("my FIELD", "new"));
    EXPECT_EQ(Names(tag), L"artist|my FIELD");
}

TEST(ApeTags, AnItemOfTheElementsOwnNameIsReadAndReplaced) {
    Tag tag;
    AddItem(tag, "UPC", "456");
    AddItem(tag, "Tempo", "90");
    EXPECT_EQ(Names(tag), L"upc|tempo");
    Set(tag, L"upc", L"9");
    EXPECT_EQ(ItemsOf(tag), ItemBytes("Barcode", "9") + ItemBytes("Tempo", "90"));
}

TEST(ApeTags, KeysOfOtherNamesReadAsTheNamesOfTheOtherFormats) {
    struct Renamed {
        const wchar_t* Element;
        const char* Key;
    };
    const Renamed renamed[] = {{L"remixer", "MixArtist"},
                               {L"releasestatus", "MUSICBRAINZ_ALBUMSTATUS"},
                               {L"releasetype", "MUSICBRAINZ_ALBUMTYPE"}};
    for (const Renamed& names : renamed) {
        Tag tag;
        EXPECT_EQ(Set(tag, names.Element, L"v"), L"");
        EXPECT_EQ(ItemsOf(tag), ItemBytes(names.Key, "v"));
        EXPECT_EQ(Names(tag), names.Element);
        Delete(tag, names.Element);
        EXPECT_TRUE(tag.isEmpty());
    }
    Tag tag;
    EXPECT_EQ(Set(tag, L"mixartist", L"v"), L"mixartist");
}

TEST(ApeTags, NamesThatCantBeKeysAreRefused) {
    const std::wstring tooLong(256, L'x');
    for (const wchar_t* name :
         {L"x", L"na\u00efve", L"tab\there", L"ID3", L"tag", L"OggS", L"MP+", L"_riff_ISBJ",
          L"Cover Art (Front)", L"cdtoc", L"RATING:a@b", tooLong.c_str()}) {
        Tag tag;
        EXPECT_EQ(Set(tag, name, L"v"), name);
        EXPECT_TRUE(tag.isEmpty()) << name;
    }
    const std::wstring longest(255, L'x');
    Tag tag;
    EXPECT_EQ(Set(tag, longest.c_str(), L"v"), L"");
    EXPECT_EQ(Set(tag, L"OK", L"v"), L"");
    EXPECT_EQ(Names(tag), L"OK|" + longest);
}

TEST(ApeTags, BytesWhereATextBelongsAreRefused) {
    Tag tag;
    AddItem(tag, "Title", "t");
    EXPECT_EQ(SetBytes(tag, L"title", "bytes"), L"title");
    EXPECT_EQ(ItemsOf(tag), ItemBytes("Title", "t"));
}

TEST(ApeTags, ItemsThatAreNoTextAreNeitherReadNorChanged) {
    const std::string items = ItemBytes("Locked", "text", ReadOnlyTextItem) +
                              ItemBytes("Object", std::string("\0\1\2", 3), BinaryItem) +
                              ItemBytes("Related", "http://x", LocatorItem);
    Tag tag;
    AddItem(tag, "Locked", "text", ReadOnlyTextItem);
    AddItem(tag, "Object", std::string("\0\1\2", 3), BinaryItem);
    AddItem(tag, "Related", "http://x", LocatorItem);
    EXPECT_EQ(Names(tag), L"Locked");
    Set(tag, L"title", L"t");
    EXPECT_EQ(ItemsOf(tag), items + ItemBytes("Title", "t"));
    EXPECT_EQ(Set(tag, L"object", L"t"), L"object");
    EXPECT_EQ(Set(tag, L"related", L"t"), L"related");
    EXPECT_EQ(Set(tag, L"related", L""), L"");
    Delete(tag, L"object");
    EXPECT_EQ(ItemsOf(tag), items + ItemBytes("Title", "t"));
}

TEST(ApeTags, DeletingEverythingLeavesWhatIsNoElement) {
    Tag tag;
    AddItem(tag, "Title", "t");
    AddItem(tag, "my field", "t");
    AddItem(tag, "RATING:a@b", "0.5");
    AddItem(tag, "CDTOC", "toc");
    AddItem(tag, "Cover Art (Front)", std::string("x\0", 2) + Png, BinaryItem);
    AddItem(tag, "Object", "bytes", BinaryItem);
    AddItem(tag, "Related", "http://x", LocatorItem);
    DeleteApe(tag, NStringList());
    EXPECT_EQ(ItemsOf(tag), ItemBytes("Object", "bytes", BinaryItem) +
                                ItemBytes("Related", "http://x", LocatorItem));
    EXPECT_EQ(Names(tag), L"");
}

// Ratings.

TEST(ApeTags, ARatingIsAPercentage) {
    for (int halfSteps = 0; halfSteps <= RatingMost; ++halfSteps) {
        Tag tag;
        const std::wstring text = std::to_wstring(halfSteps);
        EXPECT_EQ(Set(tag, L"rating", text.c_str()), L"");
        EXPECT_EQ(ItemsOf(tag), ItemBytes("RATING", std::to_string(10 * halfSteps)));
        EXPECT_EQ(Read(tag, L"rating"), text);
    }
    Tag tag;
    EXPECT_EQ(Set(tag, L"rating", L"11"), L"rating");
    EXPECT_TRUE(tag.isEmpty());
}

TEST(ApeTags, ARatingByEMailIsReadAndFollows) {
    Tag tag;
    AddItem(tag, "RATING:a@b", "0.7");
    EXPECT_EQ(Names(tag), L"rating");
    EXPECT_EQ(Read(tag, L"rating"), L"7");
    Set(tag, L"rating", L"4");
    EXPECT_EQ(ItemsOf(tag), ItemBytes("RATING", "40") + ItemBytes("RATING:a@b", "0.4"));
    Set(tag, L"rating", L"");
    EXPECT_TRUE(tag.isEmpty());
}

TEST(ApeTags, TheTableOfContentsIsATextOrBytes) {
    Tag tag;
    EXPECT_EQ(Set(tag, L"_cdtoc", L"4+96"), L"");
    EXPECT_EQ(ItemsOf(tag), ItemBytes("CDTOC", "4+96"));
    EXPECT_EQ(Read(tag, L"_cdtoc"), L"4+96");
    EXPECT_EQ(SetBytes(tag, L"_cdtoc", std::string("\0\1", 2)), L"");
    EXPECT_EQ(ItemsOf(tag), ItemBytes("CDTOC", std::string("\0\1", 2), BinaryItem));
    EXPECT_EQ(Data(tag, L"_cdtoc"), std::string("\0\1", 2));
    EXPECT_EQ(Set(tag, L"_cdtoc", L""), L"");
    EXPECT_TRUE(tag.isEmpty());
}

// Pictures.

struct Described {
    const wchar_t* Description;
    const char* Key;
};
constexpr Described Twelve[] = {
    {L"Front Album Cover", "Cover Art (Front)"},
    {L"Back Album Cover", "Cover Art (Back)"},
    {L"Leaflet Page", "Cover Art (Leaflet)"},
    {L"Media", "Cover Art (Media)"},
    {L"Lead Artist", "Cover Art (Lead Artist)"},
    {L"Conductor", "Cover Art (Conductor)"},
    {L"Band", "Cover Art (Band)"},
    {L"Composer", "Cover Art (Composer)"},
    {L"Writer", "Cover Art (Lyricist)"},
    {L"Performance", "Cover Art (During Performance)"},
    {L"Artist Logo", "Cover Art (Band Logo)"},
    {L"Publisher Logo", "Cover Art (Publisher Logo)"},
};

std::string Picture(const std::string& key, const std::string& text, const std::string& data) {
    return ItemBytes(key, text + std::string(1, '\0') + data, BinaryItem);
}

void AddPicture(Tag& tag, const std::string& key, const std::string& text,
                const std::string& data) {
    AddItem(tag, key, text + std::string(1, '\0') + data, BinaryItem);
}

TEST(ApePictures, TheTwelveDescriptionsAreTypesOfItems) {
    Tag all;
    for (const Described& described : Twelve) {
        const std::wstring name = std::wstring(L"_albumart_1_") + described.Description;
        const std::string key = described.Key;
        Tag tag;
        EXPECT_EQ(SetBytes(tag, name.c_str(), Png), L"");
        EXPECT_EQ(ItemsOf(tag), Picture(key, key + ".png", Png));
        EXPECT_EQ(Names(tag), name);
        EXPECT_EQ(Data(tag, name.c_str()), Png);
        AddPicture(all, key, "", Jpeg);
    }
    int number = 1;
    std::wstring expected;
    for (const Described& described : Twelve) {
        expected += expected.empty() ? L"" : L"|";
        expected += L"_albumart_" + std::to_wstring(number) + L"_" + described.Description;
        ++number;
    }
    EXPECT_EQ(Names(all), expected);
}

TEST(ApePictures, APictureWithoutADescriptionIsAFrontCover) {
    Tag tag;
    EXPECT_EQ(SetBytes(tag, L"_albumart_1", Jpeg), L"");
    EXPECT_EQ(ItemsOf(tag), Picture("Cover Art (Front)", "Cover Art (Front).jpg", Jpeg));
}

TEST(ApePictures, BytesOfAnUnknownKindHaveAFileNameWithoutAnExtension) {
    Tag tag;
    SetBytes(tag, L"_albumart_1", "?");
    EXPECT_EQ(ItemsOf(tag), Picture("Cover Art (Front)", "Cover Art (Front)", "?"));
}

TEST(ApePictures, AnotherDescriptionStandsInFrontOfTheBytes) {
    Tag tag;
    EXPECT_EQ(SetBytes(tag, L"_albumart_1_My \u00c4", Png), L"");
    EXPECT_EQ(ItemsOf(tag), Picture("Cover Art (Other)", "My \xc3\x84", Png));
    EXPECT_EQ(Names(tag), L"_albumart_1_My \u00c4");
}

TEST(ApePictures, APictureThatKeepsItsDescriptionKeepsWhatStandsInFrontOfIt) {
    Tag tag;
    AddPicture(tag, "COVER ART (FRONT)", "folder.bmp", Png);
    AddPicture(tag, "Cover Art (Fish)", "fish.bmp", Png);
    EXPECT_EQ(Names(tag), L"_albumart_1_Front Album Cover|_albumart_2");
    EXPECT_EQ(SetBytes(tag, L"_albumart_1_Front Album Cover", Jpeg), L"");
    EXPECT_EQ(SetBytes(tag, L"_albumart_2", Jpeg), L"");
    EXPECT_EQ(ItemsOf(tag), Picture("Cover Art (Fish)", "fish.bmp", Jpeg) +
                                Picture("COVER ART (FRONT)", "folder.bmp", Jpeg));
}

TEST(ApePictures, OtherTaggersNamesOfTypesAreRead) {
    Tag tag;
    AddPicture(tag, "Cover Art (Lead)", "", Png);
    AddPicture(tag, "Cover Art (Something)", "text", Png);
    EXPECT_EQ(Names(tag), L"_albumart_1_Lead Artist|_albumart_2_text");
}

TEST(ApePictures, ASecondPictureOfATypeIsRefused) {
    Tag tag;
    AddPicture(tag, "Cover Art (Front)", "a", Png);
    AddPicture(tag, "Cover Art (Back)", "b", Png);
    EXPECT_EQ(SetBytes(tag, L"_albumart_3", Jpeg), L"_albumart_3");
    EXPECT_EQ(SetBytes(tag, L"_albumart_2_Front Album Cover", Jpeg),
              L"_albumart_2_Front Album Cover");
    EXPECT_EQ(ItemsOf(tag),
              Picture("Cover Art (Back)", "b", Png) + Picture("Cover Art (Front)", "a", Png));
    clTagRecord changes;
    AddBytes(changes, L"_albumart_3_My cat", Jpeg);
    AddBytes(changes, L"_albumart_4_My dog", Jpeg);
    AddBytes(changes, L"_albumart_5_Media", Jpeg);
    EXPECT_EQ(SetAll(tag, changes), L"_albumart_4_My dog");
    EXPECT_EQ(Names(tag), L"_albumart_1_My cat|_albumart_2_Front Album Cover|"
                          L"_albumart_3_Back Album Cover|_albumart_4_Media");
}

TEST(ApePictures, TwoPicturesCanChangePlaces) {
    Tag tag;
    AddPicture(tag, "Cover Art (Front)", "a", Png);
    AddPicture(tag, "Cover Art (Back)", "b", Jpeg);
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1_Back Album Cover", Png);
    AddBytes(changes, L"_albumart_2_Front Album Cover", Jpeg);
    EXPECT_EQ(SetAll(tag, changes), L"");
    EXPECT_EQ(Data(tag, L"_albumart_1_Front Album Cover"), Jpeg);
    EXPECT_EQ(Data(tag, L"_albumart_2_Back Album Cover"), Png);
}

TEST(ApePictures, RemovedNumbersCountThePicturesAsTheyStood) {
    Tag tag;
    AddPicture(tag, "Cover Art (Front)", "a", Png);
    AddPicture(tag, "Cover Art (Back)", "b", Png);
    AddPicture(tag, "Cover Art (Media)", "c", Png);
    clTagRecord changes;
    changes.Add(L"_albumart_1", L"");
    changes.Add(L"_albumart_3", L"");
    EXPECT_EQ(SetAll(tag, changes), L"");
    EXPECT_EQ(ItemsOf(tag), Picture("Cover Art (Back)", "b", Png));
    Delete(tag, L"_albumart_1");
    EXPECT_TRUE(tag.isEmpty());
}

TEST(ApePictures, ItemsWithoutAPictureAreNoPicturesAndStay) {
    Tag tag;
    AddItem(tag, "Cover Art (Front)", "no zero byte", BinaryItem);
    AddItem(tag, "Cover Art (Back)", std::string("x\0", 2), BinaryItem);
    AddItem(tag, "Cover Art (Media)", "text");
    const std::string items = ItemsOf(tag);
    EXPECT_EQ(Names(tag), L"");
    DeleteApe(tag, NStringList());
    EXPECT_EQ(ItemsOf(tag), items);
}

TEST(ApePictures, MalformedRequestsAreRefused) {
    Tag tag;
    clTagRecord changes;
    changes.Add(L"_albumart_1", L"text");
    AddBytes(changes, L"_albumart_zero", Jpeg);
    EXPECT_EQ(SetAll(tag, changes), L"_albumart_1|_albumart_zero");
    EXPECT_TRUE(tag.isEmpty());
}

} // namespace
} // namespace tagmap
