#include "tests/audiopage/property_rows_fixture.h"

#include <iterator>

namespace {
class LengthRows : public PropertyRows {};
} // namespace

TEST_F(LengthRows, LengthsByTheSetting) {
    ScriptedAudio audio;
    audio.says.lengthMs = 3723000;
    AddNumbered(audio);
    const wchar_t* texts[] = {L"1 hour 2 minutes", L"1:02:03",          L"01:02:03",
                              L"01:02:03.000",     L"1 hour 2 minutes", L""};
    for (uint32_t unit = 0; unit < std::size(texts); ++unit) {
        SetUnit(L"UnitsTime", unit);
        EXPECT_EQ(Built(L"Length"), texts[unit]) << unit;
    }
}

TEST_F(LengthRows, LengthsInWordsHaveTheirFractionsWithUnit4Too) {
    SetUnit(L"UnitsTime", 4);
    ScriptedAudio audio;
    audio.says.lengthMs = 4500;
    AddNumbered(audio);
    EXPECT_EQ(Built(L"Length"), L"4.5 seconds");
}

TEST_F(LengthRows, WithoutALengthTheRowIsEmpty) {
    SetUnit(L"UnitsTime", 2);
    AddTagged(nullptr, nullptr);
    EXPECT_EQ(Built(L"Length"), L"");
}

namespace {
class MergedRows : public PropertyRows {
protected:
    void AddChannels(uint16_t channels) {
        ScriptedAudio audio;
        audio.says.channels = channels;
        AddNumbered(audio);
    }
    void AddRate(uint32_t rate) {
        ScriptedAudio audio;
        audio.says.sampleRate = rate;
        AddNumbered(audio);
    }
    void AddSampleSize(uint16_t bits, uint16_t formatTag) {
        ScriptedAudio audio;
        audio.says.bitsPerSample = bits;
        audio.says.formatTag = formatTag;
        AddNumbered(audio);
    }
};
} // namespace

TEST_F(MergedRows, CommonChannels) {
    AddChannels(2);
    AddChannels(2);
    EXPECT_EQ(Built(L"Channels"), L"2  (stereo)");
}

TEST_F(MergedRows, ChannelsOnceDifferentStayDifferent) {
    AddChannels(2);
    AddChannels(1);
    AddChannels(2);
    EXPECT_EQ(Built(L"Channels"), L"<different>");
}

TEST_F(MergedRows, AFirstFileOfNoChannelsLeavesThemOpen) {
    AddChannels(0);
    AddChannels(2);
    EXPECT_EQ(Built(L"Channels"), L"2  (stereo)");
}

TEST_F(MergedRows, ALaterFileOfNoChannelsDiffers) {
    AddChannels(2);
    AddChannels(0);
    EXPECT_EQ(Built(L"Channels"), L"<different>");
}

TEST_F(MergedRows, ARateOf0IsOpenInTheFirstFileAndDiffersInALaterOne) {
    AddRate(0);
    AddRate(44100);
    EXPECT_EQ(Built(L"Sample Rate"), L"44.1 KHz\r");
    AddRate(0);
    EXPECT_EQ(Built(L"Sample Rate"), L"<different>");
    AddRate(44100);
    EXPECT_EQ(Built(L"Sample Rate"), L"<different>");
}

TEST_F(MergedRows, ASampleSizeOf0IsOpenInTheFirstFileAndDiffersInALaterOne) {
    AddSampleSize(0, 1);
    AddSampleSize(16, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"16 bit");
    AddSampleSize(0, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"<different>");
    AddSampleSize(16, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"<different>");
}

TEST_F(MergedRows, NothingKnownGivesEmptyRows) {
    AddChannels(0);
    Build();
    for (const wchar_t* label : {L"Channels", L"Sample Rate", L"Sample Size", L"Bit Rate"})
        EXPECT_EQ(Value(label), L"");
}

TEST_F(MergedRows, SampleRatesByTheSettingEndInACarriageReturn) {
    const struct {
        uint32_t rate;
        const wchar_t* kilohertz;
        const wchar_t* hertz;
    } cases[] = {
        {44100, L"44.1 KHz\r", L"44,100 Hz\r"}, {48000, L"48 KHz\r", L"48,000 Hz\r"},
        {22050, L"22 KHz\r", L"22,050 Hz\r"},   {11025, L"11 KHz\r", L"11,025 Hz\r"},
        {800, L"0.8 KHz\r", L"800 Hz\r"},       {2822400, L"2,822.4 KHz\r", L"2,822,400 Hz\r"},
    };
    for (const auto& expected : cases) {
        files_.Clear();
        AddRate(expected.rate);
        SetUnit(L"UnitsFreq", 0);
        EXPECT_EQ(Built(L"Sample Rate"), expected.kilohertz);
        for (uint32_t unit : {1u, 2u, 3u, 4u, 0xFFFFFFFFu}) {
            SetUnit(L"UnitsFreq", unit);
            EXPECT_EQ(Built(L"Sample Rate"), expected.hertz) << unit;
        }
    }
}

TEST_F(MergedRows, SampleRatesThatDiffer) {
    AddRate(44100);
    AddRate(48000);
    EXPECT_EQ(Built(L"Sample Rate"), L"<different>");
}

TEST_F(MergedRows, SampleSizes) {
    AddSampleSize(16, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"16 bit");
    AddSampleSize(16, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"16 bit");
    AddSampleSize(24, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"<different>");
}

TEST_F(MergedRows, OnlyFormat3IsFloatingPoint) {
    for (int format : {0, 1, 2, 4, 0xFFFE}) {
        files_.Clear();
        AddSampleSize(32, static_cast<uint16_t>(format));
        EXPECT_EQ(Built(L"Sample Size"), L"32 bit") << format;
    }
    files_.Clear();
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit floating point");
}

TEST_F(MergedRows, FloatingPointIsNamedOnlyIfAllFilesAreOfThatKind) {
    AddSampleSize(32, 3);
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit floating point");
    AddSampleSize(32, 1);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit");
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit");
}

TEST_F(MergedRows, AFirstFileOfIntegersRulesFloatingPointOut) {
    AddSampleSize(32, 1);
    AddSampleSize(32, 3);
    EXPECT_EQ(Built(L"Sample Size"), L"32 bit");
}

namespace {
class BitRateRows : public PropertyRows {
protected:
    void AddBitRate(uint32_t bitRate, uint16_t channels = 2, uint16_t bits = 16) {
        ScriptedAudio audio;
        audio.says.bitRate = bitRate;
        audio.says.channels = channels;
        audio.says.sampleRate = 44100;
        audio.says.bitsPerSample = bits;
        AddNumbered(audio);
    }
};
} // namespace

// The sample size stands in the place of the sample rate: wanted.
TEST_F(BitRateRows, TheRateOfADiscIsNotMarked) {
    AddBitRate(1411200);
    EXPECT_EQ(Built(L"Bit Rate"), L"1,411 kbps");
}

TEST_F(BitRateRows, AGreatRateIsMarked) {
    AddBitRate(4608000, 2, 24);
    EXPECT_EQ(Built(L"Bit Rate"), L"4,608 kbps  (DVD)");
}

TEST_F(BitRateRows, WithoutASampleSizeOrChannelsThereIsNoMark) {
    AddBitRate(4608000, 2, 0);
    EXPECT_EQ(Built(L"Bit Rate"), L"4,608 kbps");
    files_.Clear();
    AddBitRate(4608000, 0, 24);
    EXPECT_EQ(Built(L"Bit Rate"), L"4,608 kbps");
}

TEST_F(BitRateRows, SeveralFilesHaveTheirAverageWithoutAMark) {
    AddBitRate(4608000, 2, 24);
    AddBitRate(4608000, 2, 24);
    AddBitRate(4608002, 2, 24);
    SetUnit(L"UnitsBitRate", 2);
    EXPECT_EQ(Built(L"Average Bit Rate"), L"4,608,000 bps");
    SetUnit(L"UnitsBitRate", 0);
    EXPECT_EQ(Built(L"Average Bit Rate"), L"4,608 kbps");
}

TEST_F(BitRateRows, OnlyGoodFilesCountForTheAverage) {
    AddBitRate(128000);
    AddUnknown();
    EXPECT_EQ(Built(L"Average Bit Rate"), L"128 kbps");
}

TEST_F(BitRateRows, TheSumIsOf32BitsSigned) {
    AddBitRate(0x7FFFFFFF);
    AddBitRate(1);
    SetUnit(L"UnitsBitRate", 2);
    EXPECT_EQ(Built(L"Average Bit Rate"), L"-1,073,741,824 bps");
}
