#include "suite/decoder/channel_names.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

using namespace decoder;

TEST(ChannelNames, OfOneAndTwoChannelsAreTheSameEverywhere) {
    for (NString (*names)(uint32_t) :
         {PlainChannels, VorbisChannels, FlacChannels, AacChannels, AlacChannels}) {
        EXPECT_EQ(names(0), L"");
        EXPECT_EQ(names(1), L"Mono");
        EXPECT_EQ(names(2), L"Left, Right");
    }
}

TEST(ChannelNames, OfSixChannelsStandInTheFormatsOrder) {
    EXPECT_EQ(PlainChannels(6), L"");
    EXPECT_EQ(FlacChannels(6), L"Left, Right, Center, LFE, Back Left, Back Right");
    EXPECT_EQ(VorbisChannels(6), L"Left, Center, Right, Back Left, Back Right, LFE");
    EXPECT_EQ(AacChannels(6), L"Center, Left, Right, Back Left, Back Right, LFE");
    EXPECT_EQ(AlacChannels(6), L"Center, Left, Right, Back Left, Back Right, LFE");
    EXPECT_EQ(ChannelsOfMask(0x3F, 6), L"Left, Right, Center, LFE, Back Left, Back Right");
    EXPECT_EQ(ChannelsOfMask(0x60F, 6), L"Left, Right, Center, LFE, Side Left, Side Right");
}

TEST(ChannelNames, AreAsManyAsThereAreChannels) {
    const auto count = [](const NString& names) {
        int commas = 0;
        for (int at = names.Find(L", "); at > 0; at = names.Find(L", ", at + 1))
            ++commas;
        return commas + 1;
    };
    for (uint32_t channels = 1; channels <= 8; ++channels) {
        const int wanted = static_cast<int>(channels);
        EXPECT_EQ(count(VorbisChannels(channels)), wanted);
        EXPECT_EQ(count(FlacChannels(channels)), wanted);
        EXPECT_EQ(count(AlacChannels(channels)), wanted);
        EXPECT_EQ(count(ChannelsOfMask((1U << channels) - 1, channels)), wanted);
    }
    EXPECT_EQ(count(AacChannels(7)), 8);
    EXPECT_EQ(count(ChannelsOfMask(0x3FFFF, 18)), 18);
}

TEST(ChannelNames, OfNumbersBeyondTheTablesAreEmpty) {
    EXPECT_EQ(VorbisChannels(9), L"");
    EXPECT_EQ(FlacChannels(9), L"");
    EXPECT_EQ(AacChannels(8), L"");
    EXPECT_EQ(AlacChannels(UINT32_MAX), L"");
}

TEST(ChannelNames, OfAMaskThatDoesNotFitAreThoseOfNone) {
    EXPECT_EQ(ChannelsOfMask(0x3F, 2), L"Left, Right");
    EXPECT_EQ(ChannelsOfMask(0, 4), L"");
    EXPECT_EQ(ChannelsOfMask(0xC0000000, 2), L"Left, Right");
    EXPECT_EQ(ChannelsOfMask(4, 1), L"Mono");
    EXPECT_EQ(ChannelsOfMask(0x600, 2), L"Side Left, Side Right");
}
