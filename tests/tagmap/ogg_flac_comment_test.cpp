#include "suite/tagmap/ogg_flac_comment.h"
#include "tests/tagmap/vorbis_bytes.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

enum CommentMark : unsigned { CommentBlock = 0x04, LastCommentBlock = 0x84 };

std::string CommentPacket(CommentMark mark, const std::vector<std::string>& entries) {
    const std::string list = VorbisListBytes(entries);
    return BigEndian((static_cast<size_t>(mark) << 24) | list.size()) + list;
}

std::string SampleWith(CommentMark mark, const std::vector<std::string>& entries) {
    return SampleWithPacket("sample.oga", CommentPacket(mark, entries));
}

} // namespace

TEST(OggFlacComment, ThatIsTheLastBlockStaysMarkedAsTheLast) {
    FileToSave file(SampleWith(LastCommentBlock, {"TITLE=T"}));
    ASSERT_EQ(file.Set(L"album", L"another"), Outcome::Done);
    EXPECT_EQ(SecondPacket(file), CommentPacket(LastCommentBlock, {"ALBUM=another", "TITLE=T"}));
}

TEST(OggFlacComment, ThatIsNotTheLastBlockIsNotMarked) {
    FileToSave file(SampleWith(CommentBlock, {"TITLE=T"}));
    ASSERT_EQ(file.Set(L"album", L"another"), Outcome::Done);
    EXPECT_EQ(SecondPacket(file), CommentPacket(CommentBlock, {"ALBUM=another", "TITLE=T"}));
}

TEST(OggFlacComment, WithAnEntryThatTheLibraryDropsIsRefused) {
    EXPECT_TRUE(FileToSave(SampleWith(CommentBlock, {"TITLE=T\xF6ne"})).IsRefused());
    EXPECT_TRUE(FileToSave(SampleWith(LastCommentBlock, {"no separator"})).IsRefused());
}

TEST(OggFlacComment, ThatIsMissingIsNotWrittenOverAnotherPacket) {
    const std::string padding = BigEndian(0x81000000);
    EXPECT_TRUE(FileToSave(SampleWithPacket("sample.oga", padding)).IsRefused());
}

} // namespace tagmap
