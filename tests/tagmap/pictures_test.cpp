#include "suite/tagmap/pictures.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tagmap {
namespace {

struct NamedType {
    const wchar_t* Description;
    int Type;
};

constexpr NamedType Offered[] = {{L"Front Album Cover", 3},
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

std::string MimeOf(const std::string& bytes) {
    return MimeTypeOf(bytes.data(), bytes.size());
}

clArtRequest Request(const wchar_t* description) {
    clArtRequest request;
    request.Description = description;
    return request;
}

void AddArtElement(clTagRecord& record, const wchar_t* name, const char* bytes) {
    record.AddData(name, bytes, static_cast<int>(strlen(bytes)));
}

// Native pictures in these tests are texts: the new one is its description.
std::vector<std::wstring> Applied(std::vector<std::wstring> pictures, clTagRecord& changes) {
    ApplyArtRequests(pictures, ArtRequestsOf(changes),
                     [](const std::wstring* old, const clArtRequest& request) {
                         return std::wstring(old ? L"instead of " + *old + L": " : L"new: ") +
                                request.Description.c_str();
                     });
    return pictures;
}

TEST(Pictures, EachOfferedDescriptionIsAPictureTypeAndNoNativeText) {
    for (const NamedType& row : Offered) {
        EXPECT_EQ(PictureTypeOf(row.Description), row.Type) << row.Description;
        EXPECT_TRUE(NativeDescriptionOf(row.Description).IsEmpty()) << row.Description;
        EXPECT_EQ(DescriptionOf(row.Type, NString()), row.Description);
    }
}

TEST(Pictures, AnOfferedDescriptionIsKnownWhateverItsCase) {
    EXPECT_EQ(PictureTypeOf(L"lead ARTIST"), 7);
    EXPECT_TRUE(NativeDescriptionOf(L"lead ARTIST").IsEmpty());
}

TEST(Pictures, NoDescriptionIsAFrontCover) {
    EXPECT_EQ(PictureTypeOf(NString()), 3);
    EXPECT_TRUE(NativeDescriptionOf(NString()).IsEmpty());
}

TEST(Pictures, AnyOtherTextIsTheNativeDescriptionOfTypeOther) {
    EXPECT_EQ(PictureTypeOf(L"My cat"), 0);
    EXPECT_EQ(NativeDescriptionOf(L"My cat"), L"My cat");
    EXPECT_EQ(PictureTypeOf(L"Front Album Cover "), 0);
}

TEST(Pictures, ANativeDescriptionIsShownBeforeTheTextOfTheType) {
    EXPECT_EQ(DescriptionOf(3, L"Sleeve"), L"Sleeve");
    EXPECT_EQ(DescriptionOf(0, L"Sleeve"), L"Sleeve");
}

TEST(Pictures, ATypeThatIsNotOfferedShowsNoDescription) {
    for (int type : {-1, 0, 1, 2, 8, 13, 14, 16, 17, 18, 21, 255})
        EXPECT_TRUE(DescriptionOf(type, NString()).IsEmpty()) << type;
}

TEST(Pictures, AReplacedPictureOfUnchangedDescriptionKeepsItsTypeAndText) {
    constexpr int BrightFish = 17;
    EXPECT_EQ(LabelFor(Request(L""), BrightFish, NString()).Type, BrightFish);
    const clArtLabel kept = LabelFor(Request(L"Tour poster"), 4, L"Tour poster");
    EXPECT_EQ(kept.Type, 4);
    EXPECT_EQ(kept.Description, L"Tour poster");
}

TEST(Pictures, AReplacedPictureOfAnotherDescriptionTakesThatOne) {
    const clArtLabel label = LabelFor(Request(L"Media"), 17, L"Fish");
    EXPECT_EQ(label.Type, 6);
    EXPECT_TRUE(label.Description.IsEmpty());
    EXPECT_EQ(LabelFor(Request(L""), 4, NString()).Type, 3);
}

TEST(Pictures, TheMimeTypeIsFoundFromTheBytes) {
    using namespace std::string_literals;
    EXPECT_EQ(MimeOf("\x89PNG\r\n\x1a\nrest"), "image/png");
    EXPECT_EQ(MimeOf("\xff\xd8\xff\xe0rest"), "image/jpeg");
    EXPECT_EQ(MimeOf("GIF87arest"), "image/gif");
    EXPECT_EQ(MimeOf("GIF89arest"), "image/gif");
    EXPECT_EQ(MimeOf("BMrest"), "image/bmp");
    EXPECT_EQ(MimeOf("RIFF\1\2\3\4WEBPVP8 "), "image/webp");
    EXPECT_EQ(MimeOf("II*\0rest"s), "image/tiff");
    EXPECT_EQ(MimeOf("MM\0*rest"s), "image/tiff");
}

TEST(Pictures, BytesOfNoKnownKindHaveTheMimeTypeOfAnyPicture) {
    EXPECT_EQ(MimeOf(""), "image/");
    EXPECT_EQ(MimeOf("text"), "image/");
    EXPECT_EQ(MimeOf("\x89PN"), "image/");
    EXPECT_EQ(MimeOf("RIFF\1\2\3\4WAVEfmt "), "image/");
    EXPECT_EQ(MimeOf("RIFF\1\2\3\4WEB"), "image/");
}

TEST(Pictures, ANameIsTakenApartIntoNumberAndDescription) {
    int number = 0;
    NString description;
    ASSERT_TRUE(ParseArtName(L"_albumart_12_Front_Album Cover", number, description));
    EXPECT_EQ(number, 12);
    EXPECT_EQ(description, L"Front_Album Cover");
    ASSERT_TRUE(ParseArtName(L"_ALBUMART_3", number, description));
    EXPECT_EQ(number, 3);
    EXPECT_TRUE(description.IsEmpty());
    ASSERT_TRUE(ParseArtName(L"_albumart_4_", number, description));
    EXPECT_TRUE(description.IsEmpty());
}

TEST(Pictures, ANameWithoutANumberFromOneOnIsNone) {
    for (const wchar_t* name :
         {L"_albumart", L"_albumart_", L"_albumart_x", L"_albumart_0", L"_albumart_0_a",
          L"_albumart_1x", L"_albumart_-1", L"_albumart_1234567890", L"_albumart_99999999999999",
          L"albumart_1", L"_cdtoc", L""}) {
        int number = 77;
        NString description(L"untouched");
        EXPECT_FALSE(ParseArtName(name, number, description)) << name;
        EXPECT_EQ(number, 77);
        EXPECT_EQ(description, L"untouched");
    }
}

TEST(Pictures, ANameIsMadeWithoutTheSecondUnderscoreWhenThereIsNoDescription) {
    EXPECT_EQ(FormatArtName(1, NString()), L"_albumart_1");
    EXPECT_EQ(FormatArtName(10, L"Band"), L"_albumart_10_Band");
}

TEST(Pictures, APictureBecomesAnElementOfItsBytes) {
    clTagRecord record;
    AddArt(record, 2, L"Media", "\0\1\2", 3);
    ASSERT_EQ(record.Count(), 1);
    EXPECT_EQ(record[0]->Name, L"_albumart_2_Media");
    EXPECT_TRUE(record[0]->Value.IsEmpty());
    ASSERT_EQ(record[0]->Data.Size, 3u);
    EXPECT_EQ(memcmp(record[0]->Data.Data, "\0\1\2", 3), 0);
}

TEST(Pictures, RequestsStandByRisingNumberAndTheLastOfOneNumberCounts) {
    clTagRecord changes;
    AddArtElement(changes, L"_albumart_2_b", "bb");
    changes.Add(L"title", L"no picture");
    AddArtElement(changes, L"_albumart_1_first", "a");
    changes.Add(L"_albumart_3", L"");
    AddArtElement(changes, L"_albumart_1_second", "aaa");
    const std::vector<clArtRequest> requests = ArtRequestsOf(changes);
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].Number, 1);
    EXPECT_EQ(requests[0].Description, L"second");
    EXPECT_EQ(requests[0].Data->Size, 3u);
    EXPECT_EQ(requests[1].Number, 2);
    EXPECT_EQ(requests[2].Number, 3);
    EXPECT_EQ(requests[2].Data, nullptr);
}

TEST(Pictures, MalformedNamesAndTextsInPlaceOfBytesAreUnusable) {
    clTagRecord changes;
    AddArtElement(changes, L"_albumart_zero", "a");
    changes.Add(L"_albumart_1", L"text");
    changes.Add(L"_albumart_2", L"");
    changes.Add(L"artist", L"text");
    EXPECT_TRUE(IsUnusableArt(*changes[0]));
    EXPECT_TRUE(IsUnusableArt(*changes[1]));
    EXPECT_FALSE(IsUnusableArt(*changes[2]));
    EXPECT_FALSE(IsUnusableArt(*changes[3]));
    EXPECT_EQ(ArtRequestsOf(changes).size(), 1u);
}

TEST(Pictures, ARequestReplacesAppendsAndRemovesByTheNumbersBeforeIt) {
    clTagRecord changes;
    changes.Add(L"_albumart_1", L"");
    AddArtElement(changes, L"_albumart_2_x", "x");
    AddArtElement(changes, L"_albumart_9_y", "y");
    AddArtElement(changes, L"_albumart_5_z", "z");
    const std::vector<std::wstring> wanted = {L"instead of b: x", L"c", L"new: z", L"new: y"};
    EXPECT_EQ(Applied({L"a", L"b", L"c"}, changes), wanted);
}

TEST(Pictures, RemovingANumberThatIsNotThereDoesNothing) {
    clTagRecord changes;
    changes.Add(L"_albumart_4", L"");
    EXPECT_EQ(Applied({L"a"}, changes), std::vector<std::wstring>{L"a"});
}

TEST(Pictures, NumbersToDeleteFallAndStandOnce) {
    NStringList names;
    for (const wchar_t* name : {L"_albumart_2_Band", L"title", L"_albumart_10", L"_albumart_2",
                                L"_albumart_1", L"_albumart_none"})
        names.Add(name);
    EXPECT_EQ(ArtNumbersOf(names), (std::vector<int>{10, 2, 1}));
    std::vector<int> pictures = {100, 200, 300};
    RemoveArtNumbers(pictures, ArtNumbersOf(names));
    EXPECT_EQ(pictures, std::vector<int>{300});
}

} // namespace
} // namespace tagmap
