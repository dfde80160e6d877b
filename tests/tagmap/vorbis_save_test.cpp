#include "suite/tagmap/vorbis_save.h"
#include "tests/tagmap/vorbis_bytes.h"

#include <gtest/gtest.h>

#include <ostream>

namespace tagmap {
namespace {

using Entries = std::vector<std::string>;

struct OggKind {
    const char* Sample;
    std::string Mark; // in front of the list
    std::string End;  // behind it
};

void PrintTo(const OggKind& kind, std::ostream* out) {
    *out << kind.Sample;
}

const OggKind Kinds[] = {{"sample.ogg", "\x03vorbis", "\x01"},
                         {"sample.opus", "OpusTags", ""},
                         {"sample.spx", "", "\x01"}};

class VorbisSave : public testing::TestWithParam<OggKind> {
protected:
    static std::string With(const std::string& list) {
        return SampleWithPacket(GetParam().Sample, GetParam().Mark + list + GetParam().End);
    }
    static bool IsRefused(const Entries& entries) {
        return FileToSave(With(VorbisListBytes(entries))).IsRefused();
    }
    // The second packet when an album was set.
    static std::string Saved(const Entries& entries) {
        FileToSave file(With(VorbisListBytes(entries)));
        EXPECT_EQ(file.Set(L"album", L"another"), Outcome::Done);
        return SecondPacket(file);
    }
    // The same, of these entries in the library's order.
    static std::string Expected(const Entries& entries) {
        return GetParam().Mark + VorbisListBytes(entries) + GetParam().End;
    }
};

INSTANTIATE_TEST_SUITE_P(Ogg, VorbisSave, testing::ValuesIn(Kinds), [](const auto& test) {
    const std::string name = test.param.Sample;
    return name.substr(name.find('.') + 1);
});

} // namespace

TEST_P(VorbisSave, KeepsEveryEntryAndWritesKeysInUpperCase) {
    EXPECT_EQ(Saved({"title=T\xC3\xB6ne", "Artist=A", "ARTIST=B", "ARTIST=A", "X {}=a=b"}),
              Expected({"ALBUM=another", "ARTIST=A", "ARTIST=B", "ARTIST=A", "TITLE=T\xC3\xB6ne",
                        "X {}=a=b"}));
}

TEST_P(VorbisSave, AFieldWithoutAValueSaysNothingAndMayGo) {
    EXPECT_EQ(Saved({"TITLE=", "ARTIST=A", ""}), Expected({"ALBUM=another", "ARTIST=A"}));
}

TEST_P(VorbisSave, EntriesThatTheLibraryDropsAreRefused) {
    EXPECT_TRUE(IsRefused({"TITLE=T", "no separator"}));
    EXPECT_TRUE(IsRefused({"=no key"}));
    EXPECT_TRUE(IsRefused({"B\xC3\xB6se=key"}));
    EXPECT_TRUE(IsRefused({"A~B=key"}));
    EXPECT_TRUE(IsRefused({"A\nB=key"}));
    EXPECT_TRUE(IsRefused({"TITLE=T\xF6ne"}));
    EXPECT_TRUE(IsRefused({"TITLE=T\xED\xA0\x80"}));
}

TEST_P(VorbisSave, AValueThatTheLibraryCutsIsRefused) {
    EXPECT_TRUE(IsRefused({std::string("TITLE=T\0rest", 12)}));
}

TEST_P(VorbisSave, AVendorOfAnotherEncodingIsRefused) {
    EXPECT_TRUE(FileToSave(With(VorbisListBytes({"TITLE=T"}, "M\xFCller"))).IsRefused());
}

TEST_P(VorbisSave, AListThatClaimsMoreThanThereIsIsRefused) {
    const std::string list = LittleEndian(0) + LittleEndian(2) + LittleEndian(7) + "TITLE=T";
    EXPECT_TRUE(FileToSave(With(list)).IsRefused());
    EXPECT_TRUE(FileToSave(With(LittleEndian(0) + LittleEndian(1) + LittleEndian(99) + "TITLE=T"))
                    .IsRefused());
}

TEST_P(VorbisSave, APictureStaysByteForByte) {
    const std::string picture =
        "METADATA_BLOCK_PICTURE=" + Base64(PictureBytes("image/png", "\x89PNG"));
    EXPECT_EQ(Saved({picture, "TITLE=T"}), Expected({"ALBUM=another", "TITLE=T", picture}));
}

TEST_P(VorbisSave, APictureThatTheLibraryDoesNotKeepIsRefused) {
    const std::string key = "METADATA_BLOCK_PICTURE=";
    EXPECT_TRUE(IsRefused({key + "no base64!"}));
    EXPECT_TRUE(IsRefused({key + Base64("too short for a picture")}));
    EXPECT_TRUE(IsRefused({key + Base64(PictureBytes("image/\xFF", "\x89PNG"))}));
    EXPECT_TRUE(IsRefused({key + Base64(PictureBytes("image/png", "\x89PNG") + "more")}));
    EXPECT_TRUE(IsRefused({"COVERART=no base64!"}));
}

TEST_P(VorbisSave, ACoverArtBecomesAPictureBlockAndItsTypeStays) {
    const std::string packet =
        Saved({"COVERART=" + Base64("\x89PNG image"), "COVERARTMIME=image/png"});
    EXPECT_EQ(packet.find("COVERART="), std::string::npos);
    EXPECT_NE(packet.find("COVERARTMIME=image/png"), std::string::npos);
    EXPECT_NE(packet.find("METADATA_BLOCK_PICTURE="), std::string::npos);
}

TEST(VorbisSave, DataBehindAnOpusListIsKeptOrRefused) {
    const std::string list = "OpusTags" + VorbisListBytes({"TITLE=T"});
    EXPECT_TRUE(FileToSave(SampleWithPacket("sample.opus", list + "\x03 data")).IsRefused());
    FileToSave padded(SampleWithPacket("sample.opus", list + std::string(20, '\0')));
    EXPECT_EQ(padded.Set(L"album", L"another"), Outcome::Done);
}

TEST(VorbisList, IsTakenApart) {
    const auto list = ParseVorbisList(VectorOf(VorbisListBytes({"A=1", ""}, "me") + "\x01"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->Vendor, VectorOf("me"));
    ASSERT_EQ(list->Entries.size(), 2u);
    EXPECT_EQ(list->Entries[0], VectorOf("A=1"));
    EXPECT_TRUE(list->Entries[1].isEmpty());
    EXPECT_EQ(list->Behind, VectorOf("\x01"));
}

TEST(VorbisList, CutAtAnyPlaceIsNone) {
    const std::string whole = VorbisListBytes({"A=1", "B=2"}, "me");
    for (size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(ParseVorbisList(VectorOf(whole.substr(0, size)))) << size;
    EXPECT_TRUE(ParseVorbisList(VectorOf(whole)));
}

} // namespace tagmap
