#include "suite/decoder/aac_config.h"

#include <gtest/gtest.h>

#include <string>

using decoder::AacConfig;
using decoder::AacName;

namespace {
// Of ones and zeros; blanks are for the reader.
AacConfig Read(const std::string& bits) {
    std::string bytes;
    int count = 0;
    for (char bit : bits) {
        if (bit == ' ')
            continue;
        if (count++ % 8 == 0)
            bytes += '\0';
        bytes.back() = static_cast<char>(bytes.back() | (bit - '0') << (7 - (count - 1) % 8));
    }
    return decoder::ReadAacConfig(
        TagLib::ByteVector(bytes.data(), static_cast<unsigned>(bytes.size())));
}
} // namespace

TEST(AacConfiguration, TellsTypeRateAndChannels) {
    const AacConfig config = Read("00010 0100 0010 000");
    EXPECT_STREQ(AacName(config), "AAC LC");
    EXPECT_EQ(config.SampleRate, 44100U);
    EXPECT_EQ(config.Configuration, 2U);
    EXPECT_FALSE(config.HasSbr);
}

TEST(AacConfiguration, NamesTheTypes) {
    EXPECT_STREQ(AacName(Read("00001 0100 0010")), "AAC Main");
    EXPECT_STREQ(AacName(Read("00011 0100 0010")), "AAC SSR");
    EXPECT_STREQ(AacName(Read("00100 0100 0010")), "AAC LTP");
    EXPECT_STREQ(AacName(Read("10111 0100 0010")), "AAC");
    EXPECT_STREQ(AacName(Read("")), "AAC");
}

TEST(AacConfiguration, TakesARateThatIsWrittenOut) {
    EXPECT_EQ(Read("00010 1111 000000001011101110000000 0010").SampleRate, 48000U);
    EXPECT_EQ(Read("00010 1111 000000001011101110000000 0010").Configuration, 2U);
    EXPECT_EQ(Read("00010 1101 0010").SampleRate, 0U);
}

TEST(AacConfiguration, WithSbrHasTheRateThatIsPlayed) {
    const AacConfig config = Read("00101 0111 0010 0100 00010");
    EXPECT_STREQ(AacName(config), "HE-AAC");
    EXPECT_EQ(config.SampleRate, 44100U);
    EXPECT_FALSE(config.HasPs);
}

TEST(AacConfiguration, WithPsIsStereoOfOneChannel) {
    const AacConfig config = Read("11101 0111 0001 0100 00010");
    EXPECT_STREQ(AacName(config), "HE-AAC v2");
    EXPECT_TRUE(config.HasPs);
    EXPECT_EQ(config.Configuration, 1U);
}

TEST(AacConfiguration, HidesSbrAndPsFromOldDecoders) {
    const std::string proper = "00010 0111 0001 000 ";
    const std::string sbr = "01010110111 00101 1 0100 ";
    EXPECT_STREQ(AacName(Read(proper + sbr)), "HE-AAC");
    EXPECT_EQ(Read(proper + sbr).SampleRate, 44100U);
    EXPECT_STREQ(AacName(Read(proper + sbr + "10101001000 1")), "HE-AAC v2");
    EXPECT_STREQ(AacName(Read(proper + sbr + "10101001000 0")), "HE-AAC");
    EXPECT_STREQ(AacName(Read(proper + "01010110111 00101 0")), "AAC LC");
    EXPECT_EQ(Read(proper + "01010110111 00101 0").SampleRate, 22050U);
}

TEST(AacConfiguration, OfOtherTypesHasNumbersWithoutAName) {
    const AacConfig config = Read("11111 001010 0100 0010"); // 32 + 10
    EXPECT_EQ(config.ObjectType, 42U);
    EXPECT_EQ(config.SampleRate, 44100U);
}
