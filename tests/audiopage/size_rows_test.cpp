#include "tests/audiopage/property_rows_fixture.h"

namespace {
class SizeRows : public PropertyRows {
protected:
    // One file of a size, and of so many uncompressed bytes.
    void BuildFile(int64_t size, int64_t original) {
        ScriptedAudio audio;
        audio.says.fileSize = size;
        audio.says.avgBytesPerSec = 1;
        audio.says.lengthMs = original * 1000;
        files_.Clear();
        AddNumbered(audio);
        Build();
    }
};
} // namespace

TEST_F(SizeRows, AFileSmallerThanItsAudioReadsOneToOne) {
    BuildFile(4000000, 40000000);
    EXPECT_EQ(Value(L"Size"), L"3.81 MB  (10% of original, 1 to 1 compression)");
    EXPECT_EQ(Value(L"Original Size"), L"38.15 MB");
}

TEST_F(SizeRows, AFileALittleLargerThanItsAudioReadsTenthsWithoutAZero) {
    BuildFile(1000100, 1000000);
    EXPECT_EQ(Value(L"Size"), L"977 KB  (100% of original, .9 to 1 compression)");
    EXPECT_EQ(Value(L"Original Size"), L"977 KB");
}

TEST_F(SizeRows, AFileAsLargeAsItsAudioReadsOneToOne) {
    BuildFile(4096, 4096);
    EXPECT_EQ(Value(L"Size"), L"4 KB  (100% of original, 1 to 1 compression)");
}

TEST_F(SizeRows, TheTenthsHaveTheDecimalSeparatorOfTheLocale) {
    ChangeLocale(L"sDecimal", L",");
    SetUnit(L"UnitsFileSize", 3);
    SetLocale(L"sThousand", L"'");
    BuildFile(1000100, 1000000);
    EXPECT_EQ(Value(L"Size"), L"1'000'100 bytes  (100% of original, ,9 to 1 compression)");
}

TEST_F(SizeRows, PercentAndRatioAreNeverGrouped) {
    BuildFile(1000000, 100);
    EXPECT_EQ(Value(L"Size"), L"977 KB  (1000000% of original, .0 to 1 compression)");
}

TEST_F(SizeRows, WithoutTheAudiosSizeThereIsNoCompression) {
    BuildFile(5000, 0);
    EXPECT_EQ(Value(L"Size"), L"5 KB");
    EXPECT_EQ(Value(L"Original Size"), L"5 KB");
}

TEST_F(SizeRows, WithoutASizeTheRowIsEmpty) {
    BuildFile(0, 2048);
    EXPECT_EQ(Value(L"Size"), L"");
    EXPECT_EQ(Value(L"Original Size"), L"2 KB");
}

TEST_F(SizeRows, ASmallDifferenceShowsTheFilesOwnSize) {
    SetUnit(L"UnitsFileSize", 3);
    BuildFile(5000, 5800);
    EXPECT_EQ(Value(L"Original Size"), L"5,000 bytes");
    BuildFile(5000, 6023);
    EXPECT_EQ(Value(L"Original Size"), L"5,000 bytes");
    BuildFile(5000, 6024);
    EXPECT_EQ(Value(L"Original Size"), L"6,024 bytes");
}

TEST_F(SizeRows, TheOriginalIsNeverShownSmallerThanTheFile) {
    SetUnit(L"UnitsFileSize", 3);
    BuildFile(50000, 6000);
    EXPECT_EQ(Value(L"Original Size"), L"50,000 bytes");
}

TEST_F(SizeRows, SizesByTheSetting) {
    const struct {
        uint32_t unit;
        const wchar_t* size;
        const wchar_t* original;
    } cases[] = {
        {0, L"1.5 MB", L"3 MB"},       {1, L"1.5 MB", L"3 MB"},
        {2, L"1,536 KB", L"3,072 KB"}, {3, L"1,572,864 bytes", L"3,145,728 bytes"},
        {4, L"1.5 MB", L"3 MB"},       {0xFFFFFFFF, L"1.5 MB", L"3 MB"},
    };
    for (const auto& expected : cases) {
        SetUnit(L"UnitsFileSize", expected.unit);
        BuildFile(1572864, 3145728);
        NString size(expected.size);
        size.Append(L"  (50% of original, 1 to 1 compression)");
        EXPECT_EQ(Value(L"Size"), size) << expected.unit;
        EXPECT_EQ(Value(L"Original Size"), expected.original) << expected.unit;
    }
}

TEST_F(SizeRows, WithNothingKnownTheOriginalSizeReadsZero) {
    const struct {
        uint32_t unit;
        const wchar_t* text;
    } cases[] = {{0, L"0 bytes"}, {1, L"0 bytes"}, {2, L"0 KB"}, {3, L"0 bytes"}, {4, L"0 bytes"}};
    for (const auto& expected : cases) {
        SetUnit(L"UnitsFileSize", expected.unit);
        BuildFile(0, 0);
        EXPECT_EQ(Value(L"Original Size"), expected.text) << expected.unit;
    }
}

TEST_F(SizeRows, OneByteIsOneByteByTheUnitThatFits) {
    BuildFile(1, 0);
    EXPECT_EQ(Value(L"Size"), L"1 byte");
    SetUnit(L"UnitsFileSize", 3);
    BuildFile(1, 0);
    EXPECT_EQ(Value(L"Size"), L"1 bytes");
}

// Only a decoder that says nonsense gets here.
TEST_F(SizeRows, ANegativeSizeMayHaveAGreatRatioWhichHasNoTenths) {
    BuildFile(-10, -1000);
    EXPECT_EQ(Value(L"Size"), L"-10 bytes  (1% of original, 100 to 1 compression)");
    BuildFile(-10, -51);
    EXPECT_EQ(Value(L"Size"), L"-10 bytes  (19% of original, 5 to 1 compression)");
    BuildFile(-10, -50);
    EXPECT_EQ(Value(L"Size"), L"-10 bytes  (20% of original, 5.0 to 1 compression)");
}

TEST_F(SizeRows, NumbersBeyondAllSenseDoNoHarm) {
    for (int64_t size : {INT64_MIN, int64_t{-1}, INT64_MAX}) {
        for (int64_t length : {INT64_MIN, int64_t{-1}, INT64_MAX}) {
            ScriptedAudio audio;
            audio.says.fileSize = size;
            audio.says.lengthMs = length;
            audio.says.avgBytesPerSec = 0xFFFFFFFF;
            audio.says.bitRate = 0x80000000;
            audio.says.channels = 0xFFFF;
            audio.says.sampleRate = 0xFFFFFFFF;
            audio.says.bitsPerSample = 0xFFFF;
            AddNumbered(audio);
            Build();
            EXPECT_GE(rows_.Count(), RowsOfMany);
        }
    }
}

// The length in milliseconds counts whole, not the seconds of it.
TEST_F(SizeRows, PartsOfASecondCountForTheOriginalSize) {
    SetUnit(L"UnitsFileSize", 3);
    ScriptedAudio audio;
    audio.says = {.avgBytesPerSec = 176400, .lengthMs = 1999};
    AddNumbered(audio);
    EXPECT_EQ(Built(L"Original Size"), L"352,623 bytes");
}

TEST_F(SizeRows, SizesLengthsAndOriginalSizesAreSummed) {
    SetUnit(L"UnitsFileSize", 3);
    ScriptedAudio audio;
    // Of 1.5 bytes each, which are cut to 1 file by file.
    audio.says = {.avgBytesPerSec = 1, .lengthMs = 1500, .fileSize = 3000};
    for (int file = 0; file < 4; ++file)
        AddNumbered(audio);
    Build();
    EXPECT_EQ(Value(L"Combined Size"), L"12,000 bytes  (300000% of original, .0 to 1 compression)");
    EXPECT_EQ(Value(L"Combined Length"), L"6 seconds");
}
