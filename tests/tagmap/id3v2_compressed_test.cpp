#include "tests/tagmap/file_to_save.h"
#include "tests/tagmap/id3v2_bytes.h"

#include <gtest/gtest.h>

#include <string>

// Frames of ID3v2.3 and 2.4 whose fields are compressed: a thousand bytes can
// hold a million, so they are not unpacked.
namespace tagmap {
namespace {

// "Compressed" in Latin-1, by zlib, behind the length of what it holds.
const std::string Packed =
    std::string("\0\0\0\13", 4) +
    std::string("\x78\xDA\x63\x70\xCE\xCF\x2D\x28\x4A\x2D\x2E\x4E\x4D\x01\x00\x16\x00\x04\x16", 19);
const std::string CompressedOfV3("\0\x80", 2);
const std::string CompressedOfV4("\0\x09", 2); // and a length of data

std::string FileWith(int version, const RawFrames& frames, const std::string& flags) {
    return TagBytes(version, frames, flags) + SampleContent("sample-id3v1.mp3");
}

} // namespace

TEST(Id3v2Compressed, AFrameIsNotRead) {
    for (const std::string& file : {FileWith(3, {{"TALB", Packed}}, CompressedOfV3),
                                    FileWith(4, {{"TALB", Packed}}, CompressedOfV4)}) {
        // What shows is the tag at the file's end.
        const std::wstring shown = FileToSave(SampleContent("sample-id3v1.mp3")).Value(L"album");
        EXPECT_NE(shown, L"Compressed");
        EXPECT_EQ(FileToSave(file).Value(L"album"), shown);
    }
}

TEST(Id3v2Compressed, AFileWithSuchAFrameIsRefused) {
    EXPECT_TRUE(FileToSave(FileWith(3, {{"TALB", Packed}}, CompressedOfV3)).IsRefused());
    EXPECT_TRUE(FileToSave(FileWith(4, {{"TALB", Packed}}, CompressedOfV4)).IsRefused());
    EXPECT_TRUE(FileToSave(FileWith(3, {{"PRIV", Packed}}, CompressedOfV3)).IsRefused());
    EXPECT_FALSE(
        FileToSave(FileWith(3, {{"TALB", Latin1Text("plain")}}, std::string(2, '\0'))).IsRefused());
}

} // namespace tagmap
