#include "tests/tagmap/file_to_save.h"

#include <gtest/gtest.h>

#include <string>

namespace tagmap {
namespace {

constexpr int Many = 300;
constexpr int Some = 200;
const std::string Padding(1, '\1');
const std::string LastPadding(1, '\x81');
const std::string Rest(3, '\0'); // of a block of no length

std::string Page(const std::string& segments, const std::string& packets) {
    return std::string("OggS\0\0", 6) + std::string(20, '\0') + static_cast<char>(segments.size()) +
           segments + packets;
}

// The stream's first page, which holds its mapping, with these behind it.
std::string Stream(const std::string& pages) {
    const std::string sample = SampleContent("sample.oga");
    return sample.substr(0, sample.find("OggS", 4)) + pages;
}

std::string Blocks(int count) {
    std::string pages;
    for (int block = 0; block < count; ++block)
        pages += Page("\4", Padding + Rest);
    return pages;
}

std::string End() {
    return Page("\4", LastPadding + Rest);
}

Outcome Reading(const std::string& content) {
    const FileToSave file(content);
    clTagRecord record;
    return ReadTags(file.Path().c_str(), record);
}

} // namespace

TEST(OggFlacBounds, AStreamOfSomeBlocksIsRead) {
    EXPECT_EQ(Reading(SampleContent("sample.oga")), Outcome::Done);
    EXPECT_EQ(Reading(Stream(Blocks(Some) + End())), Outcome::Done);
}

TEST(OggFlacBounds, AStreamOfManyBlocksIsNoAudio) {
    EXPECT_EQ(Reading(Stream(Blocks(Many) + End())), Outcome::NotAudio);
    EXPECT_EQ(Reading(Stream(Blocks(Many))), Outcome::NotAudio);
}

TEST(OggFlacBounds, ManyBlocksInOnePageCountEach) {
    constexpr int most = 254; // with the mapping and the last block 256
    std::string packets;
    for (int block = 0; block < most; ++block)
        packets += Padding + Rest;
    const std::string page = Page(std::string(most, '\4'), packets);
    EXPECT_EQ(Reading(Stream(page + End())), Outcome::Done);
    EXPECT_EQ(Reading(Stream(page + page + End())), Outcome::NotAudio);
}

TEST(OggFlacBounds, ABlockOfManyPagesIsOne) {
    constexpr int wholeSegment = 255;
    const std::string begin =
        Page("\xFF", Padding + std::string("\1\0\0", 3) + std::string(wholeSegment - 4, '\0'));
    const std::string further = Page("\xFF", std::string(wholeSegment, '\0'));
    std::string block = begin;
    for (int page = 0; page < Many; ++page)
        block += further;
    EXPECT_EQ(Reading(Stream(block + Page("\1", "x") + End())), Outcome::Done);
}

TEST(OggFlacBounds, BlocksAreCountedBehindAnId3v2TagToo) {
    constexpr size_t blockRead = 65536;
    for (const size_t size : {size_t{0}, blockRead - 13, blockRead - 10}) {
        const std::string tag = std::string("ID3\4\0\0", 6) + static_cast<char>(size >> 21 & 0x7F) +
                                static_cast<char>(size >> 14 & 0x7F) +
                                static_cast<char>(size >> 7 & 0x7F) +
                                static_cast<char>(size & 0x7F) + std::string(size, '\0');
        EXPECT_EQ(Reading(tag + Stream(Blocks(Some) + End())), Outcome::Done) << size;
        EXPECT_EQ(Reading(tag + Stream(Blocks(Many) + End())), Outcome::NotAudio) << size;
    }
}

TEST(OggFlacBounds, WhatFollowsTheLastBlockIsNotCounted) {
    EXPECT_EQ(Reading(Stream(End() + Blocks(Many))), Outcome::Done);
}

} // namespace tagmap
