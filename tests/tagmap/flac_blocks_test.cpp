#include "suite/tagmap/flac_blocks.h"
#include "tests/tagmap/vorbis_bytes.h"

#include <gtest/gtest.h>

namespace tagmap {
namespace {

enum BlockType : unsigned {
    Application = 2,
    SeekTable = 3,
    Comment = 4,
    CueSheet = 5,
    PictureBlock = 6,
    Reserved = 77
};

struct Block {
    BlockType Type;
    std::string Data;
};

constexpr size_t LastBlock = 0x80;

std::string BlockBytes(const Block& block) {
    return BigEndian((static_cast<size_t>(block.Type) << 24) | block.Data.size()) + block.Data;
}

// The sample's stream information, these blocks, and the sample's audio.
std::string FlacWith(const std::vector<Block>& blocks) {
    constexpr size_t StreamInfoEnd = 4 + 4 + 34;
    const std::string sample = SampleContent("sample.flac");
    size_t audio = 4;
    for (bool isLast = false; !isLast;) {
        isLast = (static_cast<unsigned char>(sample[audio]) & LastBlock) != 0;
        audio += 4 + VectorOf(sample.substr(audio, 4)).toUInt(1U, 3U);
    }
    std::string file = sample.substr(0, StreamInfoEnd);
    for (const Block& block : blocks)
        file += BlockBytes(block);
    constexpr char LastPadding[] = "\x81\0\0\0";
    return file + std::string(LastPadding, 4) + sample.substr(audio);
}

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

TEST(FlacBlocks, AreFoundBehindAnId3v2Tag) {
    const std::string id3v2 =
        std::string("ID3\3\0\0\0\0\0\20", 10) + "TIT2" + std::string("\0\0\0\6\0\0\0fLaC!", 12);
    FileToSave kept(id3v2 + FlacWith({Texts}));
    EXPECT_EQ(kept.Set(L"album", L"another"), Outcome::Done);
    EXPECT_TRUE(FileToSave(id3v2 + FlacWith({Texts, Texts})).IsRefused());
}

} // namespace tagmap
