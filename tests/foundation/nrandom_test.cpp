#include "foundation/nfile.h"
#include "foundation/nrandom.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

namespace {
NString WriteFile(const TempFolder& folder, const std::vector<uint8_t>& bytes) {
    NString path = folder.File(L"random.bin");
    NFile file(path.Text, GENERIC_WRITE, CREATE_ALWAYS, false, true, FILE_ATTRIBUTE_NORMAL);
    file.Write(bytes.data(), static_cast<uint32_t>(bytes.size()), NFile::NoSeek);
    return path;
}
} // namespace

TEST(NRandom, GivesThePublishedSequenceForTheDefaultSeed) {
    // The first outputs of the authors' program for init_genrand(5489).
    NRandom random(5489);
    EXPECT_EQ(random.Next(), 3499211612u);
    EXPECT_EQ(random.Next(), 581869302u);
    EXPECT_EQ(random.Next(), 3890346734u);
    EXPECT_EQ(random.Next(), 3586334585u);
    EXPECT_EQ(random.Next(), 545404204u);
}

TEST(NRandom, TheTenThousandthNumberIsThePublishedOne) {
    NRandom random(5489);
    for (int index = 1; index < 10000; ++index)
        random.Next();
    EXPECT_EQ(random.Next(), 4123659995u);
}

TEST(NRandom, ALimitScalesTheNumberByItsTopBits) {
    NRandom plain(1);
    NRandom limited(1);
    for (int index = 0; index < 1000; ++index) {
        uint64_t number = plain.Next();
        EXPECT_EQ(limited.Next(9999), number * 9999 >> 32);
    }
}

TEST(NRandom, NumbersStayBelowTheirLimit) {
    NRandom random;
    for (uint32_t limit : {1u, 2u, 9999u, 0xFFFFFFFFu}) {
        for (int index = 0; index < 10000; ++index)
            ASSERT_LT(random.Next(limit), limit);
    }
}

TEST(NRandom, SmallLimitsReachEveryNumber) {
    NRandom random(7);
    int seen[6] = {};
    for (int index = 0; index < 6000; ++index)
        ++seen[random.Next(6)];
    for (int count : seen)
        EXPECT_GT(count, 800);
}

TEST(NRandom, TwoInstancesDiffer) {
    NRandom first;
    NRandom second;
    bool differs = false;
    for (int index = 0; index < 4; ++index)
        differs |= first.Next() != second.Next();
    EXPECT_TRUE(differs);
    EXPECT_EQ(&NProcessRandom(), &NProcessRandom());
}

TEST(NRandom, ReadsAFileOfBytesOverAndOver) {
    TempFolder folder;
    NString path = WriteFile(folder, {1, 0, 0, 0, 0, 0, 0, 0x80});
    NRandom random(1);
    ASSERT_TRUE(random.UseFile(path.Text));
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(random.Next(), 1u);
        EXPECT_EQ(random.Next(), 0x80000000u);
    }
    EXPECT_EQ(random.Next(10), 0u);
    EXPECT_EQ(random.Next(10), 5u);
}

TEST(NRandom, AFileLongerThanTheWindowIsReadToItsEnd) {
    TempFolder folder;
    std::vector<uint8_t> bytes(32768 + 8);
    for (size_t index = 0; index < bytes.size(); ++index)
        bytes[index] = static_cast<uint8_t>(index >> 8);
    NString path = WriteFile(folder, bytes);
    NRandom random(1);
    ASSERT_TRUE(random.UseFile(path.Text));
    for (size_t index = 0; index < bytes.size() * 2; index += 4) {
        uint32_t expected;
        memcpy(&expected, bytes.data() + index % bytes.size(), 4);
        ASSERT_EQ(random.Next(), expected);
    }
}

TEST(NRandom, AFileThatCantServeIsRefusedAndTheSequenceGoesOn) {
    TempFolder folder;
    NString path = WriteFile(folder, {1, 2, 3});
    NRandom random(5489);
    EXPECT_FALSE(random.UseFile(path.Text));
    EXPECT_FALSE(random.UseFile(folder.File(L"missing").Text));
    EXPECT_EQ(random.Next(), 3499211612u);
}
