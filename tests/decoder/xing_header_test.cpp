#include "suite/decoder/xing_header.h"
#include "tests/support/nstring_printer.h"

#include <gtest/gtest.h>

#include <string>

using decoder::BitRateMode;
using decoder::ReadXingHeader;
using decoder::XingFacts;

namespace {
std::string Big(uint32_t number, int bytes) {
    std::string text;
    for (int shift = (bytes - 1) * 8; shift >= 0; shift -= 8)
        text += static_cast<char>(number >> shift & 0xFF);
    return text;
}

// What LAME writes behind the header.
struct Lame {
    std::string Version = "LAME3.100";
    uint32_t Method = 0;
    uint32_t Kilobits = 0;
    uint32_t Preset = 0;

    std::string Bytes() const {
        return Version + Big(Method, 1) + std::string(10, '\0') + Big(Kilobits, 1) +
               std::string(5, '\0') + Big(Preset, 2) + std::string(8, '\0');
    }
};

constexpr uint32_t AllFlags = 15;

// A frame of stereo, MPEG 1 layer III: 32 bytes of side information.
XingFacts Read(const std::string& mark, uint32_t quality, const std::string& lame,
               uint32_t flags = AllFlags) {
    std::string frame = Big(0xFFFB9000, 4) + std::string(32, '\0') + mark + Big(flags, 4);
    if (flags & 1)
        frame += Big(1000, 4);
    if (flags & 2)
        frame += Big(417'000, 4);
    if (flags & 4)
        frame += std::string(100, '\x55');
    if (flags & 8)
        frame += Big(quality, 4);
    frame += lame + std::string(100, '\0');
    return ReadXingHeader(TagLib::ByteVector(frame.data(), static_cast<unsigned>(frame.size())));
}
} // namespace

TEST(XingHeader, CountsFramesAndBytes) {
    const XingFacts facts = Read("Xing", 78, Lame().Bytes());
    EXPECT_TRUE(facts.IsThere);
    EXPECT_EQ(facts.Frames, 1000U);
    EXPECT_EQ(facts.Bytes, 417'000U);
    EXPECT_EQ(facts.Encoder, L"LAME 3.100");
}

TEST(XingHeader, HasItsFieldsWhereTheFlagsPutThem) {
    for (uint32_t flags = 0; flags <= AllFlags; ++flags) {
        const XingFacts facts = Read("Xing", 78, Lame().Bytes(), flags);
        EXPECT_EQ(facts.Frames, flags & 1 ? 1000U : 0U) << flags;
        EXPECT_EQ(facts.Bytes, flags & 2 ? 417'000U : 0U) << flags;
        EXPECT_EQ(facts.Encoder, L"LAME 3.100") << flags;
    }
}

TEST(XingHeader, NamesTheModeByLamesMethod) {
    struct Row {
        uint32_t Method;
        BitRateMode Mode;
    };
    for (const Row& row : {Row{1, BitRateMode::Constant}, Row{2, BitRateMode::Average},
                           Row{3, BitRateMode::Variable}, Row{4, BitRateMode::Variable},
                           Row{5, BitRateMode::Variable}, Row{8, BitRateMode::Constant},
                           Row{9, BitRateMode::Average}}) {
        EXPECT_EQ(Read("Xing", 0, Lame{"LAME3.100", row.Method}.Bytes()).Mode, row.Mode)
            << row.Method;
        // The high half of the byte is the tag's revision.
        EXPECT_EQ(Read("Xing", 0, Lame{"LAME3.100", row.Method | 0x10}.Bytes()).Mode, row.Mode)
            << row.Method;
    }
    EXPECT_EQ(Read("Xing", 0, Lame().Bytes()).Mode, BitRateMode::Variable);
    EXPECT_EQ(Read("Info", 0, Lame().Bytes()).Mode, BitRateMode::Constant);
}

TEST(XingHeader, NamesThePresetOfAVariableRate) {
    struct Row {
        uint32_t Preset;
        uint32_t Quality;
        const wchar_t* Text;
    };
    for (const Row& row :
         {Row{480, 0, L"V2 (preset standard)"}, Row{500, 0, L"V0 (preset extreme)"},
          Row{460, 0, L"V4 (preset medium)"}, Row{410, 0, L"V9"}, Row{450, 0, L"V5"},
          Row{0, 78, L"V2 (preset standard)"}, Row{0, 57, L"V4 (preset medium)"},
          Row{0, 100, L"V0 (preset extreme)"}, Row{0, 10, L"V9"}, Row{0, 0, L""},
          Row{1001, 78, L"preset standard"}, Row{1003, 0, L"preset insane"},
          Row{1000, 0, L"preset r3mix"}, Row{1007, 0, L"preset fast medium"}, Row{0, 101, L""}})
        EXPECT_EQ(Read("Xing", row.Quality, Lame{"LAME3.100", 4, 0, row.Preset}.Bytes()).Preset,
                  row.Text)
            << row.Preset << " " << row.Quality;
}

TEST(XingHeader, NamesTheRateThatWasAskedFor) {
    EXPECT_EQ(Read("Info", 0, Lame{"LAME3.100", 1, 128, 128}.Bytes()).Kilobits, 128U);
    EXPECT_EQ(Read("Xing", 0, Lame{"LAME3.100", 2, 192, 192}.Bytes()).Kilobits, 192U);
    // One byte holds no more than 255.
    EXPECT_EQ(Read("Info", 0, Lame{"LAME3.100", 1, 255, 320}.Bytes()).Kilobits, 320U);
    EXPECT_EQ(Read("Info", 0, Lame{"LAME3.100", 1, 255, 1003}.Bytes()).Kilobits, 0U);
}

TEST(XingHeader, TakesTheNamesOfOtherEncoders) {
    EXPECT_EQ(Read("Info", 0, Lame{"Lavc60.31"}.Bytes()).Encoder, L"Lavc 60.31");
    EXPECT_EQ(Read("Info", 0, Lame{"LAME3.92 "}.Bytes()).Encoder, L"LAME 3.92");
    EXPECT_EQ(Read("Info", 0, Lame{"GOGO3.13\x01"}.Bytes()).Encoder, L"GOGO 3.13?");
    EXPECT_EQ(Read("Info", 0, std::string()).Encoder, L"");
}

TEST(XingHeader, OfFraunhoferIsVbri) {
    const std::string frame = Big(0xFFFB9000, 4) + std::string(32, '\0') + "VBRI" +
                              std::string(6, '\0') + Big(5000, 4) + Big(77, 4) +
                              std::string(40, '\0');
    const XingFacts facts =
        ReadXingHeader(TagLib::ByteVector(frame.data(), static_cast<unsigned>(frame.size())));
    EXPECT_EQ(facts.Bytes, 5000U);
    EXPECT_EQ(facts.Frames, 77U);
    EXPECT_EQ(facts.Mode, BitRateMode::Variable);
    EXPECT_EQ(facts.Encoder, L"Fraunhofer");
}

TEST(XingHeader, IsNotThereInAFrameOfAudioNorInACutOne) {
    EXPECT_FALSE(Read("None", 0, std::string()).IsThere);
    EXPECT_FALSE(ReadXingHeader(TagLib::ByteVector()).IsThere);
    const TagLib::ByteVector cut("\xFF\xFB\x90\x00Xing\0\0", 10);
    EXPECT_EQ(ReadXingHeader(cut).Frames, 0U);
}
