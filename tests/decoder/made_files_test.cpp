// Files that are made up byte by byte: what no sample has.
#include "tests/decoder/plug_in.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {
std::string Number(uint64_t number, int bytes, bool bigFirst) {
    std::string text;
    for (int index = 0; index < bytes; ++index) {
        const int shift = (bigFirst ? bytes - 1 - index : index) * 8;
        text += static_cast<char>(number >> shift & 0xFF);
    }
    return text;
}

std::string Little(uint64_t number, int bytes) {
    return Number(number, bytes, false);
}

std::string Big(uint64_t number, int bytes) {
    return Number(number, bytes, true);
}

OpenedFile OpenMade(const wchar_t* name, const std::string& content) {
    static TestFolder folder;
    return OpenedFile(folder.Write(name, BytesOf(content)));
}

struct Wave {
    uint32_t Format = 1;
    uint32_t Channels = 2;
    uint32_t Bits = 16;
    std::string Extension = {};
    uint32_t ClaimedSize = 0xFFFFFFFF; // of the data
    std::string Fact = {};
    uint32_t BytesPerSecond = 0; // 0: by the other numbers

    std::string Bytes(size_t dataSize) const {
        const uint32_t align = Channels * Bits / 8;
        const std::string format =
            Little(Format, 2) + Little(Channels, 2) + Little(48000, 4) +
            Little(BytesPerSecond ? BytesPerSecond : 48000 * align, 4) + Little(align, 2) +
            Little(Bits, 2) + (Extension.empty() ? "" : Little(Extension.size(), 2) + Extension);
        std::string body = "WAVEfmt " + Little(format.size(), 4) + format;
        if (!Fact.empty())
            body += "fact" + Little(4, 4) + Fact;
        body += "data" + Little(ClaimedSize, 4) + std::string(dataSize, '\0');
        return "RIFF" + Little(body.size(), 4) + body;
    }
};

std::string ExtensibleOf(uint32_t bits, uint32_t mask, uint32_t format) {
    return Little(bits, 2) + Little(mask, 4) + Little(format, 2) +
           std::string("\0\0\0\0\x10\0\x80\0\0\xAA\0\x38\x9B\x71", 14);
}

std::string Box(const std::string& type, const std::string& content) {
    return Big(content.size() + 8, 4) + type + content;
}

struct Movie {
    std::string Edits; // content of "elst"
    std::string Entry; // behind the type of the sample entry
    std::string Type = "mp4a";
    uint32_t Ticks = 96000;                                   // of 48000 a second
    std::string Sizes = Big(0, 4) + Big(100, 4) + Big(10, 4); // of "stsz"
    uint32_t Channels = 2;

    std::string Bytes() const {
        const std::string entry = std::string(6, '\0') + Big(1, 2) + std::string(8, '\0') +
                                  Big(Channels, 2) + Big(16, 2) + Big(0, 4) + Big(48000U << 16, 4) +
                                  Entry;
        const std::string table =
            Box("stsd", Big(0, 4) + Big(1, 4) + Box(Type, entry)) + Box("stsz", Sizes);
        const std::string header =
            Box("mdhd", std::string(12, '\0') + Big(48000, 4) + Big(Ticks, 4) + Big(0, 4));
        const std::string handler =
            Box("hdlr", std::string(8, '\0') + "soun" + std::string(12, '\0'));
        const std::string track =
            Box("tkhd", std::string(12, '\0') + Big(1, 4) + std::string(68, '\0')) +
            (Edits.empty() ? "" : Box("edts", Box("elst", Edits))) +
            Box("mdia", header + handler + Box("minf", Box("stbl", table)));
        const std::string movieHeader =
            Box("mvhd", std::string(12, '\0') + Big(1000, 4) + std::string(84, '\0'));
        return Box("ftyp", "M4A " + Big(0, 4)) + Box("moov", movieHeader + Box("trak", track)) +
               Box("mdat", std::string(2000, '\0'));
    }
};

// Frames of MPEG 1 layer III at 44100 Hz; index 9 is 128 kb/s, 14 is 320.
std::string Frame(uint32_t rateIndex) {
    constexpr int kilobits[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    const int size = 144'000 * kilobits[rateIndex] / 44'100;
    return Big(0xFFFB0000 | rateIndex << 12, 4) + std::string(static_cast<size_t>(size - 4), '\0');
}
} // namespace

TEST(MadeWave, OfSixFloatChannelsNamesItsSpeakers) {
    OpenedFile file = OpenMade(
        L"51.wav", Wave{0xFFFE, 6, 32, ExtensibleOf(32, 0x3F, 3), 24 * 4800}.Bytes(24 * 4800));
    EXPECT_EQ(file.info.FormatTag, FormatFloat);
    EXPECT_EQ(file.info.Channels, 6);
    EXPECT_EQ(file.info.BitsPerSample, 32);
    EXPECT_EQ(file.info.BlockAlign, 24);
    EXPECT_EQ(file.info.AvgBytesPerSec, 48000U * 24);
    EXPECT_EQ(file.info.LengthMs, 100);
    EXPECT_EQ(file.Tech(L"channel mapping"), L"Left, Right, Center, LFE, Back Left, Back Right");
}

TEST(MadeWave, OfManyChannelsWithoutAMaskHasNoMapping) {
    EXPECT_EQ(OpenMade(L"6.wav", Wave{1, 6}.Bytes(12)).Tech(L"channel mapping"), L"-");
}

TEST(MadeWave, WithoutAKnownSizeLastsToTheEndOfTheFile) {
    for (uint32_t claimed : {0U, 0xFFFFFFFFU, 1'000'000U})
        EXPECT_EQ(OpenMade(L"pipe.wav", Wave{1, 2, 16, "", claimed}.Bytes(4 * 48000)).info.LengthMs,
                  1000)
            << claimed;
}

TEST(MadeWave, OfACompressedFormatLastsAsItsFactSays) {
    Wave wave{0x11, 1, 4, "", 1000, Little(24000, 4), 24'000};
    OpenedFile file = OpenMade(L"ima.wav", wave.Bytes(1000));
    EXPECT_EQ(file.info.LengthMs, 500);
    EXPECT_EQ(file.info.BitsPerSample, 16);
    EXPECT_EQ(file.info.BitRate, 192'000U);
    EXPECT_EQ(file.Tech(L"encoder settings"), L"IMA ADPCM");
    EXPECT_EQ(file.Tech(L"audio quality"), L"Lossy, CBR");
}

TEST(MadeWave, WithNumbersThatNoAudioHasIsRefused) {
    EXPECT_FALSE(OpenMade(L"0.wav", Wave{1, 0}.Bytes(100)).opened);
    EXPECT_FALSE(OpenMade(L"300.wav", Wave{1, 300}.Bytes(100)).opened);
    EXPECT_FALSE(OpenMade(L"bits.wav", Wave{1, 2, 72}.Bytes(100)).opened);
    EXPECT_FALSE(OpenMade(L"0bits.wav", Wave{1, 2, 0}.Bytes(100)).opened);
}

TEST(MadeAiff, OfFloatSamplesSaysSo) {
    const std::string rate("\x40\x0E\xBB\x80\0\0\0\0\0\0", 10); // 48000
    const std::string common =
        Big(2, 2) + Big(24000, 4) + Big(32, 2) + rate + "fl32" + std::string(2, '\0');
    const std::string body =
        "AIFCCOMM" + Big(common.size(), 4) + common + "SSND" + Big(16, 4) + std::string(16, '\0');
    OpenedFile file = OpenMade(L"f.aifc", "FORM" + Big(body.size(), 4) + body);
    EXPECT_EQ(file.info.FormatTag, FormatFloat);
    EXPECT_EQ(file.info.BitsPerSample, 32);
    EXPECT_EQ(file.info.LengthMs, 500);
    EXPECT_EQ(file.info.BitRate, 48000U * 64);
}

TEST(MadeMovie, LastsAsItsEditListPlays) {
    Movie movie;
    EXPECT_EQ(OpenMade(L"a.m4a", movie.Bytes()).info.LengthMs, 2000);
    movie.Edits = Big(0, 4) + Big(1, 4) + Big(1500, 4) + Big(2112, 4) + Big(0x10000, 4);
    EXPECT_EQ(OpenMade(L"b.m4a", movie.Bytes()).info.LengthMs, 1500);
    // A silence in front isn't played from the track.
    movie.Edits = Big(0, 4) + Big(2, 4) + Big(900, 4) + Big(0xFFFFFFFF, 4) + Big(0x10000, 4) +
                  Big(1500, 4) + Big(0, 4) + Big(0x10000, 4);
    EXPECT_EQ(OpenMade(L"c.m4a", movie.Bytes()).info.LengthMs, 1500);
    movie.Edits = Big(1, 1) + Big(0, 3) + Big(1, 4) + Big(1500, 8) + Big(0, 8) + Big(0x10000, 4);
    EXPECT_EQ(OpenMade(L"d.m4a", movie.Bytes()).info.LengthMs, 1500);
    // One that plays more than there is, or says nothing, doesn't count.
    movie.Edits = Big(0, 4) + Big(1, 4) + Big(90'000, 4) + Big(0, 4) + Big(0x10000, 4);
    EXPECT_EQ(OpenMade(L"e.m4a", movie.Bytes()).info.LengthMs, 2000);
    movie.Edits = Big(0, 4) + Big(0, 4);
    EXPECT_EQ(OpenMade(L"f.m4a", movie.Bytes()).info.LengthMs, 2000);
}

TEST(MadeMovie, HasTheRateOfItsSamples) {
    Movie movie;
    EXPECT_EQ(OpenMade(L"a.m4a", movie.Bytes()).info.BitRate, 4000U); // 1000 bytes in 2 s
    movie.Sizes = Big(0, 4) + Big(0, 4) + Big(2, 4) + Big(700, 4) + Big(50, 4);
    EXPECT_EQ(OpenMade(L"b.m4a", movie.Bytes()).info.BitRate, 3000U);
    // More than there can be, and the codec says nothing in their place.
    movie.Sizes = Big(0, 4) + Big(0xFFFFFFFF, 4) + Big(0xFFFFFFFF, 4);
    EXPECT_EQ(OpenMade(L"c.m4a", movie.Bytes()).info.BitRate, 0U);
}

TEST(MadeMovie, OfAc3HasTheChannelsOfItsOwnBox) {
    Movie movie;
    movie.Type = "ac-3";
    // 48 kHz, version 8, mode 0, three front and two back channels with LFE.
    movie.Entry = Box("dac3", Big(0b00'01000'000'111'1'01111'00000, 3));
    OpenedFile file = OpenMade(L"51.mp4", movie.Bytes());
    EXPECT_EQ(file.info.Channels, 6);
    EXPECT_EQ(file.Tech(L"encoder settings"), L"AC-3");
    EXPECT_EQ(file.Tech(L"audio quality"), L"Lossy, CBR");
}

TEST(MadeMovie, OfAlacHasTheBitsOfItsCookie) {
    Movie movie;
    movie.Type = "alac";
    movie.Entry = Box("alac", Big(0, 4) + Big(4096, 4) + Big(0, 1) + Big(24, 1) + Big(0, 3) +
                                  Big(6, 1) + Big(0, 10) + Big(96000, 4));
    OpenedFile file = OpenMade(L"24.m4a", movie.Bytes());
    EXPECT_EQ(file.info.BitsPerSample, 24);
    EXPECT_EQ(file.info.SampleRate, 96000U);
    EXPECT_EQ(file.Tech(L"channel mapping"), L"Center, Left, Right, Back Left, Back Right, LFE");
}

TEST(MadeOggFlac, OfAnEndlessLengthHasNoNegativeOne) {
    Bytes sample = ReadWhole(SamplePath("sample.oga"));
    // Behind the stream's mark, the block's header, and the sizes of blocks and
    // frames: a rate of 1, and all the samples that 36 bits can count.
    const std::string mark = "fLaC";
    const auto at = std::search(sample.begin(), sample.end(), mark.begin(), mark.end()) + 8 + 10;
    const Bytes endless = {0, 0, 0x12, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    std::copy(endless.begin(), endless.end(), at);
    OpenedFile file = OpenMade(L"endless.oga", std::string(sample.begin(), sample.end()));
    EXPECT_TRUE(file.opened);
    EXPECT_EQ(file.info.SampleRate, 1U);
    EXPECT_EQ(file.info.LengthMs, 0xFFFFFFFFFLL * 1000);
}

TEST(MadeMpeg, OfOneRateIsConstant) {
    std::string frames;
    for (int index = 0; index < 100; ++index)
        frames += Frame(9);
    OpenedFile file = OpenMade(L"c.mp3", frames);
    EXPECT_EQ(file.Tech(L"encoder settings"), L"CBR 128 kbps");
    EXPECT_EQ(file.info.BitRate, 128'000U);
    EXPECT_NEAR(static_cast<double>(file.info.LengthMs), 2606, 1);
}

TEST(MadeMpeg, OfSeveralRatesWithoutAHeaderIsEstimatedByItsFrames) {
    std::string frames;
    for (int index = 0; index < 1000; ++index)
        frames += Frame(index % 10 == 0 ? 14 : 9);
    OpenedFile file = OpenMade(L"v.mp3", frames);
    EXPECT_EQ(file.Tech(L"encoder settings"), L"VBR");
    EXPECT_EQ(file.Tech(L"audio quality"), L"Lossy, VBR");
    EXPECT_NEAR(static_cast<double>(file.info.LengthMs), 26122, 30);
    EXPECT_NEAR(file.info.BitRate, 147'200, 1000);
}

TEST(MadeMpeg, OfTwoLanguagesHasNoLeftAndRight) {
    std::string frames;
    for (int index = 0; index < 10; ++index) {
        std::string frame = Frame(9);
        frame[3] = static_cast<char>(0x80); // dual channel
        frames += frame;
    }
    OpenedFile file = OpenMade(L"dual.mp3", frames);
    EXPECT_EQ(file.info.Channels, 2);
    EXPECT_EQ(file.Tech(L"channel mapping"), L"-");
}
