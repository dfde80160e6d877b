#include "suite/tagmap/flac_blocks.h"
#include "tests/tagmap/flac_bytes.h"
#include "tests/tagmap/vorbis_bytes.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

using Block = FlacBlock;

const Block Texts = {Comment, VorbisListBytes({"TITLE=T"})};
const Block Cover = {PictureBlock, PictureBytes("image/png", "\x89PNG image")};

bool IsRefused(const std::vector<Block>& blocks) {
    return FileToSave(FlacWith(blocks)).IsRefused();
}

} // namespace

TEST(FlacBlocks, OfEveryOtherTypeStayByteForByte) {
    const std::vector<Block> blocks = {{Application, "riff data"},
                                       {SeekTable, std::string(36, '\xFF')},
                                       Texts,
                                       {CueSheet, std::string(396, '\3')},
                                       Cover,
                                       {Reserved, "some day"},
                                       {Application, "riff more"},
                                       {SeekTable, ""}};
    FileToSave file(FlacWith(blocks));
    ASSERT_EQ(file.Set(L"album", L"another"), Outcome::Done);
    for (const Block& block : blocks)
        EXPECT_TRUE(block.Type == Comment || file.Contains(BlockBytes(block))) << block.Type;
    EXPECT_TRUE(
        file.Contains(BlockBytes({Comment, VorbisListBytes({"ALBUM=another", "TITLE=T"})})));
    ASSERT_EQ(DeleteTags(file.Path().c_str(), NStringList()), Outcome::Done);
    for (const Block& block : blocks)
        EXPECT_EQ(block.Type != Comment && block.Type != PictureBlock,
                  file.Contains(BlockBytes(block)))
            << block.Type;
}

TEST(FlacBlocks, ASecondCommentIsRefused) {
    EXPECT_FALSE(IsRefused({Texts}));
    EXPECT_TRUE(IsRefused({Texts, {Comment, VorbisListBytes({"ARTIST=A"})}}));
}

TEST(FlacBlocks, ACommentThatTheLibraryDoesNotKeepIsRefused) {
    EXPECT_TRUE(IsRefused({{Comment, VorbisListBytes({"TITLE=T\xF6ne"})}}));
    EXPECT_TRUE(IsRefused({{Comment, VorbisListBytes({"no separator"})}}));
    EXPECT_TRUE(IsRefused({{Comment, VorbisListBytes({"TITLE=T"}).substr(0, 20)}}));
}

TEST(FlacBlocks, APictureThatTheLibraryDoesNotKeepIsRefused) {
    EXPECT_FALSE(IsRefused({Texts, Cover}));
    EXPECT_TRUE(IsRefused({Texts, {PictureBlock, Cover.Data.substr(0, 40)}}));
    EXPECT_TRUE(IsRefused({Texts, {PictureBlock, Cover.Data + "more"}}));
    EXPECT_TRUE(IsRefused({Texts, {PictureBlock, PictureBytes("image/\xFF", "\x89PNG")}}));
}

TEST(FlacBlocks, AFileWithoutACommentGetsOne) {
    FileToSave file(FlacWith({}));
    ASSERT_EQ(file.Set(L"album", L"another"), Outcome::Done);
    EXPECT_EQ(file.Value(L"album"), L"another");
}

TEST(FlacBlocks, OfWhichThereAreMoreThanAnyFileHasAreRefused) {
    constexpr size_t most = 10000; // with the stream information and the last padding
    EXPECT_FALSE(IsRefused(std::vector<Block>(most - 2, {Application, "riff"})));
    EXPECT_TRUE(IsRefused(std::vector<Block>(most - 1, {Application, "riff"})));
}

TEST(FlacBlocks, AreFoundBehindAnId3v2Tag) {
    const std::string id3v2 =
        std::string("ID3\3\0\0\0\0\0\20", 10) + "TIT2" + std::string("\0\0\0\6\0\0\0fLaC!", 12);
    FileToSave kept(id3v2 + FlacWith({Texts}));
    EXPECT_EQ(kept.Set(L"album", L"another"), Outcome::Done);
    EXPECT_TRUE(FileToSave(id3v2 + FlacWith({Texts, Texts})).IsRefused());
}

} // namespace tagmap
