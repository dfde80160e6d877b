#include "tests/tagmap/file_to_save.h"

#include <gtest/gtest.h>

#include <string>

// The library's own way through the boxes has no limit: each of these files
// ended the program, or took a gigabyte of memory.
namespace tagmap {
namespace {

std::string Box(const std::string& name, const std::string& content = std::string()) {
    constexpr size_t headerSize = 8;
    return BigEndian(headerSize + content.size()) + name + content;
}

const std::string FileType = Box("ftyp", "M4A ");
const std::string EmptyMovie = Box("moov");

std::string Repeated(const std::string& bytes, int times) {
    std::string all;
    for (int count = 0; count < times; ++count)
        all += bytes;
    return all;
}

// Boxes within boxes, each up to the end of the file.
std::string Nested(const std::string& name, int depth) {
    constexpr size_t headerSize = 8;
    std::string all;
    for (int level = depth; level > 0; --level)
        all += BigEndian(headerSize * static_cast<size_t>(level)) + name;
    return all;
}

Outcome Reading(const std::string& content) {
    const FileToSave file(content);
    clTagRecord record;
    return ReadTags(file.Path().c_str(), record);
}

Outcome Writing(const std::string& content) {
    return FileToSave(content).Set(L"title", L"x");
}

TEST(Mp4Bounds, AMovieIsReadAndWritten) {
    EXPECT_EQ(Reading(FileType + EmptyMovie), Outcome::Done);
    EXPECT_EQ(Writing(FileType + EmptyMovie), Outcome::Done);
}

TEST(Mp4Bounds, AMegabyteOfBoxesWithinBoxesIsNoAudio) {
    constexpr int depth = 128 * 1024;
    EXPECT_EQ(Reading(FileType + Nested("moov", depth)), Outcome::NotAudio);
    EXPECT_EQ(Writing(FileType + Nested("moov", depth)), Outcome::NotAudio);
}

TEST(Mp4Bounds, AMillionEmptyBoxesAreNoAudio) {
    constexpr int million = 1000000;
    EXPECT_EQ(Reading(FileType + EmptyMovie + Repeated(Box("free"), million)), Outcome::NotAudio);
    EXPECT_EQ(Reading(FileType + Box("moov", Repeated(Box("trak"), million))), Outcome::NotAudio);
}

TEST(Mp4Bounds, ALongFileOfManyFragmentsIsRead) {
    constexpr int fragments = 30000;
    const std::string fragment =
        Box("moof", Box("mfhd", "1234") + Box("traf", Box("tfhd", "1234") + Box("trun", "1234"))) +
        Box("mdat", "audio");
    EXPECT_EQ(Reading(FileType + EmptyMovie + Repeated(fragment, fragments)), Outcome::Done);
}

// Sound that looks like boxes when it is read from its first byte on.
TEST(Mp4Bounds, WhatTheLibraryDoesNotLookIntoMayHoldAnything) {
    constexpr int many = 400000;
    EXPECT_EQ(Reading(FileType + EmptyMovie + Box("mdat", Nested("moov", many))), Outcome::Done);
}

TEST(Mp4Bounds, SeveralDozenLevelsAreRead) {
    constexpr int depth = 24;
    EXPECT_EQ(Reading(FileType + Nested("moov", depth)), Outcome::Done);
}

TEST(Mp4Bounds, MetadataWithAndWithoutItsVersionIsLookedInto) {
    constexpr int depth = 64;
    const std::string handler = Box("hdlr", std::string(24, '\0'));
    const std::string plain = Box("meta", handler + Nested("moov", depth));
    const std::string full = Box("meta", std::string(4, '\0') + handler + Nested("moov", depth));
    EXPECT_EQ(Reading(FileType + EmptyMovie + plain), Outcome::NotAudio);
    EXPECT_EQ(Reading(FileType + EmptyMovie + full), Outcome::NotAudio);
}

TEST(Mp4Bounds, SampleDescriptionsAreLookedIntoBehindTheirCount) {
    constexpr int depth = 64;
    const std::string descriptions = Box("stsd", std::string(8, '\0') + Nested("moov", depth));
    EXPECT_EQ(Reading(FileType + EmptyMovie + descriptions), Outcome::NotAudio);
}

} // namespace
} // namespace tagmap
