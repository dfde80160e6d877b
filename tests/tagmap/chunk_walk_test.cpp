#include "tests/tagmap/file_to_save.h"

#include <gtest/gtest.h>

#include <string>

// WAV and AIFF files whose chunks the library does not walk to the end: a save
// wrote its own chunks over the sound, or behind the first ones.
namespace tagmap {
namespace {

const std::string Format("\1\0\1\0\104\254\0\0\210\130\1\0\2\0\20\0", 16);
// One channel of 16 bits at 44100 Hz.
const std::string Common("\0\1\0\0\0\10\0\20\100\16\254\104\0\0\0\0\0\0", 18);
const std::string Sound(24, '\1');
const std::string Largest(4, '\xFF');
const std::string Id3v2("ID3\3\0\0\0\0\0\4\0\0\0\0", 14);

std::string Wav(const std::string& chunks) {
    const std::string body = "WAVEfmt " + LittleEndian(Format.size()) + Format + chunks;
    return "RIFF" + LittleEndian(body.size()) + body;
}

std::string Aiff(const std::string& chunks) {
    const std::string body = "AIFFCOMM" + BigEndian(Common.size()) + Common + chunks;
    return "FORM" + BigEndian(body.size()) + body;
}

std::string WavSound() {
    return "data" + LittleEndian(Sound.size()) + Sound;
}

std::string AiffSound() {
    return "SSND" + BigEndian(Sound.size()) + Sound;
}

bool IsWritten(const std::string& content) {
    FileToSave file(content);
    return file.Set(L"album", L"another") == Outcome::Done && file.Contains(Sound) &&
           file.Value(L"album") == L"another";
}

bool IsRefused(const std::string& content) {
    return FileToSave(content).IsRefused();
}

TEST(ChunkWalk, AFileWhoseChunksEndWithItIsWritten) {
    EXPECT_TRUE(IsWritten(Wav(WavSound())));
    EXPECT_TRUE(IsWritten(Aiff(AiffSound())));
}

TEST(ChunkWalk, LessThanAChunkMayFollow) {
    EXPECT_TRUE(IsWritten(Wav(WavSound()) + std::string(7, 'x')));
    EXPECT_TRUE(IsWritten(Aiff(AiffSound()) + std::string(7, 'x')));
}

TEST(ChunkWalk, SoundOfTheLargestSizeIsRefused) {
    EXPECT_TRUE(IsRefused(Wav("data" + Largest + Sound)));
    EXPECT_TRUE(IsRefused(Aiff("SSND" + Largest + Sound)));
}

TEST(ChunkWalk, SoundOfNoSizeIsRefused) {
    EXPECT_TRUE(IsRefused(Wav("data" + LittleEndian(0) + Sound)));
    EXPECT_TRUE(IsRefused(Aiff("SSND" + BigEndian(0) + Sound)));
}

TEST(ChunkWalk, SoundBeyondTheFileIsRefused) {
    EXPECT_TRUE(IsRefused(Wav("data" + LittleEndian(Sound.size() + 1) + Sound)));
    EXPECT_TRUE(IsRefused(Aiff("SSND" + BigEndian(Sound.size() + 1) + Sound)));
}

TEST(ChunkWalk, AChunkThatReachesBeyondTheFileIsRefusedBehindTheSoundToo) {
    EXPECT_TRUE(IsRefused(Wav(WavSound() + "junk" + Largest)));
    EXPECT_TRUE(IsRefused(Aiff(AiffSound() + "junk" + Largest)));
}

TEST(ChunkWalk, ANameThatIsNoneIsRefused) {
    const std::string none("\1\2\3\4", 4);
    EXPECT_TRUE(IsRefused(Wav(WavSound() + none + LittleEndian(4) + "abcd")));
    EXPECT_TRUE(IsRefused(Aiff(AiffSound() + none + BigEndian(4) + "abcd")));
}

TEST(ChunkWalk, MoreChunksThanAnyFileHasAreRefused) {
    constexpr int most = 256; // with those of the format and of the sound
    std::string chunks;
    for (int count = 0; count < most - 2; ++count)
        chunks += std::string("ANNO\0\0\0\0", 8);
    EXPECT_FALSE(IsRefused(Wav(WavSound() + chunks)));
    EXPECT_FALSE(IsRefused(Aiff(AiffSound() + chunks)));
    chunks += std::string("ANNO\0\0\0\0", 8);
    EXPECT_TRUE(IsRefused(Wav(WavSound() + chunks)));
    EXPECT_TRUE(IsRefused(Aiff(AiffSound() + chunks)));
}

TEST(ChunkWalk, AFileWithoutSoundIsRefused) {
    EXPECT_TRUE(IsRefused(Wav("")));
    EXPECT_TRUE(IsRefused(Aiff("")));
}

TEST(ChunkWalk, AFileBehindAnId3v2TagIsRefused) {
    EXPECT_TRUE(IsRefused(Id3v2 + Wav(WavSound())));
    EXPECT_TRUE(IsRefused(Id3v2 + Aiff(AiffSound())));
}

TEST(ChunkWalk, WhatIsNotWrittenIsReadAllTheSame) {
    const std::string title = "NAME" + BigEndian(6) + "a tone";
    EXPECT_EQ(FileToSave(Aiff(title + "SSND" + Largest + Sound)).Value(L"title"), L"a tone");
}

} // namespace
} // namespace tagmap
