#include "suite/tagmap/ogg_flac_pictures.h"
#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace {
using namespace tagmap;

// The sample's cover stands in a PICTURE block.
class OggFlacPictures : public testing::Test {
protected:
    void SetUp() override {
        path_ = folder_.Write(
            L"x.oga", ReadWhole(HostPath(TONEWRIGHT_SOURCE_DIR "/build/samples/sample.oga")));
        Read();
        cover_ = DataOf(record_, Cover);
    }
    void Read() { ASSERT_EQ(ReadTags(path_.c_str(), record_), Outcome::Done); }
    std::string Content() {
        const Bytes bytes = ReadWhole(path_);
        return std::string(bytes.begin(), bytes.end());
    }

    static constexpr wchar_t Cover[] = L"_albumart_1_Front Album Cover";
    TestFolder folder_;
    std::wstring path_;
    clTagRecord record_;
    Refusals refused_;
    std::string cover_;
};
} // namespace

TEST_F(OggFlacPictures, AreReadFromTheirBlocks) {
    EXPECT_EQ(cover_.substr(1, 3), "PNG");
}

TEST_F(OggFlacPictures, StayInTheirBlocksWhenATextIsWritten) {
    EXPECT_EQ(Content().find("METADATA_BLOCK_PICTURE"), std::string::npos);
    clTagRecord changes;
    changes.Add(L"title", L"x");
    ASSERT_EQ(SetTags(path_.c_str(), changes, refused_), Outcome::Done);
    EXPECT_EQ(Content().find("METADATA_BLOCK_PICTURE"), std::string::npos);
    Read();
    EXPECT_EQ(DataOf(record_, Cover), cover_);
    EXPECT_EQ(ValueOf(record_, L"title"), L"x");
}

TEST_F(OggFlacPictures, AreReplacedAndJoinedByOthers) {
    clTagRecord changes;
    AddBytes(changes, L"_albumart_2_Back Album Cover", "back");
    ASSERT_EQ(SetTags(path_.c_str(), changes, refused_), Outcome::Done);
    Read();
    EXPECT_EQ(DataOf(record_, Cover), cover_);
    EXPECT_EQ(DataOf(record_, L"_albumart_2_Back Album Cover"), "back");

    clTagRecord replaced;
    AddBytes(replaced, Cover, "front");
    ASSERT_EQ(SetTags(path_.c_str(), replaced, refused_), Outcome::Done);
    Read();
    EXPECT_EQ(DataOf(record_, Cover), "front");
    EXPECT_EQ(Content().find(cover_), std::string::npos);
    EXPECT_TRUE(SoundsAlike(HostPath(TONEWRIGHT_SOURCE_DIR "/build/samples/sample.oga").c_str(),
                            path_.c_str()));
}

TEST_F(OggFlacPictures, GoWithTheWholeTagAndByName) {
    NStringList names;
    names.Add(Cover);
    const std::wstring second = folder_.Write(L"y.oga", ReadWhole(path_));
    ASSERT_EQ(DeleteTags(second.c_str(), names), Outcome::Done);
    EXPECT_TRUE(LacksAll(second.c_str(), names));
    ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
    EXPECT_EQ(Content().find(cover_), std::string::npos);
    Read();
    EXPECT_EQ(DataOf(record_, Cover), "(absent)");
}
