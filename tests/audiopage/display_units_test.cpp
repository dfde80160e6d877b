#include "audiopage/display_units.h"
#include "tests/audiopage/page_settings.h"
#include "tests/support/nstring_printer.h"

namespace {
constexpr uint32_t FirstUnknownUnit = 5;
constexpr uint32_t LargestUnit = 0xFFFFFFFF;

class DisplayUnits : public PageSettings {};
} // namespace

TEST_F(DisplayUnits, MissingSettingsAreZero) {
    EXPECT_EQ(UnitsSettings::Channels(), 0u);
    EXPECT_EQ(UnitsSettings::BitRate(), 0u);
    EXPECT_EQ(UnitsSettings::Frequency(), 0u);
    EXPECT_EQ(UnitsSettings::Time(), 0u);
    EXPECT_EQ(UnitsSettings::FileSize(), 0u);
}

TEST_F(DisplayUnits, EachSettingIsReadAtEachUse) {
    SetUnit(L"UnitsChannels", 11);
    SetUnit(L"UnitsBitRate", 12);
    SetUnit(L"UnitsFreq", 13);
    SetUnit(L"UnitsTime", 14);
    SetUnit(L"UnitsFileSize", 15);
    EXPECT_EQ(UnitsSettings::Channels(), 11u);
    EXPECT_EQ(UnitsSettings::BitRate(), 12u);
    EXPECT_EQ(UnitsSettings::Frequency(), 13u);
    EXPECT_EQ(UnitsSettings::Time(), 14u);
    EXPECT_EQ(UnitsSettings::FileSize(), 15u);
    SetUnit(L"UnitsTime", 2);
    EXPECT_EQ(UnitsSettings::Time(), 2u);
}

TEST_F(DisplayUnits, ChannelsByTheirSetting) {
    const struct {
        uint32_t channels;
        const wchar_t* named;
        const wchar_t* number;
        const wchar_t* nameAlone;
    } cases[] = {
        {0, L"0", L"0", L"0 channels"},
        {1, L"1  (mono)", L"1", L"Mono"},
        {2, L"2  (stereo)", L"2", L"Stereo"},
        {3, L"3", L"3", L"3 channels"},
        {4, L"4  (quadraphonic)", L"4", L"Quadraphonic"},
        {5, L"5  (surround)", L"5", L"Surround"},
        {6, L"6  (5.1 surround)", L"6", L"5.1 surround"},
        {7, L"7", L"7", L"7 channels"},
        {8, L"8  (7.1 theater)", L"8", L"7.1 theater"},
        {9, L"9", L"9", L"9 channels"},
        {65535, L"65535", L"65535", L"65535 channels"},
    };
    for (const auto& expected : cases) {
        SetUnit(L"UnitsChannels", 0);
        EXPECT_EQ(FormatChannels(expected.channels), expected.named);
        SetUnit(L"UnitsChannels", 2);
        EXPECT_EQ(FormatChannels(expected.channels), expected.nameAlone);
        for (uint32_t numberOnly : {1u, 3u, 4u, FirstUnknownUnit, LargestUnit}) {
            SetUnit(L"UnitsChannels", numberOnly);
            EXPECT_EQ(FormatChannels(expected.channels), expected.number) << numberOnly;
        }
    }
}

TEST_F(DisplayUnits, BitRatesByTheirSetting) {
    SetUnit(L"UnitsBitRate", 2);
    EXPECT_EQ(FormatBitRate(1411200, 2, 44100), L"1,411,200 bps");
    EXPECT_EQ(FormatBitRate(-1411200, 2, 44100), L"-1,411,200 bps");
    for (uint32_t unmarked : {1u, 3u, 4u, FirstUnknownUnit, LargestUnit}) {
        SetUnit(L"UnitsBitRate", unmarked);
        EXPECT_EQ(FormatBitRate(1411200, 2, 44100), L"1,411 kbps") << unmarked;
    }
    SetUnit(L"UnitsBitRate", 0);
    EXPECT_EQ(FormatBitRate(1411200, 2, 44100), L"1,411 kbps  (CD)");
    EXPECT_EQ(FormatBitRate(320999, 2, 44100), L"320 kbps");
    EXPECT_EQ(FormatBitRate(999, 2, 44100), L"0 kbps");
}

TEST_F(DisplayUnits, BitRatesAreMarkedByTheRatePerChannel) {
    const struct {
        int32_t bitRate;
        uint32_t channels;
        uint32_t rate;
        const wchar_t* text;
    } cases[] = {
        {1410000, 2, 44100, L"1,410 kbps  (CD)"},  {1409999, 2, 44100, L"1,409 kbps"},
        {1414001, 2, 44100, L"1,414 kbps  (CD)"},  {1414002, 2, 44100, L"1,414 kbps"},
        {1411200, 2, 48000, L"1,411 kbps"},        {705600, 1, 44100, L"705 kbps"},
        {1534000, 2, 48000, L"1,534 kbps  (DAT)"}, {1533999, 2, 48000, L"1,533 kbps"},
        {1538001, 2, 48000, L"1,538 kbps  (DAT)"}, {1538002, 2, 48000, L"1,538 kbps"},
        {1536000, 2, 44100, L"1,536 kbps"},        {768000, 1, 48000, L"768 kbps"},
        {2000000, 2, 96000, L"2,000 kbps  (DVD)"}, {1999999, 2, 96000, L"1,999 kbps"},
        {1000000, 1, 16, L"1,000 kbps  (DVD)"},    {4608000, 2, 44100, L"4,608 kbps  (DVD)"},
        {-2000000, 2, 44100, L"-2,000 kbps"},
    };
    for (const auto& expected : cases) {
        EXPECT_EQ(FormatBitRate(expected.bitRate, expected.channels, expected.rate), expected.text)
            << expected.bitRate;
    }
}

TEST_F(DisplayUnits, WithoutChannelsOrRateABitRateHasNoMark) {
    EXPECT_EQ(FormatBitRate(4608000, 0, 44100), L"4,608 kbps");
    EXPECT_EQ(FormatBitRate(4608000, 2, 0), L"4,608 kbps");
}

// The division is signed.
TEST_F(DisplayUnits, ChannelsBeyondAllSenseDoNoHarm) {
    EXPECT_EQ(FormatBitRate(INT32_MIN, 0xFFFFFFFF, 16), L"-2,147,483 kbps  (DVD)");
    EXPECT_EQ(FormatBitRate(INT32_MAX, 0xFFFFFFFF, 16), L"2,147,483 kbps");
}

TEST_F(DisplayUnits, FileSizesGoUpToTheUnitThatFits) {
    const struct {
        int64_t size;
        const wchar_t* text;
    } cases[] = {
        {0, L"0 bytes"},
        {1, L"1 byte"},
        {2, L"2 bytes"},
        {1023, L"1023 bytes"}, // never grouped
        {1024, L"1 KB"},
        {1034, L"1 KB"},
        {1035, L"2 KB"},
        {10240, L"10 KB"},
        {1048575, L"1,024 KB"},
        {1048576, L"1 MB"},
        {1572864, L"1.5 MB"},
        {1073741823, L"1,024 MB"},
        {1073741824, L"1 GB"},
        {1610612736, L"1.5 GB"},
        {int64_t{5} << 40, L"5,120 GB"},
        {-1, L"-1 bytes"},
        {-1023, L"-1023 bytes"},
        {-2048, L"-1 KB"},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(FormatFileSize(expected.size, false), expected.text) << expected.size;
}

TEST_F(DisplayUnits, FileSizesInKBOnly) {
    const struct {
        int64_t size;
        const wchar_t* text;
    } cases[] = {
        {0, L"0 KB"},    {1, L"0 KB"},           {10, L"0 KB"},
        {11, L"1 KB"},   {1024, L"1 KB"},        {1034, L"1 KB"},
        {1035, L"2 KB"}, {1048576, L"1,024 KB"}, {1073741824, L"1,048,576 KB"},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(FormatFileSize(expected.size, true), expected.text) << expected.size;
}

TEST_F(DisplayUnits, FileSizesHaveTheDecimalSeparatorOfTheLocale) {
    SetLocale(L"sDecimal", L"*");
    EXPECT_EQ(FormatFileSize(1572864, false), L"1*5 MB");
    EXPECT_EQ(FormatFileSize(1610612736, false), L"1*5 GB");
}

TEST_F(DisplayUnits, LengthsInWords) {
    const struct {
        int64_t ms;
        const wchar_t* text;
        const wchar_t* whole; // without fractions
    } cases[] = {
        {0, L"0", L"0"},
        {1, L"1 mili-second", L"0"},
        {2, L"2 mili-seconds", L"0"},
        {700, L"700 mili-seconds", L"0"},
        {1000, L"1 second", L"1 second"},
        {2000, L"2 seconds", L"2 seconds"},
        {1200, L"1.2 seconds", L"1 second"},
        {1010, L"1 seconds", L"1 second"}, // the plural, whatever it rounds to
        {4040, L"4 seconds", L"4 seconds"},
        {4500, L"4.5 seconds", L"4 seconds"},
        {59999, L"60 seconds", L"59 seconds"},
        {60000, L"1 minute", L"1 minute"},
        {61000, L"1 minute 1 second", L"1 minute 1 second"},
        {60999, L"1 minute", L"1 minute"},
        {125000, L"2 minutes 5 seconds", L"2 minutes 5 seconds"},
        {3600000, L"1 hour", L"1 hour"},
        {3660000, L"1 hour 1 minute", L"1 hour 1 minute"},
        {3659999, L"1 hour", L"1 hour"},
        {3723000, L"1 hour 2 minutes", L"1 hour 2 minutes"},
        {7200000, L"2 hours", L"2 hours"},
        {4320000000, L"1200 hours 71582 minutes", L"1200 hours 71582 minutes"},
    };
    for (const auto& expected : cases) {
        EXPECT_EQ(FormatTimeLength(expected.ms, 0), expected.text) << expected.ms;
        EXPECT_EQ(FormatTimeLength(expected.ms, 4), expected.whole) << expected.ms;
    }
}

TEST_F(DisplayUnits, LengthsAsAClockShowsThem) {
    const struct {
        int64_t ms;
        const wchar_t* minutes;
        const wchar_t* hours;
        const wchar_t* milliseconds;
    } cases[] = {
        {0, L"0:00", L"00:00:00", L"00:00:00.000"},
        {7, L"0:00", L"00:00:00", L"00:00:00.007"},
        {125000, L"2:05", L"00:02:05", L"00:02:05.000"},
        {754056, L"12:34", L"00:12:34", L"00:12:34.056"},
        {3723000, L"1:02:03", L"01:02:03", L"01:02:03.000"},
        {36000000 + 61789, L"10:01:01", L"10:01:01", L"10:01:01.789"},
    };
    for (const auto& expected : cases) {
        EXPECT_EQ(FormatTimeLength(expected.ms, 1), expected.minutes) << expected.ms;
        EXPECT_EQ(FormatTimeLength(expected.ms, 2), expected.hours) << expected.ms;
        EXPECT_EQ(FormatTimeLength(expected.ms, 3), expected.milliseconds) << expected.ms;
    }
}

TEST_F(DisplayUnits, LengthsHaveTheSeparatorsOfTheLocale) {
    SetLocale(L"sTime", L"h");
    SetLocale(L"sDecimal", L",");
    EXPECT_EQ(FormatTimeLength(3723004, 1), L"1h02h03");
    EXPECT_EQ(FormatTimeLength(3723004, 2), L"01h02h03");
    EXPECT_EQ(FormatTimeLength(3723004, 3), L"01h02h03,004");
    EXPECT_EQ(FormatTimeLength(4500, 0), L"4,5 seconds");
}

TEST_F(DisplayUnits, WithoutATimeSeparatorThereAreColons) {
    SetLocale(L"sTime", L"");
    EXPECT_EQ(FormatTimeLength(125000, 1), L"2:05");
}

TEST_F(DisplayUnits, AnUnknownUnitOfTimeGivesNoText) {
    EXPECT_EQ(FormatTimeLength(125000, FirstUnknownUnit), L"");
    EXPECT_EQ(FormatTimeLength(125000, LargestUnit), L"");
}

TEST_F(DisplayUnits, HoursAreNeverGrouped) {
    EXPECT_EQ(FormatTimeLength(int64_t{596} * 3600000, 2), L"596:00:00");
    EXPECT_EQ(FormatTimeLength(int64_t{1193} * 3600000, 1).Left(5), L"1193:");
}

// The products are of 32 bits, signed: wanted.
TEST_F(DisplayUnits, LengthsAbove596HoursAreSplitAsWrappedArithmeticGives) {
    EXPECT_EQ(FormatTimeLength(int64_t{597} * 3600000, 3), L"597:71582:4295014.4294967888");
    EXPECT_EQ(FormatTimeLength(int64_t{597} * 3600000, 0), L"597 hours 71582 minutes");
}

TEST_F(DisplayUnits, LengthsBeyondAllSenseDoNoHarm) {
    for (int64_t ms : {INT64_MIN, INT64_MIN + 1, int64_t{-1}, INT64_MAX}) {
        for (uint32_t unit = 0; unit <= 4; ++unit)
            EXPECT_FALSE(FormatTimeLength(ms, unit).IsEmpty()) << ms << " " << unit;
    }
}
