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

const std::string Huge("\x7F\xFF\xFF\xF0", 4);
} // namespace

TEST(Mp4Boxes, ASoundFileIsWritten) {
    TestFolder folder;
    EXPECT_EQ(SetATitle(folder.Write(L"sound.m4a", SampleBytes())), Outcome::Done);
}

TEST(Mp4Boxes, AnItemListBeyondItsParentIsRefused) {
    ExpectRefused(Patched("ilst", 0, Huge));
}

TEST(Mp4Boxes, MetadataBeyondTheFileIsRefused) {
    ExpectRefused(Patched("meta", 0, Huge));
}

TEST(Mp4Boxes, ATableThatCountsMoreThanItHoldsIsRefused) {
    ExpectRefused(Patched("stco", 12, Huge));
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
