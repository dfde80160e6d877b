#include "suite/tagmap/id3v1_source.h"
#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"
#include "tests/tagmap/record_help.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

std::string Padded(const std::string& text, size_t size, char padding) {
    return text + std::string(size - text.size(), padding);
}

const std::string LongComment = "thirty characters, no more now"; // ID3v1.0

// A tag as older programs write it: blanks for padding, and a text with
// something behind its end.
std::string OldTag() {
    return "TAG" + Padded("Title", 30, ' ') + Padded(std::string("Artist\0rest", 11), 30, 'x') +
           Padded(" Album", 30, '\0') + "2004" + LongComment + '\x11';
}

class Id3v1InFile : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const Bytes sample = ReadWhole(
            HostPath((std::string(TONEWRIGHT_SOURCE_DIR "/build/samples/") + GetParam()).c_str()));
        path_ = folder_.Write(L"file", sample + BytesOf(OldTag()));
    }
    std::string Tag() const {
        const Bytes content = ReadWhole(path_);
        return std::string(content.end() - 128, content.end());
    }
    void Set(const wchar_t* name, const wchar_t* value) {
        clTagRecord changes;
        Refusals refused;
        changes.Add(name, value);
        ASSERT_EQ(SetTags(path_.c_str(), changes, refused), Outcome::Done);
    }
    // The old tag with other bytes at one place.
    static std::string Changed(size_t at, const std::string& bytes) {
        return OldTag().replace(at, bytes.size(), bytes);
    }

    TestFolder folder_;
    std::wstring path_;
};
} // namespace

TEST_P(Id3v1InFile, AWriteOfAnotherFieldLeavesAllBytes) {
    ASSERT_EQ(OldTag().size(), 128u);
    Set(L"composer", L"C");
    EXPECT_EQ(Tag(), OldTag());
}

TEST_P(Id3v1InFile, AFieldIsReplacedInItsPlaceAlone) {
    Set(L"album", L"New");
    EXPECT_EQ(Tag(), Changed(63, Padded("New", 30, '\0')));
    Set(L"genre", L"Blues");
    EXPECT_EQ(Tag(), Changed(63, Padded("New", 30, '\0')).replace(127, 1, 1, '\0'));
}

TEST_P(Id3v1InFile, ATrackTakesTheEndOfAnOlderComment) {
    Set(L"track", L"7");
    EXPECT_EQ(Tag(), Changed(125, std::string("\0\7", 2)));
}

TEST_P(Id3v1InFile, ANewCommentReplacesAnOlderOneToItsEnd) {
    Set(L"comment", L"short");
    EXPECT_EQ(Tag(), Changed(97, Padded("short", 30, '\0')));
}

TEST_P(Id3v1InFile, ADeletedFieldIsEmptyAndTheOthersStay) {
    NStringList names;
    names.Add(L"TITLE");
    ASSERT_EQ(DeleteTags(path_.c_str(), names), Outcome::Done);
    EXPECT_EQ(Tag(), Changed(3, std::string(30, '\0')));
}

TEST_P(Id3v1InFile, TheWholeTagGoesWithAllOthers) {
    ASSERT_EQ(DeleteTags(path_.c_str(), NStringList()), Outcome::Done);
    EXPECT_NE(Tag().substr(0, 3), "TAG");
}

INSTANTIATE_TEST_SUITE_P(Formats, Id3v1InFile,
                         testing::Values("sample.mp3", "sample.flac", "sample.tta", "sample.ape",
                                         "sample.wv", "sample.mpc"),
                         [](const auto& test) {
                             const std::string name = test.param;
                             return name.substr(name.find('.') + 1);
                         });

} // namespace tagmap
