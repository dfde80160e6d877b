#include "suite/tagmap/mp4_boxes.h"
#include "suite/tagmap/tag_file.h"
#include "tests/querytrackdata/test_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {
using namespace tagmap;

Bytes SampleBytes() {
    return ReadWhole(HostPath(TONEWRIGHT_SOURCE_DIR "/build/samples/sample.m4a"));
}

// Four bytes in place of those at `offset` from the box's size.
Bytes Patched(const std::string& box, int offset, const std::string& bytes) {
    Bytes file = SampleBytes();
    const auto name = std::search(file.begin(), file.end(), box.begin(), box.end());
    EXPECT_NE(name, file.end()) << box;
    std::copy(bytes.begin(), bytes.end(), name - 4 + offset);
    return file;
}

Outcome SetATitle(const std::wstring& path) {
    clTagRecord changes;
    changes.Add(L"title", L"another");
    Refusals refused;
    return SetTags(path.c_str(), changes, refused);
}

// Refused, and left as it was.
void ExpectRefused(const Bytes& file) {
    TestFolder folder;
    const std::wstring path = folder.Write(L"damaged.m4a", file);
    EXPECT_EQ(SetATitle(path), Outcome::Refused);
    EXPECT_TRUE(ReadWhole(path) == file);
}

// The library itself may see that it can't read the file.
void ExpectLeftAlone(const Bytes& file) {
    TestFolder folder;
    const std::wstring path = folder.Write(L"damaged.m4a", file);
    const Outcome outcome = SetATitle(path);
    EXPECT_TRUE(outcome == Outcome::Refused || outcome == Outcome::NotAudio);
    EXPECT_TRUE(ReadWhole(path) == file);
}

const std::string Huge("\x7F\xFF\xFF\xF0", 4);

std::string BigEndian(size_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

std::string Box(const std::string& name, const std::string& content) {
    constexpr size_t headSize = 8;
    return BigEndian(headSize + content.size()) + name + content;
}

std::string LongBox(const std::string& name, const std::string& content) {
    constexpr size_t headSize = 16;
    return BigEndian(1) + name + BigEndian(0) + BigEndian(headSize + content.size()) + content;
}

const std::string Handler = Box("hdlr", std::string(8, '\0') + "mdirappl" + std::string(9, '\0'));

std::string Metadata(const std::string& boxes) {
    return Box("meta", std::string(4, '\0') + Handler + boxes);
}

Bytes FileOf(const std::string& boxes) {
    return BytesOf(Box("ftyp", "M4A ") + boxes);
}

void ExpectWritten(const Bytes& file) {
    TestFolder folder;
    EXPECT_EQ(SetATitle(folder.Write(L"sound.m4a", file)), Outcome::Done);
}
} // namespace

TEST(Mp4Boxes, ASoundFileIsWritten) {
    ExpectWritten(SampleBytes());
    ExpectWritten(FileOf(Box("moov", "")));
    ExpectWritten(FileOf(Box("moov", Box("udta", Metadata(Box("ilst", ""))))));
}

TEST(Mp4Boxes, AnItemListBeyondItsParentIsRefused) {
    ExpectLeftAlone(Patched("ilst", 0, Huge));
    const std::string list = BigEndian(8 + 8 + 4) + "ilst";
    ExpectRefused(FileOf(Box("moov", Box("udta", Metadata(list))) + Box("mdat", "1234")));
}

TEST(Mp4Boxes, MetadataBeyondItsParentIsRefused) {
    ExpectLeftAlone(Patched("meta", 0, Huge));
    const std::string meta =
        BigEndian(8 + 4 + Handler.size() + 8 + 4) + "meta" + std::string(4, '\0') + Handler;
    ExpectRefused(FileOf(Box("moov", Box("udta", meta)) + Box("mdat", "1234")));
}

TEST(Mp4Boxes, AFillerBeyondItsParentIsRefused) {
    const std::string filler = BigEndian(8 + 8 + 4) + "free";
    ExpectRefused(FileOf(Box("moov", Box("udta", Metadata(filler))) + Box("mdat", "1234")));
}

TEST(Mp4Boxes, ATableThatCountsMoreThanItHoldsIsRefused) {
    ExpectRefused(Patched("stco", 12, Huge));
}

// A save would write a size there that the box does not have.
TEST(Mp4Boxes, ABoxUpToTheFilesEndIsRefused) {
    const std::string open = BigEndian(0);
    ExpectRefused(Patched("moov", 0, open));
    ExpectRefused(Patched("udta", 0, open));
    ExpectRefused(Patched("meta", 0, open));
    ExpectRefused(Patched("ilst", 0, open));
}

TEST(Mp4Boxes, WhatTheListIsPutIntoHasAShortHead) {
    ExpectRefused(FileOf(LongBox("moov", "")));
    ExpectRefused(FileOf(Box("moov", LongBox("udta", ""))));
    ExpectRefused(FileOf(Box("moov", Box("udta", Metadata(LongBox("ilst", ""))))));
    ExpectWritten(FileOf(LongBox("moov", Box("udta", ""))));
}

TEST(Mp4Boxes, ATableWithALongHeadIsRefused) {
    const std::string table = BigEndian(0) + BigEndian(0) + BigEndian(0);
    ExpectRefused(FileOf(Box("moov", Box("stbl", LongBox("stco", table)))));
    ExpectRefused(FileOf(Box("moov", Box("stbl", LongBox("co64", table)))));
    ExpectWritten(FileOf(Box("moov", Box("stbl", Box("stco", table)))));
}

TEST(Mp4Boxes, PlacesThatTheLibraryDoesNotMendAreRefused) {
    ExpectRefused(FileOf(Box("moov", Box("stbl", Box("saio", "12345678")))));
    ExpectRefused(FileOf(Box("moov", Metadata(Box("iloc", "12345678")))));
    ExpectRefused(FileOf(Box("moov", "") + Metadata(Box("iloc", "12345678"))));
    ExpectRefused(FileOf(Box("moov", Box("cmov", "12345678"))));
}

TEST(Mp4Boxes, ASecondMovieIsRefused) {
    ExpectRefused(FileOf(Box("moov", "") + Box("moov", "")));
}

// The zero that may end user data stands for a box up to the file's end.
TEST(Mp4Boxes, WhatStandsBehindAZeroInUserDataIsNotPutAtRisk) {
    const std::string zeros(8, '\0');
    const auto withEnds = [](const std::string& listEnd, const std::string& trackEnd) {
        const std::string movieHead = Box("mvhd", std::string(100, '\0'));
        const std::string track = Box("trak", Box("tkhd", std::string(84, '\0')) +
                                                  Box("udta", Box("name", "x") + trackEnd));
        const std::string list = Box("udta", Metadata(Box("ilst", "")) + listEnd);
        return FileOf(Box("moov", movieHead + list + track));
    };
    ExpectWritten(withEnds("", ""));
    ExpectRefused(withEnds(zeros, ""));
    ExpectRefused(withEnds("", zeros));
}

TEST(Mp4Boxes, ABoxBesideTheListThatReachesTooFarIsRefused) {
    const auto withSize = [](size_t size) {
        return FileOf(Box(
            "moov", Box("mvhd", std::string(100, '\0')) +
                        Box("udta", Metadata(Box("ilst", "")) + BigEndian(size) + "name" + "x")));
    };
    ExpectWritten(withSize(9));
    ExpectRefused(withSize(10));
    ExpectRefused(withSize(4000));
}

// The place behind it overflows 32 bits, and was taken for the file's start.
TEST(Mp4Boxes, ASizeUpToTheLargestNumberEndsTheReading) {
    TestFolder folder;
    for (const char* box : {"moov", "mdat", "free", "trak", "ilst"}) {
        const std::wstring path =
            folder.Write(L"damaged.m4a", Patched(box, 0, std::string("\x7F\xFF\xFF\xFF", 4)));
        clTagRecord record;
        const Outcome outcome = ReadTags(path.c_str(), record);
        EXPECT_TRUE(outcome == Outcome::Done || outcome == Outcome::NotAudio) << box;
    }
}
