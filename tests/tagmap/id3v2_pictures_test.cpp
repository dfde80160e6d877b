#include "suite/tagmap/id3v2_tags.h"
#include "tests/tagmap/id3v2_bytes.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

const std::string Png = "\x89PNG\r\n\x1a\n picture";
const std::string Jpeg = std::string("\xff\xd8\xff picture \0", 13);

std::string Apic(const std::string& mimeType, int type, const std::string& description,
                 const std::string& data) {
    return Latin1Text(mimeType) + std::string(1, '\0') + static_cast<char>(type) + description +
           std::string(1, '\0') + data;
}

std::string SetPictures(TagInFile& file, clTagRecord& changes, int version = 4) {
    Refusals refused;
    SetId3v2(file.Tag(), changes, version, refused);
    EXPECT_EQ(RefusedNames(refused), L"");
    return file.Saved(version);
}

std::string SetPicture(TagInFile& file, const wchar_t* name, const std::string& data,
                       int version = 4) {
    clTagRecord changes;
    AddBytes(changes, name, data);
    return SetPictures(file, changes, version);
}

std::wstring Names(TagInFile& file) {
    clTagRecord record;
    ReadId3v2(file.Tag(), record);
    return NamesOf(record);
}

struct Described {
    const wchar_t* Description;
    int Type;
};
constexpr Described Twelve[] = {{L"Front Album Cover", 3},
                                {L"Back Album Cover", 4},
                                {L"Leaflet Page", 5},
                                {L"Media", 6},
                                {L"Lead Artist", 7},
                                {L"Conductor", 9},
                                {L"Band", 10},
                                {L"Composer", 11},
                                {L"Writer", 12},
                                {L"Performance", 15},
                                {L"Artist Logo", 19},
                                {L"Publisher Logo", 20}};

TEST(Id3v2Pictures, TheTwelveDescriptionsAreTypesWithoutAText) {
    for (const Described& described : Twelve) {
        const std::wstring name = std::wstring(L"_albumart_1_") + described.Description;
        for (const int version : {3, 4}) {
            TagInFile file;
            const std::string saved = SetPicture(file, name.c_str(), Png, version);
            EXPECT_EQ(FramesIn(saved, "APIC"), Apic("image/png", described.Type, "", Png)) << name;
            TagInFile again(saved);
            EXPECT_EQ(Names(again), name);
        }
    }
}

TEST(Id3v2Pictures, APictureWithoutADescriptionIsAFrontCover) {
    TagInFile file;
    EXPECT_EQ(FramesIn(SetPicture(file, L"_albumart_1", Jpeg), "APIC"),
              Apic("image/jpeg", 3, "", Jpeg));
    EXPECT_EQ(Names(file), L"_albumart_1_Front Album Cover");
}

TEST(Id3v2Pictures, AnotherDescriptionIsATextOfNoType) {
    TagInFile file;
    EXPECT_EQ(FramesIn(SetPicture(file, L"_albumart_1_My cat", Png), "APIC"),
              Apic("image/png", 0, "My cat", Png));
    EXPECT_EQ(Names(file), L"_albumart_1_My cat");
}

TEST(Id3v2Pictures, ADescriptionBeyondLatin1HasTheEncodingOfItsVersion) {
    TagInFile file;
    const std::string saved = SetPicture(file, L"_albumart_1_\u7532", Png, 3);
    EXPECT_EQ(FramesIn(saved, "APIC"), std::string("\1image/png") + std::string(2, '\0') +
                                           Utf16(L"\u7532") + std::string(2, '\0') + Png);
    TagInFile again(saved);
    EXPECT_EQ(Names(again), L"_albumart_1_\u7532");
}

TEST(Id3v2Pictures, TheBytesComeBackAsTheyAre) {
    std::string bytes = Jpeg;
    for (int byte = 0; byte < 1000; ++byte)
        bytes += static_cast<char>(byte);
    TagInFile file;
    TagInFile again(SetPicture(file, L"_albumart_1", bytes, 3));
    clTagRecord record;
    ReadId3v2(again.Tag(), record);
    EXPECT_EQ(DataOf(record, L"_albumart_1_Front Album Cover"), bytes);
}

TEST(Id3v2Pictures, PicturesAreNumberedInTheirOrder) {
    TagInFile file(3, {{"APIC", Apic("image/png", 4, "", Png)},
                       {"TIT2", Latin1Text("t")},
                       {"APIC", Apic("image/png", 0, "Text", Png)},
                       {"APIC", Apic("image/png", 17, "", Png)}});
    EXPECT_EQ(Names(file), L"title|_albumart_1_Back Album Cover|_albumart_2_Text|_albumart_3");
}

TEST(Id3v2Pictures, AReplacedPictureOfTheSameDescriptionKeepsItsType) {
    TagInFile file(
        4, {{"APIC", Apic("image/png", 17, "", Png)}, {"APIC", Apic("image/png", 4, "Text", Png)}});
    clTagRecord changes;
    AddBytes(changes, L"_albumart_1", Jpeg);
    AddBytes(changes, L"_albumart_2_Text", Jpeg);
    EXPECT_EQ(FramesIn(SetPictures(file, changes), "APIC"),
              Apic("image/jpeg", 17, "", Jpeg) + "|" + Apic("image/jpeg", 4, "Text", Jpeg));
}

TEST(Id3v2Pictures, OnePictureIsReplacedAndTheOthersStay) {
    TagInFile file(
        4, {{"APIC", Apic("image/png", 3, "", Png)}, {"APIC", Apic("x/own", 17, "fish", Png)}});
    EXPECT_EQ(FramesIn(SetPicture(file, L"_albumart_1_Band", Jpeg), "APIC"),
              Apic("image/jpeg", 10, "", Jpeg) + "|" + Apic("x/own", 17, "fish", Png));
}

TEST(Id3v2Pictures, APictureBeyondTheLastIsAdded) {
    TagInFile file(4, {{"APIC", Apic("image/png", 3, "", Png)}});
    EXPECT_EQ(FramesIn(SetPicture(file, L"_albumart_9_Media", Jpeg), "APIC"),
              Apic("image/png", 3, "", Png) + "|" + Apic("image/jpeg", 6, "", Jpeg));
}

TEST(Id3v2Pictures, AnEmptyElementRemovesThePictureOfItsNumber) {
    TagInFile file(
        4, {{"APIC", Apic("image/png", 3, "", Png)}, {"APIC", Apic("image/jpeg", 4, "", Jpeg)}});
    clTagRecord changes;
    changes.Add(L"_albumart_1", L"");
    EXPECT_EQ(FramesIn(SetPictures(file, changes), "APIC"), Apic("image/jpeg", 4, "", Jpeg));
}

TEST(Id3v2Pictures, DeletedNumbersCountThePicturesAsTheyStood) {
    TagInFile file(4, {{"APIC", Apic("image/png", 3, "", Png)},
                       {"APIC", Apic("image/png", 4, "", Png)},
                       {"APIC", Apic("image/png", 5, "", Png)}});
    NStringList names;
    names.Add(L"_albumart_1");
    names.Add(L"_albumart_3_Leaflet Page");
    DeleteId3v2(file.Tag(), names);
    EXPECT_EQ(FramesIn(file.Saved(4), "APIC"), Apic("image/png", 4, "", Png));
}

TEST(Id3v2Pictures, APictureOfTheOldestVersionIsBroughtToTheNext) {
    TagInFile file(2, {{"PIC", Latin1Text("PNG") + std::string("\4text\0", 6) + Png}});
    EXPECT_EQ(Names(file), L"_albumart_1_text");
    clTagRecord changes;
    changes.Add(L"title", L"t");
    EXPECT_EQ(FramesIn(SetPictures(file, changes, 3), "APIC"), Apic("image/png", 4, "text", Png));
}

TEST(Id3v2Pictures, ALinkToAPictureIsNoPictureAndStays) {
    const std::string link = Apic("-->", 3, "", "http://cover");
    TagInFile file(4, {{"APIC", link}});
    EXPECT_EQ(Names(file), L"");
    EXPECT_EQ(FramesIn(SetPicture(file, L"_albumart_1", Png), "APIC"),
              link + "|" + Apic("image/png", 3, "", Png));
    DeleteId3v2(file.Tag(), NStringList());
    EXPECT_EQ(FramesIn(file.Saved(4), "APIC"), link);
}

TEST(Id3v2Pictures, MalformedRequestsAreRefused) {
    TagInFile file(4, {{"APIC", Apic("image/png", 3, "", Png)}});
    clTagRecord changes;
    changes.Add(L"_albumart_1", L"text");
    AddBytes(changes, L"_albumart_zero", Jpeg);
    Refusals refused;
    SetId3v2(file.Tag(), changes, 4, refused);
    EXPECT_EQ(RefusedNames(refused), L"_albumart_1|_albumart_zero");
    EXPECT_EQ(FramesIn(file.Saved(4), "APIC"), Apic("image/png", 3, "", Png));
}

} // namespace
} // namespace tagmap
